/// Documents of which one tile store is missing: the plug-in refuses them, and `zel` still gets at the others.

#include "SampleDocuments/Slide.h"
#include "Tests/HostTool/ZelProgram.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace ZelTest;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

constexpr auto MissingSecond = "the tile store of stack 2, group 1, is missing; put the folder ";

/// Three groups, the second without its store.
class ZelWithoutAStore : public ZelProgram
{
protected:
    ZelWithoutAStore()
    {
        CSlideOptions options;
        options.TileWidth = options.TileHeight = 64;
        options.NumOfStacks = 3;
        Write(SlideFromPicture(DrawPicture(200, 100), options));
        fs::rename(Folder.Name("_slide_/stack2"), Folder.Name("away"));
    }
    void PutBack() const { fs::rename(Folder.Name("away"), Folder.Name("_slide_/stack2")); }

    /// Runs it, which has to tell what is missing.
    CommandResult RunWithout(const Words& words) const
    {
        const CommandResult result = Run(words);
        EXPECT_EQ(result.ExitCode, 3) << result.Errors;
        EXPECT_THAT(result.Errors, HasSubstr(MissingSecond));
        EXPECT_EQ(NumOfLines(result.Errors), 1u) << result.Errors;
        return result;
    }
    /// What it writes with and without the store.
    void ExpectSameOutput(Words words, const std::string& name) const
    {
        words.insert(words.end(), {"-o", Folder.Name(name)});
        RunWithout(words);
        const std::string without = Output(name);
        PutBack();
        EXPECT_EQ(Run(words).ExitCode, 0);
        EXPECT_EQ(without, Output(name));
        EXPECT_FALSE(without.empty());
    }
};

TEST_F(ZelWithoutAStore, TellsOfTheGroupsThatThereAre)
{
    const std::string output = RunWithout({"info", SlideName()}).Output;
    EXPECT_THAT(output, HasSubstr("\ngroup 0, name "));
    EXPECT_THAT(output, Not(HasSubstr("\ngroup 1, ")));
    EXPECT_THAT(output, HasSubstr("\ngroup 2, name "));
}

TEST_F(ZelWithoutAStore, TellsItInJson)
{
    const auto info = nlohmann::json::parse(RunWithout({"info", SlideName(), "--json"}).Output);
    EXPECT_EQ(info.at("isOpened"), false) << "a host is refused";
    ASSERT_EQ(info.at("groups").size(), 2u);
    EXPECT_EQ(info.at("groups").at(1).at("group"), 2);
    EXPECT_GT(info.at("groups").at(1).at("levels").at(0).at("tilesStored"), 0);
}

TEST_F(ZelWithoutAStore, ChecksTheTilesThatThereAre)
{
    const std::string output = RunWithout({"verify", SlideName(), "--decode"}).Output;
    EXPECT_THAT(output, HasSubstr("\ngroup 2, name "));
    EXPECT_THAT(output, HasSubstr(std::string("\nerror: ") + SlideName() + ": " + MissingSecond));
}

TEST_F(ZelWithoutAStore, TellsWhereTheTilesOfTheOthersLie)
{
    EXPECT_THAT(RunWithout({"tiles", SlideName(), "-g", "2"}).Output, HasSubstr("_slide_/stack3/frame_t.kor\n"));
    EXPECT_EQ(RunWithout({"tiles", SlideName(), "-g", "1"}).Output, "");
}

TEST_F(ZelWithoutAStore, TakesPicturesOfTheOthers)
{
    RunWithout({"region", SlideName(), "-g", "1", "-o", Folder.Name("none.png")});
    EXPECT_FALSE(fs::exists(Folder.Name("none.png")));
    ExpectSameOutput({"region", SlideName(), "-g", "2"}, "third.png");
}

TEST_F(ZelWithoutAStore, ExportsTheOthersOneByOne)
{
    RunWithout({"export", SlideName(), "-o", Folder.Name("all.ome.tif")});
    EXPECT_FALSE(fs::exists(Folder.Name("all.ome.tif")));
    ExpectSameOutput({"export", SlideName(), "-g", "2", "--prove"}, "third.ome.tif");
}

TEST_F(ZelWithoutAStore, HasNothingToTellIfAllAreMissing)
{
    fs::remove_all(Folder.Name("_slide_"));
    ExpectRefusal(Run({"info", SlideName()}), 3, "a tile store is missing");
}

} // namespace
