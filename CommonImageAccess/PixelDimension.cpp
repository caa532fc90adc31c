#include "CommonImageAccess/PixelDimension.h"

#include "CommonImageAccess/BrixUnits.h"
#include "CommonImageAccess/ImgDoc.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"

#include <algorithm>
#include <cmath>

namespace CIA
{

using namespace CommonUtil;

namespace
{

/// What the search for the smallest first point starts from; left over, it says that there was none.
constexpr double NoDisplayWindow = 2147483647.0;

} // namespace

const wchar_t* CPixelDimension::Name()
{
    switch (Type())
    {
    case DimensionType::DimensionType_X:
        return L"X (slide length) Dimension";
    case DimensionType::DimensionType_Y:
        return L"Y (slide breadth) Dimension";
    default:
        return L"Unknown/unexpected Dimension";
    }
}

bool CPixelDimension::DbgIsCallingLastPointAllowed()
{
    const bool isFirstPointNotThereYet = DbgIsFirstPointInitNotYetCalled || DbgIsFirstPointBeingInitialized;
    if (ParentMultiDimImg().DbgIsCoordsInitInProgress() && isFirstPointNotThereYet)
        return false;
    return CDimension::DbgIsCallingLastPointAllowed();
}

uint32_t CPixelDimension::CoordInPixels(double value, double zoomoutFactor)
{
    const double gap = GapBetweenPoints();
    ZEL_ASSERT(gap != 0 && IsEachPointAPixel());
    double r = (value - RealWorldCoordOfDisplayWindow()) / (gap * zoomoutFactor);
    if (r < 0)
    {
        ZEL_ASSERT(r > -0.5);
        r += 0.5;
    }
    ZEL_ASSERT(r < 4294967295.0);
    return ToIntegerWithCheck<uint32_t>(myRound(r));
}

uint32_t CPixelDimension::CoordInPixelsGivenIdx(uint32_t idx, double zoomoutFactor)
{
    return CoordInPixels(FirstPoint(), zoomoutFactor) + idx;
}

uint32_t CPixelDimension::PixelDistance(double distance, double zoomoutFactor)
{
    const double gap = GapBetweenPoints();
    ZEL_ASSERT(gap > 0 && IsEachPointAPixel() && distance >= 0);
    return ToIntegerWithCheck<uint32_t>(myRound(distance / (gap * zoomoutFactor)));
}

double CPixelDimension::CoordInRealWorldUnits(uint32_t coordInPixels, double zoomoutFactor)
{
    const double gap = GapBetweenPoints();
    ZEL_ASSERT(gap != 0 && IsEachPointAPixel());
    return RealWorldCoordOfDisplayWindow() + gap * coordInPixels * zoomoutFactor;
}

double CPixelDimension::RealWorldDistance(uint32_t distanceInPixels, double zoomoutFactor)
{
    return GapBetweenPoints() * distanceInPixels * zoomoutFactor;
}

double CPixelDimension::RealWorldCoordOfDisplayWindow()
{
    if (std::isnan(_RealWorldCoordOfDisplayWindow))
    {
        double coord = _RealWorldCoordOfDisplayWindow;
        if (RealWorldCoordOfDisplayWindow_init(coord))
            _RealWorldCoordOfDisplayWindow = coord;
    }
    return _RealWorldCoordOfDisplayWindow;
}

bool CPixelDimension::RealWorldCoordOfDisplayWindow_init(double& varToInit)
{
    ZEL_ASSERT(IsEachPointAPixel());
    if (!IsXOrY(Type()))
    {
        ZEL_LOG("CIA currently fully supports only X and Y as pixel dims");
        return false;
    }
    double& ofDocument = ParentMultiDimImg().ParentImgDoc().RealWorldCoordOfDisplayWindow(Type());
    if (std::isnan(ofDocument))
    {
        const double coord = RealWorldXCoordOfDisplayWindow(Type() == DimensionType::DimensionType_Y);
        if (coord == NoDisplayWindow)
            return false;
        ofDocument = coord;
    }
    varToInit = ofDocument;
    return true;
}

double CPixelDimension::RealWorldXCoordOfDisplayWindow(bool isY)
{
    const DimensionType::E type = isY ? DimensionType::DimensionType_Y : DimensionType::DimensionType_X;
    double smallestFirstPoint = NoDisplayWindow;
    const wchar_t* units = nullptr;
    bool unitsAreNoted = false;
    for (const auto& [id, image] : ParentMultiDimImg().ParentImgDoc().MultiDimImages())
    {
        const auto found = image->Dimensions().find(type);
        ZEL_ASSERT(found != image->Dimensions().end());
        CDimension& dimension = *found->second;
        ZEL_ASSERT(dimension.HasEvenlySpacedPoints() && dimension.IsEachPointAPixel());
        if (unitsAreNoted && !Equals(dimension.Units(), units))
        {
            ZEL_LOG("UNEXPECTED! HOW TO HANDLE THIS?");
            oldAbortCommonUtil();
        }
        if (dimension.FirstPoint() < smallestFirstPoint)
        {
            smallestFirstPoint = dimension.FirstPoint();
            units = dimension.Units();
            unitsAreNoted = true;
        }
    }
    return smallestFirstPoint;
}

bool CPixelDimension::FirstPoint_init(double& varToInit)
{
    ZEL_ASSERT(DbgIsFirstPointBeingInitialized);
    ZEL_ASSERT(IsXOrY(Type()));
    const CCoords& coords = ParentMultiDimImg().Coords();
    const auto own = coords.find(Type());
    ZEL_ASSERT(own != coords.end());
    varToInit = own->second->Value() + std::min(0.0, CroppingBeforeFirstPixel());
    return true;
}

double CPixelDimension::CroppingBeforeFirstPixel()
{
    const int32_t cropping = Type() == DimensionType::DimensionType_X
                                 ? ParentMultiDimImg().LeftCroppingOfLevel0TileMatrixInPixels()
                                 : ParentMultiDimImg().TopCroppingOfLevel0TileMatrixInPixels();
    const wchar_t* units = Units();
    return units ? cropping * ConvertToBrixXyDimUnits(GapBetweenPoints(), units) : cropping;
}

bool CPixelDimension::IsEachPointAPixel_init(bool& varToInit)
{
    varToInit = true;
    return true;
}

} // namespace CIA
