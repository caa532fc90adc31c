// Rules of dimensions that no document can break: the images here have dimensions that their document does not tell.

#include "CommonImageAccess/BrixUnits.h"
#include "Tests/ZelLoader/Images/ZelSlide.h"
#include "ZelLoader/Images/ZelDimension.h"

#include <cmath>

using namespace SlideOfTest;

namespace
{

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

/// The first image of a document, with a change made to the dimensions that it was built with.
class ImageWithOtherDimensions : public Zel::CZelMultiDimImage
{
public:
    using CChange = std::function<void(CMultiDimImage&, CIA::CDimensions&)>;
    ImageWithOtherDimensions(Zel::CZelImgDoc& doc, CChange change)
        : CZelMultiDimImage(*doc.ImgColl().MultiDimImgs()->front(), doc), _change(std::move(change))
    {
    }

protected:
    bool DimensionHavingUnits_init(CIA::CDimensions& varToInit) override
    {
        const bool isMade = CZelMultiDimImage::DimensionHavingUnits_init(varToInit);
        _change(*this, varToInit);
        return isMade;
    }
    uint64_t MaxNumOfFrames() override { return 1000; } // asks no store, which would miss the same dimensions

private:
    CChange _change;
};

class ModelDimensions : public ZelSlide
{
};

// Dimensions that each image must have.

struct MissingRow : Row
{
    std::vector<DimType> Missing;
    std::string Told;
};

class MandatoryDimension : public ZelSlide, public testing::WithParamInterface<MissingRow>
{
};

TEST_P(MandatoryDimension, ThatIsMissingLeavesNoneAndIsToldOnceACall)
{
    ImageWithOtherDimensions image(Read(Document().With(Small())),
                                   [](auto&, auto& dimensions)
                                   {
                                       for (const DimType type : GetParam().Missing)
                                           dimensions.erase(type);
                                   });
    for (int call = 0; call < 2; ++call)
        EXPECT_THAT(MessagesOf([&] { EXPECT_THAT(image.Dimensions(), IsEmpty()); }),
                    ElementsAre("Missing mandatory dimension '" + GetParam().Told + "'!"));
}

INSTANTIATE_TEST_SUITE_P(Dimensions, MandatoryDimension,
                         testing::Values(MissingRow{{"X"}, {DimX}, "X"}, MissingRow{{"Y"}, {DimY}, "Y"},
                                         MissingRow{{"FirstOfTwo"}, {DimX, DimY}, "X"}),
                         NameOfRow());

// A dimension without points.

class DimensionWithoutPoints : public CIA::CUnitlessDimension
{
public:
    using CUnitlessDimension::CUnitlessDimension;
    const wchar_t* Name() override { return L"a dimension of test"; }

protected:
    bool NumOfPoints_init(uint32_t& varToInit) override
    {
        varToInit = 0;
        return true;
    }
};

struct EmptyRow : Row
{
    Stack Of;
    DimType Empty;
};

class EmptyDimension : public ZelSlide, public testing::WithParamInterface<EmptyRow>
{
};

TEST_P(EmptyDimension, HasNoFramesWhichBreaksARule)
{
    ImageWithOtherDimensions image(
        Read(Document().With(GetParam().Of)), [](CIA::CMultiDimImage& parent, auto& dimensions)
        { dimensions[GetParam().Empty] = std::make_unique<DimensionWithoutPoints>(GetParam().Empty, parent); });
    EXPECT_FAILED_ASSERTION(image.Frames());
    EXPECT_FAILED_ASSERTION(DimensionOf(image, GetParam().Empty).MaxIdx());
}

INSTANTIATE_TEST_SUITE_P(Dimensions, EmptyDimension,
                         testing::Values(EmptyRow{{"Alone"}, Small(), DimZ}, EmptyRow{{"BelowZ"}, Small().Z(2), DimT},
                                         EmptyRow{{"AboveT"}, Small().T(2), DimZ}),
                         NameOfRow());

// Pixels along another axis than X and Y.

TEST_F(ModelDimensions, OfPixelsHaveADisplayWindowAlongXAndYOnly)
{
    auto& image = BuildImage(Small());
    Zel::CZelDimensionWithPixels z(DimZ, image, *image.MetaData().MultiDimImgProps());
    EXPECT_THAT(MessagesOf([&] { EXPECT_TRUE(std::isnan(z.RealWorldCoordOfDisplayWindow())); }),
                ElementsAre("CIA currently fully supports only X and Y as pixel dims"));
    EXPECT_STREQ(z.Name(), L"Unknown/unexpected Dimension");
    EXPECT_FAILED_ASSERTION(z.NumOfPoints());
    EXPECT_FAILED_ASSERTION(z.FirstPoint());
}

using ModelDimensionsDeathTest = ModelDimensions;

TEST_F(ModelDimensionsDeathTest, OfLengthsAndPixelsHaveNoCommonDisplayWindow)
{
    Zel::CZelImgDoc& doc =
        Read(Document().With(Small().Unit("10^-6m^1")).With(Stack(2).Unit("pixel").Scale(1, 1).Origin(5, 5)));
    // Images that disagree are refused when their units are compared, unless the document takes them for compared.
    doc.SetHaveImagesEqualNativeUnits(DimX);
    auto& x = static_cast<CIA::CPixelDimension&>(doc.MultiDimImages().begin()->second->DimensionOf(DimX));
    EXPECT_ENDS_THE_PROCESS(x.RealWorldCoordOfDisplayWindow(),
                            "UNEXPECTED! HOW TO HANDLE THIS\\?\n[^\n]*" ABORT_WAS_CALLED);
}

// What is there for some types of dimension only.

TEST(UnitsOfTheModelDeathTest, AreThereForZAndTAndLambdaOnly)
{
    for (const DimType type : {DimX, DimY, DimC, DimP, DimDummy})
        EXPECT_ENDS_THE_PROCESS(CIA::ConvertToBrixUnits(1, L"10^-6m^1", type), ABORT_WAS_CALLED) << type;
}

TEST(UnitsOfTheModel, AreMicrometresAndSecondsAndNanometres)
{
    EXPECT_DOUBLE_EQ(CIA::ConvertToBrixUnits(5000, L"10^-9m^1", DimZ), 5);
    EXPECT_DOUBLE_EQ(CIA::ConvertToBrixUnits(500, L"10^-3s^1", DimT), 0.5);
    EXPECT_DOUBLE_EQ(CIA::ConvertToBrixUnits(0.5, L"10^-6m^1", DimL), 500);
}

TEST(TextOfADimensionType, IsItsLetter)
{
    std::string texts;
    for (const DimType type : {DimX, DimY, DimZ, DimT, DimL, DimC, DimP})
        texts += CIA::DimensionTypeToString(type);
    EXPECT_EQ(texts, "XYZTLCP");
    EXPECT_STREQ(CIA::DimensionTypeToString(DimDummy),
                 "dummy dimension (used for file formats having dummy dim metadata)");
}

TEST(TextOfADimensionType, ThatIsNoneBreaksARule)
{
    for (const int32_t number : {-1, 8, 0x7FFFFFFF})
        EXPECT_FAILED_ASSERTION(CIA::DimensionTypeToString(static_cast<DimType>(number)));
}

TEST(NameOfADimensionType, ThatHostsDoNotShowBreaksARule)
{
    for (const DimType type : {DimX, DimY, DimC, DimP, DimDummy})
        EXPECT_FAILED_ASSERTION(CIA::DimensionName(type));
}

} // namespace
