#include "SampleDocuments/StackTree.h"

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
    return Doubles(2003, {limits.first, limits.second}, FieldCode::DoubleArr2);
}

bool HasChannels(const CStackPlan& plan)
{
    return std::any_of(plan.Dimensions.begin(), plan.Dimensions.end(),
                       [](const CStackDimension& dimension) { return dimension.Meaning == DimensionMeaning::Channel; });
}

CNode PropertiesOf(const CStackPlan& plan)
{
    CNode properties = Volume(2005);
    if (plan.Name)
        properties.Add(Text(2030, *plan.Name));
    if (plan.CreationTime)
        properties.Add(Int64(2015, *plan.CreationTime, FieldCode::Int64TimeStamp));
    if (plan.StackType)
        properties.Add(Int32(2074, *plan.StackType));
    if (plan.Origin)
        properties.Add(Doubles(2018, *plan.Origin, FieldCode::DoubleArr2));
    if (plan.Scale)
        properties.Add(Doubles(2019, *plan.Scale, FieldCode::DoubleArr2));
    if (plan.Unit)
        properties.Add(Text(2020, *plan.Unit));
    if (plan.YUnit)
        properties.Add(Text(2064, *plan.YUnit));
    if (plan.AxisMeanings)
        properties.Add(Int32(2451, plan.AxisMeanings->first)).Add(Int32(2452, plan.AxisMeanings->second));
    if (plan.HasLimits && !HasChannels(plan))
        properties.Add(LimitsNode(plan.Limits.value_or(AllOf(plan.Pixels.ComponentType))));
    return properties;
}

CNode ChannelNode(const CStackPlan& plan, const CStackDimension& dimension, uint32_t number)
{
    CNode entry = Volume(2008).SecondTag(number);
    if (dimension.IsMeaningWritten)
        entry.Add(Int32(2023, dimension.Meaning));
    const CChannel* channel = number < dimension.Channels.size() ? &dimension.Channels[number] : nullptr;
    entry.Add(Text(2021, channel ? channel->Name : "Channel " + std::to_string(number)));
    if (channel && channel->Limits)
        entry.Add(LimitsNode(*channel->Limits));
    else if (plan.HasLimits)
        entry.Add(LimitsNode(plan.Limits.value_or(AllOf(plan.Pixels.ComponentType))));
    if (channel && channel->IsWavelength)
        entry.Add(Volume(2417));
    return entry;
}

CNode PointsNode(const CStackDimension& dimension)
{
    struct CTags
    {
        uint32_t Start;
        uint32_t Step;
    };
    const CTags tags = dimension.Meaning == DimensionMeaning::Z   ? CTags{2012, 2013}
                       : dimension.Meaning == DimensionMeaning::T ? CTags{2100, 2016}
                                                                  : CTags{2039, 2040};
    CNode entry = Volume(2008);
    if (dimension.IsMeaningWritten)
        entry.Add(Int32(2023, dimension.Meaning));
    if (dimension.Start)
        entry.Add(Valued(tags.Start, *dimension.Start, dimension.StartUnit));
    if (dimension.Step)
        entry.Add(Valued(tags.Step, *dimension.Step, dimension.StepUnit));
    return entry;
}

CNode DimensionNode(const CStackPlan& plan, const CStackDimension& dimension)
{
    CNode node = Volume(2007);
    if (dimension.Meaning == DimensionMeaning::Channel)
    {
        const uint32_t entries = std::max(dimension.NumOfPoints, static_cast<uint32_t>(dimension.Channels.size()));
        for (uint32_t i = 0; i < entries; ++i)
            node.Add(ChannelNode(plan, dimension, i));
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

void AddCoordinates(CNode& frame, const CStackPlan& plan, const CIndexes& at)
{
    CNode properties = Volume(2006);
    for (const auto& [dimension, coordinates] : plan.Coordinates)
    {
        const uint32_t index = dimension == DimensionMeaning::Z ? at.Z : dimension == DimensionMeaning::T ? at.T : at.L;
        const uint32_t tag = dimension == DimensionMeaning::Z ? 2014 : dimension == DimensionMeaning::T ? 2017 : 2041;
        if (index < coordinates.Values.size())
            properties.Add(Valued(tag, coordinates.Values[index], coordinates.Unit));
    }
    if (plan.HasFramePropertiesAlways || !properties.Children().empty())
        frame.Add(std::move(properties));
}

CNode FrameNode(const CStackPlan& plan, const CIndexes& at, uint32_t directory)
{
    CNode frame = Volume(2002);
    AddCoordinates(frame, plan, at);
    switch (plan.Storage)
    {
    case StackStorage::InDocument:
        frame.Add(TiffIfd(2016, directory));
        frame.Add(Volume(2037, {Int32s(2053, BoundaryOf(plan), FieldCode::IntArr4Rect)}));
        break;
    case StackStorage::VectorGraphics:
        frame.Add(Volume(2017));
        break;
    default:
        frame.Add(Volume(2018, {Int32s(2053, BoundaryOf(plan), FieldCode::IntArr4Rect)}));
        if (plan.Shift)
            frame.Child(2018).Add(Int32s(2410, *plan.Shift, FieldCode::IntArrVari));
    }
    return frame;
}

} // namespace

CNode TreeOf(const Stack& stack, uint32_t firstDirectory)
{
    const CStackPlan& plan = stack.Plan();
    CNode node = Volume(2001).SecondTag(plan.Id);
    node.Add(UInt32s(2003, stack.NumOfPointsPerDim()));
    node.Add(PropertiesOf(plan));
    for (const CStackDimension& dimension : plan.Dimensions)
        node.Add(DimensionNode(plan, dimension));
    uint32_t directory = firstDirectory;
    for (const CIndexes& at : stack.FrameNodes())
        node.Add(FrameNode(plan, at, directory++));
    return node;
}

} // namespace SampleDocuments
