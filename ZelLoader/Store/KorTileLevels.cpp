#include "ZelLoader/Store/KorTileLevels.h"

#include "CommonImageAccess/DeepZoomPyramidLevel.h"

namespace Zel
{

namespace
{

/// Orders positions by row, then column, negative ones first.
uint64_t PositionOf(const CDecompressedKorTileIdx& idx)
{
    constexpr uint32_t SignBit = 0x80000000;
    return uint64_t{static_cast<uint32_t>(idx.RowIdx) ^ SignBit} << 32 | (static_cast<uint32_t>(idx.ColIdx) ^ SignBit);
}

} // namespace

CFrameIdx GreatestOnEach(const CFrameIdx& left, const CFrameIdx& right)
{
    return {std::max(left.Z, right.Z), std::max(left.C, right.C), std::max(left.L, right.L), std::max(left.T, right.T)};
}

void CKorTileLevels::AddRun(const CDecompressedKorTileIdx& first, uint32_t length)
{
    if (_NumOfTiles == 0 || first.PIdx != _LatestLevel)
        BeginLevel(first);
    const uint64_t position = PositionOf(first);
    _AreSorted = _AreSorted && (_IsAtFirstOfLevel || position > _LatestPosition);
    _IsAtFirstOfLevel = false;
    _LatestPosition = position + length - 1;
    _NumOfTiles += length;
    CTileExtent extent(first);
    extent.GreatestCol += static_cast<int32_t>(length - 1);
    RaiseGreatestIdx(extent, first.FrameIdx());
}

void CKorTileLevels::BeginLevel(const CDecompressedKorTileIdx& idx)
{
    const bool isBehindLatest = _NumOfTiles == 0 || idx.PIdx > _LatestLevel;
    _IsKept = _IsPyramid; // the first one that breaks the rules is kept, so that it fails where pyramids are built
    if (_IsKept)
        _Levels.emplace_back(idx, _NumOfTiles);
    _IsPyramid = _IsPyramid && isBehindLatest && idx.PIdx <= CDeepZoomPyramidLevel::MaxLevelID;
    _AreSorted = _AreSorted && isBehindLatest;
    _LatestLevel = idx.PIdx;
    _IsAtFirstOfLevel = true;
}

void CKorTileLevels::RaiseGreatestIdx(const CTileExtent& extent, const CFrameIdx& greatestFrameIdx)
{
    CDecompressedKorTileIdx& greatest = _GreatestIdx;
    greatest.ColIdx = std::max(greatest.ColIdx, extent.GreatestCol);
    greatest.RowIdx = std::max(greatest.RowIdx, extent.GreatestRow);
    greatest.ZIdx = std::max(greatest.ZIdx, greatestFrameIdx.Z);
    greatest.TIdx = std::max(greatest.TIdx, greatestFrameIdx.T);
    greatest.LIdx = std::max(greatest.LIdx, greatestFrameIdx.L);
    greatest.CIdx = std::max(greatest.CIdx, greatestFrameIdx.C);
    if (!_IsKept)
        return;
    CKorTileLevel& level = _Levels.back();
    level.Last = _NumOfTiles;
    level.Extent.Add(extent);
    level.GreatestFrameIdx = GreatestOnEach(level.GreatestFrameIdx, greatestFrameIdx);
}

} // namespace Zel
