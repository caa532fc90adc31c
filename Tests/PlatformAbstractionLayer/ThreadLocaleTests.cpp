#include "PlatformAbstractionLayer/ThreadLocale.h"

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <langinfo.h>
#include <string>
#include <thread>

namespace
{

TEST(ConfigThreadLocale, RecordsTheLatestValue)
{
    std::thread(
        []
        {
            EXPECT_EQ(_configthreadlocale(2), 2);
            EXPECT_EQ(_configthreadlocale(1), 1);
            EXPECT_EQ(_configthreadlocale(0), 1);
            EXPECT_EQ(_configthreadlocale(-7), 1);
            EXPECT_EQ(_configthreadlocale(2), 2);
        })
        .join();
}

/// 0 when a thread has its own locale and this one has not. In a process of its own, since the C library does not free
/// what it noted of a LOCPATH.
int ChangeLocaleOfAThread(const std::string& localeFolder)
{
    setenv("LOCPATH", localeFolder.c_str(), 1);
    const std::string before = nl_langinfo(CODESET);
    std::string inThread;
    std::thread(
        [&]
        {
            _configthreadlocale(1);
            inThread = nl_langinfo(CODESET);
        })
        .join();
    return inThread == "UTF-8" && nl_langinfo(CODESET) == before && before != inThread ? 0 : 1;
}

TEST(ConfigThreadLocale, ChangesTheCallingThreadAlone)
{
    const TestSupport::TemporaryFolder folder;
    const std::string build = "localedef -i en_US -f UTF-8 " + folder.Name("en_US.UTF-8") + " >/dev/null 2>&1";
    if (std::system(build.c_str()) != 0)
        GTEST_SKIP() << "no English locale can be built here";
    EXPECT_EQ(TestSupport::RunInChild([&] { return ChangeLocaleOfAThread(folder.Path().string()); }),
              TestSupport::ExitedWith(0));
}

} // namespace
