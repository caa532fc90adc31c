#include "SampleDocuments/Description/Things.h"

namespace SampleDocuments
{

namespace
{

constexpr uint32_t MostRegions = 1000000;

const std::map<std::string, std::string> ShortNamesOfClasses = {
    {"rectangle", ShapeClass::TwoPointRectangle},
    {"rotatedRectangle", ShapeClass::RotatedRectangle},
    {"twoPointCircle", ShapeClass::TwoPointCircle},
    {"threePointCircle", ShapeClass::ThreePointCircle},
    {"twoThreePointCircles", ShapeClass::TwoThreePointCircles},
    {"ellipse", ShapeClass::RotatedEllipse},
    {"polygon", ShapeClass::Polygon},
    {"freePolygon", ShapeClass::FreePolygon},
    {"interpolatedPolygon", ShapeClass::InterpolatedPolygon},
    {"magicWand", ShapeClass::MagicWand},
    {"line", ShapeClass::Line},
    {"polyline", ShapeClass::Polyline},
    {"freeLine", ShapeClass::FreeLine},
    {"dot", ShapeClass::Dot},
    {"origin", ShapeClass::Origin},
    {"perpendicularDistance", ShapeClass::PerpendicularDistance}};

const std::map<std::string, RegionGeometry::E> Geometries = {{"points", RegionGeometry::Points},
                                                             {"singlePoint", RegionGeometry::SinglePoint},
                                                             {"rectangle", RegionGeometry::Rectangle},
                                                             {"rotatedRectangle", RegionGeometry::RotatedRectangle},
                                                             {"threePointCircle", RegionGeometry::ThreePointCircle},
                                                             {"twoPointCircle", RegionGeometry::TwoPointCircle},
                                                             {"ellipse", RegionGeometry::Ellipse}};

void ReadRegion(CJsonObject& object, CRegion& into)
{
    object.Read("class", into.ShapeClass);
    const auto name = ShortNamesOfClasses.find(into.ShapeClass.value_or(""));
    if (name != ShortNamesOfClasses.end())
        into.ShapeClass = name->second;
    object.Read("name", into.Name);
    std::optional<std::vector<CPoint>> points = std::move(into.Points);
    object.Read("points", points);
    into.HasPoints = points.has_value();
    into.Points = std::move(points).value_or(std::vector<CPoint>());
    object.Read("objectType", into.ObjectType);
    if (object.Has("geometry"))
        object.ReadName("geometry", Geometries, into.Geometry.emplace());
    object.Read("numOfPoints", into.NumOfPoints);
    object.Read("xmlBeforeTree", into.XmlBeforeTree);
    object.Read("sizeOfXmlBeforeTree", into.SizeOfXmlBeforeTree);
}

/// "many": regions in turn, spread over a picture of "over" pixels.
std::vector<CRegion> ManyOf(CJsonObject& object)
{
    uint32_t many = 0;
    std::pair<uint32_t, uint32_t> size = {1000, 1000};
    object.Read("many", many);
    object.Read("over", size);
    if (many > MostRegions)
        Refuse(object.PlaceOf("many"), "takes at most " + std::to_string(MostRegions));
    return ManyRegions(many, size.first, size.second);
}

/// Takes a member, if it is there, through a call of the blob of regions.
template <typename T>
void Apply(CJsonObject& object, const char* key, Regions& regions, Regions& (Regions::*call)(T))
{
    T value{};
    if (object.Read(key, value))
        (regions.*call)(std::move(value));
}

CNode RegionsOf(CJsonObject& object)
{
    std::vector<CRegion> all;
    object.Read("regions", all);
    const std::vector<CRegion> many = ManyOf(object);
    all.insert(all.end(), many.begin(), many.end());
    Regions regions(std::move(all));
    bool isTree = false;
    object.ReadName("form", std::map<std::string, bool>{{"xml", false}, {"tree", true}}, isTree);
    isTree ? regions.AsTree() : regions.AsXml();
    Apply(object, "id", regions, &Regions::Id);
    Apply(object, "version", regions, &Regions::BlobVersion);
    Apply(object, "payloadVersion", regions, &Regions::PayloadVersion);
    Apply(object, "payloadType", regions, &Regions::PayloadType);
    Apply(object, "numOfObjects", regions, &Regions::NumOfObjects);
    Apply(object, "byteCount", regions, &Regions::ByteCount);
    Apply(object, "byteOrderMark", regions, &Regions::ByteOrderMark);
    Apply(object, "xml", regions, &Regions::Xml);
    return regions;
}

CNode BytesBlobOf(CJsonObject& object)
{
    uint32_t id = 0, version = 1;
    ByteString bytes;
    object.Read("id", id);
    object.Read("version", version);
    object.Read("bytes", bytes);
    return Blob(id, version, bytes);
}

} // namespace

void FromJson(const Json& json, const std::string& place, CRegion& into)
{
    ReadJsonObject(json, place, [&into](CJsonObject& object) { ReadRegion(object, into); });
}

void FromJson(const Json& json, const std::string& place, CNode& into)
{
    ReadJsonObject(json, place,
                   [&into](CJsonObject& object)
                   { into = object.Has("bytes") ? BytesBlobOf(object) : RegionsOf(object); });
}

} // namespace SampleDocuments
