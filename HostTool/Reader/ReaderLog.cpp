#include "HostTool/Reader/ReaderLog.h"

#include "HostTool/Document.h"
#include "HostTool/GuardedRun.h"
#include "HostTool/Reader/BuiltInPlugin.h"
#include "HostTool/Text.h"
#include "PlatformAbstractionLayer/LogHook.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <iostream>
#include <sys/mman.h>

namespace HostTool
{

namespace
{

std::atomic<LogLevel> LevelShown;

LogLevel LevelOf(const CLogLine& line)
{
    if (!line.IsError)
        return LogLevel::Info;
    return line.Type == PAL_LOGERROR_FATAL   ? LogLevel::Fatal
           : line.Type == PAL_LOGERROR_ERROR ? LogLevel::Error
                                             : LogLevel::Warning;
}

void Show(const CLogLine& line)
{
    if (LevelOf(line) > LevelShown)
        return;
    const std::filesystem::path file = line.File;
    std::cerr << "log: " + Printable(ToUtf8(std::wstring(line.Text))) + " (" + file.filename().string() + ":" +
                     std::to_string(line.Line) + ")\n";
}

/// The last line that a child logged, where its parent sees it.
using LastLine = std::array<char, 1024>;
LastLine* Last = nullptr;

void Keep(const CLogLine& line)
{
    const std::string text = Printable(ToUtf8(std::wstring(line.Text)));
    const size_t size = std::min(text.size(), Last->size() - 1);
    std::memcpy(Last->data(), text.data(), size);
    (*Last)[size] = 0;
}

/// Whether the document opens.
int OpenKeepingTheLog(const std::filesystem::path& document)
{
    SetLogReader(Keep);
    try
    {
        const CPluginHost host = BuiltInPlugin();
        const CDocument opened(host, document);
        return 0;
    }
    catch (const std::exception&)
    {
        return 1;
    }
}

} // namespace

const std::map<std::string, LogLevel>& NamesOfLogLevels()
{
    static const std::map<std::string, LogLevel> names = {{"fatal", LogLevel::Fatal},
                                                          {"error", LogLevel::Error},
                                                          {"warning", LogLevel::Warning},
                                                          {"info", LogLevel::Info}};
    return names;
}

void ShowLog(LogLevel level)
{
    LevelShown = level;
    SetLogReader(Show);
}

std::string ReasonOf(const std::filesystem::path& document)
{
    void* memory = mmap(nullptr, sizeof(LastLine), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        return {};
    Last = static_cast<LastLine*>(memory);
    const CChildEnd end = RunInChild([&] { return OpenKeepingTheLog(document); });
    std::string reason = end.ExitCode == 0 && !end.IsEarly() ? "" : Last->data();
    munmap(memory, sizeof(LastLine));
    return reason;
}

std::string WithReason(const std::string& line, const std::filesystem::path& document)
{
    const std::string reason = ReasonOf(document);
    return reason.empty() ? line : line + "; the reader says: " + reason;
}

} // namespace HostTool
