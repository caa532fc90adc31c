#pragma once
// The one door through which this layer, and all above it, reach the platform: file, text, log and lock calls.
// The Platform Abstraction Layer implements them; nothing here includes a header of that layer.

#include "Brix/PlatformAbstractionLayer.h"

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <pthread.h>
#include <string>
#include <sys/stat.h>

/// Wide text (one 32-bit unit a character) of UTF-8 text. Bytes that are no UTF-8 become U+FFFD, one each.
std::wstring Utf8ToUtf16(const std::string& utf8);

/// UTF-8 of wide text. Surrogate pairs, which a document's texts may hold as two units, are joined; an unpaired
/// surrogate and anything above U+10FFFF become U+FFFD.
std::string Utf16ToUtf8(const std::wstring& wide);

/// Opens a file whose bytes are read at any place: a document, a store or a profile. Null with errno. Waits for nobody:
/// a pipe is not such a file (ENOENT), and a program that the host starts does not inherit the stream.
std::FILE* OpenFileToRead(const std::wstring& name);

/// `stat` on the UTF-8 name. 0 or -1 with errno, as `stat` leaves it.
int _wstat64(const wchar_t* name, struct stat* result);

/// True while a reader is attached to the log hook; without one, and with printing off, a log line need not be
/// formatted.
bool HasLogReader();

/// Logs the error of a mutex, with the name of the call that met it, and is a failed assertion.
[[noreturn]] void FailCriticalSection(const char* call, int error);

/// Locks and unlocks a mutex; an error of the mutex is logged and is a failed assertion. Here, since every request of a
/// host comes through both.
inline void EnterCriticalSection(pthread_mutex_t* criticalSection)
{
    if (const int error = pthread_mutex_lock(criticalSection)) [[unlikely]]
        FailCriticalSection("EnterCriticalSection", error);
}
inline void LeaveCriticalSection(pthread_mutex_t* criticalSection)
{
    if (const int error = pthread_mutex_unlock(criticalSection)) [[unlikely]]
        FailCriticalSection("LeaveCriticalSection", error);
}

/// UTC calendar time of `*time`. 0 on success, else an errno value; `result` is then untouched.
int gmtime_s(std::tm* result, const std::time_t* time);

/// Ticks in a second of the counter that measures time spans, and its present state. Always 1.
int QueryPerformanceFrequency(int64_t* ticksPerSecond);
int QueryPerformanceCounter(int64_t* ticks);

/// Writes the folder for temporary files, which is made when it does not exist, into `wTempPath` (`maxSize` wide
/// characters). 1 on success; 0 when it is too small or the folder cannot be made.
uint32_t GetTempPath(uint32_t maxSize, wchar_t* wTempPath);

/// One entry of a folder listing. The fields that have no meaning here are there for code written for this shape.
struct _WIN32_FIND_DATA
{
    uint32_t dwFileAttributes = 0; ///< 16: a folder, 128: a file
    uint32_t nFileSizeHigh = 0;
    uint32_t nFileSizeLow = 0;
    uint32_t dwReserved0 = 0;
    uint32_t dwReserved1 = 0;
    wchar_t cFileName[1000] = {}; ///< the name without its folder
    wchar_t cAlternateFileName[14] = {};
    void* directory = nullptr;
    void* entry = nullptr;
    char pattern[1000] = {}; ///< the pattern of the search, UTF-8
};
using WIN32_FIND_DATA = _WIN32_FIND_DATA;

constexpr uint32_t FILE_ATTRIBUTE_DIRECTORY = 16;
constexpr uint32_t FILE_ATTRIBUTE_NORMAL = 128;

/// A search in progress; also 0 (a name too long) or -1 (nothing found, or no such folder).
using FindHandle = intptr_t;
constexpr FindHandle INVALID_FIND_HANDLE = -1;

/// Starts a search for `filePattern` ("folder/pattern", the pattern as `fnmatch` takes it) and fills `found` with the
/// first match; matches come in plain string order.
FindHandle FindFirstFile(const wchar_t* filePattern, WIN32_FIND_DATA* found);
/// Fills `found` with the next match: 1, or 0 when there is none.
int FindNextFile(FindHandle search, WIN32_FIND_DATA* found);
/// Ends a search: 1, or 0 for a handle that is none.
int FindClose(FindHandle search);
