#include "SampleDocuments/Node.h"

#include <algorithm>

namespace SampleDocuments
{

CNode::CNode(uint32_t tag, uint32_t code, ByteString value) : _Tag(tag), _Code(code), _Value(std::move(value)) {}

CNode& CNode::Tag(uint32_t tag)
{
    _Tag = tag;
    return *this;
}

CNode& CNode::SecondTag(uint32_t secondTag)
{
    _SecondTag = secondTag;
    return *this;
}

CNode& CNode::NoSecondTag()
{
    _SecondTag.reset();
    return *this;
}

CNode& CNode::Code(uint32_t code)
{
    _Code = code;
    return *this;
}

CNode& CNode::Inline(bool isInline)
{
    _IsInline = isInline;
    return *this;
}

CNode& CNode::MarkedAsArray(bool marked)
{
    _IsArray = marked;
    return *this;
}

CNode& CNode::Extended(bool extended)
{
    _IsExtended = extended;
    return *this;
}

CNode& CNode::Value(ByteString value)
{
    _Value = std::move(value);
    return *this;
}

CNode& CNode::BlobSize(uint32_t sizeOfBlob)
{
    Patch(_Value, 4, sizeOfBlob);
    return *this;
}

CNode& CNode::Flags(uint32_t wholeWord)
{
    _Field.Flags = wholeWord;
    return *this;
}

CNode& CNode::ExtraFlags(uint32_t bits)
{
    _Field.ExtraFlags = bits;
    return *this;
}

CNode& CNode::Next(uint32_t offsetFromVolumeHeader)
{
    _Field.Next = offsetFromVolumeHeader;
    return *this;
}

CNode& CNode::DataSize(uint32_t bytes)
{
    _Field.DataSize = bytes;
    return *this;
}

CNode& CNode::Length(size_t bytes)
{
    _Value.resize(bytes);
    return *this;
}

CNode& CNode::JunkBefore(uint32_t bytes)
{
    _Field.JunkBefore = bytes;
    return *this;
}

CNode& CNode::OwnSize(uint16_t size)
{
    _Header.OwnSize = size;
    return *this;
}

CNode& CNode::FixedNum(uint16_t number)
{
    _Header.FixedNum = number;
    return *this;
}

CNode& CNode::Version(uint32_t version)
{
    _Header.Version = version;
    return *this;
}

CNode& CNode::OffsetOfFirstChild(uint64_t offsetFromVolumeHeader)
{
    _Header.OffsetOfFirstChild = offsetFromVolumeHeader;
    return *this;
}

CNode& CNode::Count(uint32_t numOfChildren)
{
    _Header.Count = numOfChildren;
    return *this;
}

CNode& CNode::CountFlags(uint32_t bits)
{
    _Header.CountFlags = bits;
    return *this;
}

CNode& CNode::Reserved(uint32_t value)
{
    _Header.Reserved = value;
    return *this;
}

CNode& CNode::FileOrder(std::vector<size_t> order)
{
    _FileOrder = std::move(order);
    return *this;
}

CNode& CNode::Add(CNode child)
{
    _Children.push_back(std::move(child));
    return *this;
}

CNode& CNode::Put(CNode child)
{
    if (CNode* present = FindChild(child._Tag))
        *present = std::move(child);
    else
        Add(std::move(child));
    return *this;
}

CNode& CNode::Drop(uint32_t tag)
{
    if (std::erase_if(_Children, [tag](const CNode& child) { return child._Tag == tag; }) == 0)
        throw CSampleError("tag " + std::to_string(_Tag) + " has no child " + std::to_string(tag) + " to drop");
    return *this;
}

CNode& CNode::DropNth(uint32_t tag, size_t nth)
{
    _Children.erase(_Children.begin() + (&Child(tag, nth) - _Children.data()));
    return *this;
}

CNode* CNode::FindChild(uint32_t tag, size_t nth)
{
    for (CNode& child : _Children)
        if (child._Tag == tag && nth-- == 0)
            return &child;
    return nullptr;
}

CNode& CNode::Child(uint32_t tag, size_t nth)
{
    if (CNode* child = FindChild(tag, nth))
        return *child;
    throw CSampleError("tag " + std::to_string(_Tag) + " has no child " + std::to_string(tag) + " number " +
                       std::to_string(nth));
}

size_t CNode::NumOfChildren(uint32_t tag) const
{
    return static_cast<size_t>(
        std::count_if(_Children.begin(), _Children.end(), [tag](const CNode& child) { return child._Tag == tag; }));
}

CNode& CNode::At(const Path& path)
{
    CNode* node = this;
    for (const CStep& step : path)
        node = &node->Child(step.Tag, step.Nth);
    return *node;
}

} // namespace SampleDocuments
