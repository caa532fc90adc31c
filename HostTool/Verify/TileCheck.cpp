#include "HostTool/Verify/TileCheck.h"

#include "HostTool/Pixels/Parallel.h"
#include "HostTool/Pixels/Progress.h"
#include "HostTool/Pixels/Stitch.h"
#include "HostTool/Reader/SoundStacks.h"
#include "HostTool/Verify/TileReader.h"

#include <chrono>
#include <mutex>
#include <utility>

namespace HostTool
{

namespace
{

constexpr size_t MostFailuresTold = 50;
constexpr uint64_t TilesOfAChunk = 128;

const std::array<std::string, NumOfVerdicts> VerdictNames = {"stored", "absent",     "not served", "out of file",
                                                             "short",  "unreadable", "undecodable"};

/// Tiles of one frame that one thread checks in one go.
struct CChunk
{
    size_t Group = 0;
    size_t Level = 0; ///< of those with data
    size_t Frame = 0;
    uint64_t FirstArea = 0;
    uint64_t BehindLastArea = 0;
};

std::vector<CPosition> FramesOf(const CGroupPixels& pixels)
{
    std::vector<CPosition> frames;
    const CAxisSizes& axes = pixels.Axes();
    for (int64_t t = 0; t < axes.T; ++t)
        for (int64_t lambda = 0; lambda < axes.Lambda; ++lambda)
            for (int64_t z = 0; z < axes.Z; ++z)
                for (const CChannelPixels& channel : pixels.Channels())
                    frames.push_back({channel.ID, z, t, lambda});
    return frames;
}

CCheckedGroup EmptyGroup(const CGroupPixels& pixels, bool isHashing)
{
    CCheckedGroup group;
    group.Number = pixels.Group().Number();
    group.Limits = pixels.Limits();
    if (const auto name = pixels.Group().FirstArea().Properties(L"GroupName"))
        group.Name = name->Text(L"name").value_or("");
    for (int number = 0; number < pixels.NumOfLevels(); ++number)
    {
        if (!pixels.HasLevel(number))
            continue;
        CCheckedLevel level;
        level.Level = number;
        level.Grid = pixels.Level(number).Grid;
        level.Frames = FramesOf(pixels);
        const size_t size = level.Frames.size() * level.NumOfAreas();
        level.Verdicts.resize(size, Verdict::Absent);
        level.Sizes.resize(size);
        level.Hashes.resize(isHashing ? size : 0);
        group.Levels.push_back(std::move(level));
    }
    return group;
}

/// Readers that threads borrow, as many as work at once.
class CTileReaders
{
public:
    CTileReaders(const CPluginHost& host, std::filesystem::path path, std::span<const CGroupIndex> index,
                 const CCheckOptions& options)
        : _Host(host), _Path(std::move(path)), _Index(index), _Options(options)
    {
    }

    std::unique_ptr<CTileReader> Take()
    {
        {
            const std::lock_guard lock(_Mutex);
            if (!_Free.empty())
            {
                auto reader = std::move(_Free.back());
                _Free.pop_back();
                return reader;
            }
        }
        return std::make_unique<CTileReader>(_Host, _Path, _Index, _Options);
    }
    void GiveBack(std::unique_ptr<CTileReader> reader)
    {
        const std::lock_guard lock(_Mutex);
        _Free.push_back(std::move(reader));
    }

private:
    const CPluginHost& _Host;
    std::filesystem::path _Path;
    std::span<const CGroupIndex> _Index;
    const CCheckOptions& _Options;
    std::mutex _Mutex;
    std::vector<std::unique_ptr<CTileReader>> _Free;
};

class CChecker
{
public:
    CChecker(CTileReaders& readers, CCheckedDocument& checked, const CCheckOptions& options)
        : _Readers(readers), _Checked(checked), _Options(options), _Chunks(ChunksOf(checked)),
          _Progress(NumOfTiles(checked), "tiles")
    {
    }

    void Run()
    {
        ForEachInParallel(_Chunks.size(), _Options.Jobs, [this](size_t number) { Check(_Chunks[number]); });
    }

private:
    static std::vector<CChunk> ChunksOf(const CCheckedDocument& checked)
    {
        std::vector<CChunk> chunks;
        for (size_t group = 0; group < checked.Groups.size(); ++group)
            for (size_t level = 0; level < checked.Groups[group].Levels.size(); ++level)
                AddChunks(chunks, group, level, checked.Groups[group].Levels[level]);
        return chunks;
    }
    static void AddChunks(std::vector<CChunk>& chunks, size_t group, size_t number, const CCheckedLevel& level)
    {
        for (size_t frame = 0; frame < level.Frames.size(); ++frame)
            for (uint64_t area = 0; area < level.NumOfAreas(); area += TilesOfAChunk)
                chunks.push_back({group, number, frame, area, std::min(area + TilesOfAChunk, level.NumOfAreas())});
    }
    static uint64_t NumOfTiles(const CCheckedDocument& checked)
    {
        uint64_t count = 0;
        for (const CCheckedGroup& group : checked.Groups)
            for (const CCheckedLevel& level : group.Levels)
                count += level.Verdicts.size();
        return count;
    }

    void Check(const CChunk& chunk)
    {
        CCheckedLevel& level = _Checked.Groups[chunk.Group].Levels[chunk.Level];
        auto reader = _Readers.Take();
        for (uint64_t area = chunk.FirstArea; area < chunk.BehindLastArea; ++area)
        {
            const CCheckedTile tile =
                reader->Check(_Checked.Groups[chunk.Group].Number, level.Level, area, level.Frames[chunk.Frame]);
            const size_t place = chunk.Frame * level.NumOfAreas() + area;
            level.Verdicts[place] = tile.Outcome;
            level.Sizes[place] = tile.Size;
            if (_Options.IsHashing)
                level.Hashes[place] = tile.Hash;
            if (IsBad(tile.Outcome))
                AddFailure(chunk, level, area, tile);
        }
        _Readers.GiveBack(std::move(reader));
        const std::lock_guard lock(_Mutex);
        _Progress.Advance(chunk.BehindLastArea - chunk.FirstArea);
    }

    void AddFailure(const CChunk& chunk, const CCheckedLevel& level, uint64_t area, const CCheckedTile& tile)
    {
        const std::lock_guard lock(_Mutex);
        if (_Checked.Failures.size() < MostFailuresTold)
            _Checked.Failures.push_back(
                "group " + std::to_string(_Checked.Groups[chunk.Group].Number) + ", level " +
                std::to_string(level.Level) + ", column " + std::to_string(area % level.Grid.Cols) + ", row " +
                std::to_string(area / level.Grid.Cols) + ", " + TextOf(level.Frames[chunk.Frame]) + ": " +
                NameOf(tile.Outcome) + (tile.Reason.empty() ? "" : ": " + tile.Reason));
    }

    CTileReaders& _Readers;
    CCheckedDocument& _Checked;
    const CCheckOptions& _Options;
    std::vector<CChunk> _Chunks;
    std::mutex _Mutex;
    CProgress _Progress;
};

} // namespace

const std::string& NameOf(Verdict verdict)
{
    return VerdictNames[static_cast<size_t>(verdict)];
}

std::array<uint64_t, NumOfVerdicts> CCheckedDocument::Counts() const
{
    std::array<uint64_t, NumOfVerdicts> counts{};
    for (const CCheckedGroup& group : Groups)
        for (const CCheckedLevel& level : group.Levels)
            for (const Verdict verdict : level.Verdicts)
                ++counts[static_cast<size_t>(verdict)];
    return counts;
}

uint64_t CCheckedDocument::NumOfBytes() const
{
    uint64_t bytes = 0;
    for (const CCheckedGroup& group : Groups)
        for (const CCheckedLevel& level : group.Levels)
            for (const uint64_t size : level.Sizes)
                bytes += size;
    return bytes;
}

uint64_t CCheckedDocument::NumOfBadTiles() const
{
    const auto counts = Counts();
    uint64_t bad = 0;
    for (size_t i = 0; i < counts.size(); ++i)
        bad += IsBad(static_cast<Verdict>(i)) ? counts[i] : 0;
    return bad;
}

CCheckedDocument CheckTiles(const CPluginHost& host, const std::filesystem::path& path, const CCheckOptions& options)
{
    const auto start = std::chrono::steady_clock::now();
    CCheckedDocument checked;
    {
        const CDocument document = OpenWhatThereIs(host, path);
        checked.Path = document.Path();
        checked.Missing = document.MissingGroups();
        for (const int group : document.ReadableGroups())
            checked.Groups.push_back(EmptyGroup(CGroupPixels(document, group, options.Values), options.IsHashing));
    }
    const std::vector<CGroupIndex> index = TileIndexOf(CReaderDocument(path));
    CTileReaders readers(host, path, index, options);
    CChecker(readers, checked, options).Run();
    checked.Seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return checked;
}

} // namespace HostTool
