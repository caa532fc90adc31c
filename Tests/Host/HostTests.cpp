#include "SampleDocuments/Document.h"
#include "Tests/Support/Command.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>

/// Hosts in C that link the plug-in and know nothing of it but its header.

namespace
{

using namespace SampleDocuments;
using TestSupport::CommandResult;
using TestSupport::RunCommand;

class HostInC : public testing::Test
{
protected:
    std::string Write(Document document, const std::string& name = "slide.zel")
    {
        return document.WriteTo(Folder.Name(name)).string();
    }

    TestSupport::TemporaryFolder Folder;
};

TEST_F(HostInC, OfTheReadmeWritesTheFirstTileAsItIsStored)
{
    const auto stack = Stack(1).Size(500, 300).Tiles(256, 256).Jpeg();
    const CommandResult result = RunCommand({README_HOST, Write(Document().With(stack))});
    EXPECT_EQ(result.ExitCode, 0);
    const ByteString stored = stack.TileBytes(0, 0, 0);
    EXPECT_EQ(result.Output, std::string(stored.begin(), stored.end()));
}

TEST_F(HostInC, OfTheReadmeTakesNamesBeyondAscii)
{
    const std::string file = Write(Document().With(Stack(1).Jpeg()), "Gewebe \xC3\xBC.zel");
    EXPECT_EQ(RunCommand({"/usr/bin/env", "LC_ALL=C.UTF-8", README_HOST, file}).ExitCode, 0);
}

TEST_F(HostInC, OfTheReadmeTellsWhichCallFailedAndHow)
{
    CommandResult result = RunCommand({README_HOST, Folder.Name("none.zel")});
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_EQ(result.Errors, "host: _AC_Open(name, AC_OM_READ, &document): result 2\n");
    EXPECT_EQ(RunCommand({README_HOST}).Errors, "host: host SLIDE, by a name that this locale can write: result 1\n");
    result =
        RunCommand({README_HOST, Write(Document().With(Stack(1).Size(512, 512).Tiles(256, 256).MissingTile(0, 0, 0)))});
    EXPECT_EQ(result.Errors, "host: no tile is stored there: result 7\n");
    result = RunCommand({"/bin/sh", "-c", "\"$0\" \"$1\" > /dev/full", README_HOST, Write(Document().With(Stack(1)))});
    EXPECT_EQ(result.Errors, "host: fwrite: result 31\n");
}

TEST_F(HostInC, ReadsEveryTileOfADocument)
{
    const auto first = Stack(1).Size(500, 300).Tiles(256, 256).Levels(2).Raw(ComponentType::Uint8);
    const auto second = Stack(2).Size(100, 100).Tiles(128, 128).Raw(ComponentType::Uint16);
    const CommandResult result = RunCommand({HOST_IN_C, Write(Document().With(first).With(second))});
    EXPECT_EQ(result.ExitCode, 0);
    // 2 x 2 tiles and 1 of the first stack, 1 of two bytes a pixel of the second
    EXPECT_EQ(result.Output, "6 tiles, " + std::to_string(5 * 256 * 256 + 128 * 128 * 2) + " bytes\n");
}

// ---- Those of docs/host.md, with what the page says that they print ----

class ShownHost : public HostInC
{
protected:
    /// Times and places in the sources are others each time.
    static std::string WithoutTimesAndLines(const std::string& text)
    {
        static const std::regex Time("[0-9-]{10}T[0-9:]{8}Z");
        static const std::regex Line("\\.cpp:[0-9]+:");
        return std::regex_replace(std::regex_replace(text, Time, "TIME"), Line, ".cpp:LINE:");
    }
    /// What the page shows below a command, up to the next one or the end of the example.
    static std::string Shown(const std::string& command)
    {
        const std::string page = TestSupport::BytesOf(PAGE);
        const std::string first = "    $ " + command + "\n";
        const size_t start = page.find(first);
        EXPECT_NE(start, std::string::npos) << "the page does not show " << command;
        if (start == std::string::npos)
            return {};
        std::string shown;
        std::istringstream lines(page.substr(start + first.size()));
        for (std::string line; std::getline(lines, line) && line.starts_with("    ") && !line.starts_with("    $ ");)
            shown += line.substr(4) + "\n";
        return WithoutTimesAndLines(shown);
    }
    static Document WithUnknownShape()
    {
        return Document().With(Stack(1).LayerBlob(Regions({CRegion("xv.other", "odd", {{1, 2}})}).AsXml()));
    }
};

TEST_F(ShownHost, GuardsAgainstTheEndOfTheProcess)
{
    CommandResult result = RunCommand({GUARD, Write(Document().With(Stack(1).Jpeg()))});
    EXPECT_EQ(result.Output, Shown("./guard sound.zel"));
    EXPECT_EQ(result.ExitCode, 0);
    result = RunCommand({GUARD, Folder.Name("none.zel")});
    EXPECT_EQ(result.Output, Shown("./guard none.zel"));
    EXPECT_EQ(result.ExitCode, 1);
    result = RunCommand({GUARD, Write(WithUnknownShape())});
    EXPECT_EQ(result.Output, Shown("./guard regions-of-an-unknown-shape.zel"));
    EXPECT_EQ(result.ExitCode, 1);
}

TEST_F(ShownHost, TellsWhyByTheLog)
{
    const std::string variables = "ZEL_LOG=stderr ZEL_LOG_LEVEL=warning";
    const CommandResult result =
        RunCommand({"/usr/bin/env", "ZEL_LOG=stderr", "ZEL_LOG_LEVEL=warning", GUARD, Write(WithUnknownShape())});
    EXPECT_EQ(WithoutTimesAndLines(result.Errors + result.Output),
              Shown(variables + " ./guard regions-of-an-unknown-shape.zel"));
}

TEST_F(ShownHost, PrintsSetsWithParameters)
{
    const auto stack = Stack(1)
                           .Size(40, 30)
                           .Tiles(16, 16)
                           .Raw(ComponentType::Uint16)
                           .Z(3, 0, 1.5)
                           .T(2, 0, 500, "10^-3s^1")
                           .Channels({{"DAPI", 0, 4096}, {"FITC", 0, 1024}});
    EXPECT_EQ(RunCommand({SETS, Write(Document().With(stack))}).Output, Shown("./sets stack.zel"));
}

TEST_F(ShownHost, ReadsBytesAndTextsWithoutAnEnd)
{
    const auto stack = Stack(1)
                           .Size(64, 64)
                           .InDocument(Stack::OneStrip)
                           .TiffCompression(7)
                           .JpegTables({0xFF, 0xD8, 0xFF, 0xDB, 0x00, 0x03, 0x00, 0xFF, 0xD9})
                           .Overview(BytesOf("a picture"));
    EXPECT_EQ(RunCommand({BYTES, Write(Document().With(stack))}).Output, Shown("./bytes tables.zel"));
    EXPECT_THAT(RunCommand({BYTES, Write(Document().With(Stack(1)))}).Output,
                testing::HasSubstr("overview: 0 bytes\nkind: Default image\nno tables apart\n"));
}

} // namespace
