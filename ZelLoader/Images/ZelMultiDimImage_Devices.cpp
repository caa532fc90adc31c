// What the devices tell that an image was taken with: lens, stage and exposure.

#include "CommonUtil/Log.h"
#include "CommonUtil/Text.h"
#include "ZelLoader/Images/TextOf.h"
#include "ZelLoader/Images/ZelChannel.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Images/ZelObjectiveLens.h"

#include <cerrno>
#include <limits>

namespace Zel
{

namespace
{

constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();
/// The older exposure field counts in thousands of the newer one's unit.
constexpr int64_t FactorOfOldExposure = 1000;

template <typename Device>
bool IsCamera(Device& device)
{
    const int32_t* subType = device.DeviceSubType();
    return !subType || *subType == DeviceSubTypeOfCamera;
}

/// The exposure time out of the two fields that may hold it; false when neither is there.
bool ExposureTime(const int64_t* exposure, const int32_t* oldExposure, std::string& value)
{
    if (exposure)
        value = ToString(*exposure);
    else if (oldExposure)
        value = ToString(*oldExposure * FactorOfOldExposure);
    return exposure || oldExposure;
}

AC_Result NotFound(const char* text)
{
    ZEL_LOG("%s", text);
    return AC_RESULT_PROPERTY_NOT_FOUND;
}

} // namespace

bool CZelMultiDimImage::ObjectiveLens_init(std::unique_ptr<CObjectiveLens>& varToInit)
{
    ZEL_ASSERT(!varToInit);
    const auto failed = []
    {
        ZEL_LOG("missing needed tag!");
        errno = ENOEXEC;
        return false;
    };
    CZelMetaDataForMultiDimImgProps* props = _MetaData.MultiDimImgProps();
    if (!props)
        return failed();
    CZelMetaDataForStackLevelImgOpticalPath* opticalPath = props->StackLevelImgOpticalPath();
    if (!opticalPath)
    {
        ZEL_LOG("missing imgOpticalPath tag!");
        return true;
    }
    for (const auto& device : *opticalPath->StackLevelDeviceIDs())
    {
        const int32_t* subType = device->DeviceSubType();
        if (!subType || *subType != DeviceSubTypeOfRevolver)
            continue;
        CZelMetaDataForStackLevelDevicePropSet* propSet = device->StackLevelDevicePropSet();
        if (!propSet)
            return failed();
        varToInit = std::make_unique<CZelObjectiveLens>(*propSet, *this);
        return true;
    }
    ZEL_LOG("Note: Could not find revolver device, hope that objective lens info is TRULY optional.");
    return true;
}

CZelMetaDataForimgDevPropSet* CZelMultiDimImage::DevicePropSet(bool& arePropsMissing)
{
    CZelMetaDataForMultiDimImgProps* props = _MetaData.MultiDimImgProps();
    arePropsMissing = !props;
    if (!props)
    {
        ZEL_LOG("missing mandatory tag!");
        return nullptr;
    }
    CZelMetaDataForimgDevPropSet* propSet = props->imgDevPropSet();
    if (!propSet)
        errno = 0; // optional: its absence must not be taken for a failure
    return propSet;
}

template <typename Position>
double CZelMultiDimImage::StagePositionValue(Position position)
{
    bool arePropsMissing = false;
    CZelMetaDataForimgDevPropSet* propSet = DevicePropSet(arePropsMissing);
    const double* value = propSet ? position(*propSet).first : nullptr;
    if (value)
        return *value;
    errno = arePropsMissing ? ENOEXEC : 0;
    return Unknown;
}

template <typename Position>
const wchar_t* CZelMultiDimImage::StagePositionUnits(Position position)
{
    bool arePropsMissing = false;
    CZelMetaDataForimgDevPropSet* propSet = DevicePropSet(arePropsMissing);
    const CArrayStartAndSize<wchar_t>* units = propSet ? position(*propSet).second : nullptr;
    if (units)
    {
        units->CheckLen();
        return units->Arr;
    }
    errno = arePropsMissing ? ENOEXEC : 0;
    return L"";
}

namespace
{

/// Value and unit of a stage position; both null when it is absent.
using CStagePosition = std::pair<const double*, const CArrayStartAndSize<wchar_t>*>;

CStagePosition StageX(CZelMetaDataForimgDevPropSet& propSet)
{
    CZelMetaDataForimgStagePosX* x = propSet.imgStagePosX();
    return x ? CStagePosition(x->XAbsolute(), x->XUnit()) : CStagePosition();
}

CStagePosition StageY(CZelMetaDataForimgDevPropSet& propSet)
{
    CZelMetaDataForimgStagePosY* y = propSet.imgStagePosY();
    return y ? CStagePosition(y->YAbsolute(), y->YUnit()) : CStagePosition();
}

} // namespace

double CZelMultiDimImage::StageXPositionValue()
{
    return StagePositionValue(StageX);
}
const wchar_t* CZelMultiDimImage::StageXPositionUnits()
{
    return StagePositionUnits(StageX);
}
double CZelMultiDimImage::StageYPositionValue()
{
    return StagePositionValue(StageY);
}
const wchar_t* CZelMultiDimImage::StageYPositionUnits()
{
    return StagePositionUnits(StageY);
}

template <typename Text>
const wchar_t* CZelMultiDimImage::DevicePropSetText(Text textOf)
{
    bool arePropsMissing = false;
    CZelMetaDataForimgDevPropSet* propSet = DevicePropSet(arePropsMissing);
    const CArrayStartAndSize<wchar_t>* text = propSet ? textOf(*propSet) : nullptr;
    if (!text)
        return nullptr;
    text->CheckLen();
    return text->Arr;
}

const wchar_t* CZelMultiDimImage::ExperimentName()
{
    return DevicePropSetText([](CZelMetaDataForimgDevPropSet& propSet) { return propSet.GetExperimentName(); });
}
const wchar_t* CZelMultiDimImage::SampleName()
{
    return DevicePropSetText([](CZelMetaDataForimgDevPropSet& propSet) { return propSet.GetSampleName(); });
}
const wchar_t* CZelMultiDimImage::SampleDescription()
{
    return DevicePropSetText([](CZelMetaDataForimgDevPropSet& propSet) { return propSet.GetSampleDescription(); });
}

AC_Result CZelMultiDimImage::GroupExposureTime(uint32_t channelId, std::string& value)
{
    if (!Channels().contains(channelId))
        return AC_RESULT_INVALID_PARAM;
    if (GetExposureTimeforStack(value) == AC_RESULT_SUCCESS)
        return AC_RESULT_SUCCESS;
    if (GetExposureTimeForDimension(channelId, value) == AC_RESULT_SUCCESS)
        return AC_RESULT_SUCCESS;
    return GetExposureTimeForFrames(value);
}

AC_Result CZelMultiDimImage::GetExposureTimeforStack(std::string& strbuffValue)
{
    CZelMetaDataForMultiDimImgProps* props = _MetaData.MultiDimImgProps();
    if (!props)
        return NotFound("missing needed multiDimImgProps tag!");
    CZelMetaDataForStackLevelImgOpticalPath* opticalPath = props->StackLevelImgOpticalPath();
    if (!opticalPath)
        return NotFound("missing imgOpticalPath tag!");
    if (opticalPath->StackLevelDeviceIDs()->empty())
        return NotFound("No deviceIDs 0 tag found!");
    for (const auto& device : *opticalPath->StackLevelDeviceIDs())
    {
        if (!IsCamera(*device))
            continue;
        CZelMetaDataForStackLevelDevicePropSet* propSet = device->StackLevelDevicePropSet();
        if (!propSet)
            return NotFound("missing 120114 needed tag!");
        return ExposureTime(propSet->Stack2005CamExposure(), propSet->Stack2005CamExposureDeprecated(), strbuffValue)
                   ? AC_RESULT_SUCCESS
                   : AC_RESULT_PROPERTY_NOT_FOUND;
    }
    return AC_RESULT_PROPERTY_NOT_FOUND;
}

AC_Result CZelMultiDimImage::GetExposureTimeForDimension(uint32_t channelId, std::string& value)
{
    const auto channel = Channels().find(channelId);
    if (channel == Channels().end())
        return AC_RESULT_INVALID_PARAM;
    CZelMetaDataForDimensionChannel* metaData = static_cast<CZelChannel&>(*channel->second).MetaData();
    if (!metaData)
        return NotFound("Warning! No channel metadata present for the channel.");
    CZelMetaDataForChannelLevelImgOpticalPath* opticalPath = metaData->ChannelLevelImgOpticalPath();
    if (!opticalPath)
        return NotFound("Warning! No ChannelLevelImgOpticalPath info present for the channel.");
    for (const auto& device : *opticalPath->ChannelLevelDeviceIDs())
    {
        if (!IsCamera(*device))
            continue;
        CZelMetaDataForChannelLevelDevicePropSet* propSet = device->ChannelLevelDevicePropSet();
        if (!propSet)
            return AC_RESULT_PROPERTY_NOT_FOUND;
        value = "TAG NOT FOUND";
        if (ExposureTime(propSet->ObjExposureTime(), propSet->ObjExposureTimeDeprecated(), value))
            return AC_RESULT_SUCCESS;
    }
    return AC_RESULT_PROPERTY_NOT_FOUND;
}

AC_Result CZelMultiDimImage::GetExposureTimeForFrames(std::string& strbuffValue)
{
    for (const auto& frame : *_MetaData.ImgFrames())
    {
        CZelMetaDataForFrameProperties* props = frame->FrameProperties();
        CZelMetaDataForFrameLevelImgOpticalPath* opticalPath = props ? props->imgOpticalPath() : nullptr;
        if (!opticalPath)
            continue;
        for (const auto& device : *opticalPath->FrameLevelDeviceIDs())
        {
            if (!IsCamera(*device))
                continue;
            CZelMetaDataForFrameLevelDevicePropSet* propSet = device->FrameLevelDevicePropSet();
            if (!propSet)
                return AC_RESULT_PROPERTY_NOT_FOUND;
            if (ExposureTime(propSet->ObjExposureTime(), propSet->ObjExposureTimeDeprecated(), strbuffValue))
                return AC_RESULT_SUCCESS;
        }
        return AC_RESULT_PROPERTY_NOT_FOUND; // the first frame that has an optical path decides
    }
    return AC_RESULT_PROPERTY_NOT_FOUND;
}

} // namespace Zel
