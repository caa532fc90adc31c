#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/TagTree/SimpleFieldTypes.h"
#include "ZelLoader/TagTree/ZelTagTreeReader.h"

#include <cstring>
#include <optional>

// The part of the tree's reader that turns a type code and a size into a value.

namespace Zel
{

namespace
{

constexpr uint32_t SizeOfInlineValue = 4;
constexpr uint32_t SizeOfStoredCharacter = 2;
constexpr uint32_t SizeOfWideCharacter = 4;

/// With the zero after it.
constexpr uint64_t SizeInMemoryOfText(uint64_t numOfUnits)
{
    return (numOfUnits + 1) * SizeOfWideCharacter;
}

/// The UTF-16 units at the start of the bytes, one to each 4 bytes as they stand; there is room for them. From the last
/// one on, so that none is overwritten before it was moved.
void WidenInPlace(std::byte* text, uint64_t numOfUnits)
{
    for (uint64_t i = numOfUnits; i-- > 0;)
    {
        uint16_t unit;
        std::memcpy(&unit, text + i * SizeOfStoredCharacter, sizeof unit);
        const uint32_t wideCharacter = unit;
        std::memcpy(text + i * SizeOfWideCharacter, &wideCharacter, sizeof wideCharacter);
    }
}

} // namespace

bool CZelTagTreeReader::ParseDataSizeInBytesAndFieldType(int32_t fieldType, bool isDataInline, uint32_t dataSizeInBytes,
                                                         bool& fieldTypeIndicatesArray, uint32_t& numOfEles,
                                                         int32_t& eleType, uint32_t& eleSizeInBytes) const
{
    eleType = fieldType;
    fieldTypeIndicatesArray = false;
    numOfEles = 1;
    const CSimpleFieldType* type = FindSimpleFieldType(fieldType);
    if (!type)
        return false;
    eleSizeInBytes = type->EleSize;
    eleType = type->EleType;
    fieldTypeIndicatesArray = type->Rule != CountRule::Scalar;

    const uint32_t numOfElesStored = dataSizeInBytes / type->EleSize;
    AssertNumOfElements(*type, isDataInline, numOfElesStored);
    if (type->Rule == CountRule::ExpectExactly && numOfElesStored != type->Count)
        ZEL_LOG("PLEASE CLARIFY: rather than 2 elements as per spec, fieldType %d has %u elements! Tag path: %s",
                fieldType, numOfElesStored, DbgTagPathToString().c_str());
    if (!isDataInline)
    {
        ZEL_ASSERT(dataSizeInBytes % type->EleSize == 0);
        numOfEles = numOfElesStored;
        return true;
    }
    if (type->Rule == CountRule::Colour)
        numOfEles = type->Count;
    ZEL_ASSERT(dataSizeInBytes == 0);
    ZEL_ASSERT(numOfEles * type->EleSize <= SizeOfInlineValue || !fieldTypeIndicatesArray);
    return true;
}

std::unique_ptr<CZelDataFieldForSimpleTypes>
CZelTagTreeReader::FinishReadingZelDataFieldForSimpleTypes(uint32_t tag, int32_t fieldType, uint32_t dataSizeInBytes,
                                                           uint32_t secondTag, bool isArray, bool isDataInline)
{
    ZEL_ASSERT(!(isDataInline && isArray));
    bool fieldTypeIndicatesArray = false;
    uint32_t numOfEles = 0;
    int32_t eleType = 0;
    uint32_t eleSize = 0;
    if (!ParseDataSizeInBytesAndFieldType(fieldType, isDataInline, dataSizeInBytes, fieldTypeIndicatesArray, numOfEles,
                                          eleType, eleSize))
        return nullptr;

    if (numOfEles == 1 && !fieldTypeIndicatesArray)
    {
        std::optional<CDataWithType> number = ReadNumber(eleType, isDataInline);
        if (!number)
            return nullptr;
        return std::make_unique<CZelDataFieldForSimpleTypes>(fieldType, tag, std::move(*number), secondTag);
    }

    // Elements are read under a code of their own, which must be one of a scalar.
    bool eleTypeIndicatesArray = false;
    uint32_t numOfElesOfOne = 0;
    int32_t eleTypeOfOne = 0;
    ParseDataSizeInBytesAndFieldType(eleType, false, eleSize, eleTypeIndicatesArray, numOfElesOfOne, eleTypeOfOne,
                                     eleSize);
    ZEL_ASSERT(numOfElesOfOne == 1 && !eleTypeIndicatesArray);
    if (isDataInline)
        ZEL_ASSERT(uint64_t{eleSize} * numOfEles <= SizeOfInlineValue);
    else
        ZEL_ASSERT(uint64_t{eleSize} * numOfEles == dataSizeInBytes);
    // An inline array has no stored size, and so no elements: what stands in the 4 bytes is passed over.
    CDataWithType array(ReadDataArray(eleSize, dataSizeInBytes, eleType));
    return std::make_unique<CZelDataFieldForSimpleTypes>(fieldType, tag, std::move(array), secondTag);
}

std::optional<CDataWithType> CZelTagTreeReader::ReadNumber(int32_t fieldType, bool isDataInline)
{
    switch (fieldType)
    {
    case SIMPLE_FIELD_CHAR:
    case SIMPLE_FIELD_UCHAR:
    case SIMPLE_FIELD_BOOL:
        return CDataWithType(_Document.ReadChar());
    case SIMPLE_FIELD_SHORT:
    case SIMPLE_FIELD_USHORT:
        return CDataWithType(_Document.ReadShort());
    case SIMPLE_FIELD_INT:
    case SIMPLE_FIELD_UINT:
    case SIMPLE_FIELD_INT_FIELD_TYPE:
    case SIMPLE_FIELD_INT_MEMORY_MODEL:
    case SIMPLE_FIELD_INT_COLOR_SPACE:
        return CDataWithType(_Document.ReadInt32());
    case SIMPLE_FIELD_INT64:
    case SIMPLE_FIELD_UINT64:
    case SIMPLE_FIELD_INT64_TIME_STAMP:
        ZEL_ASSERT(!isDataInline);
        return CDataWithType(_Document.ReadInt64());
    case SIMPLE_FIELD_FLOAT:
        return CDataWithType(_Document.ReadFloat());
    case SIMPLE_FIELD_DOUBLE:
    case SIMPLE_FIELD_DOUBLE_DATETIME:
        ZEL_ASSERT(!isDataInline);
        return CDataWithType(_Document.ReadDouble());
    case SIMPLE_FIELD_DWORD:
        return CDataWithType(_Document.ReadDword());
    default:
        ZEL_LOG("NOT READING ZEL DATA FIELD HAVING SIMPLE TYPE %d", fieldType);
        return std::nullopt;
    }
}

std::unique_ptr<CBasicArray> CZelTagTreeReader::ReadDataArray(uint32_t eleSize, uint32_t arrSizeInBytes,
                                                              int32_t zelFieldType)
{
    ZEL_ASSERT(eleSize != 0);
    ZEL_ASSERT(arrSizeInBytes <= NumOfBytesLeft());
    const bool isText = zelFieldType == NONZELSPEC_SIMPLE_FIELD_TCHAR;
    TakeArrayBytes(isText ? SizeInMemoryOfText(arrSizeInBytes / SizeOfStoredCharacter) : arrSizeInBytes);
    if (_Document.IsFileBigEndian() != IsBigEndian())
    {
        ZEL_LOG("TO_DO - handle endianness issue here by reversing the order of bytes for each element based on "
                "zelFieldType");
        oldAbortCommonUtil();
    }

    if (isText)
        return ReadText(eleSize, arrSizeInBytes);
    std::unique_ptr<std::byte[]> bytes;
    if (arrSizeInBytes != 0)
    {
        bytes = std::make_unique_for_overwrite<std::byte[]>(arrSizeInBytes);
        _Document.ReadData(reinterpret_cast<Byte*>(bytes.get()), arrSizeInBytes);
    }
    return std::make_unique<CBasicArray>(std::move(bytes), eleSize, arrSizeInBytes / eleSize, zelFieldType);
}

void CZelTagTreeReader::TakeArrayBytes(uint64_t numOfBytes)
{
    // Values that stand once take at most twice the file, as wide text does; fields may share them, yet not without
    // end.
    constexpr uint64_t LeastLimit = 64U << 20;
    constexpr uint64_t TimesTheFile = 4;
    const uint64_t taken = _Budget.NumOfArrayBytes + numOfBytes;
    ZEL_ASSERT(taken <= LeastLimit || (taken - 1) / TimesTheFile < _Document.FileSize());
    _Budget.NumOfArrayBytes = taken;
}

std::unique_ptr<CBasicArray> CZelTagTreeReader::ReadText(uint32_t eleSize, uint32_t sizeInBytes)
{
    ZEL_ASSERT(eleSize == SizeOfStoredCharacter);
    const uint64_t numOfUnits = sizeInBytes / SizeOfStoredCharacter;
    auto text = std::make_unique_for_overwrite<std::byte[]>(SizeInMemoryOfText(numOfUnits));
    if (sizeInBytes != 0)
        _Document.ReadData(reinterpret_cast<Byte*>(text.get()), sizeInBytes);
    WidenInPlace(text.get(), numOfUnits);
    std::memset(text.get() + numOfUnits * SizeOfWideCharacter, 0, SizeOfWideCharacter);
    return std::make_unique<CBasicArray>(std::move(text), SizeOfWideCharacter, ToUint32WithCheck(numOfUnits + 1),
                                         NONZELSPEC_SIMPLE_FIELD_TCHAR);
}

} // namespace Zel
