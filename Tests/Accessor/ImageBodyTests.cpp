// The bytes of an image.

#include "Tests/Accessor/Slide.h"

using namespace SlideOfTest;

namespace
{

constexpr CMN_RECT Whole = {0, 0, 0, 0};

/// The bytes of a rectangle within a raw tile.
ByteString Part(const ByteString& tile, uint32_t tileWidth, uint32_t bytesPerPixel, const CMN_RECT& rect)
{
    ByteString part;
    for (UINT64 y = rect.y; y < rect.y + rect.height; ++y)
    {
        const auto row = tile.begin() + static_cast<std::ptrdiff_t>((y * tileWidth + rect.x) * bytesPerPixel);
        part.insert(part.end(), row, row + static_cast<std::ptrdiff_t>(rect.width * bytesPerPixel));
    }
    return part;
}

class BodyOfAnImage : public Slide
{
protected:
    /// A buffer for a body, with what was in it before.
    ByteString Buffer = ByteString(1000, 0xAB);
    UINT64 Size = 0;
};

TEST_F(BodyOfAnImage, IsWhatTheStoreHolds)
{
    const Stack stack = Stack(1).Size(600, 300).Tiles(64, 32).Levels(2).Channels(2);
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 13, L"1")), stack.TileBytes(0, 3, 1, {.C = 1}));
    EXPECT_EQ(BodyOf(Tile(1, 7, L"0")), stack.TileBytes(1, 2, 1));
}

TEST_F(BodyOfAnImage, IsHandedOverAsStoredWhenItIsCompressed)
{
    const Stack stack = Stack(1).Jpeg(3).Contents(BytesOfSize(1, 777));
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
}

TEST_F(BodyOfAnImage, TellsItsSizeWithoutABuffer)
{
    Open(Stack(1).Contents(BytesOfSize(1, 500)));
    CMN_RECT rect = Whole;
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0), &rect, nullptr, UINT64{0}, &Size), AC_RESULT_SUCCESS);
    EXPECT_EQ(Size, 500u);
    Size = 0;
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0), &rect, nullptr, UINT64{5000}, &Size), AC_RESULT_SUCCESS);
    EXPECT_EQ(Size, 500u);
}

TEST_F(BodyOfAnImage, IsNotReadIntoABufferOneByteTooSmall)
{
    Open(Stack(1).Contents(BytesOfSize(1, 500)));
    CMN_RECT rect = Whole;
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0), &rect, Buffer.data(), UINT64{499}, &Size), AC_RESULT_SUCCESS);
    EXPECT_EQ(Size, 500u);
    EXPECT_EQ(Buffer, ByteString(1000, 0xAB));
}

TEST_F(BodyOfAnImage, FillsNoMoreThanItsSize)
{
    const Stack stack = Stack(1).Contents(BytesOfSize(1, 500));
    Open(stack);
    CMN_RECT rect = Whole;
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0), &rect, Buffer.data(), UINT64{1000}, &Size), AC_RESULT_SUCCESS);
    EXPECT_EQ(Size, 500u);
    ByteString expected = stack.TileBytes(0, 0, 0);
    expected.resize(1000, 0xAB);
    EXPECT_EQ(Buffer, expected);
}

TEST_F(BodyOfAnImage, DoesNotFitABufferOfMoreThan32Bits)
{
    Open(Stack(1));
    CMN_RECT rect = Whole;
    const AC_HIMAGE image = Tile(0, 0);
    EXPECT_EQ(Call(_AC_GetImageBody, image, &rect, nullptr, UINT64{0xFFFFFFFE}, &Size), AC_RESULT_SUCCESS);
    EXPECT_EQ(Call(_AC_GetImageBody, image, &rect, nullptr, UINT64{0xFFFFFFFF}, &Size), AC_RESULT_FAILURE);
}

// Rectangles of raw tiles.

class RectangleOfARawTile : public Slide, public testing::WithParamInterface<uint32_t>
{
};

TEST_P(RectangleOfARawTile, IsCutOutWhateverThePixelSize)
{
    const Stack stack = Stack(1).Size(100, 80).Tiles(100, 80).Raw(static_cast<ComponentType::E>(GetParam()),
                                                                  GetParam() == ComponentType::Uint16 ? 3 : 1);
    Open(stack);
    const ByteString tile = stack.TileBytes(0, 0, 0);
    const AC_HIMAGE image = Tile(0, 0);
    for (const CMN_RECT& rect : {CMN_RECT{1, 0, 1, 1}, CMN_RECT{10, 20, 30, 40}, CMN_RECT{99, 79, 1, 1},
                                 CMN_RECT{0, 5, 100, 7}, CMN_RECT{0, 0, 100, 80}})
        EXPECT_EQ(BodyOf(image, rect), Part(tile, 100, stack.BytesPerPixel(), rect)) << rect.x << ", " << rect.y;
}

INSTANTIATE_TEST_SUITE_P(ComponentTypes, RectangleOfARawTile,
                         testing::Values(ComponentType::Int8, ComponentType::Uint8, ComponentType::Int16,
                                         ComponentType::Uint16, ComponentType::Int32, ComponentType::Uint32,
                                         ComponentType::Int64, ComponentType::Uint64, ComponentType::Float,
                                         ComponentType::Double));

TEST_F(BodyOfAnImage, TellsTheSizeOfARectangle)
{
    Open(Stack(1).Tiles(100, 80).Raw(ComponentType::Uint16));
    CMN_RECT rect = {10, 20, 30, 40};
    const AC_HIMAGE image = Tile(0, 0);
    EXPECT_EQ(Call(_AC_GetImageBody, image, &rect, nullptr, UINT64{0}, &Size), AC_RESULT_SUCCESS);
    EXPECT_EQ(Size, 30u * 40u * 2u);
    EXPECT_EQ(Call(_AC_GetImageBody, image, &rect, Buffer.data(), UINT64{1000}, &Size), AC_RESULT_SUCCESS);
    EXPECT_EQ(Size, 30u * 40u * 2u);
    EXPECT_EQ(Buffer, ByteString(1000, 0xAB));
}

const std::string OutsideTheTile = "Error: The rectangle specified does not lie entirely within the tile!";
const std::string HalfEmpty =
    "Error: height or width is 0, but remaining parameters are not all 0, that would have indicated to fetch the "
    "entire deepzoom tile! Treating this as invalid accordingly...";
const std::string NoParts =
    "For non-raw formats, we do not support returning part of a deepzoom tile! Send in pRect initialized to all zeroes "
    "instead, OR as requested pRect->width and pRect->height if intialized to the deepzoom tile width(100) and "
    "deepzoom tile height(80) thereby implying the full tile, will also be accepted.";

struct RectRow : Row
{
    CMN_RECT Rect;
    AC_Result Result;
    std::vector<std::string> Messages;
};

class Rectangle : public Slide, public testing::WithParamInterface<RectRow>
{
protected:
    void ExpectAnswer(const Stack& stack)
    {
        Open(stack);
        const AC_HIMAGE image = Tile(0, 0);
        AC_Result result = AC_RESULT_SUCCESS;
        auto messages = MessagesOf([&] { result = ResultOfBody(image, GetParam().Rect); });
        EXPECT_EQ(result, GetParam().Result);
        for (std::string& message : messages)
            if (message.starts_with("Assertion failed: file "))
                message = "Assertion failed";
        EXPECT_EQ(messages, GetParam().Messages);
    }
};

class RectangleOfRawPixels : public Rectangle
{
};

TEST_P(RectangleOfRawPixels, MustLieInTheTile)
{
    ExpectAnswer(Stack(1).Tiles(100, 80).Size(100, 80));
}

constexpr UINT64 Max = 0xFFFFFFFE;

INSTANTIATE_TEST_SUITE_P(
    Rectangles, RectangleOfRawPixels,
    testing::Values(RectRow{{"Nothing"}, {0, 0, 0, 0}, AC_RESULT_SUCCESS, {}},
                    RectRow{{"All"}, {0, 0, 100, 80}, AC_RESULT_SUCCESS, {}},
                    RectRow{{"OnePixel"}, {1, 0, 1, 1}, AC_RESULT_SUCCESS, {}},
                    RectRow{{"RightOfTheTile"}, {100, 0, 1, 1}, AC_RESULT_INVALID_PARAM, {OutsideTheTile}},
                    RectRow{{"BelowTheTile"}, {0, 80, 1, 1}, AC_RESULT_INVALID_PARAM, {OutsideTheTile}},
                    RectRow{{"TooWide"}, {0, 0, 101, 80}, AC_RESULT_INVALID_PARAM, {OutsideTheTile}},
                    RectRow{{"TooHigh"}, {0, 0, 100, 81}, AC_RESULT_INVALID_PARAM, {OutsideTheTile}},
                    RectRow{{"SumThatWraps"}, {Max, 0, 3, 1}, AC_RESULT_INVALID_PARAM, {OutsideTheTile}},
                    RectRow{{"NoWidth"}, {0, 0, 0, 80}, AC_RESULT_INVALID_PARAM, {HalfEmpty}},
                    RectRow{{"NoHeight"}, {0, 0, 100, 0}, AC_RESULT_INVALID_PARAM, {HalfEmpty}},
                    RectRow{{"NoSizeAwayFromTheCorner"}, {5, 0, 0, 0}, AC_RESULT_INVALID_PARAM, {HalfEmpty}},
                    RectRow{{"MoreThan32Bits"}, {0, 0, 0xFFFFFFFF, 1}, AC_RESULT_FAILURE, {"Assertion failed"}},
                    RectRow{
                        {"PositionOfMoreThan32Bits"}, {~UINT64{0}, 0, 1, 1}, AC_RESULT_FAILURE, {"Assertion failed"}}),
    NameOfRow());

class RectangleOfCompressedPixels : public Rectangle
{
};

TEST_P(RectangleOfCompressedPixels, MustBeAllOfTheTile)
{
    ExpectAnswer(Stack(1).Tiles(100, 80).Size(100, 80).Jpeg());
}

INSTANTIATE_TEST_SUITE_P(
    Rectangles, RectangleOfCompressedPixels,
    testing::Values(RectRow{{"Nothing"}, {0, 0, 0, 0}, AC_RESULT_SUCCESS, {}},
                    RectRow{{"All"}, {0, 0, 100, 80}, AC_RESULT_SUCCESS, {}},
                    RectRow{{"AllButOneColumn"}, {1, 0, 99, 80}, AC_RESULT_INVALID_PARAM, {NoParts}},
                    RectRow{{"AllButOneRow"}, {0, 0, 100, 79}, AC_RESULT_INVALID_PARAM, {NoParts}},
                    RectRow{{"MoreThanTheTile"}, {0, 0, 101, 80}, AC_RESULT_INVALID_PARAM, {NoParts}},
                    RectRow{{"NoWidth"}, {0, 0, 0, 80}, AC_RESULT_FAILURE, {"Assertion failed"}},
                    RectRow{{"NoSizeAwayFromTheCorner"}, {5, 0, 0, 0}, AC_RESULT_FAILURE, {"Assertion failed"}}),
    NameOfRow());

struct CompressionRow : Row
{
    std::function<Stack(Stack)> With;
};

class CompressedTile : public Slide, public testing::WithParamInterface<CompressionRow>
{
};

TEST_P(CompressedTile, IsServedWholeOnly)
{
    const Stack stack = GetParam().With(Stack(1).Tiles(100, 80).Contents(Labels(1)));
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
    EXPECT_EQ(BodyOf(Tile(0, 0), {0, 0, 100, 80}), stack.TileBytes(0, 0, 0));
    EXPECT_EQ(ResultOfBody(Tile(0, 0), {0, 0, 50, 80}), AC_RESULT_INVALID_PARAM);
}

INSTANTIATE_TEST_SUITE_P(Compressions, CompressedTile,
                         testing::Values(CompressionRow{{"Jpeg"}, [](Stack s) { return s.Jpeg(); }},
                                         CompressionRow{{"JpegLossless"}, [](Stack s) { return s.JpegLossless(); }},
                                         CompressionRow{{"J2k"}, [](Stack s) { return s.J2k(); }},
                                         CompressionRow{{"Png"}, [](Stack s) { return s.Png(); }},
                                         CompressionRow{{"Bmp"}, [](Stack s) { return s.Bmp(); }}),
                         NameOfRow());

} // namespace
