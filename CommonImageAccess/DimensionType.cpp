#include "CommonImageAccess/DimensionType.h"

#include "CommonUtil/Assertion.h"

#include <algorithm>

namespace CIA
{

const std::vector<DimensionType::E>& GetMandatoryDimensions()
{
    static const std::vector<DimensionType::E> mandatoryDimensions = {
        DimensionType::DimensionType_X, DimensionType::DimensionType_Y, DimensionType::DimensionType_C,
        DimensionType::DimensionType_P};
    return mandatoryDimensions;
}

bool IsMandatoryDimension(DimensionType::E type)
{
    const auto& mandatory = GetMandatoryDimensions();
    return std::find(mandatory.begin(), mandatory.end(), type) != mandatory.end();
}

const char* DimensionTypeToString(DimensionType::E type)
{
    switch (type)
    {
    case DimensionType::DimensionType_X:
        return "X";
    case DimensionType::DimensionType_Y:
        return "Y";
    case DimensionType::DimensionType_Z:
        return "Z";
    case DimensionType::DimensionType_T:
        return "T";
    case DimensionType::DimensionType_L:
        return "L";
    case DimensionType::DimensionType_C:
        return "C";
    case DimensionType::DimensionType_P:
        return "P";
    case DimensionType::DimensionType_Dummy:
        return "dummy dimension (used for file formats having dummy dim metadata)";
    }
    CommonUtil::FailAssertion(__FILE__, __LINE__);
}

const wchar_t* DimensionName(DimensionType::E type)
{
    switch (type)
    {
    case DimensionType::DimensionType_Z:
        return L"Z Dimension (Height from base of slide)";
    case DimensionType::DimensionType_T:
        return L"Time Dimension";
    case DimensionType::DimensionType_L:
        return L"Lambda (Wavelength) Dimension";
    default:
        CommonUtil::FailAssertion(__FILE__, __LINE__);
    }
}

} // namespace CIA
