#pragma once

#include "SampleDocuments/Bytes.h"

#include <initializer_list>
#include <map>
#include <optional>
#include <vector>

namespace SampleDocuments
{

/// The type codes of simple fields, as they stand in the low 24 bits of a field's first word.
struct FieldCode
{
    enum E : uint32_t
    {
        Char = 1,
        UChar = 2,
        Short = 3,
        UShort = 4,
        Int = 5,
        UInt = 6,
        Int64 = 7,
        UInt64 = 8,
        Float = 9,
        Double = 10,
        DoubleArr2 = 11,
        Bool = 12,
        TcharArr = 13,
        Dword = 14,
        Int64TimeStamp = 18,
        DoubleDateTime = 19,
        IntArr2 = 256,
        IntArr3 = 257,
        IntArr4Vect = 258,
        IntArr4Rect = 259,
        DoubleArr2Vect = 260,
        DoubleArr3 = 261,
        DoubleArr4Vect = 262,
        DoubleArr4Rect = 263,
        DoubleArr4Matrix2By2 = 264,
        DoubleArr9 = 265,
        DoubleArr16 = 266,
        IntArr2Interval = 267,
        DoubleArr2Interval = 268,
        ByteArr3Rgb = 269,
        ByteArr3Bgr = 270,
        IntFieldType = 271,
        IntMemoryModel = 272,
        IntColorSpace = 273,
        IntArr2Numbers = 274,
        IntArr3Numbers = 275,
        IntArr4Numbers = 276,
        IntArr5Numbers = 277,
        DoubleArr2Numbers = 279,
        DoubleArr3Numbers = 280,
        Int64Arr2NumDen = 283,
        Rgb24 = 4104,
        TcharArrUnicode = 8192,
        AnsiCharArr = 8193,
        TcharUnicode2 = 8194,
        IntArrVari = 8195,
        IntArrVari2 = 8199,
        IntArrVolume = 8200,
        IntVariPixelInfo = 8470
    };
};

/// The codes of extended fields, which are those whose bit 28 is set.
struct ExtendedCode
{
    enum E : uint32_t
    {
        Volume = 0,
        TiffIfd = 10,
        VectorGraphics = 11
    };
};

/// The flag bits of a field's first word.
struct FieldFlag
{
    enum E : uint32_t
    {
        ExtraTag = 1u << 27,
        Extended = 1u << 28,
        Array = 1u << 29,
        Inline = 1u << 30,
        NewVolume = 1u << 31
    };
};

/// One step on the way down the tree: the nth child (from 0) that bears the tag.
struct CStep
{
    CStep(uint32_t tag, size_t nth = 0) : Tag(tag), Nth(nth) {}
    CStep(int tag) : Tag(static_cast<uint32_t>(tag)) {}
    uint32_t Tag;
    size_t Nth = 0;
};

/// `Nth(2001, 1)` in a path: the second of the children with tag 2001.
inline CStep Nth(uint32_t tag, size_t nth)
{
    return {tag, nth};
}

using Path = std::vector<CStep>;

/// Header values of a field that are worked out when the document is written, unless a test sets them otherwise.
struct CFieldOverrides
{
    std::optional<uint32_t> Flags;    ///< the whole first word
    uint32_t ExtraFlags = 0;          ///< bits that are added to the first word
    std::optional<uint32_t> Next;     ///< offset of the next sibling, from the enclosing volume's header
    std::optional<uint32_t> DataSize; ///< the stored size of the value
    uint32_t JunkBefore = 0;          ///< so many bytes 0xEE before the field header
};

/// The 24 bytes of a volume's header; what is not set is worked out.
struct CVolumeHeaderOverrides
{
    uint16_t OwnSize = 24;
    uint16_t FixedNum = 21073;
    uint32_t Version = 1;
    std::optional<uint64_t> OffsetOfFirstChild; ///< from the start of this volume's header
    std::optional<uint32_t> Count;              ///< the low 28 bits of the count word
    uint32_t CountFlags = 0;                    ///< bits that are added to the count word
    uint32_t Reserved = 0;
};

/// One field of the tag tree: a volume with children, or a leaf with the bytes of its value.
///
/// A plain value: it can be copied, kept and put into several trees. Everything that is derived when it is written
/// (sizes, offsets, counts, flags) can be overridden, so a malformed document is a good one with a few calls more:
///
///     Volume(2000, {Int32(5, 7), Text(6, "x").Next(0)}).Count(3)
///
/// The calls that change a node answer the node, so that they can be strung together.
class CNode
{
public:
    CNode() = default;
    CNode(uint32_t tag, uint32_t code, ByteString value);

    uint32_t Tag() const { return _Tag; }
    std::optional<uint32_t> SecondTag() const { return _SecondTag; }
    bool IsVolume() const { return _IsVolume; }
    const ByteString& Value() const { return _Value; }

    // What the field is.
    CNode& Tag(uint32_t tag);
    CNode& SecondTag(uint32_t secondTag);
    CNode& NoSecondTag();
    CNode& Code(uint32_t code);               ///< the low 24 bits of the first word
    CNode& Inline(bool isInline = true);      ///< the value's first 4 bytes in the place of the size
    CNode& MarkedAsArray(bool marked = true); ///< bit 29, a hint that readers do not need
    CNode& Extended(bool extended = true);    ///< bit 28
    CNode& Value(ByteString value);
    CNode& BlobSize(uint32_t sizeOfBlob); ///< the payload size that a blob's own header tells

    // Header values that stand against the truth.
    CNode& Flags(uint32_t wholeWord);
    CNode& ExtraFlags(uint32_t bits);
    CNode& Next(uint32_t offsetFromVolumeHeader);
    CNode& DataSize(uint32_t bytes);
    CNode& Length(size_t bytes); ///< cuts the value, or fills it with zeros
    CNode& JunkBefore(uint32_t bytes);

    // The header of a volume.
    CNode& OwnSize(uint16_t size);
    CNode& FixedNum(uint16_t number);
    CNode& Version(uint32_t version);
    CNode& OffsetOfFirstChild(uint64_t offsetFromVolumeHeader);
    CNode& Count(uint32_t numOfChildren);
    CNode& CountFlags(uint32_t bits);
    CNode& Reserved(uint32_t value);
    /// The order in which the children lie in the file, as a permutation of their numbers; the chain still runs in
    /// the order of Children(). Throws CSampleError, when the document is written, if it is no permutation.
    CNode& FileOrder(std::vector<size_t> order);

    // Children. References and pointers hold until the next child comes or goes.
    std::vector<CNode>& Children() { return _Children; }
    const std::vector<CNode>& Children() const { return _Children; }
    CNode& Add(CNode child);                    ///< behind the last one; answers this node
    CNode& Put(CNode child);                    ///< in the place of the first one with its tag, else behind the last
    CNode& Drop(uint32_t tag);                  ///< all children with the tag; throws CSampleError if there are none
    CNode& DropNth(uint32_t tag, size_t nth);   ///< one of them
    CNode& Child(uint32_t tag, size_t nth = 0); ///< throws CSampleError if there is no such child
    CNode* FindChild(uint32_t tag, size_t nth = 0); ///< null if there is no such child
    size_t NumOfChildren(uint32_t tag) const;
    CNode& At(const Path& path); ///< throws CSampleError, naming the step that failed

private:
    friend class CTreeWriter;

    uint32_t _Tag = 0;
    uint32_t _Code = 0;
    std::optional<uint32_t> _SecondTag;
    bool _IsVolume = false;
    bool _IsInline = false;
    bool _IsArray = false;
    bool _IsExtended = false;
    ByteString _Value;
    std::vector<CNode> _Children;
    CFieldOverrides _Field;
    CVolumeHeaderOverrides _Header;
    std::vector<size_t> _FileOrder;

    friend CNode Volume(uint32_t tag, std::vector<CNode> children);
};

/// A nested volume.
CNode Volume(uint32_t tag, std::vector<CNode> children = {});

// Leaves with one value. The code may be any other one of the same width.
CNode Int8(uint32_t tag, int8_t value, uint32_t code = FieldCode::Char);
CNode UInt8(uint32_t tag, uint8_t value, uint32_t code = FieldCode::UChar);
CNode Bool(uint32_t tag, bool value, uint32_t code = FieldCode::Bool); ///< stored inline, as documents have it
CNode Int16(uint32_t tag, int16_t value, uint32_t code = FieldCode::Short);
CNode UInt16(uint32_t tag, uint16_t value, uint32_t code = FieldCode::UShort);
CNode Int32(uint32_t tag, int32_t value, uint32_t code = FieldCode::Int);
CNode UInt32(uint32_t tag, uint32_t value, uint32_t code = FieldCode::UInt);
CNode Int64(uint32_t tag, int64_t value, uint32_t code = FieldCode::Int64);
CNode UInt64(uint32_t tag, uint64_t value, uint32_t code = FieldCode::UInt64);
CNode Float(uint32_t tag, float value, uint32_t code = FieldCode::Float);
CNode Double(uint32_t tag, double value, uint32_t code = FieldCode::Double);

/// A text, in UTF-16 without terminator.
CNode Text(uint32_t tag, std::string_view utf8, uint32_t code = FieldCode::TcharArrUnicode);
CNode Text(uint32_t tag, std::u16string_view units, uint32_t code = FieldCode::TcharArrUnicode);

// Leaves with several values.
CNode Int32s(uint32_t tag, const std::vector<int32_t>& values, uint32_t code = FieldCode::IntArrVari);
CNode UInt32s(uint32_t tag, const std::vector<uint32_t>& values, uint32_t code = FieldCode::IntArrVari);
CNode Int64s(uint32_t tag, const std::vector<int64_t>& values, uint32_t code = FieldCode::Int64);
CNode Floats(uint32_t tag, const std::vector<float>& values, uint32_t code = FieldCode::Float);
CNode Doubles(uint32_t tag, const std::vector<double>& values, uint32_t code = FieldCode::Double);
CNode ByteArray(uint32_t tag, ByteString values, uint32_t code = FieldCode::UChar);
/// Two doubles under the code for two, as documents have them; any other number under one that lets it pass.
CNode TwoDoubles(uint32_t tag, const std::vector<double>& values);
/// Left, top, right, bottom under the code for rectangles; any other number under one that lets it pass.
CNode Rect(uint32_t tag, const std::vector<int32_t>& values);

/// Any field at all: a code, known or not, and the bytes of the value.
CNode Field(uint32_t tag, uint32_t code, ByteString value = {});

/// A field of an extended code, with a value behind its header.
CNode ExtendedField(uint32_t tag, uint32_t extendedCode, ByteString value = {});

/// A reference to a TIFF directory of the same file, by its number in the chain.
CNode TiffIfd(uint32_t tag, uint32_t index);

/// A field that readers pass over (extended code 11).
CNode VectorGraphics(uint32_t tag, ByteString value = {});

/// A blob: its three numbers and the payload. Blobs have tag 2024 wherever they stand.
CNode Blob(uint32_t blobId, uint32_t version, std::span<const uint8_t> payload);

/// A number with its unit, as a volume: 268435458 is the value, 268435456 the unit.
CNode Valued(uint32_t tag, double value, std::string_view unit);

/// Where a node came to lie when a tree was written.
struct CPlacement
{
    uint64_t Field = 0;        ///< absolute offset of the field header; 0 for a root, which has none
    uint64_t Value = 0;        ///< absolute offset of the value; of a volume: of its header
    uint64_t End = 0;          ///< absolute offset behind the last byte
    uint64_t VolumeHeader = 0; ///< absolute offset of the enclosing volume's header
};

using Placements = std::map<const CNode*, CPlacement>;

/// Appends a volume without a field header, as a root stands in a file, at the end of `bytes`. `placements`, if not
/// null, gets the place of each node below `root` and of itself; offsets count from the first of `bytes`.
void AppendTree(ByteString& bytes, const CNode& root, Placements* placements = nullptr);

} // namespace SampleDocuments
