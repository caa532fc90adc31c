#include "PlatformAbstractionLayer/LogHook.h"

#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/PlatformCalls.h"

#include <atomic>

namespace
{

std::atomic<LogReader> AttachedReader = nullptr;

std::wstring_view ViewOf(const wchar_t* text)
{
    return text ? std::wstring_view(text) : std::wstring_view();
}

std::string_view ViewOf(const char* text)
{
    return text ? std::string_view(text) : std::string_view();
}

} // namespace

void SetLogReader(LogReader reader)
{
    AttachedReader.store(reader, std::memory_order_release);
}

bool HasLogReader()
{
    return AttachedReader.load(std::memory_order_relaxed) != nullptr;
}

void PutLog(const CLogLine& line)
{
    if (const LogReader reader = AttachedReader.load(std::memory_order_acquire))
    {
        const CommonUtil::CErrnoKeeper errnoKeeper;
        reader(line);
    }
}

const char* PalLogErrorTypeToString(tagPAL_LogError type)
{
    switch (type)
    {
    case PAL_LOGERROR_WARNING:
        return "PAL_LOGERROR_WARNING";
    case PAL_LOGERROR_ERROR:
        return "PAL_LOGERROR_ERROR";
    case PAL_LOGERROR_FATAL:
        return "PAL_LOGERROR_FATAL";
    }
    return nullptr;
}

void PAL_PutLogError(tagPAL_LogError type, const wchar_t* text, const char* file, int line)
{
    PutLog({.IsError = true, .Type = type, .Text = ViewOf(text), .File = ViewOf(file), .Line = line});
}

void PAL_PutLogInfo(const wchar_t* text, const char* file, int line)
{
    PutLog({.IsError = false, .Type = PAL_LOGERROR_WARNING, .Text = ViewOf(text), .File = ViewOf(file), .Line = line});
}
