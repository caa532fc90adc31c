#include "CommonImageAccess/Coordinate.h"

#include "CommonImageAccess/PixelDimension.h"

#include <cmath>

namespace CIA
{

namespace
{

constexpr uint32_t UnknownIndex = 0xFFFFFFFF;

} // namespace

CCoordinate::CCoordinate(uint32_t index, CDimension& dimension, const ObjThatHasCoords* creator)
    : _Dimension(dimension), _Index(index), _Value(std::numeric_limits<double>::quiet_NaN()), _Creator(creator)
{
    AssertIsIndexOf(dimension, index);
    if (IsUnitlessDimension(dimension.Type()))
        _Value = index;
}

CCoordinate::CCoordinate(CDimension& dimension, double value, const ObjThatHasCoords* creator)
    : _Dimension(dimension), _Index(UnknownIndex), _Value(value), _Creator(creator)
{
    ZEL_ASSERT(!std::isnan(value));
    if (dimension.DbgIsCallingLastPointAllowed())
        ZEL_ASSERT(!(value > dimension.LastPoint()));
    if (IsUnitlessDimension(dimension.Type()))
    {
        ZEL_ASSERT(value >= 0 && value < 4294967295.0 && value == std::floor(value));
        _Index = static_cast<uint32_t>(value);
    }
}

double CCoordinate::Value()
{
    if (std::isnan(_Value))
        _Value = _Dimension.Value(_Index);
    ZEL_ASSERT(!std::isnan(_Value));
    return _Value;
}

uint32_t CCoordinate::WorkOutIndex()
{
    const uint32_t index = _Dimension.Idx(_Value);
    ZEL_ASSERT(index != UnknownIndex && index < _Dimension.NumOfPoints());
    _Index = index;
    return _Index;
}

CPixelDimension& CCoordinate::PixDim() const
{
    return dynamic_cast<CPixelDimension&>(_Dimension);
}

uint32_t CCoordinate::PixelValue(double zoomoutFactor)
{
    ZEL_ASSERT(_Dimension.IsEachPointAPixel());
    return PixDim().CoordInPixelsGivenIdx(Index(), zoomoutFactor);
}

} // namespace CIA
