#include "SampleDocuments/Document.h"
#include "Tests/Support/Command.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

/// Hosts in C that link the plug-in and know nothing of it but its header.

namespace
{

using namespace SampleDocuments;
using TestSupport::CommandResult;
using TestSupport::RunCommand;

class HostInC : public testing::Test
{
protected:
    std::string Write(Document document) { return document.WriteTo(Folder.Name("slide.zel")).string(); }

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

TEST_F(HostInC, OfTheReadmeFailsOnAFileThatIsNotThere)
{
    EXPECT_NE(RunCommand({README_HOST, Folder.Name("none.zel")}).ExitCode, 0);
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

} // namespace
