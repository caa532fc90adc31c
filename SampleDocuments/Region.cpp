#include "SampleDocuments/Region.h"

#include "SampleDocuments/Tags.h"

#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

namespace SampleDocuments
{

RegionGeometry::E GeometryOf(std::string_view shapeClass)
{
    static const std::map<std::string_view, RegionGeometry::E> geometries = {
        {ShapeClass::TwoPointRectangle, RegionGeometry::Rectangle},
        {ShapeClass::RotatedRectangle, RegionGeometry::RotatedRectangle},
        {ShapeClass::TwoPointCircle, RegionGeometry::TwoPointCircle},
        {ShapeClass::ThreePointCircle, RegionGeometry::ThreePointCircle},
        {ShapeClass::RotatedEllipse, RegionGeometry::Ellipse},
        {ShapeClass::Dot, RegionGeometry::SinglePoint}};
    const auto found = geometries.find(shapeClass);
    return found == geometries.end() ? RegionGeometry::Points : found->second;
}

namespace
{

CNode PointNode(uint32_t tag, const CPoint& point)
{
    return Doubles(tag, {point.X, point.Y}, FieldCode::DoubleArr2);
}

/// The tags of the points of a shape that has a fixed number of them.
std::vector<uint32_t> TagsOf(RegionGeometry::E geometry)
{
    switch (geometry)
    {
    case RegionGeometry::SinglePoint:
        return {Tag::SinglePoint};
    case RegionGeometry::Rectangle:
        return {Tag::TopLeft, Tag::BottomRight};
    case RegionGeometry::RotatedRectangle:
        return {Tag::RotationPoint, Tag::FirstSide, Tag::SecondSide};
    case RegionGeometry::ThreePointCircle:
        return {Tag::FirstOnRim, Tag::SecondOnRim, Tag::ThirdOnRim};
    case RegionGeometry::TwoPointCircle:
        return {Tag::CircleCentre, Tag::OnRim};
    case RegionGeometry::Ellipse:
        return {Tag::EllipseCentre, Tag::EllipseXAxis, Tag::EllipseYAxis};
    default:
        return {};
    }
}

void AddPoints(CNode& object, const CRegion& region)
{
    const RegionGeometry::E geometry = region.Geometry.value_or(GeometryOf(region.ShapeClass.value_or("")));
    const std::vector<uint32_t> tags = TagsOf(geometry);
    if (geometry == RegionGeometry::Points)
        object.Add(Int32(Tag::NumOfPoints, region.NumOfPoints.value_or(static_cast<int32_t>(region.Points.size()))));
    for (size_t i = 0; i < region.Points.size(); ++i)
        if (geometry == RegionGeometry::Points)
            object.Add(PointNode(Tag::Point, region.Points[i]));
        else if (i < tags.size())
            object.Add(PointNode(tags[i], region.Points[i]));
}

} // namespace

CNode TreeOf(const CRegion& region)
{
    CNode shape = Volume(Tag::Shape);
    if (region.ShapeClass)
        shape.Add(Text(Tag::ShapeClass, *region.ShapeClass));
    CNode object = Volume(Tag::ShapeObject);
    if (region.HasPoints)
        AddPoints(object, region);
    CNode properties = Volume(Tag::ShapeProperties);
    if (region.Name)
        properties.Add(Text(Tag::RegionName, *region.Name));
    object.Add(std::move(properties));
    shape.Add(std::move(object));
    CNode root = Volume(0, {std::move(shape)});
    if (region.EditTree)
        region.EditTree(root);
    return root;
}

namespace
{

void AppendEscaped(std::string& xml, std::string_view text)
{
    for (const char character : text)
        switch (character)
        {
        case '&':
            xml += "&amp;";
            break;
        case '<':
            xml += "&lt;";
            break;
        case '>':
            xml += "&gt;";
            break;
        default:
            xml += character;
        }
}

void AppendProperty(std::string& xml, std::string_view key, std::string_view element, std::string_view text)
{
    xml.append("<Property Key=\"measure:").append(key).append("\"><").append(element).append(">");
    AppendEscaped(xml, text);
    xml.append("</").append(element).append("></Property>");
}

/// The shortest text that reads back as the same number.
void AppendNumber(std::string& xml, double number)
{
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    xml.append("<double>").append(digits.data(), end).append("</double>");
}

} // namespace

std::string XmlOf(const CRegion& region)
{
    std::string xml = "<Object><PropertySet>";
    if (region.Name)
        AppendProperty(xml, "ObjectName", "String", *region.Name);
    if (region.ShapeClass)
        AppendProperty(xml, "ShapeClass", "String", *region.ShapeClass);
    if (region.HasPoints)
    {
        xml += "<Property Key=\"measure:ShapePoints\">";
        for (const CPoint& point : region.Points)
        {
            xml += "<Component><CdVec2>";
            AppendNumber(xml, point.X);
            AppendNumber(xml, point.Y);
            xml += "</CdVec2></Component>";
        }
        xml += "</Property>";
    }
    if (region.ObjectType)
        AppendProperty(xml, "ObjectType", "Int", std::to_string(*region.ObjectType));
    xml += "</PropertySet></Object>";
    if (region.EditXml)
        region.EditXml(xml);
    return xml;
}

CRegion Rectangle(std::string name, CPoint topLeft, CPoint bottomRight)
{
    return {ShapeClass::TwoPointRectangle, std::move(name), {topLeft, bottomRight}};
}

CRegion RotatedRectangle(std::string name, CPoint corner, CPoint firstSide, CPoint secondSide)
{
    return {ShapeClass::RotatedRectangle, std::move(name), {corner, firstSide, secondSide}};
}

CRegion TwoPointCircle(std::string name, CPoint centre, CPoint onRim)
{
    return {ShapeClass::TwoPointCircle, std::move(name), {centre, onRim}};
}

CRegion ThreePointCircle(std::string name, CPoint first, CPoint second, CPoint third)
{
    return {ShapeClass::ThreePointCircle, std::move(name), {first, second, third}};
}

CRegion Ellipse(std::string name, CPoint centre, CPoint endOfXAxis, CPoint endOfYAxis)
{
    return {ShapeClass::RotatedEllipse, std::move(name), {centre, endOfXAxis, endOfYAxis}};
}

CRegion Polygon(std::string name, std::vector<CPoint> points)
{
    return {ShapeClass::Polygon, std::move(name), std::move(points)};
}

CRegion Polyline(std::string name, std::vector<CPoint> points)
{
    return {ShapeClass::Polyline, std::move(name), std::move(points)};
}

CRegion Line(std::string name, CPoint from, CPoint to)
{
    return {ShapeClass::Line, std::move(name), {from, to}};
}

CRegion Dot(std::string name, CPoint at)
{
    return {ShapeClass::Dot, std::move(name), {at}};
}

std::vector<CRegion> RegionOfEachClass()
{
    const std::vector<CPoint> corners = {{90, 80}, {120, 85}, {115, 120}, {95, 110}};
    return {Rectangle(ShapeClass::TwoPointRectangle, {80, 90}, {120, 110}),
            RotatedRectangle(ShapeClass::RotatedRectangle, {100, 70}, {130, 100}, {80, 90}),
            TwoPointCircle(ShapeClass::TwoPointCircle, {100, 100}, {103, 104}),
            ThreePointCircle(ShapeClass::ThreePointCircle, {90, 100}, {100, 90}, {109, 101}),
            Ellipse(ShapeClass::RotatedEllipse, {100, 100}, {130, 140}, {92, 106}),
            Polygon(ShapeClass::Polygon, corners),
            CRegion(ShapeClass::FreePolygon, ShapeClass::FreePolygon, corners),
            Line(ShapeClass::Line, {60, 100}, {140, 105}),
            Polyline(ShapeClass::Polyline, corners),
            CRegion(ShapeClass::FreeLine, ShapeClass::FreeLine, corners),
            Dot(ShapeClass::Dot, {100, 100})};
}

std::vector<CRegion> ManyRegions(size_t numOfRegions, uint32_t pictureWidth, uint32_t pictureHeight)
{
    std::vector<CRegion> regions;
    regions.reserve(numOfRegions);
    // A step by the golden ratio in X and by its square in Y never comes back to the same place.
    const double step = 1 / std::numbers::phi;
    const auto place = [](double turns, uint32_t length) { return (turns - std::floor(turns)) * length; };
    for (size_t i = 0; i < numOfRegions; ++i)
    {
        const double x = place(static_cast<double>(i) * step, pictureWidth);
        const double y = place(static_cast<double>(i) * step * step * 0.5, pictureHeight);
        const std::string name = "Region " + std::to_string(i);
        switch (i % 5)
        {
        case 0:
            regions.push_back(Rectangle(name, {x, y}, {x + 30, y + 20}));
            break;
        case 1:
            regions.push_back(TwoPointCircle(name, {x, y}, {x + 9, y + 12}));
            break;
        case 2:
            regions.push_back(Polygon(name, {{x, y}, {x + 25, y + 5}, {x + 12, y + 30}}));
            break;
        case 3:
            regions.push_back(Line(name, {x, y}, {x + 40, y + 10}));
            break;
        default:
            regions.push_back(Dot(name, {x, y}));
        }
    }
    return regions;
}

} // namespace SampleDocuments
