// What the pixels of a channel are made of.

#include "Tests/ZelLoader/Images/ZelSlide.h"

#include <sstream>

using namespace SlideOfTest;
using CIA::ColorSpaceType;
using CIA::PixelComponentFormat;

namespace
{

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

class PixelsOfAChannel : public ZelSlide
{
protected:
    /// The pixel format of the first channel.
    template <typename Described>
    CIA::CPixelFormat& FormatOf(Described&& described)
    {
        return *BuildImage(std::forward<Described>(described)).Channels().at(0)->PixelFormat();
    }
};

struct TypeRow : Row
{
    uint32_t Type;
    uint32_t Bits;
    PixelComponentFormat::E Format;
};

class TypeOfComponents : public PixelsOfAChannel, public testing::WithParamInterface<TypeRow>
{
};

TEST_P(TypeOfComponents, TellsSizeAndKind)
{
    CIA::CPixelFormat& format = FormatOf(Small().Raw(static_cast<ComponentType::E>(GetParam().Type)));
    EXPECT_EQ(format.NumOfBitsPerPixelComponent(), GetParam().Bits);
    EXPECT_EQ(format.ComponentFormat(), GetParam().Format);
    EXPECT_EQ(format.NumOfBytes(), GetParam().Bits / 8);
    EXPECT_EQ(format.NumOfPixelComponents(), 1u);
}

constexpr auto Uint = PixelComponentFormat::PixelComponentFormat_UintOfAnySize;
constexpr auto Int = PixelComponentFormat::PixelComponentFormat_IntOfAnySize;
constexpr auto Float = PixelComponentFormat::PixelComponentFormat_FloatOfAnySize;

INSTANTIATE_TEST_SUITE_P(Types, TypeOfComponents,
                         testing::Values(TypeRow{{"Int8"}, 1, 8, Int}, TypeRow{{"Uint8"}, 2, 8, Uint},
                                         TypeRow{{"Int16"}, 3, 16, Int}, TypeRow{{"Uint16"}, 4, 16, Uint},
                                         TypeRow{{"Int32"}, 5, 32, Int}, TypeRow{{"Uint32"}, 6, 32, Uint},
                                         TypeRow{{"Int64"}, 7, 64, Int}, TypeRow{{"Uint64"}, 8, 64, Uint},
                                         TypeRow{{"Float"}, 9, 32, Float}, TypeRow{{"Double"}, 10, 64, Float}),
                         NameOfRow());

TEST_F(PixelsOfAChannel, AreAsLargeAsAllTheirComponents)
{
    CIA::CPixelFormat& format = FormatOf(Small().Raw(ComponentType::Uint16, 3));
    EXPECT_EQ(format.NumOfPixelComponents(), 3u);
    EXPECT_EQ(format.NumOfBytes(), 6u);
}

using PixelsOfAChannelDeathTest = PixelsOfAChannel;

TEST_F(PixelsOfAChannelDeathTest, OfAnUnknownTypeEndTheProcess)
{
    for (const uint32_t type : {0u, 11u, 0xFFFFFFFFu})
        EXPECT_ENDS_THE_PROCESS(FormatOf(Small().Raw(static_cast<ComponentType::E>(type))).ComponentFormat(),
                                ABORT_WAS_CALLED);
}

TEST_F(PixelsOfAChannel, OfAnUnknownTypeHaveNoSizeAndStillOpen)
{
    // One byte each in the store, which claims to be of a type that is none.
    Open(Small().Raw(static_cast<ComponentType::E>(11)).Contents(BytesOfSize(1, 64)));
    EXPECT_EQ(BodyOf(Tile(0, 0)).size(), 64u);
    EXPECT_EQ(ResultOfBody(Tile(0, 0), {0, 0, 1, 1}), AC_RESULT_FAILURE);
}

// Colour spaces.

struct ColourRow : Row
{
    uint32_t ColorSpace;
    int32_t Order;
    uint32_t Components;
    ColorSpaceType::E Expected; ///< Unknown: a failed assertion
};

class ColourOfPixels : public PixelsOfAChannel, public testing::WithParamInterface<ColourRow>
{
protected:
    CIA::CPixelFormat& FormatOfTheRow()
    {
        return FormatOf(
            Small().Jpeg(GetParam().Components).ColorSpace(GetParam().ColorSpace).ComponentOrder(GetParam().Order));
    }
};

TEST_P(ColourOfPixels, FollowsFromColourSpaceAndOrder)
{
    CIA::CPixelFormat& format = FormatOfTheRow();
    if (GetParam().Expected == ColorSpaceType::Unknown)
        EXPECT_FAILED_ASSERTION(format.ColorSpace());
    else
        EXPECT_EQ(format.ColorSpace(), GetParam().Expected);
}

TEST_P(ColourOfPixels, IsCheckedWithTheNumberOfComponentsToo)
{
    CIA::CPixelFormat& format = FormatOfTheRow();
    if (GetParam().Expected == ColorSpaceType::Unknown)
        EXPECT_FAILED_ASSERTION(format.NumOfPixelComponents());
    else
        EXPECT_EQ(format.NumOfPixelComponents(), GetParam().Components);
}

INSTANTIATE_TEST_SUITE_P(Colours, ColourOfPixels,
                         testing::Values(ColourRow{{"Gray"}, 1, 0, 1, ColorSpaceType::GrayScale},
                                         ColourRow{{"GrayOfNoOrder"}, 1, -1, 1, ColorSpaceType::GrayScale},
                                         ColourRow{{"GrayInBgr"}, 1, 1, 1, ColorSpaceType::Unknown},
                                         ColourRow{{"GrayInRgb"}, 1, 2, 1, ColorSpaceType::Unknown},
                                         ColourRow{{"GrayOfThree"}, 1, 0, 3, ColorSpaceType::Unknown},
                                         ColourRow{{"RgbInRgb"}, 4, 2, 3, ColorSpaceType::StandardRgb},
                                         ColourRow{{"RgbInBgr"}, 4, 1, 3, ColorSpaceType::Bgr},
                                         ColourRow{{"RgbInNone"}, 4, 0, 3, ColorSpaceType::Unknown},
                                         ColourRow{{"RgbOfNoOrder"}, 4, -1, 3, ColorSpaceType::Unknown},
                                         ColourRow{{"RgbOfOne"}, 4, 2, 1, ColorSpaceType::Unknown},
                                         ColourRow{{"Hsv"}, 5, 0, 3, ColorSpaceType::Hsv},
                                         ColourRow{{"HsvOfNoOrder"}, 5, -1, 3, ColorSpaceType::Hsv},
                                         ColourRow{{"HsvInBgr"}, 5, 1, 3, ColorSpaceType::Unknown},
                                         ColourRow{{"HsvOfOne"}, 5, 0, 1, ColorSpaceType::Unknown},
                                         ColourRow{{"AdobeRgb"}, 19, 0, 3, ColorSpaceType::AdobeRgb},
                                         ColourRow{{"AdobeRgbInRgb"}, 19, 2, 3, ColorSpaceType::Unknown}),
                         NameOfRow());

TEST_F(PixelsOfAChannel, AreCheckedAnewAfterAFailure)
{
    CIA::CPixelFormat& format = FormatOf(Small().Jpeg(3).ColorSpace(1).ComponentOrder(0));
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_FAILED_ASSERTION(format.ColorSpace());
        EXPECT_FAILED_ASSERTION(format.NumOfPixelComponents());
        EXPECT_FAILED_ASSERTION(format.NumOfBytes());
    }
}

TEST_F(PixelsOfAChannelDeathTest, OfAPaletteEndTheProcess)
{
    EXPECT_ENDS_THE_PROCESS(FormatOf(Small().ColorSpace(2)).ColorSpace(), "TODO\n[^\n]*" ABORT_WAS_CALLED);
}

TEST_F(PixelsOfAChannel, OfAnUnknownColourSpaceHaveNone)
{
    EXPECT_EQ(FormatOf(Small().ColorSpace(3)).ColorSpace(), ColorSpaceType::Unknown);
}

TEST_F(PixelsOfAChannelDeathTest, OfAnUnknownColourSpaceCannotBeChecked)
{
    EXPECT_ENDS_THE_PROCESS(FormatOf(Small().ColorSpace(3)).NumOfPixelComponents(), ABORT_WAS_CALLED);
}

TEST(PixelComponentFormatText, IsTheNameOfTheEnumerator)
{
    const auto textOf = [](PixelComponentFormat::E format)
    {
        std::ostringstream text;
        text << format;
        return text.str();
    };
    EXPECT_EQ(textOf(Uint), "PixelComponentFormat_UintOfAnySize");
    EXPECT_EQ(textOf(Int), "PixelComponentFormat_IntOfAnySize");
    EXPECT_EQ(textOf(Float), "PixelComponentFormat_FloatOfAnySize");
    EXPECT_EQ(textOf(PixelComponentFormat::PixelComponentFormat_Unknown), "PixelComponentFormat_Unknown");
}

TEST(PixelComponentFormatTextDeathTest, OfNoEnumeratorEndsTheProcess)
{
    std::ostringstream text;
    EXPECT_ENDS_THE_PROCESS(text << static_cast<PixelComponentFormat::E>(4), ABORT_WAS_CALLED);
}

// Look-up tables.

constexpr uint32_t TagOfLut = 2004;

struct LutRow : Row
{
    std::function<CNode(ByteString)> Node;
};

class LookUpTable : public PixelsOfAChannel, public testing::WithParamInterface<LutRow>
{
protected:
    /// The first entries of a table, as red, green, blue and alpha.
    static std::vector<std::vector<uint32_t>> EntriesOf(CIA::CPixelFormat& format)
    {
        std::vector<std::vector<uint32_t>> entries;
        for (const CIA::CColor& color : format.ColorLookupTable())
            entries.push_back({color.RedComponent, color.GreenComponent, color.BlueComponent, color.AlphaComponent});
        return entries;
    }
    static Document WithTableOfTheImage(CNode table)
    {
        Document document;
        document.With(Small());
        document.StackProperties(1).Add(std::move(table));
        return document;
    }
};

TEST_P(LookUpTable, HasItsBytesInTheOrderBlueGreenRed)
{
    EXPECT_THAT(EntriesOf(FormatOf(WithTableOfTheImage(GetParam().Node({1, 2, 3, 4, 5, 6})))),
                ElementsAre(ElementsAre(3, 2, 1, 1), ElementsAre(6, 5, 4, 1)));
}

INSTANTIATE_TEST_SUITE_P(Places, LookUpTable,
                         testing::Values(LutRow{{"InTheField"},
                                                [](ByteString bytes) { return ByteArray(TagOfLut, std::move(bytes)); }},
                                         LutRow{{"BelowIt"},
                                                [](ByteString bytes) {
                                                    return Volume(TagOfLut, {ByteArray(268435458, std::move(bytes))});
                                                }}),
                         NameOfRow());

using LookUpTables = LookUpTable;

TEST_F(LookUpTables, OfAChannelComesBeforeThatOfTheImage)
{
    Document document;
    document.With(Small().Channels(2));
    document.StackProperties(1).Add(ByteArray(TagOfLut, {1, 2, 3}));
    document.ChannelVolume(1, 1).Add(ByteArray(TagOfLut, {7, 8, 9}));
    auto& image = BuildImage(std::move(document));
    EXPECT_THAT(EntriesOf(*image.Channels().at(0)->PixelFormat()), ElementsAre(ElementsAre(3, 2, 1, 1)));
    EXPECT_THAT(EntriesOf(*image.Channels().at(1)->PixelFormat()), ElementsAre(ElementsAre(9, 8, 7, 1)));
}

TEST_F(LookUpTables, MayBeMissing)
{
    CIA::CPixelFormat& format = FormatOf(Small());
    errno = ENOENT;
    EXPECT_THAT(format.ColorLookupTable(), IsEmpty());
    EXPECT_EQ(errno, 0);
}

TEST_F(LookUpTables, MustBeOfWholeTriples)
{
    for (const auto& bytes : {ByteString{1}, ByteString{1, 2}, ByteString{1, 2, 3, 4}})
    {
        CIA::CPixelFormat& format = FormatOf(WithTableOfTheImage(ByteArray(TagOfLut, bytes)));
        EXPECT_FAILED_ASSERTION(format.ColorLookupTable());
    }
}

TEST_F(LookUpTables, MustBeOfBytes)
{
    for (const auto& node : {UInt32s(TagOfLut, {1, 2, 3}), Int32(TagOfLut, 1), Volume(TagOfLut)})
    {
        CIA::CPixelFormat& format = FormatOf(WithTableOfTheImage(node));
        EXPECT_FAILED_ASSERTION(format.ColorLookupTable());
    }
}

TEST_F(LookUpTables, BelongToGreyPixelsOnly)
{
    Document document;
    document.With(Small().Jpeg(3));
    CIA::CPixelFormat& format = FormatOf(document);
    EXPECT_FAILED_ASSERTION(format.ColorLookupTable());
    document.StackProperties(1).Add(ByteArray(TagOfLut, {1, 2, 3}));
    CIA::CPixelFormat& formatWithTable = FormatOf(document);
    EXPECT_FAILED_ASSERTION(formatWithTable.ColorSpace());
}

// A store that is missing.

TEST_F(PixelsOfAChannel, OfAMissingStoreAreNotKnown)
{
    CIA::CPixelFormat& format = FormatOf(Small().WithoutStore());
    for (const std::function<void()>& ask : {std::function<void()>([&] { format.ColorSpace(); }),
                                             {[&] { format.NumOfPixelComponents(); }},
                                             {[&] { format.NumOfBitsPerPixelComponent(); }},
                                             {[&] { format.ComponentFormat(); }}})
    {
        errno = 0;
        EXPECT_EQ(AssertionOf(ask), "TODO: handle missing KOR file using 'coarse data'");
        EXPECT_EQ(errno, EREMOTE);
    }
}

} // namespace
