// The exported functions for versions, look-up tables, custom data of documents and groups, and the thumbnail.

#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/GroupCustomData.h"
#include "CommonImageAccess/Handles.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"

#include <array>
#include <charconv>

using namespace CIA;
using namespace CommonUtil;

namespace
{

/// The parts of a version text: "1.2.3 build 4" has four.
std::vector<std::string> PartsOfVersion(const std::string& text)
{
    std::vector<std::string> parts = Split(text, ".");
    const std::vector<std::string> lastAndBuild = Split(parts.back(), " build ");
    ZEL_ASSERT(lastAndBuild.size() <= 2);
    parts.back() = lastAndBuild.front();
    if (lastAndBuild.size() == 2)
        parts.push_back(lastAndBuild.back());
    return parts;
}

INT32 NumberOfPart(const std::string& part)
{
    ZEL_ASSERT(IsPositiveInteger(part));
    uint32_t number = 0; // as documents store it
    const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
    ZEL_ASSERT(error == std::errc());
    return static_cast<INT32>(number);
}

AC_Result GetLUT(CMultiDimTile& area, const wchar_t* channelID, int* red, int* green, int* blue, int tableBufferSize,
                 int* numOfEles)
{
    const CChannels& channels = area.Level().ParentMultiDimImg().Channels();
    const auto channel = channels.find(IdOfText(channelID));
    if (channel == channels.end())
        return Complain("Invalid ciaChannelID specified!");
    ZEL_ASSERT(channel->second);
    CPixelFormat* pxFmt = channel->second->PixelFormat();
    ZEL_ASSERT(pxFmt);
    if (pxFmt->ColorSpace() != ColorSpaceType::GrayScale)
        return AC_RESULT_NO_LUT;
    const std::vector<CColor>& lut = pxFmt->ColorLookupTable();
    *numOfEles = static_cast<int>(lut.size());
    if (lut.empty())
        return AC_RESULT_NO_LUT;
    if (!red || *numOfEles > tableBufferSize)
        return AC_RESULT_SUCCESS;
    for (size_t i = 0; i < lut.size(); ++i)
    {
        red[i] = static_cast<int>(lut[i].RedComponent);
        green[i] = static_cast<int>(lut[i].GreenComponent);
        blue[i] = static_cast<int>(lut[i].BlueComponent);
    }
    return AC_RESULT_SUCCESS;
}

} // namespace

extern "C"
{

    AC_Result _AC_GetFileVersion(AC_HIMG_DOC hImgDoc, CMN_VERSION_INFO* version)
    {
        if (!hImgDoc || !version)
            return Complain("params hImgDoc or version are NULL!");
        return AtBoundary(
            [&]
            {
                const CLock lock(Doc(hImgDoc).ThreadSafetyMutex());
                const std::vector<std::string> parts = PartsOfVersion(A(Doc(hImgDoc).FileFormatVersion()));
                // Aligned to the end: a text of two parts fills the product alone.
                std::array<INT32, 4> numbers{};
                ZEL_ASSERT(parts.size() <= numbers.size());
                const size_t start = numbers.size() - parts.size();
                for (size_t i = 0; i < parts.size(); ++i)
                    numbers[start + i] = NumberOfPart(parts[i]);
                *version = {{numbers[0], numbers[1]}, {numbers[2], numbers[3]}};
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetLUT(AC_HMULTIDIMTILE hMultiDimTile, wchar_t* channelID, int* pTableBufferR, int* pTableBufferG,
                         int* pTableBufferB, int tableBufferSize, int* numOfEles)
    {
        if (!hMultiDimTile || !channelID || !numOfEles)
            return Complain("Error: params hMultiDimTile or channelID or numOfElesare NULL!");
        const bool hasRed = pTableBufferR != nullptr;
        if (hasRed != (pTableBufferG != nullptr) || hasRed != (pTableBufferB != nullptr))
            return Complain(
                "Error: pTableBufferR, pTableBufferG and pTableBufferG must all be uniformly NULL or non-NULL!");
        return AtBoundary(
            [&]
            {
                CMultiDimTile& area = Area(hMultiDimTile);
                const CLock lock(DocOf(area).ThreadSafetyMutex());
                return GetLUT(area, channelID, pTableBufferR, pTableBufferG, pTableBufferB, tableBufferSize, numOfEles);
            });
    }

    AC_Result _AC_GetSupportedCustomData(AC_HIMG_DOC hImgDoc, AC_CUSTOM_DATA_INFO* buffer, int bufferSize,
                                         int* numOfEles)
    {
        if (!hImgDoc || !numOfEles)
            return Complain("params hImgDoc or numOfEles are NULL!");
        return AtBoundary(
            [&]
            {
                const CLock lock(Doc(hImgDoc).ThreadSafetyMutex());
                const StringMap& properties = Doc(hImgDoc).BrixCustomProperties();
                *numOfEles = static_cast<int>(properties.size());
                if (!buffer || *numOfEles > bufferSize)
                    return AC_RESULT_SUCCESS;
                for (const auto& [name, description] : properties)
                    *buffer++ = {name.c_str(), description};
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetCustomData(AC_HIMG_DOC hImgDoc, wchar_t* key, const AC_PARAMS* params, BYTE* buffer,
                                UINT64 bufferSize, UINT64* numOfElesPopulated)
    {
        if (!hImgDoc || !key || !params || !numOfElesPopulated)
            return Complain("Error: hImgDoc or key or params or numOfEles are NULL!");
        if (params->nSize < 0)
            return Complain("Error: the number of params is negative!");
        return AtBoundary(
            [&]
            {
                const CArrayStartAndSize<const AC_PARAM_ELEMENT> paramsArray(params->pElements,
                                                                             static_cast<uint32_t>(params->nSize));
                CByteArray bufferArray(buffer, ToUint32WithCheck(bufferSize));
                if (!Doc(hImgDoc).BrixCustomProperty(key, paramsArray, bufferArray))
                    return CiaResultToAC_Result();
                *numOfElesPopulated = bufferArray.Size;
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetGroupCustomData(AC_HMULTIDIMIMG hMultiDimImg, wchar_t* pszGroupCustomDataName,
                                     const AC_PARAM* params, BYTE* pBuffer, UINT64, UINT64* pnSize)
    {
        if (!hMultiDimImg || !pszGroupCustomDataName)
            return Complain("Error: hMultiDimImg or pszGroupCustomDataName or params  are NULL!");
        return AtBoundary(
            [&]
            {
                // An exposure time that cannot be told has no size, whatever ends the search for it.
                if (pnSize && Equals(pszGroupCustomDataName, BRIX_GROUPCUSTOMDATA_KEY_GroupExposureTime))
                    *pnSize = 0;
                CGroupCustomData customData(Group(hMultiDimImg));
                const AC_Result result = customData.Get(pszGroupCustomDataName, params);
                if (customData.Text())
                {
                    if (pnSize)
                        *pnSize = customData.Text()->size();
                    // The buffer's size is not looked at: hosts size it by a call without one.
                    if (pBuffer)
                        std::copy(customData.Text()->begin(), customData.Text()->end(), pBuffer);
                }
                return result;
            });
    }

    AC_Result _AC_GetThumbnailData(AC_HIMG_DOC hImgDoc, BYTE* buffer, UINT bufferSize, UINT* numOfEles)
    {
        if (!hImgDoc || !numOfEles)
            return Complain("Error: params hImgDoc or numOfEles are NULL!");
        return AtBoundary(
            [&]
            {
                CByteArray array(buffer, bufferSize);
                if (!Doc(hImgDoc).Thumbnail(array))
                    return CiaResultToAC_Result();
                *numOfEles = array.Size;
                return AC_RESULT_SUCCESS;
            });
    }

} // extern "C"
