#include "CommonImageAccess/Dimension.h"

#include "CommonImageAccess/ImgDoc.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/ScopedFlag.h"
#include "CommonUtil/Text.h"

#include <cerrno>
#include <cmath>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr uint32_t UnknownCount = 0xFFFFFFFF;

/// Runs a lazy boolean's `_init` once. A failure without a reason in errno is a programming error.
template <typename Init>
bool GetLazyFlag(bool& value, bool& isInited, Init init)
{
    errno = 0;
    if (isInited)
        return value;
    bool varToInit = false;
    if (!init(varToInit))
    {
        ZEL_ASSERT(errno != 0);
        return false;
    }
    value = varToInit;
    isInited = true;
    return value;
}

} // namespace

bool CDimension::HasEvenlySpacedPoints()
{
    return GetLazyFlag(_HasEvenlySpacedPoints, _HasEvenlySpacedPoints__IsInited,
                       [this](bool& varToInit)
                       { return HasEvenlySpacedPoints_init_andChangeToEvenlySpacedIfNeeded_core(varToInit); });
}

bool CDimension::IsEachPointAPixel()
{
    return GetLazyFlag(_IsEachPointAPixel, _IsEachPointAPixel__IsInited,
                       [this](bool& varToInit) { return IsEachPointAPixel_init(varToInit); });
}

bool CDimension::HasEvenlySpacedPoints_init_andChangeToEvenlySpacedIfNeeded_core(bool& varToInit)
{
    if (!HasEvenlySpacedPoints_init(varToInit))
        return false;
    if (varToInit)
        return true;
    const std::vector<double>& points = Points();
    ZEL_ASSERT(!points.empty());
    if (points.size() == 1)
        return true;
    double gap = points[1] - points[0];
    for (size_t i = 2; i < points.size(); ++i)
    {
        const double prevGapBetweenPoints = roundTo1stDecimal(gap);
        gap = roundTo1stDecimal(points[i] - points[i - 1]);
        if (std::isnan(prevGapBetweenPoints) || std::isnan(gap) || gap != prevGapBetweenPoints)
            return true;
    }
    ZEL_ASSERT(!std::isnan(gap));
    ZEL_ASSERT(std::isnan(_GapBetweenPoints));
    varToInit = true;
    _GapBetweenPoints = gap;
    _FirstPoint = points.front();
    return true;
}

const std::vector<double>& CDimension::Points()
{
    if (_Points.empty())
    {
        std::vector<double> points;
        if (_Points_init(points))
            _Points = std::move(points);
    }
    return _Points;
}

bool CDimension::_Points_init(std::vector<double>& varToInit)
{
    if (!Points_init(varToInit))
        return false;
    ZEL_ASSERT(!varToInit.empty() && varToInit.size() < UnknownCount);
    const bool isAscending = varToInit.size() > 1 && varToInit[1] > varToInit[0];
    for (size_t i = 1; i < varToInit.size(); ++i)
        ZEL_ASSERT(isAscending ? varToInit[i] > varToInit[i - 1] : varToInit[i] < varToInit[i - 1]);
    return true;
}

double CDimension::WorkOutFirstPoint()
{
    double firstPoint = _FirstPoint;
    if (_FirstPoint_init(firstPoint))
        _FirstPoint = firstPoint;
    return _FirstPoint;
}

bool CDimension::_FirstPoint_init(double& varToInit)
{
    DbgIsFirstPointInitNotYetCalled = false;
    if (!HasEvenlySpacedPoints())
    {
        ZEL_ASSERT(errno == 0 && !Points().empty());
        varToInit = Points().front();
        return true;
    }
    if (!std::isnan(_FirstPoint)) // the points themselves turned out to be even, and told it
    {
        varToInit = _FirstPoint;
        return true;
    }
    ZEL_ASSERT(!DbgIsFirstPointBeingInitialized);
    const CScopedFlag isBeingInitialized(DbgIsFirstPointBeingInitialized);
    ZEL_ASSERT(FirstPoint_init(varToInit));
    return true;
}

uint32_t CDimension::WorkOutNumOfPoints()
{
    uint32_t numOfPoints = UnknownCount;
    if (_NumOfPoints_init(numOfPoints))
        _NumOfPoints = numOfPoints;
    return _NumOfPoints;
}

bool CDimension::_NumOfPoints_init(uint32_t& varToInit)
{
    if (HasEvenlySpacedPoints())
        return NumOfPoints_init(varToInit);
    ZEL_ASSERT(errno == 0 && !Points().empty() && Points().size() < UnknownCount);
    varToInit = static_cast<uint32_t>(Points().size());
    return true;
}

double CDimension::GapBetweenPoints()
{
    if (std::isnan(_GapBetweenPoints))
    {
        const bool isEven = HasEvenlySpacedPoints();
        ZEL_ASSERT(isEven && errno == 0);
        double gap = _GapBetweenPoints;
        if (std::isnan(gap) && GapBetweenPoints_init(gap))
            _GapBetweenPoints = gap;
    }
    return _GapBetweenPoints;
}

double CDimension::WorkOutLastPoint()
{
    double lastPoint = _LastPoint;
    if (LastPoint_init(lastPoint))
        _LastPoint = lastPoint;
    return _LastPoint;
}

bool CDimension::LastPoint_init(double& varToInit)
{
    if (!HasEvenlySpacedPoints())
    {
        ZEL_ASSERT(errno == 0 && !Points().empty());
        varToInit = Points().back();
        return true;
    }
    const double firstPoint = FirstPoint();
    const uint32_t numOfPoints = NumOfPoints();
    const double gap = GapBetweenPoints();
    if (std::isnan(firstPoint) || numOfPoints == UnknownCount || std::isnan(gap))
        return false;
    varToInit = firstPoint + (static_cast<double>(numOfPoints) - 1.0) * gap;
    if (!Points().empty())
    {
        const double lastOfPoints = Points().back();
        if (lastOfPoints > varToInit || (gap < 0 && varToInit > lastOfPoints))
            varToInit = lastOfPoints;
    }
    return true;
}

const wchar_t* CDimension::Units()
{
    if (!_Units)
    {
        const wchar_t* units = nullptr;
        if (Units_init(units))
            _Units = units;
    }
    return _Units;
}

bool CDimension::Units_init(const wchar_t*& varToInit)
{
    ZEL_ASSERT(!varToInit);
    if (IsUnitlessDimension(_Type))
    {
        varToInit = L"(This dimension does not have units)";
        return true;
    }
    const wchar_t* nativeUnits = NativeUnits(); // also where the answer does not depend on it: asking for it is logged
    switch (_Type)
    {
    case DimensionType::DimensionType_T:
        if (!IsValidUnitOfTime(nativeUnits))
            return false;
        varToInit = L"10^-3s^1";
        return true;
    case DimensionType::DimensionType_L:
        if (!IsValidUnitOfLength(nativeUnits))
            return false;
        varToInit = L"10^-9m^1";
        return true;
    case DimensionType::DimensionType_Z:
        varToInit = L"10^-6m^1";
        return true;
    default:
        break;
    }
    if (IsValidUnitOfLength(nativeUnits))
    {
        varToInit = L"10^-6m^1";
        return true;
    }
    AssertImagesHaveEqualNativeUnits();
    return false;
}

/// Pixels without a length: the images of a document are laid out together, so all must be without it alike. Equal is
/// equal for all of them, so that it is found out once a document.
void CDimension::AssertImagesHaveEqualNativeUnits()
{
    CImgDoc& document = _ParentMultiDimImg.ParentImgDoc();
    if (document.HaveImagesEqualNativeUnits(_Type))
        return;
    for (const auto& [id, image] : document.MultiDimImages())
    {
        const auto found = image->Dimensions().find(_Type);
        ZEL_ASSERT(found != image->Dimensions().end());
        ZEL_ASSERT(Equals(found->second->NativeUnits(), NativeUnits()));
    }
    document.SetHaveImagesEqualNativeUnits(_Type);
}

uint32_t CDimension::MaxIdx()
{
    const uint32_t numOfPoints = NumOfPoints();
    ZEL_ASSERT(numOfPoints != 0);
    return numOfPoints - 1;
}

bool CDimension::IsBetweenFirstAndLastPoint(double value)
{
    ZEL_ASSERT(!(LastPoint() < FirstPoint()));
    return value >= FirstPoint() && value <= LastPoint();
}

double CDimension::Value(uint32_t index)
{
    ZEL_ASSERT(IsXOrY(_Type) || index <= MaxIdx());
    if (HasEvenlySpacedPoints())
        return FirstPoint() + GapBetweenPoints() * index;
    ZEL_ASSERT(errno == 0 && index < Points().size());
    return Points()[index];
}

uint32_t CDimension::Idx(double value)
{
    if (std::isnan(value))
        return UnknownCount;
    const bool IsDescending = !(LastPoint() > FirstPoint());
    const double smallest = IsDescending ? LastPoint() : FirstPoint();
    const double greatest = IsDescending ? FirstPoint() : LastPoint();
    if (value < smallest || value > greatest)
        return UnknownCount;
    return HasEvenlySpacedPoints() ? IdxOnEvenPoints(value) : IdxOnUnevenPoints(value, IsDescending);
}

uint32_t CDimension::IdxOnUnevenPoints(double value, bool IsDescending)
{
    uint32_t index = UnknownCount;
    for (uint32_t i = 0; i <= MaxIdx(); ++i)
    {
        const double point = Value(i);
        if (IsDescending ? point < value : point > value)
            break;
        index = i;
    }
    return index;
}

uint32_t CDimension::IdxOnEvenPoints(double value)
{
    const double gap = GapBetweenPoints();
    const double valueMinusFirstPoint = value - FirstPoint();
    const bool liesOnPoints =
        valueMinusFirstPoint == 0 || (valueMinusFirstPoint > 0 && gap > 0) || (valueMinusFirstPoint < 0 && gap < 0);
    if (gap == 0 || std::isnan(gap) || !liesOnPoints)
        return UnknownCount;
    const double index = myRound(valueMinusFirstPoint / gap);
    return index <= MaxIdx() ? static_cast<uint32_t>(index) : UnknownCount;
}

const wchar_t* CUnitlessDimension::NativeUnits()
{
    oldAbortCommonUtil();
}

bool CUnitlessDimension::HasEvenlySpacedPoints_init(bool& varToInit)
{
    varToInit = true;
    return true;
}

bool CUnitlessDimension::FirstPoint_init(double& varToInit)
{
    varToInit = 0;
    return true;
}

bool CUnitlessDimension::GapBetweenPoints_init(double& varToInit)
{
    varToInit = 1.0;
    return true;
}

bool CUnitlessDimension::Points_init(std::vector<double>& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    return false;
}

bool CUnitlessDimension::IsEachPointAPixel_init(bool& varToInit)
{
    varToInit = false;
    return true;
}

bool CChannelDimension::NumOfPoints_init(uint32_t& varToInit)
{
    ZEL_ASSERT(varToInit == UnknownCount);
    varToInit = static_cast<uint32_t>(ParentMultiDimImg().Channels().size());
    return true;
}

bool CPyramidDimension::NumOfPoints_init(uint32_t& varToInit)
{
    const size_t numOfLevels = ParentMultiDimImg().DeepZoomPyramidLevels().size();
    varToInit = static_cast<uint32_t>(numOfLevels);
    return numOfLevels > 0;
}

} // namespace CIA
