#include "SampleDocuments/Document.h"
#include "SampleDocuments/StackTree.h"
#include "SampleDocuments/Tags.h"

#include <algorithm>

namespace SampleDocuments
{

const Stack& Document::StackOf(uint32_t stackId) const
{
    const auto found =
        std::find_if(_Stacks.begin(), _Stacks.end(), [stackId](const Stack& stack) { return stack.Id() == stackId; });
    if (found == _Stacks.end())
        throw CSampleError("document: there is no stack " + std::to_string(stackId));
    return *found;
}

CNode& Document::StackVolume(uint32_t stackId)
{
    const auto wanted =
        std::find_if(_Stacks.begin(), _Stacks.end(), [stackId](const Stack& stack) { return stack.Id() == stackId; });
    if (wanted == _Stacks.end())
        throw CSampleError("document: there is no stack " + std::to_string(stackId));
    return Volume({2000, Nth(2001, static_cast<size_t>(wanted - _Stacks.begin()))});
}

CNode& Document::StackProperties(uint32_t stackId)
{
    return StackVolume(stackId).Child(2005);
}

CNode& Document::Frame(uint32_t stackId, size_t n)
{
    return StackVolume(stackId).Child(2002, n);
}

CNode& Document::DimensionVolume(uint32_t stackId, size_t n)
{
    return StackVolume(stackId).Child(2007, n);
}

CNode& Document::ChannelVolume(uint32_t stackId, size_t n)
{
    const std::vector<CStackDimension>& dimensions = StackOf(stackId).Plan().Dimensions;
    for (size_t i = 0; i < dimensions.size(); ++i)
        if (dimensions[i].Meaning == DimensionMeaning::Channel)
            return DimensionVolume(stackId, i).Child(2008, n);
    throw CSampleError("document: stack " + std::to_string(stackId) + " has no channel dimension");
}

CNode& Document::DisplayLayer(size_t n)
{
    return Volume({2000, 2011, Nth(2012, n)});
}

CNode& Document::DocumentProperties()
{
    return Volume({Tag::Collection, Tag::CollectionProperties, Tag::PropertySet});
}

namespace
{

/// The properties of the nth device on the optical path of a node, whatever IDs its devices bear.
CNode& DeviceBelow(CNode& node, size_t n)
{
    CNode& path = node.Child(Tag::OpticalPath);
    if (n >= path.Children().size())
        throw CSampleError("document: there is no device " + std::to_string(n) + "; the optical path has " +
                           std::to_string(path.Children().size()));
    return path.Children()[n].Child(Tag::DeviceProperties);
}

} // namespace

CNode& Document::StackDevice(uint32_t stackId, size_t n)
{
    return DeviceBelow(StackProperties(stackId), n);
}

CNode& Document::ChannelDevice(uint32_t stackId, size_t channel, size_t n)
{
    return DeviceBelow(ChannelVolume(stackId, channel), n);
}

CNode& Document::FrameDevice(uint32_t stackId, size_t frame, size_t n)
{
    return DeviceBelow(Frame(stackId, frame).Child(Tag::FrameProperties), n);
}

CTileStore& Document::Store(uint32_t stackId)
{
    const auto made = _Stores.find(stackId);
    return made != _Stores.end() ? made->second : _Stores.emplace(stackId, StoreOf(StackOf(stackId))).first->second;
}

std::vector<CTiffDirectory>& Document::TiffStore(uint32_t stackId)
{
    const auto made = _TiffStores.find(stackId);
    return made != _TiffStores.end() ? made->second
                                     : _TiffStores.emplace(stackId, DirectoriesOf(StackOf(stackId))).first->second;
}

size_t Document::Bytes()
{
    return File().ToBytes().size();
}

uint64_t Document::OffsetOf(const Path& path)
{
    return path.empty() ? OffsetOfVolumeHeader(path) : File().PlacementOf(Volume(path)).Field;
}

uint64_t Document::OffsetOfVolumeHeader(const Path& path)
{
    return File().PlacementOf(Volume(path)).Value;
}

uint32_t Document::OffsetWithin(const Path& from, const Path& to)
{
    return static_cast<uint32_t>(OffsetOf(to) - OffsetOfVolumeHeader(from));
}

} // namespace SampleDocuments
