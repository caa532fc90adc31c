#include "Tests/Support/Command.h"

#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <sys/wait.h>

namespace TestSupport
{

namespace
{

/// A word as the shell takes it, whatever is in it.
std::string Quoted(const std::string& word)
{
    std::string quoted = "'";
    for (const char c : word)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

} // namespace

CommandResult RunCommand(const std::vector<std::string>& programAndArguments)
{
    const TemporaryFolder folder;
    std::string line;
    for (const std::string& word : programAndArguments)
        line += Quoted(word) + " ";
    line += "> " + Quoted(folder.Name("output")) + " 2> " + Quoted(folder.Name("errors"));
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, BytesOf(folder.Name("output")),
            BytesOf(folder.Name("errors"))};
}

} // namespace TestSupport
