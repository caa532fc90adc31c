#include "ZelLoader/TagTree/IfdOffsets.h"

#include "CommonUtil/Assertion.h"

namespace Zel
{

namespace
{

constexpr uint64_t SizeOfIfdEntry = 12;

} // namespace

uint32_t CIfdOffsets::IfdOffset(uint32_t offsetOfFirstIfd, CBinaryFileReader& b, uint32_t ifdIdx)
{
    StartAt(offsetOfFirstIfd, b);
    while (ifdIdx >= _Offsets.size())
        FindNext(b);
    return _Offsets[ifdIdx];
}

void CIfdOffsets::StartAt(uint32_t offsetOfFirstIfd, CBinaryFileReader& b)
{
    if (!_Offsets.empty() && _Offsets.front() == offsetOfFirstIfd)
        return;
    ZEL_ASSERT(b.Seek(offsetOfFirstIfd, BfrSeekDirection::BEGIN));
    _Offsets = {offsetOfFirstIfd};
    _KnownOffsets = {offsetOfFirstIfd};
}

void CIfdOffsets::FindNext(CBinaryFileReader& b)
{
    ZEL_ASSERT(b.Seek(_Offsets.back(), BfrSeekDirection::BEGIN));
    const uint16_t numOfIfdEntries = b.ReadUInt16();
    ZEL_ASSERT(b.Seek(numOfIfdEntries * SizeOfIfdEntry, BfrSeekDirection::CURRENT));
    const uint32_t offsetOfNextIfd = b.ReadUInt32();
    ZEL_ASSERT(offsetOfNextIfd != 0);
    ZEL_ASSERT(b.Seek(offsetOfNextIfd, BfrSeekDirection::BEGIN));
    ZEL_ASSERT(!_KnownOffsets.contains(offsetOfNextIfd)); // a chain in a circle has no end
    _Offsets.push_back(offsetOfNextIfd);
    _KnownOffsets.insert(offsetOfNextIfd);
}

} // namespace Zel
