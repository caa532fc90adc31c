/// `zel region` on slides of known pixels.

#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>

namespace
{

using namespace SampleDocuments;
using testing::HasSubstr;

/// The rectangle of a picture.
CPicture Part(const CPicture& picture, uint32_t x, uint32_t y, uint32_t width, uint32_t height)
{
    CPicture part(width, height, picture.Samples(), picture.Bits());
    for (uint32_t row = 0; row < height; ++row)
        for (uint32_t col = 0; col < width; ++col)
            for (uint16_t sample = 0; sample < picture.Samples(); ++sample)
                part.At(col, row, sample) = picture.At(x + col, y + row, sample);
    return part;
}

class ZelRegion : public ZelRun
{
protected:
    const CPicture Drawn = DrawPicture(300, 200);

    /// A slide of the drawn picture in tiles of 64 x 64.
    void WriteSlide(CSlideOptions options = Slide(StoreCompression::Raw))
    {
        options.TileWidth = options.TileHeight = 64;
        Write(SlideFromPicture(Drawn, options));
    }
};

/// How a slide is stored, without loss.
struct Storage
{
    std::string Name;
    CSlideOptions Options;
};

class ZelRegionOf : public ZelRegion, public testing::WithParamInterface<Storage>
{
};

TEST_P(ZelRegionOf, IsThePictureThatWasStored)
{
    WriteSlide(GetParam().Options);
    Run("region", "whole.tif");
    EXPECT_EQ(Picture("whole.tif"), FrameOf(Drawn, GetParam().Options, {}));
}

INSTANTIATE_TEST_SUITE_P(
    Storages, ZelRegionOf,
    testing::Values(Storage{"Raw", Slide(StoreCompression::Raw)},
                    Storage{"RawOf16Bits", Slide(StoreCompression::Raw, [](auto& o) { o.Bits = 16; })},
                    Storage{"BlueFirst", Slide(StoreCompression::Raw, [](auto& o) { o.IsBgr = true; })},
                    Storage{"BlueFirstOf16Bits", Slide(StoreCompression::Raw,
                                                       [](auto& o)
                                                       {
                                                           o.Bits = 16;
                                                           o.IsBgr = true;
                                                       })},
                    Storage{"J2k", Slide(StoreCompression::J2k, [](auto& o) { o.Quality = 100; })},
                    Storage{"J2kOf16Bits", Slide(StoreCompression::J2k,
                                                 [](auto& o)
                                                 {
                                                     o.Quality = 100;
                                                     o.Bits = 16;
                                                 })},
                    Storage{"Png", Slide(StoreCompression::Png)},
                    Storage{"PngOf16Bits", Slide(StoreCompression::Png, [](auto& o) { o.Bits = 16; })},
                    Storage{"Bmp", Slide(StoreCompression::Bmp)},
                    Storage{"TiffStore",
                            Slide(StoreCompression::Raw, [](auto& o) { o.Storage = StackStorage::TiffStore; })},
                    Storage{"StripsOfTheDocument", Slide(StoreCompression::Raw,
                                                         [](auto& o)
                                                         {
                                                             o.Storage = StackStorage::InDocument;
                                                             o.RowsPerStrip = 30;
                                                         })},
                    Storage{"J2kStripsOfTheDocument", Slide(StoreCompression::J2k,
                                                            [](auto& o)
                                                            {
                                                                o.Storage = StackStorage::InDocument;
                                                                o.RowsPerStrip = 30;
                                                                o.Quality = 100;
                                                            })}),
    [](const auto& row) { return row.param.Name; });

TEST_F(ZelRegion, OfJpegTilesIsWhatTheirDecoderMakesOfThem)
{
    CSlideOptions options = Slide(StoreCompression::Jpeg,
                                  [](auto& o)
                                  {
                                      o.TileWidth = 64;
                                      o.TileHeight = 64;
                                  });
    WriteSlide(options);
    Run("region", "part.tif", {"--rect", "64,128,64,64"});
    EXPECT_EQ(Picture("part.tif"), DecodeJpeg(StackFromPicture(Drawn, options, 1).TileBytes(0, 1, 2)));
}

TEST_F(ZelRegion, FindsTheTablesOfJpegTilesThatKeepThemApart)
{
    WriteSlide(Slide(StoreCompression::Jpeg,
                     [](auto& o)
                     {
                         o.Quality = 100;
                         o.Storage = StackStorage::TiffStore;
                     }));
    Run("region", "whole.tif");
    const CPicture picture = Picture("whole.tif");
    ASSERT_EQ(picture.Width(), 300u);
    EXPECT_NEAR(picture.At(150, 100, 0), Drawn.At(150, 100, 0), 2);
    EXPECT_NEAR(picture.At(150, 100, 2), Drawn.At(150, 100, 2), 2);
}

TEST_F(ZelRegion, IsCutOutAcrossTiles)
{
    WriteSlide();
    Run("region", "part.png", {"--rect", "50,40,101,99"});
    EXPECT_EQ(Picture("part.png"), Part(Drawn, 50, 40, 101, 99));
}

TEST_F(ZelRegion, EndsWhereThePictureDoes)
{
    WriteSlide();
    Run("region", "part.png", {"--rect=-10,-20,40,50"});
    EXPECT_EQ(Picture("part.png"), Part(Drawn, 0, 0, 30, 30));
    Run("region", "part.png", {"--rect", "290,190,500,500"});
    EXPECT_EQ(Picture("part.png"), Part(Drawn, 290, 190, 10, 10));
}

TEST_F(ZelRegion, IsTheSameOnAnyNumberOfThreads)
{
    WriteSlide();
    Run("region", "one.tif", {"--jobs", "1"});
    Run("region", "many.tif", {"--jobs", "7"});
    EXPECT_EQ(BytesOf("one.tif"), BytesOf("many.tif"));
}

TEST_F(ZelRegion, ShowsOtherLevels)
{
    WriteSlide();
    Run("region", "half.png", {"-l", "1"});
    const CPicture half = Picture("half.png");
    EXPECT_EQ(half.Width(), 150u);
    EXPECT_EQ(half.Height(), 100u);
    EXPECT_NEAR(half.At(75, 50, 1), Drawn.At(150, 100, 1), 40);
}

TEST_F(ZelRegion, CountsFromThePictureWhereverItsTilesBegin)
{
    // Tiles of 100 x 50 from column -1: the picture begins 30 pixels before tile 0.
    const auto stack = Stack(1).Size(200, 50).Tiles(100, 50).Shift(30, 0).Level(0, Columns(-1, 1), Rows(0, 0));
    Write(stack);
    Run("region", "part.tif", {"--rect", "0,0,30,1"});
    const ByteString tile = stack.TileBytes(0, -1, 0);
    const CPicture part = Picture("part.tif");
    for (uint32_t x = 0; x < 30; ++x)
        EXPECT_EQ(part.At(x, 0, 0), tile[70 + x]) << x;
}

TEST_F(ZelRegion, HasTheBackgroundWhereNoTileIsStored)
{
    Write(Stack(1).Size(128, 64).Tiles(64, 64).Raw(ComponentType::Uint8).MissingTile(0, 1, 0));
    EXPECT_THAT(Run("region", "black.tif", {"-c", "0"}).Output, HasSubstr(", 1 tile filled\n"));
    EXPECT_EQ(Picture("black.tif").At(100, 10, 0), 0) << "what is not there measures nothing";
    Run("region", "blended.tif");
    EXPECT_EQ(Picture("blended.tif").At(100, 10, 0), 0);
    Run("region", "grey.tif", {"-c", "0", "--background", "#808080"});
    EXPECT_EQ(Picture("grey.tif").At(100, 10, 0), 128);
}

TEST_F(ZelRegion, IsWhiteWhereAPictureInColoursHasNoTile)
{
    auto stack =
        StackFromPicture(Drawn, Slide(StoreCompression::Jpeg, [](auto& o) { o.TileWidth = o.TileHeight = 64; }), 1);
    Write(stack.MissingTile(0, 1, 0));
    Run("region", "white.tif");
    EXPECT_EQ(Picture("white.tif").At(100, 10, 1), 255);
}

TEST_F(ZelRegion, CountsTheTilesThatItFillsOfEachChannelAndOnlyThoseOfThePicture)
{
    Write(Stack(1).Size(200, 100).Tiles(64, 64).Channels(2).Missing([](const CTilePlace& place)
                                                                    { return place.Column == 1 && place.At.C == 1; }));
    EXPECT_THAT(Run("region", "all.tif").Output, HasSubstr(", 2 tiles filled\n"));
    EXPECT_THAT(Run("region", "part.tif", {"-c", "1", "--rect", "70,0,20,100"}).Output,
                HasSubstr(", 2 tiles filled\n"));
    EXPECT_THAT(Run("region", "other.tif", {"-c", "0"}).Output, Not(HasSubstr("filled")));
}

TEST_F(ZelRegion, WritesNothingThatLacksAnythingIfItIsStrict)
{
    Write(Stack(1).Size(128, 64).Tiles(64, 64).MissingTile(0, 1, 0));
    const auto result = TryToRun("region", "whole.tif", {"--strict"});
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("--strict: 1 tile filled; nothing is written"));
    EXPECT_FALSE(std::filesystem::exists(Name("whole.tif")));
    Run("region", "part.tif", {"--strict", "--rect", "0,0,64,64"});
}

TEST_F(ZelRegion, TakesOneChannelAtFullDepth)
{
    const CSlideOptions options = Slide(StoreCompression::Raw,
                                        [](auto& o)
                                        {
                                            o.Bits = 16;
                                            o.NumOfChannels = 3;
                                        });
    WriteSlide(options);
    Run("region", "one.png", {"-c", "2"});
    EXPECT_EQ(Picture("one.png"), FrameOf(Drawn, options, {.C = 2}));
}

TEST_F(ZelRegion, TakesAPositionOnEachAxis)
{
    const CSlideOptions options = Slide(StoreCompression::Raw,
                                        [](auto& o)
                                        {
                                            o.NumOfZ = 3;
                                            o.NumOfT = 2;
                                            o.NumOfLambdas = 2;
                                        });
    WriteSlide(options);
    Run("region", "one.png", {"-z", "2", "-t", "1", "--lambda", "1"});
    EXPECT_EQ(Picture("one.png"), FrameOf(Drawn, options, {.Z = 2, .T = 1, .L = 1}));
}

TEST_F(ZelRegion, WritesSeveralChannelsAsPagesOfATiffFile)
{
    WriteSlide(Slide(StoreCompression::Raw, [](auto& o) { o.NumOfChannels = 3; }));
    Run("region", "pages.tif", {"-c", "2", "-c", "0"});
    const auto pages = TestSupport::RunCommand({"tiffinfo", Name("pages.tif")}).Output;
    EXPECT_THAT(pages, HasSubstr("=== TIFF directory 1 ==="));
    ExpectRefusal("region", "pages.png", {"-c", "2", "-c", "0"}, "holds one picture");
}

/// A stack of one tile of 2 x 1 pixels in each channel.
Stack TwoPixels(std::vector<CChannel> channels, std::vector<ByteString> tiles)
{
    CTileContents contents;
    contents.Bytes = [tiles](const CTilePlace& place) { return tiles[place.At.C]; };
    return Stack(1).Size(2, 1).Tiles(2, 1).Channels(std::move(channels)).Contents(contents);
}

TEST_F(ZelRegion, BlendsChannelsInTheirColoursAndLimits)
{
    Write(TwoPixels({CChannel("red", 0, 100).With(CLookUpTable(Ramp(256, {255, 0, 0}))),
                     CChannel("blue", 100, 200).With(CLookUpTable(Ramp(256, {0, 0, 255})))},
                    {{100, 50}, {100, 255}}));
    Run("region", "blend.png");
    const CPicture blend = Picture("blend.png");
    EXPECT_EQ(PackedRows(blend), (ByteString{255, 0, 0, 128, 0, 255}));
}

TEST_F(ZelRegion, GivesColoursToChannelsThatHaveNone)
{
    Write(TwoPixels({CChannel("first", 0, 256), CChannel("second", 0, 256)}, {{255, 0}, {0, 255}}));
    Run("region", "blend.png");
    EXPECT_EQ(PackedRows(Picture("blend.png")), (ByteString{255, 0, 0, 0, 255, 0}));
    Run("region", "grey.png", {"-c", "1", "--blend"});
    EXPECT_EQ(PackedRows(Picture("grey.png")), (ByteString{0, 0, 0, 255, 255, 255}));
}

TEST_F(ZelRegion, ShowsADamagedTileAsBackgroundAndSaysSo)
{
    Document document;
    document.With(StackFromPicture(Drawn,
                                   Slide(StoreCompression::Jpeg,
                                         [](auto& o)
                                         {
                                             o.TileWidth = 64;
                                             o.TileHeight = 64;
                                         }),
                                   1));
    document.Store(1).Tiles[1].Body.resize(200);
    Write(document);
    const auto result = TryToRun("region", "whole.png");
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("1 tile cannot be decoded and is background: level 0, column 1, row 0"));
    EXPECT_EQ(Picture("whole.png").At(100, 10, 0), 255);
    EXPECT_NE(Picture("whole.png").At(150, 10, 0), 255);
}

/// Takes the segments of a kind out of a JPEG stream.
void RemoveSegments(ByteString& stream, uint8_t marker)
{
    constexpr uint8_t startOfScan = 0xDA;
    for (size_t at = 2; at + 3 < stream.size() && stream[at + 1] != startOfScan;)
    {
        const size_t size = size_t{2} + stream[at + 2] * size_t{256} + stream[at + 3];
        if (stream[at + 1] == marker)
            stream.erase(stream.begin() + static_cast<std::ptrdiff_t>(at),
                         stream.begin() + static_cast<std::ptrdiff_t>(at + size));
        else
            at += size;
    }
}

TEST_F(ZelRegion, TakesNoTablesOfTheTileBefore)
{
    constexpr uint8_t quantisationTables = 0xDB;
    Document document;
    document.With(
        StackFromPicture(Drawn, Slide(StoreCompression::Jpeg, [](auto& o) { o.TileWidth = o.TileHeight = 64; }), 1));
    RemoveSegments(document.Store(1).Tiles[1].Body, quantisationTables);
    Write(document);
    const auto result = TryToRun("region", "whole.png", {"--jobs", "1"});
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("1 tile cannot be decoded and is background: level 0, column 1, row 0"));
}

CSlideOptions StripsOfTiffStore(uint32_t compression, uint32_t rows = 30)
{
    return Slide(compression,
                 [rows](auto& o)
                 {
                     o.Storage = StackStorage::TiffStore;
                     o.RowsPerStrip = rows;
                     o.Quality = 100;
                 });
}

TEST_F(ZelRegion, SaysWhatTheInterfaceDoesNotHandOut)
{
    for (const uint32_t compression : {StoreCompression::Raw, StoreCompression::J2k})
    {
        WriteSlide(StripsOfTiffStore(compression));
        EXPECT_THAT(Run("region", "whole.tif").Errors, HasSubstr("does not hand out the last one of each level"));
        // 200 rows in strips of 30: the last one has rows 180 to 199.
        const CPicture whole = Picture("whole.tif");
        EXPECT_EQ(Part(whole, 0, 0, 300, 180), Part(Drawn, 0, 0, 300, 180));
        EXPECT_EQ(whole.At(10, 180, 0), 255);
    }
}

TEST_F(ZelRegion, FindsStripsOfJpegWhoseHeightTheInterfaceDoesNotTell)
{
    WriteSlide(StripsOfTiffStore(StoreCompression::Jpeg, 64));
    Run("region", "whole.tif");
    EXPECT_NEAR(Picture("whole.tif").At(150, 185, 0), Drawn.At(150, 185, 0), 2);
}

TEST_F(ZelRegion, SaysThatOfADirectoryTheFirstTileIsHandedOut)
{
    Write(Document().With(Stack(1).Size(128, 64).Tiles(64, 64).InDocument()).With(Stack(2).Size(128, 64)));
    EXPECT_THAT(Run("region", "whole.tif").Errors, HasSubstr("hands out the first one only"));
    EXPECT_EQ(Picture("whole.tif").At(100, 10, 0), 0);
    EXPECT_EQ(Run("region", "other.tif", {"-g", "1"}).Errors, "");
}

TEST_F(ZelRegion, TakesNoColumnOfTilesForStripsOfAnotherGroup)
{
    auto tiles = Slide(StoreCompression::Raw, [](auto& o) { o.TileWidth = o.TileHeight = 64; });
    const CPicture narrow = DrawPicture(60, 200);
    for (const StackStorage::E storage : {StackStorage::BinaryStore, StackStorage::TiffStore})
    {
        tiles.Storage = storage;
        Write(Document()
                  .With(StackFromPicture(narrow, tiles, 1))
                  .With(StackFromPicture(Drawn, StripsOfTiffStore(StoreCompression::Raw), 2)));
        EXPECT_EQ(Run("region", "whole.tif").Errors, "");
        EXPECT_EQ(Picture("whole.tif"), narrow);
    }
}

TEST_F(ZelRegion, RefusesWhatThereIsNot)
{
    WriteSlide();
    ExpectRefusal("region", "a.png", {"-g", "1"}, "there is no group 1");
    ExpectRefusal("region", "a.png", {"-l", "9"}, "level 9 of group 0 is not there");
    ExpectRefusal("region", "a.png", {"-c", "1"}, "there is no channel 1");
    ExpectRefusal("region", "a.png", {"-z", "1"}, "1 positions on z");
    ExpectRefusal("region", "a.png", {"--rect", "300,0,10,10"}, "beside the picture");
    ExpectRefusal("region", "a.png", {"--rect", "0,0,0,10"}, "above 0");
    ExpectRefusal("region", "a.png", {"--background", "greenish"}, "no colour");
    ExpectRefusal("region", "a.gif", {}, "give a name that ends in .png or .tif");
}

} // namespace
