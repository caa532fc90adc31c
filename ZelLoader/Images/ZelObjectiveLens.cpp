#include "ZelLoader/Images/ZelObjectiveLens.h"

#include "CommonUtil/Log.h"
#include "ZelLoader/Images/TextOf.h"
#include "ZelLoader/Images/ZelChannel.h"

#include <array>
#include <cerrno>

namespace Zel
{

namespace
{

constexpr std::array ImmersionMedia = {L"empty",    L"air",         L"water",   L"oil",        L"glycerol",
                                       L"silicone", L"oil_special", L"unknown", L"HYALIDE-K9", L"glycerol_100"};

double NumberOrZero(const double* number)
{
    return number ? *number : 0.0;
}

/// The one revolver of a channel's optical path, null when it has none; a second one is a failed assertion.
CZelMetaDataForChannelLevelDeviceID* RevolverOf(CZelMetaDataForChannelLevelImgOpticalPath& opticalPath)
{
    CZelMetaDataForChannelLevelDeviceID* revolver = nullptr;
    for (const auto& device : *opticalPath.ChannelLevelDeviceIDs())
    {
        const int32_t* subType = device->DeviceSubType();
        if (!subType || *subType != DeviceSubTypeOfRevolver)
            continue;
        ZEL_ASSERT(!revolver);
        revolver = device.get();
    }
    return revolver;
}

CZelMetaDataForChannelLevelDeviceID* RevolverOfChannel(CZelChannel& channel)
{
    CZelMetaDataForDimensionChannel* metaData = channel.MetaData();
    if (!metaData)
    {
        ZEL_LOG("Warning! No channel metadata present for the channel.");
        return nullptr;
    }
    CZelMetaDataForChannelLevelImgOpticalPath* opticalPath = metaData->ChannelLevelImgOpticalPath();
    if (!opticalPath)
    {
        ZEL_LOG("Warning! No ChannelLevelImgOpticalPath info present for the channel.");
        return nullptr;
    }
    CZelMetaDataForChannelLevelDeviceID* revolver = RevolverOf(*opticalPath);
    if (!revolver)
        ZEL_LOG("Warning: Could not find revolver device for channel %u, hope that objective lens info is TRULY "
                "optional.",
                channel.ID());
    return revolver;
}

} // namespace

const wchar_t* CZelObjectiveLens::Name()
{
    return TextOrEmpty(MetaData.ObjName());
}

double CZelObjectiveLens::Magnification()
{
    return NumberOrZero(MetaData.ObjMagnification());
}

double CZelObjectiveLens::RefractiveIndex()
{
    return NumberOrZero(MetaData.ObjRefractiveIndex());
}

double CZelObjectiveLens::WorkingDistance()
{
    CZelMetaDataForStackLevelObjWorkingDistance* distance = MetaData.StackLevelObjWorkingDistance();
    return NumberOrZero(distance ? distance->WdAbsolute() : nullptr);
}

const wchar_t* CZelObjectiveLens::WorkingDistanceUnits()
{
    CZelMetaDataForStackLevelObjWorkingDistance* distance = MetaData.StackLevelObjWorkingDistance();
    return TextOrEmpty(distance ? distance->WdUnit() : nullptr);
}

const wchar_t* CZelObjectiveLens::ImmersionMedium()
{
    const int32_t objType = MetaData.ObjType() ? *MetaData.ObjType() : 0;
    const bool isKnown = objType >= 0 && static_cast<size_t>(objType) < ImmersionMedia.size();
    return isKnown ? ImmersionMedia[static_cast<size_t>(objType)] : L"";
}

double CZelObjectiveLens::NumericalAperture()
{
    if (const double* aperture = MetaData.ObjAperture())
        return *aperture;
    for (const auto& [id, channel] : ParentMultiDimImg.Channels())
    {
        CZelMetaDataForChannelLevelDeviceID* revolver = RevolverOfChannel(static_cast<CZelChannel&>(*channel));
        if (!revolver)
            continue;
        CZelMetaDataForChannelLevelDevicePropSet* propSet = revolver->ChannelLevelDevicePropSet();
        if (!propSet)
        {
            ZEL_LOG("Error: missing needed tag 'ChannelLevelDevicePropSet'for device type 'revolver'!");
            errno = ENOEXEC;
            return 0.0;
        }
        if (const double* aperture = propSet->ObjAperture())
            return *aperture;
    }
    ZEL_LOG("Error! No Numerical Aperture found at channel or stack level, so returning an assumably invalid value for "
            "NA (0)...");
    return 0.0;
}

} // namespace Zel
