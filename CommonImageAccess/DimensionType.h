#pragma once
#include <cstdint>
#include <vector>

namespace CIA
{

/// The axes of an image. The numbers order every map of dimensions and coordinates.
struct DimensionType
{
    enum E : int32_t
    {
        DimensionType_X = 0,
        DimensionType_Y = 1,
        DimensionType_Z = 2,
        DimensionType_T = 3,
        DimensionType_L = 4,
        DimensionType_C = 5,
        DimensionType_P = 6,
        DimensionType_Dummy = 7 ///< a placeholder in a file's list of dimensions; never a dimension of an image
    };
    static constexpr int32_t NumOfDimTypes = 7;
};

/// X, Y, C and P, in this order: every image has them.
const std::vector<DimensionType::E>& GetMandatoryDimensions();
bool IsMandatoryDimension(DimensionType::E type);
/// True for the two dimensions whose points are pixels: they may be asked beyond their end.
bool IsXOrY(DimensionType::E type);
/// True for C and P, whose values are their indices.
bool IsUnitlessDimension(DimensionType::E type);
/// True for the dimensions that tell frames apart: all but X, Y and P.
bool IsFrameDifferentiatorCoordDimension(DimensionType::E type);
/// The short text for messages: "X", "Y", ... A number that is no type is a failed assertion.
const char* DimensionTypeToString(DimensionType::E type);
/// The name that hosts show for Z, T and L; any other type is a failed assertion.
const wchar_t* DimensionName(DimensionType::E type);

} // namespace CIA
