/// `zel export`, read back by libtiff.

#include "Tests/HostTool/TiffFile.h"
#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>

namespace
{

using namespace SampleDocuments;
using testing::HasSubstr;
using testing::Not;

class ZelExport : public ZelRun
{
protected:
    const CPicture Drawn = DrawPicture(300, 200);

    /// A slide of the drawn picture in tiles of 64 x 64.
    Stack WriteSlide(CSlideOptions options = Slide(StoreCompression::Raw))
    {
        options.TileWidth = options.TileHeight = 64;
        const Stack stack = StackFromPicture(Drawn, options, 1);
        Write(SlideFromPicture(Drawn, options));
        return stack;
    }
    TestSupport::CommandResult Export(const Words& options = {}) { return Run("export", "slide.ome.tif", options); }
    CTiffFile File() const { return CTiffFile(Name("slide.ome.tif")); }
    CPicture Exported(uint32_t plane, uint32_t level = 0) const
    {
        CTiffFile file = File();
        return file.Select(plane, level) ? file.Picture() : CPicture();
    }
    /// What `zel region` makes of a level of the first plane.
    CPicture Region(uint32_t level)
    {
        Run("region", "level.png", {"-c", "0", "-l", std::to_string(level)});
        return Picture("level.png");
    }
};

struct Storage
{
    std::string Name;
    CSlideOptions Options;
    bool IsAsStored;
};

class ZelExportOf : public ZelExport, public testing::WithParamInterface<Storage>
{
};

TEST_P(ZelExportOf, HasThePixelsOfEachLevel)
{
    WriteSlide(GetParam().Options);
    const auto result = Export({"--prove"});
    const uint32_t levels = GetParam().Options.Storage == StackStorage::InDocument ? 1 : 4;
    for (uint32_t level = 0; level < levels; ++level)
        EXPECT_EQ(Exported(0, level), Region(level)) << level;
    EXPECT_FALSE(File().Select(0, levels));
    EXPECT_THAT(result.Output, HasSubstr(GetParam().IsAsStored ? " 0 recompressed" : "; 0 tiles as stored"));
    EXPECT_THAT(result.Output, HasSubstr("read back"));
}

INSTANTIATE_TEST_SUITE_P(
    Storages, ZelExportOf,
    testing::Values(
        Storage{"Jpeg", Slide(StoreCompression::Jpeg), true},
        Storage{"GreyJpeg", Slide(StoreCompression::Jpeg, [](auto& o) { o.IsGrey = true; }), true},
        Storage{"JpegWithTablesApart",
                Slide(StoreCompression::Jpeg, [](auto& o) { o.Storage = StackStorage::TiffStore; }), true},
        Storage{"Raw", Slide(StoreCompression::Raw), true},
        Storage{"RawOf16Bits", Slide(StoreCompression::Raw, [](auto& o) { o.Bits = 16; }), true},
        Storage{"RawInTiffStore", Slide(StoreCompression::Raw, [](auto& o) { o.Storage = StackStorage::TiffStore; }),
                true},
        Storage{"BlueFirst", Slide(StoreCompression::Raw, [](auto& o) { o.IsBgr = true; }), false},
        Storage{"BlueFirstOf16Bits", Slide(StoreCompression::Raw, [](auto& o) { o.Bits = 16, o.IsBgr = true; }), false},
        Storage{"Png", Slide(StoreCompression::Png), false},
        Storage{"GreyPngOf16Bits", Slide(StoreCompression::Png, [](auto& o) { o.Bits = 16, o.IsGrey = true; }), false},
        Storage{"Bmp", Slide(StoreCompression::Bmp), false},
        Storage{
            "StripsOfTheDocument",
            Slide(StoreCompression::Raw, [](auto& o) { o.Storage = StackStorage::InDocument, o.RowsPerStrip = 30; }),
            false}),
    [](const auto& row) { return row.param.Name; });

TEST_F(ZelExport, CopiesJpegTilesBitForBit)
{
    const Stack stack = WriteSlide(Slide(StoreCompression::Jpeg));
    Export();
    CTiffFile file = File();
    ASSERT_TRUE(file.Select(0, 1));
    EXPECT_EQ(file.Short(TIFFTAG_COMPRESSION), 7u);
    EXPECT_EQ(file.RawTile(4), stack.TileBytes(1, 1, 1)); // 150 x 100 pixels: three columns
}

TEST_F(ZelExport, CopiesJpeg2000TilesBitForBit)
{
    const Stack stack = WriteSlide(Slide(StoreCompression::J2k, [](auto& o) { o.Bits = 16; }));
    Export({"--prove"});
    CTiffFile file = File();
    ASSERT_TRUE(file.Select(0));
    EXPECT_EQ(file.Short(TIFFTAG_COMPRESSION), 34712u);
    EXPECT_EQ(file.RawTile(6), stack.TileBytes(0, 1, 1));
}

TEST_F(ZelExport, SaysWhatIsRecompressed)
{
    WriteSlide(Slide(StoreCompression::Png));
    EXPECT_THAT(Export().Errors, HasSubstr("recompressed without loss, as its tiles are PNG: level 0 1 2 3"));
    WriteSlide(Slide(StoreCompression::Jpeg));
    EXPECT_EQ(Export().Errors, "");
}

TEST_F(ZelExport, HoldsAllPlanesChannelsFirst)
{
    const auto options = Slide(StoreCompression::Raw, [](auto& o) { o.NumOfZ = 2, o.NumOfT = 2, o.NumOfChannels = 3; });
    WriteSlide(options);
    Export();
    EXPECT_EQ(File().NumOfDirectories(), 12u);
    EXPECT_EQ(Exported(0), FrameOf(Drawn, options, {}));
    EXPECT_EQ(Exported(2), FrameOf(Drawn, options, {.C = 2}));
    EXPECT_EQ(Exported(4), FrameOf(Drawn, options, {.Z = 1, .C = 1}));
    EXPECT_EQ(Exported(11), FrameOf(Drawn, options, {.Z = 1, .T = 1, .C = 2}));
}

TEST_F(ZelExport, HoldsAllGroupsOrOne)
{
    WriteSlide(Slide(StoreCompression::Raw, [](auto& o) { o.NumOfStacks = 2; }));
    Export();
    EXPECT_EQ(File().NumOfDirectories(), 2u);
    Export({"-g", "1"});
    EXPECT_EQ(File().NumOfDirectories(), 1u);
}

TEST_F(ZelExport, IsABigTiffFileOnRequest)
{
    WriteSlide();
    Export();
    EXPECT_FALSE(File().IsBig());
    Export({"--bigtiff", "--prove"});
    EXPECT_TRUE(File().IsBig());
    EXPECT_EQ(Exported(0), Drawn);
}

// Tiles that are not there, or begin elsewhere.

TEST_F(ZelExport, ShowsTheBackgroundWhereNoTileIsStored)
{
    auto stack =
        StackFromPicture(Drawn, Slide(StoreCompression::Jpeg, [](auto& o) { o.TileWidth = o.TileHeight = 64; }), 1);
    Write(stack.MissingTile(0, 1, 0).MissingTile(0, 2, 0));
    EXPECT_THAT(Export({"--background", "#FF0000", "--prove"}).Output, HasSubstr("2 filled"));
    const CPicture picture = Exported(0);
    EXPECT_NEAR(picture.At(100, 30, 0), 255, 2);
    EXPECT_NEAR(picture.At(150, 30, 1), 0, 2);
}

TEST_F(ZelExport, WritesEqualBackgroundOnce)
{
    Write(Stack(1)
              .Size(640, 64)
              .Tiles(64, 64)
              .Raw(ComponentType::Uint8)
              .Missing([](const CTilePlace& place) { return place.Column > 0; }));
    Export();
    EXPECT_LT(std::filesystem::file_size(Name("slide.ome.tif")), 4u * 64 * 64);
    EXPECT_EQ(Exported(0).At(639, 63, 0), 0);
}

TEST_F(ZelExport, CountsTheTilesThatItFilledWhereItCutsThemAnew)
{
    // Tiles of 40 x 40 become such of 256 x 256.
    Write(Stack(1).Size(200, 600).Tiles(40, 40).MissingTile(0, 1, 1).MissingTile(0, 2, 6));
    EXPECT_THAT(Export({"--prove"}).Output, HasSubstr("2 filled"));
}

TEST_F(ZelExport, WritesNothingThatLacksAnythingIfItIsStrict)
{
    Write(Stack(1).Size(128, 64).Tiles(64, 64).MissingTile(0, 1, 0));
    const auto result = TryToRun("export", "slide.ome.tif", {"--strict"});
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("--strict: 1 tile filled, 0 left out; nothing is written"));
    EXPECT_FALSE(std::filesystem::exists(Name("slide.ome.tif")));
    Write(Stack(1).Size(128, 64).Tiles(64, 64));
    Export({"--strict"});
}

TEST_F(ZelExport, NamesTheTilesThatAreNoWholeStreams)
{
    for (const uint32_t compression : {StoreCompression::Jpeg, StoreCompression::J2k})
    {
        Document document;
        document.With(StackFromPicture(Drawn, Slide(compression, [](auto& o) { o.TileWidth = o.TileHeight = 64; }), 1));
        std::fill_n(document.Store(1).Tiles[1].Body.begin(), 20, uint8_t{0});
        document.Store(1).Tiles[2].Body.back() = 0;
        Write(document);
        const auto result = TryToRun("export", "slide.ome.tif", {"--prove"});
        EXPECT_EQ(result.ExitCode, 1);
        EXPECT_THAT(result.Errors, HasSubstr("2 tiles copied as stored, which no reader can decode"));
        EXPECT_THAT(result.Errors,
                    HasSubstr("level 0, column 1, row 0, channel 0, z 0, t 0, lambda 0: it does not begin"));
        EXPECT_THAT(result.Errors, HasSubstr("level 0, column 2, row 0, channel 0, z 0, t 0, lambda 0: its JPEG"));
    }
}

TEST_F(ZelExport, ShowsBackgroundOfJpeg2000)
{
    auto stack =
        StackFromPicture(Drawn, Slide(StoreCompression::J2k, [](auto& o) { o.TileWidth = o.TileHeight = 64; }), 1);
    Write(stack.MissingTile(0, 1, 0));
    Export({"--background", "#FF8000"});
    CTiffFile file = File();
    ASSERT_TRUE(file.Select(0));
    const CPicture tile = DecodeJ2k(file.RawTile(1));
    EXPECT_EQ(tile.At(9, 9, 0), 255);
    EXPECT_EQ(tile.At(9, 9, 1), 128);
    EXPECT_EQ(tile.At(9, 9, 2), 0);
}

TEST_F(ZelExport, MovesTilesThatBeginLeftOfTheOrigin)
{
    // The picture begins with tile -1: 64 pixels before tile 0.
    const auto stack = Stack(1).Size(150, 64).Tiles(64, 64).Shift(64, 0).Level(0, Columns(-1, 1), Rows(0, 0));
    Write(stack);
    Export({"--prove"});
    CTiffFile file = File();
    ASSERT_TRUE(file.Select(0));
    EXPECT_EQ(file.NumOfTiles(), 3u);
    EXPECT_EQ(file.RawTile(0), stack.TileBytes(0, -1, 0));
    EXPECT_EQ(file.Picture(), Region(0));
}

TEST_F(ZelExport, BeginsWithAWholeTileAndSaysSo)
{
    const auto stack = Stack(1)
                           .Size(150, 64)
                           .Tiles(64, 64)
                           .Shift(30, 0)
                           .Level(0, Columns(-1, 1), Rows(0, 0))
                           .Level(1, Columns(-1, 0), Rows(0, 0));
    Write(stack);
    const auto result = Export({"--prove"});
    EXPECT_THAT(result.Errors, HasSubstr("the picture begins within a tile, so 34 pixels left of and 0 above it"));
    EXPECT_THAT(result.Errors, HasSubstr("as its tiles do not begin where those of level 0 do: level 1"));
    const CPicture picture = Exported(0);
    EXPECT_EQ(picture.Width(), 184u);
    EXPECT_EQ(picture.At(34, 0, 0), Region(0).At(0, 0, 0));
    EXPECT_EQ(Exported(0, 1).At(17, 0, 0), Region(1).At(0, 0, 0)); // half of 34
}

TEST_F(ZelExport, LeavesOutTilesBesideThePicture)
{
    const auto stack = Stack(1).Size(128, 64).Tiles(64, 64).Level(0, Columns(-1, 1), Rows(0, 0));
    Write(stack);
    EXPECT_THAT(Export().Errors, HasSubstr("group 0: 1 tile wholly beside the picture left out: level 0\n"));
    CTiffFile file = File();
    ASSERT_TRUE(file.Select(0));
    EXPECT_EQ(file.NumOfTiles(), 2u);
    EXPECT_EQ(file.RawTile(0), stack.TileBytes(0, 0, 0));
}

TEST_F(ZelExport, CutsTilesAnewThatTiffCannotHold)
{
    const auto stack = Stack(1).Size(250, 120).Tiles(100, 50).Levels(2);
    Write(stack);
    EXPECT_THAT(Export({"--prove"}).Errors, HasSubstr("its tiles of 100 x 50 are no multiples of 16: level 0 1"));
    EXPECT_EQ(Exported(0, 0), Region(0));
    EXPECT_EQ(Exported(0, 1), Region(1));
}

/// Strips as wide as four tiles, of which the last one is lower.
CSlideOptions Strips(uint32_t compression)
{
    return Slide(compression,
                 [](auto& o)
                 {
                     o.Storage = StackStorage::InDocument;
                     o.RowsPerStrip = 64;
                     o.Quality = 100;
                 });
}

TEST_F(ZelExport, CutsStripsAnewOfWhichTheLastOneIsLower)
{
    for (const uint32_t compression : {StoreCompression::Raw, StoreCompression::J2k})
    {
        Write(SlideFromPicture(DrawPicture(256, 200), Strips(compression)));
        EXPECT_THAT(Export({"--prove"}).Errors, HasSubstr("its last strip is lower than the others"));
        EXPECT_EQ(Exported(0), DrawPicture(256, 200));
    }
}

// What goes wrong.

TEST_F(ZelExport, ProvesWhatIsThereBesideARawTileOfAnotherSize)
{
    Document document;
    document.With(Stack(1).Size(192, 64).Tiles(64, 64));
    document.Store(1).Tiles[1].Size = 100;
    Write(document);
    const auto result = TryToRun("export", "slide.ome.tif", {"--prove"});
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("1 tile cannot be read and is background"));
    EXPECT_THAT(result.Output, HasSubstr("read back; 2 tiles equal"));
}

TEST_F(ZelExport, GoesOnBehindADamagedTile)
{
    Document document;
    document.With(Stack(1).Size(192, 64).Tiles(64, 64));
    document.Store(1).Tiles[1].Size = 0xFFFFFFF0U;
    Write(document);
    const auto result = TryToRun("export", "slide.ome.tif");
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("1 tile cannot be read and is background: level 0, column 1"));
    EXPECT_EQ(Exported(0).At(100, 10, 0), 0);
    EXPECT_THAT(result.Output, HasSubstr("2 tiles as stored, 0 recompressed, 1 filled"));
}

TEST_F(ZelExport, RefusesAPictureFarLargerThanItsTiles)
{
    Write(Stack(1).Boundary({0, 0, 2000000000, 2000000000}));
    const auto result = TryToRun("export", "slide.ome.tif");
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("far from"));
    EXPECT_FALSE(std::filesystem::exists(Name("slide.ome.tif")));
}

TEST_F(ZelExport, RefusesWhatThereIsNot)
{
    WriteSlide();
    ExpectRefusal("export", "slide.ome.tif", {"-g", "3"}, "there is no group 3");
    ExpectRefusal("export", "none/slide.ome.tif", {}, "cannot be written");
    Write(Stack(1).Raw(ComponentType::Int64));
    ExpectRefusal("export", "slide.ome.tif", {"--values", "signed"}, "OME-TIFF cannot hold the pixels");
}

TEST_F(ZelExport, TakesWideValuesForFloatingPointAndSaysSo)
{
    Write(Stack(1).Size(64, 64).Tiles(64, 64).Raw(ComponentType::Float));
    EXPECT_THAT(Export().Errors, HasSubstr("values of 32 bits are taken as floating point"));
    CTiffFile file = File();
    EXPECT_EQ(file.Short(TIFFTAG_SAMPLEFORMAT), 3u);
    EXPECT_EQ(Export({"--values", "unsigned"}).Errors, "");
    EXPECT_EQ(File().Short(TIFFTAG_SAMPLEFORMAT), 1u);
}

} // namespace
