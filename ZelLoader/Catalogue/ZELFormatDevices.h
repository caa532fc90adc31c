#pragma once
#include "ZelLoader/Catalogue/FieldShapes.h"

// The dictionary of the tag tree: the devices on the optical path, of an image, of a channel and of a frame. A device's
// number is its tag.

namespace Zel
{

/// The working distance of an objective lens.
class CZelMetaDataForStackLevelObjWorkingDistance : public CZelNodeWithTag<120062>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> WdAbsolute{this, "WdAbsolute"}; ///< the distance
    CTextField<TagOfUnit> WdUnit{this, "WdUnit"};                    ///< its unit
};

/// The properties of a device of an image.
class CZelMetaDataForStackLevelDevicePropSet : public CZelNodeWithTag<120114>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<120060, double> ObjMagnification{this, "ObjMagnification"};          ///< magnification of the lens
    CScalarField<120061, double> ObjAperture{this, "ObjAperture"};                    ///< numerical aperture
    CScalarField<100100, int64_t> Stack2005CamExposure{this, "Stack2005CamExposure"}; ///< exposure time of the camera
    /// The same in older files.
    CScalarField<100002, int32_t> Stack2005CamExposureDeprecated{this, "Stack2005CamExposureDeprecated"};
    /// Working distance.
    CChildField<120062, CZelMetaDataForStackLevelObjWorkingDistance> StackLevelObjWorkingDistance{
        this, "StackLevelObjWorkingDistance"};
    CTextField<120063> ObjName{this, "ObjName"};                                 ///< name of the lens
    CScalarField<120064, int32_t> ObjType{this, "ObjType"};                      ///< immersion medium
    CScalarField<120079, double> ObjRefractiveIndex{this, "ObjRefractiveIndex"}; ///< refractive index
};

/// A device of an image.
class CZelMetaDataForStackLevelDeviceID : public CZelDeviceNode
{
public:
    using CZelDeviceNode::CZelDeviceNode;

    /// Its properties.
    CChildField<120114, CZelMetaDataForStackLevelDevicePropSet> StackLevelDevicePropSet{this,
                                                                                        "StackLevelDevicePropSet"};
    CScalarField<120130, int32_t> DeviceSubType{this, "DeviceSubType"}; ///< kind of device
};

/// The optical path of an image.
class CZelMetaDataForStackLevelImgOpticalPath : public CZelNodeWithTag<2043>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// The devices on it.
    CDeviceListField<CZelMetaDataForStackLevelDeviceID> StackLevelDeviceIDs{this, "StackLevelDeviceIDs"};
};

/// The properties of a device of a channel.
class CZelMetaDataForChannelLevelDevicePropSet : public CZelNodeWithTag<120114>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<100100, int64_t> ObjExposureTime{this, "ObjExposureTime"}; ///< exposure time
    /// The same in older files.
    CScalarField<100002, int32_t> ObjExposureTimeDeprecated{this, "ObjExposureTimeDeprecated"};
    CScalarField<120061, double> ObjAperture{this, "ObjAperture"}; ///< numerical aperture
};

/// A device of a channel.
class CZelMetaDataForChannelLevelDeviceID : public CZelDeviceNode
{
public:
    using CZelDeviceNode::CZelDeviceNode;

    /// Its properties.
    CChildField<120114, CZelMetaDataForChannelLevelDevicePropSet> ChannelLevelDevicePropSet{
        this, "ChannelLevelDevicePropSet"};
    CScalarField<120130, int32_t> DeviceSubType{this, "DeviceSubType"}; ///< kind of device
};

/// The optical path of a channel.
class CZelMetaDataForChannelLevelImgOpticalPath : public CZelNodeWithTag<2043>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// The devices on it.
    CDeviceListField<CZelMetaDataForChannelLevelDeviceID> ChannelLevelDeviceIDs{this, "ChannelLevelDeviceIDs"};
};

/// The properties of a device of a frame.
class CZelMetaDataForFrameLevelDevicePropSet : public CZelNodeWithTag<120114>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<100100, int64_t> ObjExposureTime{this, "ObjExposureTime"}; ///< exposure time
    /// The same in older files.
    CScalarField<100002, int32_t> ObjExposureTimeDeprecated{this, "ObjExposureTimeDeprecated"};
};

/// A device of a frame.
class CZelMetaDataForFrameLevelDeviceID : public CZelDeviceNode
{
public:
    using CZelDeviceNode::CZelDeviceNode;

    /// Its properties.
    CChildField<120114, CZelMetaDataForFrameLevelDevicePropSet> FrameLevelDevicePropSet{this,
                                                                                        "FrameLevelDevicePropSet"};
    CScalarField<120130, int32_t> DeviceSubType{this, "DeviceSubType"}; ///< kind of device
};

/// The optical path of a frame.
class CZelMetaDataForFrameLevelImgOpticalPath : public CZelNodeWithTag<2043>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// The devices on it.
    CDeviceListField<CZelMetaDataForFrameLevelDeviceID> FrameLevelDeviceIDs{this, "FrameLevelDeviceIDs"};
};

} // namespace Zel
