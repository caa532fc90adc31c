/// `zel export --layout flat`, read by OpenSlide and tifffile; the pictures beside the groups in both layouts.

#include "Tests/HostTool/TiffFile.h"
#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace SampleDocuments;
using nlohmann::json;
using testing::HasSubstr;

class ZelExportFlat : public ZelRun
{
protected:
    const CPicture Drawn = DrawPicture(300, 200);

    void WriteSlide(CSlideOptions options, const std::function<void(Stack&)>& tell = {})
    {
        options.TileWidth = options.TileHeight = 64;
        Write(SlideFromPicture(Drawn, options, tell));
    }
    TestSupport::CommandResult Export(Words options = {})
    {
        options.insert(options.end(), {"--layout", "flat"});
        return Run("export", "flat.tif", options);
    }
    json FactsBy(const std::string& script, const std::string& file, const Words& pictures = {}) const
    {
        Words words = {"/usr/bin/python3", script, Name(file)};
        for (const std::string& picture : pictures)
            words.push_back(Name(picture));
        const auto result = TestSupport::RunCommand(words);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return json::parse(result.Output, nullptr, false);
    }
    json Facts(const Words& pictures = {}) const { return FactsBy(READ_FLAT_TIFF, "flat.tif", pictures); }
    /// `zel region` of each of the first levels.
    Words RegionsOfLevels(int count)
    {
        Words names;
        for (int level = 0; level < count; ++level)
        {
            names.push_back("level" + std::to_string(level) + ".png");
            Run("region", names.back(), {"-l", std::to_string(level)});
        }
        return names;
    }
};

TEST_F(ZelExportFlat, HasLevelsMicrometresAndPowerForOpenSlide)
{
    WriteSlide(Slide(StoreCompression::Jpeg), [](Stack& stack) { stack.Lens({.Magnification = 20}); });
    Export({"--prove"});
    const json facts = Facts();
    EXPECT_EQ(facts["levels"], json::parse("[[300,200],[150,100],[75,50],[38,25]]"));
    EXPECT_EQ(facts["mpp"], json::parse(R"(["0.5", "0.5"])"));
    EXPECT_EQ(facts["power"], "20");
    EXPECT_THAT(facts["comment"].get<std::string>(), testing::StartsWith("Aperio dialect, written by zel "));
}

TEST_F(ZelExportFlat, HasThePixelsOfEachLevelForOpenSlide)
{
    for (const auto& [compression, most] : {std::pair{StoreCompression::Raw, 0}, std::pair{StoreCompression::J2k, 1},
                                            std::pair{StoreCompression::Jpeg, 1}, std::pair{StoreCompression::Png, 0}})
    {
        WriteSlide(Slide(compression, [](auto& o) { o.Quality = 100; }));
        Export();
        for (const json& difference : Facts(RegionsOfLevels(4))["differences"])
            EXPECT_LE(difference.get<int>(), most) << compression;
    }
}

TEST_F(ZelExportFlat, HasThePixelsForOpenSlideHoweverTheyAreRecompressed)
{
    WriteSlide(Slide(StoreCompression::Jpeg));
    for (const char* compression : {"deflate", "zstd", "jpeg2000"})
    {
        Export({"--recompress", compression, "--prove"});
        EXPECT_EQ(Facts(RegionsOfLevels(4))["differences"], json::parse("[0,0,0,0]")) << compression;
    }
}

TEST_F(ZelExportFlat, RecompressesRawTiles)
{
    WriteSlide(Slide(StoreCompression::Raw));
    EXPECT_THAT(
        Export({"--prove"}).Errors,
        HasSubstr("recompressed without loss, as OpenSlide reads no raw tiles beside a thumbnail: level 0 1 2 3"));
}

TEST_F(ZelExportFlat, LeavesOutLevelsThatAreTooSmallForATile)
{
    WriteSlide(Slide(StoreCompression::Raw, [](auto& o) { o.NumOfLevels = 6; }));
    Export();
    const json facts = Facts(RegionsOfLevels(4));
    EXPECT_EQ(facts["levels"], json::parse("[[300,200],[150,100],[75,50],[38,25]]"));
    EXPECT_EQ(facts["differences"], json::parse("[0,0,0,0]"));
}

TEST_F(ZelExportFlat, CopiesTilesBitForBit)
{
    WriteSlide(Slide(StoreCompression::Jpeg));
    EXPECT_THAT(Export({"--prove"}).Output, HasSubstr("read back; 29 tiles equal byte for byte, 0 pixel for pixel"));
}

TEST_F(ZelExportFlat, IsAPyramidForTifffile)
{
    WriteSlide(Slide(StoreCompression::Jpeg));
    Export();
    const json series = Facts()["series"];
    EXPECT_EQ(series[0], json::parse(R"(["Baseline", [[200,300,3],[100,150,3],[50,75,3],[25,38,3]]])"));
    EXPECT_EQ(series[1][0], "Thumbnail");
}

TEST_F(ZelExportFlat, HasThumbnailAndOverview)
{
    auto options = Slide(StoreCompression::Jpeg);
    options.TileWidth = options.TileHeight = 64;
    Write(SlideFromPicture(Drawn, options, [](Stack& stack) { stack.Overview(EncodeJpeg(DrawPicture(90, 40), 85)); })
              .Thumbnail(DrawPicture(48, 32)));
    Export();
    EXPECT_EQ(Facts()["pictures"], json::parse(R"({"thumbnail": [48, 32]})"));
    Export({"--overview"});
    EXPECT_EQ(Facts()["pictures"], json::parse(R"({"macro": [90, 40], "thumbnail": [48, 32]})"));
    EXPECT_EQ(Facts()["series"][2], json::parse(R"(["Macro", [[40, 90, 3]]])"));
}

TEST_F(ZelExportFlat, MakesAThumbnailOfTheRectangle)
{
    auto options = Slide(StoreCompression::Raw);
    options.TileWidth = options.TileHeight = 64;
    Write(SlideFromPicture(Drawn, options).Thumbnail(DrawPicture(48, 32)));
    Export({"--rect", "100,60,80,50"});
    const json facts = Facts();
    EXPECT_EQ(facts["pictures"]["thumbnail"], json::parse("[40, 25]")); // the level that fits into a tile
    Run("region", "part.png", {"-l", "1", "--rect", "50,30,40,25"});
    const CPicture part = Picture("part.png");
    EXPECT_EQ(facts["thumbnail"],
              json::parse("[" + std::to_string(part.At(0, 0, 0)) + "," + std::to_string(part.At(0, 0, 1)) + "," +
                          std::to_string(part.At(0, 0, 2)) + "]"));
}

TEST_F(ZelExportFlat, TellsThePowerOfTheLevelWithWhichItBegins)
{
    WriteSlide(Slide(StoreCompression::Jpeg), [](Stack& stack) { stack.Lens({.Magnification = 20}); });
    Export({"--levels", "1-"});
    EXPECT_EQ(Facts()["power"], "10");
    EXPECT_EQ(Facts()["mpp"][0], "1");
}

TEST_F(ZelExportFlat, TellsNoMicrometresOfPixelsThatAreNoSquares)
{
    WriteSlide(Slide(StoreCompression::Jpeg), [](Stack& stack) { stack.Scale(0.5, 0.7); });
    Export();
    EXPECT_EQ(Facts()["mpp"], json::parse("[null, null]"));
    EXPECT_EQ(Facts()["power"], nullptr);
}

TEST_F(ZelExportFlat, HoldsOnePlane)
{
    WriteSlide(Slide(StoreCompression::Raw, [](auto& o) { o.NumOfZ = 3, o.NumOfStacks = 2; }));
    ExpectRefusal("export", "flat.tif", {"--layout", "flat"}, "holds one plane, and 2 groups would be exported");
    ExpectRefusal("export", "flat.tif", {"--layout", "flat", "-g", "0"},
                  "holds one plane, and 3 planes of group 0 would be exported");
    Export({"-g", "1", "-z", "2"});
    EXPECT_EQ(Facts()["levels"].size(), 4u);
    ExpectRefusal("export", "none.tif", {"--layout", "tall"}, "--layout");
}

// The same pictures in an OME-TIFF file.

TEST_F(ZelExportFlat, HasThePicturesAsFurtherImagesOfAnOmeTiffFile)
{
    auto options = Slide(StoreCompression::Raw);
    options.TileWidth = options.TileHeight = 64;
    Write(SlideFromPicture(Drawn, options, [](Stack& stack) { stack.Overview(EncodeJpeg(DrawPicture(90, 40), 85)); })
              .Thumbnail(DrawPicture(48, 32)));
    Run("export", "slide.ome.tif", {"--thumbnail", "--overview", "--prove"});
    const json series = FactsBy(READ_OME_TIFF, "slide.ome.tif")["series"];
    ASSERT_EQ(series.size(), 3u);
    EXPECT_EQ(series[1]["name"], "Thumbnail");
    EXPECT_EQ(series[1]["shape"], json::parse("[32, 48, 3]"));
    EXPECT_EQ(series[2]["name"], "Overview");
    EXPECT_EQ(series[2]["shape"], json::parse("[40, 90, 3]"));
    CTiffFile file(Name("slide.ome.tif"));
    EXPECT_EQ(file.NumOfDirectories(), 3u);
}

TEST_F(ZelExportFlat, SaysThatThereIsNoOverview)
{
    WriteSlide(Slide(StoreCompression::Raw));
    ExpectRefusal("export", "slide.ome.tif", {"--overview"},
                  "the picture of the whole slide is not there; leave it out");
}

} // namespace
