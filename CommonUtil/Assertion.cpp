#include "CommonUtil/Assertion.h"

#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Text.h"

#include <cstdlib>

namespace CommonUtil
{

thread_local std::string ErrMsg;

void BreakOrThrow(std::string message)
{
    {
        const CErrnoKeeper errnoKeeper;
        ZEL_LOG("%s", message.c_str());
        ErrMsg = std::move(message);
    }
    throw ErrMsg.c_str();
}

void FailAssertion(const char* file, int line)
{
    std::string message;
    {
        const CErrnoKeeper errnoKeeper;
        message = "Assertion failed: file " + FileNameWithoutPath(std::string(file)) + ", line " + ToString(line);
    }
    BreakOrThrow(std::move(message));
}

void ThrowWithErrno(int reason, const char* text)
{
    errno = reason;
    throw text;
}

void oldAbortCommonUtil()
{
    ZEL_LOG("abort() called.");
    std::abort();
}

} // namespace CommonUtil
