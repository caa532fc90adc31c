#include "HostTool/Diff/PixelsDiff.h"
#include "HostTool/Pixels/Parallel.h"
#include "HostTool/Pixels/Stitch.h"

#include <algorithm>

namespace HostTool
{

namespace
{

/// What is found at one place of two documents.
struct CPlaceFound
{
    bool IsCompared = false; ///< there is a tile in one of them, or in both
    std::string Difference;
    std::string Failure;
};

std::string TextOfTileSize(const CLevel& level)
{
    return std::to_string(level.TileWidth) + " x " + std::to_string(level.TileHeight);
}

/// Compares the tiles of one level of both documents.
class CLevelComparer
{
public:
    CLevelComparer(const CGroupPair& groups, int level, unsigned jobs, CDiffReport& report)
        : _Groups(groups), _A(groups.A.Level(level)), _B(groups.B.Level(level)), _Jobs(jobs), _Report(report)
    {
    }

    bool HasTilesOfOneSize() const { return _A.TileWidth == _B.TileWidth && _A.TileHeight == _B.TileHeight; }

    void Compare(const CPosition& position, CProgress& progress)
    {
        CompareGridOf(_A, position, nullptr, progress);
        CompareGridOf(_B, position, &_A, progress);
    }

private:
    /// Compares at the places of a grid that are not those of another one.
    void CompareGridOf(const CLevel& level, const CPosition& position, const CLevel* done, CProgress& progress)
    {
        for (uint64_t row = 0; row < level.Grid.Rows; ++row)
        {
            std::vector<CPlaceFound> found(level.Grid.Cols);
            const int64_t gridRow = level.FirstRow + static_cast<int64_t>(row);
            ForEachInParallel(level.Grid.Cols, _Jobs,
                              [&](size_t col)
                              {
                                  const int64_t gridCol = level.FirstCol + static_cast<int64_t>(col);
                                  if (!done || !done->AreaOf(gridCol, gridRow))
                                      found[col] = ComparePlace(gridCol, gridRow, position);
                              });
            for (const CPlaceFound& place : found)
                Tell(place);
            progress.Advance(level.Grid.Cols);
        }
    }

    CPlaceFound ComparePlace(int64_t col, int64_t row, const CPosition& position) const
    {
        const std::string name = _Groups.Name() + NameOfTile(_A, col, row, position) + ": ";
        CPlaceFound found;
        try
        {
            const auto a = Read(_Groups.A, _A, col, row, position);
            const auto b = Read(_Groups.B, _B, col, row, position);
            found.IsCompared = a || b;
            if (const std::string text = DifferenceOf(a, b); !text.empty())
                found.Difference = name + text;
        }
        catch (const CTileError& error)
        {
            found.Failure = name + error.what();
        }
        return found;
    }

    static std::optional<CStoredTile> Read(const CGroupPixels& pixels, const CLevel& level, int64_t col, int64_t row,
                                           const CPosition& position)
    try
    {
        return pixels.ReadTile(level, col, row, position);
    }
    catch (const CHostError& error)
    {
        throw CTileError(error.what());
    }

    static std::string DifferenceOf(const std::optional<CStoredTile>& a, const std::optional<CStoredTile>& b)
    {
        if (!a && !b)
            return {};
        if (!a || !b)
            return std::string("only in the ") + (a ? "first" : "second") + " document";
        if (a->Bytes.size() != b->Bytes.size())
            return std::to_string(a->Bytes.size()) + " bytes | " + std::to_string(b->Bytes.size()) + " bytes";
        const auto differing = std::mismatch(a->Bytes.begin(), a->Bytes.end(), b->Bytes.begin());
        if (differing.first != a->Bytes.end())
            return "other bytes, from byte " + std::to_string(differing.first - a->Bytes.begin()) + " of " +
                   std::to_string(a->Bytes.size()) + " on";
        return a->JpegTables == b->JpegTables ? "" : "other JPEG tables";
    }

    void Tell(const CPlaceFound& place)
    {
        if (place.IsCompared)
            _Report.Compared(DiffKind::Tile, 1);
        if (!place.Difference.empty())
            _Report.Add(DiffKind::Tile, place.Difference);
        if (!place.Failure.empty())
            _Report.AddFailures(place.Failure);
    }

    const CGroupPair& _Groups;
    const CLevel& _A;
    const CLevel& _B;
    unsigned _Jobs;
    CDiffReport& _Report;
};

/// How many places there are to compare.
uint64_t NumOfPlaces(const CGroupPair& groups)
{
    uint64_t count = 0;
    for (int level = 0; level < std::min(groups.A.NumOfLevels(), groups.B.NumOfLevels()); ++level)
        if (groups.A.HasLevel(level) && groups.B.HasLevel(level))
            for (const CGroupPixels* pixels : {&groups.A, &groups.B})
                count += pixels->Level(level).Grid.Cols * pixels->Level(level).Grid.Rows;
    return count * CommonPlanes(groups).size();
}

} // namespace

std::vector<CPosition> CommonPlanes(const CGroupPair& groups)
{
    const auto& others = groups.B.Channels();
    std::vector<CPosition> planes;
    for (int64_t t = 0; t < std::min(groups.A.Axes().T, groups.B.Axes().T); ++t)
        for (int64_t z = 0; z < std::min(groups.A.Axes().Z, groups.B.Axes().Z); ++z)
            for (const CChannelPixels& channel : groups.A.Channels())
            {
                if (std::none_of(others.begin(), others.end(),
                                 [&](const CChannelPixels& other) { return other.ID == channel.ID; }))
                    continue;
                for (int64_t lambda = 0; lambda < std::min(groups.A.Axes().Lambda, groups.B.Axes().Lambda); ++lambda)
                    planes.push_back({channel.ID, z, t, lambda});
            }
    return planes;
}

void CompareStored(const CGroupPair& groups, unsigned jobs, CDiffReport& report)
{
    CProgress progress(NumOfPlaces(groups), "tiles");
    for (int level = 0; level < std::min(groups.A.NumOfLevels(), groups.B.NumOfLevels()); ++level)
    {
        if (!groups.A.HasLevel(level) || !groups.B.HasLevel(level))
            continue;
        CLevelComparer comparer(groups, level, jobs, report);
        if (!comparer.HasTilesOfOneSize())
        {
            report.Add(DiffKind::Tile, groups.Name() + "level " + std::to_string(level) + ": tiles of " +
                                           TextOfTileSize(groups.A.Level(level)) + " | " +
                                           TextOfTileSize(groups.B.Level(level)) +
                                           " pixels, which only --decoded compares");
            continue;
        }
        for (const CPosition& position : CommonPlanes(groups))
            comparer.Compare(position, progress);
    }
}

} // namespace HostTool
