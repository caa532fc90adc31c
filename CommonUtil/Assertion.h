#pragma once
#include <string>

/// A rule of the format or an invariant of the program. Active in every build: a file that breaks one must fail.
#define ZEL_ASSERT(condition)                                                                                          \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition)) [[unlikely]]                                                                                 \
            CommonUtil::FailAssertion(__FILE__, __LINE__);                                                             \
    } while (false)

namespace CommonUtil
{

/// The text of the latest failed assertion of this thread. Per thread, since two documents may fail at the same
/// moment; it keeps the thrown text alive.
extern thread_local std::string ErrMsg;

/// Logs the text, keeps it in ErrMsg and throws it as `const char*`. Does not touch errno.
[[noreturn]] void BreakOrThrow(std::string message);

/// BreakOrThrow with "Assertion failed: file <name without path>, line <line>".
[[noreturn]] void FailAssertion(const char* file, int line);

/// Sets errno and throws `text`, which must live for ever (a literal), without a log line of its own: for a failure
/// that has a result code of its own.
[[noreturn]] void ThrowWithErrno(int reason, const char* text);

/// Logs "abort() called." and ends the process: for what the reader does not support and cannot survive.
[[noreturn]] void oldAbortCommonUtil();

} // namespace CommonUtil
