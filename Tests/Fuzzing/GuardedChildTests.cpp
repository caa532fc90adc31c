#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "Fuzzing/Support/FuzzTarget.h"
#include "Fuzzing/Support/GuardedChild.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <stdexcept>

/// A child is told apart by how it ended: only an end that the plug-in asked for, with its line in the log, is good.

using namespace Fuzzing;

namespace
{

HowItEnded::E EndOf(const std::function<void()>& body, const CChildLimits& limits = {})
{
    return RunGuarded(body, limits).How;
}

TEST(GuardedChild, ThatComesBackIsGood)
{
    const CEndOfChild end = RunGuarded([] {});
    EXPECT_EQ(end.How, HowItEnded::WithAnswers);
    EXPECT_TRUE(end.IsGood());
}

TEST(GuardedChild, ThatThePlugInEndedByDesignIsGood)
{
    const CEndOfChild end = RunGuarded([] { CommonUtil::oldAbortCommonUtil(); });
    EXPECT_EQ(end.How, HowItEnded::ByDesign);
    EXPECT_TRUE(end.IsGood());
}

TEST(GuardedChild, ThatAbortsWithoutTheLineIsAFinding)
{
    const CEndOfChild end = RunGuarded([] { std::abort(); });
    EXPECT_EQ(end.How, HowItEnded::ByASignal);
    EXPECT_EQ(end.Signal, SIGABRT);
    EXPECT_FALSE(end.IsGood());
}

TEST(GuardedChild, ThatAbortsBehindATextOfTheSameWordsIsAFinding)
{
    const auto abortBehindAName = []
    {
        ZEL_LOG("The name of the image is '%s'", "abort() called.");
        std::abort();
    };
    EXPECT_EQ(EndOf(abortBehindAName), HowItEnded::ByASignal);
}

TEST(GuardedChild, ThatCrashesIsAFinding)
{
    EXPECT_FALSE(RunGuarded([] { std::raise(SIGFPE); }).IsGood());
}

TEST(GuardedChild, ThatThrowsIsAFinding)
{
    EXPECT_EQ(EndOf([] { throw std::runtime_error("never mind"); }), HowItEnded::WithAnException);
}

TEST(GuardedChild, OutOfWhoseExportedFunctionsAnExceptionComesIsAFindingInEachTarget)
{
    const auto throwThere = [](CInput) { RunExported([] { throw "a failed assertion"; }); };
    const CEndOfChild end = RunGuarded([&] { RunInput(throwThere, nullptr, 0); });
    EXPECT_EQ(end.How, HowItEnded::ByASignal);
    EXPECT_EQ(end.Signal, SIGABRT);
}

TEST(GuardedChild, ThatDoesNotEndIsAFinding)
{
    volatile bool isEndless = true;
    const auto loop = [&]
    {
        while (isEndless)
        {
        }
    };
    EXPECT_EQ(EndOf(loop, {.SecondsOfProcessor = 1}), HowItEnded::OutOfTime);
}

TEST(GuardedChild, ThatTakesTooMuchMemoryIsAFindingEvenIfItWouldCopeWithoutIt)
{
    if (!IsMemoryOfChildrenLimited())
        GTEST_SKIP() << "sanitizers need address space without end";
    const auto takeTooMuch = []
    {
        try
        {
            const std::unique_ptr<char[]> bytes(new char[size_t{300} << 20]);
        }
        catch (const std::bad_alloc&)
        {
        }
    };
    EXPECT_EQ(EndOf(takeTooMuch), HowItEnded::OutOfMemory);
}

} // namespace
