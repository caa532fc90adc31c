#include "HostTool/StandardOutput.h"

#include "HostTool/HostError.h"
#include "HostTool/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

namespace HostTool
{

namespace
{

enum class SaidTo
{
    StandardOutput,
    StandardError,
    Nobody
};

SaidTo Listener = SaidTo::StandardOutput;

/// `reason`: the error of the system; 0 if it is not known any more.
[[noreturn]] void FailToPrint(int reason)
{
    throw CHostError(ExitCode::Machine, std::string("standard output: cannot be written") +
                                            (reason == 0 ? "" : std::string(": ") + std::strerror(reason)) +
                                            "; what was printed is not complete");
}

} // namespace

void KeepStandardStreamsApart()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        // The lowest free number is taken, which is this one. What is written to a file opened for reading fails.
        if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", O_RDONLY) < 0)
            throw CHostError(ExitCode::Machine, "the standard streams are closed and /dev/null cannot be opened; "
                                                "start the program with them");
}

void TakeStandardOutput()
{
    RequireAllPrinted();
    if (Listener == SaidTo::StandardOutput)
        Listener = SaidTo::StandardError;
}

void SayNothing()
{
    Listener = SaidTo::Nobody;
}

std::ostream& WhereItIsSaid()
{
    static std::ostream nowhere(nullptr); // a stream without a buffer takes nothing
    return Listener == SaidTo::Nobody ? nowhere : Listener == SaidTo::StandardOutput ? std::cout : std::cerr;
}

void Say(const std::string& line)
{
    WhereItIsSaid() << Printable(line) << '\n';
}

void PrintWhole(const std::string& text)
{
    RequireAllPrinted();
    for (size_t at = 0; at < text.size();)
    {
        const ssize_t written = write(STDOUT_FILENO, text.data() + at, text.size() - at);
        if (written < 0 && errno != EINTR)
            FailToPrint(errno);
        at += static_cast<size_t>(std::max<ssize_t>(0, written));
    }
}

void RequireAllPrinted()
{
    errno = 0;
    std::cout.flush();
    const int reason = errno;
    if (!std::cout || std::ferror(stdout) != 0)
        FailToPrint(reason);
}

} // namespace HostTool
