#include "SampleDocuments/MirroredPlane.h"
#include "SampleDocuments/Slide.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <set>

using namespace SampleDocuments;

namespace
{

/// A grey picture whose pixel at x, y is 10 x y + x.
CPicture Numbered(uint32_t width, uint32_t height)
{
    CPicture picture(width, height, 1, 8);
    for (uint32_t y = 0; y < height; ++y)
        for (uint32_t x = 0; x < width; ++x)
            picture.At(x, y, 0) = static_cast<uint16_t>(10 * y + x);
    return picture;
}

std::vector<uint16_t> RowOf(const CPicture& picture, uint32_t y = 0)
{
    return {picture.Row(y).begin(), picture.Row(y).end()};
}

TEST(MirroredPlane, GoesOnInMirroredPictures)
{
    const CMirroredPlane plane(Numbered(3, 2));
    EXPECT_EQ(RowOf(plane.Window(0, 0, 8, 1, 8, 1, 0)), (std::vector<uint16_t>{0, 1, 2, 2, 1, 0, 0, 1}));
    EXPECT_EQ(RowOf(plane.Window(4, 2, 3, 1, 3, 1, 0)), (std::vector<uint16_t>{11, 10, 10}));
    EXPECT_EQ(plane.PeriodX(), 6u);
    EXPECT_EQ(plane.PeriodY(), 4u);
}

TEST(MirroredPlane, FillsWhatIsNotVisible)
{
    const CPicture window = CMirroredPlane(Numbered(3, 2)).Window(0, 0, 3, 2, 2, 1, 99);
    EXPECT_EQ(RowOf(window, 0), (std::vector<uint16_t>{0, 1, 99}));
    EXPECT_EQ(RowOf(window, 1), (std::vector<uint16_t>{99, 99, 99}));
}

TEST(MirroredPlane, HalvesToTheMeanOfFourPixels)
{
    const CMirroredPlane half = CMirroredPlane(Numbered(4, 2)).Halved();
    EXPECT_EQ(RowOf(half.Window(0, 0, 4, 1, 4, 1, 0)), (std::vector<uint16_t>{6, 8, 8, 6})) << "5.5 and 7.5";
}

TEST(MirroredPlane, HalvesOddPicturesAcrossTheirEdges)
{
    // 0 1 2 | 2 1 0 | 0 ... in pairs: 0 1, 2 2, 1 0, 0 1
    const CMirroredPlane half = CMirroredPlane(Numbered(3, 1)).Halved();
    EXPECT_EQ(half.PeriodX(), 3u);
    EXPECT_EQ(RowOf(half.Window(0, 0, 4, 1, 4, 1, 0)), (std::vector<uint16_t>{1, 2, 1, 1}));
    EXPECT_EQ(half.Halved().PeriodX(), 3u) << "an odd period takes two of its kind";
}

TEST(SlideFromPicture, HoldsTheTilesOfThePicture)
{
    const CPicture picture = DrawPicture(300, 200);
    CSlideOptions options;
    options.TileWidth = options.TileHeight = 128;
    options.Compression = StoreCompression::Png;
    const Stack stack = SlideFromPicture(picture, options).StackOf(1);
    EXPECT_EQ(stack.Grids().size(), 3u) << "300, 150, 75 pixels wide";

    const CPicture middle = Decode(stack.TileBytes(0, 1, 0));
    EXPECT_EQ(middle, CMirroredPlane(picture).Window(128, 0, 128, 128, 128, 128, 0));
    const CPicture corner = Decode(stack.TileBytes(0, 2, 1));
    EXPECT_EQ(corner.At(43, 71, 2), picture.At(299, 199, 2)) << "the last pixel";
    EXPECT_EQ(corner.At(44, 71, 2), 255) << "beside it";
    const CPicture top = Decode(stack.TileBytes(2, 0, 0));
    EXPECT_EQ(top, CMirroredPlane(picture).Halved().Halved().Window(0, 0, 128, 128, 75, 50, 255));
}

struct CFormat
{
    const char* Name;
    uint32_t Compression;
    uint16_t Bits;
    bool IsGrey;
};

class FormatOfASlide : public testing::TestWithParam<CFormat>
{
};

TEST_P(FormatOfASlide, ShowsInItsTilesAndInItsHeader)
{
    CSlideOptions options;
    options.Compression = GetParam().Compression;
    options.Bits = GetParam().Bits;
    options.IsGrey = GetParam().IsGrey;
    options.Quality = 100;
    Document document = SlideFromPicture(DrawPicture(256, 256), options);
    const CStoreAdditionalHeader& header = document.Store(1).Additional;
    EXPECT_EQ(header.CompressionFormat, GetParam().Compression);
    EXPECT_EQ(header.ComponentType, GetParam().Bits == 16 ? ComponentType::Uint16 : ComponentType::Uint8);
    EXPECT_EQ(header.ComponentCount, GetParam().IsGrey ? 1u : 3u);

    const ByteString& tile = document.Store(1).Tiles[0].Body;
    if (GetParam().Compression == StoreCompression::Raw)
        EXPECT_EQ(tile.size(), 65536u * header.ComponentCount * GetParam().Bits / 8);
    else if (GetParam().Compression != StoreCompression::Bmp)
    {
        EXPECT_EQ(Decode(tile).Bits(), GetParam().Bits);
        EXPECT_EQ(Decode(tile).Samples(), header.ComponentCount);
    }
}

INSTANTIATE_TEST_SUITE_P(All, FormatOfASlide,
                         testing::Values(CFormat{"Raw8", StoreCompression::Raw, 8, false},
                                         CFormat{"Raw16", StoreCompression::Raw, 16, true},
                                         CFormat{"Jpeg", StoreCompression::Jpeg, 8, false},
                                         CFormat{"GreyJpeg", StoreCompression::Jpeg, 8, true},
                                         CFormat{"J2k8", StoreCompression::J2k, 8, false},
                                         CFormat{"J2k16", StoreCompression::J2k, 16, true},
                                         CFormat{"Png8", StoreCompression::Png, 8, false},
                                         CFormat{"Png16", StoreCompression::Png, 16, false},
                                         CFormat{"Bmp", StoreCompression::Bmp, 8, false}),
                         [](const testing::TestParamInfo<CFormat>& format) { return format.param.Name; });

TEST(GrownSlide, ShowsMirroredPicturesAndSharesEqualTiles)
{
    CSlideOptions options;
    options.Grow = 20;
    options.TileWidth = options.TileHeight = 64;
    options.Compression = StoreCompression::Png;
    Document document = SlideFromPicture(DrawPicture(64, 64), options);
    const Stack stack = document.StackOf(1);
    EXPECT_EQ(stack.LevelWidth(0), 20u * 64u);
    const CPicture first = Decode(stack.TileBytes(0, 0, 0)), second = Decode(stack.TileBytes(0, 1, 0));
    EXPECT_EQ(first.At(63, 7, 0), second.At(0, 7, 0));
    EXPECT_EQ(first.At(0, 7, 0), second.At(63, 7, 0));

    TestSupport::TemporaryFolder folder;
    const auto path = document.WriteTo(folder.Path() / "a.zel");
    std::set<ByteString> bodies;
    stack.ForEachTile([&](const CTilePlace& place) { bodies.insert(stack.TileBytes(place)); });
    size_t bytes = 236 + 36 * stack.NumOfTiles();
    for (const ByteString& body : bodies)
        bytes += body.size();
    EXPECT_GT(stack.NumOfTiles(), 500u);
    EXPECT_EQ(std::filesystem::file_size(document.StorePath(path, 1)), bytes) << "each different tile once";
}

TEST(GrownSlide, CanGiveEachTileBytesOfItsOwn)
{
    CSlideOptions options;
    options.Grow = 3;
    options.HasEachTileItsOwnBytes = true;
    Document document = SlideFromPicture(DrawPicture(256, 256), options);
    const Stack stack = document.StackOf(1);
    TestSupport::TemporaryFolder folder;
    const auto path = document.WriteTo(folder.Path() / "a.zel");
    size_t bytes = 236;
    stack.ForEachTile([&](const CTilePlace& place) { bytes += 36 + stack.TileBytes(place).size(); });
    EXPECT_EQ(std::filesystem::file_size(document.StorePath(path, 1)), bytes);
}

TEST(GrownSlide, CanBeCutToWholeTiles)
{
    CSlideOptions options;
    options.Grow = 2;
    options.IsCutToWholeTiles = true;
    EXPECT_EQ(SlideFromPicture(DrawPicture(700, 300), options).StackOf(1).LevelWidth(0), 1024u);
    EXPECT_THROW(SlideFromPicture(DrawPicture(200, 300), options), CSampleError);
}

TEST(FramesOfASlide, DifferAlongEachDimension)
{
    CSlideOptions options;
    options.NumOfZ = 3;
    options.NumOfT = options.NumOfLambdas = options.NumOfChannels = 2;
    const CPicture picture = DrawPicture(128, 128);
    const CIndexes sharp = {.Z = 1};
    std::set<ByteString> seen = {PackedRows(FrameOf(picture, options, sharp))};
    for (const CIndexes& at :
         {CIndexes{}, CIndexes{.Z = 1, .T = 1}, CIndexes{.Z = 1, .L = 1}, CIndexes{.Z = 1, .C = 1}})
        EXPECT_TRUE(seen.insert(PackedRows(FrameOf(picture, options, at))).second);
    EXPECT_EQ(FrameOf(picture, options, sharp).At(9, 9, 0), 255 - picture.At(9, 9, 0)) << "red, on a dark ground";
}

TEST(FramesOfASlide, AreToldByItsDimensions)
{
    CSlideOptions options;
    options.NumOfZ = 3;
    options.NumOfChannels = 6;
    options.NumOfStacks = 2;
    Document document = SlideFromPicture(DrawPicture(64, 64), options);
    EXPECT_EQ(document.StackOf(2).NumOfPointsPerDim(), (std::vector<uint32_t>{3, 6}));
    EXPECT_EQ(document.ChannelVolume(2, 0).Child(2021).Value(), Text(0, "DAPI").Value());
    EXPECT_EQ(document.ChannelVolume(2, 5).Child(2021).Value(), Text(0, "Channel 5").Value());
}

TEST(SlideFromPicture, HasAThumbnailInItsFirstDirectoryAndInItsProperties)
{
    Document document = SlideFromPicture(DrawPicture(600, 300), {});
    EXPECT_EQ(document.File().Directories[0].Width(), 150u);
    const ByteString& bitmap = document.Volume({2000, 2004, 2109, 38, 268435458}).Value();
    EXPECT_EQ(bitmap[0], 40) << "a bitmap without its file header";
    EXPECT_EQ(bitmap[4], 150);
}

TEST(SlideFromPicture, RefusesWhatCannotBe)
{
    const auto refuses = [](auto change)
    {
        CSlideOptions options;
        change(options);
        EXPECT_THROW(SlideFromPicture(DrawPicture(64, 64), options), CSampleError);
    };
    refuses([](CSlideOptions& options) { options.Bits = 16; });
    refuses([](CSlideOptions& options) { options.Grow = 1u << 26; });
    refuses([](CSlideOptions& options) { options.TileWidth = 0; });
    refuses([](CSlideOptions& options) { options.NumOfLevels = 101; });
    EXPECT_THROW(SlideFromPicture(CPicture(), {}), CSampleError);
}

} // namespace
