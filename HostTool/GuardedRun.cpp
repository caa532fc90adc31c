#include "HostTool/GuardedRun.h"

#include "HostTool/PartFiles.h"
#include "HostTool/Reader/ReaderLog.h"
#include "HostTool/Text.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace HostTool
{

namespace
{

/// Who kills the waiting process leaves nobody else to tidy up.
void TidyUpAndEnd(int signal)
{
    PartFiles::RemoveThoseOf(getpid());
    std::raise(signal); // the handler stands for one signal only, so this one ends the process
}

[[noreturn]] void EndAsChild(pid_t parent, const sigset_t& signals, const std::function<int()>& work)
{
    sigprocmask(SIG_SETMASK, &signals, nullptr);
    const rlimit noCoreDump{0, 0};
    setrlimit(RLIMIT_CORE, &noCoreDump);
    struct sigaction action = {};
    sigaction(SIGTERM, nullptr, &action);
    if (action.sa_handler != SIG_IGN)
    {
        action.sa_handler = TidyUpAndEnd;
        action.sa_flags = SA_RESETHAND | SA_NODEFER;
        sigaction(SIGTERM, &action, nullptr);
    }
    // The child would go on for nobody.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent)
        std::exit(static_cast<int>(ExitCode::Machine));
    std::exit(work());
}

/// Those that run, where a handler of signals finds them.
std::array<std::atomic<pid_t>, 512> Children;

/// Puts `to` in the place of the first that is `from`.
void Exchange(pid_t from, pid_t to)
{
    for (auto& child : Children)
        if (pid_t expected = from; child.compare_exchange_strong(expected, to))
            return;
}

void SignalChildren(int signal)
{
    for (const auto& child : Children)
        if (const pid_t process = child.load())
            kill(process, signal);
}

CChildEnd EndOf(int status)
{
    return WIFEXITED(status) ? CChildEnd{WEXITSTATUS(status), 0} : CChildEnd{0, WTERMSIG(status)};
}

} // namespace

bool IsOfUser(int signal)
{
    return std::find(SignalsOfUsers.begin(), SignalsOfUsers.end(), signal) != SignalsOfUsers.end();
}

void EndBySignal(int signal)
{
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

CChildren::CChildren()
{
    // They are blocked but for the time of waiting: one that came before a child is known would end this process alone.
    sigset_t blocked;
    sigemptyset(&blocked);
    struct sigaction action = {};
    action.sa_handler = SignalChildren;
    for (size_t i = 0; i < SignalsOfUsers.size(); ++i)
    {
        sigaddset(&blocked, SignalsOfUsers[i]);
        sigaction(SignalsOfUsers[i], nullptr, &_FormerActions[i]);
        // Those that the caller of the program had ignored stay so.
        if (_FormerActions[i].sa_handler != SIG_IGN)
            sigaction(SignalsOfUsers[i], &action, nullptr);
    }
    sigprocmask(SIG_BLOCK, &blocked, &_FormerMask);
    PartFiles::Share();
}

CChildren::~CChildren()
{
    SignalChildren(SIGTERM);
    for (const auto& child : Children)
        if (const pid_t process = child.load())
        {
            waitpid(process, nullptr, 0);
            PartFiles::RemoveThoseOf(process);
            Exchange(process, 0);
        }
    for (size_t i = 0; i < SignalsOfUsers.size(); ++i)
        sigaction(SignalsOfUsers[i], &_FormerActions[i], nullptr);
    sigprocmask(SIG_SETMASK, &_FormerMask, nullptr);
}

pid_t CChildren::Start(const std::function<int()>& work)
{
    std::cout.flush();
    const pid_t self = getpid();
    const pid_t child = fork();
    if (child == 0)
    {
        for (auto& sibling : Children)
            sibling = 0;
        for (size_t i = 0; i < SignalsOfUsers.size(); ++i)
            sigaction(SignalsOfUsers[i], &_FormerActions[i], nullptr);
        EndAsChild(self, _FormerMask, work);
    }
    if (child < 0)
        throw CHostError(ExitCode::Machine, std::string("cannot start a process: ") + std::strerror(errno) +
                                                "; end other programs and try again");
    Exchange(0, child);
    return child;
}

CChildren::CEnded CChildren::Wait()
{
    sigset_t blocked;
    sigprocmask(SIG_SETMASK, &_FormerMask, &blocked);
    int status = 0;
    pid_t child = 0;
    while ((child = waitpid(-1, &status, 0)) < 0)
        if (errno != EINTR)
            throw CHostError(ExitCode::Machine, std::string("cannot wait for the reading process: ") +
                                                    std::strerror(errno) + "; try again");
    sigprocmask(SIG_SETMASK, &blocked, nullptr);
    Exchange(child, 0);
    PartFiles::RemoveThoseOf(child);
    return {child, EndOf(status)};
}

CChildEnd RunInChild(const std::function<int()>& work)
{
    CChildEnd end;
    {
        CChildren children;
        children.Start(work);
        end = children.Wait().End;
    }
    // Nobody reads a pipe any more: that is how every program ends then, without a word.
    if (IsOfUser(end.Signal) || end.Signal == SIGPIPE)
        EndBySignal(end.Signal);
    return end;
}

CHostError EarlyEnd(const std::string& document, const CChildEnd& end)
{
    switch (end.Signal)
    {
    case SIGKILL:
        return {ExitCode::Machine, document + ": the reading process was killed, perhaps since memory ran out; end "
                                              "other programs, or give fewer --jobs"};
    case SIGXFSZ:
        return {ExitCode::Machine, document + ": a file grew beyond the limit for file sizes; raise it (ulimit -f)"};
    case SIGXCPU:
        return {ExitCode::Machine, document + ": the limit for processor time was reached; raise it (ulimit -t)"};
    case SIGPIPE:
        return {ExitCode::Machine, document + ": nobody reads the pipe that it is written to"};
    default:
        return {ExitCode::BadFile, document + ": reading it ended early (" + strsignal(end.Signal) +
                                       "): it holds data of a kind that the plug-in does not know, or it is damaged"};
    }
}

int RunGuarded(const std::string& document, const std::function<int()>& work)
{
    const CChildEnd end = RunInChild(work);
    if (!end.IsEarly())
        return end.ExitCode;
    const CHostError failure = EarlyEnd(document, end);
    const bool isOfFile = failure.Code() == ExitCode::BadFile;
    std::cerr << "zel: " << Printable(isOfFile ? WithReason(failure.what(), document) : failure.what()) << '\n';
    return static_cast<int>(failure.Code());
}

} // namespace HostTool
