#include "SampleDocuments/Node.h"

namespace SampleDocuments
{

namespace
{

constexpr uint32_t TagOfBlobs = 2024;
constexpr uint32_t TagOfUnit = 268435456;
constexpr uint32_t TagOfValue = 268435458;

template <typename T>
CNode One(uint32_t tag, T value, uint32_t code)
{
    ByteString bytes;
    Append(bytes, value);
    return CNode(tag, code, std::move(bytes));
}

template <typename T>
CNode Several(uint32_t tag, const std::vector<T>& values, uint32_t code)
{
    ByteString bytes;
    for (const T value : values)
        Append(bytes, value);
    return CNode(tag, code, std::move(bytes)).MarkedAsArray();
}

} // namespace

CNode Volume(uint32_t tag, std::vector<CNode> children)
{
    CNode node(tag, ExtendedCode::Volume, {});
    node._IsVolume = true;
    node._IsExtended = true;
    node._Children = std::move(children);
    return node;
}

CNode Int8(uint32_t tag, int8_t value, uint32_t code)
{
    return One(tag, value, code);
}
CNode UInt8(uint32_t tag, uint8_t value, uint32_t code)
{
    return One(tag, value, code);
}
CNode Bool(uint32_t tag, bool value, uint32_t code)
{
    return One<uint8_t>(tag, value ? 1 : 0, code).Inline();
}
CNode Int16(uint32_t tag, int16_t value, uint32_t code)
{
    return One(tag, value, code);
}
CNode UInt16(uint32_t tag, uint16_t value, uint32_t code)
{
    return One(tag, value, code);
}
CNode Int32(uint32_t tag, int32_t value, uint32_t code)
{
    return One(tag, value, code);
}
CNode UInt32(uint32_t tag, uint32_t value, uint32_t code)
{
    return One(tag, value, code);
}
CNode Int64(uint32_t tag, int64_t value, uint32_t code)
{
    return One(tag, value, code);
}
CNode UInt64(uint32_t tag, uint64_t value, uint32_t code)
{
    return One(tag, value, code);
}
CNode Float(uint32_t tag, float value, uint32_t code)
{
    return One(tag, value, code);
}
CNode Double(uint32_t tag, double value, uint32_t code)
{
    return One(tag, value, code);
}

CNode Text(uint32_t tag, std::u16string_view units, uint32_t code)
{
    return Several(tag, std::vector<uint16_t>(units.begin(), units.end()), code);
}

CNode Text(uint32_t tag, std::string_view utf8, uint32_t code)
{
    return Text(tag, ToUtf16(utf8), code);
}

CNode Int32s(uint32_t tag, const std::vector<int32_t>& values, uint32_t code)
{
    return Several(tag, values, code);
}
CNode UInt32s(uint32_t tag, const std::vector<uint32_t>& values, uint32_t code)
{
    return Several(tag, values, code);
}
CNode Int64s(uint32_t tag, const std::vector<int64_t>& values, uint32_t code)
{
    return Several(tag, values, code);
}
CNode Floats(uint32_t tag, const std::vector<float>& values, uint32_t code)
{
    return Several(tag, values, code);
}
CNode Doubles(uint32_t tag, const std::vector<double>& values, uint32_t code)
{
    return Several(tag, values, code);
}

CNode ByteArray(uint32_t tag, ByteString values, uint32_t code)
{
    return CNode(tag, code, std::move(values)).MarkedAsArray();
}

CNode TwoDoubles(uint32_t tag, const std::vector<double>& values)
{
    return Doubles(tag, values, values.size() == 2 ? FieldCode::DoubleArr2 : FieldCode::DoubleArr2Interval);
}

CNode Rect(uint32_t tag, const std::vector<int32_t>& values)
{
    return Int32s(tag, values, values.size() == 4 ? FieldCode::IntArr4Rect : FieldCode::IntArrVari);
}

CNode Field(uint32_t tag, uint32_t code, ByteString value)
{
    return CNode(tag, code, std::move(value));
}

CNode ExtendedField(uint32_t tag, uint32_t extendedCode, ByteString value)
{
    return CNode(tag, extendedCode, std::move(value)).Extended();
}

CNode TiffIfd(uint32_t tag, uint32_t index)
{
    return ExtendedField(tag, ExtendedCode::TiffIfd).SecondTag(index);
}

CNode VectorGraphics(uint32_t tag, ByteString value)
{
    return ExtendedField(tag, ExtendedCode::VectorGraphics, std::move(value));
}

CNode Blob(uint32_t blobId, uint32_t version, std::span<const uint8_t> payload)
{
    ByteString value;
    Append(value, blobId);
    Append(value, static_cast<uint32_t>(payload.size()));
    Append(value, version);
    Append(value, payload);
    return CNode(TagOfBlobs, FieldCode::UChar, std::move(value));
}

CNode Valued(uint32_t tag, double value, std::string_view unit)
{
    return Volume(tag, {Text(TagOfUnit, unit), Double(TagOfValue, value)});
}

} // namespace SampleDocuments
