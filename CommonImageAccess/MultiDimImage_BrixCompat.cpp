// The property sets of a group.

#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/ImgDoc.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/ObjectiveLens.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"

#include <array>
#include <cerrno>
#include <cmath>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr const char* NoParamsExpected = "This propset function expects no params!";
/// A coordinate that is not known; it never reaches the host.
constexpr int32_t NotAvailable = 0x7FFFFFFF;

struct CNamedAxis
{
    DimensionType::E Type;
    const wchar_t* Name;
};
constexpr std::array<CNamedAxis, 3> NamedAxes = {{{DimensionType::DimensionType_Z, BRIX_AXIS_Z},
                                                  {DimensionType::DimensionType_T, BRIX_AXIS_T},
                                                  {DimensionType::DimensionType_L, BRIX_AXIS_L}}};

} // namespace

struct CMultiDimImage::CPropsetHandler
{
    const wchar_t* Key;
    bool (CMultiDimImage::*Fill)(const AC_PARAMS&, CBrixPropset&);
};

bool CMultiDimImage::BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset)
{
    static constexpr std::array<CPropsetHandler, 16> handlers = {{
        {BRIX_GETAREAPROPERTY_KEY_CreationDateTime, &CMultiDimImage::BrixPropset_CreationDateTime},
        {BRIX_GETAREAPROPERTY_KEY_ChannelIdList, &CMultiDimImage::BrixPropset_EnabledChannelIdList},
        {BRIX_GETAREAPROPERTY_KEY_ImageChannelIdList, &CMultiDimImage::BrixPropset_ImageChannelIdList},
        {BRIX_GETAREAPROPERTY_KEY_ChannelInfo, &CMultiDimImage::BrixPropset_ChannelInfo},
        {BRIX_GETAREAPROPERTY_KEY_ZtlDimExistence, &CMultiDimImage::BrixPropset_Axes},
        {BRIX_GETAREAPROPERTY_KEY_AxisInfo, &CMultiDimImage::BrixPropset_AxisInfo},
        {BRIX_GETAREAPROPERTY_KEY_ObjectiveLensInfo, &CMultiDimImage::BrixPropset_ObjectiveLensInfo},
        {BRIX_GETAREAPROPERTY_KEY_XYStagePosition, &CMultiDimImage::BrixPropset_XYStagePosition},
        {BRIX_GETAREAPROPERTY_KEY_GroupName, &CMultiDimImage::BrixPropset_GroupName},
        {BRIX_GETAREAPROPERTY_KEY_DeepZoomTileSize, &CMultiDimImage::BrixPropset_ImageSize},
        {BRIX_GETAREAPROPERTY_KEY_AnalysisROIList, &CMultiDimImage::BrixPropset_AnalysisROIList},
        {BRIX_GETAREAPROPERTY_KEY_ImagingROIList, &CMultiDimImage::BrixPropset_ImagingROIList},
        {BRIX_GETAREAPROPERTY_KEY_ImagingROIInfo, &CMultiDimImage::BrixPropset_ImagingROIInfo},
        {BRIX_GETAREAPROPERTY_KEY_UpdateDateTime, &CMultiDimImage::BrixPropset_UpdateDateTime},
        {BRIX_GETAREAPROPERTY_KEY_WorkInfo, &CMultiDimImage::BrixPropset_WorkInfo},
        {BRIX_GETAREAPROPERTY_KEY_LUTInfo, &CMultiDimImage::BrixPropset_LUTInfo},
    }};
    return CallPropsetHandler(*this, handlers, propsetKey, params, propset);
}

bool CMultiDimImage::BrixPropset_CreationDateTime(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    std::wstring time = _ParentImgDoc.CreationTime();
    if (!time.empty())
        ZEL_WLOG(L"Note: img creation time = %s, doc creation time = %s", CreationTime().c_str(), time.c_str());
    else
    {
        ZEL_LOG("Warning: doc creation time not found, reporting multidim img creation time instead...");
        time = CreationTime();
    }
    propset.AddText(L"dateTime", time);
    return true;
}

bool CMultiDimImage::BrixPropset_UpdateDateTime(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    std::wstring time = _ParentImgDoc.UpdateDateTime();
    if (!time.empty())
        ZEL_WLOG(L"Note: img update time = %s, doc update time = %s", CreationTime().c_str(), time.c_str());
    else
    {
        ZEL_LOG("Warning: doc update time not found, reporting multidim img update time instead...");
        time = CreationTime(); // an image has no update time of its own
    }
    propset.AddText(L"dateTime", time);
    propset.AddText(L"dataTime", time); // misspelled once, and read by hosts ever since
    return true;
}

bool CMultiDimImage::BrixPropset_EnabledChannelIdList(const AC_PARAMS& params, CBrixPropset& propset)
{
    if (!ExpectNoParams(params, NoParamsExpected))
        return false;
    ZEL_ASSERT(!Channels().empty());
    for (const auto& [id, channel] : Channels())
        propset.AddText(L"id", ToWide(ToString(id)));
    return true;
}

bool CMultiDimImage::BrixPropset_ImageChannelIdList(const AC_PARAMS& params, CBrixPropset& propset)
{
    if (params.nSize != 1 || !params.pElements[0].pszKey || !Equals(params.pElements[0].pszKey, L"channelId"))
        return RefuseParams("This propset function expects 1 param and key should be channelId only!");
    ZEL_ASSERT(!Channels().empty());
    const auto* wanted = static_cast<const wchar_t*>(params.pElements[0].pValue);
    for (const auto& [id, channel] : Channels())
    {
        if (!wanted || ToWide(ToString(id)) != wanted)
            continue;
        propset.AddText(L"id", wanted);
        return true;
    }
    errno = EINVAL;
    return false;
}

bool CMultiDimImage::BrixPropset_Axes(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    propset.AddKey(L"axisName");
    for (const CNamedAxis& axis : NamedAxes)
        if (SignificantDimensions().contains(axis.Type))
            propset.AddString(L"axisName", axis.Name);
    return true;
}

bool CMultiDimImage::BrixPropset_AxisInfo(const AC_PARAMS& params, CBrixPropset& propset)
{
    ZEL_ASSERT(params.nSize == 1);
    const AC_PARAM_ELEMENT& element = params.pElements[0];
    if (!element.pszKey || !Equals(element.pszKey, L"axisName"))
        return RefuseParams("Expected name of 1 param is 'axisName'!");
    const auto type = DimensionOfAxisName(static_cast<const wchar_t*>(element.pValue));
    if (!type)
        return RefuseParams("Valid axis names are TIMELAPSE, ZSTACK, LAMBDA");
    const auto found = Dimensions().find(*type);
    if (found == Dimensions().end())
        return RefuseParams("The dimension specified is not applicable for this image!");
    CDimension& dimension = *found->second;
    ZEL_LOG("Note: We return 0 for Step in case of a dimension that has frames unevenly spaced w.r.t. its axis.");
    const double step = dimension.HasEvenlySpacedPoints() ? std::fabs(dimension.GapBetweenPoints()) : 0;
    const double start = dimension.FirstPoint();
    const double end = dimension.LastPoint();
    ZEL_ASSERT(!std::isnan(start) && !std::isnan(end) && !std::isnan(step));
    const uint32_t maxSize = dimension.NumOfPoints();
    ZEL_ASSERT(maxSize <= 0xFFFFFFFE);
    propset.AddDouble(L"start", start);
    propset.AddDouble(L"end", end);
    propset.AddDouble(L"step", step);
    propset.AddInteger(L"maxSize", static_cast<int32_t>(maxSize));
    propset.AddString(L"units", dimension.Units());
    return true;
}

bool CMultiDimImage::BrixPropset_ObjectiveLensInfo(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    CObjectiveLens* lens = ObjectiveLens();
    if (!lens)
    {
        errno = ENODATA;
        return false;
    }
    propset.AddString(L"name", lens->Name());
    propset.AddDouble(L"magnification", lens->Magnification());
    propset.AddString(L"immersion", lens->ImmersionMedium());
    propset.AddDouble(L"na", lens->NumericalAperture());
    propset.AddDouble(L"wd", ConvertToUnits(lens->WorkingDistance(), lens->WorkingDistanceUnits(), "m", 3));
    propset.AddDouble(L"refraction", lens->RefractiveIndex());
    return true;
}

bool CMultiDimImage::BrixPropset_XYStagePosition(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    errno = 0;
    const double x = StageXPositionValue();
    if (std::isnan(x) && errno != 0)
        return false;
    const double y = StageYPositionValue();
    if (std::isnan(y) && errno != 0)
        return false;
    const wchar_t* yUnits = StageYPositionUnits();
    const wchar_t* xUnits = StageXPositionUnits();
    ZEL_ASSERT(xUnits && yUnits);
    const auto nanometres = [](double value, const wchar_t* units)
    {
        ZEL_ASSERT(std::isnan(value) || value < 2147483647.0);
        const double length = myRound(ConvertToUnits(value, units, "m", 9)); // a unit must be one, value or not
        return std::isnan(length) ? NotAvailable : ToIntegerWithCheck<int32_t>(length);
    };
    propset.AddPoint(L"position", {nanometres(x, xUnits), nanometres(y, yUnits)});
    if (std::isnan(x) || std::isnan(y)) // a position with one axis alone is none
    {
        errno = ENODATA;
        return false;
    }
    return true;
}

bool CMultiDimImage::BrixPropset_GroupName(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    const std::wstring name = Name();
    ZEL_ASSERT(!name.empty());
    propset.AddText(L"name", name);
    return true;
}

bool CMultiDimImage::BrixPropset_ImageSize(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    propset.AddPoint(
        L"size", {static_cast<int32_t>(DeepZoomTilePixelWidth(0)), static_cast<int32_t>(DeepZoomTilePixelHeight(0))});
    return true;
}

bool CMultiDimImage::BrixPropset_AnalysisROIList(const AC_PARAMS& params, CBrixPropset& propset)
{
    if (!ExpectNoParams(params, NoParamsExpected))
        return false;
    propset.AddKey(L"id");
    for (const CVectorGraphicsImage& image : VectorGraphicsImages())
        propset.AddText(L"id", ToWide(ToString(image.ID())));
    return true;
}

bool CMultiDimImage::BrixPropset_ImagingROIList(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    propset.AddKey(L"id");
    return true;
}

bool CMultiDimImage::BrixPropset_ImagingROIInfo(const AC_PARAMS&, CBrixPropset&)
{
    FailAssertion(__FILE__, __LINE__); // the list of these regions is always empty: there is none to ask about
}

bool CMultiDimImage::BrixPropset_WorkInfo(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    const auto addIfPresent = [&](const wchar_t* key, const wchar_t* text)
    {
        if (text)
            propset.AddString(key, text);
    };
    addIfPresent(L"name", ExperimentName());
    addIfPresent(L"sampleName", SampleName());
    addIfPresent(L"sampleComment", SampleDescription());
    return true;
}

} // namespace CIA
