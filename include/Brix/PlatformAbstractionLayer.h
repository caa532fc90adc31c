#ifndef BRIX_PLATFORM_ABSTRACTION_LAYER_H
#define BRIX_PLATFORM_ABSTRACTION_LAYER_H
/*
 * The platform calls that the plug-in exports for code written against it: files, text, modules, the log, private
 * profile (INI) files, and block codecs.
 *
 * Wide text has 32 bits a character and ends with a zero; names of files are converted to UTF-8. No call takes
 * ownership of what it is given. All of them may be called from several threads at once, unless told otherwise.
 *
 * These calls have no boundary: where a comment speaks of a failed assertion, the call is left by a C++ exception that
 * holds the text of the assertion as a `const char*`, valid until the next one of the same thread.
 */

#include <stdbool.h>
#include <stdint.h>
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

    /** What the calls answer whose result is an `int`, unless told otherwise. */
    enum tagPAL_Result
    {
        PAL_RESULT_SUCCESS = 0,
        PAL_RESULT_FAILURE = 1,      /**< an argument that is NULL or 0, or a file that cannot be understood */
        PAL_RESULT_NO_CODEC = 2,     /**< there is no codec of that name */
        PAL_RESULT_CODEC_FAILED = 4, /**< the codec reported a size below 1 */
        PAL_RESULT_TOO_SMALL = 5     /**< nothing was written: the needed size was stored */
    };

    /* ------------------------------------------------------------------------------------------------- Files -- */

    /**
     * Opens a file as fopen does, by wide name and mode. NULL when either is NULL or the open fails; errno tells why.
     * The stream belongs to the caller, who closes it with PAL_CloseFile. It is not inherited by programs that are
     * started. A named pipe opens as it does for fopen, which waits for whoever has the other end.
     */
    FILE* PAL_OpenFile(const wchar_t* name, const wchar_t* mode);

    /** Closes a stream: 0; 1 for a NULL stream. */
    int PAL_CloseFile(FILE* stream);

    /* -------------------------------------------------------------------------------------------------- Text -- */

    /**
     * Converts UTF-8 to wide text, and wide text to UTF-8. `sizeFilledOrNeeded` takes the size of the result with its
     * zero, in characters or in bytes. A NULL `result` with a size of 0 asks for that size alone; too small a buffer
     * gives PAL_RESULT_TOO_SMALL, a NULL for anything else PAL_RESULT_FAILURE. What is no UTF-8 becomes U+FFFD, byte
     * by byte, and so does a wide character that is no code point.
     */
    int PAL_ConvertToUnicode(const char* text, wchar_t* result, uint32_t resultSize, uint32_t* sizeFilledOrNeeded);
    int PAL_ConvertFromUnicode(const wchar_t* text, char* result, uint32_t resultSize, uint32_t* sizeFilledOrNeeded);

#ifdef __cplusplus
    /** `format` with each %s replaced by %S, which the wide print calls take for wide text; `holder` keeps the text. */
    const wchar_t* PAL_fmt_return_scstr(const wchar_t* format, std::wstring& holder);
#endif

    /* ----------------------------------------------------------------------------------------------- Modules -- */

    /**
     * Loads a shared library; NULL (and a log line) when there is none or it cannot be loaded. The caller releases it
     * with PAL_ReleaseLibrary: 0 on success.
     */
    void* PAL_LoadLibrary(const wchar_t* name);
    int PAL_ReleaseLibrary(void* module);

    /** The address of an exported function; NULL when the module has none of that name. */
    void* PAL_GetProcAddress(void* module, const char* name);

    /** The module that this call lives in. It is borrowed: not to be released. A failure is a failed assertion. */
    void* PAL_GetCurrentModule(void);

    /**
     * The full file name of a loaded module; of the program for a NULL module. `sizeFilledOrNeeded` takes the size
     * with the terminating zero, in characters. A NULL `pBuffer` with a size of 0 asks for that size alone; a buffer
     * without a size, or a size without a buffer, gives PAL_RESULT_FAILURE, and too small a one PAL_RESULT_TOO_SMALL.
     */
    int PAL_GetModulePath(void* hModule, wchar_t* pBuffer, uint32_t nBufferSize, uint32_t* sizeFilledOrNeeded);

    /* --------------------------------------------------------------------------------------------------- Log -- */

    /** How grave a logged error is. */
    enum tagPAL_LogError
    {
        PAL_LOGERROR_WARNING = 0,
        PAL_LOGERROR_ERROR = 1,
        PAL_LOGERROR_FATAL = 2
    };

    /** Hand a line to the log hook, with the source file and line that it comes from. Logging never fails. */
    void PAL_PutLogError(enum tagPAL_LogError type, const wchar_t* text, const char* file, int line);
    void PAL_PutLogInfo(const wchar_t* text, const char* file, int line);

    /* -------------------------------------------------------------------------------------- Private profiles -- */

    /*
     * Files in UTF-16, little-endian, with a byte order mark; any other encoding is a failed assertion. Sections stand
     * in brackets on a line of their own, pairs are `name=value`, a line that starts with ";" is a comment. Names of
     * sections and keys are compared exactly. No state is kept: each call reads the file.
     *
     * Sizes count wide characters. A multi-string is a row of zero-terminated texts that is ended by one more zero.
     */

    /**
     * The names of all sections, as a multi-string, in the order of the file. A missing file gives size 0 and
     * PAL_RESULT_SUCCESS, and leaves `dst` alone. A section line that is broken gives PAL_RESULT_FAILURE.
     */
    int PAL_GetPrivateProfileSectionNames(wchar_t* dst, uint32_t dstSize, const wchar_t* fileName,
                                          uint32_t* dstSizeFilledOrNeeded);

    /**
     * The lines of a section, as a multi-string of `name=value` without blanks around either, in the order of the
     * file. A missing file gives size 0 and PAL_RESULT_SUCCESS, and leaves `dst` alone. A section that is not there,
     * or a section line that is broken, gives PAL_RESULT_FAILURE.
     */
    int PAL_GetPrivateProfileSection(const wchar_t* secName, wchar_t* dst, uint32_t dstSize, const wchar_t* fileName,
                                     uint32_t* destSizeFilledOrNeeded);

    /**
     * The value of a key, without blanks around it; of the first one when the key is repeated. Without that key, the
     * default and PAL_RESULT_SUCCESS; without that section, the default and the section's result. `defaultValue` may
     * be NULL: then the text is empty and its size is 0. A line before the key that is no pair gives
     * PAL_RESULT_FAILURE. The size counts the terminating zero.
     */
    int PAL_GetPrivateProfileString(const wchar_t* secName, const wchar_t* key, const wchar_t* defaultValue,
                                    wchar_t* result, uint32_t resultSize, const wchar_t* fileName,
                                    uint32_t* resultSizeFilledOrNeeded);

    /**
     * The value of a key as a number; the default when the key is not there. A value that is not the plain decimal
     * form of a 32-bit number is a failed assertion.
     */
    int PAL_GetPrivateProfileInt(const wchar_t* secName, const wchar_t* key, int32_t defaultValue,
                                 const wchar_t* fileName, int32_t* result);

    /* ------------------------------------------------------------------------------------------- Data codecs -- */

    /*
     * Codecs of blocks of bytes, by name. "LZ4" is always there. Others come from shared libraries `*.dll` in the
     * folder `plugin` beside this module, which are searched when a codec is first asked for; one that is called LZ4
     * takes the place of the built-in one. All sizes are in bytes.
     */

    /** The largest size that `size` bytes can have when they are encoded. */
    int PAL_GetEncodeBound(const wchar_t* name, long size, long* bound);

    /** Encodes `source` into `target`, and decodes it back. `written` takes the size of the result. */
    int PAL_Encode(const wchar_t* name, const char* source, int sourceSize, char* target, int targetSize, int* written);
    int PAL_Decode(const wchar_t* name, const char* source, int sourceSize, char* target, int targetSize, int* written);

    /** Tells whether there is a codec of that name. "NONE" always is: it means that nothing is to be encoded. */
    int PAL_IsSupportedDataCodec(const wchar_t* pszCodecName, bool* bResult);

    /**
     * Releases all codecs and their libraries; the next use of a codec searches again. The result of a library that
     * cannot be released is returned at once. No other codec call may run at the same time.
     */
    int PAL_ReleaseDataCodec(void);

#ifdef __cplusplus
}
#endif

#pragma GCC visibility pop

#endif
