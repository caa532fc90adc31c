#include "HostTool/GuardedRun.h"

#include "HostTool/HostError.h"
#include "HostTool/Text.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace HostTool
{

namespace
{

[[noreturn]] void EndAsChild(const std::function<int()>& work)
{
    const rlimit noCoreDump{0, 0};
    setrlimit(RLIMIT_CORE, &noCoreDump);
    std::exit(work());
}

std::atomic<pid_t> Child;

void PassOnToChild(int signal)
{
    kill(Child, signal);
}

constexpr std::array SignalsOfUsers = {SIGINT, SIGTERM, SIGHUP};

void HandleSignalsOfUsers(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    for (const int signal : SignalsOfUsers)
        sigaction(signal, &action, nullptr);
}

int WaitFor(pid_t child)
{
    // Who ends this process means the child, which may have to tidy up first.
    Child = child;
    HandleSignalsOfUsers(PassOnToChild);
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw CHostError(ExitCode::BadFile, std::string("cannot wait for the reading process: ") +
                                                    std::strerror(errno) + "; try again");
    return status;
}

} // namespace

CChildEnd RunInChild(const std::function<int()>& work)
{
    std::cout.flush();
    const pid_t child = fork();
    if (child < 0)
        throw CHostError(ExitCode::BadFile, std::string("cannot start a process: ") + std::strerror(errno) +
                                                "; end other programs and try again");
    if (child == 0)
        EndAsChild(work);
    const int status = WaitFor(child);
    HandleSignalsOfUsers(SIG_DFL);
    if (WIFEXITED(status))
        return {WEXITSTATUS(status), 0};
    const int signal = WTERMSIG(status);
    if (std::count(SignalsOfUsers.begin(), SignalsOfUsers.end(), signal) != 0)
        std::raise(signal);
    return {0, signal};
}

std::string TextOfEarlyEnd(const std::string& document, const CChildEnd& end)
{
    return document + ": reading it ended early (" + strsignal(end.Signal) +
           "): it holds data of a kind that the plug-in does not know, or it is damaged";
}

int RunGuarded(const std::string& document, const std::function<int()>& work)
{
    const CChildEnd end = RunInChild(work);
    if (!end.IsEarly())
        return end.ExitCode;
    std::cerr << "zel: " << Printable(TextOfEarlyEnd(document, end)) << '\n';
    return static_cast<int>(ExitCode::BadFile);
}

} // namespace HostTool
