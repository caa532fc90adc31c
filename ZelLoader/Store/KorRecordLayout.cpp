#include "ZelLoader/Store/KorRecordLayout.h"

#include <algorithm>

namespace Zel
{

namespace
{

constexpr size_t SizeOfElement = 4;
constexpr size_t OffsetOfElements = 4;
constexpr size_t OffsetBehindColumn = OffsetOfElements + SizeOfElement; ///< in nearly every file, see LengthOfRun
constexpr uint32_t MaxCol = 0x7FFFFFFF;
/// The only place in a record where an element may be dropped.
constexpr size_t PlaceOfDroppedElement = 2;

} // namespace

CKorRecordLayout::CKorRecordLayout(const std::vector<uint32_t>& slots)
    : _numOfElements(static_cast<uint32_t>(slots.size())),
      _offsetBehindElements(OffsetOfElements + SizeOfElement * slots.size()), _masksBehindColumn(slots.size() / 2)
{
    for (size_t i = 0; i < slots.size(); ++i)
    {
        if (slots[i] == DropElement)
        {
            _dropsWhatItMustNot = _dropsWhatItMustNot || i != PlaceOfDroppedElement;
            continue;
        }
        if (i > 0)
            _masksBehindColumn[(i - 1) / 2] |= uint64_t{0xFFFFFFFF} << (i % 2 == 0 ? 32 : 0);
        _offsetsOfSlots[slots[i]] = OffsetOfElements + SizeOfElement * i;
        _masksOfSlots[slots[i]] = 0xFFFFFFFF;
    }
}

CDecompressedKorTileIdx CKorRecordLayout::IdxOf(const Byte* record) const
{
    const auto slot = [&](size_t number)
    { return Number<uint32_t>(record + _offsetsOfSlots[number]) & _masksOfSlots[number]; };
    return {static_cast<int32_t>(slot(0)), static_cast<int32_t>(slot(1)), slot(2), slot(3), slot(4), slot(5), slot(6)};
}

uint32_t CKorRecordLayout::LengthOfRun(const Byte* records, uint32_t numOfRecords) const
{
    if (_offsetsOfSlots[0] != OffsetOfElements) // a later element is the column
        return 1;
    // The count and the column behind it, as one number. The column does not wrap.
    auto countAndCol = Number<uint64_t>(records);
    const uint32_t maxLength = std::min(numOfRecords - 1, MaxCol - static_cast<uint32_t>(countAndCol >> 32)) + 1;
    uint32_t length = 1;
    for (const Byte* record = records + SizeOfRecord(); length < maxLength; ++length, record += SizeOfRecord())
    {
        countAndCol += uint64_t{1} << 32;
        if (Number<uint64_t>(record) != countAndCol || DifferBehindColumn(record, records))
            break;
    }
    return length;
}

bool CKorRecordLayout::DifferBehindColumn(const Byte* left, const Byte* right) const
{
    uint64_t difference = 0;
    size_t offset = OffsetBehindColumn;
    for (const uint64_t mask : _masksBehindColumn)
    {
        difference |= (Number<uint64_t>(left + offset) ^ Number<uint64_t>(right + offset)) & mask;
        offset += sizeof mask;
    }
    return difference != 0;
}

} // namespace Zel
