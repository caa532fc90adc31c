// What becomes of each class of shapes, in both forms in which documents store them. Points are worked out by hand;
// those that hosts get lie half a pixel further left and up.

#include "Tests/Properties/RegionsOfTest.h"

using namespace SlideOfTest;

namespace
{

struct ShapeRow : Row
{
    CRegion Drawn;
    std::string Type;
    std::string Shape;
    std::vector<CPoint> Points;
};

class StoredShape : public RegionsOfModel, public testing::WithParamInterface<ShapeRow>
{
protected:
    void ExpectTheRow() const
    {
        const std::vector<CRegionOfModel> all = All();
        ASSERT_EQ(all.size(), 1U);
        EXPECT_EQ(all.front().Name, "drawn");
        EXPECT_EQ(all.front().Type, GetParam().Type);
        EXPECT_EQ(all.front().Shape, GetParam().Shape);
        EXPECT_THAT(all.front().Points, AreThePoints(GetParam().Points));
    }
};
class ShapeInXml : public StoredShape
{
};
class ShapeInTags : public StoredShape
{
};

TEST_P(ShapeInXml, BecomesWhatHostsWant)
{
    Open(Regions({GetParam().Drawn}).AsXml());
    ExpectTheRow();
}

TEST_P(ShapeInTags, BecomesWhatHostsWant)
{
    Open(Regions({GetParam().Drawn}).AsTree());
    ExpectTheRow();
}

ShapeRow Clip(std::string name, const char* shape, const char* shapeClass, std::vector<CPoint> drawn,
              std::vector<CPoint> points)
{
    return {{std::move(name)}, CRegion(shapeClass, "drawn", std::move(drawn)), "CLIP", shape, std::move(points)};
}
ShapeRow Line(std::string name, const char* shapeClass, std::vector<CPoint> drawn, std::vector<CPoint> points)
{
    return {{std::move(name)}, CRegion(shapeClass, "drawn", std::move(drawn)), "LINE", "LINE", std::move(points)};
}

const auto ShapesOfBothForms = testing::Values(
    Clip("Rectangle", "POLYGON", ShapeClass::TwoPointRectangle, {{10, 20}, {30, 40}},
         {{9.5, 19.5}, {29.5, 19.5}, {29.5, 39.5}, {9.5, 39.5}}),
    Clip("RectangleOfNoSize", "POLYGON", ShapeClass::TwoPointRectangle, {{10, 20}, {10, 20}},
         {{9.5, 19.5}, {9.5, 19.5}, {9.5, 19.5}, {9.5, 19.5}}),
    Clip("RectangleDrawnBackwards", "POLYGON", ShapeClass::TwoPointRectangle, {{30, 40}, {10, 20}},
         {{29.5, 39.5}, {9.5, 39.5}, {9.5, 19.5}, {29.5, 19.5}}),
    // Corner, end of the first side, end of the second side: the fourth corner is first + second - corner.
    Clip("RotatedRectangleAlongTheAxes", "POLYGON", ShapeClass::RotatedRectangle, {{10, 10}, {30, 10}, {10, 20}},
         {{9.5, 9.5}, {29.5, 9.5}, {29.5, 19.5}, {9.5, 19.5}}),
    Clip("RotatedRectangleWithItsFirstSideUpright", "POLYGON", ShapeClass::RotatedRectangle,
         {{10, 10}, {10, 30}, {40, 10}}, {{9.5, 9.5}, {9.5, 29.5}, {39.5, 29.5}, {39.5, 9.5}}),
    Clip("RotatedRectangleTurned", "POLYGON", ShapeClass::RotatedRectangle, {{100, 70}, {130, 100}, {80, 90}},
         {{99.5, 69.5}, {129.5, 99.5}, {109.5, 119.5}, {79.5, 89.5}}),
    // A radius of 5: (8 - 5, 9 - 5) is 3, 4.
    Clip("CircleOfTwoPoints", "ELLIPSE", ShapeClass::TwoPointCircle, {{5, 5}, {8, 9}},
         {{-0.5, 9.5}, {9.5, 9.5}, {9.5, -0.5}, {-0.5, -0.5}}),
    Clip("CircleOfNoSize", "ELLIPSE", ShapeClass::TwoPointCircle, {{5, 5}, {5, 5}},
         {{4.5, 4.5}, {4.5, 4.5}, {4.5, 4.5}, {4.5, 4.5}}),
    // Around (100, 100) with a radius of 5, as 3, 4 and 5 make a right angle.
    Clip("CircleOfThreePoints", "ELLIPSE", ShapeClass::ThreePointCircle, {{95, 100}, {100, 105}, {104, 103}},
         {{94.5, 104.5}, {104.5, 104.5}, {104.5, 94.5}, {94.5, 94.5}}),
    Clip("CircleOfThreePointsTheLastTwoUpright", "ELLIPSE", ShapeClass::ThreePointCircle,
         {{95, 100}, {104, 103}, {104, 97}}, {{94.5, 104.5}, {104.5, 104.5}, {104.5, 94.5}, {94.5, 94.5}}),
    // Axes of (20, 0) and (0, 10) around (50, 50).
    Clip("EllipseAlongTheAxes", "ELLIPSE", ShapeClass::RotatedEllipse, {{50, 50}, {70, 50}, {50, 60}},
         {{29.5, 59.5}, {69.5, 59.5}, {69.5, 39.5}, {29.5, 39.5}}),
    // Axes of (30, 40) and (-8, 6), at right angles, around (100, 100): the corners are the centre with both added or
    // taken away.
    Clip("EllipseTurned", "ELLIPSE", ShapeClass::RotatedEllipse, {{100, 100}, {130, 140}, {92, 106}},
         {{61.5, 65.5}, {121.5, 145.5}, {137.5, 133.5}, {77.5, 53.5}}),
    Clip("Polygon", "POLYGON", ShapeClass::Polygon, {{0, 0}, {9, 0}, {5, 7}}, {{-0.5, -0.5}, {8.5, -0.5}, {4.5, 6.5}}),
    Clip("FreePolygon", "POLYGON", ShapeClass::FreePolygon, {{1, 2}, {3, 4}, {5, 7}, {0, 9}},
         {{0.5, 1.5}, {2.5, 3.5}, {4.5, 6.5}, {-0.5, 8.5}}),
    Line("Line", ShapeClass::Line, {{60, 100}, {140, 105}}, {{59.5, 99.5}, {139.5, 104.5}}),
    Line("Polyline", ShapeClass::Polyline, {{1, 2}, {3, 4}, {5, 7}}, {{0.5, 1.5}, {2.5, 3.5}, {4.5, 6.5}}),
    Line("FreeLine", ShapeClass::FreeLine, {{1, 2}, {3, 4}}, {{0.5, 1.5}, {2.5, 3.5}}),
    Line("FreeLineOfOnePoint", ShapeClass::FreeLine, {{1, 2}}, {{0.5, 1.5}}),
    ShapeRow{{"Dot"}, Dot("drawn", {100.25, 50}), "POINT", "POINT", {{99.75, 49.5}}});

INSTANTIATE_TEST_SUITE_P(Shapes, ShapeInXml, ShapesOfBothForms, NameOfRow());
INSTANTIATE_TEST_SUITE_P(Shapes, ShapeInTags, ShapesOfBothForms, NameOfRow());

// Classes of which the tags do not tell the points, or that were never seen in tags.
INSTANTIATE_TEST_SUITE_P(
    ShapesOfXml, ShapeInXml,
    testing::Values(
        Clip("InterpolatedPolygon", "POLYGON", ShapeClass::InterpolatedPolygon, {{1, 2}, {3, 4}, {5, 7}},
             {{0.5, 1.5}, {2.5, 3.5}, {4.5, 6.5}}),
        Clip("MagicWand", "POLYGON", ShapeClass::MagicWand, {{1, 2}, {3, 4}, {5, 7}},
             {{0.5, 1.5}, {2.5, 3.5}, {4.5, 6.5}}),
        ShapeRow{{"Origin"}, CRegion(ShapeClass::Origin, "drawn", {{7, 8}}), "POINT", "POINT", {{6.5, 7.5}}},
        Line("PerpendicularDistance", ShapeClass::PerpendicularDistance, {{1, 2}, {3, 4}, {5, 7}},
             {{0.5, 1.5}, {2.5, 3.5}, {4.5, 6.5}}),
        // A line from centre to centre; the second circle is the first one, 100 further right.
        Line("TwoCircles", ShapeClass::TwoThreePointCircles,
             {{95, 100}, {100, 105}, {104, 103}, {195, 100}, {200, 105}, {204, 103}}, {{99.5, 99.5}, {199.5, 99.5}})),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(ShapesOfTags, ShapeInTags,
                         testing::Values(Clip("InterpolatedPolygonWithoutPoints", "POLYGON",
                                              ShapeClass::InterpolatedPolygon, {{1, 2}, {3, 4}, {5, 7}}, {}),
                                         Clip("MagicWandWithoutPoints", "POLYGON", ShapeClass::MagicWand,
                                              {{1, 2}, {3, 4}, {5, 7}}, {}),
                                         // Nobody counts the points of a polygon here.
                                         Clip("PolygonOfTwoPoints", "POLYGON", ShapeClass::Polygon, {{1, 2}, {3, 4}},
                                              {{0.5, 1.5}, {2.5, 3.5}}),
                                         Clip("PolygonOfNoPoints", "POLYGON", ShapeClass::Polygon, {}, {})),
                         NameOfRow());

CRegion With(CRegion region, RegionGeometry::E geometry)
{
    region.Geometry = geometry;
    return region;
}

TEST_F(RegionsOfModel, CirclesInTagsAreToldByTheirTagsAndNotByTheirClass)
{
    Open(Regions(
             {With(CRegion(ShapeClass::TwoPointCircle, "by three", {{95, 100}, {100, 105}, {104, 103}}),
                   RegionGeometry::ThreePointCircle),
              With(CRegion(ShapeClass::ThreePointCircle, "by two", {{5, 5}, {8, 9}}), RegionGeometry::TwoPointCircle)})
             .AsTree());
    EXPECT_THAT(All().at(0).Points, AreThePoints({{94.5, 104.5}, {104.5, 104.5}, {104.5, 94.5}, {94.5, 94.5}}));
    EXPECT_THAT(All().at(1).Points, AreThePoints({{-0.5, 9.5}, {9.5, 9.5}, {9.5, -0.5}, {-0.5, -0.5}}));
}

TEST_F(RegionsOfModel, RectanglesInTagsAreToldByTheirTagsAndNotByTheirClass)
{
    Open(Regions(
             {With(CRegion(ShapeClass::RotatedRectangle, "straight", {{10, 20}, {30, 40}}), RegionGeometry::Rectangle)})
             .AsTree());
    EXPECT_THAT(All().at(0).Points, AreThePoints({{9.5, 19.5}, {29.5, 19.5}, {29.5, 39.5}, {9.5, 39.5}}));
}

TEST_F(RegionsOfModel, PointsInTagsAreAsManyAsTheirCountSays)
{
    CRegion polygon = Polygon("polygon", {{1, 2}, {3, 4}, {5, 7}, {0, 9}});
    polygon.NumOfPoints = 2;
    Open(Regions({polygon}).AsTree());
    EXPECT_THAT(All().at(0).Points, AreThePoints({{0.5, 1.5}, {2.5, 3.5}}));
}

// ---- Classes that are no regions ----

class IgnoredClass : public RegionsOfModel, public testing::WithParamInterface<const char*>
{
protected:
    Regions Drawn() const
    {
        return Regions({Dot("first", {1, 2}), CRegion(GetParam(), "ignored", {{1, 2}, {3, 4}}), Dot("last", {3, 4})});
    }
    void ExpectItIsIgnored()
    {
        const auto messages = MessagesOf([&] { EXPECT_THAT(Names(), ElementsAre("first", "last")); });
        EXPECT_THAT(messages,
                    Contains(std::string("Note: intentionally ignoring the specific ROI '") + GetParam() + "'"));
        EXPECT_THAT(Ids(), ElementsAre("text 0", "text 1"));
    }
};

TEST_P(IgnoredClass, LeavesNoGapAmongTheIdsInXml)
{
    Open(Drawn().AsXml());
    ExpectItIsIgnored();
}

TEST_P(IgnoredClass, LeavesNoGapAmongTheIdsInTags)
{
    Open(Drawn().AsTree());
    ExpectItIsIgnored();
}

INSTANTIATE_TEST_SUITE_P(Classes, IgnoredClass,
                         testing::Values("xv.angle.threepoint.meas", "xv.angle.fourpoint.meas", "xv.angle.ruler.meas",
                                         "xv.throatthickness", "xv.multipointsonline", "xv.multicircle2p",
                                         "xv.multicircle3p", "xv.3dline.meas", "xv.righttriangle.meas",
                                         "xv.multiperpdist", "xv.asymmetrydist"));

TEST_F(RegionsOfModel, UnknownClassesInTagsArePassedOver)
{
    Open(Regions({CRegion("xv.any.other", "odd", {{1, 2}}), Dot("last", {3, 4})}).AsTree());
    EXPECT_THAT(MessagesOf([&] { EXPECT_THAT(Names(), ElementsAre("last")); }),
                Contains("Warning: Unexpected shapeClassValue 'xv.any.other'! Ignoring it..."));
}

TEST_F(RegionsOfModel, UnknownClassesInXmlEndTheProcess)
{
    Open(Regions({CRegion("xv.any.other", "odd", {{1, 2}})}).AsXml());
    EXPECT_ENDS_THE_PROCESS(ResultOfList(),
                            "Warning: Ignoring the shape class 'xv.any.other' as not clear how to map it to the "
                            "required BRIX types and shapes\\.(.|\n)*" ABORT_WAS_CALLED);
}

TEST_F(RegionsOfModel, PointsThatTagsDoNotTellAreWarnedOf)
{
    Open(Regions({CRegion(ShapeClass::MagicWand, "wand", {{1, 2}, {3, 4}, {5, 7}})}).AsTree());
    EXPECT_THAT(MessagesOf([&] { Names(); }),
                Contains(testing::AllOf(HasSubstr("Warning"), HasSubstr("'xv.magicwand.meas'"))));
}

struct DeadlyRow : Row
{
    const char* ShapeClass;
    const char* Note;
};

class DeadlyClass : public RegionsOfModel, public testing::WithParamInterface<DeadlyRow>
{
};

TEST_P(DeadlyClass, EndsTheProcessInTags)
{
    Open(Regions({CRegion(GetParam().ShapeClass, "deadly", {{1, 2}})}).AsTree());
    EXPECT_ENDS_THE_PROCESS(ResultOfList(), std::string(GetParam().ShapeClass) + "(.|\n)*" + GetParam().Note +
                                                "(.|\n)*" ABORT_WAS_CALLED);
}

INSTANTIATE_TEST_SUITE_P(
    Classes, DeadlyClass,
    testing::Values(DeadlyRow{{"Origin"}, ShapeClass::Origin, "TODO: Update XLS with this image name!!"},
                    DeadlyRow{{"PerpendicularDistance"}, ShapeClass::PerpendicularDistance, "TODO: NOTE THIS DOWN!"},
                    DeadlyRow{{"TwoCircles"}, ShapeClass::TwoThreePointCircles, "TODO: update xls for this"}),
    NameOfRow());

// ---- How many points a shape is drawn with ----

struct CountRow : Row
{
    const char* ShapeClass;
    size_t Least;
    size_t Most; ///< 0: any number
};

class CountOfPoints : public RegionsOfModel, public testing::WithParamInterface<CountRow>
{
protected:
    AC_Result ResultOf(size_t numOfPoints)
    {
        std::vector<CPoint> points;
        for (size_t i = 0; i < numOfPoints; ++i)
            points.push_back({static_cast<double>(i * i), static_cast<double>(i)});
        Open(Regions({CRegion(GetParam().ShapeClass, "drawn", points)}).AsXml());
        return ResultOfList();
    }
};

TEST_P(CountOfPoints, InXmlHasToBeRight)
{
    EXPECT_EQ(ResultOf(GetParam().Least - 1), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOf(GetParam().Least), AC_RESULT_SUCCESS);
    EXPECT_EQ(ResultOf(GetParam().Least + 1), GetParam().Most == 0 ? AC_RESULT_SUCCESS : AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(Classes, CountOfPoints,
                         testing::Values(CountRow{{"Rectangle"}, ShapeClass::TwoPointRectangle, 2, 2},
                                         CountRow{{"RotatedRectangle"}, ShapeClass::RotatedRectangle, 3, 3},
                                         CountRow{{"Ellipse"}, ShapeClass::RotatedEllipse, 3, 3},
                                         CountRow{{"CircleOfTwoPoints"}, ShapeClass::TwoPointCircle, 2, 2},
                                         CountRow{{"CircleOfThreePoints"}, ShapeClass::ThreePointCircle, 3, 3},
                                         CountRow{{"TwoCircles"}, ShapeClass::TwoThreePointCircles, 6, 6},
                                         CountRow{{"Polygon"}, ShapeClass::Polygon, 3, 0},
                                         CountRow{{"InterpolatedPolygon"}, ShapeClass::InterpolatedPolygon, 3, 0},
                                         CountRow{{"FreePolygon"}, ShapeClass::FreePolygon, 3, 0},
                                         CountRow{{"MagicWand"}, ShapeClass::MagicWand, 3, 0},
                                         CountRow{{"Polyline"}, ShapeClass::Polyline, 2, 0},
                                         CountRow{{"Line"}, ShapeClass::Line, 2, 2},
                                         CountRow{{"Dot"}, ShapeClass::Dot, 1, 1},
                                         CountRow{{"Origin"}, ShapeClass::Origin, 1, 1},
                                         CountRow{{"PerpendicularDistance"}, ShapeClass::PerpendicularDistance, 3, 3},
                                         CountRow{{"FreeLine"}, ShapeClass::FreeLine, 1, 0}),
                         NameOfRow());

TEST_F(RegionsOfModel, PointsMustBeThereInXml)
{
    CRegion dot = Dot("dot", {1, 2});
    dot.HasPoints = false;
    Open(Regions({dot}).AsXml());
    EXPECT_EQ(ResultOfList(), AC_RESULT_FAILURE);
}

} // namespace
