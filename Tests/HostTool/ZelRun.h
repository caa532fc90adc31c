#pragma once

#include "SampleDocuments/Slide.h"
#include "Tests/Support/Command.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

/// How a slide is stored: compressed in this way, and what `more` says.
inline SampleDocuments::CSlideOptions Slide(uint32_t compression,
                                            const std::function<void(SampleDocuments::CSlideOptions&)>& more = {})
{
    SampleDocuments::CSlideOptions options;
    options.Compression = compression;
    if (more)
        more(options);
    return options;
}

/// Runs `zel` on a document that a test describes.
class ZelRun : public testing::Test
{
protected:
    using Words = std::vector<std::string>;

    void Write(SampleDocuments::Document document) { document.WriteTo(SlideName()); }
    void Write(const SampleDocuments::Stack& stack) { Write(SampleDocuments::Document().With(stack)); }
    std::string SlideName() const { return Folder.Name("slide.zel"); }
    std::string Name(const std::string& name) const { return Folder.Name(name); }
    std::string BytesOf(const std::string& name) const { return TestSupport::BytesOf(Folder.Name(name)); }

    /// `zel COMMAND slide.zel -o OUTPUT OPTION...`, which has to succeed.
    TestSupport::CommandResult Run(const std::string& command, const std::string& output, const Words& options = {})
    {
        const auto result = TryToRun(command, output, options);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return result;
    }
    TestSupport::CommandResult TryToRun(const std::string& command, const std::string& output,
                                        const Words& options = {})
    {
        Words words = {ZEL, command, SlideName(), "-o", Folder.Name(output)};
        words.insert(words.end(), options.begin(), options.end());
        return TestSupport::RunCommand(words);
    }
    /// One line of error, which holds `text`, and no output.
    void ExpectRefusal(const std::string& command, const std::string& output, const Words& options,
                       const std::string& text)
    {
        const auto result = TryToRun(command, output, options);
        EXPECT_EQ(result.ExitCode, 2);
        EXPECT_NE(result.Errors.find(text), std::string::npos) << result.Errors;
        EXPECT_FALSE(std::filesystem::exists(Folder.Name(output)));
    }
    /// What is in a picture file that was written.
    SampleDocuments::CPicture Picture(const std::string& name) const
    {
        return SampleDocuments::LoadPicture(Folder.Name(name));
    }

    TestSupport::TemporaryFolder Folder;
};
