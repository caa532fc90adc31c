#include "SampleDocuments/StackTree.h"

#include "SampleDocuments/Tags.h"

#include <algorithm>

namespace SampleDocuments
{

namespace
{

CNode PointsNode(const CStackDimension& dimension)
{
    struct CTags
    {
        uint32_t Start;
        uint32_t Step;
    };
    const CTags tags = dimension.Meaning == DimensionMeaning::Z   ? CTags{Tag::ZStart, Tag::ZStep}
                       : dimension.Meaning == DimensionMeaning::T ? CTags{Tag::TStart, Tag::TStep}
                                                                  : CTags{Tag::LambdaStart, Tag::LambdaStep};
    CNode entry = Volume(Tag::DimensionEntry);
    if (dimension.IsMeaningWritten)
        entry.Add(Int32(Tag::Meaning, dimension.Meaning));
    if (dimension.Start)
        entry.Add(Valued(tags.Start, *dimension.Start, dimension.StartUnit));
    if (dimension.Step)
        entry.Add(Valued(tags.Step, *dimension.Step, dimension.StepUnit));
    return entry;
}

CNode DimensionNode(const CStackPlan& plan, const CStackDimension& dimension)
{
    CNode node = Volume(Tag::Dimension);
    if (dimension.Meaning == DimensionMeaning::Channel)
    {
        const uint32_t entries = std::max(dimension.NumOfPoints, static_cast<uint32_t>(dimension.Channels.size()));
        for (uint32_t i = 0; i < entries; ++i)
            node.Add(ChannelNodeOf(plan, dimension, i));
    }
    else if (dimension.Meaning != DimensionMeaning::Dummy)
        node.Add(PointsNode(dimension));
    return node;
}

std::vector<int32_t> BoundaryOf(const CStackPlan& plan)
{
    return plan.Boundary.value_or(
        std::vector<int32_t>{0, 0, static_cast<int32_t>(plan.Width), static_cast<int32_t>(plan.Height)});
}

void AddProperties(CNode& frame, const CStackPlan& plan, const CIndexes& at, const CFrameExtras& extras)
{
    CNode properties = Volume(Tag::FrameProperties);
    for (const auto& [dimension, coordinates] : plan.Coordinates)
    {
        const uint32_t index = dimension == DimensionMeaning::Z ? at.Z : dimension == DimensionMeaning::T ? at.T : at.L;
        const uint32_t tag = dimension == DimensionMeaning::Z   ? Tag::FrameZ
                             : dimension == DimensionMeaning::T ? Tag::FrameT
                                                                : Tag::FrameLambda;
        if (index < coordinates.Values.size())
            properties.Add(Valued(tag, coordinates.Values[index], coordinates.Unit));
    }
    if (extras.OpticalPath)
        properties.Add(OpticalPathNode(*extras.OpticalPath));
    if (plan.HasFramePropertiesAlways || !properties.Children().empty())
        frame.Add(std::move(properties));
}

CNode FrameNode(const CStackPlan& plan, const CIndexes& at, uint32_t directory, const CFrameExtras& extras)
{
    CNode frame = Volume(Tag::Frame);
    AddProperties(frame, plan, at, extras);
    switch (plan.Storage)
    {
    case StackStorage::InDocument:
        frame.Add(TiffIfd(Tag::FrameDirectory, directory));
        frame.Add(Volume(Tag::FramePixels, {Rect(Tag::Boundary, BoundaryOf(plan))}));
        break;
    case StackStorage::VectorGraphics:
        frame.Add(Volume(Tag::FrameVectorGraphics));
        break;
    default:
        frame.Add(Volume(Tag::FrameStore, {Rect(Tag::Boundary, BoundaryOf(plan))}));
        if (plan.Shift)
            frame.Child(Tag::FrameStore).Add(Int32s(Tag::Shift, *plan.Shift, FieldCode::IntArrVari));
    }
    for (const CNode& blob : extras.Blobs)
        frame.Add(blob);
    return frame;
}

void AddBlobs(CNode& stack, const CStackPlan& plan)
{
    for (const CNode& blob : plan.LayerBlobs)
        stack.Add(blob);
    for (const auto& [channel, blobs] : plan.ChannelBlobs)
        stack.Add(Volume(Tag::ChannelProperties, blobs).SecondTag(channel));
}

void CheckFrameExtras(const CStackPlan& plan, size_t numOfFrames)
{
    if (!plan.FrameExtras.empty() && plan.FrameExtras.rbegin()->first >= numOfFrames)
        throw CSampleError("stack " + std::to_string(plan.Id) + ": there is no frame " +
                           std::to_string(plan.FrameExtras.rbegin()->first) + "; it has " +
                           std::to_string(numOfFrames));
}

} // namespace

CNode TreeOf(const Stack& stack, uint32_t firstDirectory)
{
    const CStackPlan& plan = stack.Plan();
    CNode node = Volume(Tag::Stack).SecondTag(plan.Id);
    node.Add(UInt32s(Tag::Counts, stack.NumOfPointsPerDim()));
    node.Add(StackPropertiesNodeOf(plan));
    for (const CStackDimension& dimension : plan.Dimensions)
        node.Add(DimensionNode(plan, dimension));
    AddBlobs(node, plan);
    const std::vector<CIndexes> frames = stack.FrameNodes();
    CheckFrameExtras(plan, frames.size());
    const CFrameExtras none;
    for (size_t i = 0; i < frames.size(); ++i)
    {
        const auto extras = plan.FrameExtras.find(i);
        node.Add(FrameNode(plan, frames[i], firstDirectory + static_cast<uint32_t>(i),
                           extras == plan.FrameExtras.end() ? none : extras->second));
    }
    return node;
}

} // namespace SampleDocuments
