#include "Tests/Support/ChildProcess.h"

#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace TestSupport
{

namespace
{

[[noreturn]] void RunAndExit(const std::function<int()>& function, unsigned timeoutInSeconds)
{
    constexpr int Thrown = 255;
    alarm(timeoutInSeconds);
    int code = Thrown;
    try
    {
        code = function();
    }
    catch (...)
    {
        code = Thrown;
    }
    std::fflush(nullptr);
    _exit(code);
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const EndOfProcess& end)
{
    if (end.Signal != 0)
        return stream << "killed by signal " << end.Signal;
    return stream << "exited with " << end.ExitCode;
}

EndOfProcess RunInChild(const std::function<int()>& function, unsigned timeoutInSeconds)
{
    std::fflush(nullptr); // else the child would print what its parent has not printed yet
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("cannot start a process");
    if (child == 0)
        RunAndExit(function, timeoutInSeconds);
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw std::runtime_error("cannot wait for a process");
    return WIFSIGNALED(status) ? KilledBy(WTERMSIG(status)) : ExitedWith(WEXITSTATUS(status));
}

} // namespace TestSupport
