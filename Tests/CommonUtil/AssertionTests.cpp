#include "CommonUtil/Assertion.h"

#include "CommonUtil/ErrnoKeeper.h"
#include "Tests/Support/Assertion.h"
#include "Tests/Support/Log.h"

#include <cerrno>
#include <csignal>
#include <thread>

using namespace CommonUtil;
using TestSupport::AssertionOf;
using TestSupport::LogOf;

namespace
{

TEST(Assertion, NamesFileWithoutPathAndLine)
{
    const int line = __LINE__ + 1;
    const std::string text = AssertionOf([] { ZEL_ASSERT(1 + 1 == 3); });
    EXPECT_EQ(text, "Assertion failed: file AssertionTests.cpp, line " + std::to_string(line));
}

TEST(Assertion, PassesWhenItHolds)
{
    EXPECT_EQ(AssertionOf([] { ZEL_ASSERT(1 + 1 == 2); }), "");
}

TEST(Assertion, CutsAPathOfEitherKindOfSlash)
{
    EXPECT_EQ(AssertionOf([] { FailAssertion("C:\\a\\b.cpp", 5); }), "Assertion failed: file b.cpp, line 5");
}

TEST(BreakOrThrow, LogsKeepsAndThrowsTheText)
{
    std::string thrown;
    const std::string log = LogOf([&] { thrown = AssertionOf([] { BreakOrThrow("100% broken %s"); }); });
    EXPECT_EQ(thrown, "100% broken %s");
    EXPECT_STREQ(ErrMsg.c_str(), "100% broken %s");
    EXPECT_NE(log.find(":BreakOrThrow: 100% broken %s\n"), std::string::npos) << log;
}

TEST(BreakOrThrow, LeavesErrnoAsTheReasonOfTheFailure)
{
    errno = ENOEXEC;
    AssertionOf([] { FailAssertion("f.cpp", 1); });
    EXPECT_EQ(errno, ENOEXEC);
}

TEST(BreakOrThrow, KeepsATextPerThread)
{
    AssertionOf([] { BreakOrThrow("of this thread"); });
    std::thread([] { AssertionOf([] { BreakOrThrow("of another thread"); }); }).join();
    EXPECT_STREQ(ErrMsg.c_str(), "of this thread");
}

TEST(BreakOrThrow, ThrowsATextThatOutlivesTheThrow)
{
    try
    {
        BreakOrThrow(std::string(1000, 'x'));
    }
    catch (const char* text)
    {
        EXPECT_EQ(text, ErrMsg.c_str());
    }
}

TEST(BreakOrThrow, CutsATextOfMoreThanAThousandCharacters)
{
    EXPECT_EQ(AssertionOf([] { BreakOrThrow(std::string(5000, 'x')); }), std::string(1023, 'x'));
}

TEST(ThrowWithErrno, SetsTheReasonAndThrowsTheText)
{
    errno = 0;
    EXPECT_EQ(AssertionOf([] { ThrowWithErrno(EREMOTE, "missing!"); }), "missing!");
    EXPECT_EQ(errno, EREMOTE);
}

TEST(OldAbortDeathTest, LogsAndEndsTheProcess)
{
    EXPECT_EXIT(
        {
            TestSupport::PrintLogOntoStandardError();
            oldAbortCommonUtil();
        },
        testing::KilledBySignal(SIGABRT), "oldAbortCommonUtil: abort\\(\\) called\\.");
}

TEST(ErrnoKeeper, PutsErrnoBackAtTheEndOfItsScope)
{
    errno = EINVAL;
    {
        const CErrnoKeeper keeper;
        errno = ENOENT;
    }
    EXPECT_EQ(errno, EINVAL);
}

} // namespace
