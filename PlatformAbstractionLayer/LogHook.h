#pragma once
#include "Brix/PlatformAbstractionLayer.h"

#include <string_view>

/// One line on its way to the log. The views hold for the time of the call only.
struct CLogLine
{
    bool IsError = false; ///< else an information, and Type means nothing
    tagPAL_LogError Type = PAL_LOGERROR_WARNING;
    std::wstring_view Text;
    std::string_view File;
    int Line = 0;
};

/// Reads log lines; called on the thread that logs, by several threads at once, and must not throw.
using LogReader = void (*)(const CLogLine& line);

/// Attaches a reader to the hook that every log line ends in; null detaches it. There is none at first: the plug-in
/// itself logs nowhere. A call that is under way on another thread may still reach the former reader.
void SetLogReader(LogReader reader);

/// Where every log line ends. Gives it to the attached reader, else does nothing. Leaves errno alone.
void PutLog(const CLogLine& line);

/// "PAL_LOGERROR_WARNING" and so on; null for a number that is none.
const char* PalLogErrorTypeToString(tagPAL_LogError type);
