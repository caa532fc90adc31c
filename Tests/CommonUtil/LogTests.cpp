#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/Log.h"

#include <cerrno>
#include <cstdio>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace CommonUtil;
using TestSupport::LogOf;
using TestSupport::LogReaderOfTest;

namespace
{

const std::string LongText(20000, 'x');

TEST(Log, PrintsLineNumberFunctionAndMessage)
{
    EXPECT_EQ(LogOf([] { pw_flf(false, "Some.cpp", "ReadVolumeHeader", L"%d of %s", 98, 3, "four"); }),
              "L98:ReadVolumeHeader: 3 of four\n");
}

TEST(Log, PrintsNothingByDefault)
{
    testing::internal::CaptureStdout();
    ZEL_LOG("unheard");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(Log, PrintsNothingWhenTheHostLogsToStandardOutputItself)
{
    Log4CxxIsLoggingToStdout = true;
    EXPECT_EQ(LogOf([] { ZEL_LOG("unheard"); }), "");
    Log4CxxIsLoggingToStdout = false;
}

TEST(Log, TakesWideTextsForAWideFormat)
{
    const std::string text = LogOf([] { ZEL_WLOG(L"The name is '%s', %S", L"Zelle \u00e4\u4e2d", L"twice"); });
    EXPECT_NE(text.find("The name is 'Zelle \u00e4\u4e2d', twice\n"), std::string::npos) << text;
}

TEST(Log, TakesNarrowTextsInUtf8)
{
    const std::string text = LogOf([] { ZEL_LOG("%s", "Zelle \u00e4\u4e2d"); });
    EXPECT_NE(text.find(": Zelle \u00e4\u4e2d\n"), std::string::npos) << text;
}

TEST(Log, CutsANarrowMessageAt10000Characters)
{
    EXPECT_EQ(LogOf([] { pw_flf(false, "", "F", L"%s", 1, LongText.c_str()); }),
              "L1:F: " + LongText.substr(0, 9999) + "(OUTPUT WAS TRUNCATED)\n");
}

TEST(Log, CutsAWideMessageAt10000Characters)
{
    const std::wstring longText(20000, L'x');
    EXPECT_EQ(LogOf([&] { pw_flf(true, "", "F", L"%s", 1, longText.c_str()); }),
              "L1:F: " + LongText.substr(0, 9999) + "(OUTPUT WAS TRUNCATED)\n");
}

TEST(Log, PrintsAMessageThatJustFitsWithoutTheMark)
{
    const std::string fits = LongText.substr(0, 9999);
    EXPECT_EQ(LogOf([&] { pw_flf(false, "", "F", L"%s", 1, fits.c_str()); }), "L1:F: " + fits + "\n");
}

TEST(Log, CutsAMessageThatIsTooLongByOne)
{
    const std::string tooLong = LongText.substr(0, 10000);
    EXPECT_EQ(LogOf([&] { pw_flf(false, "", "F", L"%s", 1, tooLong.c_str()); }),
              "L1:F: " + tooLong.substr(1) + "(OUTPUT WAS TRUNCATED)\n");
}

TEST(Log, SurvivesAFunctionNameThatIsTooLong)
{
    EXPECT_NE(LogOf([] { pw_flf(false, "", LongText.c_str(), L"end", 1); }).find("end\n"), std::string::npos);
}

TEST(Log, LeavesErrnoAsItFoundIt)
{
    const auto errnoAfter = [](auto&& log)
    {
        errno = ENODATA;
        log();
        return errno;
    };
    const TestSupport::PrintedLog printed;
    EXPECT_EQ(errnoAfter([] { ZEL_LOG("%d", 1); }), ENODATA);
    EXPECT_EQ(errnoAfter([] { ZEL_LOG("%s", LongText.c_str()); }), ENODATA);
    EXPECT_EQ(errnoAfter([] { ZEL_WLOG(L"%s", std::wstring(20000, L'x').c_str()); }), ENODATA);
    EXPECT_EQ(errnoAfter([] { returnErrV2(false, "a/File.cpp", 7); }), ENODATA);
}

TEST(Log, LeavesErrnoAsItFoundItWhenItCannotPrint)
{
    const auto logOntoAFullDisk = []
    {
        if (!std::freopen("/dev/full", "w", stdout))
            return 1;
        EnablePrintfOntoScreen = true;
        errno = ENODATA;
        ZEL_LOG("unheard");
        return errno;
    };
    EXPECT_EQ(TestSupport::RunInChild(logOntoAFullDisk), TestSupport::ExitedWith(ENODATA));
}

TEST(Log, GivesTheMessageAndItsPlaceToTheHook)
{
    const LogReaderOfTest reader;
    pw_flf(false, "Some.cpp", "F", L"%d of %s", 98, 3, "four");
    ASSERT_EQ(reader.Lines().size(), 1u);
    const LogReaderOfTest::Line line = reader.Lines().front();
    EXPECT_EQ(line.Text, L"3 of four");
    EXPECT_EQ(line.File, "Some.cpp");
    EXPECT_EQ(line.Number, 98);
    EXPECT_FALSE(line.IsError);
}

TEST(Log, WorksItsArgumentsOutWhetherItIsReadOrNot)
{
    int numOfCalls = 0;
    const auto argument = [&] { return ++numOfCalls; };
    ZEL_LOG("%d", argument());
    EXPECT_EQ(numOfCalls, 1);
    const LogReaderOfTest reader;
    ZEL_LOG("%d", argument());
    EXPECT_EQ(numOfCalls, 2);
}

TEST(Log, KeepsTheLinesOfSeveralThreadsApart)
{
    const LogReaderOfTest reader;
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back(
                []
                {
                    for (int line = 0; line < 100; ++line)
                        ZEL_LOG("%s", "one whole line");
                });
    }
    ASSERT_EQ(reader.Lines().size(), 400u);
    for (const LogReaderOfTest::Line& line : reader.Lines())
        EXPECT_EQ(line.Text, L"one whole line");
}

TEST(ReturnErrV2, LogsThePlaceAndGivesTheValueBack)
{
    bool value = true;
    const std::string text = LogOf([&] { value = returnErrV2(false, "a/b/File.cpp", 7); });
    EXPECT_NE(text.find("Returning error from File.cpp, line 7...\n"), std::string::npos) << text;
    EXPECT_FALSE(value);
    EXPECT_TRUE(returnErrV2(true, "a/b/File.cpp", 7));
}

} // namespace
