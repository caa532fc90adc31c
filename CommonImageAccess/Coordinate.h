#pragma once
#include "CommonImageAccess/Dimension.h"
#include "CommonUtil/Assertion.h"

#include <cstdint>
#include <map>

namespace CIA
{

class ObjThatHasCoords;
class CPixelDimension;

/// A position on one dimension, made from an index or from a value; the other one is worked out when asked for.
class CCoordinate
{
public:
    /// Asserts that the index is a number, and on dimensions other than X and Y one of its points.
    CCoordinate(uint32_t index, CDimension& dimension, const ObjThatHasCoords* creator);
    /// The assertion of the constructor by itself, for a request that needs no object.
    static void AssertIsIndexOf(CDimension& dimension, uint32_t index)
    {
        ZEL_ASSERT(index != 0xFFFFFFFF);
        ZEL_ASSERT(IsXOrY(dimension.Type()) || index < dimension.NumOfPoints());
    }
    /// Asserts that the value is a number, and not beyond the last point where that is known yet.
    CCoordinate(CDimension& dimension, double value, const ObjThatHasCoords* creator);

    CDimension& Dimension() const { return _Dimension; }
    /// The object that made and owns this coordinate; null for a temporary one.
    const ObjThatHasCoords* Creator() const { return _Creator; }
    /// In the units of the model.
    double Value();
    /// Asserts that the value falls on one of the dimension's points.
    uint32_t Index() { return _Index != 0xFFFFFFFF ? _Index : WorkOutIndex(); }
    /// The dimension as one of pixels; any other dimension is a bad cast.
    CPixelDimension& PixDim() const;
    /// The position in pixels of the display window at a zoom-out factor.
    uint32_t PixelValue(double zoomoutFactor);

private:
    uint32_t WorkOutIndex();

    CDimension& _Dimension;
    uint32_t _Index;
    double _Value;
    const ObjThatHasCoords* _Creator;
};

/// A pixel of an image, by its indexes on X and Y.
struct CPixelIndexes
{
    uint32_t X = 0;
    uint32_t Y = 0;
};

/// The coordinates of one object by dimension. Borrowed: each is owned by its creator.
using CCoords = std::map<DimensionType::E, CCoordinate*>;

} // namespace CIA
