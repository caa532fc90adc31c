#include "CommonUtil/PlatformCalls.h"

#include <cerrno>

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
