#include "SampleDocuments/DocumentFile.h"

namespace SampleDocuments
{

namespace
{

constexpr size_t OffsetOfFirstIfdField = 4;

ByteString Write(const CDocumentFile& file, Placements* placements, std::vector<uint32_t>* directories)
{
    if (file.ByteOrder.size() != 2)
        throw CSampleError("document file: the byte order takes two characters, not \"" + file.ByteOrder + "\"");
    ByteString bytes;
    Append(bytes, std::string_view(file.ByteOrder));
    Append(bytes, file.FixedNum);
    Append(bytes, uint32_t{0});
    AppendTree(bytes, file.Root, placements);
    const uint32_t first = AppendDirectories(bytes, file.Directories, directories);
    Patch(bytes, OffsetOfFirstIfdField, file.OffsetOfFirstIfd.value_or(first));
    Append(bytes, std::span<const uint8_t>(file.Tail));
    return bytes;
}

} // namespace

ByteString CDocumentFile::ToBytes(Placements* placements) const
{
    return Write(*this, placements, nullptr);
}

CPlacement CDocumentFile::PlacementOf(const CNode& node) const
{
    Placements placements;
    Write(*this, &placements, nullptr);
    const auto found = placements.find(&node);
    if (found == placements.end())
        throw CSampleError("document file: the node with tag " + std::to_string(node.Tag()) + " is not in its tree");
    return found->second;
}

std::vector<uint32_t> CDocumentFile::OffsetsOfDirectories() const
{
    std::vector<uint32_t> offsets;
    Write(*this, nullptr, &offsets);
    return offsets;
}

} // namespace SampleDocuments
