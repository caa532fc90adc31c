#include "HostTool/InfoCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

using namespace HostTool;
using testing::HasSubstr;

std::string Print(const CDocumentFacts& facts)
{
    std::ostringstream out;
    PrintFacts(out, facts);
    return out.str();
}

CDocumentFacts Document(CGroupFacts group)
{
    CDocumentFacts facts;
    facts.Path = "/data/slide.zel";
    facts.Groups = {std::move(group)};
    return facts;
}

CLevelFacts Level(int number, uint64_t cols, uint64_t rows)
{
    CLevelFacts level;
    level.Level = number;
    level.HasData = true;
    level.TilesRect = {0, 0, cols * 256, rows * 256};
    level.Grid = {cols, rows};
    level.TileWidth = 256;
    level.TileHeight = 256;
    return level;
}

TEST(PrintedFacts, SayUnknownWhereThePluginDoesNotTell)
{
    CGroupFacts group;
    group.Channels.resize(1);
    group.Levels = {Level(0, 4, 3)};
    EXPECT_EQ(Print(Document(group)),
              "/data/slide.zel\n"
              "  format version  unknown\n"
              "  groups          1\n"
              "\n"
              "group 0, name unknown\n"
              "  channel  name     compression  colours  bits     shown     shadow   highlight  exposure\n"
              "  0        unknown  unknown      unknown  unknown  as it is  unknown  unknown    unknown\n"
              "  level  picture  in whole tiles  grid   tile       pixel\n"
              "  0      unknown  1024 x 768      4 x 3  256 x 256  unknown\n");
}

TEST(PrintedFacts, TellTheAxesAndLevels)
{
    CGroupFacts group;
    group.Number = 1;
    group.Name = "Tissue";
    group.Axes = {{AC_AT_Z, 5, 0.0, 6.0, 1.5, "10^-6m^1"}};
    CLevelFacts level = Level(0, 4, 3);
    level.PictureRect = CMN_RECT{0, 0, 1000, 700};
    level.PixelWidth = 0.5;
    level.PixelHeight = 0.25;
    group.Levels = {level};
    EXPECT_THAT(Print(Document(group)),
                HasSubstr("\ngroup 1, name Tissue\n"
                          "  channel  name  compression  colours  bits  shown  shadow  highlight  exposure\n"
                          "  axis  positions  start  end  step  unit\n"
                          "  Z     5          0      6    1.5   um\n"
                          "  level  picture     in whole tiles  grid   tile       pixel\n"
                          "  0      1000 x 700  1024 x 768      4 x 3  256 x 256  0.5 x 0.25 um\n"));
}

TEST(PrintedFacts, TellHowAChannelIsShown)
{
    CGroupFacts group;
    CChannelFacts channel;
    channel.Name = "DAPI";
    channel.LookUpTable = {{0, 0, 0}, {10, 128, 255}};
    channel.Limits = CLimits{10, 4096};
    channel.ExposureTime = 1200;
    group.Channels = {channel};
    EXPECT_THAT(Print(Document(group)), HasSubstr("#0A80FF  10      4096       1200 us\n"));
}

TEST(PrintedFacts, TellWhatIsKnownOfALens)
{
    CGroupFacts group;
    group.Lens = CLensFacts{"UPlan", 20.0, {}, 0.75, 0.6, {}};
    EXPECT_THAT(Print(Document(group)), HasSubstr("  lens  UPlan, 20x, NA 0.75, working distance 0.6 mm\n"));
}

TEST(PrintedFacts, TellTheStagePositionInMicrometres)
{
    CGroupFacts group;
    group.StagePosition = AC_POINT{1500250, -3};
    EXPECT_THAT(Print(Document(group)), HasSubstr("  stage  x 1500.25 um, y -0.003 um\n"));
}

TEST(PrintedFacts, TellWhatIsNotAsItShouldBe)
{
    CDocumentFacts facts = Document({});
    facts.Remarks = {{"warning", "level-without-data", "group 0: level 1 has no data"}};
    EXPECT_THAT(Print(facts), HasSubstr("  warning: group 0: level 1 has no data\n"));
}

TEST(PrintedFacts, NameALevelWithoutData)
{
    CGroupFacts group;
    group.Levels = {Level(0, 1, 1), Level(1, 1, 1)};
    group.Levels[1].HasData = false;
    EXPECT_THAT(Print(Document(group)), HasSubstr("  1      no data\n"));
}

TEST(PrintedFacts, KeepControlCharactersFromTheTerminal)
{
    CGroupFacts group;
    group.Name = "\x1B[2Jgone";
    EXPECT_THAT(Print(Document(group)), HasSubstr("name ?[2Jgone\n"));
}

TEST(PrintedFacts, InShortAreALineForEachGroup)
{
    CGroupFacts group;
    group.Name = "Tissue";
    group.Axes = {{AC_AT_Z, 5, {}, {}, {}, {}}};
    group.Levels = {Level(0, 4, 3), Level(1, 2, 2)};
    std::ostringstream out;
    PrintShortFacts(out, Document(group));
    EXPECT_EQ(out.str(), "/data/slide.zel\n"
                         "  Tissue: 1024 x 768, tiles of 256 x 256, levels 2, Z 5, channels 0\n");
}

} // namespace
