#include "SampleDocuments/Node.h"

#include <algorithm>
#include <numeric>

namespace SampleDocuments
{

/// Writes volumes and fields at the end of a growing file; what is known only later (sizes, the place of the next
/// sibling) is patched in, so that the time is linear in the size of the tree however deep it is.
class CTreeWriter
{
public:
    CTreeWriter(ByteString& bytes, Placements* placements) : _Bytes(bytes), _Placements(placements) {}

    void WriteVolume(const CNode& volume)
    {
        const size_t header = _Bytes.size();
        const std::vector<size_t> order = FileOrder(volume);
        const CVolumeHeaderOverrides& values = volume._Header;
        const auto count = static_cast<uint32_t>(volume._Children.size());
        Append(_Bytes, values.OwnSize);
        Append(_Bytes, values.FixedNum);
        Append(_Bytes, values.Version);
        Append(_Bytes, values.OffsetOfFirstChild.value_or(0));
        Append(_Bytes, (values.Count.value_or(count) & 0x0FFFFFFFu) | values.CountFlags);
        Append(_Bytes, values.Reserved);

        std::vector<size_t> starts(volume._Children.size());
        for (const size_t number : order)
        {
            const CNode& child = volume._Children[number];
            _Bytes.insert(_Bytes.end(), child._Field.JunkBefore, uint8_t{0xEE});
            starts[number] = _Bytes.size();
            WriteField(child, header);
        }
        Chain(volume, header, starts);
    }

private:
    static constexpr size_t OffsetOfNext = 8;
    static constexpr size_t OffsetOfSize = 12;
    static constexpr size_t OffsetOfFirstChild = 8;

    static std::vector<size_t> FileOrder(const CNode& volume)
    {
        std::vector<size_t> order(volume._Children.size());
        std::iota(order.begin(), order.end(), size_t{0});
        if (volume._FileOrder.empty())
            return order;
        if (!std::is_permutation(order.begin(), order.end(), volume._FileOrder.begin(), volume._FileOrder.end()))
            throw CSampleError("tag " + std::to_string(volume._Tag) + ": the file order is no permutation of its " +
                               std::to_string(order.size()) + " children");
        return volume._FileOrder;
    }

    static uint32_t FlagsOf(const CNode& node)
    {
        if (node._Field.Flags)
            return *node._Field.Flags;
        return (node._Code & 0x00FFFFFFu) | (node._SecondTag ? FieldFlag::ExtraTag : 0u) |
               (node._IsExtended ? FieldFlag::Extended : 0u) | (node._IsVolume ? FieldFlag::NewVolume : 0u) |
               (node._IsArray && !node._IsInline ? FieldFlag::Array : 0u) | (node._IsInline ? FieldFlag::Inline : 0u) |
               node._Field.ExtraFlags;
    }

    void WriteField(const CNode& node, size_t volumeHeader)
    {
        const size_t start = _Bytes.size();
        Append(_Bytes, FlagsOf(node));
        Append(_Bytes, node._Tag);
        Append(_Bytes, uint32_t{0});
        if (node._IsInline)
            WriteInlineValue(node);
        else
            Append(_Bytes, uint32_t{0});
        if (node._SecondTag)
            Append(_Bytes, *node._SecondTag);
        const size_t value = node._IsInline ? start + OffsetOfSize : _Bytes.size();
        if (node._IsVolume)
            WriteVolume(node);
        else if (!node._IsInline)
            Append(_Bytes, std::span<const uint8_t>(node._Value));
        if (!node._IsInline)
            Patch(_Bytes, start + OffsetOfSize,
                  node._Field.DataSize.value_or(static_cast<uint32_t>(_Bytes.size() - value)));
        if (_Placements)
            (*_Placements)[&node] = {start, value, _Bytes.size(), volumeHeader};
    }

    void WriteInlineValue(const CNode& node)
    {
        ByteString four = node._Value;
        four.resize(4);
        Append(_Bytes, std::span<const uint8_t>(four));
    }

    void Chain(const CNode& volume, size_t header, const std::vector<size_t>& starts)
    {
        if (!starts.empty() && !volume._Header.OffsetOfFirstChild)
            Patch(_Bytes, header + OffsetOfFirstChild, uint64_t{starts[0] - header});
        for (size_t i = 0; i < starts.size(); ++i)
        {
            const size_t next = i + 1 < starts.size() ? starts[i + 1] - header : 0;
            Patch(_Bytes, starts[i] + OffsetOfNext,
                  volume._Children[i]._Field.Next.value_or(static_cast<uint32_t>(next)));
        }
    }

    ByteString& _Bytes;
    Placements* _Placements;
};

void AppendTree(ByteString& bytes, const CNode& root, Placements* placements)
{
    const size_t start = bytes.size();
    CTreeWriter(bytes, placements).WriteVolume(root);
    if (placements)
        (*placements)[&root] = {0, start, bytes.size(), start};
}

} // namespace SampleDocuments
