// The property sets of a group's channels.

#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Text.h"

#include <algorithm>
#include <cerrno>
#include <cwctype>
#include <optional>
#include <sstream>

namespace CIA
{

using namespace CommonUtil;

namespace
{

const wchar_t* ColorSpaceToBrixString(ColorSpaceType::E colorSpace)
{
    switch (colorSpace)
    {
    case ColorSpaceType::GrayScale:
        return L"GRAYSCALE";
    case ColorSpaceType::StandardRgb:
    case ColorSpaceType::YCbCr:
        return L"RGB";
    case ColorSpaceType::Bgr:
        return L"BGR";
    default:
        ZEL_LOG("error: unhandled pixel format type!");
        oldAbortCommonUtil();
    }
}

/// How many bytes a value takes of which display limits are told: those of a component where pixels of several are
/// packed. Nothing where limits have no meaning.
std::optional<uint32_t> NumOfBytesOfLimits(CPixelFrameFormat& channel, CPixelFormat& pixelFormat)
{
    const uint32_t numOfBytes = pixelFormat.NumOfBytes();
    if (numOfBytes <= 2)
        return numOfBytes;
    const ColorSpaceType::E colorSpace = pixelFormat.ColorSpace();
    if (colorSpace != ColorSpaceType::StandardRgb && colorSpace != ColorSpaceType::Bgr)
        return {};
    switch (channel.CompressionType())
    {
    case PixelFrameCompressionType::Jpeg:
    case PixelFrameCompressionType::Jpeg7:
        return 1;
    case PixelFrameCompressionType::J2k:
        if (numOfBytes == 3)
            return 1;
        if (numOfBytes == 6)
            return 2;
        return {};
    default:
        return {};
    }
}

} // namespace

bool CMultiDimImage::BrixPropset_ChannelInfo(const AC_PARAMS& params, CBrixPropset& propset)
{
    const wchar_t* channelId = ExpectOneTextParam(params, "channelId", "This propset function expects 1 param!");
    if (!channelId)
        return false;
    const auto found = Channels().find(IdOfText(channelId));
    if (found == Channels().end())
        return RefuseParams("Invalid channel ID!");
    CPixelFrameFormat& channel = *found->second;
    CPixelFormat* pixelFormat = channel.PixelFormat();
    ZEL_ASSERT(pixelFormat);
    std::ostringstream componentFormat;
    componentFormat << pixelFormat->ComponentFormat();
    ZEL_WLOG(L"ZEL Layer '%s', channel '%s', component format type = '%s'", Name(), channel.Name(),
             ToWide(componentFormat.str()).c_str());
    propset.AddString(L"name", channel.Name());
    propset.AddInteger(L"depth", static_cast<int32_t>(pixelFormat->NumOfBytes()));
    propset.AddInteger(L"bitCount", static_cast<int32_t>(pixelFormat->MaxNumOfUsedBits()));
    propset.AddString(L"format", CompressionFormatToBrixString(channel.CompressionType()));
    ZEL_LOG("TO_DO: 'ChannelInfo->compression': Ask question on exact meaning of this BRIX output parameter. For the "
            "time being we are simply always returning 'NONE' as discussed.");
    propset.AddString(L"compression", L"NONE");
    propset.AddString(L"colorSpace", ColorSpaceToBrixString(pixelFormat->ColorSpace()));
    return true;
}

bool CMultiDimImage::BrixPropset_LUTInfo(const AC_PARAMS& params, CBrixPropset& propset)
{
    const auto refuse = [](int reason)
    {
        errno = reason;
        return false;
    };
    CPixelFrameFormat* channel = nullptr;
    uint32_t channelID = 0;
    for (int i = 0; i < params.nSize; ++i)
    {
        const AC_PARAM_ELEMENT& element = params.pElements[i];
        const auto* value = static_cast<const wchar_t*>(element.pValue);
        if (element.pszKey && Equals(element.pszKey, L"channelId"))
        {
            const std::wstring text = value ? value : L"?";
            if (!std::all_of(text.begin(), text.end(), [](wchar_t c) { return std::iswdigit(static_cast<wint_t>(c)); }))
                return refuse(EINVAL);
            channelID = IdOfText(text.c_str());
            const auto found = Channels().find(channelID);
            if (found == Channels().end())
                return refuse(EINVAL);
            channel = found->second.get();
        }
        else if (element.pszKey && Equals(element.pszKey, L"planeName") && !Equals(value, L"all"))
            return refuse(ENODATA);
    }
    if (!channel)
        return refuse(EINVAL);
    CPixelFormat* pixelFormat = channel->PixelFormat();
    ZEL_ASSERT(pixelFormat);
    const std::optional<uint32_t> numOfBytes = NumOfBytesOfLimits(*channel, *pixelFormat);
    if (!numOfBytes)
        return refuse(EBADFD);
    int32_t shadow = 0;
    int32_t highlight = 0;
    if (!LUTInfoShadowHighlight(channelID, *numOfBytes, shadow, highlight))
        return false;
    propset.AddInteger(L"shadow", shadow);
    propset.AddInteger(L"highlight", highlight);
    return true;
}

} // namespace CIA
