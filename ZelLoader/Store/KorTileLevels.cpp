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

[[gnu::always_inline]] inline void Raise(CFrameIdx& greatest, const CFrameIdx& idx)
{
    greatest.Z = std::max(greatest.Z, idx.Z);
    greatest.C = std::max(greatest.C, idx.C);
    greatest.L = std::max(greatest.L, idx.L);
    greatest.T = std::max(greatest.T, idx.T);
}

} // namespace

void CKorTileLevels::Add(std::span<const CKorTile> korTiles)
{
    while (!korTiles.empty())
    {
        if (_NumOfTiles == 0 || korTiles.front().Idx.PIdx != _LatestLevel)
            BeginLevel(korTiles.front().Idx);
        korTiles = korTiles.subspan(AddToLevel(korTiles));
    }
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

/// Adds the records up to the next level, or all; how many that were.
size_t CKorTileLevels::AddToLevel(std::span<const CKorTile> korTiles)
{
    // Kept in local variables, and so in registers, for as long as the loop runs.
    const CDecompressedKorTileIdx& first = korTiles.front().Idx;
    CTileExtent extent(first);
    CFrameIdx greatestFrameIdx = first.FrameIdx();
    bool areSorted = _IsAtFirstOfLevel || PositionOf(first) > _LatestPosition;
    uint64_t latestPosition = PositionOf(first);
    size_t numOfTiles = 1;
    for (; numOfTiles < korTiles.size() && korTiles[numOfTiles].Idx.PIdx == first.PIdx; ++numOfTiles)
    {
        const CDecompressedKorTileIdx& idx = korTiles[numOfTiles].Idx;
        extent.Add(idx);
        Raise(greatestFrameIdx, idx.FrameIdx());
        const uint64_t position = PositionOf(idx);
        areSorted &= position > latestPosition;
        latestPosition = position;
    }
    _LatestPosition = latestPosition;
    _IsAtFirstOfLevel = false;
    _AreSorted = _AreSorted && areSorted;
    _NumOfTiles += static_cast<uint32_t>(numOfTiles);
    RaiseGreatestIdx(extent, greatestFrameIdx);
    return numOfTiles;
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
    Raise(level.GreatestFrameIdx, greatestFrameIdx);
}

} // namespace Zel
