#pragma once

#include "SampleDocuments/Node.h"

#include <functional>
#include <string>

namespace SampleDocuments
{

/// A point of a region, in pixels of the whole picture.
struct CPoint
{
    double X = 0;
    double Y = 0;
    bool operator==(const CPoint&) const = default;
};

/// The names by which documents tell shapes. Any other text can stand in their place.
namespace ShapeClass
{
inline constexpr auto TwoPointRectangle = "xv.twopoint.rectangle";
inline constexpr auto RotatedRectangle = "xv.rotrectangle";
inline constexpr auto TwoPointCircle = "xv.circle.twopoint.meas";
inline constexpr auto ThreePointCircle = "xv.circle.threepoint";
inline constexpr auto TwoThreePointCircles = "xv.circle.threepoint.two";
inline constexpr auto RotatedEllipse = "xv.rotellipses";
inline constexpr auto Polygon = "xv.polygon.meas";
inline constexpr auto FreePolygon = "xv.freepoly.meas";
inline constexpr auto InterpolatedPolygon = "xv.interpoly.meas";
inline constexpr auto MagicWand = "xv.magicwand.meas";
inline constexpr auto Line = "xv.line.meas";
inline constexpr auto Polyline = "xv.polyline.meas";
inline constexpr auto FreeLine = "xv.freeline.meas";
inline constexpr auto Dot = "xv.dot.meas";
inline constexpr auto Origin = "xv.origin";
inline constexpr auto PerpendicularDistance = "xv.perpdist";
} // namespace ShapeClass

/// The tags under which the tree form keeps the points of a shape, in the order of the points.
struct RegionGeometry
{
    enum E
    {
        Points,           ///< any number, with their count
        SinglePoint,      ///< one
        Rectangle,        ///< top left, bottom right
        RotatedRectangle, ///< corner, end of the first side, end of the second side
        ThreePointCircle, ///< three on the rim
        TwoPointCircle,   ///< centre, one on the rim
        Ellipse           ///< centre, end of the X axis, end of the Y axis
    };
};

/// A region of interest: a shape that somebody drew. Points come in the order of RegionGeometry, in both forms; those
/// that the tree form of a class has no tags for are left out there. What is not set is not written.
struct CRegion
{
    CRegion() = default;
    CRegion(std::string shapeClass, std::string name, std::vector<CPoint> points)
        : ShapeClass(std::move(shapeClass)), Name(std::move(name)), Points(std::move(points))
    {
    }

    std::optional<std::string> ShapeClass;
    std::optional<std::string> Name;
    std::vector<CPoint> Points;
    bool HasPoints = true; ///< false: not even an empty list of them

    std::optional<int32_t> ObjectType = 1;     ///< of the XML form
    std::function<void(std::string&)> EditXml; ///< of the XML form: whatever else is different in the object's element

    std::optional<RegionGeometry::E> Geometry;   ///< of the tree form: other tags than the class has
    std::optional<int32_t> NumOfPoints;          ///< of the tree form: the count that is told
    std::function<void(CNode& root)> EditTree;   ///< of the tree form: whatever else is different in the object's tree
    std::string XmlBeforeTree = "<Properties/>"; ///< of the tree form: a text that stands before the object's tree
    std::optional<uint32_t> SizeOfXmlBeforeTree; ///< worked out if not set: that of the text and 2 bytes before it
};

/// The tags that the tree form of a class uses; Points for those that have none of their own.
RegionGeometry::E GeometryOf(std::string_view shapeClass);

// The usual ones.
CRegion Rectangle(std::string name, CPoint topLeft, CPoint bottomRight);
CRegion RotatedRectangle(std::string name, CPoint corner, CPoint firstSide, CPoint secondSide);
CRegion TwoPointCircle(std::string name, CPoint centre, CPoint onRim);
CRegion ThreePointCircle(std::string name, CPoint first, CPoint second, CPoint third);
CRegion Ellipse(std::string name, CPoint centre, CPoint endOfXAxis, CPoint endOfYAxis);
CRegion Polygon(std::string name, std::vector<CPoint> points);
CRegion Polyline(std::string name, std::vector<CPoint> points);
CRegion Line(std::string name, CPoint from, CPoint to);
CRegion Dot(std::string name, CPoint at);

/// A region of each class that both forms know to draw, around (100, 100), named after its class.
std::vector<CRegion> RegionOfEachClass();

/// The element of a region in the XML form, in UTF-8.
std::string XmlOf(const CRegion& region);

/// The tree of a region in the tree form, from its root.
CNode TreeOf(const CRegion& region);

/// So many small rectangles, circles, polygons, lines and dots in turn, spread over a picture: "Region 0", ...
std::vector<CRegion> ManyRegions(size_t numOfRegions, uint32_t pictureWidth, uint32_t pictureHeight);

} // namespace SampleDocuments
