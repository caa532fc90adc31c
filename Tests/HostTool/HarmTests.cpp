/// What `zel` must never touch: the files that it reads, whatever they are called, and what is no file.

#include "SampleDocuments/Slide.h"
#include "Tests/HostTool/ZelProgram.h"

#include <gmock/gmock.h>
#include <map>
#include <sys/stat.h>

namespace
{

using namespace ZelTest;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

/// A slide with a JPEG store, and the bytes of all its files.
class ZelAndItsInput : public ZelProgram
{
protected:
    ZelAndItsInput()
    {
        Write(SlideFromPicture(DrawPicture(300, 200), CSlideOptions()));
        Before = FilesWithBytes();
    }
    /// Runs it, which has to be refused as wrong usage, and leaves the folder as it was.
    void ExpectHarmless(const Words& words, const std::string& text) const
    {
        const CommandResult result = Run(words);
        EXPECT_EQ(result.ExitCode, 2) << words.front() << ' ' << words.back();
        EXPECT_THAT(result.Errors, HasSubstr(text));
        EXPECT_EQ(FilesWithBytes(), Before) << words.front() << ' ' << words.back();
    }
    /// Runs a line of the shell in the folder, where "zel" is the program.
    CommandResult Shell(const std::string& line) const
    {
        return RunCommand({"bash", "-c", "zel() { '" ZEL "' \"$@\"; }; cd '" + Folder.Path().string() + "'; " + line});
    }

    std::map<std::string, std::string> FilesWithBytes() const
    {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(Folder.Path()))
            files[entry.path().string()] =
                entry.is_regular_file() ? TestSupport::BytesOf(entry.path().string()) : std::string("no file");
        return files;
    }

    const std::string Store = Folder.Name("_slide_/stack1/frame_t.kor");
    std::map<std::string, std::string> Before;
};

constexpr auto IsRead = "is a file that is being read";

TEST_F(ZelAndItsInput, IsNeverAnOutput)
{
    for (const std::string& output : {SlideName(), Store})
    {
        ExpectHarmless({"export", SlideName(), "-o", output}, IsRead);
        ExpectHarmless({"rois", SlideName(), "-o", output}, IsRead);
        ExpectHarmless({"verify", SlideName(), "--hashes", output}, IsRead);
        ExpectHarmless({"tile", SlideName(), "-x", "0", "-y", "0", "-o", output}, "");
        ExpectHarmless({"region", SlideName(), "-o", output}, "");
        ExpectHarmless({"thumbnail", SlideName(), "-o", output}, "");
    }
}

TEST_F(ZelAndItsInput, IsNeverAnOutputUnderAnotherName)
{
    fs::create_hard_link(SlideName(), Folder.Name("second.tif"));
    fs::create_symlink(Store, Folder.Name("link.tif"));
    fs::create_symlink(".", Folder.Name("here"));
    Before = FilesWithBytes();
    for (const char* output : {"second.tif", "link.tif", "here/slide.zel", "here/_slide_/stack1/frame_t.kor"})
        ExpectHarmless({"export", SlideName(), "-o", Folder.Name(output)}, IsRead);
}

TEST_F(ZelAndItsInput, GetsNoNewFilesBesideItsStores)
{
    // A second store in the folder of a stack makes readers refuse the document.
    constexpr auto isOfDocument = "lies in the folder of a document that is being read";
    ExpectHarmless({"export", SlideName(), "-o", Folder.Name("_slide_/stack1/frame_t.tif")}, isOfDocument);
    ExpectHarmless({"rois", SlideName(), "-o", Folder.Name("_slide_/rois.json")}, isOfDocument);
    ExpectHarmless({"tour", SlideName(), Folder.Name("_slide_/new/pictures")}, isOfDocument);
}

TEST_F(ZelAndItsInput, IsKnownThroughALinkToTheDocument)
{
    fs::create_directory(Folder.Name("links"));
    fs::create_symlink(SlideName(), Folder.Name("links/slide.zel"));
    fs::create_directory_symlink(Folder.Name("_slide_"), Folder.Name("links/_slide_"));
    Before = FilesWithBytes();
    for (const std::string& output : {SlideName(), Store})
        ExpectHarmless({"export", Folder.Name("links/slide.zel"), "-o", output}, IsRead);
}

TEST_F(ZelAndItsInput, IsNotAppendedTo)
{
    EXPECT_EQ(Shell("zel tiles slide.zel >> slide.zel").ExitCode, 2);
    EXPECT_EQ(FilesWithBytes(), Before);
}

TEST_F(ZelAndItsInput, MayBeHashesThatAreComparedWith)
{
    Run({"verify", SlideName(), "--hashes", Folder.Name("hashes.json")});
    Before = FilesWithBytes();
    ExpectHarmless(
        {"verify", SlideName(), "--against", Folder.Name("hashes.json"), "--hashes", Folder.Name("hashes.json")},
        IsRead);
}

TEST_F(ZelAndItsInput, LeavesADeviceADevice)
{
    EXPECT_EQ(Run({"export", SlideName(), "-o", "/dev/null"}).ExitCode, 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    const CommandResult proof = Run({"export", SlideName(), "--prove", "-o", "/dev/null"});
    EXPECT_EQ(proof.ExitCode, 2);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(ZelAndItsInput, GoesThroughAPipe)
{
    ASSERT_EQ(mkfifo(Folder.Name("pipe").c_str(), 0600), 0);
    const CommandResult result = Shell("cat pipe & zel rois slide.zel -o pipe && wait");
    EXPECT_THAT(result.Output, HasSubstr("FeatureCollection"));
    EXPECT_TRUE(fs::is_fifo(Folder.Name("pipe")));
}

/// A command, and how its output begins.
struct Streamed
{
    const char* Command;
    std::string Start;
};

class ZelOnStandardOutput : public ZelAndItsInput, public testing::WithParamInterface<Streamed>
{
};

TEST_P(ZelOnStandardOutput, WritesNothingButTheFile)
{
    for (const char* output : {"-", "/dev/stdout"})
    {
        const CommandResult result = Shell(GetParam().Command + std::string(" ") + output);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_TRUE(result.Output.starts_with(GetParam().Start)) << result.Output.substr(0, 100);
        EXPECT_THAT(result.Output, Not(HasSubstr(std::string(output) + ":")));
        EXPECT_THAT(result.Errors, HasSubstr(output));
    }
    EXPECT_EQ(FilesWithBytes(), Before);
}

INSTANTIATE_TEST_SUITE_P(Commands, ZelOnStandardOutput,
                         testing::Values(Streamed{"zel tile slide.zel -x 0 -y 0 -o", "\xFF\xD8"},
                                         Streamed{"zel thumbnail slide.zel -o", "BM"},
                                         Streamed{"zel rois slide.zel -o", "{\n  \"type\""},
                                         Streamed{"zel verify slide.zel --hashes", "{\"format\":"}),
                         [](const auto& test)
                         {
                             const std::string words = test.param.Command + 4;
                             return words.substr(0, words.find(' '));
                         });

TEST_F(ZelAndItsInput, SaysWhyATiffFileIsNotStreamed)
{
    ExpectHarmless({"export", SlideName(), "-o", "-"}, "cannot be written as a stream");
}

TEST_F(ZelAndItsInput, IsNotKeptWaitingForARefusal)
{
    Folder.Write("there.json", "old");
    EXPECT_EQ(Run({"rois", SlideName(), "--no-clobber", "-o", Folder.Name("there.json")}).ExitCode, 2);
    const CommandResult skipped = Run({"rois", SlideName(), "--skip-existing", "-o", Folder.Name("there.json")});
    EXPECT_EQ(skipped.ExitCode, 0);
    EXPECT_THAT(skipped.Output, HasSubstr("is there already, and is left as it is"));
    EXPECT_EQ(Output("there.json"), "old");
}

TEST_F(ZelAndItsInput, TellsOfStandardOutputThatFails)
{
    for (const char* command : {"info", "tiles", "tree", "files", "verify"})
        for (const char* output : {"> /dev/full", ">&-"})
        {
            const CommandResult result = Shell(std::string("zel ") + command + " slide.zel " + output);
            EXPECT_EQ(result.ExitCode, 4) << command << output;
            EXPECT_THAT(result.Errors, HasSubstr("standard output: cannot be written"));
            EXPECT_EQ(NumOfLines(result.Errors), 1u);
        }
    EXPECT_EQ(Shell("zel --help > /dev/full").ExitCode, 4);
}

TEST_F(ZelAndItsInput, BlamesTheMachineBeforeTheFile)
{
    std::string bytes = TestSupport::BytesOf(Store);
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 8), bytes.size() / 8 * 6, '\0');
    Folder.Write("_slide_/stack1/frame_t.kor", bytes);
    EXPECT_EQ(Shell("zel verify slide.zel").ExitCode, 1);
    EXPECT_EQ(Shell("zel verify slide.zel > /dev/full").ExitCode, 4);
}

TEST_F(ZelAndItsInput, KeepsAClosedStandardOutputOutOfTheFileThatItWrites)
{
    EXPECT_NE(Shell("zel rois slide.zel -o rois.json >&-").ExitCode, 0);
    EXPECT_THAT(Output("rois.json"), Not(HasSubstr("regions\n")));
}

TEST_F(ZelAndItsInput, TellsOfTheLimitForFileSizes)
{
    const CommandResult result = Shell("ulimit -f 1; zel export slide.zel -o slide.tif");
    EXPECT_EQ(result.ExitCode, 4);
    EXPECT_THAT(result.Errors, HasSubstr("slide.tif: cannot be written: File too large"));
    EXPECT_EQ(FilesWithBytes(), Before);
}

} // namespace
