#include "SampleDocuments/Regions.h"
#include "SampleDocuments/Stack.h"

#include <algorithm>

namespace SampleDocuments
{

Stack& Stack::Name(std::string name)
{
    _Plan.Name = std::move(name);
    return *this;
}

Stack& Stack::Boundary(std::vector<int32_t> leftTopRightBottom)
{
    _Plan.Boundary = std::move(leftTopRightBottom);
    return *this;
}

Stack& Stack::Shift(int32_t x, int32_t y)
{
    _Plan.Shift = {x, y};
    return *this;
}

Stack& Stack::Origin(double x, double y)
{
    _Plan.Origin = {x, y};
    return *this;
}

Stack& Stack::Scale(double x, double y)
{
    _Plan.Scale = {x, y};
    return *this;
}

Stack& Stack::Unit(std::string unit)
{
    _Plan.Unit = std::move(unit);
    return *this;
}

Stack& Stack::YUnit(std::string unit)
{
    _Plan.YUnit = std::move(unit);
    return *this;
}

Stack& Stack::CreationTime(int64_t secondsInUtc)
{
    _Plan.CreationTime = secondsInUtc;
    return *this;
}

Stack& Stack::StackType(int32_t type)
{
    _Plan.StackType = type;
    return *this;
}

Stack& Stack::DisplayLimits(double lower, double upper)
{
    _Plan.Limits = {lower, upper};
    return *this;
}

Stack& Stack::WithoutDisplayLimits()
{
    _Plan.HasLimits = false;
    return *this;
}

Stack& Stack::Hidden(bool hidden)
{
    _Plan.Display.Hidden = hidden;
    return *this;
}

Stack& Stack::StackLimits(double lower, double upper)
{
    _Plan.StackLimits = {lower, upper};
    return *this;
}

Stack& Stack::AxisMeanings(int32_t axis0, int32_t axis1)
{
    _Plan.AxisMeanings = {axis0, axis1};
    return *this;
}

Stack& Stack::LookUpTable(CLookUpTable table)
{
    _Plan.Table = std::move(table);
    return *this;
}

Stack& Stack::Operator(int32_t id)
{
    _Plan.Display.OperatorId = id;
    return *this;
}

Stack& Stack::Transparency(double value)
{
    _Plan.Display.Transparency = value;
    return *this;
}

Stack& Stack::Display(CDisplayChannel channel)
{
    _Plan.Display = std::move(channel);
    return *this;
}

namespace
{

void AddDevice(std::optional<COpticalPath>& path, CDevice device)
{
    if (!path)
        path.emplace();
    path->push_back(std::move(device));
}

/// The first camera of the path, put behind its devices if there is none.
CDevice& CameraOf(std::optional<COpticalPath>& path)
{
    if (!path)
        path.emplace();
    const auto isCamera = [](const CDevice& device)
    { return device.SubType.value_or(DeviceSubType::Camera) == DeviceSubType::Camera; };
    const auto found = std::find_if(path->begin(), path->end(), isCamera);
    return found != path->end() ? *found : path->emplace_back(Camera({}));
}

CChannel& ChannelOf(CStackPlan& plan, uint32_t channel)
{
    for (CStackDimension& dimension : plan.Dimensions)
        if (dimension.Meaning == DimensionMeaning::Channel && channel < dimension.Channels.size())
            return dimension.Channels[channel];
    throw CSampleError("stack " + std::to_string(plan.Id) + ": there is no channel " + std::to_string(channel) +
                       " yet; describe the channels first");
}

} // namespace

Stack& Stack::Lens(CObjectiveLens lens)
{
    return Device(Revolver(std::move(lens)));
}

Stack& Stack::Exposure(int64_t time)
{
    CameraOf(_Plan.OpticalPath).Exposure = time;
    return *this;
}

Stack& Stack::OldExposure(int32_t time)
{
    CameraOf(_Plan.OpticalPath).OldExposure = time;
    return *this;
}

Stack& Stack::Device(CDevice device)
{
    AddDevice(_Plan.OpticalPath, std::move(device));
    return *this;
}

Stack& Stack::ChannelDevice(uint32_t channel, CDevice device)
{
    AddDevice(ChannelOf(_Plan, channel).OpticalPath, std::move(device));
    return *this;
}

Stack& Stack::FrameDevice(size_t frame, CDevice device)
{
    AddDevice(_Plan.FrameExtras[frame].OpticalPath, std::move(device));
    return *this;
}

namespace
{

CAcquisition& AcquisitionOf(CStackPlan& plan)
{
    if (!plan.Acquisition)
        plan.Acquisition.emplace();
    return *plan.Acquisition;
}

} // namespace

Stack& Stack::Stage(double x, double y, std::string unit)
{
    return Stage(CMeasured(x, unit), CMeasured(y, unit));
}

Stack& Stack::Stage(std::optional<CMeasured> x, std::optional<CMeasured> y)
{
    AcquisitionOf(_Plan).StageX = std::move(x);
    AcquisitionOf(_Plan).StageY = std::move(y);
    return *this;
}

Stack& Stack::Experiment(std::string name)
{
    AcquisitionOf(_Plan).ExperimentName = std::move(name);
    return *this;
}

Stack& Stack::Sample(std::string name, std::string description)
{
    AcquisitionOf(_Plan).SampleName = std::move(name);
    AcquisitionOf(_Plan).SampleDescription = std::move(description);
    return *this;
}

Stack& Stack::LayerBlob(CNode blob)
{
    _Plan.LayerBlobs.push_back(std::move(blob));
    return *this;
}

Stack& Stack::FrameBlob(size_t frame, CNode blob)
{
    _Plan.FrameExtras[frame].Blobs.push_back(std::move(blob));
    return *this;
}

Stack& Stack::ChannelBlob(uint32_t channel, CNode blob)
{
    _Plan.ChannelBlobs[channel].push_back(std::move(blob));
    return *this;
}

Stack& Stack::Overview(ByteString encodedPicture)
{
    std::vector<CNode>& blobs = _Plan.FrameExtras[0].Blobs;
    blobs.insert(blobs.begin(), Blob(BlobId::MacroSlideImage, 1, encodedPicture));
    return *this;
}

} // namespace SampleDocuments
