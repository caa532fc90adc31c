#include "CommonImageAccess/TiffIfd.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Text.h"

#include <algorithm>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr uint64_t SizeOfIfdEntry = 12;
constexpr size_t MaxNumOfEntriesPrinted = 10;

std::string NameOf(TIFF_FIELD_TYPE type)
{
    switch (type)
    {
    case TIFF_FIELD_BYTE:
        return "TIFF_FIELD_BYTE";
    case TIFF_FIELD_ASCII:
        return "TIFF_FIELD_ASCII";
    case TIFF_FIELD_SHORT:
        return "TIFF_FIELD_SHORT";
    case TIFF_FIELD_LONG:
        return "TIFF_FIELD_LONG";
    case TIFF_FIELD_RATIONAL:
        return "TIFF_FIELD_RATIONAL";
    case TIFF_FIELD_SBYTE:
        return "TIFF_FIELD_SBYTE";
    case TIFF_FIELD_UNDEFINED:
        return "TIFF_FIELD_UNDEFINED";
    case TIFF_FIELD_SSHORT:
        return "TIFF_FIELD_SSHORT";
    case TIFF_FIELD_SLONG:
        return "TIFF_FIELD_SLONG";
    case TIFF_FIELD_SRATIONAL:
        return "TIFF_FIELD_SRATIONAL";
    case TIFF_FIELD_FLOAT:
        return "TIFF_FIELD_FLOAT";
    case TIFF_FIELD_DOUBLE:
        return "TIFF_FIELD_DOUBLE";
    }
    return "unknown TIFF field type " + ToString(unsigned{type});
}

} // namespace

CIfdEntry::CIfdEntry(CBinaryFileReader& reader)
    : Tag(reader.ReadUInt16()), FieldType(static_cast<TIFF_FIELD_TYPE>(reader.ReadUInt16())),
      NumOfValues(reader.ReadUInt32()), ValueOrValOffset(reader.ReadUInt32())
{
}

std::string CIfdEntry::ToString() const
{
    using CommonUtil::ToString;
    return "Tag: " + ToString(unsigned{Tag}) + ", FieldType: " + ToString(unsigned{FieldType}) + " (" +
           NameOf(FieldType) + "), NumOfValues: " + ToString(NumOfValues) +
           ", ValueOrValOffset: " + ToString(ValueOrValOffset);
}

CTiffIfd::CTiffIfd(uint32_t offset, CBinaryFileReader& reader)
{
    ZEL_LOG("Going to offset %u", offset);
    reader.Seek(offset, BfrSeekDirection::BEGIN);
    ZEL_ASSERT(reader.GetCurrentOffset() == offset);
    const uint16_t numOfIfdEntries = reader.ReadUInt16();
    ZEL_LOG("numOfIfdEntries=%u", unsigned{numOfIfdEntries});
    ZEL_ASSERT(numOfIfdEntries * SizeOfIfdEntry <= reader.FileSize() - reader.GetCurrentOffset());
    IfdEntries.reserve(numOfIfdEntries);
    for (uint16_t i = 0; i < numOfIfdEntries; ++i)
        IfdEntries.emplace_back(reader);
    ZEL_LOG("Done reading all entries");
    OffsetOfNextIfdOr0IfNone = reader.ReadUInt32();
}

CTiffIfd::~CTiffIfd()
{
    // One after the other: a long chain would run out of stack if each deleted the next.
    for (std::unique_ptr<CTiffIfd> next = std::move(_NextIfd); next;)
        next = std::move(next->_NextIfd);
}

CTiffIfd* CTiffIfd::NextIfd(CBinaryFileReader& binaryReader)
{
    if (!_NextIfd && OffsetOfNextIfdOr0IfNone != 0)
        _NextIfd = std::make_unique<CTiffIfd>(OffsetOfNextIfdOr0IfNone, binaryReader);
    return _NextIfd.get();
}

std::string CTiffIfd::ToString() const
{
    using CommonUtil::ToString;
    std::string text = "Number of entries: " + ToString(IfdEntries.size()) + "\n";
    text += "Printing only the first 10 entries:\n";
    for (size_t i = 0; i < std::min(IfdEntries.size(), MaxNumOfEntriesPrinted); ++i)
        text += "Entry idx " + ToString(i) + ": " + IfdEntries[i].ToString() + "\n";
    return text + "OffsetOfNextIfdOr0IfNone = " + ToString(OffsetOfNextIfdOr0IfNone) + "\n";
}

} // namespace CIA
