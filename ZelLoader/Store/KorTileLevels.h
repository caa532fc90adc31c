#pragma once
#include "ZelLoader/Store/KorTile.h"

#include <algorithm>
#include <vector>

namespace Zel
{

/// The rectangle of positions that tiles take.
struct CTileExtent
{
    explicit CTileExtent(const CDecompressedKorTileIdx& idx)
        : SmallestCol(idx.ColIdx), GreatestCol(idx.ColIdx), SmallestRow(idx.RowIdx), GreatestRow(idx.RowIdx)
    {
    }
    void Add(const CDecompressedKorTileIdx& idx)
    {
        SmallestCol = std::min(SmallestCol, idx.ColIdx);
        GreatestCol = std::max(GreatestCol, idx.ColIdx);
        SmallestRow = std::min(SmallestRow, idx.RowIdx);
        GreatestRow = std::max(GreatestRow, idx.RowIdx);
    }

    void Add(const CTileExtent& other)
    {
        SmallestCol = std::min(SmallestCol, other.SmallestCol);
        GreatestCol = std::max(GreatestCol, other.GreatestCol);
        SmallestRow = std::min(SmallestRow, other.SmallestRow);
        GreatestRow = std::max(GreatestRow, other.GreatestRow);
    }

    int32_t SmallestCol;
    int32_t GreatestCol;
    int32_t SmallestRow;
    int32_t GreatestRow;
};

/// The greater index on each dimension by itself.
CFrameIdx GreatestOnEach(const CFrameIdx& left, const CFrameIdx& right);

/// Records of one level that stand together in the file.
struct CKorTileLevel
{
    CKorTileLevel(const CDecompressedKorTileIdx& idx, uint32_t number)
        : Level(idx.PIdx), First(number), Last(number), Extent(idx), GreatestFrameIdx(idx.FrameIdx())
    {
    }

    uint32_t Level;
    uint32_t First; ///< number of the first record
    uint32_t Last;  ///< number of the record behind the last one
    CTileExtent Extent;
    CFrameIdx GreatestFrameIdx; ///< on each dimension by itself
};

/// What all the records of a store say together, gathered while they are read, so that nobody has to walk them again.
class CKorTileLevels
{
public:
    /// Takes the next records of the file, which stand side by side in a row, at least one.
    void AddRun(const CDecompressedKorTileIdx& first, uint32_t length);

    /// In the order of the file. Behind one whose level is less than that of the one before it, or greater than any
    /// level may be, none are kept: such a store has no pyramid.
    const std::vector<CKorTileLevel>& Levels() const { return _Levels; }
    /// The greatest index on each dimension, at least 0. The level is not tracked.
    const CDecompressedKorTileIdx& GreatestIdx() const { return _GreatestIdx; }
    /// True when the records are sorted by level, then row, then column, and no position repeats.
    bool AreSorted() const { return _AreSorted; }

private:
    void BeginLevel(const CDecompressedKorTileIdx& idx);
    void RaiseGreatestIdx(const CTileExtent& extent, const CFrameIdx& greatestFrameIdx);

    std::vector<CKorTileLevel> _Levels;
    CDecompressedKorTileIdx _GreatestIdx;
    uint64_t _LatestPosition = 0;
    bool _IsAtFirstOfLevel = true;
    uint32_t _LatestLevel = 0;
    uint32_t _NumOfTiles = 0;
    bool _IsPyramid = true; ///< so far: levels rise, and none is greater than any may be
    bool _IsKept = true;    ///< the current level is the last one of _Levels
    bool _AreSorted = true;
};

} // namespace Zel
