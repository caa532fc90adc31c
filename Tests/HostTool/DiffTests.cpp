/// `zel diff`: what two documents differ in.

#include "SampleDocuments/Regions.h"
#include "Tests/HostTool/ZelProgram.h"
#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>

namespace
{

using namespace SampleDocuments;
using testing::HasSubstr;
using testing::Not;

class ZelDiff : public testing::Test
{
protected:
    using Words = std::vector<std::string>;

    void WriteFirst(Document document) { document.WriteTo(Folder.Name("first.zel")); }
    void WriteSecond(Document document) { document.WriteTo(Folder.Name("second.zel")); }
    void WriteFirst(const Stack& stack) { WriteFirst(Document().With(stack)); }
    void WriteSecond(const Stack& stack) { WriteSecond(Document().With(stack)); }

    TestSupport::CommandResult Diff(const Words& options = {}) const
    {
        Words words = {ZEL, "diff", Folder.Name("first.zel"), Folder.Name("second.zel")};
        words.insert(words.end(), options.begin(), options.end());
        return TestSupport::RunCommand(words);
    }
    /// Exit code 5, and a line of output that holds `text`.
    void ExpectDifference(const std::string& text, const Words& options = {}) const
    {
        const auto result = Diff(options);
        EXPECT_EQ(result.ExitCode, 5) << result.Output << result.Errors;
        EXPECT_THAT(result.Output, HasSubstr(text));
        EXPECT_THAT(result.Errors, HasSubstr("second.zel: differs from "));
        EXPECT_EQ(ZelTest::NumOfLines(result.Errors), 1u);
    }
    void ExpectEqual(const Words& options = {}) const
    {
        const auto result = Diff(options);
        EXPECT_EQ(result.ExitCode, 0) << result.Output << result.Errors;
        EXPECT_THAT(result.Output, HasSubstr("no difference\n"));
        EXPECT_EQ(result.Errors, "");
    }

    const CPicture Drawn = DrawPicture(300, 200);
    TestSupport::TemporaryFolder Folder;
};

/// Tiles of 64 x 64.
CSlideOptions SmallTiles(uint32_t compression, const std::function<void(CSlideOptions&)>& more = {})
{
    CSlideOptions options = Slide(compression, more);
    options.TileWidth = options.TileHeight = 64;
    return options;
}

TEST_F(ZelDiff, FindsNothingInACopy)
{
    const auto options = SmallTiles(StoreCompression::Jpeg, [](auto& o) { o.NumOfZ = 2, o.NumOfStacks = 2; });
    WriteFirst(SlideFromPicture(Drawn, options));
    WriteSecond(SlideFromPicture(Drawn, options));
    ExpectEqual();
    ExpectEqual({"--decoded"});
    EXPECT_THAT(Diff().Output, HasSubstr(" 116 tiles\n"));
}

/// Three tiles of 64 x 64 grey pixels in a row.
Document ThreeTiles()
{
    return Document().With(Stack(1).Size(192, 64).Tiles(64, 64));
}

TEST_F(ZelDiff, TellsTheTileOfWhichAByteDiffers)
{
    WriteFirst(ThreeTiles());
    Document changed = ThreeTiles();
    changed.Store(1).Tiles[1].Body[7] ^= 1;
    WriteSecond(changed);
    ExpectDifference("tile: group 0, level 0, column 1, row 0, channel 0, z 0, t 0, lambda 0: other bytes, from byte 7 "
                     "of 4096 on\n");
    EXPECT_THAT(Diff().Errors, HasSubstr(": 1 tile; the output tells them"));
}

TEST_F(ZelDiff, TellsHowFarDecodedPixelsAreApart)
{
    WriteFirst(ThreeTiles());
    Document changed = ThreeTiles();
    changed.Store(1).Tiles[1].Body[7] ^= 16;
    WriteSecond(changed);
    ExpectDifference("tile: group 0, level 0, --rect 64,0,64,64, channel 0, z 0, t 0, lambda 0: 1 of 4096 pixels "
                     "differ, by at most 16\n",
                     {"--decoded"});
}

TEST_F(ZelDiff, FindsTheSamePixelsHoweverTheyAreStored)
{
    const auto limits = [](Stack& stack) { stack.DisplayLimits(0, 256); };
    WriteFirst(SlideFromPicture(Drawn, SmallTiles(StoreCompression::Raw), limits));
    WriteSecond(SlideFromPicture(Drawn, SmallTiles(StoreCompression::Png), limits));
    ExpectDifference("property: .groups[0].channels[0].compression: \"RAW\" | \"PNG\"\n");
    ExpectEqual({"--decoded"});
}

TEST_F(ZelDiff, ComparesPixelsOfTilesOfOtherSizes)
{
    CSlideOptions options = Slide(StoreCompression::Raw, [](auto& o) { o.NumOfLevels = 2; });
    for (const auto& [name, size] : {std::pair{"first.zel", 64U}, std::pair{"second.zel", 96U}})
    {
        options.TileWidth = options.TileHeight = size;
        SlideFromPicture(Drawn, options).WriteTo(Folder.Name(name));
    }
    ExpectDifference("tile: group 0, level 1: tiles of 64 x 64 | 96 x 96 pixels, which only --decoded compares\n");
    ExpectEqual({"--decoded"});
}

TEST_F(ZelDiff, TellsATileThatOneDocumentLacks)
{
    // Its pixels are white, as what has no tile is shown.
    CTileContents white;
    white.Bytes = [](const CTilePlace&) { return ByteString(size_t{64} * 64, 255); };
    const Stack whole = Stack(1).Size(192, 64).Tiles(64, 64).Contents(white);
    WriteFirst(whole);
    WriteSecond(Stack(whole).MissingTile(0, 2, 0));
    ExpectDifference("column 2, row 0, channel 0, z 0, t 0, lambda 0: only in the first document\n");
    ExpectDifference("--rect 128,0,64,64, channel 0, z 0, t 0, lambda 0: 4096 of 4096 pixels differ, 4096 of them "
                     "stored in one document only\n",
                     {"--decoded"});
}

TEST_F(ZelDiff, ComparesEachPlane)
{
    const Stack stack = Stack(1).Size(64, 64).Tiles(64, 64).Z(2).Channels(2);
    WriteFirst(stack);
    Document changed = Document().With(stack);
    changed.Store(1).Tile({0, 0, 1, 1, 0}).Body[0] ^= 1;
    WriteSecond(changed);
    ExpectDifference("tile: group 0, level 0, column 0, row 0, channel 1, z 1, t 0, lambda 0: other bytes");
    EXPECT_THAT(Diff().Output, HasSubstr(", 4 tiles\n"));
}

TEST_F(ZelDiff, TellsPropertiesByTheNamesOfInfo)
{
    WriteFirst(Document().Properties({.Author = "Ann", .FamilyId = "7"}).With(Stack(1).Lens({.Magnification = 20})));
    WriteSecond(Document().Properties({.Author = "Bob"}).With(Stack(1).Lens({.Magnification = 40})));
    ExpectDifference("property: .document.author: \"Ann\" | \"Bob\"\n"
                     "property: .document.familyId: \"7\" | null\n"
                     "property: .groups[0].lens.magnification: 20.0 | 40.0\n");
}

TEST_F(ZelDiff, TellsWhatTheSecondDocumentLacksInALine)
{
    WriteFirst(Document().With(Stack(1).Levels(2)).With(Stack(2)));
    WriteSecond(Stack(1));
    ExpectDifference("property: .groups[0].levels[1]: {...} | nothing\nproperty: .groups[1]: {...} | nothing\n");
}

TEST_F(ZelDiff, TellsThumbnailAndLookUpTable)
{
    const Stack grey(1);
    WriteFirst(Document().With(Stack(grey).LookUpTable(Ramp(256, {255, 0, 0}))).Thumbnail(DrawPicture(20, 10)));
    WriteSecond(Document().With(Stack(grey).LookUpTable(Ramp(256, {255, 1, 0}))).Thumbnail(DrawPicture(20, 12)));
    ExpectDifference("property: bytes of the thumbnail: differs\n");
    ExpectDifference("property: look-up table of .groups[0].channels[0]: differs\n");
}

TEST_F(ZelDiff, TellsRegionsByWhatDiffers)
{
    const auto slideWith = [](std::vector<CRegion> regions) { return Stack(1).LayerBlob(Regions(std::move(regions))); };
    const CRegion cell = Rectangle("cell", {10, 20}, {30, 40});
    WriteFirst(slideWith({cell, Rectangle("gland", {50, 50}, {90, 90}), Dot("spot", {5, 5})}));
    WriteSecond(slideWith({cell, Rectangle("duct", {50, 50}, {90, 95})}));
    const auto result = Diff();
    EXPECT_THAT(result.Output, HasSubstr("\"gland\": name \"gland\" | \"duct\", other vertices\n"));
    EXPECT_THAT(result.Output, HasSubstr("\"spot\": only in the first document\n"));
    EXPECT_THAT(result.Output, Not(HasSubstr("\"cell\"")));
    EXPECT_THAT(result.Output, HasSubstr(", 3 regions, "));
}

TEST_F(ZelDiff, ShowsTheFirstFiftyOfAKindOrAll)
{
    WriteFirst(Stack(1).Size(64 * 60, 64).Tiles(64, 64));
    WriteSecond(Stack(1)
                    .Size(64 * 60, 64)
                    .Tiles(64, 64)
                    .Missing([](const CTilePlace& place) { return place.Column > 0 && place.Column < 58; }));
    EXPECT_EQ(ZelTest::NumOfLines(Diff().Output), 52u);
    EXPECT_THAT(Diff().Output, HasSubstr("and 7 more tiles; --list shows all of them\n"));
    EXPECT_EQ(ZelTest::NumOfLines(Diff({"--list"}).Output), 58u);
}

// What cannot be compared.

TEST_F(ZelDiff, TellsATileThatCannotBeRead)
{
    WriteFirst(ThreeTiles());
    Document changed = ThreeTiles();
    changed.Store(1).Tiles[1].Size = 0xFFFFFFF0U;
    WriteSecond(changed);
    for (const Words& options : {Words(), Words{"--decoded"}})
    {
        const auto result = Diff(options);
        EXPECT_EQ(result.ExitCode, 1);
        EXPECT_THAT(result.Output, HasSubstr("unreadable: group 0, level 0"));
        EXPECT_THAT(result.Errors, HasSubstr("1 tile cannot be read; 'zel verify'"));
    }
}

TEST_F(ZelDiff, BlamesTheDocumentThatIsDamaged)
{
    WriteFirst(Stack(1));
    Folder.Write("second.zel", TestSupport::BytesOf(Folder.Name("first.zel")).substr(0, 300));
    const auto result = Diff();
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("second.zel: cannot open"));
    EXPECT_THAT(result.Errors, HasSubstr("the reader says"));
    EXPECT_EQ(ZelTest::NumOfLines(result.Errors), 1u);
}

TEST_F(ZelDiff, BlamesTheDocumentAtWhichTheReaderEndsTheProcess)
{
    WriteFirst(Stack(1));
    constexpr uint32_t volumeHasName = 1U << 28;
    Document document;
    document.With(Stack(1));
    document.Volume({2000}).CountFlags(volumeHasName);
    WriteSecond(document);
    const auto result = Diff();
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("second.zel: reading it ended early"));
    EXPECT_EQ(ZelTest::NumOfLines(result.Errors), 1u);
}

TEST_F(ZelDiff, MissesAStore)
{
    WriteFirst(Stack(1));
    WriteSecond(Stack(1).WithoutStore());
    EXPECT_EQ(Diff().ExitCode, 3);
    EXPECT_THAT(Diff().Errors, HasSubstr("second.zel"));
}

} // namespace
