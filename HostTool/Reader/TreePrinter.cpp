#include "HostTool/Reader/TreePrinter.h"

#include "HostTool/Reader/FieldText.h"
#include "HostTool/Text.h"
#include "ZelLoader/Catalogue/ZELFormat.h"
#include "ZelLoader/TagTree/ZelTagTreeReader.h"

#include <algorithm>
#include <iomanip>

namespace HostTool
{

namespace
{

constexpr uint64_t OffsetOfRootVolume = 8;
constexpr uint64_t SizeOfVolumeHeader = 24;
constexpr uint16_t FixedNumOfVolumes = 21073;
constexpr uint32_t NumOfChildrenMask = (1U << 28) - 1;
constexpr uint32_t VolumeHasName = 1U << 28;

constexpr uint32_t FieldTypeMask = (1U << 24) - 1;
constexpr uint32_t FlagExtraTagPresent = 1U << 27;
constexpr uint32_t FlagUsingExtendedFieldTypes = 1U << 28;
constexpr uint32_t FlagDataInline = 1U << 30;

constexpr uint64_t LeastSizeOfField = 16;
constexpr uint32_t SizeOfInlineValue = 4;
constexpr uint32_t TagOfBlobs = 2024;
constexpr uint64_t SizeOfBlobHeader = 12;

constexpr int32_t CodeOfLastVolume = 2;
constexpr int32_t CodeOfTiffDirectory = 10;
constexpr int32_t CodeOfVectorGraphics = 11;

constexpr uint64_t MostBytesOfValue = 256; // what of it is printed

} // namespace

/// A field of the tree, without its value.
struct CTreePrinter::CField
{
    uint64_t Offset = 0;
    uint32_t Tag = 0;
    std::optional<uint32_t> SecondTag;
    int32_t Code = 0;
    bool IsExtended = false;
    bool IsInline = false;
    uint32_t Size = 0;
    uint32_t OffsetOfNext = 0; ///< from the volume; 0 on the last
    uint64_t OffsetOfValue = 0;

    bool IsVolume() const { return IsExtended && Code >= 0 && Code <= CodeOfLastVolume; }
};

void CTreePrinter::Print()
{
    CLevel root;
    root.Class = &Zel::CatalogueOf<Zel::CZelImgDocMetaData>();
    if (IsPrinted(0, 0))
        _Out << std::setw(10) << OffsetOfRootVolume << "  root: " << DescribeVolume(OffsetOfRootVolume) << '\n';
    WalkVolume(OffsetOfRootVolume, root);
}

bool CTreePrinter::IsPrinted(size_t numOfMatched, uint32_t depth) const
{
    const size_t pathSize = _Request.TagPath.size();
    return numOfMatched == pathSize && depth <= _Request.MostDepth + (pathSize == 0 ? 0 : pathSize - 1);
}

void CTreePrinter::PrintRemark(const std::string& kind, const CLevel& level, const std::string& text)
{
    _Out << std::setw(10) << '!' << std::string(2 + 2 * level.Depth, ' ') << kind << ": " << text << '\n';
}

void CTreePrinter::PrintError(const CLevel& level, const std::string& text)
{
    ++_NumOfErrors;
    PrintRemark("error", level, text);
}

std::string CTreePrinter::DescribeVolume(uint64_t offset)
{
    const auto header = _File.Bytes(offset, SizeOfVolumeHeader);
    if (!header)
        return "volume";
    return "volume of " + std::to_string(NumberOf(&(*header)[16], 4) & NumOfChildrenMask);
}

void CTreePrinter::WalkVolume(uint64_t offset, const CLevel& level)
{
    const auto header = _File.Bytes(offset, SizeOfVolumeHeader);
    if (!header)
        return PrintError(level,
                          "the volume's header at " + std::to_string(offset) + " lies beyond the end of the file");
    if (NumberOf(header->data(), 2) != SizeOfVolumeHeader || NumberOf(&(*header)[2], 2) != FixedNumOfVolumes)
        return PrintError(level, "there is no volume's header at " + std::to_string(offset));
    const auto countWord = static_cast<uint32_t>(NumberOf(&(*header)[16], 4));
    if (countWord & VolumeHasName)
        return PrintError(level, "the volume at " + std::to_string(offset) + " has a name, which nobody can read");
    const uint32_t numOfChildren = countWord & NumOfChildrenMask;
    uint64_t next = NumberOf(&(*header)[8], 8);
    uint32_t numOfRead = 0;
    while (numOfRead != numOfChildren)
    {
        CField field;
        if (next >= _File.Size() || !ReadField(offset + next, field))
            return PrintError(level, "child " + std::to_string(numOfRead + 1) + " of " + std::to_string(numOfChildren) +
                                         " lies beyond the end of the file");
        if (++_NumOfFieldsRead > _File.Size() / LeastSizeOfField)
            return PrintError(level, "there are more fields than the file can hold: the tree goes in circles");
        VisitField(field, level);
        ++numOfRead;
        next = field.OffsetOfNext;
        if (next == 0)
            break;
    }
    if (!IsPrinted(level.NumOfMatched, level.Depth))
        return;
    if (numOfRead != numOfChildren)
        PrintRemark("note", level,
                    "the chain ends behind " + std::to_string(numOfRead) + " of " + std::to_string(numOfChildren) +
                        " children");
    else if (next != 0)
        PrintRemark("note", level, "the chain goes on behind its " + std::to_string(numOfChildren) + " children");
}

bool CTreePrinter::ReadField(uint64_t offset, CField& field)
{
    const auto head = _File.Bytes(offset, 12);
    if (!head)
        return false;
    const auto typeAndFlags = static_cast<uint32_t>(NumberOf(head->data(), 4));
    field.Offset = offset;
    field.Code = static_cast<int32_t>(typeAndFlags & FieldTypeMask);
    field.IsExtended = typeAndFlags & FlagUsingExtendedFieldTypes;
    field.IsInline = typeAndFlags & FlagDataInline;
    field.Tag = static_cast<uint32_t>(NumberOf(&(*head)[4], 4));
    field.OffsetOfNext = static_cast<uint32_t>(NumberOf(&(*head)[8], 4));
    field.OffsetOfValue = offset + head->size();
    field.Size = SizeOfInlineValue;
    if (!field.IsInline)
    {
        const auto size = _File.Number(field.OffsetOfValue, 4);
        if (!size)
            return false;
        field.Size = static_cast<uint32_t>(*size);
        field.OffsetOfValue += 4;
    }
    if (typeAndFlags & FlagExtraTagPresent)
    {
        const auto secondTag = _File.Number(field.OffsetOfValue, 4);
        if (!secondTag)
            return false;
        field.SecondTag = static_cast<uint32_t>(*secondTag);
        field.OffsetOfValue += 4;
    }
    return true;
}

void CTreePrinter::VisitField(const CField& field, const CLevel& level)
{
    const std::vector<uint32_t>& path = _Request.TagPath;
    CLevel below{level.Depth + 1, level.NumOfMatched, nullptr};
    if (below.NumOfMatched < path.size())
    {
        if (path[below.NumOfMatched] != field.Tag)
            return;
        ++below.NumOfMatched;
    }
    const Zel::CCatalogueRow* row = level.Class ? level.Class->Row(field.Tag) : nullptr;
    if (row && row->ClassOfChild)
        below.Class = &row->ClassOfChild();
    const bool isPrinted = IsPrinted(below.NumOfMatched, level.Depth);
    if (field.IsVolume())
    {
        if (isPrinted)
            PrintField(field, level, DescribeVolume(field.OffsetOfValue));
        if (below.Depth >= Zel::MaxDepthOfVolumes)
            return PrintError(below, "volumes lie deeper in each other than they may");
        if (below.NumOfMatched < path.size() || IsPrinted(below.NumOfMatched, below.Depth))
            WalkVolume(field.OffsetOfValue, below);
        return;
    }
    if (!isPrinted)
        return;
    if (field.IsExtended && field.Code == CodeOfTiffDirectory)
        PrintField(field, level, "TIFF directory");
    else if (field.IsExtended && field.Code == CodeOfVectorGraphics)
        PrintField(field, level, "vector graphics");
    else if (field.IsExtended)
        PrintField(field, level, "unknown kind " + std::to_string(field.Code) + ", at which the reader ends");
    else if (field.Tag == TagOfBlobs)
        PrintField(field, level, DescribeBlob(field));
    else
        PrintField(field, level, DescribeValue(field));
    if (!field.IsExtended && !field.IsInline && !_File.Has(field.OffsetOfValue, field.Size))
        PrintError(below, "its " + std::to_string(field.Size) + " bytes reach beyond the end of the file");
}

std::string CTreePrinter::DescribeValue(const CField& field)
{
    std::string type = TypeTextOf(field.Code, field.Size);
    const auto bytes = _File.Bytes(field.OffsetOfValue, std::min<uint64_t>(field.Size, MostBytesOfValue));
    if (!bytes)
        return type;
    // An inline value takes 4 bytes, of which a small number uses the first ones.
    return type + " = " + ValueTextOf(field.Code, *bytes, field.Size);
}

std::string CTreePrinter::DescribeBlob(const CField& field)
{
    const auto header = _File.Bytes(field.OffsetOfValue, SizeOfBlobHeader);
    if (!header)
        return "blob";
    return "blob " + std::to_string(NumberOf(header->data(), 4)) + ", version " +
           std::to_string(NumberOf(&(*header)[8], 4)) + ", " + std::to_string(NumberOf(&(*header)[4], 4)) +
           " bytes at " + std::to_string(field.OffsetOfValue + SizeOfBlobHeader);
}

void CTreePrinter::PrintField(const CField& field, const CLevel& level, const std::string& what)
{
    ++_NumOfPrinted;
    const Zel::CCatalogueRow* row = level.Class ? level.Class->Row(field.Tag) : nullptr;
    _Out << std::setw(10) << field.Offset << std::string(2 + 2 * (level.Depth + 1), ' ') << field.Tag;
    if (field.SecondTag)
        _Out << '#' << *field.SecondTag;
    _Out << ' ' << (row ? row->Accessor : "?") << ": " << what << '\n';
}

} // namespace HostTool
