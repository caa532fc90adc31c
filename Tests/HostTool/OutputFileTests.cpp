/// Files that appear under their name only when they are complete, and progress.

#include "HostTool/GuardedRun.h"
#include "HostTool/OutputFile.h"
#include "HostTool/OutputRules.h"
#include "HostTool/Pixels/Progress.h"
#include "Tests/Support/TemporaryFolder.h"

#include <array>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

using namespace HostTool;

class OutputFile : public testing::Test
{
protected:
    bool IsEmpty() const { return std::filesystem::is_empty(Folder.Path()); }
    /// Writes the bytes under a name.
    void Write(const std::string& name) const
    {
        COutputFile file(Folder.Name(name));
        file.Write(Bytes);
        file.Finish();
    }
    mode_t RightsOf(const std::string& name) const
    {
        struct stat facts = {};
        stat(Folder.Name(name).c_str(), &facts);
        return facts.st_mode & 0777;
    }

    static constexpr std::array<uint8_t, 3> Bytes = {1, 2, 3};
    TestSupport::TemporaryFolder Folder;
};

TEST_F(OutputFile, AppearsWhenItIsComplete)
{
    COutputFile file(Folder.Name("picture"));
    file.Write(Bytes);
    EXPECT_FALSE(std::filesystem::exists(Folder.Name("picture")));
    file.Finish();
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("picture")), "\1\2\3");
}

TEST_F(OutputFile, LeavesNothingIfItIsNotFinished)
{
    {
        COutputFile file(Folder.Name("picture"));
        file.Write(Bytes);
    }
    EXPECT_TRUE(IsEmpty());
}

TEST_F(OutputFile, IsWrittenUnderANameThatNobodyElseHas)
{
    const COutputFile first(Folder.Name("picture"));
    const COutputFile second(Folder.Name("picture"));
    EXPECT_NE(first.UnfinishedPath(), second.UnfinishedPath());
}

TEST_F(OutputFile, ReplacesTheFileThatALinkLeadsTo)
{
    Folder.Write("there/picture", "old");
    std::filesystem::create_symlink("there/picture", Folder.Name("link"));
    std::filesystem::create_symlink("there/new", Folder.Name("dangling"));
    Write("link");
    Write("dangling");
    EXPECT_TRUE(std::filesystem::is_symlink(Folder.Name("link")));
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("there/picture")), "\1\2\3");
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("there/new")), "\1\2\3");
}

TEST_F(OutputFile, KeepsTheRightsOfTheFileThatItReplaces)
{
    chmod(Folder.Write("picture", "old").c_str(), 0640);
    Write("picture");
    EXPECT_EQ(RightsOf("picture"), 0640u);
}

TEST_F(OutputFile, TakesANameThatIsAsLongAsNamesCanBe)
{
    const std::string name(255, 'x');
    Write(name);
    EXPECT_TRUE(std::filesystem::exists(Folder.Name(name)));
}

TEST_F(OutputFile, IsNoFolderAndNoCircleOfLinks)
{
    std::filesystem::create_symlink("second", Folder.Name("first"));
    std::filesystem::create_symlink("first", Folder.Name("second"));
    EXPECT_THROW(Write("first"), CHostError);
    EXPECT_THROW(Write("."), CHostError);
}

TEST_F(OutputFile, BlamesTheMachineOrTheNameThatWasGiven)
{
    const auto codeOf = [](const std::string& path)
    {
        try
        {
            COutputFile file(path);
            file.Write(Bytes);
            file.Finish();
        }
        catch (const CHostError& error)
        {
            return error.Code();
        }
        return ExitCode::Done;
    };
    EXPECT_EQ(codeOf("/dev/full"), ExitCode::Machine);
    EXPECT_EQ(codeOf(Folder.Name("none/picture")), ExitCode::WrongUsage);
    EXPECT_EQ(codeOf(Folder.Name(std::string(300, 'x'))), ExitCode::WrongUsage);
}

TEST_F(OutputFile, GoesToADeviceAsItIs)
{
    COutputFile file("/dev/null", WritingOrder::BeginningLast);
    file.Write(Bytes);
    EXPECT_TRUE(file.UnfinishedPath().empty());
    file.Finish();
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(OutputFile, RefusesAPipeForWhatIsNotWrittenFrontToEnd)
{
    ASSERT_EQ(mkfifo(Folder.Name("pipe").c_str(), 0600), 0);
    EXPECT_THROW(COutputFile(Folder.Name("pipe"), WritingOrder::BeginningLast), CHostError);
    EXPECT_TRUE(IsStream(Folder.Name("pipe")));
    EXPECT_FALSE(IsStream(Folder.Name("none")));
}

/// A file that is there already, with the rule for it.
class OutputThatIsThere : public OutputFile
{
protected:
    OutputThatIsThere() { Folder.Write("picture", "old"); }
    ~OutputThatIsThere() override { OutputRules::Set(IfExists::Replace); }
};

TEST_F(OutputThatIsThere, CanBeRefused)
{
    OutputRules::Set(IfExists::Refuse);
    EXPECT_THROW(Write("picture"), CHostError);
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("picture")), "old");
}

TEST_F(OutputThatIsThere, CanBeLeftAsItIs)
{
    OutputRules::Set(IfExists::Skip);
    EXPECT_THROW(Write("picture"), COutputSkipped);
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("picture")), "old");
}

TEST_F(OutputThatIsThere, IsKeptIfItCameWhileTheOutputWasWritten)
{
    OutputRules::Set(IfExists::Refuse);
    COutputFile file(Folder.Name("other"));
    Folder.Write("other", "of somebody else");
    EXPECT_THROW(file.Finish(), CHostError);
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("other")), "of somebody else");
}

using OutputFileDeathTest = OutputFile;

TEST_F(OutputFileDeathTest, LeavesNothingHoweverTheProgramEnds)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGALRM, SIGPIPE})
        EXPECT_EXIT(RunInChild(
                        [&]
                        {
                            COutputFile file(Folder.Name("picture"));
                            file.Write(Bytes);
                            std::raise(signal);
                            return 0;
                        }),
                    testing::KilledBySignal(signal), "");
    EXPECT_TRUE(IsEmpty());
}

TEST_F(OutputFile, LeavesNothingIfItsProcessIsKilledOrEndsByItself)
{
    for (const int signal : {SIGKILL, SIGSEGV, SIGABRT, SIGXCPU})
    {
        const CChildEnd end = RunInChild(
            [&]
            {
                COutputFile file(Folder.Name("picture"));
                std::raise(signal);
                return 0;
            });
        EXPECT_EQ(end.Signal, signal);
    }
    const CChildEnd end = RunInChild(
        [&]
        {
            COutputFile file(Folder.Name("picture"));
            std::exit(3);
            return 0;
        });
    EXPECT_EQ(end.ExitCode, 3);
    EXPECT_TRUE(IsEmpty());
}

TEST_F(OutputFile, IsKeptIfItWasFinishedWhenItsProcessIsKilled)
{
    RunInChild(
        [&]
        {
            COutputFile first(Folder.Name("first"));
            first.Finish();
            COutputFile second(Folder.Name("second"));
            std::raise(SIGKILL);
            return 0;
        });
    EXPECT_TRUE(std::filesystem::exists(Folder.Name("first")));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Folder.Path()), {}), 1);
}

TEST(Progress, TellsRateAndTimeLeft)
{
    EXPECT_EQ(ProgressLine(0, 200, "tiles", 0), "[                              ]   0%");
    EXPECT_EQ(ProgressLine(100, 200, "tiles", 5), "[===============               ]  50%  20 tiles/s  0:05 left");
    EXPECT_EQ(ProgressLine(1, 200, "tiles", 1), "[                              ]   0%  1 tiles/s  3:19 left");
    EXPECT_EQ(ProgressLine(200, 200, "tiles", 10), "[==============================] 100%  20 tiles/s  0:00 left");
}

} // namespace
