#include "CommonImageAccess/BrixPropsetProvider.h"

#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/BrixKeys.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace CIA
{

using namespace CommonUtil;

namespace
{

/// The parameters that tell one request of a key from another. Their order makes a cache key independent of the order
/// in which a host names them.
constexpr std::array ParamNames = {L"channelId", L"objectId", L"groupId", L"phaseId", L"roiId", L"zId", L"id",
                                   L"planeName", L"axisName", L"parent",  L"level",   L"layer", L"type"};

constexpr std::array SingleInputParamPropsetKeysWhoseInputParamIsString = {
    BRIX_GETAREAPROPERTY_KEY_ChannelInfo,         BRIX_GETAREAPROPERTY_KEY_AxisInfo,
    BRIX_GETAREAPROPERTY_KEY_AnalysisROIInfo,     BRIX_GETAREAPROPERTY_KEY_ImagingROIInfo,
    BRIX_GETFRAMEPROPERTY_KEY_StimulationROIInfo, BRIX_GETFRAMEPROPERTY_KEY_ZtlCoords,
    BRIX_GETAREAPROPERTY_KEY_ImageChannelIdList,  BRIX_GETAREAPROPERTY_KEY_LUTInfo};

/// Asked for anew every time; the first set is what hosts keep seeing.
bool IsNeverTakenFromTheCache(std::wstring_view cacheKey)
{
    return cacheKey == BRIX_GETAREAPROPERTY_KEY_DeepZoomTileSize;
}

std::wstring CacheKey(const wchar_t* propsetKey, const AC_PARAMS& params)
{
    std::array<std::wstring, ParamNames.size()> values;
    for (int i = 0; i < params.nSize; ++i)
    {
        const AC_PARAM_ELEMENT& element = params.pElements[i];
        const std::wstring value = AC_PARAM_ELEMENT_ValueToString(element, ParamTypeFromPropsetName(propsetKey));
        for (size_t name = 0; name < ParamNames.size(); ++name)
            if (element.pszKey && Equals(element.pszKey, ParamNames[name]))
                values[name] = value;
    }
    std::wstring cacheKey = propsetKey;
    for (const std::wstring& value : values)
        cacheKey += value;
    return cacheKey;
}

} // namespace

AC_ValueType ParamTypeFromPropsetName(const wchar_t* key)
{
    const auto& keys = SingleInputParamPropsetKeysWhoseInputParamIsString;
    const bool isString = std::any_of(keys.begin(), keys.end(), [key](const wchar_t* k) { return Equals(k, key); });
    return isString ? AC_VT_STRING : AC_VT_INTEGER;
}

std::wstring AC_PARAM_ELEMENT_ValueToString(const AC_PARAM_ELEMENT& element, AC_ValueType type)
{
    ZEL_ASSERT(type == AC_VT_INTEGER || type == AC_VT_DOUBLE || type == AC_VT_STRING);
    if (!element.pValue)
        return {};
    switch (type)
    {
    case AC_VT_INTEGER:
        return ToWide(ToString(*static_cast<const int*>(element.pValue)));
    case AC_VT_DOUBLE:
        return ToWide(ToString(*static_cast<const double*>(element.pValue)));
    default:
        return static_cast<const wchar_t*>(element.pValue);
    }
}

AC_Result CBrixPropsetProvider::BrixPropset(const wchar_t* propsetKey, const AC_PARAMS* params, AC_HPROPSET* phPropset)
{
    static constexpr AC_PARAMS NoParams{};
    if (!params || params->nSize == 0)
        return BuildPropset(propsetKey, NoParams, propsetKey, phPropset);
    errno = 0; // an older reason must not become the result of a failure here
    ZEL_ASSERT(params->nSize < 0 || params->pElements);
    return BuildPropset(propsetKey, *params, CacheKey(propsetKey, *params), phPropset);
}

AC_Result CBrixPropsetProvider::BuildPropset(const wchar_t* propsetKey, const AC_PARAMS& params,
                                             std::wstring_view cacheKey, AC_HPROPSET* phPropset)
{
    CBrixPropsets& propsets = KeptPropsets();
    auto entry = propsets.find(cacheKey);
    if (entry == propsets.end() || IsNeverTakenFromTheCache(cacheKey))
    {
        CBrixPropset propset;
        if (!BrixPropset_init(propsetKey, params, propset))
            return CiaResultToAC_Result();
        entry = propsets.try_emplace(std::wstring(cacheKey), std::move(propset)).first;
    }
    *phPropset = &entry->second;
    return AC_RESULT_SUCCESS;
}

} // namespace CIA
