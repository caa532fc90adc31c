/// Files that appear under their name only when they are complete, and progress.

#include "HostTool/OutputFile.h"
#include "HostTool/Pixels/Progress.h"
#include "Tests/Support/TemporaryFolder.h"

#include <array>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

using namespace HostTool;

class OutputFile : public testing::Test
{
protected:
    bool IsEmpty() const { return std::filesystem::is_empty(Folder.Path()); }

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

using OutputFileDeathTest = OutputFile;

TEST_F(OutputFileDeathTest, LeavesNothingIfTheUserEndsTheProgram)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        EXPECT_EXIT(
            {
                COutputFile file(Folder.Name("picture"));
                file.Write(Bytes);
                std::raise(signal);
            },
            testing::KilledBySignal(signal), "");
    EXPECT_TRUE(IsEmpty());
}

TEST_F(OutputFileDeathTest, KeepsWhatWasFinishedWhenTheUserEndsTheProgram)
{
    EXPECT_EXIT(
        {
            COutputFile first(Folder.Name("first"));
            first.Finish();
            COutputFile second(Folder.Name("second"));
            std::raise(SIGINT);
        },
        testing::KilledBySignal(SIGINT), "");
    EXPECT_TRUE(std::filesystem::exists(Folder.Name("first")));
    EXPECT_FALSE(std::filesystem::exists(Folder.Name("second.part")));
}

TEST(Progress, TellsRateAndTimeLeft)
{
    EXPECT_EQ(ProgressLine(0, 200, "tiles", 0), "[                              ]   0%");
    EXPECT_EQ(ProgressLine(100, 200, "tiles", 5), "[===============               ]  50%  20 tiles/s  0:05 left");
    EXPECT_EQ(ProgressLine(1, 200, "tiles", 1), "[                              ]   0%  1 tiles/s  3:19 left");
    EXPECT_EQ(ProgressLine(200, 200, "tiles", 10), "[==============================] 100%  20 tiles/s  0:00 left");
}

} // namespace
