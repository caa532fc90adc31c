#include "Tests/HostTool/ZelProgram.h"

#include <sys/resource.h>
#include <unistd.h>

namespace
{

using namespace ZelTest;

class Zel : public ZelProgram
{
};

TEST_F(Zel, PrintsTheGridAndSizeOfEachLevel)
{
    Write(Stack(1).Size(700, 300).Tiles(256, 128).Levels(2));
    ExpectPrinted("768 x 384  ");
    ExpectPrinted("  3 x 3  256 x 128");
    ExpectPrinted("512 x 256  ");
    ExpectPrinted("  2 x 2  256 x 128");
}

TEST_F(Zel, PrintsTheGridOfTilesLeftOfTheOrigin)
{
    Write(Stack(1).Size(1000, 400).Tiles(256, 256).Level(0, Columns(-1, 3), Rows(0, 1)));
    ExpectPrinted("  5 x 2  256 x 256");
}

TEST_F(Zel, PrintsEachGroup)
{
    Write(Document().With(Stack(1)).With(Stack(7)));
    ExpectPrinted("groups          2\n");
    ExpectPrinted("\ngroup 1, ");
}

TEST_F(Zel, PrintsEachChannel)
{
    Write(Stack(1).Channels(3));
    ExpectPrinted("\n  0        ");
    ExpectPrinted("\n  1        ");
    ExpectPrinted("\n  2        ");
}

TEST_F(Zel, PrintsAllThatADocumentTells)
{
    Write(Stack(1)
              .Name("Tissue")
              .Size(600, 300)
              .Tiles(256, 256)
              .Levels(2)
              .Z(3)
              .T(2)
              .Channels({"DAPI", "FITC"})
              .Raw(ComponentType::Uint16));
    EXPECT_EQ(Run({"info", SlideName()}).Output,
              SlideName() +
                  "\n"
                  "  format version  1.1\n"
                  "  made by         Sample microscope, version 1.0 (Build 4)\n"
                  "  author          Sample author\n"
                  "  comment         Made by the sample writer\n"
                  "  created         2020-01-01T00:00:00+00:00\n"
                  "  updated         2020-01-01T01:00:00+00:00\n"
                  "  thumbnail       6 x 4\n"
                  "  groups          1\n"
                  "\n"
                  "group 0, name Tissue\n"
                  "  type  Default image\n"
                  "  channel  name  compression  colours    bits  shown     shadow  highlight  exposure\n"
                  "  0        DAPI  RAW          GRAYSCALE  16    as it is  0       65535      unknown\n"
                  "  1        FITC  RAW          GRAYSCALE  16    as it is  0       65535      unknown\n"
                  "  axis  positions  start  end  step  unit\n"
                  "  Z     3          0      3    1.5   um\n"
                  "  T     2          0      0.5  0.5   s\n"
                  "  level  picture    in whole tiles  grid   tile       pixel\n"
                  "  0      600 x 300  768 x 512       3 x 2  256 x 256  0.5 x 0.5 um\n"
                  "  1      300 x 150  512 x 256       2 x 1  256 x 256  1 x 1 um\n"
                  "\n"
                  "files\n"
                  "  3650 bytes      document               " +
                  SlideName() +
                  "\n"
                  "  12587372 bytes  tile store of stack 1  " +
                  Folder.Name("_slide_/stack1/frame_t.kor") + "\n");
}

TEST_F(Zel, PrintsADocumentWhoseFirstTileCannotBeRead)
{
    Document document;
    document.With(Stack(1).Jpeg());
    document.Store(1).Tiles.front().Size = 1U << 20;
    Write(document);
    ExpectPrinted("  JPEG ");
    ExpectRefusal(Tile({"-x", "0", "-y", "0"}), 1, "cannot read a tile");
}

TEST_F(Zel, PrintsAxesWithMoreThanOnePosition)
{
    Write(Stack(1).Z(5).T(1).Lambda(2));
    ExpectPrinted("\n  Z       5 ");
    ExpectPrinted("\n  lambda  2 ");
    EXPECT_EQ(Run({"info", SlideName()}).Output.find("\n  T "), std::string::npos);
}

TEST_F(Zel, PrintsALevelWithoutData)
{
    Write(Stack(1).Size(1000, 1000).Level(0, Columns(0, 3), Rows(0, 3)).Level(2, Columns(0, 0), Rows(0, 0)));
    ExpectPrinted("\n  1      no data\n");
}

TEST_F(Zel, TakesANameWithoutAFolder)
{
    Write(Stack(1));
    const std::string line = "cd '" + Folder.Path().string() + "' && '" ZEL "' info slide.zel";
    EXPECT_EQ(RunCommand({"sh", "-c", line}).ExitCode, 0);
}

TEST_F(Zel, WritesACompressedTileAsItIsStored)
{
    auto stack = Stack(1).Size(1000, 400).Tiles(256, 256).Jpeg(3);
    stack.Contents(EncodedPixelsOf(stack.Plan()));
    Write(stack);
    const CommandResult result = Tile({"-x", "2", "-y", "1"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_EQ(Output("tile.jpg"), TextOf(stack.TileBytes(0, 2, 1)));
}

TEST_F(Zel, WritesTheTileAtAChannelAndPosition)
{
    const auto stack = Stack(1).Z(3).T(2).Channels(2).Jpeg();
    Write(stack);
    Tile({"-x", "0", "-y", "0", "-z", "2", "-t", "1", "-c", "1"});
    EXPECT_EQ(Output("tile.raw"), TextOf(stack.TileBytes(0, 0, 0, {.Z = 2, .T = 1, .L = 0, .C = 1})));
}

TEST_F(Zel, CountsColumnsFromTheFirstThatExists)
{
    const auto stack = Stack(1).Size(1000, 400).Tiles(256, 256).Level(0, Columns(-1, 3), Rows(0, 1)).Jpeg();
    Write(stack);
    Tile({"-x", "0", "-y", "1"});
    EXPECT_EQ(Output("tile.raw"), TextOf(stack.TileBytes(0, -1, 1)));
}

TEST_F(Zel, WritesRawPixelsAsPng)
{
    Write(Stack(1).Raw(ComponentType::Uint8));
    EXPECT_EQ(Tile({"-x", "0", "-y", "0"}).ExitCode, 0);
    EXPECT_EQ(Output("tile.png").substr(1, 3), "PNG");
}

TEST_F(Zel, RefusesAFileThatIsNotThere)
{
    ExpectRefusal(Run({"info", Folder.Name("none.zel")}), 2, "no such file");
}

TEST_F(Zel, RefusesAFileOfAnotherKind)
{
    ExpectRefusal(Run({"info", Folder.Write("picture.png", "no slide")}), 2, "ends in .zel");
}

TEST_F(Zel, RefusesAFolderNamedLikeADocument)
{
    std::filesystem::create_directory(SlideName());
    ExpectRefusal(Run({"info", SlideName()}), 2, "cannot open: this is a folder; give the file that ends in .zel");
}

TEST_F(Zel, RefusesAFileThatIsNoDocument)
{
    ExpectRefusal(Run({"info", Folder.Write("slide.zel", "no slide at all, but some bytes")}), 1, "damaged");
}

TEST_F(Zel, NamesTheFolderThatIsMissingBesideTheDocument)
{
    Write(Stack(1).WithoutStore());
    ExpectRefusal(Run({"info", SlideName()}), 3, "_slide_");
}

TEST_F(Zel, TakesNoMemoryForATileThatTheStoreCannotHold)
{
    Document document;
    document.With(Stack(1).Jpeg());
    document.Store(1).Tiles.front().Size = 0xFFFFFFF0U;
    Write(document);
    ExpectRefusal(Tile({"-x", "0", "-y", "0"}), 1, "cannot read a tile");
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    EXPECT_LT(usage.ru_maxrss, 1L << 20); // in kilobytes
}

TEST_F(Zel, RefusesAPlaceThatTheDocumentDoesNotHave)
{
    Write(Stack(1).Size(500, 300).Tiles(256, 256).Levels(2).Jpeg().MissingTile(0, 1, 1));
    ExpectRefusal(Tile({"-x", "0", "-y", "0", "-g", "1"}), 2, "there is no group 1 in the document; the last one is 0");
    ExpectRefusal(Tile({"-x", "0", "-y", "0", "-l", "2"}), 2, "there is no level 2 in group 0; the last one is 1");
    ExpectRefusal(Tile({"-x", "2", "-y", "0"}), 2, "there is no column 2 in level 0 of group 0; the last one is 1");
    ExpectRefusal(Tile({"-x", "0", "-y", "2"}), 2, "there is no row 2 in level 0 of group 0; the last one is 1");
    ExpectRefusal(Tile({"-x", "0", "-y", "0", "-c", "1"}), 2, "there is no channel 1, z 0");
    ExpectRefusal(Tile({"-x", "0", "-y", "0", "-z", "1"}), 2, "there is no channel 0, z 1");
    ExpectRefusal(Tile({"-x", "1", "-y", "1"}), 2, "no tile is stored at column 1, row 1");
}

TEST_F(Zel, SaysInOneLineThatTheReaderEndsTheProcess)
{
    constexpr uint32_t volumeHasName = 1U << 28;
    Document document;
    document.With(Stack(1));
    document.Volume({2000}).CountFlags(volumeHasName);
    Write(document);
    for (const char* command : {"info", "verify", "files", "tiles"})
    {
        ExpectRefusal(Run({command, SlideName()}), 1, "reading it ended early");
        ExpectRefusal(Run({command, SlideName()}), 1, "; the reader says: abort() called.\n");
    }
}

TEST_F(Zel, EndsTheLineOfADamagedFileWithTheReasonOfTheReader)
{
    ExpectRefusal(Run({"info", Folder.Write("slide.zel", "no slide at all, but some bytes")}), 1,
                  "; the reader says: Assertion failed: ");
}

TEST_F(Zel, ShowsTheLogFromALevelOn)
{
    Write(Stack(1).Name("Tissue"));
    const CommandResult all = Run({"info", SlideName(), "--log", "info"});
    EXPECT_EQ(all.ExitCode, 0);
    EXPECT_NE(all.Errors.find("log: Info to help test against Image Viewer: The MultiDimImage name is 'Tissue'"),
              std::string::npos)
        << all.Errors;
    EXPECT_EQ(all.Output, Run({"info", SlideName()}).Output);
    EXPECT_EQ(Run({"info", SlideName(), "--log", "error"}).Errors, "");
    ExpectRefusal(Run({"--log", "much", "info", SlideName()}), 2, "--log");
}

TEST_F(Zel, EndsSilentlyWhenNobodyReadsItsOutput)
{
    Write(Stack(1).Size(800, 800).Tiles(16, 16).Raw(ComponentType::Uint8)); // more than a pipe holds
    const CommandResult result =
        RunCommand({"bash", "-c", "'" ZEL "' tiles '" + SlideName() + "' | true; echo ${PIPESTATUS[0]}"});
    EXPECT_EQ(result.Output, "141\n");
    EXPECT_EQ(result.Errors, "");
}

TEST_F(Zel, BlamesAFileThatMayNotBeReadOnTheMachine)
{
    Write(Stack(1).Jpeg());
    std::filesystem::permissions(SlideName(), std::filesystem::perms::none);
    std::filesystem::permissions(Folder.Path(), std::filesystem::perms::all);
    // Root may read everything, so that it has to be somebody else.
    const std::string run = "'" ZEL "' info '" + SlideName() + "'";
    const CommandResult result = geteuid() == 0
                                     ? RunCommand({"setpriv", "--reuid", "65534", "--clear-groups", "sh", "-c", run})
                                     : RunCommand({"sh", "-c", run});
    ExpectRefusal(result, 4, "no right to read it");
}

TEST_F(Zel, RefusesOptionsThatItDoesNotKnow)
{
    ExpectRefusal(Run({"info", "slide.zel", "--colour"}), 2, "--colour; 'zel info --help' tells more");
    ExpectRefusal(Run({"info"}), 2, "FILE is required; 'zel info --help' tells more");
}

TEST_F(Zel, RefusesToRunWithoutACommand)
{
    ExpectRefusal(Run({}), 2, "'zel --help' tells more");
}

TEST_F(Zel, NamesTheCommandOrOptionThatItDoesNotKnow)
{
    ExpectRefusal(Run({"show", "slide.zel"}), 2, "there is no command show; 'zel --help' tells more");
    ExpectRefusal(Run({"--colour"}), 2, "there is no option --colour; 'zel --help' tells more");
}

TEST_F(Zel, HelpsOnRequest)
{
    EXPECT_EQ(Run({"--help"}).ExitCode, 0);
    EXPECT_NE(Run({"tile", "--help"}).Output.find("Examples:"), std::string::npos);
}

TEST_F(Zel, SaysSoWhenThePluginCannotBeLoaded)
{
    ExpectRefusal(Run({"--plugin", Folder.Name("none.so"), "info", SlideName()}), 2, "cannot load the plug-in");
}

} // namespace
