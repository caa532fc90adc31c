// The property set of a level.

#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/PropsetParams.h"

#include <array>
#include <cmath>

namespace CIA
{

struct CDeepZoomPyramidLevel::CPropsetHandler
{
    const wchar_t* Key;
    bool (CDeepZoomPyramidLevel::*Fill)(const AC_PARAMS&, CBrixPropset&);
};

bool CDeepZoomPyramidLevel::BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset)
{
    static constexpr std::array<CPropsetHandler, 1> handlers = {
        {{BRIX_GETAREAPROPERTY_KEY_OpticalResolution, &CDeepZoomPyramidLevel::BrixPropset_PixelLength}}};
    return CallPropsetHandler(*this, handlers, propsetKey, params, propset);
}

bool CDeepZoomPyramidLevel::BrixPropset_PixelLength(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    const CDimensions& dimensions = _ParentMultiDimImg.Dimensions();
    const auto x = dimensions.find(DimensionType::DimensionType_X);
    const auto y = dimensions.find(DimensionType::DimensionType_Y);
    ZEL_ASSERT(x != dimensions.end() && y != dimensions.end());
    const bool isCalibrated = x->second->Units() != nullptr;
    ZEL_ASSERT(isCalibrated == (y->second->Units() != nullptr));
    const auto length = [&](CDimension& dimension)
    {
        const double gap = dimension.GapBetweenPoints() * ZoomoutFactor();
        return isCalibrated && !std::isnan(gap) ? gap : 0; // pixels without a length are told as 0 long
    };
    propset.AddDouble(L"xLength", length(*x->second));
    propset.AddDouble(L"yLength", length(*y->second));
    return true;
}

} // namespace CIA
