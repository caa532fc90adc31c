// The points of a dimension: even or not, and the way from an index to a value and back.

#include "CommonImageAccess/Coordinate.h"
#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

constexpr uint32_t None = 0xFFFFFFFF;

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

Stack ZAt(std::vector<double> values)
{
    CStackDimension dimension;
    dimension.Meaning = DimensionMeaning::Z;
    dimension.NumOfPoints = static_cast<uint32_t>(values.size());
    return Small().Dimension(dimension).FrameCoordinates(DimensionMeaning::Z, std::move(values), "10^-6m^1");
}

struct EvennessRow : Row
{
    std::vector<double> Points;
    bool IsEven;
    double Gap;
};

class Evenness : public ZelSlide, public testing::WithParamInterface<EvennessRow>
{
};

TEST_P(Evenness, IsEqualityOfGapsToSixDigits)
{
    auto& image = ReadImage(ZAt(GetParam().Points));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_EQ(z.HasEvenlySpacedPoints(), GetParam().IsEven);
    EXPECT_EQ(z.NumOfPoints(), GetParam().Points.size());
    EXPECT_EQ(z.FirstPoint(), GetParam().Points.front());
    if (GetParam().IsEven)
        EXPECT_EQ(z.GapBetweenPoints(), GetParam().Gap);
    else
        EXPECT_FAILED_ASSERTION(z.GapBetweenPoints());
}

INSTANTIATE_TEST_SUITE_P(Points, Evenness,
                         testing::Values(EvennessRow{{"One"}, {4}, false, 0},
                                         EvennessRow{{"TwoAlways"}, {1, 1.123456789}, true, 1.123456789 - 1},
                                         EvennessRow{{"Three"}, {1, 2, 3}, true, 1},
                                         EvennessRow{{"NearlyThree"}, {1, 2, 3.0000001}, true, 1},
                                         EvennessRow{{"DifferentInTheSixthDigit"}, {1, 2, 3.00001}, false, 0},
                                         EvennessRow{{"Different"}, {1, 2, 3.5}, false, 0},
                                         EvennessRow{{"Falling"}, {5, 3, 1}, true, -2},
                                         EvennessRow{{"DifferentAtTheEnd"}, {0, 1, 2, 3, 5}, false, 0}),
                         NameOfRow());

class PointsOfADimension : public ZelSlide
{
};

TEST_F(PointsOfADimension, ThatAreUnevenAnswerTheLastOneBeforeAValue)
{
    auto& image = ReadImage(ZAt({1, 2, 3.5}));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_EQ(z.Idx(1), 0u);
    EXPECT_EQ(z.Idx(2.9), 1u);
    EXPECT_EQ(z.Idx(3.5), 2u);
    EXPECT_EQ(z.Idx(0.9), None);
    EXPECT_EQ(z.Idx(3.6), None);
}

TEST_F(PointsOfADimension, ThatFallUnevenlyAnswerTheLastOneBeforeAValue)
{
    auto& image = ReadImage(ZAt({9, 5, 4}));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_EQ(z.Idx(9), 0u);
    EXPECT_EQ(z.Idx(6), 0u);
    EXPECT_EQ(z.Idx(5), 1u);
    EXPECT_EQ(z.Idx(4), 2u);
    EXPECT_EQ(z.Idx(3), None);
    EXPECT_EQ(z.Idx(10), None);
}

TEST_F(PointsOfADimension, ThatAreEvenAnswerTheNearestOne)
{
    auto& image = ReadImage(Small().Z(5, 10, 2));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_EQ(z.Idx(10), 0u);
    EXPECT_EQ(z.Idx(10.9), 0u);
    EXPECT_EQ(z.Idx(11), 1u);
    EXPECT_EQ(z.Idx(18), 4u);
    EXPECT_EQ(z.Idx(18.1), None);
    EXPECT_EQ(z.Idx(9.9), None);
}

TEST_F(PointsOfADimension, ThatFallEvenlyAnswerTheNearestOne)
{
    auto& image = ReadImage(Small().Z(5, 10, -2));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_EQ(z.Idx(5), 3u); // 2.5 steps, rounded up
    EXPECT_EQ(z.Idx(2), 4u);
    EXPECT_EQ(z.Idx(10.1), None);
}

TEST_F(PointsOfADimension, HaveValuesWithinTheirNumber)
{
    auto& image = ReadImage(Small().Z(5, 10, 2));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_EQ(z.Value(4), 18);
    EXPECT_FAILED_ASSERTION(z.Value(5));
    EXPECT_TRUE(z.IsValidCoordIdx(4));
    EXPECT_FALSE(z.IsValidCoordIdx(5));
    EXPECT_EQ(z.MaxIdx(), 4u);
}

TEST_F(PointsOfADimension, KnowValuesBetweenTheirEnds)
{
    auto& rising = ReadImage(Small().Z(5, 10, 2));
    EXPECT_TRUE(DimensionOf(rising, DimZ).IsValidCoordinate(10));
    EXPECT_TRUE(DimensionOf(rising, DimZ).IsValidCoordinate(18));
    EXPECT_FALSE(DimensionOf(rising, DimZ).IsValidCoordinate(18.5));
    auto& falling = ReadImage(Small().Z(5, 10, -2));
    EXPECT_FAILED_ASSERTION(DimensionOf(falling, DimZ).IsValidCoordinate(10));
}

TEST_F(PointsOfADimension, OfChannelsAreCountedFromZero)
{
    auto& image = ReadImage(Small().Channels(3));
    CIA::CDimension& channels = DimensionOf(image, DimC);
    EXPECT_EQ(channels.NumOfPoints(), 3u);
    EXPECT_EQ(channels.FirstPoint(), 0);
    EXPECT_EQ(channels.GapBetweenPoints(), 1);
    EXPECT_EQ(channels.Idx(2), 2u);
}

TEST_F(PointsOfADimension, OfLevelsAreCountedWithThoseThatAreMissing)
{
    auto& image = ReadImage(Small().Level(0, Columns(0, 0), Rows(0, 0)).Level(3, Columns(0, 0), Rows(0, 0)));
    EXPECT_EQ(DimensionOf(image, DimP).NumOfPoints(), 4u);
}

TEST_F(PointsOfADimension, CountAsSignificantFromTwoOnUnlessTheDimensionIsMandatory)
{
    auto& image = ReadImage(Small().Z(1).T(2));
    std::vector<DimType> types;
    for (const auto& [type, dimension] : image.SignificantDimensions())
        types.push_back(type);
    EXPECT_THAT(types, ElementsAre(DimX, DimY, DimT, DimC, DimP));
}

// Coordinates.

TEST_F(PointsOfADimension, MakeCoordinatesOfAnIndex)
{
    auto& image = ReadImage(Small().Z(5, 10, 2));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_EQ(CIA::CCoordinate(3, z, nullptr).Value(), 16);
    EXPECT_FAILED_ASSERTION(CIA::CCoordinate(5, z, nullptr));
    EXPECT_FAILED_ASSERTION(CIA::CCoordinate(None, z, nullptr));
}

TEST_F(PointsOfADimension, MakeCoordinatesOfAValue)
{
    auto& image = ReadImage(Small().Z(5, 10, 2));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_EQ(CIA::CCoordinate(z, 16.0, nullptr).Index(), 3u);
    EXPECT_FAILED_ASSERTION(CIA::CCoordinate(z, 5.0, nullptr).Index());
    EXPECT_FAILED_ASSERTION(CIA::CCoordinate(z, 18.5, nullptr));
}

TEST_F(PointsOfADimension, OfPixelsGoOnBehindTheEnd)
{
    auto& image = ReadImage(Small().Scale(0.5, 0.5));
    CIA::CDimension& x = DimensionOf(image, DimX);
    EXPECT_EQ(CIA::CCoordinate(100, x, nullptr).Value(), 50);
}

} // namespace
