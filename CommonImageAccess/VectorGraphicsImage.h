#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace CIA
{

/// A vertex, in pixels of level 0.
class CVectorGraphicsPoint
{
public:
    CVectorGraphicsPoint(double x, double y) : _X(x), _Y(y) {}
    double X() const { return _X; }
    double Y() const { return _Y; }

private:
    double _X;
    double _Y;
};

/// A measurement or region of interest that a user has drawn, in the one form that hosts want: a named list of points
/// with a type and a shape. Rectangles and ellipses are given by the four corners around them.
class CVectorGraphicsImage
{
public:
    /// `shape` and `shapeType` must live for ever: documents have a hundred thousand of these.
    CVectorGraphicsImage(uint32_t id, std::wstring name, const wchar_t* shape, const wchar_t* shapeType,
                         std::vector<CVectorGraphicsPoint> points)
        : _ID(id), _Name(std::move(name)), _Shape(shape), _ShapeType(shapeType), _Points(std::move(points))
    {
    }

    uint32_t ID() const { return _ID; } ///< its place in the image's list
    const std::wstring& Name() const { return _Name; }
    const wchar_t* Shape() const { return _Shape; }         ///< "POLYGON", "ELLIPSE", "LINE" or "POINT"
    const wchar_t* ShapeType() const { return _ShapeType; } ///< "CLIP", "LINE" or "POINT"
    double Rotation() const { return 0.0; }                 ///< the points are turned already
    const std::vector<CVectorGraphicsPoint>& Points() const { return _Points; }

private:
    uint32_t _ID;
    std::wstring _Name;
    const wchar_t* _Shape;
    const wchar_t* _ShapeType;
    std::vector<CVectorGraphicsPoint> _Points;
};

} // namespace CIA
