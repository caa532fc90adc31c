/// `zel export`, read by other people's programs.

#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace SampleDocuments;
using nlohmann::json;
using testing::HasSubstr;

class ExportForOthers : public ZelRun
{
protected:
    const CPicture Drawn = DrawPicture(300, 200);

    void WriteSlide(CSlideOptions options)
    {
        options.TileWidth = options.TileHeight = 64;
        Write(SlideFromPicture(Drawn, options));
    }
    std::string Export()
    {
        Run("export", "slide.ome.tif");
        return Name("slide.ome.tif");
    }
    /// What tifffile finds in the export of the slide.
    json Facts(const std::string& pictureToCompare = {})
    {
        Words words = {"/usr/bin/python3", READ_OME_TIFF, Export()};
        if (!pictureToCompare.empty())
            words.push_back(pictureToCompare);
        const auto result = TestSupport::RunCommand(words);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_EQ(result.Errors, "");
        return json::parse(result.Output, nullptr, false);
    }
    /// What a program prints, which has to be installed and to succeed.
    std::string OutputOf(const Words& words)
    {
        const auto result = TestSupport::RunCommand(words);
        EXPECT_EQ(result.ExitCode, 0) << words.front()
                                      << " fails or is missing (./test installs what cmake/packages-debian.txt lists): "
                                      << result.Errors;
        EXPECT_EQ(result.Errors, "");
        return result.Output;
    }
};

TEST_F(ExportForOthers, IsAPyramidForTifffile)
{
    WriteSlide(Slide(StoreCompression::Jpeg));
    const json facts = Facts();
    EXPECT_EQ(facts["is OME"], true);
    ASSERT_EQ(facts["series"].size(), 1u);
    EXPECT_EQ(facts["series"][0]["axes"], "YXS");
    EXPECT_EQ(facts["series"][0]["levels"], json::parse("[[200,300,3],[100,150,3],[50,75,3],[25,38,3]]"));
    EXPECT_EQ(facts["pixel"], json::parse(R"(["0.5", "0.5", null])"));
}

TEST_F(ExportForOthers, HasAllAxesForTifffile)
{
    WriteSlide(
        Slide(StoreCompression::Raw, [](auto& o) { o.NumOfZ = 4, o.NumOfT = 3, o.NumOfChannels = 2, o.Bits = 16; }));
    const json facts = Facts();
    EXPECT_EQ(facts["series"][0]["axes"], "TZCYX");
    EXPECT_EQ(facts["series"][0]["shape"], json::parse("[3,4,2,200,300]"));
    EXPECT_EQ(facts["series"][0]["type"], "uint16");
}

TEST_F(ExportForOthers, HasTheSamePixelsForTifffile)
{
    WriteSlide(Slide(StoreCompression::Raw));
    Run("region", "region.tif");
    EXPECT_EQ(Facts(Name("region.tif"))["is equal"], true);
    WriteSlide(Slide(StoreCompression::Png, [](auto& o) { o.Bits = 16; }));
    Run("region", "region.tif");
    EXPECT_EQ(Facts(Name("region.tif"))["is equal"], true) << "recompressed";
}

TEST_F(ExportForOthers, HasTheSamePixelsForTifffileInJpegTiles)
{
    for (const StackStorage::E storage : {StackStorage::BinaryStore, StackStorage::TiffStore})
        for (const bool isGrey : {false, true})
        {
            WriteSlide(Slide(StoreCompression::Jpeg, [&](auto& o) { o.Storage = storage, o.IsGrey = isGrey; }));
            Run("region", "region.tif", {"-c", "0"});
            EXPECT_EQ(Facts(Name("region.tif"))["is equal"], true) << storage << ' ' << isGrey;
        }
}

TEST_F(ExportForOthers, HoldsGroupsAsSeriesForTifffile)
{
    Write(Document().With(Stack(1).Name("first")).With(Stack(2).Name("second").Z(2)));
    const json facts = Facts();
    ASSERT_EQ(facts["series"].size(), 2u);
    EXPECT_EQ(facts["series"][0]["name"], "first");
    EXPECT_EQ(facts["series"][1]["name"], "second");
    EXPECT_EQ(facts["series"][1]["axes"], "ZYX");
}

TEST_F(ExportForOthers, TellsChannelsWithTheirColours)
{
    Write(Stack(1).Channels({CChannel("DAPI").With(CLookUpTable(Ramp(256, {0, 0, 255}))), "FITC"}).Z(3, 0, 1.5));
    const json facts = Facts();
    EXPECT_EQ(facts["channels"], json::parse(R"(["DAPI", "FITC"])"));
    EXPECT_EQ(facts["colours"], json::parse(R"(["65535", null])")); // 0x0000FFFF: blue that covers
    EXPECT_EQ(facts["pixel"], json::parse(R"(["0.5", "0.5", "1.5"])"));
}

TEST_F(ExportForOthers, HoldsWavelengthsAsChannels)
{
    Write(Stack(1).Lambda(2, 400, 10));
    const json facts = Facts();
    EXPECT_EQ(facts["channels"][1], "Channel ID 0 (Single Channel), 410 nm");
    EXPECT_EQ(facts["series"][0]["axes"], "CYX");
}

TEST_F(ExportForOthers, TellsLensStageTimesAndDates)
{
    Write(Stack(1)
              .T(2, 0, 500)
              .Lens({.Name = "UPlan 20x",
                     .Magnification = 20,
                     .Aperture = 0.75,
                     .WorkingDistance = CMeasured(0.6, "10^-3m^1"),
                     .ImmersionMedium = Immersion::Oil})
              .Stage(1500.5, -20));
    const json facts = Facts();
    EXPECT_EQ(facts["objective"]["Model"], "UPlan 20x");
    EXPECT_EQ(facts["objective"]["NominalMagnification"], "20");
    EXPECT_EQ(facts["objective"]["LensNA"], "0.75");
    EXPECT_EQ(facts["objective"]["Immersion"], "Oil");
    EXPECT_EQ(facts["objective"]["WorkingDistanceUnit"], "mm");
    EXPECT_EQ(facts["stage"]["X"], "1500.5");
    EXPECT_EQ(facts["stage"]["Y"], "-20");
    EXPECT_EQ(facts["times"], json::parse(R"(["0", "0.5"])"));
    EXPECT_THAT(facts["date"].get<std::string>(), testing::StartsWith("2020-01-01T00:00:00"));
}

TEST_F(ExportForOthers, TellsRegionsOfInterest)
{
    Write(Stack(1).LayerBlob(Regions({Rectangle("cell", {10, 20}, {30, 40}), Dot("spot", {5, 5})})));
    const json regions = Facts()["regions"];
    ASSERT_EQ(regions.size(), 2u);
    EXPECT_EQ(regions[0][0], "Polygon");
    EXPECT_EQ(regions[0][1]["Text"], "cell");
    EXPECT_EQ(regions[1][0], "Point");
}

TEST_F(ExportForOthers, IsReadByTiffinfoWithoutAComplaint)
{
    WriteSlide(Slide(StoreCompression::Jpeg));
    const std::string output = OutputOf({"tiffinfo", Export()});
    EXPECT_THAT(output, HasSubstr("Photometric Interpretation: YCbCr"));
    EXPECT_THAT(output, HasSubstr("SubIFD Offsets"));
}

TEST_F(ExportForOthers, IsASlideForOpenSlide)
{
    WriteSlide(Slide(StoreCompression::Jpeg));
    const std::string file = Export();
    EXPECT_THAT(OutputOf({"openslide-show-properties", file}), HasSubstr("openslide.level[0].width: '300'"));
    OutputOf({"openslide-write-png", file, "40", "30", "0", "120", "100", Name("openslide.png")});
    Run("region", "region.png", {"--rect", "40,30,120,100"});
    const CPicture theirs = Picture("openslide.png");
    const CPicture ours = Picture("region.png");
    ASSERT_EQ(theirs.Width(), 120u);
    for (uint32_t y = 0; y < 100; ++y)
        for (uint32_t x = 0; x < 120; ++x)
            for (uint16_t sample = 0; sample < 3; ++sample)
                ASSERT_NEAR(theirs.At(x, y, sample), ours.At(x, y, sample), 1) << x << ' ' << y;
}

TEST_F(ExportForOthers, HasBackgroundForOpenSlide)
{
    auto stack =
        StackFromPicture(Drawn, Slide(StoreCompression::Jpeg, [](auto& o) { o.TileWidth = o.TileHeight = 64; }), 1);
    Write(stack.MissingTile(0, 1, 0));
    const std::string file = Export();
    OutputOf({"openslide-write-png", file, "64", "0", "0", "64", "64", Name("openslide.png")});
    EXPECT_EQ(Picture("openslide.png").At(9, 9, 0), 255);
}

} // namespace
