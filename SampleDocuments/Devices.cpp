#include "SampleDocuments/Devices.h"

#include "SampleDocuments/Tags.h"

namespace SampleDocuments
{

CDevice Revolver(CObjectiveLens lens)
{
    return {.Id = 1, .SubType = DeviceSubType::Revolver, .Lens = std::move(lens)};
}

CDevice Camera(std::optional<int64_t> exposure, std::optional<int32_t> oldExposure)
{
    return {.Id = 2, .SubType = DeviceSubType::Camera, .Exposure = exposure, .OldExposure = oldExposure};
}

CNode MeasuredNode(uint32_t tag, const CMeasured& measured)
{
    CNode node = Volume(tag);
    if (measured.Unit)
        node.Add(Text(Tag::Unit, *measured.Unit));
    if (measured.Value)
        node.Add(Double(Tag::Value, *measured.Value));
    return node;
}

namespace
{

CNode DevicePropertiesNode(const CDevice& device)
{
    CNode properties = Volume(Tag::DeviceProperties);
    if (device.Exposure)
        properties.Add(Int64(Tag::Exposure, *device.Exposure));
    if (device.OldExposure)
        properties.Add(Int32(Tag::OldExposure, *device.OldExposure));
    const CObjectiveLens& lens = device.Lens;
    if (lens.Magnification)
        properties.Add(Double(Tag::Magnification, *lens.Magnification));
    if (lens.Aperture)
        properties.Add(Double(Tag::Aperture, *lens.Aperture));
    if (lens.WorkingDistance)
        properties.Add(MeasuredNode(Tag::WorkingDistance, *lens.WorkingDistance));
    if (lens.Name)
        properties.Add(Text(Tag::LensName, *lens.Name));
    if (lens.ImmersionMedium)
        properties.Add(Int32(Tag::ImmersionMedium, *lens.ImmersionMedium));
    if (lens.RefractiveIndex)
        properties.Add(Double(Tag::RefractiveIndex, *lens.RefractiveIndex));
    return properties;
}

} // namespace

CNode OpticalPathNode(const COpticalPath& devices)
{
    CNode path = Volume(Tag::OpticalPath);
    for (const CDevice& device : devices)
    {
        CNode node = Volume(device.Id);
        if (device.SubType)
            node.Add(Int32(Tag::DeviceSubType, *device.SubType));
        if (device.HasProperties)
            node.Add(DevicePropertiesNode(device));
        path.Add(std::move(node));
    }
    return path;
}

} // namespace SampleDocuments
