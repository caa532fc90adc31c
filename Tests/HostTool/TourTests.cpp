#include "SampleDocuments/Slide.h"
#include "Tests/HostTool/ZelProgram.h"

#include <gmock/gmock.h>

namespace
{

using namespace ZelTest;
using testing::ElementsAre;
using testing::HasSubstr;

namespace fs = std::filesystem;

/// `zel tour`: what ./run shows of a document.
class ZelTour : public ZelProgram
{
protected:
    CommandResult Tour(Words options = {}) const
    {
        Words words = {"tour", SlideName(), Folder.Name("tour")};
        words.insert(words.end(), options.begin(), options.end());
        return Run(words);
    }
    /// The names in the folder that the tour wrote to.
    std::vector<std::string> Written() const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(Folder.Name("tour")))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    void ExpectShown(const std::string& text) const
    {
        const CommandResult result = Tour();
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_THAT(result.Output, HasSubstr(text));
    }
};

TEST_F(ZelTour, WritesTheThumbnailAndOneTileOfEachLevel)
{
    Write(Stack(1).Size(1000, 1000).Tiles(256, 256).Levels(3));
    EXPECT_EQ(Tour().ExitCode, 0);
    EXPECT_THAT(Written(), ElementsAre("group0-level0-col2-row2.png", "group0-level1-col1-row1.png",
                                       "group0-level2-col0-row0.png", "thumbnail.png"));
}

TEST_F(ZelTour, MakesTheFolderWithThoseThatLeadToIt)
{
    Write(Stack(1));
    EXPECT_EQ(Run({"tour", SlideName(), Folder.Name("new/tiles")}).ExitCode, 0);
    EXPECT_TRUE(fs::exists(Folder.Name("new/tiles/thumbnail.png")));
}

TEST_F(ZelTour, FindsATileWhereTheMiddleOneIsMissing)
{
    Write(Stack(1).Size(768, 256).Tiles(256, 256).MissingTile(0, 1, 0));
    ExpectShown("group0-level0-col2-row0.png");
}

TEST_F(ZelTour, WritesTheThumbnailAsItWasDrawn)
{
    const CPicture picture = DrawPicture(20, 10);
    Write(Document().With(Stack(1)).Thumbnail(picture, {.Bits = 24}));
    Tour();
    const CPicture written = LoadPicture(Folder.Name("tour/thumbnail.png"));
    ASSERT_EQ(written.Width(), 20u);
    ASSERT_EQ(written.Height(), 10u);
    EXPECT_EQ(written.At(3, 7, 0), picture.At(3, 7, 0));
    EXPECT_EQ(written.At(19, 0, 2), picture.At(19, 0, 2));
}

TEST_F(ZelTour, WritesTheFirstDirectoryWhereNoThumbnailIsStored)
{
    Write(Document().With(Stack(1)).FirstDirectory(DrawPicture(30, 20), FirstDirectoryKind::Jpeg));
    Tour();
    EXPECT_EQ(LoadPicture(Folder.Name("tour/thumbnail.png")).Width(), 30u);
}

TEST_F(ZelTour, ShowsThePropertiesOfTheDocument)
{
    Write(Document().With(Stack(1)).Properties({.Note = "A note", .Author = "Somebody", .FamilyId = "family 7"}));
    ExpectShown("  author          Somebody\n"
                "  comment         A note\n"
                "  family          family 7\n");
}

TEST_F(ZelTour, ShowsThePropertiesOfAGroup)
{
    Write(Stack(1)
              .Lens({.Name = "UPlan 20x",
                     .Magnification = 20,
                     .Aperture = 0.75,
                     .WorkingDistance = CMeasured(0.6, "10^-3m^1"),
                     .ImmersionMedium = Immersion::Oil})
              .Stage(1500.5, -20)
              .Experiment("growth")
              .Sample("leaf", "third from the top"));
    ExpectShown("  lens             UPlan 20x, 20x, NA 0.75, oil, working distance 0.6 mm\n"
                "  stage            x 1500.5 um, y -20 um\n"
                "  experiment       growth\n"
                "  sample           leaf\n"
                "  its description  third from the top\n");
}

TEST_F(ZelTour, ShowsTheRegionsOfInterest)
{
    Write(Stack(1).Size(500, 500).LayerBlob(Regions({Rectangle("cell", {10, 20}, {30, 40}), Dot("spot", {7, 9})})));
    ExpectShown("\nregions of interest of group 0\n"
                "  region  name  shape    rotation  vertices in pixels\n"
                "  0       cell  POLYGON  0         (10, 20) (30, 20) (30, 40) (10, 40)\n"
                "  1       spot  POINT    0         (7, 9)\n");
}

TEST_F(ZelTour, ShowsRegionsOfAGroupThatBeginsLeftOfTheOrigin)
{
    Write(Stack(1)
              .Size(1000, 400)
              .Tiles(256, 256)
              .Level(0, Columns(-1, 3), Rows(-1, 1))
              .LayerBlob(Regions({Dot("spot", {7, 9})})));
    ExpectShown("(7, 9)\n");
}

TEST_F(ZelTour, ShowsTheFirstOfManyRegions)
{
    Write(Stack(1).Size(500, 500).LayerBlob(Regions(ManyRegions(25, 500, 500))));
    ExpectShown("\n  and 5 more\n");
}

TEST_F(ZelTour, ShowsAllOfTheSlideThatRunMakes)
{
    const CommandResult made = RunCommand({ZELMAKE, SlideName(), "--describe", SLIDE_OF_RUN});
    ASSERT_EQ(made.ExitCode, 0) << made.Errors;
    const CommandResult result = Tour();
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    for (const char* fact :
         {"made by", "author", "comment", "family", "created", "updated", "thumbnail", "overview", "lens", "stage",
          "experiment", "sample", "its description", "regions", "#0000FF", "axis", "regions of interest of group 0"})
        EXPECT_THAT(result.Output, HasSubstr(fact));
    EXPECT_TRUE(fs::exists(Folder.Name("tour/thumbnail.png")));
}

TEST_F(ZelTour, DecodesAJpegTileWhoseTablesStandApart)
{
    CSlideOptions options;
    options.TileWidth = 64;
    options.TileHeight = 48;
    options.Compression = StoreCompression::Jpeg;
    options.Storage = StackStorage::TiffStore;
    Write(SlideFromPicture(DrawPicture(64, 48), options));
    EXPECT_EQ(Tour().ExitCode, 0);
    EXPECT_EQ(LoadPicture(Folder.Name("tour/group0-level0-col0-row0.png")).Width(), 64u);
}

TEST_F(ZelTour, TakesNoStripThatThePluginDoesNotHandOut)
{
    CSlideOptions options;
    options.Compression = StoreCompression::Jpeg;
    options.Storage = StackStorage::TiffStore;
    options.RowsPerStrip = 32;
    Write(SlideFromPicture(DrawPicture(64, 60), options));
    const CommandResult result = Tour();
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_THAT(result.Output, HasSubstr("group0-level0-col0-row0.png"));
}

TEST_F(ZelTour, InShortPrintsALineForAGroupAndNoneForATile)
{
    Write(Stack(1).Name("Tissue").Size(500, 300).Tiles(256, 256).Levels(2).Z(3));
    EXPECT_EQ(Tour({"--short"}).Output,
              SlideName() +
                  "\n"
                  "  Tissue: 500 x 300, tiles of 256 x 256, levels 2, Z 3, channels 1, RAW GRAYSCALE\n"
                  "  3 files written to " +
                  Folder.Name("tour") + "\n");
}

TEST_F(ZelTour, GoesOnBehindATileThatCannotBeRead)
{
    Document document;
    document.With(Stack(1).Size(500, 300).Tiles(256, 256).Levels(2).Jpeg());
    for (auto& tile : document.Store(1).Tiles)
        if (tile.Elements.back() == 0)
            tile.Size = 1U << 20;
    Write(document);
    const CommandResult result = Tour();
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_EQ(NumOfLines(result.Errors), 1u) << result.Errors;
    EXPECT_THAT(result.Errors, HasSubstr("cannot read a tile"));
    EXPECT_THAT(result.Output, HasSubstr("group0-level1-"));
}

TEST_F(ZelTour, SaysInOneLineThatAStoreIsLost)
{
    Write(Stack(1).WithoutStore());
    ExpectRefusal(Tour(), 3, "a tile store is missing; put the folder " + Folder.Name("_slide_") + " back");
    EXPECT_FALSE(fs::exists(Folder.Name("tour")));
}

TEST_F(ZelTour, SaysInOneLineThatATiffStoreIsLost)
{
    Write(Stack(1).Size(100, 80).Tiles(64, 64).InTiffStore().WithoutStore());
    ExpectRefusal(Tour(), 3, "a tile store is missing");
}

TEST_F(ZelTour, SaysInOneLineThatAStoreOfAFewIsLost)
{
    Write(Document().With(Stack(1)).With(Stack(2)));
    fs::remove_all(Folder.Name("_slide_/stack2"));
    ExpectRefusal(Tour(), 3, "a tile store is missing");
}

TEST_F(ZelTour, RefusesAFolderThatCannotBeMade)
{
    Write(Stack(1));
    Folder.Write("file", "in the way");
    ExpectRefusal(Run({"tour", SlideName(), Folder.Name("file/tour")}), 2, "cannot make this folder");
}

TEST_F(ZelTour, WritesNothingBesideItsFolder)
{
    Write(Stack(1).Size(500, 300).Levels(2));
    const auto list = [this]
    {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(Folder.Path()))
            if (entry.path().string().find("/tour") == std::string::npos)
                names.push_back(entry.path().string() +
                                std::to_string(entry.last_write_time().time_since_epoch().count()));
        return names;
    };
    const auto before = list();
    Tour();
    EXPECT_EQ(list(), before);
}

} // namespace
