#include "HostTool/Export/RoisCommand.h"

#include "HostTool/OutputFile.h"
#include "HostTool/OutputPlace.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/Text.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

namespace HostTool
{

namespace
{

using Json = nlohmann::ordered_json;
using Point = std::array<double, 2>;
using Points = std::vector<Point>;

constexpr int PointsOfEllipse = 64;

Point PlaceOf(const CRegionPoint& point, const CLevel& finest)
{
    return {static_cast<double>(point.X - finest.Picture.X), static_cast<double>(point.Y - finest.Picture.Y)};
}

/// The rim of the ellipse in a rectangle, which may be turned.
Points RimOf(const Points& corners)
{
    const auto half = [&](size_t from, size_t to, size_t axis)
    { return (corners[to][axis] - corners[from][axis]) / 2; };
    Points rim;
    for (int i = 0; i < PointsOfEllipse; ++i)
    {
        const double angle = 2 * std::numbers::pi * i / PointsOfEllipse;
        Point point{};
        for (size_t axis = 0; axis < 2; ++axis)
            point[axis] = (corners[0][axis] + corners[2][axis]) / 2 + std::cos(angle) * half(0, 1, axis) +
                          std::sin(angle) * half(1, 2, axis);
        rim.push_back(point);
    }
    return rim;
}

std::optional<Points> InMicrometres(const Points& points, const CLevel& finest)
{
    if (!finest.PixelWidth || !finest.PixelHeight)
        return std::nullopt;
    Points lengths;
    for (const Point& point : points)
        lengths.push_back({point[0] * *finest.PixelWidth, point[1] * *finest.PixelHeight});
    return lengths;
}

Json GeometryOf(const std::string& shape, const Points& points)
{
    if (points.empty())
        return nullptr;
    if (points.size() == 1)
        return {{"type", "Point"}, {"coordinates", points.front()}};
    if (shape == "LINE" || points.size() == 2)
        return {{"type", "LineString"}, {"coordinates", points}};
    Points ring = points;
    ring.push_back(points.front()); // a ring ends where it begins
    return {{"type", "Polygon"}, {"coordinates", Json::array({ring})}};
}

Json OrNull(const std::optional<std::string>& text)
{
    return text ? Json(*text) : Json(nullptr);
}

Json FeatureOf(const CGroupRegions& group, const CRegionFacts& region)
{
    const Points outline = OutlineOf(region, group.Finest);
    const auto lengths = InMicrometres(outline, group.Finest);
    const Json geometry = GeometryOf(region.Shape.value_or(""), outline);
    Json properties = {{"name", OrNull(region.Name)}, {"group", group.Group},          {"roi", region.ID},
                       {"type", OrNull(region.Type)}, {"shape", OrNull(region.Shape)}, {"unit", "pixel"}};
    properties["micrometres"] =
        lengths && !geometry.is_null() ? GeometryOf(region.Shape.value_or(""), *lengths)["coordinates"] : Json(nullptr);
    return {{"type", "Feature"}, {"properties", properties}, {"geometry", geometry}};
}

std::string NumberText(double number)
{
    return Json(number).dump(); // the shortest text, in any locale
}

std::vector<CGroupRegions> RegionsOfGroups(const CDocument& document, const std::optional<int>& only)
{
    if (only)
        RequireGroup(document, *only);
    std::vector<CGroupRegions> groups;
    for (const int number : document.ReadableGroups())
    {
        if (only.value_or(number) != number)
            continue;
        const CGroup group = document.Group(number);
        groups.push_back({number, PyramidOf(document, group).front().value(), RegionsOf(group)});
    }
    return groups;
}

struct CRoisRequest
{
    std::optional<int> Group; ///< nothing: all of them
    std::string Format = "geojson";
    COutputPlace Output;
};

/// Throws CHostError if several groups have regions: each counts in pixels of its own, and GeoJSON has one space.
void RequireOneSpace(const CDocument& document, const std::vector<CGroupRegions>& groups)
{
    std::string numbers;
    size_t count = 0;
    for (const CGroupRegions& group : groups)
        if (!group.Regions.empty())
        {
            numbers += (count++ == 0 ? "" : ", ") + std::to_string(group.Group);
        }
    if (count > 1)
        throw CHostError(ExitCode::WrongUsage, document.Path().string() + ": the groups " + numbers +
                                                   " have regions, each in pixels of its own; choose one by -g");
}

/// Answers a line that says what was written.
std::string WriteRois(const CDocument& document, const CRoisRequest& request)
{
    const std::vector<CGroupRegions> groups = RegionsOfGroups(document, request.Group);
    if (request.Format == "geojson")
        RequireOneSpace(document, groups);
    const std::filesystem::path output = request.Output.For(document.Path());
    COutputFile file(output);
    file.Write(request.Format == "csv" ? CsvOf(groups) : GeoJsonOf(groups));
    file.Finish();
    uint64_t numOfRegions = 0;
    for (const CGroupRegions& group : groups)
        numOfRegions += group.Regions.size();
    return output.string() + ": " + TextOfCount(numOfRegions, "region");
}

} // namespace

std::vector<std::array<double, 2>> OutlineOf(const CRegionFacts& region, const CLevel& finest)
{
    Points points;
    for (const CRegionPoint& point : region.Points)
        points.push_back(PlaceOf(point, finest));
    return region.Shape == "ELLIPSE" && points.size() == 4 ? RimOf(points) : points;
}

std::string GeoJsonOf(const std::vector<CGroupRegions>& groups)
{
    Json features = Json::array();
    for (const CGroupRegions& group : groups)
        for (const CRegionFacts& region : group.Regions)
            features.push_back(FeatureOf(group, region));
    const Json collection = {{"type", "FeatureCollection"}, {"features", features}};
    return collection.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string CsvOf(const std::vector<CGroupRegions>& groups)
{
    std::string text = "group,roi,name,type,shape,vertex,x_pixel,y_pixel,x_um,y_um\n";
    for (const CGroupRegions& group : groups)
        for (const CRegionFacts& region : group.Regions)
            for (size_t vertex = 0; vertex < region.Points.size(); ++vertex)
            {
                const Points point = {PlaceOf(region.Points[vertex], group.Finest)};
                const auto length = InMicrometres(point, group.Finest);
                text += std::to_string(group.Group) + "," + CsvField(region.ID) + "," +
                        CsvField(region.Name.value_or("")) + "," + CsvField(region.Type.value_or("")) + "," +
                        CsvField(region.Shape.value_or("")) + "," + std::to_string(vertex) + "," +
                        NumberText(point[0][0]) + "," + NumberText(point[0][1]) + "," +
                        (length ? NumberText((*length)[0][0]) + "," + NumberText((*length)[0][1]) : ",") + "\n";
            }
    return text;
}

void AddRoisCommand(CCommandLine& line)
{
    const auto request = std::make_shared<CRoisRequest>();
    CLI::App& command =
        line.AddCommand({"rois", "Writes the regions of interest, in pixels of level 0 and in micrometres.",
                         "  zel rois slide.zel -o rois.geojson\n  zel rois slide.zel --format csv -o rois.csv"},
                        [request](const CDocument& document)
                        {
                            Say(WriteRois(document, *request));
                            return ExitCode::Done;
                        });
    command
        .add_option("-g,--group", request->Group,
                    "group, from 0; to be given for geojson if several have regions. Default: all of them")
        ->check(CLI::NonNegativeNumber);
    command
        .add_option("--format", request->Format,
                    "geojson: one feature for each region, ellipses as polygons; csv: one line for each vertex, those "
                    "of an ellipse being the corners of the rectangle around it")
        ->check(CLI::IsMember({"geojson", "csv"}))
        ->capture_default_str();
    request->Output.AddTo(command, "-o,--output", "file to write; - for standard output", "{stem}.geojson");
    AddOutputOptions(command);
    line.TakeSeveral(command,
                     [request](const auto& files)
                     {
                         request->Output.RequireGiven();
                         request->Output.SetPattern("{stem}." + request->Format);
                         request->Output.Prepare(files);
                     });
}

} // namespace HostTool
