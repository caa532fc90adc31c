// How many bits of the pixels of a channel are used: as the display limits say, or as the pixels themselves do.

#include "SampleDocuments/Tags.h"
#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

constexpr uint32_t Unknown = 0xFFFFFFFF;

Stack Small()
{
    return Stack(1).Size(4, 4).Tiles(4, 4);
}

/// A raw stack whose tiles are zeros but for the first bytes.
Stack WithFirstBytes(ComponentType::E type, uint32_t components, ByteString first)
{
    const size_t size = 16 * components * BytesOfComponent(type);
    CTileContents contents;
    contents.Bytes = [=](const CTilePlace&)
    {
        ByteString bytes = first;
        bytes.resize(size);
        return bytes;
    };
    return Small().Raw(type, components).WithoutDisplayLimits().Contents(contents);
}

class UsedBits : public ZelSlide
{
protected:
    uint32_t UsedBitsOf(const Stack& stack, uint32_t channel = 0)
    {
        return BuildImage(stack).Channels().at(channel)->PixelFormat()->MaxNumOfUsedBits();
    }
    CIA::CPixelFormat& FormatOf(Document document)
    {
        return *BuildImage(std::move(document)).Channels().at(0)->PixelFormat();
    }
};

struct LimitsRow : Row
{
    Stack Of;
    uint32_t Bits;
};

class BitsOfLimits : public UsedBits, public testing::WithParamInterface<LimitsRow>
{
};

TEST_P(BitsOfLimits, HoldTheLargestValueBelowTheUpperOne)
{
    EXPECT_EQ(UsedBitsOf(GetParam().Of), GetParam().Bits);
}

Stack Words()
{
    return Small().Raw(ComponentType::Uint16);
}

INSTANTIATE_TEST_SUITE_P(
    Limits, BitsOfLimits,
    testing::Values(
        LimitsRow{{"TwelveBits"}, Words().DisplayLimits(0, 4096), 12},
        LimitsRow{{"OneMore"}, Words().DisplayLimits(0, 4097), 13},
        LimitsRow{{"OneBit"}, Words().DisplayLimits(0, 2), 1},
        LimitsRow{{"AllBits"}, Words().DisplayLimits(0, 65536), 16},
        LimitsRow{{"MoreBitsThanTheStorage"}, Small().DisplayLimits(0, 65536), 8},
        LimitsRow{
            {"MoreBitsThanOneOfThreeComponents"}, Small().Raw(ComponentType::Uint8, 3).DisplayLimits(0, 65536), 8},
        LimitsRow{{"SixtyFourBits"}, Small().Raw(ComponentType::Uint64).DisplayLimits(0, 18446744073709549568.0), 64},
        LimitsRow{{"OfAChannel"}, Words().Channels({CChannel("DAPI", 0, 1024)}), 10},
        LimitsRow{{"OfCompressedPixels"}, Small().Jpeg().DisplayLimits(0, 128), 7},
        LimitsRow{{"OfFloats"}, Small().Raw(ComponentType::Float).DisplayLimits(0, 16), 4}),
    NameOfRow());

struct BadLimitsRow : Row
{
    std::vector<double> Limits;
};

class BadLimits : public UsedBits, public testing::WithParamInterface<BadLimitsRow>
{
};

TEST_P(BadLimits, BreakARule)
{
    Document document;
    document.With(Small());
    document.StackProperties(1).Put(Doubles(2003, GetParam().Limits));
    CIA::CPixelFormat& format = FormatOf(std::move(document));
    EXPECT_FAILED_ASSERTION(format.MaxNumOfUsedBits());
}

INSTANTIATE_TEST_SUITE_P(
    Limits, BadLimits,
    testing::Values(BadLimitsRow{{"UpperOfZero"}, {0, 0}}, BadLimitsRow{{"NegativeUpper"}, {0, -1}},
                    BadLimitsRow{{"NegativeLower"}, {-1, 256}}, BadLimitsRow{{"BrokenUpper"}, {0, 255.5}},
                    BadLimitsRow{{"BrokenLower"}, {0.5, 256}},
                    BadLimitsRow{{"UpperBeyond64Bits"}, {0, 18446744073709551616.0}},
                    BadLimitsRow{{"UpperOfNoNumber"}, {0, std::numeric_limits<double>::quiet_NaN()}},
                    BadLimitsRow{{"InfiniteUpper"}, {0, std::numeric_limits<double>::infinity()}}),
    NameOfRow());

TEST_F(UsedBits, AreNotKnownFromLimitsThatAreNotTwo)
{
    Document document;
    document.With(Small());
    document.StackProperties(1).Put(Doubles(2003, {0, 256, 512}));
    CIA::CPixelFormat& format = FormatOf(std::move(document));
    errno = 0;
    EXPECT_EQ(format.MaxNumOfUsedBits(), Unknown);
    EXPECT_EQ(errno, ENOEXEC);
}

// Pixels themselves.

struct ScanRow : Row
{
    ComponentType::E Type;
    uint32_t Components;
    ByteString FirstBytes;
    uint32_t Bits;
};

class ScanOfPixels : public UsedBits, public testing::WithParamInterface<ScanRow>
{
};

TEST_P(ScanOfPixels, FindsTheGreatest)
{
    EXPECT_EQ(UsedBitsOf(WithFirstBytes(GetParam().Type, GetParam().Components, GetParam().FirstBytes)),
              GetParam().Bits);
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, ScanOfPixels,
    testing::Values(ScanRow{{"OneByte"}, ComponentType::Uint8, 1, {3, 17, 4}, 5},
                    ScanRow{{"OneByteOfAllBits"}, ComponentType::Uint8, 1, {255}, 8},
                    ScanRow{{"NothingButZeros"}, ComponentType::Uint8, 1, {}, 0},
                    ScanRow{{"TwoBytes"}, ComponentType::Uint16, 1, {255, 0, 0, 4}, 11},
                    ScanRow{{"FourBytes"}, ComponentType::Uint32, 1, {0, 0, 0, 1}, 25},
                    ScanRow{{"EightBytes"}, ComponentType::Uint64, 1, {0, 0, 0, 0, 0, 0, 1, 0}, 49},
                    // A pixel of several components counts as one number, and is cut to the size of a component.
                    ScanRow{{"ThreeBytesOfOneUsed"}, ComponentType::Uint8, 3, {5, 0, 0}, 3},
                    ScanRow{{"ThreeBytesOfTwoUsed"}, ComponentType::Uint8, 3, {0, 1, 0}, 8},
                    ScanRow{{"ThreeBytesInTheSecondPixel"}, ComponentType::Uint8, 3, {0, 0, 0, 6, 0, 0}, 3},
                    ScanRow{{"SixBytesInTheFirstWord"}, ComponentType::Uint16, 3, {0, 8}, 12},
                    ScanRow{{"SixBytesInTheThirdByte"}, ComponentType::Uint16, 3, {0, 0, 1}, 16},
                    ScanRow{{"SixBytesInTheFifthByte"}, ComponentType::Uint16, 3, {0, 0, 0, 0, 1}, 16},
                    ScanRow{{"SixBytesInTheFourthByteAreNotRead"}, ComponentType::Uint16, 3, {1, 0, 0, 255}, 1},
                    ScanRow{{"SixBytesInTheSixthByteAreNotRead"}, ComponentType::Uint16, 3, {1, 0, 0, 0, 0, 255}, 1}),
    NameOfRow());

using UsedBitsDeathTest = UsedBits;

TEST_F(UsedBitsDeathTest, OfPixelsOfAnotherSizeEndTheProcess)
{
    EXPECT_ENDS_THE_PROCESS(UsedBitsOf(WithFirstBytes(ComponentType::Uint32, 3, {1})),
                            "Unexpected/unhandled numOfBytesPerPixel 12!\n[^\n]*" ABORT_WAS_CALLED);
}

TEST_F(UsedBits, AreScannedWhereTheLimitsTellNothing)
{
    const Stack stack = WithFirstBytes(ComponentType::Uint8, 1, {9});
    Stack withLimits = stack;
    withLimits.Plan().HasLimits = true;
    EXPECT_EQ(UsedBitsOf(withLimits.DisplayLimits(0, 1)), 4u);
    EXPECT_EQ(UsedBitsOf(stack), 4u);
}

/// A stack each of whose tiles holds one number, by where it is.
Stack WithNumbers(std::function<uint8_t(const CTilePlace&)> numberOf)
{
    CTileContents contents;
    contents.Bytes = [=](const CTilePlace& place) { return ByteString(16, numberOf(place)); };
    return Stack(1).Size(8, 8).Tiles(4, 4).WithoutDisplayLimits().Contents(contents);
}

TEST_F(UsedBits, AreScannedInAllTilesOfLevelZeroAndNoOther)
{
    EXPECT_EQ(
        UsedBitsOf(WithNumbers([](const CTilePlace& place) { return place.Column == 1 && place.Row == 1 ? 40 : 1; })),
        6u);
    EXPECT_EQ(UsedBitsOf(WithNumbers([](const CTilePlace& place) { return place.Level == 1 ? 200 : 1; }).Levels(2)),
              1u);
}

TEST_F(UsedBits, AreScannedInAllFramesOfTheChannelAndNoOther)
{
    const Stack stack = WithNumbers(
                            [](const CTilePlace& place) -> uint8_t
                            {
                                if (place.At.C == 1)
                                    return 200;
                                return place.At.Z == 2 ? 40 : 1;
                            })
                            .Z(3)
                            .Channels(2);
    EXPECT_EQ(UsedBitsOf(stack, 0), 6u);
    EXPECT_EQ(UsedBitsOf(stack, 1), 8u);
}

TEST_F(UsedBits, OfCompressedPixelsAreNotKnownWithoutLimits)
{
    auto& image = BuildImage(Small().Jpeg().WithoutDisplayLimits());
    image.KorFile(); // open before its tiles are gone
    std::filesystem::resize_file(StoreFile(1), 0);
    EXPECT_EQ(image.Channels().at(0)->PixelFormat()->MaxNumOfUsedBits(), Unknown);
}

TEST_F(UsedBits, OfCompressedPixelsAreNotKnownWhereTheLimitsTellNothing)
{
    EXPECT_EQ(UsedBitsOf(Small().Jpeg().DisplayLimits(0, 1)), Unknown);
}

TEST_F(UsedBits, OfOtherThanUnsignedNumbersAreAllOfThem)
{
    for (const auto& [type, bits] : {std::pair(ComponentType::Int16, 16u), std::pair(ComponentType::Float, 32u)})
    {
        auto& image = BuildImage(Small().Raw(type).WithoutDisplayLimits());
        CIA::CPixelFormat& format = *image.Channels().at(0)->PixelFormat();
        EXPECT_THAT(MessagesOf([&, &bits = bits] { EXPECT_EQ(format.MaxNumOfUsedBits(), bits); }),
                    Contains("TODO: Implement minPixelValue and maxPixelValue calculation for component format that is "
                             "other than ''uint of any size'!"));
    }
}

TEST_F(UsedBits, AreScannedOnceInADirectoryThatFramesShare)
{
    Document document;
    document.With(Stack(1).Size(64, 64).Z(40).InDocument(64).WithoutDisplayLimits());
    for (size_t frame = 0; frame < 40; ++frame)
        document.Frame(1, frame).Drop(Tag::FrameDirectory).Add(TiffIfd(Tag::FrameDirectory, 1));
    auto& directories = document.File().Directories;
    directories.erase(directories.begin() + 2, directories.end()); // but the overview and the one that all share
    EXPECT_LE(FormatOf(std::move(document)).MaxNumOfUsedBits(), 8u);
}

TEST_F(UsedBits, AreKnownOfAChannelThatHasAllItsTilesThoughAnotherHasNot)
{
    const auto isMissing = [](const CTilePlace& place) { return place.At.C == 1 && place.At.Z == 1; };
    EXPECT_EQ(UsedBitsOf(WithFirstBytes(ComponentType::Uint8, 1, {9}).Z(2).Channels(2).Missing(isMissing)), 4u);
}

TEST_F(UsedBits, AreNotKnownWhereATileCannotBeRead)
{
    Document document;
    document.With(WithFirstBytes(ComponentType::Uint8, 1, {9}));
    document.Store(1).Tiles.front().Offset = 1u << 30;
    CIA::CPixelFormat& format = FormatOf(std::move(document));
    EXPECT_EQ(format.MaxNumOfUsedBits(), Unknown);
}

TEST_F(UsedBits, AreNotKnownWhereATileHasNoBytes)
{
    Document document;
    document.With(WithFirstBytes(ComponentType::Uint8, 1, {9}));
    document.Store(1).Tiles.front().Size = 0;
    CIA::CPixelFormat& format = FormatOf(std::move(document));
    EXPECT_EQ(format.MaxNumOfUsedBits(), Unknown);
}

TEST_F(UsedBits, AreNotScannedInATileLargerThanTheFile)
{
    Document document;
    document.With(WithFirstBytes(ComponentType::Uint8, 1, {9}));
    document.Store(1).Tiles.front().Size = 0xFFFFFFFE;
    CIA::CPixelFormat& format = FormatOf(std::move(document));
    EXPECT_FAILED_ASSERTION(format.MaxNumOfUsedBits());
}

} // namespace
