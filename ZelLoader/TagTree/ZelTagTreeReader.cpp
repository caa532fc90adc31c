#include "ZelLoader/TagTree/ZelTagTreeReader.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Text.h"

#include <cerrno>

namespace Zel
{

namespace
{

constexpr uint16_t SizeOfVolumeHeader = 24;
constexpr uint16_t FixedNumOfVolumes = 21073;          // the bytes "QR"
constexpr uint32_t NumOfChildrenMask = (1u << 28) - 1; // of the count word
constexpr uint32_t VolumeHasName = 1u << 28;           // of the count word

constexpr uint32_t FieldTypeMask = (1u << 24) - 1;
constexpr uint32_t FlagExtraTagPresent = 1u << 27;
constexpr uint32_t FlagUsingExtendedFieldTypes = 1u << 28;
constexpr uint32_t FlagArray = 1u << 29;
constexpr uint32_t FlagDataInline = 1u << 30;
constexpr uint32_t FlagNewZelVolume = 1u << 31;

constexpr uint64_t LeastSizeOfField = 16;

constexpr uint32_t TagOfBlobs = 2024; // wherever they stand

// Extended field types. Those up to the last volume are volumes.
constexpr int32_t ExtendedFieldTypeOfLastVolume = 2;
constexpr int32_t ExtendedFieldTypeOfTiffIfd = 10;
constexpr int32_t ExtendedFieldTypeOfVectorGraphics = 11;

class CScopedDepth
{
public:
    explicit CScopedDepth(uint32_t& depth) : _depth(depth) { ++_depth; }
    ~CScopedDepth() { --_depth; }
    CScopedDepth(const CScopedDepth&) = delete;
    CScopedDepth& operator=(const CScopedDepth&) = delete;

private:
    uint32_t& _depth;
};

void LogThatChainAndCountDisagree(uint32_t numOfZelDataFieldsRead, const CVolumeHeader& volHdr, uint64_t offset)
{
    ZEL_LOG("However, numOfZelDataFieldsRead=%u, volHdr.NumOfChildren=%u", numOfZelDataFieldsRead,
            volHdr.NumOfChildren);
    ZEL_LOG("The offset of the volume that shows this issue is %llu", static_cast<unsigned long long>(offset));
    ZEL_LOG("Taking this as if all children had been read, and reading on.");
}

} // namespace

/// What stands before a field's value.
struct CZelTagTreeReader::CFieldHeader
{
    uint32_t Tag = 0;
    uint32_t SecondTag = SecondTagAbsent;
    uint32_t OffsetOfNextZelDataField = 0;
    uint32_t DataSizeInBytes = 0;
    int32_t FieldType = 0;
    bool IsUsingExtendedFieldTypes = false;
    bool IsArray = false;
    bool IsDataInline = false;
};

CZelTagTreeReader::CZelTagTreeReader(CBinaryFileReader& document, bool strictMode)
    : _Document(document), _StrictMode(strictMode)
{
}

bool CZelTagTreeReader::ReadVolumeHeader(uint64_t offset, CVolumeHeader& volHdr)
{
    _Document.Seek(offset, BfrSeekDirection::BEGIN);
    volHdr.MyOwnSize = _Document.ReadUInt16();
    if (volHdr.MyOwnSize != SizeOfVolumeHeader)
    {
        ZEL_LOG("Error: Volume header size = %d instead of 24!", volHdr.MyOwnSize);
        return false;
    }
    volHdr.FixedNum = _Document.ReadUInt16();
    if (volHdr.FixedNum != FixedNumOfVolumes)
    {
        ZEL_LOG("Error: fixedNum = %d instead of 21073!", volHdr.FixedNum);
        return false;
    }
    volHdr.Version = _Document.ReadUInt32();
    volHdr.RelativeOffsetOfFirstChild = _Document.ReadUInt64();
    const uint32_t tagCountAndWhetherVolumeHasName = _Document.ReadUInt32();
    volHdr.NumOfChildren = tagCountAndWhetherVolumeHasName & NumOfChildrenMask;
    if (tagCountAndWhetherVolumeHasName & VolumeHasName)
    {
        ZEL_LOG("TODO");
        oldAbortCommonUtil();
    }
    return true;
}

std::unique_ptr<CZelDataFieldForVolume> CZelTagTreeReader::ReadVolume(uint32_t tag, uint64_t offset, uint32_t secondTag)
{
    ZEL_ASSERT(_DepthOfVolumes < MaxDepthOfVolumes);
    if (_DepthOfVolumes == 0)
        ForgetDbgTags();
    const CScopedDepth depth(_DepthOfVolumes);

    auto vol = std::make_unique<CZelDataFieldForVolume>(tag, secondTag);
    CVolumeHeader volHdr;
    // A rejected header was logged and says that there are no children: the volume is empty, and its siblings count.
    ReadVolumeHeader(offset, volHdr);
    ZEL_ASSERT(errno == 0);

    uint64_t offsetOfNextChild = volHdr.RelativeOffsetOfFirstChild;
    uint32_t numOfZelDataFieldsRead = 0;
    while (numOfZelDataFieldsRead != volHdr.NumOfChildren)
    {
        ZEL_ASSERT(errno == 0);
        ZEL_ASSERT(offsetOfNextChild < _Document.FileSize()); // and so the sum does not wrap
        offsetOfNextChild += offset;
        if (!ReadZelDataField(offsetOfNextChild, vol.get()))
            return nullptr;
        ++numOfZelDataFieldsRead;
        if (offsetOfNextChild == 0)
        {
            if (numOfZelDataFieldsRead != volHdr.NumOfChildren)
            {
                ZEL_LOG("Warning: ZEL file may be corrupt, offsetOfNextChild=0 which indicates that this was the last "
                        "child of the volume.");
                LogThatChainAndCountDisagree(numOfZelDataFieldsRead, volHdr, offset);
            }
            break;
        }
    }
    if (offsetOfNextChild != 0)
    {
        ZEL_LOG("Warning: ZEL file may be corrupt, offsetOfNextChild!=0 which indicates that this was not the last "
                "child of the volume.");
        LogThatChainAndCountDisagree(numOfZelDataFieldsRead, volHdr, offset);
    }
    return vol;
}

bool CZelTagTreeReader::ReadZelDataField(uint64_t& zelDataFieldOffset, CZelDataFieldForVolume* vol)
{
    ZEL_ASSERT(errno == 0);
    ZEL_ASSERT(vol);
    const CFieldHeader header = ReadFieldHeader(zelDataFieldOffset, *vol);
    zelDataFieldOffset = header.OffsetOfNextZelDataField;

    std::unique_ptr<CZelDataField> node;
    if (header.IsUsingExtendedFieldTypes)
        node = FinishReadingZelDataFieldForExtendedTypes(header.Tag, header.FieldType, header.SecondTag);
    else if (!FinishReadingValue(header, node))
        return false;
    if (node)
        vol->AddChild(std::move(node));
    PopDbgTag();
    return true;
}

CZelTagTreeReader::CFieldHeader CZelTagTreeReader::ReadFieldHeader(uint64_t offset, CZelDataFieldForVolume& vol)
{
    // A tree of which every field stands once fits the file; one with more goes in circles.
    ZEL_ASSERT(_Budget.NumOfFieldHeadersRead < _Document.FileSize() / LeastSizeOfField);
    ++_Budget.NumOfFieldHeadersRead;

    CFieldHeader header;
    _Document.Seek(offset, BfrSeekDirection::BEGIN);
    const uint32_t fieldTypeAndFlags = _Document.ReadUInt32();
    header.Tag = _Document.ReadUInt32();
    PushDbgTag(header.Tag, vol.NumOfChildren(header.Tag));
    header.OffsetOfNextZelDataField = _Document.ReadUInt32();
    ZEL_ASSERT(errno == 0);

    const bool isExtraTagPresent = fieldTypeAndFlags & FlagExtraTagPresent;
    header.FieldType = static_cast<int32_t>(fieldTypeAndFlags & FieldTypeMask);
    header.IsUsingExtendedFieldTypes = fieldTypeAndFlags & FlagUsingExtendedFieldTypes;
    header.IsDataInline = fieldTypeAndFlags & FlagDataInline;
    header.IsArray = (fieldTypeAndFlags & FlagArray) && !header.IsUsingExtendedFieldTypes && !header.IsDataInline;
    ZEL_ASSERT(!(header.IsDataInline && header.IsUsingExtendedFieldTypes));
    ZEL_ASSERT(!(header.IsDataInline && isExtraTagPresent));
    ZEL_ASSERT(header.IsUsingExtendedFieldTypes || !(fieldTypeAndFlags & FlagNewZelVolume));

    if (!header.IsDataInline)
        header.DataSizeInBytes = _Document.ReadUInt32();
    if (isExtraTagPresent)
        header.SecondTag = _Document.ReadUInt32();
    return header;
}

bool CZelTagTreeReader::FinishReadingValue(const CFieldHeader& header, std::unique_ptr<CZelDataField>& node)
{
    if (header.DataSizeInBytes > NumOfBytesLeft())
    {
        ZEL_LOG("%s: isUsingExtendedFieldTypes=%s: INVALID dataSizeInBytes - will go past EOF!!! Skipping EVEN FOR "
                "STRICT MODE...TODO: Get clarification",
                DbgTagPathToString().c_str(), "false");
        if (header.Tag != TagOfBlobs)
            return true;
        ZEL_LOG("However making an allowance for 2024 tag as in the images tested with, making the allowance allows "
                "ROIs to be read without any side-effects.");
    }
    if (header.Tag == TagOfBlobs)
        node =
            FinishReadingZelDataFieldForBlob(header.Tag, header.DataSizeInBytes, header.SecondTag, header.IsDataInline);
    else
        node = FinishReadingZelDataFieldForSimpleTypes(header.Tag, header.FieldType, header.DataSizeInBytes,
                                                       header.SecondTag, header.IsArray, header.IsDataInline);
    ZEL_ASSERT(errno == 0);
    if (node)
        return true;
    ZEL_LOG("could not read value of the ZEL Data Field!");
    return !_StrictMode;
}

std::unique_ptr<CZelDataField>
CZelTagTreeReader::FinishReadingZelDataFieldForExtendedTypes(uint32_t tag, int32_t fieldType, uint32_t secondTag)
{
    if (fieldType >= 0 && fieldType <= ExtendedFieldTypeOfLastVolume)
        return ReadVolume(tag, _Document.GetCurrentOffset(), secondTag);
    switch (fieldType)
    {
    case ExtendedFieldTypeOfTiffIfd:
        return std::make_unique<CZelDataFieldForTiffIfd>(tag, secondTag, _OffsetOfFirstIfd, _IfdOffsets);
    case ExtendedFieldTypeOfVectorGraphics:
        ZEL_LOG("Not creating any extended ZEL Data Field for Vector Graphics Data (field type 11) as we understand "
                "that \"ZEL Layer Vector graphics'feature is incomplete. Please skip these layers for now.\"");
        return nullptr;
    default:
        ZEL_LOG("Unexpected extended fieldType %d", fieldType);
        oldAbortCommonUtil();
    }
}

uint64_t CZelTagTreeReader::NumOfBytesLeft()
{
    return _Document.FileSize() - _Document.GetCurrentOffset();
}

std::string CZelTagTreeReader::DbgTagPathToString() const
{
    std::string text;
    for (const uint32_t tag : _DbgTagPath)
        text += '\\' + ToString(tag);
    return text;
}

void CZelTagTreeReader::PushDbgTag(uint32_t tag, uint32_t numOfEarlierSiblings)
{
    _DbgTagPath.push_back(tag);
    _DbgTagPathWithIndex.push_back(tag);
    _DbgTagPathWithIndex.push_back(numOfEarlierSiblings);
}

void CZelTagTreeReader::PopDbgTag()
{
    _DbgTagPath.pop_back();
    _DbgTagPathWithIndex.pop_back();
    _DbgTagPathWithIndex.pop_back();
}

void CZelTagTreeReader::ForgetDbgTags()
{
    _DbgTagPath.clear();
    _DbgTagPathWithIndex.clear();
}

} // namespace Zel
