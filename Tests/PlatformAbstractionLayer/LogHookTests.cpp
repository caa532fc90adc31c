#include "PlatformAbstractionLayer/LogHook.h"

#include "Tests/Support/Log.h"

#include <cerrno>
#include <gtest/gtest.h>

using TestSupport::LogReaderOfTest;

extern "C" int TooSmallInC(void);

namespace
{

TEST(LogHook, DoesNothingByDefault)
{
    EXPECT_FALSE(HasLogReader());
    PAL_PutLogError(PAL_LOGERROR_FATAL, L"unheard", "file.cpp", 1);
    PAL_PutLogInfo(L"unheard", "file.cpp", 1);
}

TEST(LogHook, PrintsNothingEvenWhenTheLogIsPrinted)
{
    EXPECT_EQ(TestSupport::LogOf([] { PAL_PutLogError(PAL_LOGERROR_FATAL, L"unheard", "file.cpp", 1); }), "");
}

TEST(LogHook, GivesErrorsAndInformationToItsReader)
{
    const LogReaderOfTest reader;
    PAL_PutLogError(PAL_LOGERROR_ERROR, L"bad", "a.cpp", 7);
    PAL_PutLogInfo(L"good", "b.cpp", 8);
    ASSERT_EQ(reader.Lines().size(), 2u);
    const LogReaderOfTest::Line error = reader.Lines()[0];
    EXPECT_TRUE(error.IsError);
    EXPECT_EQ(error.Type, PAL_LOGERROR_ERROR);
    EXPECT_EQ(error.Text, L"bad");
    EXPECT_EQ(error.File, "a.cpp");
    EXPECT_EQ(error.Number, 7);
    EXPECT_FALSE(reader.Lines()[1].IsError);
    EXPECT_EQ(reader.Errors(), std::vector<std::wstring>{L"bad"});
}

TEST(LogHook, TakesNullForAnEmptyText)
{
    const LogReaderOfTest reader;
    PAL_PutLogError(PAL_LOGERROR_ERROR, nullptr, nullptr, 0);
    PAL_PutLogInfo(nullptr, nullptr, 0);
    ASSERT_EQ(reader.Lines().size(), 2u);
    EXPECT_EQ(reader.Lines()[0].Text, L"");
}

TEST(LogHook, LeavesErrnoAloneWhateverItsReaderDoes)
{
    SetLogReader([](const CLogLine&) { errno = EINVAL; });
    errno = ENODATA;
    PAL_PutLogInfo(L"text", "file.cpp", 1);
    EXPECT_EQ(errno, ENODATA);
    SetLogReader(nullptr);
}

TEST(LogHook, NamesTheKindsOfErrors)
{
    EXPECT_STREQ(PalLogErrorTypeToString(PAL_LOGERROR_WARNING), "PAL_LOGERROR_WARNING");
    EXPECT_STREQ(PalLogErrorTypeToString(PAL_LOGERROR_ERROR), "PAL_LOGERROR_ERROR");
    EXPECT_STREQ(PalLogErrorTypeToString(PAL_LOGERROR_FATAL), "PAL_LOGERROR_FATAL");
    EXPECT_EQ(PalLogErrorTypeToString(static_cast<tagPAL_LogError>(3)), nullptr);
}

TEST(PublicHeader, ServesAProgramInC)
{
    const LogReaderOfTest reader;
    EXPECT_EQ(TooSmallInC(), 5);
    EXPECT_EQ(reader.Errors(), std::vector<std::wstring>{L"from C"});
}

} // namespace
