#include "Fuzzing/FailingMachine/FailingWalk.h"
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

/// The machine fails where it is told to, and the walk through it meets every call.

using namespace Fuzzing;
using testing::ElementsAre;

namespace
{

/// Which of six calls, three in each of two functions, fail.
std::vector<int> FailedCalls(uint64_t number, FailureSpan::E span)
{
    CCountedCalls calls;
    calls.LetFail(number, span);
    std::vector<int> failed;
    for (int call = 1; call <= 6; ++call)
    {
        if (call == 1 || call == 4)
            calls.EnterFunction();
        if (calls.DoesNextFail())
            failed.push_back(call);
    }
    return failed;
}

TEST(CountedCalls, FailAtTheirNumber)
{
    EXPECT_THAT(FailedCalls(2, FailureSpan::OneCall), ElementsAre(2));
}

TEST(CountedCalls, FailToTheEndOfTheFunction)
{
    EXPECT_THAT(FailedCalls(2, FailureSpan::RestOfFunction), ElementsAre(2, 3));
}

TEST(CountedCalls, FailFromThenOn)
{
    EXPECT_THAT(FailedCalls(2, FailureSpan::AllCalls), ElementsAre(2, 3, 4, 5, 6));
}

TEST(CountedCalls, AreThoseInsideOfFunctions)
{
    CCountedCalls calls;
    calls.LetFail(1);
    EXPECT_FALSE(calls.DoesNextFail());
    calls.EnterFunction();
    calls.LeaveFunction();
    EXPECT_FALSE(calls.DoesNextFail());
    EXPECT_EQ(calls.NumOfCalls(), 0u);
}

class FailingWalk : public testing::Test
{
protected:
    FailingWalk() : _walk(SlideOfAllStores().WriteTo(_folder.Path() / "slide.zel").wstring()) {}
    const CFailingWalk& Walk() const { return _walk; }

private:
    TestSupport::TemporaryFolder _folder;
    CFailingWalk _walk;
};

TEST_F(FailingWalk, MeetsAllocations)
{
    EXPECT_GT(Walk().NumOfCalls(FileFailure::Nothing), 1000u);
}

TEST_F(FailingWalk, MeetsReadsOfAllStores)
{
    EXPECT_GT(Walk().NumOfCalls(FileFailure::CutOff), 50u);
}

TEST_F(FailingWalk, MeetsAnOpenOfEachFile)
{
    EXPECT_GE(Walk().NumOfCalls(FileFailure::NoAccess), 3u);
}

TEST_F(FailingWalk, TakesAReadThatBringsHalfForNoFailure)
{
    EXPECT_EQ(Walk().Run(3, {FileFailure::Short, FailureSpan::OneCall}), "");
}

TEST(FailingWalkOfNothing, IsNoStart)
{
    const TestSupport::TemporaryFolder folder;
    EXPECT_THROW(CFailingWalk(folder.WideName("nothing.zel")), std::runtime_error);
}

} // namespace
