// The custom data of a document, and what its display flow says of a group.

#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"
#include "ZelLoader/Images/TextOf.h"
#include "ZelLoader/ZelImgDoc.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace Zel
{

namespace
{

constexpr const wchar_t* KeyOfSlideImage = L"SlideImage";
constexpr const wchar_t* KeyOfCroppedLevelImageSize = L"CroppedLevelImageSize";

using CParams = CArrayStartAndSize<const AC_PARAM_ELEMENT>;

/// The number of a parameter at its place; 0 when another one stands there.
uint32_t ParamAt(const CParams& params, uint32_t place, const wchar_t* name)
{
    if (place >= params.Size || !Equals(params.Arr[place].pszKey, name) || !params.Arr[place].pValue)
        return 0;
    return static_cast<uint32_t>(IntOfText(static_cast<const wchar_t*>(params.Arr[place].pValue)));
}

std::string UnitOrPixel(const CArrayStartAndSize<wchar_t>* unit)
{
    return unit ? A(TextOf(*unit)) : "PIXEL";
}

} // namespace

bool CZelImgDoc::BrixCustomProperties_init(StringMap& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    varToInit[KeyOfSlideImage] = L"Overview image of the entire slide. Params: none";
    varToInit[KeyOfCroppedLevelImageSize] = L"Level image size of cropped image";
    return true;
}

bool CZelImgDoc::BrixCustomProperty(const wchar_t* key, const CParams& params, CByteArray& buffer)
{
    const CLock lock(ThreadSafetyMutex());
    if (Equals(key, KeyOfCroppedLevelImageSize))
        return CroppedLevelImageSize(params, buffer);
    if (Equals(key, KeyOfSlideImage))
        return SlideImage(params, buffer);
    ZEL_LOG("Only key values currently supported are 'SlideImage' and 'CroppedLevelImageSize'!");
    errno = EINVAL;
    return false;
}

bool CZelImgDoc::CroppedLevelImageSize(const CParams& params, CByteArray& buffer)
{
    if (params.Size == 0 || !params.Arr)
    {
        ZEL_LOG("'CroppedLevelImageSize' expects params!");
        errno = EINVAL;
        return false;
    }
    std::array<int32_t, 4> rect{};
    BrixGetGroup(ParamAt(params, 0, L"groupId"))->GetCroppedLevelImageSize(ParamAt(params, 1, L"levelId"), rect);
    if (buffer.Arr && buffer.Size >= sizeof rect)
        std::memcpy(buffer.Arr, rect.data(), sizeof rect);
    buffer.Size = sizeof rect;
    return true;
}

bool CZelImgDoc::SlideImage(const CParams& params, CByteArray& buffer)
{
    if (params.Size != 0)
    {
        ZEL_LOG("'SlideImage' does not expect any params!");
        errno = EINVAL;
        return false;
    }
    const auto& images = *ImgColl().MultiDimImgs();
    ZEL_ASSERT(!images.empty() && !images.front()->ImgFrames()->empty());
    const auto& blobs = *images.front()->ImgFrames()->front()->FrameBlobs();
    const uint32_t sizeOffered = buffer.Size;
    buffer.Size = 0; // a document without an overview picture is no failure
    if (blobs.empty())
    {
        ZEL_LOG("Note: There is no blob (tag 2024) in the first multidim image!TO_DO: We should probably validate the "
                "other multidim images as it is not 100%% clear that blob will NOT be present in other multidim "
                "images");
        return true;
    }
    auto* blob = dynamic_cast<CZelDataFieldForBlob*>(blobs.front()->DbgNode());
    ZEL_ASSERT(blob);
    Seek(blob->Offset(), BfrSeekDirection::BEGIN);
    if (blob->BlobId() != ZelBlobIdForMacroSlideImage)
        return true;
    buffer.Size = blob->DataSizeInBytes();
    if (!buffer.Arr || sizeOffered < buffer.Size)
        return true;
    ZEL_ASSERT(buffer.Size == 0 || ReadData(buffer.Arr, buffer.Size));
    return true;
}

bool CZelImgDoc::IterateDPFAndGetDisplayLayerAndChannel(uint32_t SecondTagValue, const wchar_t* Keyname,
                                                        AC_VALUE_WITH_TYPE& valuewithtype)
{
    CZelMetaDataForDisplayProcessFlow* flow = ImgColl().DisplayProcessFlow();
    if (ImgColl().MultiDimImgs()->empty() || !flow)
        return false;
    const auto stackID = static_cast<int32_t>(SecondTagValue);
    for (const auto& layer : *flow->DispLayers())
    {
        ZEL_ASSERT(!layer->DispChannels()->empty());
        for (const auto& channel : *layer->DispChannels())
        {
            const int32_t* shown = channel->StackToBeDisplayed();
            if (shown && *shown == stackID && GetDisplayValue(*channel, stackID, Keyname, valuewithtype))
                return true;
        }
    }
    if (!Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupRenderOperation))
        return false;
    valuewithtype = {AC_VT_INTEGER, {.nInteger = 0}};
    return true;
}

bool CZelImgDoc::GetDisplayValue(CZelMetaDataForDispChannel& channel, int32_t stackID, const wchar_t* Keyname,
                                 AC_VALUE_WITH_TYPE& valuewithtype)
{
    if (Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupOrder))
    {
        const auto found = std::find(vecVisibleLayers.begin(), vecVisibleLayers.end(), stackID);
        const auto order = found == vecVisibleLayers.end() ? -1 : found - vecVisibleLayers.begin();
        valuewithtype = {AC_VT_INTEGER, {.nInteger = static_cast<INT32>(order)}};
        return true;
    }
    if (Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupRenderOperation) && channel.ImgDspOperId())
    {
        valuewithtype = {AC_VT_INTEGER, {.nInteger = *channel.ImgDspOperId()}};
        return true;
    }
    if (Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupTransparency) && channel.ImgDspTranspNumber())
    {
        valuewithtype = {AC_VT_DOUBLE, {.dDouble = *channel.ImgDspTranspNumber()}};
        return true;
    }
    return false;
}

bool CZelImgDoc::IteratePlaneProperty(const wchar_t* Keyname, std::string& strValue)
{
    CZelMetaDataForDisplayProcessFlow* flow = ImgColl().DisplayProcessFlow();
    if (!flow || flow->DispLayers()->empty())
        return false;
    const auto& channels = *flow->DispLayers()->front()->DispChannels();
    ZEL_ASSERT(!channels.empty());
    CZelMetaDataForDispChannel& channel = *channels.front();
    const auto joinedDoubles = [&](const CArrayStartAndSize<double>* numbers)
    {
        if (numbers)
            strValue = TwoDoubles(*numbers);
        return numbers != nullptr;
    };
    if (Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneUnit))
        strValue = UnitOrPixel(channel.ImgPlaneUnit());
    else if (Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneYUnit))
        strValue = UnitOrPixel(channel.ImgPlaneYUnitRWC());
    else if (Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneOrigin))
        return joinedDoubles(channel.ImgPlaneOriginRWC());
    else if (Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneScale))
        return joinedDoubles(channel.imgPlaneScaleRWC());
    else if (Equals(Keyname, BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneSize) && channel.ImgPlaneRectPxc())
        strValue = Joined(*channel.ImgPlaneRectPxc(), 4, [](int32_t number) { return ToString(number); });
    else
        return false;
    return true;
}

} // namespace Zel
