#include "CommonUtil/Mutex.h"
#include "PlatformAbstractionLayer/Files.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <csignal>
#include <gtest/gtest.h>

namespace
{

TEST(WfsopenDeathTest, EndsTheProcessForAnUnknownFlag)
{
    const TestSupport::TemporaryFolder folder;
    folder.Write("file", "1");
    EXPECT_EXIT(
        {
            TestSupport::PrintLogOntoStandardError();
            _wfsopen(folder.WideName("file").c_str(), L"rb", 17);
        },
        testing::KilledBySignal(SIGABRT), "abort\\(\\) called\\.");
}

TEST(LockDeathTest, EndsTheProcessWhenItCannotBeReleased)
{
    EXPECT_EXIT(
        {
            TestSupport::PrintLogOntoStandardError();
            CommonUtil::CMyMutex mutex;
            const CommonUtil::CLock lock(mutex);
            mutex.Release();
        },
        testing::KilledBySignal(SIGABRT),
        "ERROR: LeaveCriticalSection Failed!!! ERRNO=1 Error=Operation not permitted");
}

} // namespace
