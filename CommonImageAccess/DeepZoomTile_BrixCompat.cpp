// The property sets of an image.

#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/BrixUnits.h"
#include "CommonImageAccess/DeepZoomTile.h"
#include "CommonImageAccess/Frame.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"

#include <array>
#include <cerrno>

namespace CIA
{

using namespace CommonUtil;

struct CDeepZoomTile::CPropsetHandler
{
    const wchar_t* Key;
    bool (CDeepZoomTile::*Fill)(const AC_PARAMS&, CBrixPropset&);
};

bool CDeepZoomTile::BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset)
{
    static constexpr std::array<CPropsetHandler, 4> handlers = {{
        {BRIX_GETFRAMEPROPERTY_KEY_StimulationROIList, &CDeepZoomTile::BrixPropset_StimulationROIList},
        {BRIX_GETFRAMEPROPERTY_KEY_StimulationROIInfo, &CDeepZoomTile::BrixPropset_StimulationROIInfo},
        {BRIX_GETFRAMEPROPERTY_KEY_ZtlCoords, &CDeepZoomTile::BrixPropset_AxisPosition},
        {BRIX_GETFRAMEPROPERTY_KEY_JpegTables, &CDeepZoomTile::BrixPropset_JpegTables},
    }};
    return CallPropsetHandler(*this, handlers, propsetKey, params, propset);
}

bool CDeepZoomTile::BrixPropset_StimulationROIList(const AC_PARAMS& params, CBrixPropset& propset)
{
    if (!ExpectNoParams(params, "This function expects no AC_PARAMS!"))
        return false;
    propset.AddKey(L"id");
    return true;
}

bool CDeepZoomTile::BrixPropset_StimulationROIInfo(const AC_PARAMS&, CBrixPropset&)
{
    FailAssertion(__FILE__, __LINE__); // the list of these regions is always empty: there is none to ask about
}

bool CDeepZoomTile::BrixPropset_AxisPosition(const AC_PARAMS& params, CBrixPropset& propset)
{
    const wchar_t* axisName = ExpectOneTextParam(params, "axisName", "This function expects 1 AC_PARAM!");
    if (!axisName)
        return false;
    const auto type = DimensionOfAxisName(axisName);
    if (!type)
        return RefuseParams("Value of the first parameter must be TIMELAPSE, ZSTACK or LAMBDA!");
    if (!_ParentFrame.ParentMultiDimImg().SignificantDimensions().contains(*type))
        return RefuseParams(
            ("The specified dimension '" + A(axisName) + "' is not applicable for this image!").c_str());
    const auto found = Coords().find(*type);
    ZEL_ASSERT(found != Coords().end());
    double position = found->second->Value();
    if (*type == DimensionType::DimensionType_T)
    {
        // Times are kept in whole seconds and told in milliseconds.
        ZEL_ASSERT(ConvertToBrixUnits(position, L"10^0s^1", *type) == position);
        position = ConvertToUnits(position, L"10^0s^1", "s", 3);
    }
    propset.AddDouble(L"position", position);
    return true;
}

bool CDeepZoomTile::BrixPropset_JpegTables(const AC_PARAMS& params, CBrixPropset& propset)
{
    if (!ExpectNoParams(params, "This function takes no AC_PARAMS!"))
        return false;
    const auto tables = _ParentFrame.JpegTables();
    if (!tables.Arr)
        return false;
    // By its type a text, in fact bytes: the type is only what carries a pointer. The frame owns them.
    propset.AddString(L"bufPtr", reinterpret_cast<const wchar_t*>(tables.Arr));
    propset.AddInteger(L"bufSize", static_cast<int32_t>(tables.Size));
    return true;
}

} // namespace CIA
