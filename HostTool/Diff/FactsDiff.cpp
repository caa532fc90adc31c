#include "HostTool/Diff/FactsDiff.h"

#include "HostTool/Text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace HostTool
{

namespace
{

using Json = nlohmann::ordered_json;

/// What belongs to the files and not to what is told in them, or is compared tile by tile.
constexpr std::array NamesOfOtherThings = {"format",      "version",     "path",       "files",
                                           "diagnostics", "tilesStored", "tilesAbsent"};
/// What tells how pixels are stored.
constexpr std::array NamesOfStorage = {"compression", "colorSpace", "columns",   "rows",
                                       "tileWidth",   "tileHeight", "wholeTiles"};

template <typename Names>
void RemoveNamed(Json& json, const Names& names)
{
    if (json.is_object())
        for (const char* name : names)
            json.erase(name);
    if (json.is_structured())
        for (auto& child : json)
            RemoveNamed(child, names);
}

Json PropertiesOf(const CInfo& info, bool isDecoded)
{
    Json json = Json::parse(JsonOf(info, false));
    RemoveNamed(json, NamesOfOtherThings);
    if (isDecoded)
        RemoveNamed(json, NamesOfStorage);
    return json;
}

/// A value in one short line.
std::string ShortTextOf(const Json* value)
{
    constexpr size_t mostCharacters = 80;
    if (!value)
        return "nothing";
    std::string text = value->dump(-1, ' ', false, Json::error_handler_t::replace);
    if (value->is_structured() && text.size() > mostCharacters)
        text = value->is_array() ? "[...]" : "{...}";
    return text;
}

/// Compares what `info --json` tells, by the names under which jq finds it.
class CPropertyComparer
{
public:
    explicit CPropertyComparer(CDiffReport& report) : _Report(report) {}

    /// A null pointer is what one document does not have.
    void Compare(const std::string& path, const Json* a, const Json* b)
    {
        if (a && b && a->is_object() && b->is_object())
            return CompareMembers(path, *a, *b);
        if (a && b && a->is_array() && b->is_array())
            return CompareElements(path, *a, *b);
        _Report.Compared(DiffKind::Property, 1);
        if (!a || !b || *a != *b)
            _Report.Add(DiffKind::Property, path + ": " + ShortTextOf(a) + " | " + ShortTextOf(b));
    }

private:
    void CompareMembers(const std::string& path, const Json& a, const Json& b)
    {
        const auto memberOf = [](const Json& json, const std::string& name)
        {
            const auto member = json.find(name);
            return member == json.end() ? nullptr : &*member;
        };
        for (const auto& [name, value] : a.items())
            Compare(path + "." + name, &value, memberOf(b, name));
        for (const auto& [name, value] : b.items())
            if (!a.contains(name))
                Compare(path + "." + name, nullptr, &value);
    }

    void CompareElements(const std::string& path, const Json& a, const Json& b)
    {
        const auto elementOf = [](const Json& json, size_t i) { return i < json.size() ? &json[i] : nullptr; };
        for (size_t i = 0; i < std::max(a.size(), b.size()); ++i)
            Compare(path + "[" + std::to_string(i) + "]", elementOf(a, i), elementOf(b, i));
    }

    CDiffReport& _Report;
};

/// A property too large to be shown.
template <typename Value>
void CompareLarge(const std::string& name, const Value& a, const Value& b, CDiffReport& report)
{
    report.Compared(DiffKind::Property, 1);
    if (a != b)
        report.Add(DiffKind::Property, name + ": differs");
}

void CompareLargeProperties(const CDocumentFacts& a, const CDocumentFacts& b, CDiffReport& report)
{
    CompareLarge("bytes of the thumbnail", a.Thumbnail, b.Thumbnail, report);
    CompareLarge("bytes of the overview", a.Overview, b.Overview, report);
    for (size_t group = 0; group < std::min(a.Groups.size(), b.Groups.size()); ++group)
    {
        const auto& channelsOfA = a.Groups[group].Channels;
        const auto& channelsOfB = b.Groups[group].Channels;
        for (size_t i = 0; i < std::min(channelsOfA.size(), channelsOfB.size()); ++i)
            CompareLarge("look-up table of .groups[" + std::to_string(group) + "].channels[" + std::to_string(i) + "]",
                         channelsOfA[i].LookUpTable, channelsOfB[i].LookUpTable, report);
    }
}

std::string Quoted(const std::optional<std::string>& text)
{
    return text ? "\"" + *text + "\"" : "unknown";
}

std::string Shown(const std::optional<double>& number)
{
    return number ? HostTool::TextOf(*number) : "unknown";
}

bool AreEqual(const std::vector<CRegionPoint>& a, const std::vector<CRegionPoint>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const CRegionPoint& p, const CRegionPoint& q) { return p.X == q.X && p.Y == q.Y; });
}

/// What two regions of one ID differ in; empty if they are equal.
std::string DifferenceOf(const CRegionFacts& a, const CRegionFacts& b)
{
    std::string text;
    const auto add = [&](const std::string& name, const std::string& ofA, const std::string& ofB)
    {
        if (ofA != ofB)
            text.append(text.empty() ? "" : ", ").append(name).append(" ").append(ofA).append(" | ").append(ofB);
    };
    add("name", Quoted(a.Name), Quoted(b.Name));
    add("type", Quoted(a.Type), Quoted(b.Type));
    add("shape", Quoted(a.Shape), Quoted(b.Shape));
    add("rotation", Shown(a.Rotation), Shown(b.Rotation));
    add("number of vertices", std::to_string(a.Points.size()), std::to_string(b.Points.size()));
    if (a.Points.size() == b.Points.size() && !AreEqual(a.Points, b.Points))
        text += (text.empty() ? "" : ", ") + std::string("other vertices");
    return text;
}

void CompareRegions(const std::string& group, const std::vector<CRegionFacts>& a, const std::vector<CRegionFacts>& b,
                    CDiffReport& report)
{
    const auto nameOf = [&](const CRegionFacts& region)
    { return group + ", region " + region.ID + ", " + Quoted(region.Name); };
    const auto byID = [](const std::vector<CRegionFacts>& regions)
    {
        std::map<std::string, const CRegionFacts*> map;
        for (const CRegionFacts& region : regions)
            map.emplace(region.ID, &region);
        return map;
    };
    const auto regionsOfA = byID(a);
    const auto regionsOfB = byID(b);
    for (const auto& [id, region] : regionsOfA)
    {
        report.Compared(DiffKind::Region, 1);
        const auto other = regionsOfB.find(id);
        if (other == regionsOfB.end())
            report.Add(DiffKind::Region, nameOf(*region) + ": only in the first document");
        else if (const std::string text = DifferenceOf(*region, *other->second); !text.empty())
            report.Add(DiffKind::Region, nameOf(*region) + ": " + text);
    }
    for (const auto& [id, region] : regionsOfB)
        if (!regionsOfA.contains(id))
        {
            report.Compared(DiffKind::Region, 1);
            report.Add(DiffKind::Region, nameOf(*region) + ": only in the second document");
        }
}

} // namespace

CToldFacts ToldFactsOf(const std::filesystem::path& plugin, const CDocument& document)
{
    CToldFacts facts;
    facts.Info = InfoOf(plugin, document.Path());
    if (!facts.Info.Facts)
        FactsOf(document); // throws what it failed by
    for (int group = 0; group < document.NumOfGroups(); ++group)
        facts.Regions.push_back(RegionsOf(document.Group(group)));
    return facts;
}

void CompareFacts(const CToldFacts& a, const CToldFacts& b, bool isDecoded, CDiffReport& report)
{
    const Json propertiesOfA = PropertiesOf(a.Info, isDecoded);
    const Json propertiesOfB = PropertiesOf(b.Info, isDecoded);
    CPropertyComparer(report).Compare("", &propertiesOfA, &propertiesOfB);
    if (a.Info.Facts && b.Info.Facts)
        CompareLargeProperties(*a.Info.Facts, *b.Info.Facts, report);
    report.Finish(DiffKind::Property);
    static const std::vector<CRegionFacts> none;
    const auto regionsOf = [](const CToldFacts& facts, size_t group) -> const std::vector<CRegionFacts>&
    { return group < facts.Regions.size() ? facts.Regions[group] : none; };
    for (size_t group = 0; group < std::max(a.Regions.size(), b.Regions.size()); ++group)
        CompareRegions("group " + std::to_string(group), regionsOf(a, group), regionsOf(b, group), report);
    report.Finish(DiffKind::Region);
}

} // namespace HostTool
