#pragma once
#include <string>
#include <vector>

namespace TestSupport
{

/// What a program left behind: how it ended, and what it wrote.
struct CommandResult
{
    int ExitCode = 0; ///< -1: it was ended by a signal
    std::string Output;
    std::string Errors;
};

/// Runs a program with arguments and waits for its end.
CommandResult RunCommand(const std::vector<std::string>& programAndArguments);

} // namespace TestSupport
