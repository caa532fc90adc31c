#include "ZelLoader/Store/KorRecordLayout.h"

namespace Zel
{

namespace
{

constexpr size_t SizeOfElement = 4;
constexpr size_t OffsetOfElements = 4;
/// The only place in a record where an element may be dropped.
constexpr size_t PlaceOfDroppedElement = 2;

} // namespace

CKorRecordLayout::CKorRecordLayout(const std::vector<uint32_t>& slots)
    : _numOfElements(static_cast<uint32_t>(slots.size())),
      _offsetBehindElements(OffsetOfElements + SizeOfElement * slots.size())
{
    for (size_t i = 0; i < slots.size(); ++i)
    {
        if (slots[i] == DropElement)
        {
            _dropsWhatItMustNot = _dropsWhatItMustNot || i != PlaceOfDroppedElement;
            continue;
        }
        _offsetsOfSlots[slots[i]] = OffsetOfElements + SizeOfElement * i;
        _masksOfSlots[slots[i]] = 0xFFFFFFFF;
    }
}

} // namespace Zel
