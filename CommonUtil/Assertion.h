#pragma once
#include <array>
#include <string>
#include <string_view>

/// A rule of the format or an invariant of the program. Active in every build: a file that breaks one must fail.
#define ZEL_ASSERT(condition)                                                                                          \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition)) [[unlikely]]                                                                                 \
            CommonUtil::FailAssertion(__FILE__, __LINE__);                                                             \
    } while (false)

namespace CommonUtil
{

/// A narrow text, of which so much is kept as there is room for. It has no destructor on purpose: a thread that has one
/// to call at its end would keep the whole plug-in in memory until then, although the host has unloaded it.
class CFailureText
{
public:
    CFailureText& operator=(std::string_view text);
    const char* c_str() const { return _text.data(); }

private:
    std::array<char, 1024> _text{};
};

/// The text of the latest failed assertion of this thread. Per thread, since two documents may fail at the same
/// moment; it keeps the thrown text alive.
extern thread_local CFailureText ErrMsg;

/// Logs the text, keeps it in ErrMsg and throws it as `const char*`. Does not touch errno.
[[noreturn]] void BreakOrThrow(const std::string& message);

/// BreakOrThrow with "Assertion failed: file <name without path>, line <line>".
[[noreturn]] void FailAssertion(const char* file, int line);

/// Sets errno and throws `text`, which must live for ever (a literal), without a log line of its own: for a failure
/// that has a result code of its own.
[[noreturn]] void ThrowWithErrno(int reason, const char* text);

/// Logs "abort() called." and ends the process: for what the reader does not support and cannot survive.
[[noreturn]] void oldAbortCommonUtil();

} // namespace CommonUtil
