#pragma once
#include "CommonImageAccess/DeepZoomTile.h"
#include "ZelLoader/Store/KorTileLevels.h"
#include "ZelLoader/Store/KorTiles.h"

#include <memory>
#include <span>
#include <vector>

namespace Zel
{

class CKorFile;
class CZelDeepZoomTile;
class CZelFrame;

/// The numbers of a frame's records, by place in its table.
class CKorTileNumbers
{
public:
    explicit CKorTileNumbers(std::span<const uint32_t> numbers) : _numbers(numbers.data()), _size(numbers.size()) {}
    /// A table that is the store's list itself: each place holds its own number.
    explicit CKorTileNumbers(size_t numOfTiles) : _numbers(nullptr), _size(numOfTiles) {}

    size_t Size() const { return _size; }
    uint32_t operator[](size_t place) const { return _numbers ? _numbers[place] : static_cast<uint32_t>(place); }

private:
    const uint32_t* _numbers;
    size_t _size;
};

/// Which records of a store belong to which frame. Where the store has one frame and is sorted, the list itself is the
/// table of that frame. Else two walks over the records make a table; each frame then finds its own without looking at
/// those of the others.
class CKorTilesByFrame
{
public:
    /// `korFile` must outlive this.
    CKorTilesByFrame(const CKorFile& korFile, const CDimensions& dimensions, uint64_t maxNumOfFrames);

    /// The numbers of a frame's records, by level, then row, then column. Of records for one position the first in the
    /// file is the one that counts.
    CKorTileNumbers TilesOf(const CFrameIdx& idx) const;
    /// True when the list itself is the table of the one frame.
    bool IsTheListATable() const { return _TileNumbers.empty(); }

private:
    bool CanTheListBeATable(uint64_t numOfFrames, const CKorTileLevels& levels) const;
    void MakeTable(uint64_t numOfFrames);
    void CountTilesOfFrames(uint64_t numOfFrames);
    std::vector<bool> FillTable(uint64_t numOfFrames);
    uint64_t FrameNumber(const CFrameIdx& idx) const;
    void SortTilesOf(uint64_t frameNumber);

    const CKorTiles& _KorTiles;
    CFrameIdx _Strides; ///< how far apart neighbours on each dimension lie in the numbering of frames; 0: no dimension
    std::vector<uint32_t> _TileNumbers;  ///< empty where the list is the table
    std::vector<uint32_t> _FirstOfFrame; ///< by frame number, and the end
    std::vector<uint32_t> _NumOfTiles;   ///< by frame number, without repeated positions
};

/// The tiles of a frame whose pixels lie in a tile store.
class CKorFrameTiles : public CDeepZoomTiles
{
public:
    /// The tile of the record behind that of `tile`, one of these, in the walk over the file, as far as it is the next
    /// one of the table as well; else null.
    virtual CZelDeepZoomTile* FindBehind(const CZelDeepZoomTile& tile) = 0;
};

std::unique_ptr<CKorFrameTiles> MakeKorFrameTiles(CZelFrame& frame);

} // namespace Zel
