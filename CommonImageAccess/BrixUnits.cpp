#include "CommonImageAccess/BrixUnits.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Numbers.h"

namespace CIA
{

double ConvertToBrixXyDimUnits(double value, const std::wstring& units)
{
    return CommonUtil::ConvertToUnits(value, units, "m", 6);
}
double ConvertToBrixZDimUnits(double value, const std::wstring& units)
{
    return CommonUtil::ConvertToUnits(value, units, "m", 6);
}
double ConvertToBrixTDimUnits(double value, const std::wstring& units)
{
    return CommonUtil::ConvertToUnits(value, units, "s", 0);
}
double ConvertToBrixLDimUnits(double value, const std::wstring& units)
{
    return CommonUtil::ConvertToUnits(value, units, "m", 9);
}

double ConvertToBrixUnits(double value, const std::wstring& units, DimensionType::E type)
{
    switch (type)
    {
    case DimensionType::DimensionType_Z:
        return ConvertToBrixZDimUnits(value, units);
    case DimensionType::DimensionType_T:
        return ConvertToBrixTDimUnits(value, units);
    case DimensionType::DimensionType_L:
        return ConvertToBrixLDimUnits(value, units);
    default:
        CommonUtil::oldAbortCommonUtil();
    }
}

} // namespace CIA
