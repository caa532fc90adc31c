#pragma once

#include "SampleDocuments/Document.h"
#include "Tests/Support/Command.h"
#include "Tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

/// The program as its users have it, on documents of known contents.
namespace ZelTest
{

using namespace SampleDocuments;
using TestSupport::CommandResult;
using TestSupport::RunCommand;

using Words = std::vector<std::string>;

inline std::string TextOf(const ByteString& bytes)
{
    return {bytes.begin(), bytes.end()};
}

inline size_t NumOfLines(const std::string& text)
{
    return static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
}

class ZelProgram : public testing::Test
{
protected:
    void Write(Document document) { document.WriteTo(SlideName()); }
    void Write(const Stack& stack) { Write(Document().With(stack)); }
    std::string SlideName() const { return Folder.Name("slide.zel"); }
    std::string Output(const std::string& name) const { return TestSupport::BytesOf(Folder.Name(name)); }

    CommandResult Run(Words words) const
    {
        words.insert(words.begin(), ZEL);
        return RunCommand(words);
    }
    /// `zel tile` of the slide, written to "tile" in the folder.
    CommandResult Tile(Words options) const
    {
        Words words = {"tile", SlideName(), "-o", Folder.Name("tile")};
        words.insert(words.end(), options.begin(), options.end());
        return Run(words);
    }
    void ExpectPrinted(const std::string& text) const
    {
        const CommandResult result = Run({"info", SlideName()});
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_NE(result.Output.find(text), std::string::npos) << text << "\nnot in\n" << result.Output;
    }
    /// One line of error, which holds `text`, and nothing written.
    void ExpectRefusal(const CommandResult& result, int exitCode, const std::string& text) const
    {
        EXPECT_EQ(result.ExitCode, exitCode);
        EXPECT_EQ(NumOfLines(result.Errors), 1u) << result.Errors;
        EXPECT_NE(result.Errors.find(text), std::string::npos) << text << "\nnot in\n" << result.Errors;
        EXPECT_FALSE(std::filesystem::exists(Folder.Name("tile.raw")));
        EXPECT_FALSE(std::filesystem::exists(Folder.Name("tile.jpg")));
    }

    TestSupport::TemporaryFolder Folder;
};

} // namespace ZelTest
