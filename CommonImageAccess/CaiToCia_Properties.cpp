// The exported functions that give property sets and read them.

#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/Handles.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

using namespace CIA;
using namespace CommonUtil;

namespace
{

using CKeySet = std::unordered_set<std::wstring_view>;

// Which object answers a key. Built when the plug-in is loaded, and never changed.
const CKeySet ValidMultiDimImgPropsetKeys = {
    BRIX_GETAREAPROPERTY_KEY_ChannelIdList,   BRIX_GETAREAPROPERTY_KEY_ImageChannelIdList,
    BRIX_GETAREAPROPERTY_KEY_ChannelInfo,     BRIX_GETAREAPROPERTY_KEY_ZtlDimExistence,
    BRIX_GETAREAPROPERTY_KEY_AxisInfo,        BRIX_GETAREAPROPERTY_KEY_ObjectiveLensInfo,
    BRIX_GETAREAPROPERTY_KEY_XYStagePosition, BRIX_GETAREAPROPERTY_KEY_AnalysisROIList,
    BRIX_GETAREAPROPERTY_KEY_ImagingROIList,  BRIX_GETAREAPROPERTY_KEY_ImagingROIInfo,
    BRIX_GETAREAPROPERTY_KEY_GroupName,       BRIX_GETAREAPROPERTY_KEY_CreationDateTime,
    BRIX_GETAREAPROPERTY_KEY_UpdateDateTime,  BRIX_GETAREAPROPERTY_KEY_WorkInfo,
    BRIX_GETAREAPROPERTY_KEY_LUTInfo};
const CKeySet ValidImgDocPropsetKeys = {BRIX_GETAREAPROPERTY_KEY_SystemInfo,
                                        BRIX_GETAREAPROPERTY_KEY_UserCommentForImgDoc, BRIX_GETAREAPROPERTY_KEY_IdInfo};
const CKeySet ValidDeepZoomPyramidLevelPropsetKeys = {BRIX_GETAREAPROPERTY_KEY_OpticalResolution};
const CKeySet ValidMultiDimTilePropsetKeys = {BRIX_GETAREAPROPERTY_KEY_AnalysisROIInfo,
                                              BRIX_GETAREAPROPERTY_KEY_DeepZoomTileSize};
const CKeySet ValidTilePropsetKeys = {BRIX_GETFRAMEPROPERTY_KEY_StimulationROIList,
                                      BRIX_GETFRAMEPROPERTY_KEY_StimulationROIInfo, BRIX_GETFRAMEPROPERTY_KEY_ZtlCoords,
                                      BRIX_GETFRAMEPROPERTY_KEY_JpegTables};

/// The object that answers a key asked of an area; null when none does.
CBrixPropsetProvider* ProviderOf(CMultiDimTile& area, const wchar_t* propsetKey)
{
    CMultiDimImage& image = area.Level().ParentMultiDimImg();
    if (ValidMultiDimImgPropsetKeys.contains(propsetKey))
        return &image;
    if (ValidImgDocPropsetKeys.contains(propsetKey))
        return &image.ParentImgDoc();
    if (ValidDeepZoomPyramidLevelPropsetKeys.contains(propsetKey))
        return &area.Level();
    if (ValidMultiDimTilePropsetKeys.contains(propsetKey))
        return &area;
    return nullptr;
}

const CBrixPropset& Propset(AC_HPROPSET handle)
{
    return *static_cast<const CBrixPropset*>(handle);
}

constexpr INT32 NotAvailable = 0x7FFFFFFF;

bool IsMarkerForNotAvailable(const AC_VALUE& value)
{
    switch (value.nType)
    {
    case AC_VT_INTEGER:
        return value.value.nInteger == NotAvailable;
    case AC_VT_POINT:
        return value.value.point.x == NotAvailable || value.value.point.y == NotAvailable;
    default:
        return false;
    }
}

/// How many values a host gets to see: a marker for a value that is not available, which stands alone, is none.
int NumOfVisibleValues(const std::vector<AC_VALUE>& values)
{
    auto numOfValues = static_cast<int>(values.size());
    for (const AC_VALUE& value : values)
    {
        if (!IsMarkerForNotAvailable(value))
            continue;
        ZEL_ASSERT(values.size() == 1);
        --numOfValues;
    }
    return numOfValues;
}

} // namespace

extern "C"
{

    AC_Result _AC_GetAreaProperty(AC_HMULTIDIMTILE hMultiDimTile, const wchar_t* propsetKey,
                                  const AC_PARAMS* propsetParams, AC_HPROPSET* phPropset)
    {
        if (!hMultiDimTile || !propsetKey || !phPropset)
            return Complain("params hMultiDimTile or propsetKey or phPropset are NULL!");
        return AtBoundary(
            [&]
            {
                CMultiDimTile& area = Area(hMultiDimTile);
                const CLock lock(DocOf(area).ThreadSafetyMutex());
                CBrixPropsetProvider* provider = ProviderOf(area, propsetKey);
                if (!provider)
                    return Complain("Error: param 'propsetKey' is not a valid key for this function!");
                return provider->BrixPropset(propsetKey, propsetParams, phPropset);
            });
    }

    AC_Result _AC_GetFrameProperty(AC_HTILE hDeepZoomTile, const wchar_t* propsetKey, const AC_PARAMS* propsetParams,
                                   AC_HPROPSET* phPropset)
    {
        if (!hDeepZoomTile || !propsetKey || !phPropset)
            return Complain("Error: params hDeepZoomTile or propsetKey or phPropset are NULL!");
        return AtBoundary(
            [&]
            {
                CDeepZoomTile& tile = Tile(hDeepZoomTile);
                const CLock lock(DocOf(tile).ThreadSafetyMutex());
                if (!ValidTilePropsetKeys.contains(propsetKey))
                    return Complain("Error: param 'propsetKey' is not a valid frame propset key!");
                return tile.BrixPropset(propsetKey, propsetParams, phPropset);
            });
    }

    AC_Result _AC_GetPropertyValue(AC_HPROPSET hPropSet, const wchar_t* propertyKey, AC_VALUE_WITH_TYPE* listOfValues,
                                   int sizeOfListOfValues, int* numOfValues)
    {
        if (numOfValues)
            *numOfValues = 0;
        if (!hPropSet || !propertyKey || !numOfValues)
            return Complain("Error: params hPropSet or propertyKey or numOfValues are NULL!");
        if (listOfValues && sizeOfListOfValues < 0)
            return Complain("Error: sizeOfListOfValues is negative!");
        return AtBoundary(
            [&]
            {
                const auto row = Propset(hPropSet).Rows().find(std::wstring_view(propertyKey));
                if (row == Propset(hPropSet).Rows().end())
                {
                    ZEL_WLOG(L"Error: key '%s' provided is invalid!", propertyKey);
                    return AC_RESULT_INVALID_PARAM;
                }
                *numOfValues = NumOfVisibleValues(row->second);
                if (listOfValues && *numOfValues <= sizeOfListOfValues)
                    std::copy_n(row->second.begin(), *numOfValues, listOfValues);
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetPropertyKeyList(AC_HPROPSET hPropset, const wchar_t** keys, int sizeOfKeysArr, int* numOfKeys)
    {
        if (!hPropset || !numOfKeys)
            return Complain("params hPropset or numOfKeys are NULL!");
        if (keys && sizeOfKeysArr < 0)
            return Complain("Error: param sizeOfKeysArr is negative!");
        return AtBoundary(
            [&]
            {
                const CBrixPropset::CRows& rows = Propset(hPropset).Rows();
                *numOfKeys = static_cast<int>(rows.size());
                if (keys && *numOfKeys <= sizeOfKeysArr)
                    std::transform(rows.begin(), rows.end(), keys, [](const auto& row) { return row.first.c_str(); });
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_ReleaseProperty(AC_HPROPSET hPropertySet)
    {
        return hPropertySet ? AC_RESULT_SUCCESS : Complain("hPropertySet is NULL!");
    }

} // extern "C"
