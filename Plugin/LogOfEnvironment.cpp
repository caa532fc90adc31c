// The log that the environment turns on: ZEL_LOG names a file or says "stderr", ZEL_LOG_LEVEL how much goes there.

#include "CommonUtil/PlatformCalls.h"
#include "PlatformAbstractionLayer/LogHook.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace
{

enum class Level
{
    Fatal,
    Error,
    Warning,
    Info
};

constexpr std::array<const char*, 4> NamesOfLevels = {"fatal", "error", "warning", "info"};
constexpr mode_t ReadByOwnerAlone = 0600; // names of slides and their contents are nobody else's business
constexpr int NoFile = -1;

int LogFile = NoFile;
Level LeastSevere = Level::Info;

bool BeginsWith(std::wstring_view text, std::initializer_list<std::wstring_view> beginnings)
{
    for (const std::wstring_view beginning : beginnings)
        if (text.starts_with(beginning))
            return true;
    return false;
}

/// Nearly every line comes as an information; what it is then says its text.
Level LevelOf(const CLogLine& line)
{
    if (line.IsError)
        return line.Type == PAL_LOGERROR_FATAL   ? Level::Fatal
               : line.Type == PAL_LOGERROR_ERROR ? Level::Error
                                                 : Level::Warning;
    if (BeginsWith(line.Text, {L"abort() called."}))
        return Level::Fatal;
    if (BeginsWith(line.Text, {L"Assertion failed", L"Error", L"ERROR", L"Failed", L"Missing", L"Unexpected"}))
        return Level::Error;
    return BeginsWith(line.Text, {L"Warning", L"CRITICAL WARNING", L"STRANGE"}) ? Level::Warning : Level::Info;
}

/// "2024-02-29T12:00:00Z "
std::string Now()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    std::array<char, sizeof "2024-02-29T12:00:00Z "> text{};
    if (gmtime_r(&now, &parts))
        std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ ", &parts);
    return text.data();
}

/// A text of a document may hold anything; in the log it is one line, and does nothing to a terminal.
std::wstring Printable(std::wstring_view text)
{
    std::wstring printable(text);
    for (wchar_t& character : printable)
    {
        const auto code = static_cast<uint32_t>(character);
        const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
        const bool turnsTheLine = code == 0x2028 || code == 0x2029 || (code >= 0x202A && code <= 0x202E) ||
                                  (code >= 0x2066 && code <= 0x2069);
        if (isControl || turnsTheLine)
            character = L'?';
    }
    return printable;
}

std::string NameWithoutFolder(std::string_view file)
{
    return std::string(file.substr(file.rfind('/') + 1));
}

/// On any thread; must not throw. A line goes out as a whole, at the end of the file.
void WriteLine(const CLogLine& line)
{
    const Level level = LevelOf(line);
    if (level > LeastSevere)
        return;
    try
    {
        const std::string text = Now() + NamesOfLevels[static_cast<size_t>(level)] + " " +
                                 NameWithoutFolder(line.File) + ":" + std::to_string(line.Line) + ": " +
                                 Utf16ToUtf8(Printable(line.Text)) + "\n";
        static_cast<void>(!write(LogFile, text.data(), text.size())); // a full disk is no reason to fail
    }
    catch (...)
    {
        // Without memory the line is lost.
    }
}

Level LevelOfName(const char* name)
{
    for (size_t level = 0; name && level < NamesOfLevels.size(); ++level)
        if (std::string_view(name) == NamesOfLevels[level])
            return static_cast<Level>(level);
    return Level::Info;
}

/// Turns the log on when the plug-in is loaded and off when it is unloaded. Programs that run with the rights of
/// another user have none, or whoever starts them could have files written.
class CLogOfEnvironment
{
public:
    CLogOfEnvironment()
    {
        const char* name = secure_getenv("ZEL_LOG");
        if (!name || !*name)
            return;
        const int reason = errno;
        const bool isStandardError = std::string_view(name) == "stderr";
        LogFile = isStandardError ? STDERR_FILENO
                                  : open(name, O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK,
                                         ReadByOwnerAlone);
        _ownsFile = !isStandardError && LogFile != NoFile;
        LeastSevere = LevelOfName(secure_getenv("ZEL_LOG_LEVEL"));
        if (LogFile != NoFile)
            SetLogReader(WriteLine);
        errno = reason;
    }
    ~CLogOfEnvironment()
    {
        if (LogFile == NoFile)
            return;
        SetLogReader(nullptr);
        if (_ownsFile)
            close(LogFile);
    }
    CLogOfEnvironment(const CLogOfEnvironment&) = delete;
    CLogOfEnvironment& operator=(const CLogOfEnvironment&) = delete;

private:
    bool _ownsFile = false;
};

const CLogOfEnvironment LogOfEnvironment;

} // namespace
