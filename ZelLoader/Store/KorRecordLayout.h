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
    /// Where in a record the place of the tile's bytes stands, offset and size.
    size_t OffsetOfBlock() const { return _offsetBehindElements; }
    CDecompressedKorTileIdx IdxOf(const Byte* record) const;
    /// How many of these records, at least one, carry as many elements as the first one and differ in their columns
    /// only, each of which is one behind that of the record before it.
    uint32_t LengthOfRun(const Byte* records, uint32_t numOfRecords) const;

private:
    template <typename T>
    static T Number(const Byte* bytes)
    {
        T number;
        std::memcpy(&number, bytes, sizeof number);
        return number;
    }

    bool DifferBehindColumn(const Byte* left, const Byte* right) const;

    uint32_t _numOfElements;
    size_t _offsetBehindElements;
    std::array<size_t, CDecompressedKorTileIdx::NumOfSlots> _offsetsOfSlots{};
    std::array<uint32_t, CDecompressedKorTileIdx::NumOfSlots> _masksOfSlots{}; ///< 0 for a slot that no element fills
    /// The bits that count in what stands between the column and the place of the bytes, 8 bytes at a time.
    std::vector<uint64_t> _masksBehindColumn;
    bool _dropsWhatItMustNot = false;
};

} // namespace Zel
