#include "PlatformAbstractionLayer/InternalErrors.h"

#include "CommonUtil/PlatformCalls.h"
#include "Tests/Support/Assertion.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>

namespace
{

/// A home folder of the test's own.
class HaltOnInternalErrors : public testing::Test
{
protected:
    void SetUp() override { setenv("HOME", _home.Path().c_str(), 1); }

    TestSupport::TemporaryFolder _home;
};

TEST_F(HaltOnInternalErrors, DoesNothingWithoutItsFile)
{
    EXPECT_EQ(TestSupport::LogOf([] { IfNeededHaltOnInternalError(); }), "");
}

TEST_F(HaltOnInternalErrors, DoesNothingWithoutAHome)
{
    unsetenv("HOME");
    EXPECT_EQ(TestSupport::LogOf([] { IfNeededHaltOnInternalError(); }), "");
}

TEST_F(HaltOnInternalErrors, LogsAndFailsWithItsFile)
{
    _home.Write("HaltOnInternalErrors", "");
    const std::string log = TestSupport::LogOf([] { EXPECT_FAILED_ASSERTION(IfNeededHaltOnInternalError()); });
    EXPECT_NE(log.find("Internal error, halting as '~/HaltOnInternalErrors...' is present.\n"), std::string::npos)
        << log;
}

TEST_F(HaltOnInternalErrors, StopsACallThatLogsAnInternalError)
{
    EXPECT_EQ(GetTempPath(0, nullptr), 0u);
    _home.Write("HaltOnInternalErrors", "");
    EXPECT_FAILED_ASSERTION(GetTempPath(0, nullptr));
}

} // namespace
