// The arithmetic behind the corners of turned rectangles, ellipses and circles, also where it breaks down.

#include "Tests/Properties/RegionsOfTest.h"
#include "Tests/Support/Assertion.h"
#include "ZelLoader/Images/ShapeGeometry.h"

using namespace SlideOfTest;
using Zel::CShapePoints;
using Point = CIA::CVectorGraphicsPoint;

namespace
{

CPoint ToPoint(const Point& point)
{
    return {point.X(), point.Y()};
}

std::vector<CPoint> ToPoints(const CShapePoints& points)
{
    std::vector<CPoint> result;
    for (const Point& point : points)
        result.push_back(ToPoint(point));
    return result;
}

std::vector<CPoint> Reworked(const char* shapeClass, CShapePoints points)
{
    Zel::ModifyShapePointsAsPerBrixRequirements(points, shapeClass);
    return ToPoints(points);
}

// ---- The fourth corner of a rectangle ----

struct CornerRow : Row
{
    Point P1;
    Point P2; ///< the corner between the other two
    Point P3;
    CPoint Fourth;
};

class FourthCorner : public testing::TestWithParam<CornerRow>
{
};

TEST_P(FourthCorner, LiesOppositeToTheOneInTheMiddle)
{
    const CornerRow& row = GetParam();
    EXPECT_PRED2(AreClose, ToPoint(Zel::Calc4thCoordOf3PtRect(row.P1, row.P2, row.P3)), row.Fourth);
}

INSTANTIATE_TEST_SUITE_P(Rectangles, FourthCorner,
                         testing::Values(CornerRow{{"LevelThenUpright"}, {30, 10}, {10, 10}, {10, 20}, {30, 20}},
                                         CornerRow{{"UprightThenLevel"}, {10, 30}, {10, 10}, {40, 10}, {40, 30}},
                                         CornerRow{{"By45Degrees"}, {130, 100}, {100, 70}, {80, 90}, {110, 120}},
                                         CornerRow{{"ByThreeToFour"}, {104, 103}, {100, 100}, {97, 104}, {101, 107}}),
                         NameOfRow());

struct NoCornerRow : Row
{
    std::array<Point, 3> Points;
};

class NoFourthCorner : public testing::TestWithParam<NoCornerRow>
{
};

TEST_P(NoFourthCorner, IsNoNumber)
{
    const auto& [p1, p2, p3] = GetParam().Points;
    const Point fourth = Zel::Calc4thCoordOf3PtRect(p1, p2, p3);
    EXPECT_FALSE(std::isfinite(fourth.X()) && std::isfinite(fourth.Y()));
}

INSTANTIATE_TEST_SUITE_P(Degenerate, NoFourthCorner,
                         testing::Values(NoCornerRow{{"OnALevelLine"}, {{{0, 5}, {10, 5}, {20, 5}}}},
                                         NoCornerRow{{"OnAnUprightLine"}, {{{5, 0}, {5, 10}, {5, 20}}}},
                                         NoCornerRow{{"OnASlope"}, {{{0, 0}, {1, 2}, {2, 4}}}},
                                         NoCornerRow{{"OnePoint"}, {{{3, 3}, {3, 3}, {3, 3}}}}),
                         NameOfRow());

TEST(FourthCornerOfAPointAndALevelSide, IsTheEndOfTheSide)
{
    // The slope of a point to itself is no number; beside a level side that counts as upright.
    EXPECT_PRED2(AreClose, ToPoint(Zel::Calc4thCoordOf3PtRect({10, 5}, {0, 5}, {0, 5})), (CPoint{10, 5}));
}

TEST(OtherSideOfTheMiddle, IsAsFarFromItAsTheFirst)
{
    EXPECT_EQ(ToPoint(Zel::CalcP2FromP1AndMidpoint({1, 2}, {4, -2})), (CPoint{7, -6}));
}

// ---- The centre of a circle ----

struct CentreRow : Row
{
    Point A;
    Point B;
    Point C;
    CPoint Centre;
};

class CentreOfCircle : public testing::TestWithParam<CentreRow>
{
};

TEST_P(CentreOfCircle, FollowsFromThreePointsOnIt)
{
    const CentreRow& row = GetParam();
    EXPECT_PRED2(AreClose, ToPoint(Zel::GetCenterOfCircleFor3ptCircle(row.A, row.B, row.C)), row.Centre);
}

INSTANTIATE_TEST_SUITE_P(Points, CentreOfCircle,
                         testing::Values(CentreRow{{"NoTwoUpright"}, {-5, 0}, {0, 5}, {4, 3}, {0, 0}},
                                         CentreRow{{"Elsewhere"}, {95, 200}, {100, 205}, {104, 203}, {100, 200}},
                                         CentreRow{{"LastTwoUpright"}, {-5, 0}, {4, 3}, {4, -3}, {0, 0}},
                                         // Half of 104 - 95 + (100 - 103) * -1 / 3: the 104 less 95 is a difference on
                                         // purpose, so that the centre is not where the circle has it, at (100, 100).
                                         CentreRow{{"FirstTwoUpright"}, {104, 103}, {104, 97}, {95, 100}, {5, 100}}),
                         NameOfRow());

TEST(CentreOfThreePoints, OnALineIsInfinitelyFar)
{
    const Point centre = Zel::GetCenterOfCircleFor3ptCircle({0, 0}, {1, 1}, {2, 2});
    EXPECT_FALSE(std::isfinite(centre.X()));
}

TEST(CentreOfThreePoints, OnAnUprightLineIsNoNumber)
{
    const Point centre = Zel::GetCenterOfCircleFor3ptCircle({5, 0}, {5, 1}, {5, 2});
    EXPECT_FALSE(std::isfinite(centre.X()) && std::isfinite(centre.Y()));
}

TEST(SquareAroundACircle, BeginsAtItsLowerLeft)
{
    EXPECT_EQ(ToPoints(Zel::GetEnclosingRectCoordsFor2ptCircle({5, 5}, {8, 9})),
              (std::vector<CPoint>{{0, 10}, {10, 10}, {10, 0}, {0, 0}}));
}

TEST(SquareAroundACircle, HasTheRadiusOfTheFirstOfThreePoints)
{
    // The centre is (5, 100), by the row FirstTwoUpright; the first point lies 99 and 3 from it.
    const double radius = std::sqrt(99.0 * 99 + 3 * 3);
    EXPECT_THAT(ToPoints(Zel::GetEnclosingRectCoordsFor3ptCircle({104, 103}, {104, 97}, {95, 100})),
                AreThePoints({{5 - radius, 100 + radius},
                              {5 + radius, 100 + radius},
                              {5 + radius, 100 - radius},
                              {5 - radius, 100 - radius}}));
}

// ---- Points as they were drawn ----

TEST(HalfAPixel, IsTakenFromBothCoordinates)
{
    EXPECT_EQ(ToPoints(Zel::ReducedByPoint5({{0, 1}, {-2, 3.5}})), (std::vector<CPoint>{{-0.5, 0.5}, {-2.5, 3}}));
    EXPECT_TRUE(Zel::ReducedByPoint5({}).empty());
}

TEST(Rework, LeavesIgnoredClassesAlone)
{
    EXPECT_EQ(Reworked("xv.multicircle2p", {{1, 2}, {3, 4}}), (std::vector<CPoint>{{1, 2}, {3, 4}}));
}

TEST(Rework, NeedsPointsEvenOfIgnoredClasses)
{
    EXPECT_FAILED_ASSERTION(Reworked("xv.multicircle2p", {}));
    EXPECT_FAILED_ASSERTION(Reworked(ShapeClass::FreeLine, {}));
}

TEST(Rework, OfAnUnknownClassEndsTheProcess)
{
    EXPECT_ENDS_THE_PROCESS(Reworked("xv.any.other", {{1, 2}}),
                            "Unhandled shapeClass 'xv.any.other'!(.|\n)*" ABORT_WAS_CALLED);
}

} // namespace
