// X and Y of an image: its size, scale, units and origin.

#include "CommonImageAccess/PixelDimension.h"
#include "Tests/ZelLoader/Images/ZelSlide.h"

#include <cmath>

using namespace SlideOfTest;

namespace
{

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

CIA::CPixelDimension& PixelDim(CIA::CDimension& dimension)
{
    return dynamic_cast<CIA::CPixelDimension&>(dimension);
}

class PixelDimensions : public ZelSlide
{
protected:
    /// The document without a field of its first stack's properties.
    static Document Without(Document document, uint32_t tag)
    {
        document.StackProperties(document.Stacks().front().Id()).Drop(tag);
        return document;
    }
    static Document Without(const Stack& stack, uint32_t tag) { return Without(Document().With(stack), tag); }
};

TEST_F(PixelDimensions, AreAsLongAsThePicture)
{
    auto& image = ReadImage(Stack(1).Size(1000, 400).Tiles(256, 256));
    EXPECT_EQ(DimensionOf(image, DimX).NumOfPoints(), 1000u);
    EXPECT_EQ(DimensionOf(image, DimY).NumOfPoints(), 400u);
    EXPECT_TRUE(DimensionOf(image, DimX).IsEachPointAPixel());
    EXPECT_STREQ(DimensionOf(image, DimX).Name(), L"X (slide length) Dimension");
    EXPECT_STREQ(DimensionOf(image, DimY).Name(), L"Y (slide breadth) Dimension");
}

struct ScaleRow : Row
{
    Stack Of;
    double GapOfX;
    double GapOfY;
    const wchar_t* Units;
};

class ScaleOfPixels : public ZelSlide, public testing::WithParamInterface<ScaleRow>
{
};

TEST_P(ScaleOfPixels, IsInMicrometresOrInPixels)
{
    auto& image = ReadImage(GetParam().Of);
    EXPECT_DOUBLE_EQ(DimensionOf(image, DimX).GapBetweenPoints(), GetParam().GapOfX);
    EXPECT_DOUBLE_EQ(DimensionOf(image, DimY).GapBetweenPoints(), GetParam().GapOfY);
    for (const DimType type : {DimX, DimY})
    {
        if (GetParam().Units)
            EXPECT_STREQ(DimensionOf(image, type).Units(), GetParam().Units);
        else
            EXPECT_EQ(DimensionOf(image, type).Units(), nullptr);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Scales, ScaleOfPixels,
    testing::Values(
        ScaleRow{{"Micrometres"}, Small().Scale(0.5, 0.25).Unit("10^-6m^1"), 0.5, 0.25, L"10^-6m^1"},
        ScaleRow{{"Nanometres"}, Small().Scale(500, 250).Unit("10^-9m^1"), 0.5, 0.25, L"10^-6m^1"},
        ScaleRow{
            {"AnotherUnitForY"}, Small().Scale(0.5, 250).Unit("10^-6m^1").YUnit("10^-9m^1"), 0.5, 0.25, L"10^-6m^1"},
        ScaleRow{{"NoLength"}, Small().Scale(1, 1).Unit("pixel"), 1, 1, nullptr},
        ScaleRow{{"MetresAreNoLength"}, Small().Scale(1, 1).Unit("10^0m^1"), 1, 1, nullptr},
        ScaleRow{{"EmptyUnit"}, Small().Scale(1, 1).Unit(""), 1, 1, nullptr}),
    NameOfRow());

TEST_F(PixelDimensions, MustBeScaledByOneWithoutALength)
{
    EXPECT_EQ(ResultOfOpening(Small().Scale(0.5, 0.5).Unit("pixel")), AC_RESULT_SUCCESS);
    CMN_RECT rect = {};
    EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(), 0, &rect), AC_RESULT_FAILURE);
}

TEST_F(PixelDimensions, AreOnePixelApartWithoutAScaleWhereTheImageIsAlone)
{
    Open(Without(Small(), 2019));
    EXPECT_THAT(MessagesOf(
                    [&] {
                        EXPECT_EQ(LevelRect(Group(), 0), (CMN_RECT{0, 0, 8, 8}));
                    }),
                Contains("Missing mandatory tag 2001\\2005\\2019!!!"));
    EXPECT_EQ(DimensionOf(ImageOf(), DimX).GapBetweenPoints(), 1);
}

TEST_F(PixelDimensions, AreNotKnownWithoutAScaleWhereTheImageHasCompany)
{
    Open(Without(Document().With(Small()).With(Stack(2)), 2019));
    EXPECT_TRUE(std::isnan(DimensionOf(ImageOf(), DimX).GapBetweenPoints()));
    CMN_RECT rect = {};
    EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(), 0, &rect), AC_RESULT_FAILURE);
}

TEST_F(PixelDimensions, TellThatTheyHaveNoUnits)
{
    auto& image = ReadImage(Without(Small(), 2020));
    for (const DimType type : {DimX, DimY})
    {
        CIA::CDimension& dimension = DimensionOf(image, type);
        EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(dimension.NativeUnits(), nullptr); }),
                    ElementsAre(std::string("WARNING: Could not find units for dim '") +
                                CIA::DimensionTypeToString(type) + "'!"));
        EXPECT_TRUE(std::isnan(dimension.GapBetweenPoints()));
    }
}

/// A field that is read as a text, and whose text has no end.
CNode TextWithoutAnEnd(uint32_t tag)
{
    return Int32s(tag, {'1', '0', '^', '-', '6', 'm', '^', '1'});
}

TEST_F(PixelDimensions, HaveTheUnitThatStandsBeforeTheFirstZero)
{
    Document document;
    document.With(Small().Scale(500, 500));
    document.StackProperties(1).Put(Text(2020, std::u16string_view(u"10^-9m^1\0 and more", 18)));
    auto& image = ReadImage(std::move(document));
    EXPECT_STREQ(DimensionOf(image, DimX).NativeUnits(), L"10^-9m^1");
    EXPECT_DOUBLE_EQ(DimensionOf(image, DimX).GapBetweenPoints(), 0.5);
}

TEST_F(PixelDimensions, HaveNoUnitsInATextWithoutAnEnd)
{
    Document document;
    document.With(Small());
    document.StackProperties(1).Put(TextWithoutAnEnd(2020));
    auto& image = ReadImage(std::move(document));
    for (const DimType type : {DimX, DimY})
        EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(DimensionOf(image, type).NativeUnits(), nullptr); }),
                    ElementsAre("unexpected: string length longer than array size!"));
}

TEST_F(PixelDimensions, HaveNoUnitOfYInATextWithoutAnEnd)
{
    Document document;
    document.With(Small());
    document.StackProperties(1).Put(TextWithoutAnEnd(2064));
    auto& image = ReadImage(std::move(document));
    EXPECT_STREQ(DimensionOf(image, DimX).NativeUnits(), L"10^-6m^1");
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(DimensionOf(image, DimY).NativeUnits(), nullptr); }),
                ElementsAre("unexpected: string length longer than array size!"));
}

TEST_F(PixelDimensions, TakeTheUnitOfYOnlyBesideThatOfX)
{
    auto& image = ReadImage(Without(Small().YUnit("10^-9m^1"), 2020));
    EXPECT_EQ(DimensionOf(image, DimY).NativeUnits(), nullptr);
}

struct ArrayRow : Row
{
    uint32_t Tag;
    std::vector<double> Values;
};

class ArrayOfPixelDimensions : public ZelSlide, public testing::WithParamInterface<ArrayRow>
{
};

TEST_P(ArrayOfPixelDimensions, MustHoldTwoSoundNumbers)
{
    Document document;
    document.With(Small());
    document.StackProperties(1).Put(Doubles(GetParam().Tag, GetParam().Values));
    AC_Result result = ResultOfOpening(std::move(document));
    CMN_RECT rect = {};
    if (result == AC_RESULT_SUCCESS)
        result = Call(_AC_GetLevelImageSize, Group(), 0, &rect);
    EXPECT_EQ(result, AC_RESULT_FAILURE);
}

constexpr uint32_t Origin = 2018;
constexpr uint32_t Scale = 2019;
const double NaN = std::nan("");

INSTANTIATE_TEST_SUITE_P(
    Arrays, ArrayOfPixelDimensions,
    testing::Values(ArrayRow{{"OriginOfOne"}, Origin, {1}}, ArrayRow{{"OriginOfThree"}, Origin, {1, 2, 3}},
                    ArrayRow{{"OriginOfNoNumber"}, Origin, {NaN, 0}},
                    ArrayRow{{"OriginAtNoPlace"}, Origin, {HUGE_VAL, HUGE_VAL}}, ArrayRow{{"ScaleOfOne"}, Scale, {1}},
                    ArrayRow{{"ScaleOfThree"}, Scale, {1, 1, 1}}, ArrayRow{{"ScaleOfNothing"}, Scale, {0, 0}},
                    ArrayRow{{"ScaleOfNoNumber"}, Scale, {NaN, NaN}}),
    NameOfRow());

// The display window: all images of the document together.

TEST_F(PixelDimensions, CountFromTheLeastOfAllOrigins)
{
    Open(Document().With(Stack(1).Origin(10, -5)).With(Stack(2).Origin(-20, 7)));
    EXPECT_EQ(PixelDim(DimensionOf(ImageOf(0), DimX)).RealWorldCoordOfDisplayWindow(), -20);
    EXPECT_EQ(PixelDim(DimensionOf(ImageOf(0), DimY)).RealWorldCoordOfDisplayWindow(), -5);
    EXPECT_EQ(LevelRect(Group(0), 0), (CMN_RECT{60, 0, 256, 256}));
    EXPECT_EQ(LevelRect(Group(1), 0), (CMN_RECT{0, 24, 256, 256}));
}

TEST_F(PixelDimensions, RoundPositionsToTheNearestPixel)
{
    Open(Document().With(Stack(1).Origin(0, 0)).With(Stack(2).Origin(1.7, 1.8).Scale(0.5, 0.5)));
    EXPECT_EQ(LevelRect(Group(1), 0), (CMN_RECT{3, 4, 256, 256})); // 3.4 and 3.6 pixels away
}

TEST_F(PixelDimensions, KnowValuesHalfAPixelBeforeTheDisplayWindow)
{
    auto& x = PixelDim(DimensionOf(ReadImage(Stack(1).Origin(0, 0).Scale(0.5, 0.5)), DimX));
    EXPECT_EQ(x.CoordInPixels(-0.2, 1), 0u);                   // 0.4 pixels
    EXPECT_FAILED_ASSERTION(x.CoordInPixels(-0.3, 1));         // 0.6 pixels
    EXPECT_FAILED_ASSERTION(x.CoordInPixels(4294967295.0, 1)); // twice as many pixels
    EXPECT_FAILED_ASSERTION(x.CoordInPixels(NaN, 1));
}

TEST_F(PixelDimensions, ConvertDistancesBothWays)
{
    auto& x = PixelDim(DimensionOf(ReadImage(Stack(1).Scale(0.5, 0.5)), DimX));
    EXPECT_EQ(x.PixelDistance(10, 1), 20u);
    EXPECT_EQ(x.PixelDistance(10, 2), 10u);
    EXPECT_EQ(x.RealWorldDistance(20, 2), 20);
    EXPECT_EQ(x.CoordInRealWorldUnits(20, 2), 20);
    EXPECT_FAILED_ASSERTION(x.PixelDistance(-1, 1));
}

TEST_F(PixelDimensions, OfLengthsAndPixelsInOneDocumentBreakARule)
{
    Open(Document().With(Stack(1)).With(Stack(2).Unit("pixel").Scale(1, 1)));
    CMN_RECT rect = {};
    EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(0), 0, &rect), AC_RESULT_FAILURE);
}

TEST_F(PixelDimensions, OfImagesInDifferentUnitsThatAreNoLengthsBreakARule)
{
    Open(Document().With(Stack(1).Unit("pixel").Scale(1, 1)).With(Stack(2).Unit("dot").Scale(1, 1)));
    CMN_RECT rect = {};
    EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(0), 0, &rect), AC_RESULT_FAILURE);
}

// An origin that is not told.

TEST_F(PixelDimensions, BeginAtZeroWithoutAnOriginWhereTheImageIsAlone)
{
    Open(Without(Small(), 2018));
    EXPECT_THAT(MessagesOf(
                    [&] {
                        EXPECT_EQ(LevelRect(Group(), 0), (CMN_RECT{0, 0, 8, 8}));
                    }),
                testing::IsSupersetOf({"Note: Missing mandatory tag 2001\\2005\\2018!!!",
                                       "This is acceptable if there is just one multi-dim image...",
                                       "No. of multidim images: 1"}));
}

TEST_F(PixelDimensions, DoNotBeginWithoutAnOriginWhereTheImageHasCompany)
{
    Open(Without(Document().With(Small()).With(Stack(2)), 2018));
    CMN_RECT rect = {};
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(), 0, &rect), AC_RESULT_FAILURE); }),
                Contains("No. of multidim images: 2"));
    EXPECT_THAT(ImageOf().Coords(), IsEmpty());
}

// The picture in its tile matrix.

TEST_F(PixelDimensions, MoveForwardByACroppingBelowZero)
{
    auto& image = ReadImage(Stack(1).Origin(10, 20).Scale(0.5, 0.5).Shift(-4, -6));
    EXPECT_EQ(image.LeftCroppingOfLevel0TileMatrixInPixels(), -4);
    EXPECT_EQ(image.TopCroppingOfLevel0TileMatrixInPixels(), -6);
    EXPECT_EQ(DimensionOf(image, DimX).FirstPoint(), 8);
    EXPECT_EQ(DimensionOf(image, DimY).FirstPoint(), 17);
}

TEST_F(PixelDimensions, StayUnderAnyOtherCropping)
{
    auto& image = ReadImage(Stack(1).Origin(10, 20).Shift(4, 0));
    EXPECT_EQ(image.LeftCroppingOfLevel0TileMatrixInPixels(), 4);
    EXPECT_EQ(DimensionOf(image, DimX).FirstPoint(), 10);
    EXPECT_EQ(DimensionOf(image, DimY).FirstPoint(), 20);
}

TEST_F(PixelDimensions, AreCroppedInPixelsWithoutALength)
{
    auto& image = ReadImage(Stack(1).Origin(10, 20).Scale(1, 1).Unit("pixel").Shift(-4, -6));
    EXPECT_EQ(DimensionOf(image, DimX).FirstPoint(), 6);
}

TEST_F(PixelDimensions, StayWhereNoCroppingIsTold)
{
    for (const auto& values : {std::vector<int32_t>{}, std::vector<int32_t>{-7}})
    {
        Document document;
        document.With(Stack(1).Origin(10, 20));
        document.Frame(1).Child(2018).Drop(2410);
        if (!values.empty())
            document.Frame(1).Child(2018).Add(Int32s(2410, values));
        Open(std::move(document));
        EXPECT_EQ(ImageOf().LeftCroppingOfLevel0TileMatrixInPixels(), 0x7FFFFFFF);
        EXPECT_EQ(ImageOf().TopCroppingOfLevel0TileMatrixInPixels(), 0x7FFFFFFF);
        EXPECT_EQ(DimensionOf(ImageOf(), DimX).FirstPoint(), 10);
        EXPECT_EQ(LevelRect(Group(), 0), (CMN_RECT{0, 0, 256, 256}));
    }
}

TEST_F(PixelDimensions, AreNotCroppedInDirectories)
{
    auto& image = ReadImage(Stack(1).InDocument().Shift(-4, -6).Origin(10, 20));
    EXPECT_EQ(image.LeftCroppingOfLevel0TileMatrixInPixels(), 0);
    EXPECT_EQ(DimensionOf(image, DimX).FirstPoint(), 10);
}

// The boundary of the picture.

struct BoundaryRow : Row
{
    std::vector<int32_t> Boundary;
};

class BoundaryOfThePicture : public ZelSlide, public testing::WithParamInterface<BoundaryRow>
{
};

TEST_P(BoundaryOfThePicture, MustBeFourNumbersFromZero)
{
    AC_Result result = ResultOfOpening(Stack(1).Boundary(GetParam().Boundary));
    CMN_RECT rect = {};
    if (result == AC_RESULT_SUCCESS)
        result = Call(_AC_GetLevelImageSize, Group(), 0, &rect);
    EXPECT_EQ(result, AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(
    Boundaries, BoundaryOfThePicture,
    testing::Values(BoundaryRow{{"ThreeNumbers"}, {0, 0, 256}}, BoundaryRow{{"FiveNumbers"}, {0, 0, 256, 256, 1}},
                    BoundaryRow{{"LeftOfZero"}, {-1, 0, 256, 256}}, BoundaryRow{{"BehindZero"}, {0, 1, 256, 256}},
                    BoundaryRow{{"NoWidth"}, {0, 0, 0, 256}}, BoundaryRow{{"NegativeWidth"}, {0, 0, -256, 256}},
                    BoundaryRow{{"NegativeHeight"}, {0, 0, 256, -256}}),
    NameOfRow());

TEST_F(PixelDimensions, NeedABoundary)
{
    Document document;
    document.With(Stack(1));
    document.Frame(1).Child(2018).Drop(2053);
    Open(std::move(document));
    CMN_RECT rect = {};
    EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(), 0, &rect), AC_RESULT_FAILURE);
}

TEST_F(PixelDimensions, NeedTheImagesProperties)
{
    Document document;
    document.With(Stack(1));
    document.StackVolume(1).Drop(2005);
    EXPECT_THAT(MessagesOfOpening(document), Contains("Missing mandatory tag 2001\\2005 (MultiDimImgProps)!!!"));
    EXPECT_EQ(ResultOfOpening(document), AC_RESULT_FAILURE);
    EXPECT_THAT(ReadImage(document).Dimensions(), IsEmpty());
}

} // namespace
