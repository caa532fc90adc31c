#include "ZelLoader/Images/ZelDimension.h"

#include "CommonImageAccess/ImgDoc.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"

#include <cerrno>
#include <cmath>
#include <cwchar>

namespace Zel
{

namespace
{

/// The text of a unit field; null, with a log line, when it has no terminating zero.
const wchar_t* UnitText(const CArrayStartAndSize<wchar_t>& text)
{
    if (wcsnlen(text.Arr, text.Size) < text.Size)
        return text.Arr;
    ZEL_LOG("unexpected: string length longer than array size!");
    return nullptr;
}

} // namespace

const wchar_t* CZelDimensionWithPixels::NativeUnits()
{
    if (!_NativeUnits)
    {
        const wchar_t* units = nullptr;
        if (NativeUnits_init(units))
            _NativeUnits = units;
    }
    return _NativeUnits;
}

bool CZelDimensionWithPixels::NativeUnits_init(const wchar_t*& varToInit)
{
    ZEL_ASSERT(!varToInit);
    const CArrayStartAndSize<wchar_t>* units = MetaData.ImgFrameUnitRWC();
    if (!units)
    {
        ZEL_LOG("WARNING: Could not find units for dim '%s'!", DimensionTypeToString(Type()));
        return false;
    }
    varToInit = UnitText(*units);
    if (!varToInit)
        return false;
    const CArrayStartAndSize<wchar_t>* unitsOfY =
        Type() == DimensionType::DimensionType_Y ? MetaData.ImgFrameYUnitRWC() : nullptr;
    if (unitsOfY)
        varToInit = UnitText(*unitsOfY);
    return varToInit != nullptr;
}

bool CZelDimensionWithPixels::HasEvenlySpacedPoints_init(bool& varToInit)
{
    varToInit = true;
    return true;
}

bool CZelDimensionWithPixels::NumOfPoints_init(uint32_t& varToInit)
{
    switch (Type())
    {
    case DimensionType::DimensionType_X:
        varToInit = ParentMultiDimImg().PixelWidth();
        return true;
    case DimensionType::DimensionType_Y:
        varToInit = ParentMultiDimImg().PixelHeight();
        return true;
    default:
        FailAssertion(__FILE__, __LINE__);
    }
}

bool CZelDimensionWithPixels::Points_init(std::vector<double>& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    return false;
}

bool CZelDimensionWithPixels::GapBetweenPoints_init(double& varToInit)
{
    const CArrayStartAndSize<double>* scale = MetaData.ImgFrameScaleRWC();
    if (!scale)
    {
        ZEL_LOG("Missing mandatory tag 2001\\2005\\2019!!!");
        if (ParentMultiDimImg().ParentImgDoc().MultiDimImages().size() != 1)
            return false;
        ZEL_LOG("A single image needs no scale: one pixel is taken to be 1 wide.");
        varToInit = 1.0;
        return true;
    }
    ZEL_ASSERT(scale->Size == 2);
    const double gap = scale->Arr[Type() == DimensionType::DimensionType_X ? 0 : 1];
    const wchar_t* units = NativeUnits();
    if (!units)
        return false;
    const bool isLength = IsValidUnitOfLength(units);
    ZEL_ASSERT(isLength || gap == 1.0);
    varToInit = isLength ? ConvertToUnits(gap, units, "m", 6) : gap;
    return true;
}

const wchar_t* CZelNonPixelDimensionWithUnits::NativeUnits()
{
    ZEL_LOG("TODO: This function is incorrect and needs to be completed!Currently we are passing dummy values until "
            "FirstPointNativeValue_init() etc are created...");
    switch (Type())
    {
    case DimensionType::DimensionType_T:
        return L"10^-3s^1";
    case DimensionType::DimensionType_L:
        return L"10^-9m^1";
    case DimensionType::DimensionType_Z:
        return L"10^-6m^1";
    default:
        oldAbortCommonUtil();
    }
}

bool CZelNonPixelDimensionWithUnits::HasEvenlySpacedPoints_init(bool& varToInit)
{
    varToInit = !(MetaData._GapBetweenPoints == 0);
    ZEL_ASSERT(varToInit == MetaData.Points.empty());
    return true;
}

void CZelNonPixelDimensionWithUnits::AssertIsEven()
{
    const bool isEven = HasEvenlySpacedPoints();
    ZEL_ASSERT(isEven && errno == 0);
}

bool CZelNonPixelDimensionWithUnits::FirstPoint_init(double& varToInit)
{
    AssertIsEven();
    ZEL_ASSERT(!std::isnan(MetaData._FirstPoint));
    varToInit = MetaData._FirstPoint;
    return true;
}

bool CZelNonPixelDimensionWithUnits::NumOfPoints_init(uint32_t& varToInit)
{
    AssertIsEven();
    varToInit = MetaData.NumOfPoints;
    return true;
}

bool CZelNonPixelDimensionWithUnits::GapBetweenPoints_init(double& varToInit)
{
    AssertIsEven();
    varToInit = MetaData._GapBetweenPoints;
    return true;
}

bool CZelNonPixelDimensionWithUnits::Points_init(std::vector<double>& varToInit)
{
    varToInit = MetaData.Points;
    return !varToInit.empty();
}

bool CZelNonPixelDimensionWithUnits::IsEachPointAPixel_init(bool& varToInit)
{
    varToInit = false;
    return true;
}

} // namespace Zel
