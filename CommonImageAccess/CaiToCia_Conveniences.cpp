// Exported conveniences for C++ hosts, made of the other exported functions.

#include "Brix/AccessorConveniences.h"
#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/Handles.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Text.h"

#include <memory>

using namespace CIA;
using namespace CommonUtil;

namespace
{

/// A failure of one of the calls below, on its way to the one place that answers it.
struct CFailedCall
{
    AC_Result Result;
};

void Check(AC_Result result)
{
    if (result != AC_RESULT_SUCCESS)
        throw CFailedCall{result};
}

/// The texts of a key in a set that is asked of an area.
std::vector<std::wstring> TextsOf(AC_HAREA hArea, const wchar_t* propsetKey, const AC_PARAMS* params,
                                  const wchar_t* valueKey)
{
    AC_HPROPERTY property = nullptr;
    Check(_AC_GetAreaProperty(hArea, propsetKey, params, &property));
    std::vector<std::wstring> texts;
    Check(GetValue(property, valueKey, texts));
    return texts;
}

AC_PARAM_ELEMENT TextParam(const wchar_t* name, std::wstring& value)
{
    return {name, value.data()};
}

int NumOfPointsOfAxis(AC_HAREA hArea, std::wstring axisName)
{
    AC_PARAM_ELEMENT element = TextParam(L"axisName", axisName);
    const AC_PARAMS params{1, &element};
    AC_HPROPERTY property = nullptr;
    Check(_AC_GetAreaProperty(hArea, BRIX_GETAREAPROPERTY_KEY_AxisInfo, &params, &property));
    AC_VALUE maxSize{};
    int numOfValues = 0;
    Check(_AC_GetPropertyValue(property, L"maxSize", &maxSize, 1, &numOfValues));
    Check(_AC_ReleaseProperty(property));
    return numOfValues == 1 ? maxSize.value.nInteger : 0;
}

/// The middle of each axis; time is always told, the others only where there are any.
std::vector<AC_AXIS_INFO> MiddleOfAxes(AC_HAREA hArea)
{
    const std::vector<std::wstring> axisNames =
        TextsOf(hArea, BRIX_GETAREAPROPERTY_KEY_ZtlDimExistence, nullptr, L"axisName");
    int times = 0;
    int zs = 0;
    int lambdas = 0;
    for (const std::wstring& name : axisNames)
    {
        int& count = name == BRIX_AXIS_T ? times : name == BRIX_AXIS_Z ? zs : lambdas;
        count = NumOfPointsOfAxis(hArea, name);
    }
    std::vector<AC_AXIS_INFO> axes = {{AC_AT_TIME, times / 2}};
    if (zs > 0)
        axes.push_back({AC_AT_Z, zs / 2});
    if (lambdas > 0)
        axes.push_back({AC_AT_LAMBDA, lambdas / 2});
    return axes;
}

std::wstring FirstChannel(AC_HAREA hArea)
{
    std::wstring first = TextsOf(hArea, BRIX_GETAREAPROPERTY_KEY_ChannelIdList, nullptr, L"id").front();
    AC_PARAM_ELEMENT element = TextParam(L"channelId", first);
    const AC_PARAMS params{1, &element};
    return TextsOf(hArea, BRIX_GETAREAPROPERTY_KEY_ImageChannelIdList, &params, L"id").front();
}

/// AtBoundary for bodies that end by CFailedCall.
template <typename Body>
AC_Result AtBoundaryOfCalls(Body body)
{
    return AtBoundary(
        [&]
        {
            try
            {
                body();
                return AC_RESULT_SUCCESS;
            }
            catch (const CFailedCall& failed)
            {
                return failed.Result;
            }
        });
}

/// The bytes of the files that an area's images can lie in, as they were opened: the document, and the store of the
/// group. Stores of other groups do not count, as they are opened one by one: what was asked before must not matter.
UINT64 SizeOfFilesOf(AC_HAREA hArea)
{
    CMultiDimTile& area = Area(hArea);
    CImgDoc& document = DocOf(area);
    const CLock lock(document.ThreadSafetyMutex());
    const auto store = document.FileUnits().find(area.Level().ParentMultiDimImg().ID());
    return document.FileSize() + (store == document.FileUnits().end() ? 0 : store->second->FileSize());
}

/// Room for a sample is made here and not by the host, while a damaged file can claim any size for a picture of which
/// it holds nothing. What the files hold is no claim.
constexpr UINT64 SizeOfSampleThatMayBeMissing = 256u << 20;

void ReadSample(AC_HAREA hArea, BYTE** pBuffer, UINT64* punSize)
{
    std::vector<AC_AXIS_INFO> axes = MiddleOfAxes(hArea);
    const std::wstring channel = FirstChannel(hArea);
    AC_HIMAGE image = nullptr;
    Check(_AC_GetImage(hArea, channel.c_str(), axes.data(), static_cast<int>(axes.size()), &image));
    CMN_RECT rect{};
    Check(_AC_GetImageSize(image, &rect));
    rect.x = 0;
    rect.y = 0;
    UINT64 size = 0;
    Check(_AC_GetImageBody(image, &rect, nullptr, 0, &size));
    *punSize = size; // also where the bytes cannot be read
    ZEL_ASSERT(size <= SizeOfSampleThatMayBeMissing || size <= SizeOfFilesOf(hArea));
    // What is not cleared here takes no memory before it is read.
    auto bytes = std::make_unique_for_overwrite<BYTE[]>(size);
    Check(_AC_GetImageBody(image, &rect, bytes.get(), size, &size));
    Check(_AC_ReleaseImage(image));
    *pBuffer = bytes.release();
}

} // namespace

extern "C"
{

    AC_Result GetValue(AC_HPROPERTY hProperty, const wchar_t* pszKey, std::vector<std::wstring>& strList)
    {
        const auto failed = [&](AC_Result result)
        {
            _AC_ReleaseProperty(hProperty);
            return result;
        };
        return AtBoundary(
            [&]
            {
                int numOfValues = 0;
                if (const AC_Result result = _AC_GetPropertyValue(hProperty, pszKey, nullptr, 0, &numOfValues);
                    result != AC_RESULT_SUCCESS)
                    return failed(result);
                std::vector<AC_VALUE> values(static_cast<size_t>(numOfValues));
                if (const AC_Result result =
                        _AC_GetPropertyValue(hProperty, pszKey, values.data(), numOfValues, &numOfValues);
                    result != AC_RESULT_SUCCESS)
                    return failed(result);
                for (const AC_VALUE& value : values)
                {
                    if (value.nType != AC_VT_STRING)
                        return failed(AC_RESULT_INVALID_PARAM);
                    strList.emplace_back(value.value.pszString ? value.value.pszString : L"");
                }
                const AC_Result result = _AC_ReleaseProperty(hProperty);
                return strList.empty() ? AC_RESULT_FAILURE : result;
            });
    }

    AC_Result GetDateTimeString(AC_HAREA hArea, std::wstring& strDateTime)
    {
        return AtBoundaryOfCalls(
            [&]
            {
                strDateTime = TextsOf(hArea, BRIX_GETAREAPROPERTY_KEY_CreationDateTime, nullptr, L"dateTime").front();
                strDateTime += TextsOf(hArea, BRIX_GETAREAPROPERTY_KEY_UpdateDateTime, nullptr, L"dateTime").front();
            });
    }

    AC_Result GetSampleImageBody(AC_HAREA hArea, BYTE** pBuffer, UINT64* punSize)
    {
        if (!pBuffer || !punSize)
            return AC_RESULT_INVALID_PARAM;
        return AtBoundaryOfCalls([&] { ReadSample(hArea, pBuffer, punSize); });
    }

} // extern "C"
