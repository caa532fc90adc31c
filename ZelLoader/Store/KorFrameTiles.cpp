#include "ZelLoader/Store/KorFrameTiles.h"

#include "CommonUtil/PagedObjects.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/Store/ZelDeepZoomTile.h"

#include <algorithm>
#include <compare>
#include <numeric>

namespace Zel
{

namespace
{

/// The order of a frame's table: levels stand together, and rows within them, as nearly every file stores them.
struct CPlace
{
    uint32_t Level;
    int32_t Row;
    int32_t Col;

    auto operator<=>(const CPlace&) const = default;
};

CPlace PlaceOf(const CDecompressedKorTileIdx& idx)
{
    return {idx.PIdx, idx.RowIdx, idx.ColIdx};
}

/// A record and its place in the order of a frame's table, as two numbers that are quickly compared; of one place the
/// first record in the file comes first.
class CSortedTile
{
public:
    CSortedTile(const CDecompressedKorTileIdx& idx, uint32_t number)
        : _levelAndRow(uint64_t{idx.PIdx} << 32 | Biased(idx.RowIdx)),
          _colAndNumber(uint64_t{Biased(idx.ColIdx)} << 32 | number)
    {
    }
    auto operator<=>(const CSortedTile&) const = default;
    bool IsAtPlaceOf(const CSortedTile& other) const
    {
        return _levelAndRow == other._levelAndRow && _colAndNumber >> 32 == other._colAndNumber >> 32;
    }
    uint32_t Number() const { return static_cast<uint32_t>(_colAndNumber); }

private:
    /// In the order of numbers with a sign.
    static uint32_t Biased(int32_t number) { return static_cast<uint32_t>(number) ^ 0x80000000; }

    uint64_t _levelAndRow;
    uint64_t _colAndNumber;
};

/// A level's part of a frame's table.
struct CLevelOfFrame
{
    explicit CLevelOfFrame(const CKorTileLevel& level)
        : Level(level.Level), First(level.First), Last(level.Last), Extent(level.Extent)
    {
    }
    CLevelOfFrame(const CDecompressedKorTileIdx& idx, size_t place)
        : Level(idx.PIdx), First(place), Last(place), Extent(idx)
    {
    }
    int64_t NumOfCols() const { return int64_t{Extent.GreatestCol} - Extent.SmallestCol + 1; }
    int64_t NumOfRows() const { return int64_t{Extent.GreatestRow} - Extent.SmallestRow + 1; }
    int64_t NumOfTiles() const { return static_cast<int64_t>(Last - First); }

    uint32_t Level;
    size_t First;
    size_t Last;
    CTileExtent Extent;
    bool LacksNoTile = false; ///< each position of the extent has one
};

class CTilesOfRecords : public CKorFrameTiles
{
public:
    CTilesOfRecords(CZelFrame& frame, const CKorFile& korFile, const CKorTilesByFrame& tilesByFrame)
        : _Frame(frame), _KorTiles(korFile.KorTiles()), _TileNumbers(tilesByFrame.TilesOf(frame.FrameIdx()))
    {
        if (tilesByFrame.IsListTheTable())
            for (const CKorTileLevel& level : korFile.KorTileLevels().Levels())
                _Levels.emplace_back(level);
        else
            for (size_t place = 0; place < _TileNumbers.NumOfPositions(); ++place)
                AddToLevel(place);
        for (CLevelOfFrame& level : _Levels) // a product of columns and rows might not fit into 64 bits
            level.LacksNoTile = level.NumOfTiles() % level.NumOfCols() == 0 &&
                                level.NumOfTiles() / level.NumOfCols() == level.NumOfRows();
    }

    uint64_t Size() const override { return _TileNumbers.NumOfPositions(); }
    CDeepZoomTile* Find(const CDeepZoomTileIdx& idx) override;
    CZelDeepZoomTile& Repeat(uint32_t tileNumber) override { return TileAt(_TileNumbers.PlaceOfRepeat(tileNumber)); }
    CZelDeepZoomTile* FindBehind(const CZelDeepZoomTile& tile) override;
    std::optional<CTileCorner> SmallestColAndRow(uint32_t level) const override;
    bool ForEachOfLevel(uint32_t level, const std::function<bool(CDeepZoomTile&)>& visit) override;
    /// False when a tile lies outside the matrix of its level: then the frame's tiles cannot be listed.
    bool LieInTheirMatrixes() const;

private:
    CDecompressedKorTileIdx IdxAt(size_t place) const { return _KorTiles.Idx(_TileNumbers[place]); }
    void AddToLevel(size_t place);
    const CLevelOfFrame* FindLevel(uint32_t level) const;
    bool FindPlace(const CLevelOfFrame& level, const CDeepZoomTileIdx& idx, size_t& place) const;
    bool FindPlaceBySearch(const CLevelOfFrame& level, const CDeepZoomTileIdx& idx, size_t& place) const;
    CZelDeepZoomTile& TileAt(size_t place)
    {
        CZelDeepZoomTile* tile = _Tiles.Find(static_cast<uint32_t>(place));
        return tile ? *tile : MakeTileAt(static_cast<uint32_t>(place));
    }
    CZelDeepZoomTile& MakeTileAt(uint32_t place);

    CZelFrame& _Frame;
    const CKorTiles& _KorTiles;
    const CKorTileNumbers _TileNumbers;
    std::vector<CLevelOfFrame> _Levels;
    CPagedObjects<CZelDeepZoomTile> _Tiles; ///< by place in the table
};

void CTilesOfRecords::AddToLevel(size_t place)
{
    const CDecompressedKorTileIdx idx = IdxAt(place);
    if (_Levels.empty() || _Levels.back().Level != idx.PIdx)
        _Levels.emplace_back(idx, place);
    CLevelOfFrame& level = _Levels.back();
    level.Extent.Add(idx);
    level.Last = place + 1;
}

bool CTilesOfRecords::LieInTheirMatrixes() const
{
    const auto& levels = _Frame.ParentMultiDimImg().DeepZoomPyramidLevels();
    for (const CLevelOfFrame& levelOfFrame : _Levels)
    {
        ZEL_ASSERT(levelOfFrame.Level < levels.size() && levels[levelOfFrame.Level]);
        CDeepZoomPyramidLevel& level = *levels[levelOfFrame.Level];
        if (levelOfFrame.Extent.GreatestCol >= static_cast<int32_t>(level.NumOfCols()) ||
            levelOfFrame.Extent.GreatestRow >= static_cast<int32_t>(level.NumOfRows()))
            return false;
    }
    return true;
}

const CLevelOfFrame* CTilesOfRecords::FindLevel(uint32_t level) const
{
    const auto found = std::lower_bound(_Levels.begin(), _Levels.end(), level,
                                        [](const CLevelOfFrame& l, uint32_t number) { return l.Level < number; });
    return found != _Levels.end() && found->Level == level ? &*found : nullptr;
}

std::optional<CTileCorner> CTilesOfRecords::SmallestColAndRow(uint32_t level) const
{
    const CLevelOfFrame* levelOfFrame = FindLevel(level);
    if (!levelOfFrame)
        return {};
    return CTileCorner{levelOfFrame->Extent.SmallestCol, levelOfFrame->Extent.SmallestRow};
}

bool CTilesOfRecords::FindPlace(const CLevelOfFrame& level, const CDeepZoomTileIdx& idx, size_t& place) const
{
    const int64_t numOfCols = level.NumOfCols();
    const int64_t col = int64_t{idx._TileColIdx} - level.Extent.SmallestCol;
    const int64_t row = int64_t{idx._TileRowIdx} - level.Extent.SmallestRow;
    if (col < 0 || row < 0 || col >= numOfCols || row >= level.NumOfRows())
        return false;
    // Where no tile is missing, the place follows from the position, and it mostly does before the first that is.
    if (row < level.NumOfTiles() && row * numOfCols + col < level.NumOfTiles())
    {
        place = level.First + static_cast<size_t>(row * numOfCols + col);
        if (level.LacksNoTile || IdxAt(place).TileIdx() == idx)
            return true;
    }
    return FindPlaceBySearch(level, idx, place);
}

bool CTilesOfRecords::FindPlaceBySearch(const CLevelOfFrame& level, const CDeepZoomTileIdx& idx, size_t& place) const
{
    const CDecompressedKorTileIdx wanted{
        .ColIdx = idx._TileColIdx, .RowIdx = idx._TileRowIdx, .PIdx = idx._PyramidLevelIdx};
    size_t numOfTiles = level.Last - level.First;
    place = level.First;
    while (numOfTiles > 0)
    {
        const size_t half = numOfTiles / 2;
        const bool isBehind = PlaceOf(IdxAt(place + half)) < PlaceOf(wanted);
        place = isBehind ? place + half + 1 : place;
        numOfTiles = isBehind ? numOfTiles - half - 1 : half;
    }
    return place < level.Last && IdxAt(place).TileIdx() == idx;
}

CZelDeepZoomTile& CTilesOfRecords::MakeTileAt(uint32_t place)
{
    const CDeepZoomTileIdx idx = IdxAt(place).TileIdx();
    CDeepZoomPyramidLevel& level = *_Frame.ParentMultiDimImg().DeepZoomPyramidLevels()[idx._PyramidLevelIdx];
    return _Tiles.Emplace(place, _KorTiles, _TileNumbers[place], idx, place, _Frame, level,
                          place >= _TileNumbers.NumOfPositions());
}

CDeepZoomTile* CTilesOfRecords::Find(const CDeepZoomTileIdx& idx)
{
    const CLevelOfFrame* level = FindLevel(idx._PyramidLevelIdx);
    size_t place = 0;
    return level && FindPlace(*level, idx, place) ? &TileAt(place) : nullptr;
}

CZelDeepZoomTile* CTilesOfRecords::FindBehind(const CZelDeepZoomTile& tile)
{
    const size_t place = size_t{tile.Place()} + 1;
    return place < _TileNumbers.Size() && _TileNumbers[place] == tile.TileNumber() + 1 ? &TileAt(place) : nullptr;
}

bool CTilesOfRecords::ForEachOfLevel(uint32_t level, const std::function<bool(CDeepZoomTile&)>& visit)
{
    const CLevelOfFrame* levelOfFrame = FindLevel(level);
    if (!levelOfFrame)
        return true;
    for (size_t place = levelOfFrame->First; place < levelOfFrame->Last; ++place)
        if (!visit(TileAt(place)))
            return false;
    return true;
}

} // namespace

size_t CKorTileNumbers::PlaceOfRepeat(uint32_t number) const
{
    ZEL_ASSERT(_numOfPositions <= _numbers.size());
    const auto repeats = _numbers.subspan(_numOfPositions);
    const auto found = std::ranges::lower_bound(repeats, number);
    ZEL_ASSERT(found != repeats.end() && *found == number);
    return _numOfPositions + static_cast<size_t>(found - repeats.begin());
}

CKorTilesByFrame::CKorTilesByFrame(const CKorFile& korFile, const CDimensions& dimensions, uint64_t maxNumOfFrames)
    : _KorTiles(korFile.KorTiles()), _FrameNumbers(dimensions, maxNumOfFrames)
{
    if (!CanListBeTheTable(korFile.KorTileLevels()))
        MakeTable();
}

bool CKorTilesByFrame::CanListBeTheTable(const CKorTileLevels& levels) const
{
    return _FrameNumbers.NumOfFrames() == 1 && levels.AreSorted() && levels.GreatestIdx().FrameIdx() == CFrameIdx();
}

void CKorTilesByFrame::MakeTable()
{
    const uint64_t numOfFrames = _FrameNumbers.NumOfFrames();
    CountTilesOfFrames();
    const std::vector<bool> isSorted = FillTable();
    _NumOfPositions.resize(numOfFrames);
    for (uint64_t frame = 0; frame < numOfFrames; ++frame)
    {
        _NumOfPositions[frame] = _FirstOfFrame[frame + 1] - _FirstOfFrame[frame];
        if (!isSorted[frame])
            SortTilesOf(frame);
    }
}

void CKorTilesByFrame::CountTilesOfFrames()
{
    const uint64_t numOfFrames = _FrameNumbers.NumOfFrames();
    _FirstOfFrame.assign(numOfFrames + 1, 0);
    for (const CKorTileRun& run : _KorTiles.Runs())
    {
        const uint64_t frameNumber = _FrameNumbers.NumberOf(run.FirstIdx.FrameIdx());
        ZEL_ASSERT(frameNumber < numOfFrames);
        _FirstOfFrame[frameNumber + 1] += run.Length;
    }
    for (uint64_t frame = 0; frame < numOfFrames; ++frame)
        _FirstOfFrame[frame + 1] += _FirstOfFrame[frame];
}

/// Each frame's records in the order of the file. Answers for each whether that is the order of its table, without
/// repeated positions: in nearly every file all are.
std::vector<bool> CKorTilesByFrame::FillTable()
{
    const uint64_t numOfFrames = _FrameNumbers.NumOfFrames();
    _TileNumbers.resize(_KorTiles.Size());
    std::vector<uint32_t> nextOfFrame(_FirstOfFrame.begin(), _FirstOfFrame.end() - 1);
    std::vector<const CKorTileRun*> latestOfFrame(numOfFrames);
    std::vector<bool> isSorted(numOfFrames, true);
    for (const CKorTileRun& run : _KorTiles.Runs())
    {
        const uint64_t frame = _FrameNumbers.NumberOf(run.FirstIdx.FrameIdx());
        const CKorTileRun*& latest = latestOfFrame[frame];
        if (latest && PlaceOf(run.FirstIdx) <= PlaceOf(latest->LastIdx()))
            isSorted[frame] = false;
        latest = &run;
        uint32_t& next = nextOfFrame[frame];
        std::iota(_TileNumbers.begin() + next, _TileNumbers.begin() + next + run.Length, run.FirstNumber);
        next += run.Length;
    }
    return isSorted;
}

void CKorTilesByFrame::SortTilesOf(uint64_t frameNumber)
{
    const auto first = _TileNumbers.begin() + _FirstOfFrame[frameNumber];
    const auto last = _TileNumbers.begin() + _FirstOfFrame[frameNumber + 1];
    // With their places beside them: looking each up in every comparison would take several times as long.
    std::vector<CSortedTile> tiles;
    tiles.reserve(static_cast<size_t>(last - first));
    for (auto number = first; number != last; ++number)
        tiles.emplace_back(_KorTiles.Idx(*number), *number);
    std::sort(tiles.begin(), tiles.end());
    std::vector<uint32_t> repeats;
    auto end = first;
    const CSortedTile* latest = nullptr;
    for (const CSortedTile& tile : tiles)
    {
        if (latest && tile.IsAtPlaceOf(*latest))
            repeats.push_back(tile.Number());
        else
            *end++ = tile.Number();
        latest = &tile;
    }
    _NumOfPositions[frameNumber] = static_cast<uint32_t>(end - first);
    std::ranges::sort(repeats);
    std::ranges::copy(repeats, end);
}

CKorTileNumbers CKorTilesByFrame::TilesOf(const CFrameIdx& idx) const
{
    if (IsListTheTable())
        return CKorTileNumbers(_KorTiles.Size());
    const uint64_t frameNumber = _FrameNumbers.NumberOf(idx);
    ZEL_ASSERT(frameNumber < _NumOfPositions.size());
    const uint32_t first = _FirstOfFrame[frameNumber];
    return {std::span(_TileNumbers).subspan(first, _FirstOfFrame[frameNumber + 1] - first),
            _NumOfPositions[frameNumber]};
}

std::unique_ptr<CKorFrameTiles> MakeKorFrameTiles(CZelFrame& frame)
{
    CZelMultiDimImage& image = frame.ParentZelImage();
    const CKorTilesByFrame& tilesByFrame = image.KorTilesByFrame();
    auto tiles = std::make_unique<CTilesOfRecords>(frame, image.OpenedKorFile(), tilesByFrame);
    return tiles->LieInTheirMatrixes() ? std::move(tiles) : nullptr;
}

} // namespace Zel
