#include "SampleDocuments/Display.h"

#include "SampleDocuments/Tags.h"

namespace SampleDocuments
{

namespace
{

CNode DisplayChannelNode(const CDisplayChannel& channel)
{
    CNode node = Volume(Tag::LayerChannel);
    if (channel.OperatorType)
        node.Add(Int32(Tag::OperatorType, *channel.OperatorType));
    if (channel.StackId)
        node.Add(Int32(Tag::StackToShow, *channel.StackId));
    if (channel.OperatorId)
        node.Add(Int32(Tag::OperatorId, *channel.OperatorId));
    if (channel.Transparency)
        node.Add(Double(Tag::Transparency, *channel.Transparency));
    if (channel.PlaneUnit)
        node.Add(Text(Tag::PlaneUnit, *channel.PlaneUnit));
    if (channel.PlaneYUnit)
        node.Add(Text(Tag::PlaneYUnit, *channel.PlaneYUnit));
    if (channel.PlaneOrigin)
        node.Add(TwoDoubles(Tag::PlaneOrigin, *channel.PlaneOrigin));
    if (channel.PlaneScale)
        node.Add(TwoDoubles(Tag::PlaneScale, *channel.PlaneScale));
    if (channel.PlaneRect)
        node.Add(Rect(Tag::PlaneRect, *channel.PlaneRect));
    if (channel.Hidden)
        node.Add(Bool(Tag::Hidden, *channel.Hidden));
    return node;
}

} // namespace

CNode DisplayLayerNode(uint32_t number, const std::vector<CDisplayChannel>& channels)
{
    CNode layer = Volume(Tag::Layer).SecondTag(number);
    for (const CDisplayChannel& channel : channels)
        layer.Add(DisplayChannelNode(channel));
    return layer;
}

} // namespace SampleDocuments
