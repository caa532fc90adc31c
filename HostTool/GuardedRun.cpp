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

std::atomic<pid_t> Child;

void PassOnToChild(int signal)
{
    kill(Child, signal);
}

/// By which somebody ends a program, or a timer that he set.
constexpr std::array SignalsOfUsers = {SIGINT,  SIGTERM, SIGHUP,    SIGQUIT, SIGUSR1, SIGUSR2,
                                       SIGALRM, SIGPROF, SIGVTALRM, SIGIO,   SIGPWR};

bool IsOfUsers(int signal)
{
    return std::find(SignalsOfUsers.begin(), SignalsOfUsers.end(), signal) != SignalsOfUsers.end();
}

/// Hands the signals of users on while this lives, and ends this process by those that ended the child. Those that the
/// caller of the program had ignored stay so.
class CSignalsHandedOn
{
public:
    CSignalsHandedOn()
    {
        struct sigaction action = {};
        action.sa_handler = PassOnToChild;
        for (size_t i = 0; i < SignalsOfUsers.size(); ++i)
        {
            sigaction(SignalsOfUsers[i], nullptr, &_Former[i]);
            if (_Former[i].sa_handler != SIG_IGN)
                sigaction(SignalsOfUsers[i], &action, nullptr);
        }
    }
    ~CSignalsHandedOn()
    {
        for (size_t i = 0; i < SignalsOfUsers.size(); ++i)
            sigaction(SignalsOfUsers[i], &_Former[i], nullptr);
    }
    CSignalsHandedOn(const CSignalsHandedOn&) = delete;
    CSignalsHandedOn& operator=(const CSignalsHandedOn&) = delete;

private:
    std::array<struct sigaction, SignalsOfUsers.size()> _Former = {};
};

/// `signals` is the mask to be set when those of users can be handed on.
int WaitFor(pid_t child, const sigset_t& signals)
{
    // Who ends this process means the child, which is to be waited for: it may leave files behind.
    Child = child;
    const CSignalsHandedOn handedOn;
    sigprocmask(SIG_SETMASK, &signals, nullptr);
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw CHostError(ExitCode::Machine, std::string("cannot wait for the reading process: ") +
                                                    std::strerror(errno) + "; try again");
    return status;
}

/// Blocks the signals of users. Answers the mask that was set before.
sigset_t BlockSignals()
{
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int signal : SignalsOfUsers)
        sigaddset(&blocked, signal);
    sigset_t former;
    sigprocmask(SIG_BLOCK, &blocked, &former);
    return former;
}

} // namespace

CChildEnd RunInChild(const std::function<int()>& work)
{
    std::cout.flush();
    PartFiles::Share();
    const pid_t self = getpid();
    // One that came before the child is known would end this process alone.
    const sigset_t signals = BlockSignals();
    const pid_t child = fork();
    if (child == 0)
        EndAsChild(self, signals, work);
    if (child < 0)
    {
        const int reason = errno;
        sigprocmask(SIG_SETMASK, &signals, nullptr);
        throw CHostError(ExitCode::Machine, std::string("cannot start a process: ") + std::strerror(reason) +
                                                "; end other programs and try again");
    }
    const int status = WaitFor(child, signals);
    PartFiles::RemoveThoseOf(child);
    if (WIFEXITED(status))
        return {WEXITSTATUS(status), 0};
    const int signal = WTERMSIG(status);
    // Nobody reads a pipe any more: that is how every program ends then, without a word.
    if (IsOfUsers(signal) || signal == SIGPIPE)
    {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    return {0, signal};
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
