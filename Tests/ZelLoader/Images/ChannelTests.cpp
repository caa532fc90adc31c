// The channels of an image, and the limits between which they are displayed.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

CChannel Real(const char* name)
{
    CChannel channel(name);
    channel.IsWavelength = true;
    return channel;
}

class ChannelsOfAnImage : public ZelSlide
{
protected:
    /// The names of the channels of an image, by their IDs.
    static std::vector<std::wstring> NamesOf(Zel::CZelMultiDimImage& image)
    {
        image.Dimensions();
        std::vector<std::wstring> names;
        for (const auto& [id, channel] : image.Channels())
        {
            EXPECT_EQ(channel->ID(), names.size());
            EXPECT_EQ(id, names.size());
            names.emplace_back(channel->Name());
        }
        return names;
    }
    std::vector<std::wstring> NamesOf(const Stack& stack) { return NamesOf(ReadImage(stack)); }
};

TEST_F(ChannelsOfAnImage, AreItsEntriesInTheirOrder)
{
    EXPECT_THAT(NamesOf(Small().Channels({"DAPI", "FITC", "Cy5"})), ElementsAre(L"DAPI", L"FITC", L"Cy5"));
}

TEST_F(ChannelsOfAnImage, NeedNoWavelengthWhereTheirNumberFits)
{
    EXPECT_THAT(NamesOf(Small().Channels({Real("DAPI"), "FITC"})), ElementsAre(L"DAPI", L"FITC"));
}

TEST_F(ChannelsOfAnImage, AreThoseWithAWavelengthWhereThereAreTooManyEntries)
{
    Stack stack = Small().Channels({"Off", Real("DAPI"), "Spare", Real("FITC")});
    stack.Plan().Dimensions[0].NumOfPoints = 2;
    EXPECT_THAT(NamesOf(stack), ElementsAre(L"DAPI", L"FITC"));
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"1")), stack.TileBytes(0, 0, 0, {.C = 1}));
}

using ChannelsOfAnImageDeathTest = ChannelsOfAnImage;

TEST_F(ChannelsOfAnImageDeathTest, WithTooFewWavelengthsEndTheProcess)
{
    Stack stack = Small().Channels({"Off", Real("DAPI"), "Spare"});
    stack.Plan().Dimensions[0].NumOfPoints = 2;
    EXPECT_ENDS_THE_PROCESS(NamesOf(stack),
                            "Even the 'wavelength' field logic has failed to select the number of dimChannels that "
                            "should match numOfChannelsAsPerNumOfPointsPerDim!!!\n[^\n]*" ABORT_WAS_CALLED);
}

TEST_F(ChannelsOfAnImageDeathTest, WithTooManyWavelengthsEndTheProcess)
{
    Stack stack = Small().Channels({Real("DAPI"), Real("FITC"), Real("Cy5")});
    stack.Plan().Dimensions[0].NumOfPoints = 2;
    EXPECT_ENDS_THE_PROCESS(NamesOf(stack), ABORT_WAS_CALLED);
}

TEST_F(ChannelsOfAnImage, NeedAnEntryEach)
{
    Document document;
    document.With(Small().Channels(2).Counts({3}));
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

TEST_F(ChannelsOfAnImage, AreCountedBehindADummyThatHasAnElement)
{
    EXPECT_EQ(NamesOf(Small().Z(3).Dummy().Channels(2)).size(), 2u);
    EXPECT_EQ(NamesOf(Small().Dummy().Channels(2)).size(), 2u);
}

TEST_F(ChannelsOfAnImage, TellOfDummiesThatTheyPassOver)
{
    auto& image = BuildImage(Small().Dummy().Channels(2));
    EXPECT_THAT(MessagesOf([&] { image.Channels(); }),
                ElementsAre("Warning: found an empty Dimension metadata tag, ignoring..."));
}

TEST_F(ChannelsOfAnImage, CannotBeCountedBehindTwoDummies)
{
    auto& image = BuildImage(Small().Dummy().Dummy().Channels(2));
    EXPECT_FAILED_ASSERTION(image.Channels());
}

TEST_F(ChannelsOfAnImage, CannotBeCountedBeforeADummyThatHasAnElement)
{
    // The element behind is taken for theirs: a dummy's is 1, and there are two entries without a wavelength.
    auto& image = ReadImage(Small().Channels({Real("DAPI"), "FITC"}).Dummy());
    EXPECT_THAT(NamesOf(image), ElementsAre(L"DAPI"));
}

TEST_F(ChannelsOfAnImage, AreASingleOneWithoutAChannelDimension)
{
    EXPECT_THAT(NamesOf(Small()), ElementsAre(L"Channel ID 0 (Single Channel)"));
    EXPECT_THAT(NamesOf(Small().Z(3)), ElementsAre(L"Channel ID 0 (Single Channel)"));
}

TEST_F(ChannelsOfAnImage, NeedNames)
{
    Document document;
    document.With(Small().Channels(2));
    document.ChannelVolume(1, 1).Drop(2021);
    auto& image = BuildImage(std::move(document));
    EXPECT_FAILED_ASSERTION(image.Channels().at(1)->Name());
}

TEST_F(ChannelsOfAnImage, KnowTheQualityOfTheirCompression)
{
    EXPECT_EQ(BuildImage(Small().Jpeg(1, 77)).Channels().at(0)->CompressionQuality(), 77u);
    auto& channel = *BuildImage(Small()).Channels().at(0);
    EXPECT_FAILED_ASSERTION(channel.CompressionQuality());
}

TEST_F(ChannelsOfAnImageDeathTest, WithoutAStoreKnowNoQuality)
{
    EXPECT_ENDS_THE_PROCESS(BuildImage(Small().InDocument()).Channels().at(0)->CompressionQuality(),
                            "TODO\n[^\n]*" ABORT_WAS_CALLED);
}

struct CompressionRow : Row
{
    uint32_t Code;
    CIA::PixelFrameCompressionType::E Type;
};

class CompressionOfAStore : public ZelSlide, public testing::WithParamInterface<CompressionRow>
{
};

TEST_P(CompressionOfAStore, IsThatOfItsChannels)
{
    auto& image = BuildImage(Small().Channels(2).Compression(GetParam().Code));
    for (const auto& [id, channel] : image.Channels())
        EXPECT_EQ(channel->CompressionType(), GetParam().Type);
}

INSTANTIATE_TEST_SUITE_P(Codes, CompressionOfAStore,
                         testing::Values(CompressionRow{{"Raw"}, 0, CIA::PixelFrameCompressionType::None},
                                         CompressionRow{{"Jpeg"}, 2, CIA::PixelFrameCompressionType::Jpeg},
                                         CompressionRow{{"J2k"}, 3, CIA::PixelFrameCompressionType::J2k},
                                         CompressionRow{{"JpegLossless"}, 5, CIA::PixelFrameCompressionType::Jpeg7},
                                         CompressionRow{{"Png"}, 8, CIA::PixelFrameCompressionType::Png},
                                         CompressionRow{{"Bmp"}, 9, CIA::PixelFrameCompressionType::Bmp}),
                         NameOfRow());

TEST_F(ChannelsOfAnImage, OfAMissingStoreHaveNoCompression)
{
    auto& channel = *BuildImage(Small().WithoutStore()).Channels().at(0);
    EXPECT_EQ(AssertionOf([&] { channel.CompressionType(); }),
              "TODO: obtain pixel frame compression type from 'coarse data' in case of missing KOR");
    EXPECT_EQ(errno, EREMOTE);
}

// Display limits.

struct LimitsRow : Row
{
    double Lower;
    double Upper;
    uint32_t Depth;
    int32_t Shadow;
    int32_t Highlight;
};

class DisplayLimits : public ZelSlide, public testing::WithParamInterface<LimitsRow>
{
};

TEST_P(DisplayLimits, AreRoundedAndKeptWithinTheDepth)
{
    auto& image = ReadImage(Small().Channels({CChannel("DAPI", GetParam().Lower, GetParam().Upper)}));
    int32_t shadow = -7;
    int32_t highlight = -7;
    EXPECT_TRUE(image.LUTInfoShadowHighlight(0, GetParam().Depth, shadow, highlight));
    EXPECT_EQ(shadow, GetParam().Shadow);
    EXPECT_EQ(highlight, GetParam().Highlight);
}

INSTANTIATE_TEST_SUITE_P(Limits, DisplayLimits,
                         testing::Values(LimitsRow{{"Whole"}, 10, 200, 1, 10, 200},
                                         LimitsRow{{"Rounded"}, 10.5, 200.4, 1, 11, 200},
                                         LimitsRow{{"BelowZero"}, -3.2, 200, 1, 0, 200},
                                         LimitsRow{{"BeyondAByte"}, 0, 300, 1, 0, 255},
                                         LimitsRow{{"WithinTwoBytes"}, 0, 300, 2, 0, 300},
                                         LimitsRow{{"BeyondTwoBytes"}, 0, 70000.4, 2, 0, 65535},
                                         LimitsRow{{"BeyondTwoBytesOfFour"}, 0, 70000.4, 4, 0, 65535},
                                         LimitsRow{{"FarBeyond"}, 0, 1e300, 2, 0, 65535}),
                         NameOfRow());

class LimitsOfChannels : public ZelSlide
{
protected:
    int32_t Shadow = -7;
    int32_t Highlight = -7;
};

TEST_F(LimitsOfChannels, AreFoundByTheNumberOnTheirNode)
{
    Document document;
    document.With(Small().Channels({CChannel("DAPI", 1, 10), CChannel("FITC", 2, 20)}));
    document.ChannelVolume(1, 0).SecondTag(5);
    auto& image = ReadImage(std::move(document));
    EXPECT_TRUE(image.LUTInfoShadowHighlight(5, 1, Shadow, Highlight));
    EXPECT_EQ(Shadow, 1);
    EXPECT_TRUE(image.LUTInfoShadowHighlight(1, 1, Shadow, Highlight));
    EXPECT_EQ(Shadow, 2);
    EXPECT_FALSE(image.LUTInfoShadowHighlight(0, 1, Shadow, Highlight));
}

TEST_F(LimitsOfChannels, AreThoseOfTheImageWhereTheChannelHasNone)
{
    auto& image = ReadImage(Small().DisplayLimits(3, 30));
    EXPECT_TRUE(image.LUTInfoShadowHighlight(0, 1, Shadow, Highlight));
    EXPECT_EQ(Shadow, 3);
    EXPECT_EQ(Highlight, 30);
}

TEST_F(LimitsOfChannels, MayBeToldNowhere)
{
    auto& image = ReadImage(Small().Channels(1).WithoutDisplayLimits());
    EXPECT_FALSE(image.LUTInfoShadowHighlight(0, 1, Shadow, Highlight));
    EXPECT_EQ(Shadow, -7);
    EXPECT_EQ(Highlight, -7);
}

TEST_F(LimitsOfChannels, MustBeTwoNumbersInTheRangeOfPixels)
{
    for (const auto& values : {std::vector<double>{1}, std::vector<double>{1e300, 2}, std::vector<double>{0, -1e300}})
    {
        Document document;
        document.With(Small());
        document.StackProperties(1).Put(Doubles(2003, values));
        auto& image = ReadImage(std::move(document));
        EXPECT_FAILED_ASSERTION(image.LUTInfoShadowHighlight(0, 1, Shadow, Highlight));
    }
}

} // namespace
