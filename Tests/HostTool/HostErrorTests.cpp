#include "HostTool/GuardedRun.h"
#include "HostTool/HostError.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace HostTool;
using testing::HasSubstr;

/// A result of the plug-in, what the user reads, and the exit code.
struct Meaning
{
    AC_Result Result;
    ExitCode Code;
    std::string Text;
};

class FailureOfACall : public testing::TestWithParam<Meaning>
{
};

TEST_P(FailureOfACall, SaysWhatWhereAndWhatToDo)
{
    const CHostError error = FailedCall("/data/slide.zel", "cannot open", GetParam().Result);
    EXPECT_EQ(error.Code(), GetParam().Code);
    EXPECT_THAT(error.what(), HasSubstr("/data/slide.zel: cannot open: "));
    EXPECT_THAT(error.what(), HasSubstr(GetParam().Text));
    EXPECT_THAT(error.what(), HasSubstr(" (result " + std::to_string(static_cast<int>(GetParam().Result)) + ")"));
}

INSTANTIATE_TEST_SUITE_P(
    Results, FailureOfACall,
    testing::Values(
        Meaning{AC_RESULT_FILE_NOT_FOUND, ExitCode::WrongUsage, "no such file; check the name"},
        Meaning{AC_RESULT_INVALID_PARAM, ExitCode::WrongUsage, "give the file that ends in .zel"},
        Meaning{AC_RESULT_MISSING_FILE, ExitCode::MissingFile, "put the folder /data/_slide_ back beside the document"},
        Meaning{AC_RESULT_IN_USE, ExitCode::Machine, "is being written by another program, or may not be read"},
        Meaning{AC_RESULT_DATA_NOT_SUPPORTED, ExitCode::BadFile, "data of a kind that the plug-in does not read"},
        Meaning{AC_RESULT_FAILURE, ExitCode::BadFile, "the file is damaged, or not a document of this format"},
        Meaning{AC_RESULT_FILE_CORRUPT, ExitCode::BadFile, "damaged, or not a document of this format"}));

TEST(FailureOfTheMachine, IsNotBlamedOnTheFile)
{
    for (const int reason : {ENOMEM, EIO, EMFILE})
    {
        const CHostError error = FailedCall("/data/slide.zel", "cannot open", AC_RESULT_FAILURE, reason);
        EXPECT_EQ(error.Code(), ExitCode::Machine);
        EXPECT_THAT(error.what(), HasSubstr(std::strerror(reason)));
    }
}

TEST(FailureOfTheMachine, IsWhatASignalOfTheSystemTells)
{
    EXPECT_EQ(EarlyEnd("slide.zel", {0, SIGKILL}).Code(), ExitCode::Machine);
    EXPECT_THAT(EarlyEnd("slide.zel", {0, SIGKILL}).what(), HasSubstr("was killed, perhaps since memory ran out"));
    EXPECT_EQ(EarlyEnd("slide.zel", {0, SIGXFSZ}).Code(), ExitCode::Machine);
    EXPECT_EQ(EarlyEnd("slide.zel", {0, SIGXCPU}).Code(), ExitCode::Machine);
    EXPECT_EQ(EarlyEnd("slide.zel", {0, SIGABRT}).Code(), ExitCode::BadFile);
}

TEST(CodeOfSeveralFiles, IsTheWorst)
{
    const std::vector<ExitCode> fromWorst = {ExitCode::Machine,  ExitCode::BadFile,    ExitCode::MissingFile,
                                             ExitCode::NotEqual, ExitCode::WrongUsage, ExitCode::Done};
    for (size_t worse = 0; worse < fromWorst.size(); ++worse)
        for (size_t better = worse; better < fromWorst.size(); ++better)
        {
            EXPECT_EQ(WorseOf(fromWorst[worse], fromWorst[better]), fromWorst[worse]);
            EXPECT_EQ(WorseOf(fromWorst[better], fromWorst[worse]), fromWorst[worse]);
        }
}

} // namespace
