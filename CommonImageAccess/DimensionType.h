#pragma once
#include <array>
#include <bit>
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

/// The dimensions that tell frames apart, in the order of their numbers: all but X, Y and P.
inline constexpr std::array FrameDifferentiators = {DimensionType::DimensionType_Z, DimensionType::DimensionType_T,
                                                    DimensionType::DimensionType_L, DimensionType::DimensionType_C};

/// A set of dimension types.
class CDimensionTypes
{
public:
    constexpr void Add(DimensionType::E type) { _bits |= 1u << type; }
    constexpr bool Has(DimensionType::E type) const { return (_bits >> type & 1) != 0; }
    constexpr bool IsEmpty() const { return _bits == 0; }
    /// Those of this set that are not in the other one.
    constexpr CDimensionTypes Without(CDimensionTypes other) const { return CDimensionTypes(_bits & ~other._bits); }
    /// Of a set that is not empty: the type with the lowest number.
    constexpr DimensionType::E First() const { return static_cast<DimensionType::E>(std::countr_zero(_bits)); }
    constexpr CDimensionTypes WithoutFirst() const { return CDimensionTypes(_bits & (_bits - 1)); }
    constexpr CDimensionTypes() = default;

private:
    constexpr explicit CDimensionTypes(uint32_t bits) : _bits(bits) {}

    uint32_t _bits = 0;
};

/// X, Y, C and P, in this order: every image has them.
const std::vector<DimensionType::E>& GetMandatoryDimensions();
bool IsMandatoryDimension(DimensionType::E type);
/// True for the two dimensions whose points are pixels: they may be asked beyond their end.
constexpr bool IsXOrY(DimensionType::E type)
{
    return type == DimensionType::DimensionType_X || type == DimensionType::DimensionType_Y;
}
/// True for C and P, whose values are their indices.
constexpr bool IsUnitlessDimension(DimensionType::E type)
{
    return type == DimensionType::DimensionType_C || type == DimensionType::DimensionType_P;
}
/// True for the dimensions that tell frames apart.
constexpr bool IsFrameDifferentiatorCoordDimension(DimensionType::E type)
{
    return !IsXOrY(type) && type != DimensionType::DimensionType_P;
}
/// The short text for messages: "X", "Y", ... A number that is no type is a failed assertion.
const char* DimensionTypeToString(DimensionType::E type);
/// The name that hosts show for Z, T and L; any other type is a failed assertion.
const wchar_t* DimensionName(DimensionType::E type);

} // namespace CIA
