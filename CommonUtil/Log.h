#pragma once
#include "CommonUtil/PlatformCalls.h"

#include <string>

/// Formats log texts at compile time only: a wrong argument for a narrow format is an error.
inline void CheckNarrowFormat(const char*, ...) __attribute__((format(printf, 1, 2)));
inline void CheckNarrowFormat(const char*, ...) {}

/// Logs one line whose %s arguments are narrow text. Never disturbs errno. The arguments are worked out whether
/// somebody reads the log or not: one that fails must fail alike for everybody.
#define ZEL_LOG(format, ...)                                                                                           \
    do                                                                                                                 \
    {                                                                                                                  \
        if (false)                                                                                                     \
            CheckNarrowFormat(format __VA_OPT__(, ) __VA_ARGS__);                                                      \
        CommonUtil::pw_flf(false, __FILE__, __func__, L##format, __LINE__ __VA_OPT__(, ) __VA_ARGS__);                 \
    } while (false)

/// Logs one line whose format is wide and whose %s arguments are wide text. Never disturbs errno.
#define ZEL_WLOG(format, ...) CommonUtil::pw_flf(true, __FILE__, __func__, format, __LINE__ __VA_OPT__(, ) __VA_ARGS__)

namespace CommonUtil
{

/// Print every log line on standard output; off by default.
extern bool EnablePrintfOntoScreen;
/// Set by a host whose own logging writes to standard output already: then nothing is printed here.
extern bool Log4CxxIsLoggingToStdout;
/// Makes `returnErrV2` log the place of the failure; off by default.
extern bool IsCommonUtilV2;

/// True when somebody would see a log line: printing is on, or a reader is attached to the platform's hook.
bool IsLogRead();

/// Logs one line: "L<line>:<function>: " and the message, both at most 10000 characters, the cut marked in print.
/// `isFromPW`: the arguments fit a wide format (%s is wide text); else they fit the same format as narrow text.
/// Saves and restores errno and throws nothing, so that a failure can be logged on its way up; where memory has run
/// out, or the reader throws, the line is lost.
void pw_flf(bool isFromPW, const char* fileName, const char* funcName, const wchar_t* wformatString, int lineNumber,
            ...);

/// Logs "Returning error from %s, line %d..." and gives `value` back.
bool returnErrV2(bool value, const char* file, int line);

/// Called where an open has failed; a place for a debugger to stop at.
void StopOnUnexpectedErrorsV2();

} // namespace CommonUtil
