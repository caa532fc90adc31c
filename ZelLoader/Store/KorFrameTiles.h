#pragma once
#include "CommonImageAccess/DeepZoomTile.h"
#include "ZelLoader/Store/FrameNumbers.h"
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

/// The numbers of a frame's records, by place: first its table, a record for each position by level, then row, then
/// column; after it those that repeat a position, in the order of the file.
class CKorTileNumbers
{
public:
    CKorTileNumbers(std::span<const uint32_t> numbers, size_t numOfPositions)
        : _numbers(numbers), _size(numbers.size()), _numOfPositions(numOfPositions)
    {
    }
    /// A table that is the store's list itself: each place holds its own number.
    explicit CKorTileNumbers(size_t numOfTiles) : _size(numOfTiles), _numOfPositions(numOfTiles) {}

    size_t Size() const { return _size; }
    size_t NumOfPositions() const { return _numOfPositions; }
    uint32_t operator[](size_t place) const
    {
        return _numbers.empty() ? static_cast<uint32_t>(place) : _numbers[place];
    }
    /// The place of a record that repeats a position; asserts that it is one.
    size_t PlaceOfRepeat(uint32_t number) const;

private:
    std::span<const uint32_t> _numbers;
    size_t _size;
    size_t _numOfPositions;
};

/// Which records of a store belong to which frame. Where the store has one frame and is sorted, the list itself is the
/// table of that frame. Else two walks over the records make a table; each frame then finds its own without looking at
/// those of the others.
class CKorTilesByFrame
{
public:
    /// `korFile` must outlive this.
    CKorTilesByFrame(const CKorFile& korFile, const CDimensions& dimensions, uint64_t maxNumOfFrames);

    /// The numbers of a frame's records. Of records for one position the first in the file is that of the table.
    CKorTileNumbers TilesOf(const CFrameIdx& idx) const;
    /// True when the list itself is the table of the one frame.
    bool IsListTheTable() const { return _TileNumbers.empty(); }

private:
    bool CanListBeTheTable(const CKorTileLevels& levels) const;
    void MakeTable();
    void CountTilesOfFrames();
    std::vector<bool> FillTable();
    void SortTilesOf(uint64_t frameNumber);

    const CKorTiles& _KorTiles;
    CFrameNumbers _FrameNumbers;
    std::vector<uint32_t> _TileNumbers;    ///< empty where the list is the table
    std::vector<uint32_t> _FirstOfFrame;   ///< by frame number, and the end
    std::vector<uint32_t> _NumOfPositions; ///< by frame number
};

/// The tiles of a frame whose pixels lie in a binary store.
class CKorFrameTiles : public CDeepZoomTiles
{
public:
    /// The tile of the record behind that of `tile`, one of these, in the walk over the file, as far as it is the next
    /// one of the table as well; else null.
    virtual CZelDeepZoomTile* FindBehind(const CZelDeepZoomTile& tile) = 0;
    /// The tile of a record that repeats a position of this frame, by the record's number.
    virtual CZelDeepZoomTile& Repeat(uint32_t tileNumber) = 0;
};

std::unique_ptr<CKorFrameTiles> MakeKorFrameTiles(CZelFrame& frame);

} // namespace Zel
