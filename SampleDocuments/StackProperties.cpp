#include "SampleDocuments/StackTree.h"
#include "SampleDocuments/Tags.h"

#include <algorithm>
#include <cmath>

namespace SampleDocuments
{

namespace
{

/// Limits that use all bits of a component: the second number is one past the largest value.
std::pair<double, double> AllOf(uint32_t componentType)
{
    const int bits = 8 * static_cast<int>(BytesOfComponent(componentType));
    switch (componentType)
    {
    case ComponentType::Float:
    case ComponentType::Double:
        return {0, 1};
    case ComponentType::Uint64: // 2^64 itself is more than a reader can hold
    case ComponentType::Int8:
    case ComponentType::Int16:
    case ComponentType::Int32:
    case ComponentType::Int64:
        return {0, std::ldexp(1, bits - 1)};
    default:
        return {0, std::ldexp(1, bits)};
    }
}

CNode LimitsNode(const std::pair<double, double>& limits)
{
    return TwoDoubles(Tag::Limits, {limits.first, limits.second});
}

bool HasChannels(const CStackPlan& plan)
{
    return std::any_of(plan.Dimensions.begin(), plan.Dimensions.end(),
                       [](const CStackDimension& dimension) { return dimension.Meaning == DimensionMeaning::Channel; });
}

CNode AcquisitionNode(const CAcquisition& acquisition)
{
    CNode node = Volume(Tag::Acquisition);
    if (acquisition.StageX)
        node.Add(MeasuredNode(Tag::StageX, *acquisition.StageX));
    if (acquisition.StageY)
        node.Add(MeasuredNode(Tag::StageY, *acquisition.StageY));
    if (acquisition.ExperimentName)
        node.Add(Text(Tag::ExperimentName, *acquisition.ExperimentName));
    if (acquisition.SampleName)
        node.Add(Text(Tag::SampleName, *acquisition.SampleName));
    if (acquisition.SampleDescription)
        node.Add(Text(Tag::SampleDescription, *acquisition.SampleDescription));
    return node;
}

} // namespace

CNode StackPropertiesNodeOf(const CStackPlan& plan)
{
    CNode properties = Volume(Tag::StackProperties);
    if (plan.Name)
        properties.Add(Text(Tag::StackName, *plan.Name));
    if (plan.CreationTime)
        properties.Add(Int64(Tag::CreationTime, *plan.CreationTime, FieldCode::Int64TimeStamp));
    if (plan.StackType)
        properties.Add(Int32(Tag::StackType, *plan.StackType));
    if (plan.Origin)
        properties.Add(TwoDoubles(Tag::FrameOrigin, *plan.Origin));
    if (plan.Scale)
        properties.Add(TwoDoubles(Tag::FrameScale, *plan.Scale));
    if (plan.Unit)
        properties.Add(Text(Tag::FrameUnit, *plan.Unit));
    if (plan.YUnit)
        properties.Add(Text(Tag::FrameYUnit, *plan.YUnit));
    if (plan.AxisMeanings)
        properties.Add(Int32(Tag::Axis0Meaning, plan.AxisMeanings->first))
            .Add(Int32(Tag::Axis1Meaning, plan.AxisMeanings->second));
    if (plan.StackLimits)
        properties.Add(LimitsNode(*plan.StackLimits));
    else if (plan.HasLimits && !HasChannels(plan))
        properties.Add(LimitsNode(plan.Limits.value_or(AllOf(plan.Pixels.ComponentType))));
    if (plan.Table)
        properties.Add(plan.Table->ToNode());
    if (plan.OpticalPath)
        properties.Add(OpticalPathNode(*plan.OpticalPath));
    if (plan.Acquisition)
        properties.Add(AcquisitionNode(*plan.Acquisition));
    return properties;
}

CNode ChannelNodeOf(const CStackPlan& plan, const CStackDimension& dimension, uint32_t number)
{
    CNode entry = Volume(Tag::DimensionEntry).SecondTag(number);
    if (dimension.IsMeaningWritten)
        entry.Add(Int32(Tag::Meaning, dimension.Meaning));
    const CChannel* channel = number < dimension.Channels.size() ? &dimension.Channels[number] : nullptr;
    entry.Add(Text(Tag::ChannelName, channel ? channel->Name : "Channel " + std::to_string(number)));
    if (channel && channel->Limits)
        entry.Add(LimitsNode(*channel->Limits));
    else if (plan.HasLimits)
        entry.Add(LimitsNode(plan.Limits.value_or(AllOf(plan.Pixels.ComponentType))));
    if (channel && channel->IsWavelength)
        entry.Add(Volume(Tag::Wavelength));
    if (channel && channel->Table)
        entry.Add(channel->Table->ToNode());
    if (channel && channel->OpticalPath)
        entry.Add(OpticalPathNode(*channel->OpticalPath));
    return entry;
}

} // namespace SampleDocuments
