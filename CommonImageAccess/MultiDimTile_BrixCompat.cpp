// The property sets of an area.

#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/MultiDimTile.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Numbers.h"

#include <array>
#include <cmath>

namespace CIA
{

using namespace CommonUtil;

namespace
{

/// A vertex in pixels of the area, counted from its corner; one outside it may lie below 0.
int32_t DistanceFromCorner(double vertex, double zoomoutFactor, uint32_t corner)
{
    const double distance = vertex / zoomoutFactor - corner;
    ZEL_ASSERT(std::fabs(distance) <= 2147483647.0);
    return ToIntegerWithCheck<int32_t>(myRound(distance));
}

} // namespace

struct CMultiDimTile::CPropsetHandler
{
    const wchar_t* Key;
    bool (CMultiDimTile::*Fill)(const AC_PARAMS&, CBrixPropset&);
};

bool CMultiDimTile::BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset)
{
    static constexpr std::array<CPropsetHandler, 2> handlers = {{
        {BRIX_GETAREAPROPERTY_KEY_AnalysisROIInfo, &CMultiDimTile::BrixPropset_AnalysisROIInfo},
        {BRIX_GETAREAPROPERTY_KEY_DeepZoomTileSize, &CMultiDimTile::BrixPropset_ImageSize},
    }};
    return CallPropsetHandler(*this, handlers, propsetKey, params, propset);
}

bool CMultiDimTile::BrixPropset_AnalysisROIInfo(const AC_PARAMS& params, CBrixPropset& propset)
{
    const wchar_t* roiId = ExpectOneTextParam(params, "roiId", "This propset function expects 1 param!");
    if (!roiId)
        return false;
    const std::vector<CVectorGraphicsImage>& images = _Level.ParentMultiDimImg().VectorGraphicsImages();
    // An object's ID is its place in the list.
    const uint32_t id = IdOfText(roiId);
    if (id >= images.size())
        return RefuseParams("Invalid roi ID!");
    const CVectorGraphicsImage& image = images[id];
    propset.AddString(L"name", image.Name().c_str());
    propset.AddString(L"type", image.ShapeType());
    propset.AddString(L"shape", image.Shape());
    propset.AddDouble(L"rotation", image.Rotation());
    propset.AddKey(L"data");
    const double zoomoutFactor = ZoomoutFactor();
    const uint32_t x = PixelX();
    const uint32_t y = PixelY();
    for (const CVectorGraphicsPoint& point : image.Points())
        propset.AddPoint(L"data", {DistanceFromCorner(point.X(), zoomoutFactor, x),
                                   DistanceFromCorner(point.Y(), zoomoutFactor, y)});
    return true;
}

bool CMultiDimTile::BrixPropset_ImageSize(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    CMultiDimImage& image = _Level.ParentMultiDimImg();
    const uint16_t directory = _Level.getTiffIfd();
    propset.AddPoint(L"size", {static_cast<int32_t>(image.DeepZoomTilePixelWidth(directory)),
                               static_cast<int32_t>(image.DeepZoomTilePixelHeight(directory))});
    return true;
}

} // namespace CIA
