// What an image tells about itself.

#include "Tests/ZelLoader/Images/ZelSlide.h"

#include <cmath>

using namespace SlideOfTest;

namespace
{

const std::string PropertiesAreMissing = "Error: mandatory tag 'MultiDimImgProps' is missing!";

class PropertiesOfAnImage : public ZelSlide
{
protected:
    Zel::CZelMultiDimImage& ImageWithoutProperties()
    {
        Document document;
        document.With(Stack(1));
        document.StackVolume(1).Drop(2005);
        return ReadImage(std::move(document));
    }
    Zel::CZelMultiDimImage& ImageWithoutProperty(uint32_t tag)
    {
        Document document;
        document.With(Stack(1).YUnit("10^-6m^1").AxisMeanings(0, 1));
        document.StackProperties(1).Drop(tag);
        return ReadImage(std::move(document));
    }
};

TEST_F(PropertiesOfAnImage, AreItsIdAndName)
{
    auto& image = ReadImage(Stack(77).Name("Gewebe \xC3\xA4"));
    EXPECT_EQ(image.ID(), 77u);
    EXPECT_EQ(image.StackID(), 77u);
    EXPECT_STREQ(image.Name(), L"Gewebe \u00e4");
    EXPECT_STREQ(image.Description(), L"");
}

TEST_F(PropertiesOfAnImage, MayHaveNoName)
{
    EXPECT_STREQ(ImageWithoutProperty(2030).Name(), L"");
    EXPECT_STREQ(ImageWithoutProperties().Name(), L"");
}

TEST_F(PropertiesOfAnImage, MayHaveANameOfAnyText)
{
    EXPECT_STREQ(ReadImage(Stack(1).Name("")).Name(), L"");
    Document document;
    document.With(Stack(1));
    document.StackProperties(1).Put(Text(2030, std::u16string_view(u"Kid\0ney", 7)));
    EXPECT_EQ(ResultOfOpening(document), AC_RESULT_SUCCESS);
    EXPECT_STREQ(ImageOf().Name(), L"Kid");
}

TEST_F(PropertiesOfAnImage, TellWhenItWasMade)
{
    EXPECT_EQ(ReadImage(Stack(1).CreationTime(1442147200)).CreationTime(), L"2015-09-13T12:26:40+00:00");
}

TEST_F(PropertiesOfAnImage, MayNotTellWhenItWasMade)
{
    auto& image = ImageWithoutProperty(2015);
    errno = 0;
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.CreationTime(), L""); }),
                ElementsAre("Warning: tag 'ImgCreationTime' is missing!"));
    EXPECT_EQ(errno, 0);
}

TEST_F(PropertiesOfAnImage, TellWhatKindOfStackItIs)
{
    EXPECT_EQ(ReadImage(Stack(1).StackType(0x401)).ImageStackType(), 0x401);
}

TEST_F(PropertiesOfAnImage, MayNotTellWhatKindOfStackItIs)
{
    auto& image = ImageWithoutProperty(2074);
    errno = 0;
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.ImageStackType(), -1); }),
                ElementsAre("Warning: tag 'ImgStackType' is missing!"));
    EXPECT_EQ(errno, 0);
}

TEST_F(PropertiesOfAnImage, MustBeThereForTimeAndKind)
{
    auto& image = ImageWithoutProperties();
    errno = 0;
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.CreationTime(), L""); }), ElementsAre(PropertiesAreMissing));
    EXPECT_EQ(errno, ENOEXEC);
    errno = 0;
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.ImageStackType(), -1); }), ElementsAre(PropertiesAreMissing));
    EXPECT_EQ(errno, ENOEXEC);
}

// The frame of the image.

struct FrameRow : Row
{
    const wchar_t* Key;
    uint32_t Tag;
    std::string Warning;
    bool IsAnswered; ///< all the same
    std::string Value;
};

class FrameProperty : public PropertiesOfAnImage, public testing::WithParamInterface<FrameRow>
{
};

TEST_P(FrameProperty, ThatIsMissingIsToldAndMayHaveADefault)
{
    auto& image = ImageWithoutProperty(GetParam().Tag);
    std::string value;
    EXPECT_THAT(
        MessagesOf([&] { EXPECT_EQ(image.ImageFrameProperties(GetParam().Key, value), GetParam().IsAnswered); }),
        ElementsAre(GetParam().Warning));
    EXPECT_EQ(value, GetParam().Value);
}

TEST_P(FrameProperty, NeedsTheImagesProperties)
{
    auto& image = ImageWithoutProperties();
    std::string value = "untouched";
    EXPECT_THAT(MessagesOf([&] { EXPECT_FALSE(image.ImageFrameProperties(GetParam().Key, value)); }),
                ElementsAre(PropertiesAreMissing));
    EXPECT_EQ(value, "untouched");
}

INSTANTIATE_TEST_SUITE_P(
    Keys, FrameProperty,
    testing::Values(
        FrameRow{{"Origin"}, L"ZEL_GroupFrameOrigin", 2018, "Warning: tag 'ImgFrameOriginRWC' is missing!", false, ""},
        FrameRow{{"Scale"}, L"ZEL_GroupFrameScale", 2019, "Warning: tag 'ImgFrameScaleRWC' is missing!", false, ""},
        FrameRow{{"Unit"}, L"ZEL_GroupFrameUnit", 2020, "Warning: tag 'ImgFrameUnitRWC' is missing!", false, ""},
        FrameRow{{"UnitOfY"}, L"ZEL_GroupFrameYUnit", 2064, "Warning: tag 'ImgFrameUnitYRWC' is missing!", false, ""},
        FrameRow{{"FirstAxis"},
                 L"ZEL_GroupAxis0",
                 2451,
                 "Warning: tag 'ImgAxis0Meaning' is missing so returning X!",
                 true,
                 "X"},
        FrameRow{{"SecondAxis"},
                 L"ZEL_GroupAxis1",
                 2452,
                 "Warning: tag 'ImgAxis1Meaning' is missing so returning Y!",
                 true,
                 "Y"}),
    NameOfRow());

TEST_F(PropertiesOfAnImage, AnswerNoOtherKeyOfTheFrame)
{
    auto& image = ReadImage(Stack(1));
    std::string value;
    EXPECT_THAT(MessagesOf([&] { EXPECT_FALSE(image.ImageFrameProperties(L"ZEL_GroupFrame", value)); }), IsEmpty());
}

// Devices of an image without properties.

constexpr auto TagIsMissing = "missing mandatory tag!";

TEST_F(PropertiesOfAnImage, MustBeThereForTheStagesPosition)
{
    auto& image = ImageWithoutProperties();
    const auto expectIsUnknown = [](const std::function<bool()>& isUnknown)
    {
        errno = 0;
        EXPECT_THAT(MessagesOf([&] { EXPECT_TRUE(isUnknown()); }), ElementsAre(TagIsMissing));
        EXPECT_EQ(errno, ENOEXEC);
    };
    expectIsUnknown([&] { return std::isnan(image.StageXPositionValue()); });
    expectIsUnknown([&] { return std::isnan(image.StageYPositionValue()); });
    expectIsUnknown([&] { return std::wstring(image.StageXPositionUnits()).empty(); });
    expectIsUnknown([&] { return std::wstring(image.StageYPositionUnits()).empty(); });
}

TEST_F(PropertiesOfAnImage, MustBeThereForTheNamesOfExperimentAndSample)
{
    auto& image = ImageWithoutProperties();
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.ExperimentName(), nullptr); }), ElementsAre(TagIsMissing));
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.SampleName(), nullptr); }), ElementsAre(TagIsMissing));
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.SampleDescription(), nullptr); }), ElementsAre(TagIsMissing));
}

TEST_F(PropertiesOfAnImage, MayLackTheDevicesWithoutAFailure)
{
    auto& image = ReadImage(Stack(1));
    for (const std::function<bool()>& isUnknown :
         {std::function<bool()>([&] { return std::isnan(image.StageXPositionValue()); }),
          {[&] { return std::wstring(image.StageYPositionUnits()).empty(); }},
          {[&] { return !image.ExperimentName(); }},
          {[&] { return !image.SampleName(); }}})
    {
        errno = ENOENT;
        EXPECT_THAT(MessagesOf([&] { EXPECT_TRUE(isUnknown()); }), IsEmpty());
        EXPECT_EQ(errno, 0);
    }
}

TEST_F(PropertiesOfAnImage, MustBeThereForTheLens)
{
    auto& image = ImageWithoutProperties();
    errno = 0;
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(image.ObjectiveLens(), nullptr); }),
                ElementsAre("missing needed tag!", "Error, returning NULL"));
    EXPECT_EQ(errno, ENOEXEC);
}

TEST_F(PropertiesOfAnImage, AreAskedFirstForTheExposure)
{
    auto& image = ImageWithoutProperties();
    std::string value;
    EXPECT_THAT(
        MessagesOf([&] { EXPECT_EQ(image.GroupExposureTime(0, value), AC_RESULT_PROPERTY_NOT_FOUND); }),
        ElementsAre("missing needed multiDimImgProps tag!", "Warning! No channel metadata present for the channel."));
}

TEST_F(PropertiesOfAnImage, TellThatOnlyAStoreLacksTiles)
{
    EXPECT_TRUE(ReadImage(Stack(1)).HasMissingTilesConcept());
    auto& inDocument = ReadImage(Stack(1).InDocument());
    EXPECT_FALSE(inDocument.HasMissingTilesConcept());
    EXPECT_FAILED_ASSERTION(inDocument.DbgValidateNullDeepZoomTile());
}

// The picture within its levels.

using Rect = std::array<int32_t, 4>;

struct CroppingRow : Row
{
    Stack Of;
    uint32_t Level;
    Rect Expected;
};

class CroppedLevel : public ZelSlide, public testing::WithParamInterface<CroppingRow>
{
};

TEST_P(CroppedLevel, IsThePictureWithinItsTiles)
{
    Open(GetParam().Of);
    Rect rect = {};
    ImageOf().GetCroppedLevelImageSize(GetParam().Level, rect);
    EXPECT_EQ(rect, GetParam().Expected);
}

Stack Slide1000()
{
    return Stack(1).Size(1000, 700).Tiles(256, 200).Levels(3);
}

/// A picture that begins 100 and 50 pixels inside a matrix of tiles whose first column is -1 and first row -1.
Stack Cropped()
{
    return Stack(1)
        .Size(1000, 700)
        .Tiles(256, 200)
        .Shift(100, 50)
        .Level(0, Columns(-1, 3), Rows(-1, 3))
        .Level(1, Columns(-1, 1), Rows(-1, 1));
}

INSTANTIATE_TEST_SUITE_P(
    Levels, CroppedLevel,
    testing::Values(CroppingRow{{"Whole"}, Slide1000(), 0, {0, 0, 1000, 700}},
                    CroppingRow{{"HalfOfIt"}, Slide1000(), 1, {0, 0, 500, 350}},
                    CroppingRow{{"CutToWholePixels"}, Slide1000().Size(1001, 701), 1, {0, 0, 501, 350}},
                    // One tile less the cropping; on the second axis the tile's width counts as well.
                    CroppingRow{{"BehindTheFirstTile"}, Cropped(), 0, {156, 206, 1000, 700}},
                    CroppingRow{{"BehindTheFirstTileOfLevelOne"}, Cropped(), 1, {206, 231, 500, 350}},
                    CroppingRow{{"CroppingBeyondTheTile"}, Cropped().Shift(300, 300), 0, {44, 44, 1000, 700}},
                    CroppingRow{
                        {"CroppingWithoutALength"}, Cropped().Unit("pixel").Scale(1, 1), 0, {100, 50, 1000, 700}},
                    CroppingRow{{"CroppingWithoutALengthOfLevelOne"},
                                Cropped().Unit("pixel").Scale(1, 1).Shift(101, 51),
                                1,
                                {50, 25, 500, 350}}),
    NameOfRow());

TEST_F(PropertiesOfAnImage, PlaceAnUncroppedPictureByItsOrigin)
{
    Open(Document().With(Slide1000().Origin(50, 30).Scale(0.5, 0.5)).With(Stack(2).Origin(0, 0).Scale(0.5, 0.5)));
    Rect rect = {};
    ImageOf(0).GetCroppedLevelImageSize(0, rect);
    EXPECT_EQ(rect, (Rect{100, 60, 1000, 700}));
    ImageOf(0).GetCroppedLevelImageSize(1, rect);
    EXPECT_EQ(rect, (Rect{50, 30, 500, 350}));
}

TEST_F(PropertiesOfAnImage, PlaceNothingInALevelThatIsMissing)
{
    Open(Stack(1).Level(0, Columns(0, 0), Rows(0, 0)).Level(2, Columns(0, 0), Rows(0, 0)));
    Rect rect = {};
    EXPECT_FAILED_ASSERTION(ImageOf().GetCroppedLevelImageSize(1, rect));
    EXPECT_FAILED_ASSERTION(ImageOf().GetCroppedLevelImageSize(3, rect));
}

} // namespace
