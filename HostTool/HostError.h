#pragma once

#include "Brix/AccessorInterface.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace HostTool
{

/// What the program answers to a script that called it.
enum class ExitCode : int
{
    Done = 0,
    BadFile = 1,     ///< damaged, not a document of this format, or unreadable for another reason
    WrongUsage = 2,  ///< wrong options, no such file, no such tile, an output that may not be written
    MissingFile = 3, ///< the document is there, a file beside it is not
    Machine = 4,     ///< the disk is full or fails, rights or memory are wanting, the process was killed
    NotEqual = 5,    ///< what was to be equal is not
};

/// The same for the help.
constexpr const char* MeaningsOfExitCodes =
    "0 done, 1 the file is damaged or not of this format, 2 wrong usage, 3 a side file is missing, 4 the machine: "
    "disk, "
    "rights, memory, or killed, 5 not equal (verify --against, export --prove, diff).";

/// Which of two codes a run over several files answers: the machine's before the file's, then what is missing, what is
/// not equal, and wrong usage.
ExitCode WorseOf(ExitCode a, ExitCode b);

/// Whom an error of the system is to be blamed on: the name that was given, or the machine.
ExitCode CodeOfErrno(int reason);

/// A failure as the user is to read it: one line that says what, where, and what to do, and the exit code for scripts.
class CHostError : public std::runtime_error
{
public:
    CHostError(ExitCode exitCode, const std::string& line) : std::runtime_error(line), _ExitCode(exitCode) {}
    ExitCode Code() const { return _ExitCode; }

private:
    ExitCode _ExitCode;
};

/// The failure of a call on a document, of which the reader's log may tell more.
class CCallError : public CHostError
{
public:
    using CHostError::CHostError;
};

/// The folder beside a document in which its tile stores lie.
std::filesystem::path SideFolderOf(const std::filesystem::path& document);

/// The failure of a call on `document`: what was being done, as in "cannot open", and what `result` means for it.
/// `reason` is the error of the system that the call left, 0 if it left none.
CCallError FailedCall(const std::filesystem::path& document, const std::string& what, AC_Result result, int reason = 0);

} // namespace HostTool
