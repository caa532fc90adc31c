// Z, T and lambda as the frames of an image tell them.

#include "Tests/ZelLoader/Images/ZelSlide.h"

#include <cmath>

using namespace SlideOfTest;

namespace
{

const std::string StepIsZero = "Warnign! . If the step value is zero then we need to calculate the points by reading "
                               "the framesBut it is one because the number of point is may be 1 (number of point is "
                               "present at tag number 2007";
const std::string SeenWithEachCoordinate = "Warning:The input file has invalid data Or Optional fields may be present ";

std::string ReMarked(const std::string& dimension)
{
    return "Warning! found a coordinate absolute value for " + dimension +
           " even though this dimension was marked as evenly spaced! So now re-marking as being unevenly spaced...";
}

CStackDimension Untold(DimensionMeaning::E meaning, uint32_t numOfPoints)
{
    CStackDimension dimension;
    dimension.Meaning = meaning;
    dimension.NumOfPoints = numOfPoints;
    return dimension;
}

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

/// A stack along Z whose frames tell where they are.
Stack ZAt(std::vector<double> values)
{
    const auto count = static_cast<uint32_t>(values.size());
    return Small()
        .Dimension(Untold(DimensionMeaning::Z, count))
        .FrameCoordinates(DimensionMeaning::Z, std::move(values), "10^-6m^1");
}

class CoordinatesOfFrames : public ZelSlide
{
protected:
    std::vector<double> PointsOf(const Stack& stack, DimType type) { return PointsOf(Document().With(stack), type); }
    std::vector<double> PointsOf(Document document, DimType type)
    {
        return DimensionOf(ReadImage(std::move(document)), type).Points();
    }
};

TEST_F(CoordinatesOfFrames, AreThePointsOfADimensionWithoutAStep)
{
    auto& image = ReadImage(ZAt({-1, 0.5, 4}));
    CIA::CDimension& dimension = DimensionOf(image, DimZ);
    EXPECT_THAT(dimension.Points(), ElementsAre(-1, 0.5, 4));
    EXPECT_FALSE(dimension.HasEvenlySpacedPoints());
    EXPECT_EQ(dimension.NumOfPoints(), 3u);
    EXPECT_EQ(dimension.FirstPoint(), -1);
    EXPECT_EQ(dimension.LastPoint(), 4);
}

TEST_F(CoordinatesOfFrames, AreConvertedFromTheirOwnUnit)
{
    EXPECT_THAT(PointsOf(ZAt({0, 1}).FrameCoordinates(DimensionMeaning::Z, {1000, 5000}, "10^-9m^1"), DimZ),
                ElementsAre(1, 5));
    EXPECT_THAT(PointsOf(Small()
                             .Dimension(Untold(DimensionMeaning::T, 2))
                             .FrameCoordinates(DimensionMeaning::T, {250, 1500}, "10^-3s^1"),
                         DimT),
                ElementsAre(0.25, 1.5));
    EXPECT_THAT(PointsOf(Small()
                             .Dimension(Untold(DimensionMeaning::Lambda, 2))
                             .FrameCoordinates(DimensionMeaning::Lambda, {0.5, 0.75}, "10^-6m^1"),
                         DimL),
                ElementsAre(500, 750));
}

TEST_F(CoordinatesOfFrames, AreToldEachAndOnceMoreAtTheEnd)
{
    auto& image = ReadImage(ZAt({1, 2}));
    EXPECT_THAT(MessagesOf([&] { image.Dimensions(); }),
                ElementsAre(SeenWithEachCoordinate, SeenWithEachCoordinate, StepIsZero));
}

TEST_F(CoordinatesOfFrames, WinOverAStep)
{
    const Stack stack = Small().Z(3, 0, 1).FrameCoordinates(DimensionMeaning::Z, {0, 1, 5}, "10^-6m^1");
    auto& image = ReadImage(stack);
    EXPECT_THAT(
        MessagesOf([&] { image.Dimensions(); }),
        ElementsAre(ReMarked("Z"), SeenWithEachCoordinate, SeenWithEachCoordinate, SeenWithEachCoordinate, StepIsZero));
    EXPECT_THAT(DimensionOf(image, DimZ).Points(), ElementsAre(0, 1, 5));
}

TEST_F(CoordinatesOfFrames, ThatAreEvenMakeTheDimensionEvenAgain)
{
    auto& image = ReadImage(Small().T(3, 0, 1000).FrameCoordinates(DimensionMeaning::T, {2, 4, 6}, "10^0s^1"));
    EXPECT_THAT(MessagesOf([&] { image.Dimensions(); }), Contains(ReMarked("T")).Times(1));
    CIA::CDimension& dimension = DimensionOf(image, DimT);
    EXPECT_TRUE(dimension.HasEvenlySpacedPoints());
    EXPECT_EQ(dimension.FirstPoint(), 2);
    EXPECT_EQ(dimension.GapBetweenPoints(), 2);
    EXPECT_EQ(dimension.NumOfPoints(), 3u);
}

TEST_F(CoordinatesOfFrames, OfASingleFrameMakeADimensionOfOnePoint)
{
    auto& image = ReadImage(ZAt({7}));
    CIA::CDimension& dimension = DimensionOf(image, DimZ);
    EXPECT_FALSE(dimension.HasEvenlySpacedPoints());
    EXPECT_EQ(dimension.NumOfPoints(), 1u);
    EXPECT_EQ(dimension.Idx(7), 0u);
}

TEST_F(CoordinatesOfFrames, ThatAreSharedAddOnePoint)
{
    const Stack stack = ZAt({1, 3}).T(2);
    EXPECT_THAT(PointsOf(stack, DimZ), ElementsAre(1, 3));
}

/// Sets the coordinate that a frame tells along T, in seconds.
void SetT(Document& document, size_t frame, double seconds)
{
    document.Frame(1, frame).Put(Volume(2006, {Valued(2017, seconds, "10^0s^1")}));
}

TEST_F(CoordinatesOfFrames, AlongTAreTakenFromTheFirstFrameOfEachStep)
{
    Document document;
    document.With(Small().Z(3).Dimension(Untold(DimensionMeaning::T, 2)));
    // Three frames to a step; the clock ran on between them.
    const std::vector<double> seconds = {0, 0.1, 0.2, 10, 10.1, 10.2};
    for (size_t frame = 0; frame < seconds.size(); ++frame)
        SetT(document, frame, seconds[frame]);
    EXPECT_THAT(PointsOf(std::move(document), DimT), ElementsAre(0, 10));
}

TEST_F(CoordinatesOfFrames, AlongTAreTakenFromEachFrameWhereTIsFastest)
{
    Document document;
    document.With(Small().Dimension(Untold(DimensionMeaning::T, 2)).Z(3));
    const std::vector<double> seconds = {0, 10, 0, 10, 0, 10};
    for (size_t frame = 0; frame < seconds.size(); ++frame)
        SetT(document, frame, seconds[frame]);
    EXPECT_THAT(PointsOf(std::move(document), DimT), ElementsAre(0, 10));
}

TEST_F(CoordinatesOfFrames, AlongTAreCountedWithoutChannelsThatShareFrames)
{
    Document document;
    document.With(Small().Z(2).Dimension(Untold(DimensionMeaning::T, 2)).Channels(3).FramesSharedByChannels());
    const std::vector<double> seconds = {0, 0.5, 10, 10.5};
    for (size_t frame = 0; frame < seconds.size(); ++frame)
        SetT(document, frame, seconds[frame]);
    EXPECT_THAT(PointsOf(std::move(document), DimT), ElementsAre(0, 10));
}

TEST_F(CoordinatesOfFrames, MayNotBeMoreThanThePoints)
{
    Document document;
    document.With(ZAt({1, 2}).T(2));
    document.Frame(1, 3).Put(Volume(2006, {Valued(2014, 9, "10^-6m^1")}));
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

struct OrderRow : Row
{
    std::vector<double> Values;
    bool IsTaken;
};

class OrderOfCoordinates : public ZelSlide, public testing::WithParamInterface<OrderRow>
{
};

TEST_P(OrderOfCoordinates, IsCheckedFromTheFourthPointOn)
{
    auto& image = ReadImage(ZAt(GetParam().Values));
    EXPECT_EQ(AssertionOf([&] { image.Dimensions(); }).empty(), GetParam().IsTaken);
}

INSTANTIATE_TEST_SUITE_P(Orders, OrderOfCoordinates,
                         testing::Values(OrderRow{{"Rising"}, {0, 1, 3, 4, 9}, true},
                                         OrderRow{{"Falling"}, {9, 4, 3, 1, 0}, true},
                                         OrderRow{{"FourthFallsBack"}, {0, 1, 3, 2}, false},
                                         OrderRow{{"FourthRisesAgain"}, {9, 4, 3, 5}, false},
                                         OrderRow{{"FourthUnderTheFirst"}, {0, 1, 3, -1}, false},
                                         OrderRow{{"ThirdFallsBack"}, {0, 3, 1}, true}),
                         NameOfRow());

TEST_F(CoordinatesOfFrames, ThatFallBackAtTheThirdPointMakeNoOpenDocument)
{
    EXPECT_EQ(ResultOfOpening(ZAt({0, 3, 1})), AC_RESULT_FAILURE);
}

// Frames that tell nothing.

TEST_F(CoordinatesOfFrames, ThatAreAbsentAreCounted)
{
    for (const auto meaning : {DimensionMeaning::Z, DimensionMeaning::T, DimensionMeaning::Lambda})
    {
        const DimType type = meaning == DimensionMeaning::Z ? DimZ : meaning == DimensionMeaning::T ? DimT : DimL;
        auto& image = ReadImage(Small().Dimension(Untold(meaning, 3)).FramePropertiesAlways());
        CIA::CDimension& dimension = DimensionOf(image, type);
        EXPECT_THAT(dimension.Points(), ElementsAre(1, 2, 3));
        EXPECT_TRUE(dimension.HasEvenlySpacedPoints());
        EXPECT_EQ(dimension.GapBetweenPoints(), 1);
    }
}

TEST_F(CoordinatesOfFrames, ThatAreAbsentAreCountedAsFarAsTheListSaysAtTheDimensionsPlace)
{
    // The place among the real dimensions is 0, and there the list has the dummy's 1.
    const Stack stack = Small().Dummy().Dimension(Untold(DimensionMeaning::Z, 3)).FramePropertiesAlways();
    EXPECT_THAT(PointsOf(stack, DimZ), ElementsAre(1));
}

TEST_F(CoordinatesOfFrames, ThatAreAbsentLeaveAStepAlone)
{
    auto& image = ReadImage(Small().Z(3, 5, 1.5).FramePropertiesAlways());
    EXPECT_THAT(MessagesOf([&] { image.Dimensions(); }), IsEmpty());
    EXPECT_EQ(DimensionOf(image, DimZ).FirstPoint(), 5);
}

TEST_F(CoordinatesOfFrames, ThatAreAbsentAreNotCountedIntoAStepWhoseStartLooksLikeNone)
{
    // This start is the number that stands for a missing one.
    auto& image = ReadImage(Small().Z(3, 4294967295.0, 1.5, "10^-6m^1").FramePropertiesAlways());
    EXPECT_THAT(MessagesOf([&] { image.Dimensions(); }), ElementsAre("Warning dimMetaData.Points should be empty"));
    CIA::CDimension& z = DimensionOf(image, DimZ);
    EXPECT_THAT(z.Points(), IsEmpty());
    EXPECT_EQ(z.FirstPoint(), 4294967295.0);
    EXPECT_EQ(z.GapBetweenPoints(), 1.5);
}

TEST_F(CoordinatesOfFrames, ThatOnlySomeFramesHaveAreMixedWithTheCount)
{
    Document document;
    document.With(Small().Dimension(Untold(DimensionMeaning::Z, 3)).FramePropertiesAlways());
    document.Frame(1, 1).Put(Volume(2006, {Valued(2014, 1.5, "10^-6m^1")}));
    EXPECT_THAT(PointsOf(std::move(document), DimZ), ElementsAre(1, 1.5, 3));
}

// Values that cannot be.

struct ValueRow : Row
{
    std::function<CNode()> Coordinate;
};

class CoordinateOfAFrame : public ZelSlide, public testing::WithParamInterface<ValueRow>
{
};

TEST_P(CoordinateOfAFrame, BreaksARule)
{
    Document document;
    document.With(ZAt({1, 2, 3}));
    document.Frame(1, 1).Put(Volume(2006, {GetParam().Coordinate()}));
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

constexpr uint32_t TagOfValue = 268435458;
constexpr uint32_t TagOfUnit = 268435456;

INSTANTIATE_TEST_SUITE_P(
    Values, CoordinateOfAFrame,
    testing::Values(ValueRow{{"WithoutItsValue"}, [] { return Valued(2014, 2, "10^-6m^1").Drop(TagOfValue); }},
                    ValueRow{{"WithoutItsUnit"}, [] { return Valued(2014, 2, "10^-6m^1").Drop(TagOfUnit); }},
                    ValueRow{{"UnitOfTime"}, [] { return Valued(2014, 2, "10^-3s^1"); }},
                    ValueRow{{"UnitOfNothing"}, [] { return Valued(2014, 2, "furlong"); }},
                    ValueRow{{"NaN"}, [] { return Valued(2014, std::nan(""), "10^-6m^1"); }},
                    ValueRow{{"Infinity"}, [] { return Valued(2014, HUGE_VAL, "10^-6m^1"); }}),
    NameOfRow());

TEST_F(CoordinatesOfFrames, ThatAreNoNumbersAllMakeNoOpenDocument)
{
    EXPECT_EQ(ResultOfOpening(ZAt({std::nan(""), std::nan(""), std::nan("")})), AC_RESULT_FAILURE);
}

TEST_F(CoordinatesOfFrames, ThatAreInfiniteLeaveTheIndexesOfTheFrames)
{
    const Stack stack = ZAt({-HUGE_VAL, HUGE_VAL});
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(1)})), stack.TileBytes(0, 0, 0, {.Z = 1}));
    EXPECT_THAT(AxesOf(Tile(0, 0, L"0", {AtZ(1)})), ElementsAre(AtZ(1)));
}

// How many frames there are.

class NumberOfFrames : public ZelSlide
{
protected:
    static Document WithFramesDropped(const Stack& stack, size_t numOfFrames)
    {
        Document document;
        document.With(stack);
        while (document.StackVolume(1).NumOfChildren(2002) > numOfFrames)
            document.StackVolume(1).DropNth(2002, numOfFrames);
        return document;
    }
};

TEST_F(NumberOfFrames, MayBeThatWithoutChannelsInAStore)
{
    EXPECT_EQ(ResultOfOpening(Small().Z(2).Channels(2).FramesSharedByChannels()), AC_RESULT_SUCCESS);
}

TEST_F(NumberOfFrames, MustBeThatWithChannelsInDirectories)
{
    Document document = WithFramesDropped(Small().Z(2).Channels(2).InDocument(), 2);
    auto& image = ReadImage(document);
    EXPECT_THAT(MessagesOf([&] { EXPECT_THAT(image.Dimensions(), IsEmpty()); }),
                Contains("Warning : KOR File is  missing..."));
    EXPECT_EQ(ResultOfOpening(document), AC_RESULT_FAILURE);
}

TEST_F(NumberOfFrames, ThatFitsNeitherIsToldOnly)
{
    auto& image = ReadImage(WithFramesDropped(Small().Z(4).Channels(2), 3));
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.Dimensions().size(), 5u); }),
                Contains("Warnign! frameCount is not equal to  productOfNumOfPointsOfDimsExceptChannelDim"));
}

TEST_F(NumberOfFrames, IsAcceptedWithAStoreThatIsMissing)
{
    auto& image = ReadImage(WithFramesDropped(Small().Z(2).Channels(2).WithoutStore(), 3));
    EXPECT_EQ(image.Dimensions().size(), 5u);
}

} // namespace
