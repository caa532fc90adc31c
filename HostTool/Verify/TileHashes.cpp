#include "HostTool/Verify/TileHashes.h"

#include <fstream>
#include <nlohmann/json.hpp>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace HostTool
{

namespace
{

using Json = nlohmann::ordered_json;

constexpr const char* Format = "zel tile hashes";
constexpr int FormatVersion = 2;
constexpr int OldestFormatVersion = 1; // which called the bytes a size
constexpr size_t MostDifferencesTold = 50;

struct CHashStateDeleter
{
    void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
};

/// A hash over numbers.
class CHasher
{
public:
    CHasher() : _State(XXH3_createState())
    {
        if (!_State)
            throw std::bad_alloc();
        XXH3_64bits_reset(_State.get());
    }
    void Add(uint64_t number) { XXH3_64bits_update(_State.get(), &number, sizeof(number)); }
    uint64_t Hash() const { return XXH3_64bits_digest(_State.get()); }

private:
    std::unique_ptr<XXH3_state_t, CHashStateDeleter> _State;
};

std::string Hex(uint64_t hash)
{
    std::array<char, 17> text{};
    std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(hash));
    return text.data();
}

uint64_t HashOf(const CCheckedLevel& level)
{
    CHasher hasher;
    for (size_t i = 0; i < level.Verdicts.size(); ++i)
    {
        hasher.Add(static_cast<uint64_t>(level.Verdicts[i]));
        hasher.Add(level.Sizes[i]);
        hasher.Add(level.Hashes[i]);
    }
    return hasher.Hash();
}

Json FactsOf(const CCheckedLevel& level)
{
    Json frames = Json::array();
    for (const CPosition& frame : level.Frames)
        frames.push_back({frame.Channel, frame.Z, frame.T, frame.Lambda});
    return {{"level", level.Level},
            {"columns", level.Grid.Cols},
            {"rows", level.Grid.Rows},
            {"hash", Hex(HashOf(level))},
            {"planes", std::move(frames)}};
}

std::string TileLine(const CCheckedLevel& level, size_t place)
{
    return "[\"" + NameOf(level.Verdicts[place]) + "\", " + std::to_string(level.Sizes[place]) + ", \"" +
           Hex(level.Hashes[place]) + "\"]";
}

void WriteLevel(COutputFile& file, const CCheckedLevel& level)
{
    std::string facts = FactsOf(level).dump();
    facts.pop_back(); // the closing brace: the tiles follow, written one by one since they may be millions
    file.Write("        " + facts + ", \"tiles\": [");
    for (size_t place = 0; place < level.Verdicts.size(); ++place)
        file.Write((place == 0 ? "\n          " : ",\n          ") + TileLine(level, place));
    file.Write("]}");
}

Json ReadHashes(const std::filesystem::path& path)
{
    std::ifstream stream(path);
    if (!stream)
        throw CHostError(ExitCode::WrongUsage,
                         path.string() + ": no such file, or no right to read it; check the name");
    Json hashes = Json::parse(stream, nullptr, false);
    if (!hashes.is_object() || hashes.value("format", "") != Format ||
        hashes.value("version", 0) < OldestFormatVersion || hashes.value("version", 0) > FormatVersion)
        throw CHostError(ExitCode::WrongUsage, path.string() + ": this file holds no hashes of tiles; give one that "
                                                               "'zel verify --hashes' wrote");
    return hashes;
}

/// Lines of differences, of which the first ones are kept.
class CDifferences
{
public:
    void Add(std::string line)
    {
        if (++_Count <= MostDifferencesTold)
            _Lines.push_back(std::move(line));
    }
    std::vector<std::string> Lines()
    {
        if (_Count > MostDifferencesTold)
            _Lines.push_back("and " + std::to_string(_Count - MostDifferencesTold) + " more");
        return std::move(_Lines);
    }

private:
    std::vector<std::string> _Lines;
    size_t _Count = 0;
};

void CompareTiles(const CCheckedLevel& level, const Json& told, const std::string& name, CDifferences& differences)
{
    for (size_t place = 0; place < level.Verdicts.size(); ++place)
    {
        const Json now = {NameOf(level.Verdicts[place]), level.Sizes[place], Hex(level.Hashes[place])};
        const Json& before = told.at(place);
        if (now == before)
            continue;
        const uint64_t area = place % level.NumOfAreas();
        const std::string verdict = before.at(0).get<std::string>();
        differences.Add(
            name + ", column " + std::to_string(area % level.Grid.Cols) + ", row " +
            std::to_string(area / level.Grid.Cols) + ", " + TextOf(level.Frames[place / level.NumOfAreas()]) + ": " +
            (verdict == NameOf(level.Verdicts[place]) ? "other bytes"
                                                      : "was " + verdict + ", is " + NameOf(level.Verdicts[place])));
    }
}

void CompareLevel(const CCheckedLevel& level, const Json& told, const std::string& name, CDifferences& differences)
{
    Json now = FactsOf(level);
    if (now.at("hash") == told.at("hash"))
        return;
    if (now.at("columns") != told.at("columns") || now.at("rows") != told.at("rows") ||
        now.at("planes") != told.at("planes") || told.at("tiles").size() != level.Verdicts.size())
        differences.Add(name + ": has another grid or other planes");
    else
        CompareTiles(level, told.at("tiles"), name, differences);
}

void Compare(const CCheckedDocument& checked, const Json& hashes, CDifferences& differences)
{
    const Json& groups = hashes.at("groups");
    if (groups.size() != checked.Groups.size())
    {
        differences.Add("there were " + std::to_string(groups.size()) + " groups, and are " +
                        std::to_string(checked.Groups.size()));
        return;
    }
    for (size_t i = 0; i < groups.size(); ++i)
    {
        const CCheckedGroup& group = checked.Groups[i];
        const Json& levels = groups.at(i).at("levels");
        const std::string name = "group " + std::to_string(group.Number);
        if (levels.size() != group.Levels.size())
        {
            differences.Add(name + ": has other levels");
            continue;
        }
        for (size_t k = 0; k < levels.size(); ++k)
            CompareLevel(group.Levels[k], levels.at(k), name + ", level " + std::to_string(group.Levels[k].Level),
                         differences);
    }
}

} // namespace

std::string HashOf(const CCheckedDocument& checked)
{
    CHasher hasher;
    for (const CCheckedGroup& group : checked.Groups)
        for (const CCheckedLevel& level : group.Levels)
            hasher.Add(HashOf(level));
    return Hex(hasher.Hash());
}

void WriteHashes(const CCheckedDocument& checked, COutputFile& file)
{
    Json head = {{"format", Format},
                 {"version", FormatVersion},
                 {"algorithm", "XXH3, 64 bits"},
                 {"document", checked.Path.filename().string()},
                 {"hash", HashOf(checked)},
                 {"tile", {"verdict", "bytes", "hash"}}};
    std::string text = head.dump(-1, ' ', false, Json::error_handler_t::replace);
    text.pop_back();
    file.Write(text + ",\n  \"groups\": [");
    for (size_t i = 0; i < checked.Groups.size(); ++i)
    {
        const CCheckedGroup& group = checked.Groups[i];
        file.Write((i == 0 ? "\n    " : ",\n    ") + std::string("{\"group\": ") + std::to_string(group.Number) +
                   ", \"levels\": [\n");
        for (size_t k = 0; k < group.Levels.size(); ++k)
        {
            file.Write(k == 0 ? "" : ",\n");
            WriteLevel(file, group.Levels[k]);
        }
        file.Write("]}");
    }
    file.Write("]}\n");
    file.Finish();
}

std::vector<std::string> DifferencesTo(const CCheckedDocument& checked, const std::filesystem::path& path)
try
{
    CDifferences differences;
    Compare(checked, ReadHashes(path), differences);
    return differences.Lines();
}
catch (const Json::exception& error)
{
    throw CHostError(ExitCode::WrongUsage,
                     path.string() + ": is damaged: " + error.what() + "; write it anew by 'zel verify --hashes'");
}

} // namespace HostTool
