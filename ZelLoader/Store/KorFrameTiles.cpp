#include "ZelLoader/Store/KorFrameTiles.h"

#include "CommonUtil/PagedObjects.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/Store/ZelDeepZoomTile.h"

#include <algorithm>
#include <tuple>

namespace Zel
{

namespace
{

/// The order of a frame's table: levels stand together, and rows within them, as nearly every file stores them.
auto PlaceOf(const CDecompressedKorTileIdx& idx)
{
    return std::tie(idx.PIdx, idx.RowIdx, idx.ColIdx);
}

/// A level's part of a frame's table.
struct CLevelOfFrame
{
    uint32_t Level = 0;
    size_t First = 0;
    size_t Last = 0;
    int32_t SmallestCol = 0;
    int32_t SmallestRow = 0;
    int64_t NumOfCols = 0;
};

class CKorFrameTiles : public CDeepZoomTiles
{
public:
    CKorFrameTiles(CZelFrame& frame, const std::vector<CKorTile>& korTiles, std::span<const uint32_t> tileNumbers)
        : _Frame(frame), _KorTiles(korTiles), _TileNumbers(tileNumbers)
    {
        for (size_t i = 0; i < _TileNumbers.size(); ++i)
            AddToLevel(i);
    }

    uint64_t Size() const override { return _TileNumbers.size(); }
    CDeepZoomTile* Find(const CDeepZoomTileIdx& idx) override;
    std::optional<CTileCorner> SmallestColAndRow(uint32_t level) const override;
    bool ForEachOfLevel(uint32_t level, const std::function<bool(CDeepZoomTile&)>& visit) override;
    /// False when a tile lies outside the matrix of its level: then the frame's tiles cannot be listed.
    bool LieInTheirMatrixes() const;

private:
    const CDecompressedKorTileIdx& IdxAt(size_t place) const { return _KorTiles[_TileNumbers[place]].Idx; }
    void AddToLevel(size_t place);
    const CLevelOfFrame* FindLevel(uint32_t level) const;
    bool FindPlace(const CLevelOfFrame& level, const CDeepZoomTileIdx& idx, size_t& place) const;
    CZelDeepZoomTile& TileAt(size_t place);

    CZelFrame& _Frame;
    const std::vector<CKorTile>& _KorTiles;
    std::span<const uint32_t> _TileNumbers;
    std::vector<CLevelOfFrame> _Levels;
    CPagedObjects<CZelDeepZoomTile> _Tiles; ///< by place in the table
};

void CKorFrameTiles::AddToLevel(size_t place)
{
    const CDecompressedKorTileIdx& idx = IdxAt(place);
    if (_Levels.empty() || _Levels.back().Level != idx.PIdx)
        _Levels.push_back({idx.PIdx, place, place, idx.ColIdx, idx.RowIdx, 0});
    CLevelOfFrame& level = _Levels.back();
    const int64_t greatestCol = std::max<int64_t>(level.SmallestCol + level.NumOfCols - 1, idx.ColIdx);
    level.SmallestCol = std::min(level.SmallestCol, idx.ColIdx);
    level.SmallestRow = std::min(level.SmallestRow, idx.RowIdx);
    level.NumOfCols = greatestCol - level.SmallestCol + 1;
    level.Last = place + 1;
}

bool CKorFrameTiles::LieInTheirMatrixes() const
{
    const auto& levels = _Frame.ParentMultiDimImg().DeepZoomPyramidLevels();
    for (size_t place = 0; place < _TileNumbers.size(); ++place)
    {
        const CDecompressedKorTileIdx& idx = IdxAt(place);
        ZEL_ASSERT(idx.PIdx < levels.size() && levels[idx.PIdx]);
        CDeepZoomPyramidLevel& level = *levels[idx.PIdx];
        if (idx.ColIdx >= static_cast<int32_t>(level.NumOfCols()) ||
            idx.RowIdx >= static_cast<int32_t>(level.NumOfRows()))
            return false;
    }
    return true;
}

const CLevelOfFrame* CKorFrameTiles::FindLevel(uint32_t level) const
{
    const auto found = std::lower_bound(_Levels.begin(), _Levels.end(), level,
                                        [](const CLevelOfFrame& l, uint32_t number) { return l.Level < number; });
    return found != _Levels.end() && found->Level == level ? &*found : nullptr;
}

std::optional<CTileCorner> CKorFrameTiles::SmallestColAndRow(uint32_t level) const
{
    const CLevelOfFrame* levelOfFrame = FindLevel(level);
    if (!levelOfFrame)
        return {};
    return CTileCorner{levelOfFrame->SmallestCol, levelOfFrame->SmallestRow};
}

bool CKorFrameTiles::FindPlace(const CLevelOfFrame& level, const CDeepZoomTileIdx& idx, size_t& place) const
{
    const auto isAt = [&](size_t candidate) { return IdxAt(candidate).TileIdx() == idx; };
    // Where no tile is missing, the place follows from the position.
    const int64_t col = int64_t{idx._TileColIdx} - level.SmallestCol;
    const int64_t row = int64_t{idx._TileRowIdx} - level.SmallestRow;
    if (col < 0 || row < 0 || col >= level.NumOfCols)
        return false;
    const auto numOfTiles = static_cast<int64_t>(level.Last - level.First);
    if (row < numOfTiles && row * level.NumOfCols + col < numOfTiles)
    {
        place = level.First + static_cast<size_t>(row * level.NumOfCols + col);
        if (isAt(place))
            return true;
    }
    const CDecompressedKorTileIdx wanted{
        .ColIdx = idx._TileColIdx, .RowIdx = idx._TileRowIdx, .PIdx = idx._PyramidLevelIdx};
    const auto first = _TileNumbers.begin() + static_cast<std::ptrdiff_t>(level.First);
    const auto last = _TileNumbers.begin() + static_cast<std::ptrdiff_t>(level.Last);
    const auto found = std::lower_bound(first, last, wanted,
                                        [this](uint32_t number, const CDecompressedKorTileIdx& place_)
                                        { return PlaceOf(_KorTiles[number].Idx) < PlaceOf(place_); });
    place = static_cast<size_t>(found - _TileNumbers.begin());
    return found != last && isAt(place);
}

CZelDeepZoomTile& CKorFrameTiles::TileAt(size_t place)
{
    const auto number = static_cast<uint32_t>(place);
    if (CZelDeepZoomTile* tile = _Tiles.Find(number))
        return *tile;
    const uint32_t tileNumber = _TileNumbers[place];
    CDeepZoomPyramidLevel& level = *_Frame.ParentMultiDimImg().DeepZoomPyramidLevels()[_KorTiles[tileNumber].Idx.PIdx];
    return _Tiles.Emplace(number, _KorTiles[tileNumber], tileNumber, _Frame, level);
}

CDeepZoomTile* CKorFrameTiles::Find(const CDeepZoomTileIdx& idx)
{
    const CLevelOfFrame* level = FindLevel(idx._PyramidLevelIdx);
    size_t place = 0;
    return level && FindPlace(*level, idx, place) ? &TileAt(place) : nullptr;
}

bool CKorFrameTiles::ForEachOfLevel(uint32_t level, const std::function<bool(CDeepZoomTile&)>& visit)
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

CKorTilesByFrame::CKorTilesByFrame(const std::vector<CKorTile>& korTiles, const CDimensions& dimensions,
                                   uint64_t maxNumOfFrames)
    : _KorTiles(korTiles), _TileNumbers(korTiles.size())
{
    uint64_t numOfFrames = 1;
    for (const auto& [type, dimension] : dimensions)
    {
        if (!IsFrameDifferentiatorCoordDimension(type))
            continue;
        _Strides.SetSubIdx(type, static_cast<uint32_t>(numOfFrames));
        numOfFrames *= dimension->NumOfPoints();
        ZEL_ASSERT(numOfFrames <= maxNumOfFrames); // also before the next product
    }
    _FirstOfFrame.assign(numOfFrames + 1, 0);
    for (const CKorTile& tile : korTiles)
    {
        const uint64_t frameNumber = FrameNumber(tile.Idx.FrameIdx());
        ZEL_ASSERT(frameNumber < numOfFrames);
        ++_FirstOfFrame[frameNumber + 1];
    }
    for (uint64_t frame = 0; frame < numOfFrames; ++frame)
        _FirstOfFrame[frame + 1] += _FirstOfFrame[frame];
    std::vector<uint32_t> nextOfFrame(_FirstOfFrame.begin(), _FirstOfFrame.end() - 1);
    for (uint32_t number = 0; number < korTiles.size(); ++number)
        _TileNumbers[nextOfFrame[FrameNumber(korTiles[number].Idx.FrameIdx())]++] = number;
    _NumOfTiles.resize(numOfFrames);
    for (uint64_t frame = 0; frame < numOfFrames; ++frame)
        SortTilesOf(frame);
}

uint64_t CKorTilesByFrame::FrameNumber(const CFrameIdx& idx) const
{
    return uint64_t{idx.Z} * _Strides.Z + uint64_t{idx.C} * _Strides.C + uint64_t{idx.L} * _Strides.L +
           uint64_t{idx.T} * _Strides.T;
}

void CKorTilesByFrame::SortTilesOf(uint64_t frameNumber)
{
    const auto first = _TileNumbers.begin() + _FirstOfFrame[frameNumber];
    const auto last = _TileNumbers.begin() + _FirstOfFrame[frameNumber + 1];
    const auto isBefore = [this](uint32_t left, uint32_t right)
    { return PlaceOf(_KorTiles[left].Idx) < PlaceOf(_KorTiles[right].Idx); };
    if (!std::is_sorted(first, last, isBefore))
        std::stable_sort(first, last, isBefore);
    const auto isSamePlace = [this](uint32_t left, uint32_t right)
    { return PlaceOf(_KorTiles[left].Idx) == PlaceOf(_KorTiles[right].Idx); };
    _NumOfTiles[frameNumber] = static_cast<uint32_t>(std::unique(first, last, isSamePlace) - first);
}

std::span<const uint32_t> CKorTilesByFrame::TilesOf(const CFrameIdx& idx) const
{
    const uint64_t frameNumber = FrameNumber(idx);
    ZEL_ASSERT(frameNumber < _NumOfTiles.size());
    return std::span(_TileNumbers).subspan(_FirstOfFrame[frameNumber], _NumOfTiles[frameNumber]);
}

std::unique_ptr<CDeepZoomTiles> MakeKorFrameTiles(CZelFrame& frame)
{
    CZelMultiDimImage& image = frame.ParentZelImage();
    const CKorTilesByFrame& tilesByFrame = image.KorTilesByFrame();
    auto tiles =
        std::make_unique<CKorFrameTiles>(frame, image.KorFile()->KorTiles(), tilesByFrame.TilesOf(frame.FrameIdx()));
    return tiles->LieInTheirMatrixes() ? std::move(tiles) : nullptr;
}

} // namespace Zel
