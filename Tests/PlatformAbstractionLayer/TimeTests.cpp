#include "CommonUtil/PlatformCalls.h"
#include "PlatformAbstractionLayer/Threads.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <limits>

namespace
{

TEST(GmtimeS, GivesCalendarTime)
{
    const std::time_t time = 1234567890;
    std::tm calendar{};
    EXPECT_EQ(gmtime_s(&calendar, &time), 0);
    EXPECT_EQ(calendar.tm_year, 109);
    EXPECT_EQ(calendar.tm_mon, 1);
    EXPECT_EQ(calendar.tm_mday, 13);
    EXPECT_EQ(calendar.tm_sec, 30);
}

TEST(GmtimeS, RefusesATimeWithoutACalendarDate)
{
    const std::time_t time = std::numeric_limits<std::time_t>::max();
    std::tm calendar{};
    calendar.tm_year = 7;
    EXPECT_EQ(gmtime_s(&calendar, &time), EOVERFLOW);
    EXPECT_EQ(calendar.tm_year, 7);
    EXPECT_EQ(gmtime_s(nullptr, &time), EINVAL);
    EXPECT_EQ(gmtime_s(&calendar, nullptr), EINVAL);
}

TEST(PerformanceCounter, CountsOn)
{
    int64_t before = 0;
    int64_t after = 0;
    EXPECT_EQ(QueryPerformanceCounter(&before), 1);
    Sleep(1);
    EXPECT_EQ(QueryPerformanceCounter(&after), 1);
    int64_t ticksPerSecond = 0;
    EXPECT_EQ(QueryPerformanceFrequency(&ticksPerSecond), 1);
    EXPECT_GE(after - before, ticksPerSecond / 1000);
}

TEST(TickCount, CountsMilliseconds)
{
    const uint32_t before = GetTickCount();
    Sleep(2);
    EXPECT_GE(GetTickCount() - before, 2u);
}

} // namespace
