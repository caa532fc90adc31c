/// `zel export` of a part of a group: a rectangle, some levels, channels, focal planes and points in time.

#include "Tests/HostTool/TiffFile.h"
#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace SampleDocuments;
using nlohmann::json;
using testing::HasSubstr;

class ZelExportOfAPart : public ZelRun
{
protected:
    const CPicture Drawn = DrawPicture(600, 400);

    /// A slide of the drawn picture in tiles of 64 x 64.
    Stack WriteSlide(CSlideOptions options)
    {
        options.TileWidth = options.TileHeight = 64;
        Write(SlideFromPicture(Drawn, options));
        return StackFromPicture(Drawn, options, 1);
    }
    TestSupport::CommandResult Export(const Words& options) { return Run("export", "part.ome.tif", options); }
    CTiffFile File() const { return CTiffFile(Name("part.ome.tif")); }
    CPicture Exported(uint32_t plane, uint32_t level = 0) const
    {
        CTiffFile file = File();
        return file.Select(plane, level) ? file.Picture() : CPicture();
    }
    CPicture Region(Words options)
    {
        options.insert(options.end(), {"-c", "0"});
        Run("region", "region.tif", options);
        return Picture("region.tif");
    }
    /// What tifffile finds, and whether it finds the pixels of region.tif.
    json Facts()
    {
        const auto result =
            TestSupport::RunCommand({"/usr/bin/python3", READ_OME_TIFF, Name("part.ome.tif"), Name("region.tif")});
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return json::parse(result.Output, nullptr, false);
    }
};

TEST_F(ZelExportOfAPart, HasThePixelsOfTheRectangle)
{
    WriteSlide(Slide(StoreCompression::Raw));
    const auto result = Export({"--rect", "70,50,300,200", "--prove"});
    EXPECT_THAT(result.Output, HasSubstr("group 0, 300 x 200 pixels, 4 levels, 1 plane"));
    EXPECT_THAT(result.Errors, HasSubstr("as the rectangle begins within a tile (--whole-tiles widens it): level 0\n"));
    EXPECT_EQ(Exported(0), Region({"--rect", "70,50,300,200"}));
    EXPECT_EQ(Exported(0, 1), Region({"-l", "1", "--rect", "35,25,150,100"}));
    EXPECT_EQ(Exported(0, 2), Region({"-l", "2", "--rect", "18,13,75,50"})); // of 17.5 and 12.5
}

TEST_F(ZelExportOfAPart, IsReadByTifffile)
{
    for (const uint32_t compression : {StoreCompression::Raw, StoreCompression::Jpeg})
    {
        WriteSlide(Slide(compression));
        Export({"--rect", "70,50,300,200"});
        Region({"--rect", "70,50,300,200"});
        const json facts = Facts();
        EXPECT_EQ(facts["is equal"], true);
        EXPECT_EQ(facts["series"][0]["levels"], json::parse("[[200,300,3],[100,150,3],[50,75,3],[25,37,3]]"));
    }
}

TEST_F(ZelExportOfAPart, CopiesTilesWithWhichItBegins)
{
    const Stack stack = WriteSlide(Slide(StoreCompression::Jpeg));
    const auto result = Export({"--rect", "128,128,200,150", "--levels", "0-1", "--prove"});
    EXPECT_EQ(result.Errors, "");
    CTiffFile file = File();
    ASSERT_TRUE(file.Select(0));
    EXPECT_EQ(file.NumOfTiles(), 12u);
    EXPECT_EQ(file.RawTile(5), stack.TileBytes(0, 3, 3)); // the second column and row of four
    EXPECT_EQ(Exported(0), Region({"--rect", "128,128,200,150"}));
}

TEST_F(ZelExportOfAPart, GrowsToWholeTilesOnRequest)
{
    const Stack stack = WriteSlide(Slide(StoreCompression::Jpeg));
    const auto result = Export({"--rect", "70,50,300,200", "--whole-tiles", "-l", "0"});
    EXPECT_EQ(result.Errors,
              "zel: group 0: the rectangle begins within a tile, so 6 pixels left of and 50 above it are "
              "there as well\n");
    EXPECT_THAT(result.Output, HasSubstr("306 x 250 pixels, 1 level, 1 plane; 20 tiles as stored, 0 recompressed"));
    CTiffFile file = File();
    EXPECT_EQ(file.RawTile(0), stack.TileBytes(0, 1, 0));
}

TEST_F(ZelExportOfAPart, EndsWithTheLevelOfOneTile)
{
    WriteSlide(Slide(StoreCompression::Raw));
    EXPECT_THAT(Export({"--rect", "0,0,100,60"}).Output, HasSubstr(", 2 levels,"));
}

TEST_F(ZelExportOfAPart, BeginsWithTheFirstLevelThatIsSelected)
{
    WriteSlide(Slide(StoreCompression::Raw));
    Export({"--levels", "1-2", "--prove"});
    EXPECT_EQ(Exported(0), Region({"-l", "1"}));
    EXPECT_EQ(Exported(0, 1), Region({"-l", "2"}));
    EXPECT_FALSE(File().Select(0, 2));
    Region({"-l", "1"});
    const json facts = Facts();
    EXPECT_EQ(facts["is equal"], true);
    EXPECT_EQ(facts["pixel"], json::parse(R"(["1", "1", null])"));
}

TEST_F(ZelExportOfAPart, HasTheSelectedPlanesWithTheirPlaces)
{
    const auto options = Slide(StoreCompression::Raw, [](auto& o) { o.NumOfZ = 4, o.NumOfT = 3, o.NumOfChannels = 3; });
    WriteSlide(options);
    Export({"-z", "1-2", "-t", "2", "-c", "2", "-c", "0", "--prove"});
    EXPECT_EQ(File().NumOfDirectories(), 4u);
    EXPECT_EQ(Exported(0), FrameOf(Drawn, options, {.Z = 1, .T = 2, .C = 2}));
    EXPECT_EQ(Exported(1), FrameOf(Drawn, options, {.Z = 1, .T = 2, .C = 0}));
    EXPECT_EQ(Exported(3), FrameOf(Drawn, options, {.Z = 2, .T = 2, .C = 0}));
    Region({});
    const json facts = Facts();
    EXPECT_EQ(facts["series"][0]["axes"], "ZCYX");
    EXPECT_EQ(facts["channels"].size(), 2u);
    EXPECT_EQ(facts["times"][0], facts["times"][3]);
    EXPECT_NE(facts["times"][0], "0");
}

TEST_F(ZelExportOfAPart, MovesRegionsAndLeavesOutThoseBeside)
{
    Write(Stack(1).Size(600, 400).Tiles(64, 64).Levels(2).LayerBlob(
        Regions({Rectangle("cell", {110, 120}, {130, 140}), Dot("spot", {5, 5})})));
    Run("region", "region.tif", {"-c", "0", "--rect", "100,100,200,200"});
    Export({"--rect", "100,100,200,200"});
    ASSERT_EQ(Facts()["regions"].size(), 1u);
    EXPECT_THAT(Facts()["regions"][0][1]["Points"].get<std::string>(), testing::StartsWith("10,20 "));
    Run("region", "region.tif", {"-c", "0", "-l", "1"});
    Export({"--levels", "1"});
    ASSERT_EQ(Facts()["regions"].size(), 2u);
    EXPECT_THAT(Facts()["regions"][0][1]["Points"].get<std::string>(), testing::StartsWith("55,60 "));
}

TEST_F(ZelExportOfAPart, IsCutOffAtTheEdgeOfThePicture)
{
    WriteSlide(Slide(StoreCompression::Raw));
    Export({"--rect", "-20,350,120,100"});
    EXPECT_EQ(Exported(0), Region({"--rect", "0,350,100,50"}));
}

TEST_F(ZelExportOfAPart, RefusesWhatThereIsNot)
{
    WriteSlide(Slide(StoreCompression::Raw, [](auto& o) { o.NumOfZ = 2; }));
    ExpectRefusal("export", "part.ome.tif", {"--rect", "600,0,10,10"}, "beside the picture of 600 x 400 pixels");
    ExpectRefusal("export", "part.ome.tif", {"--levels", "1-7"}, "there is no level 7 in group 0; the last one is 4");
    ExpectRefusal("export", "part.ome.tif", {"-z", "1-2"}, "has 2 positions on z, counted from 0");
    ExpectRefusal("export", "part.ome.tif", {"-t", "x"}, "'x' is neither a number nor a range");
    ExpectRefusal("export", "part.ome.tif", {"-t", "3-1"}, "'3-1' is neither a number nor a range");
    ExpectRefusal("export", "part.ome.tif", {"-c", "1"}, "there is no channel 1 in group 0");
    ExpectRefusal("export", "part.ome.tif", {"-c", "0", "-c", "0"}, "channel 0 is given twice");
}

TEST_F(ZelExportOfAPart, AsksOfWhichGroupItIs)
{
    WriteSlide(Slide(StoreCompression::Raw, [](auto& o) { o.NumOfStacks = 2; }));
    ExpectRefusal("export", "part.ome.tif", {"--rect", "0,0,10,10"}, "the document has several groups; say by -g");
    Export({"--rect", "0,0,10,10", "-g", "1"});
    EXPECT_EQ(File().NumOfDirectories(), 1u);
}

} // namespace
