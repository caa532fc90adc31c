#pragma once

#include "SampleDocuments/Node.h"

#include <string>

namespace SampleDocuments
{

/// A number with its unit, such as {0.21, "10^-3m^1"}. What is not set is not written.
struct CMeasured
{
    CMeasured() = default;
    CMeasured(double value) : Value(value) {}
    CMeasured(double value, std::string unit) : Value(value), Unit(std::move(unit)) {}
    std::optional<double> Value;
    std::optional<std::string> Unit;
};

/// What kind of device it is, of those that readers know.
struct DeviceSubType
{
    enum E : int32_t
    {
        Camera = 0,
        Revolver = 20000
    };
};

/// What lies between the lens and the sample.
struct Immersion
{
    enum E : int32_t
    {
        Empty = 0,
        Air = 1,
        Water = 2,
        Oil = 3,
        Glycerol = 4,
        Silicone = 5,
        OilSpecial = 6,
        Unknown = 7,
        HyalideK9 = 8,
        Glycerol100 = 9
    };
};

/// An objective lens. What is not set is not written: `{.Name = "UPlan", .Aperture = 0.75}`.
struct CObjectiveLens
{
    std::optional<std::string> Name = {};
    std::optional<double> Magnification = {};
    std::optional<double> Aperture = {};
    std::optional<CMeasured> WorkingDistance = {};
    std::optional<int32_t> ImmersionMedium = {}; ///< one of Immersion, or any number
    std::optional<double> RefractiveIndex = {};
};

/// A device on an optical path of a stack, channel or frame.
struct CDevice
{
    uint32_t Id = 1;                     ///< the tag of its node; readers take those below 100 for devices
    std::optional<int32_t> SubType = {}; ///< one of DeviceSubType; readers take a device without it for a camera
    CObjectiveLens Lens = {};
    std::optional<int64_t> Exposure = {};    ///< in the unit that the document chose; readers hand it on as it is
    std::optional<int32_t> OldExposure = {}; ///< of older documents, in thousands of that unit
    bool HasProperties = true;               ///< false: no node for all of the above but the subtype
};

using COpticalPath = std::vector<CDevice>;

/// A revolver with a lens in it, as device 1.
CDevice Revolver(CObjectiveLens lens);

/// A camera, as device 2.
CDevice Camera(std::optional<int64_t> exposure, std::optional<int32_t> oldExposure = std::nullopt);

/// The node of an optical path, with a child for each device.
CNode OpticalPathNode(const COpticalPath& devices);

/// A number with its unit as a volume, each only if it is set.
CNode MeasuredNode(uint32_t tag, const CMeasured& measured);

} // namespace SampleDocuments
