#ifndef BRIX_PLATFORM_ABSTRACTION_LAYER_H
#define BRIX_PLATFORM_ABSTRACTION_LAYER_H
/* The platform calls that the plug-in exports for code written against it. Wide text has 32 bits a character. */

#include <stdio.h>
#include <wchar.h>

#ifdef __cplusplus
#include <string>
#endif

/* These, and these alone, are visible outside of the plug-in. */
#pragma GCC visibility push(default)

#ifdef __cplusplus

extern "C"
{
#endif

    /** How grave a logged error is. */
    enum tagPAL_LogError
    {
        PAL_LOGERROR_WARNING = 0,
        PAL_LOGERROR_ERROR = 1,
        PAL_LOGERROR_FATAL = 2
    };

    /** Opens a file as fopen does, by wide name and mode. NULL when either is NULL or the open fails (errno tells). */
    FILE* PAL_OpenFile(const wchar_t* name, const wchar_t* mode);
    /** Closes a stream: 0; 1 for a NULL stream. */
    int PAL_CloseFile(FILE* stream);

    /** Hand a line to the log hook. Logging never fails. */
    void PAL_PutLogError(enum tagPAL_LogError type, const wchar_t* text, const char* file, int line);
    void PAL_PutLogInfo(const wchar_t* text, const char* file, int line);

#ifdef __cplusplus
    /** `format` with each %s replaced by %S, which the wide print calls take for wide text; `holder` keeps the text. */
    const wchar_t* PAL_fmt_return_scstr(const wchar_t* format, std::wstring& holder);
}
#endif

#pragma GCC visibility pop

#endif
