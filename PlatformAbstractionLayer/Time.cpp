#include "CommonUtil/PlatformCalls.h"

#include <cerrno>
#include <time.h>

int gmtime_s(std::tm* result, const std::time_t* time)
{
    if (!result || !time)
        return EINVAL;
    std::tm calendar{};
    if (!gmtime_r(time, &calendar))
        return errno;
    *result = calendar;
    return 0;
}

int QueryPerformanceFrequency(int64_t* ticksPerSecond)
{
    *ticksPerSecond = 1'000'000'000; // a tick is a nanosecond
    return 1;
}

int QueryPerformanceCounter(int64_t* ticks)
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    *ticks = int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
    return 1;
}
