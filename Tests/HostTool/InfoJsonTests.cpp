#include "Tests/HostTool/ZelProgram.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace ZelTest;
using testing::HasSubstr;
using Json = nlohmann::json;

/// `zel info --json`: what programs read.
class ZelInfoJson : public ZelProgram
{
protected:
    Json Info(int exitCode = 0) const
    {
        const CommandResult result = Run({"info", SlideName(), "--json"});
        EXPECT_EQ(result.ExitCode, exitCode) << result.Errors;
        return Json::parse(result.Output);
    }
};

TEST_F(ZelInfoJson, TellsItsFormatAndVersion)
{
    Write(Stack(1));
    const Json info = Info();
    EXPECT_EQ(info.at("format"), "zel info");
    EXPECT_EQ(info.at("version"), 2);
    EXPECT_EQ(info.at("path"), SlideName());
    EXPECT_EQ(info.at("isOpened"), true);
}

TEST_F(ZelInfoJson, TellsTheDocument)
{
    Write(Document()
              .With(Stack(1))
              .Properties({.Note = "A note", .Author = "Somebody"})
              .Thumbnail(DrawPicture(20, 10), {.Bits = 24}));
    const Json document = Info().at("document");
    EXPECT_EQ(document.at("comment"), "A note");
    EXPECT_EQ(document.at("author"), "Somebody");
    EXPECT_EQ(document.at("familyId"), nullptr);
    EXPECT_EQ(document.at("thumbnail"), Json({{"width", 20}, {"height", 10}}));
}

TEST_F(ZelInfoJson, TellsTheLensAndTheStage)
{
    Write(Stack(1).Lens({.Name = "UPlan", .Magnification = 20}).Stage(1500.5, -20));
    const Json group = Info().at("groups").at(0);
    EXPECT_EQ(group.at("lens").at("magnification"), 20);
    EXPECT_EQ(group.at("lens").at("numericalAperture"), nullptr);
    EXPECT_EQ(group.at("stagePosition"), Json({{"xNm", 1500500}, {"yNm", -20000}}));
}

TEST_F(ZelInfoJson, TellsAChannel)
{
    Write(Stack(1).Channels({CChannel("DAPI", 3, 100).With(CLookUpTable(Ramp(256, {0, 0, 255}))), "FITC"}));
    const Json channels = Info().at("groups").at(0).at("channels");
    EXPECT_EQ(channels.at(0).at("name"), "DAPI");
    EXPECT_EQ(channels.at(0).at("color"), "#0000FF");
    EXPECT_EQ(channels.at(0).at("limits").at("shadow"), 3);
    EXPECT_EQ(channels.at(1).at("color"), nullptr);
}

TEST_F(ZelInfoJson, TellsAnExposureTimeAsANumberWithItsUnit)
{
    Write(Stack(1).Exposure(1200));
    const Json channel = Info().at("groups").at(0).at("channels").at(0);
    EXPECT_EQ(channel.at("exposureTime"), 1200);
    EXPECT_EQ(channel.at("exposureTimeUnit"), "us");
    Write(Stack(1));
    EXPECT_EQ(Info().at("groups").at(0).at("channels").at(0).at("exposureTime"), nullptr);
}

TEST_F(ZelInfoJson, TellsTheAxes)
{
    Write(Stack(1).Z(3).Lambda(2));
    const Json axes = Info().at("groups").at(0).at("axes");
    ASSERT_EQ(axes.size(), 2u);
    EXPECT_EQ(axes.at(0), Json({{"axis", "Z"},
                                {"positions", 3},
                                {"start", 0.0},
                                {"end", 3.0},
                                {"step", 1.5},
                                {"isEven", true},
                                {"unit", "um"}}));
}

TEST_F(ZelInfoJson, TellsEachLevelWithItsTiles)
{
    Write(Stack(1).Size(700, 300).Tiles(256, 256).Levels(2).Z(2).MissingTile(0, 1, 1));
    const Json levels = Info().at("groups").at(0).at("levels");
    EXPECT_EQ(levels.at(0).at("columns"), 3);
    EXPECT_EQ(levels.at(0).at("picture").at("width"), 700);
    EXPECT_EQ(levels.at(0).at("tilesStored"), 10);
    EXPECT_EQ(levels.at(0).at("tilesAbsent"), 2);
    EXPECT_EQ(levels.at(1).at("downsample"), 2.0);
}

TEST_F(ZelInfoJson, SaysOfALevelThatItHasNoData)
{
    Write(Stack(1).Size(1000, 1000).Level(0, Columns(0, 3), Rows(0, 3)).Level(2, Columns(0, 0), Rows(0, 0)));
    const Json info = Info();
    EXPECT_EQ(info.at("groups").at(0).at("levels").at(1), Json({{"level", 1}, {"hasData", false}}));
    EXPECT_EQ(info.at("diagnostics").at(0).at("code"), "level-without-data");
    EXPECT_EQ(info.at("diagnostics").at(0).at("severity"), "warning");
}

TEST_F(ZelInfoJson, TellsTheFilesWithTheirRoles)
{
    Write(Stack(5));
    const Json files = Info().at("files");
    EXPECT_EQ(files.at(0).at("role"), "document");
    EXPECT_EQ(files.at(1).at("role"), "tileStore");
    EXPECT_EQ(files.at(1).at("stack"), 5);
    EXPECT_EQ(files.at(1).at("isMissing"), false);
}

TEST_F(ZelInfoJson, TellsWhatIsMissing)
{
    Write(Stack(5).WithoutStore());
    const Json info = Info(3);
    EXPECT_EQ(info.at("isOpened"), false);
    EXPECT_EQ(info.at("groups"), nullptr);
    EXPECT_EQ(info.at("files").at(1).at("isMissing"), true);
    EXPECT_EQ(info.at("files").at(1).at("bytes"), nullptr);
    EXPECT_EQ(info.at("diagnostics").at(0).at("code"), "missing-file");
}

TEST_F(ZelInfoJson, IsJsonOfADamagedFileAsWell)
{
    Folder.Write("slide.zel", "no slide at all, but some bytes");
    const Json info = Info(1);
    EXPECT_EQ(info.at("document"), nullptr);
    EXPECT_EQ(info.at("diagnostics").at(0).at("code"), "damaged");
}

TEST_F(ZelInfoJson, IsJsonWhereTheReaderEndsTheProcess)
{
    constexpr uint32_t volumeHasName = 1U << 28;
    Document document;
    document.With(Stack(1));
    document.Volume({2000}).CountFlags(volumeHasName);
    Write(document);
    const Json info = Info(1);
    EXPECT_EQ(info.at("isOpened"), false);
    EXPECT_EQ(info.at("files"), nullptr);
    EXPECT_EQ(info.at("diagnostics").at(0).at("code"), "ended-early");
}

TEST_F(ZelInfoJson, IsJsonOfAnOddName)
{
    Write(Stack(1).Name("\"quoted\"\n"));
    EXPECT_EQ(Info().at("groups").at(0).at("name"), "\"quoted\"\n");
}

} // namespace
