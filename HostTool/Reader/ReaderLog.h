#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace HostTool
{

/// Which lines of the reader's log are shown: those of a level and all that are worse.
enum class LogLevel
{
    Fatal,
    Error,
    Warning,
    Info ///< all of them
};

/// By the names that users give them.
const std::map<std::string, LogLevel>& NamesOfLogLevels();

/// Prints the log of the reader's layers that are linked into this program on standard error from now on. A plug-in
/// that is loaded has a log of its own, which goes where ZEL_LOG says.
void ShowLog(LogLevel level);

/// Why the reader gives a document up when it opens it, or ends its process at it: the last line of its log; empty if
/// it does neither. Opens the document once more, in a process of its own.
std::string ReasonOf(const std::filesystem::path& document);

/// A line about a failure at a document, with that reason at its end if there is one.
std::string WithReason(const std::string& line, const std::filesystem::path& document);

} // namespace HostTool
