#include "CommonUtil/Assertion.h"

#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Text.h"

#include <cstdlib>

namespace CommonUtil
{

thread_local CFailureText ErrMsg;

CFailureText& CFailureText::operator=(std::string_view text)
{
    const size_t size = text.copy(_text.data(), _text.size() - 1);
    _text[size] = '\0';
    return *this;
}

void BreakOrThrow(const std::string& message)
{
    ZEL_LOG("%s", message.c_str());
    ErrMsg = message;
    throw ErrMsg.c_str();
}

void FailAssertion(const char* file, int line)
{
    std::string message;
    {
        const CErrnoKeeper errnoKeeper;
        message = "Assertion failed: file " + FileNameWithoutPath(std::string(file)) + ", line " + ToString(line);
    }
    BreakOrThrow(message);
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
