#include "CommonUtil/Mutex.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace CommonUtil;

namespace
{

TEST(Mutex, MayBeEnteredAgainByItsThread)
{
    CMyMutex mutex;
    const CLock outer(mutex);
    const CLock inner(mutex);
    mutex.Acquire();
    mutex.Release();
}

TEST(Mutex, KeepsOtherThreadsOut)
{
    CMyMutex mutex;
    int sum = 0;
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back(
                [&]
                {
                    for (int turn = 0; turn < 1000; ++turn)
                    {
                        const CLock lock(mutex);
                        ++sum;
                    }
                });
    }
    EXPECT_EQ(sum, 4000);
}

} // namespace
