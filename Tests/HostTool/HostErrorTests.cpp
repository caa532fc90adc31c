#include "HostTool/HostError.h"

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
        Meaning{AC_RESULT_FILE_NOT_FOUND, ExitCode::WrongUsage, "no such file, or no right to read it; check the name"},
        Meaning{AC_RESULT_INVALID_PARAM, ExitCode::WrongUsage, "give the file that ends in .zel"},
        Meaning{AC_RESULT_MISSING_FILE, ExitCode::MissingFile, "put the folder /data/_slide_ back beside the document"},
        Meaning{AC_RESULT_IN_USE, ExitCode::BadFile, "is being written by another program, or may not be read"},
        Meaning{AC_RESULT_DATA_NOT_SUPPORTED, ExitCode::BadFile, "data of a kind that the plug-in does not read"},
        Meaning{AC_RESULT_FAILURE, ExitCode::BadFile, "or this machine could not read it (disk, memory, open files)"},
        Meaning{AC_RESULT_FILE_CORRUPT, ExitCode::BadFile, "damaged, or not a document of this format"}));

} // namespace
