/// `zel rois`.

#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace SampleDocuments;
using nlohmann::json;

class ZelRois : public ZelRun
{
protected:
    json GeoJson(const Words& options = {})
    {
        Run("rois", "rois.geojson", options);
        return json::parse(BytesOf("rois.geojson"), nullptr, false);
    }
};

TEST_F(ZelRois, AreFeaturesInPixelsAndMicrometres)
{
    Write(Stack(1).Scale(0.5, 0.5).LayerBlob(Regions({Rectangle("cell", {11, 21}, {31, 41})})));
    const json file = GeoJson();
    EXPECT_EQ(file["type"], "FeatureCollection");
    ASSERT_EQ(file["features"].size(), 1u);
    const json feature = file["features"][0];
    EXPECT_EQ(feature["properties"]["name"], "cell");
    EXPECT_EQ(feature["geometry"]["type"], "Polygon");
    const json ring = feature["geometry"]["coordinates"][0];
    ASSERT_EQ(ring.size(), 5u);
    EXPECT_EQ(ring[0], ring[4]);
    EXPECT_EQ(ring[2][0].get<double>() - ring[0][0].get<double>(), 20);
    EXPECT_EQ(feature["properties"]["micrometres"][0][2][0].get<double>(), ring[2][0].get<double>() / 2);
}

TEST_F(ZelRois, AreLinesAndPointsAsWell)
{
    Write(Stack(1).LayerBlob(Regions({Polyline("path", {{1, 1}, {5, 5}, {9, 1}}), Dot("spot", {5, 5})})));
    const json file = GeoJson();
    EXPECT_EQ(file["features"][0]["geometry"]["type"], "LineString");
    EXPECT_EQ(file["features"][0]["geometry"]["coordinates"].size(), 3u);
    EXPECT_EQ(file["features"][1]["geometry"]["type"], "Point");
}

TEST_F(ZelRois, AreEllipsesAsPolygonsOnTheirRim)
{
    Write(Stack(1).LayerBlob(Regions({TwoPointCircle("disc", {50, 50}, {60, 50})})));
    const json feature = GeoJson()["features"][0];
    EXPECT_EQ(feature["properties"]["shape"], "ELLIPSE");
    const json ring = feature["geometry"]["coordinates"][0];
    ASSERT_EQ(ring.size(), 65u);
    for (const json& point : ring)
        EXPECT_NEAR(std::hypot(point[0].get<double>() - 49.5, point[1].get<double>() - 49.5), 10, 1);
}

TEST_F(ZelRois, CountFromThePictureWhereverItsTilesBegin)
{
    // The picture begins 30 pixels before tile 0, from where regions are told.
    Write(Stack(1)
              .Size(200, 50)
              .Tiles(100, 50)
              .Shift(30, 0)
              .Level(0, Columns(-1, 1), Rows(0, 0))
              .LayerBlob(Regions({Dot("spot", {5.5, 7.5})})));
    EXPECT_EQ(GeoJson()["features"][0]["geometry"]["coordinates"], json::parse("[35.0, 7.0]"));
}

TEST_F(ZelRois, AreATableOfVertices)
{
    Write(Stack(1).LayerBlob(Regions({Dot("a \"spot\", small", {5.5, 7.5})})));
    Run("rois", "rois.csv", {"--format", "csv"});
    EXPECT_EQ(BytesOf("rois.csv"), "group,roi,name,type,shape,vertex,x_pixel,y_pixel,x_um,y_um\n"
                                   "0,0,\"a \"\"spot\"\", small\",POINT,POINT,0,5.0,7.0,2.5,3.5\n");
}

TEST_F(ZelRois, OfSeveralGroupsShareNoSpace)
{
    const Regions spot({Dot("spot", {5.5, 7.5})});
    Write(Document().With(Stack(1).LayerBlob(spot)).With(Stack(2)).With(Stack(3).LayerBlob(spot)));
    ExpectRefusal("rois", "all.geojson", {},
                  "the groups 0, 2 have regions, each in pixels of its own; choose one by -g");
    EXPECT_EQ(GeoJson({"-g", "2"})["features"].size(), 1u);
    EXPECT_NE(Run("rois", "all.csv", {"--format", "csv"}).Output.find("2 regions"), std::string::npos);
}

TEST_F(ZelRois, HaveNoMicrometresWithoutCalibration)
{
    Write(Stack(1).Unit("pixel").Scale(1, 1).LayerBlob(Regions({Dot("spot", {5.5, 7.5})})));
    EXPECT_TRUE(GeoJson()["features"][0]["properties"]["micrometres"].is_null());
}

TEST_F(ZelRois, MayBeNone)
{
    Write(Stack(1));
    EXPECT_EQ(GeoJson()["features"], json::array());
    ExpectRefusal("rois", "none.geojson", {"-g", "1"}, "there is no group 1");
}

} // namespace
