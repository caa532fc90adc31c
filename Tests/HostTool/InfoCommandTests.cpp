#include "HostTool/InfoCommand.h"

#include <gtest/gtest.h>
#include <sstream>

namespace
{

using namespace HostTool;

std::string Print(const CDocumentFacts& facts)
{
    std::ostringstream out;
    PrintFacts(out, facts);
    return out.str();
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
    EXPECT_EQ(Print({"/data/slide.zel", std::nullopt, {group}}),
              "/data/slide.zel\n"
              "format version unknown, groups 1\n"
              "\n"
              "group 0, name unknown\n"
              "  channel  name     stored as  colours  bits\n"
              "  0        unknown  unknown    unknown  unknown\n"
              "  level  picture  in whole tiles  grid   tile       pixel\n"
              "  0      unknown  1024 x 768      4 x 3  256 x 256  unknown\n");
}

TEST(PrintedFacts, TellAllThatIsKnown)
{
    CGroupFacts group;
    group.Number = 1;
    group.Name = "Tissue";
    group.Channels = {{0, "DAPI", "RAW", "GRAYSCALE", 2, 12}};
    group.Axes = {{AC_AT_Z, 5, 0.0, 6.0, 1.5, "10^-6m^1"}};
    CLevelFacts level = Level(0, 4, 3);
    level.PictureRect = CMN_RECT{0, 0, 1000, 700};
    level.PixelWidth = 0.5;
    level.PixelHeight = 0.25;
    group.Levels = {level};
    EXPECT_EQ(Print({"/data/slide.zel", "2.1", {group}}),
              "/data/slide.zel\n"
              "format version 2.1, groups 1\n"
              "\n"
              "group 1, name Tissue\n"
              "  channel  name  stored as  colours    bits\n"
              "  0        DAPI  RAW        GRAYSCALE  12\n"
              "  axis  positions  from  to  step  unit\n"
              "  Z     5          0     6   1.5   um\n"
              "  level  picture     in whole tiles  grid   tile       pixel\n"
              "  0      1000 x 700  1024 x 768      4 x 3  256 x 256  0.5 x 0.25 um\n");
}

TEST(PrintedFacts, NameALevelWithoutData)
{
    CGroupFacts group;
    group.Levels = {Level(0, 1, 1), Level(1, 1, 1)};
    group.Levels[1].HasData = false;
    EXPECT_NE(Print({"/data/slide.zel", std::nullopt, {group}}).find("  1      no data\n"), std::string::npos);
}

TEST(PrintedFacts, KeepControlCharactersFromTheTerminal)
{
    CGroupFacts group;
    group.Name = "\x1B[2Jgone";
    EXPECT_NE(Print({"/data/slide.zel", std::nullopt, {group}}).find("name ?[2Jgone\n"), std::string::npos);
}

} // namespace
