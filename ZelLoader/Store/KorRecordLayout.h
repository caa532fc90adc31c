#pragma once
#include "CommonUtil/BinaryFileReader.h"
#include "ZelLoader/Store/KorTile.h"

#include <array>
#include <cstring>
#include <vector>

namespace Zel
{

/// Where the records of a binary store keep what: a count of elements, the elements, the offset of the tile's bytes,
/// their size, and a number that nobody uses. All are little-endian and follow each other without gaps.
class CKorRecordLayout
{
public:
    /// An element that has no slot: it belongs to a dummy dimension, and its value is lost.
    static constexpr uint32_t DropElement = 0xFFFFFFFF;

    /// `slots` says to which slot of the index each element goes. Of two elements for one slot the last one counts.
    explicit CKorRecordLayout(const std::vector<uint32_t>& slots);

    size_t SizeOfRecord() const { return _offsetBehindElements + 16; }
    /// True when the record carries as many elements as it should.
    bool HasAllElements(const Byte* record) const { return Number<uint32_t>(record) == _numOfElements; }
    /// True when an element is dropped in a place where none may be.
    bool DropsWhatItMustNot() const { return _dropsWhatItMustNot; }
    /// The tile of a record. Inline, and without a branch: it runs for each of a million tiles while a host waits.
    CKorTile TileOf(const Byte* record) const
    {
        const auto slot = [&](size_t number)
        { return Number<uint32_t>(record + _offsetsOfSlots[number]) & _masksOfSlots[number]; };
        CKorTile tile;
        tile.Idx = {
            static_cast<int32_t>(slot(0)), static_cast<int32_t>(slot(1)), slot(2), slot(3), slot(4), slot(5), slot(6)};
        tile.BlockOffset = Number<uint64_t>(record + _offsetBehindElements);
        tile.BlockSize = Number<uint32_t>(record + _offsetBehindElements + 8);
        return tile;
    }

private:
    template <typename T>
    static T Number(const Byte* bytes)
    {
        T number;
        std::memcpy(&number, bytes, sizeof number);
        return number;
    }

    uint32_t _numOfElements;
    size_t _offsetBehindElements;
    std::array<size_t, CDecompressedKorTileIdx::NumOfSlots> _offsetsOfSlots{};
    std::array<uint32_t, CDecompressedKorTileIdx::NumOfSlots> _masksOfSlots{}; ///< 0 for a slot that no element fills
    bool _dropsWhatItMustNot = false;
};

} // namespace Zel
