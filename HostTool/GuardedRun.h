#pragma once

#include "HostTool/HostError.h"

#include <array>
#include <csignal>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace HostTool
{

/// How a child process ended.
struct CChildEnd
{
    int ExitCode = 0;
    int Signal = 0; ///< by which it ended without an exit code; 0 if it has one

    bool IsEarly() const { return Signal != 0; }
};

/// The signals by which somebody ends a program, or a timer that he set.
constexpr std::array SignalsOfUsers = {SIGINT,  SIGTERM, SIGHUP,    SIGQUIT, SIGUSR1, SIGUSR2,
                                       SIGALRM, SIGPROF, SIGVTALRM, SIGIO,   SIGPWR};
bool IsOfUser(int signal);

/// Ends this process by a signal, as it ended a child.
void EndBySignal(int signal);

/// Child processes. While this lives, the signals of users go to them: who ends this process means the children, and
/// they are to be waited for, since what they leave half-written has to be taken away. One at a time in a process.
class CChildren
{
public:
    CChildren();
    /// Ends those that still run, and waits for them.
    ~CChildren();
    CChildren(const CChildren&) = delete;
    CChildren& operator=(const CChildren&) = delete;

    /// Runs `work` in a child, which ends with its exit code. What `work` throws goes on, in the child only.
    /// Throws CHostError if there can't be a child.
    pid_t Start(const std::function<int()>& work);

    struct CEnded
    {
        pid_t Child = 0;
        CChildEnd End;
    };
    /// Waits for the next one to end, and takes away what it left half-written. Throws CHostError.
    CEnded Wait();

private:
    std::array<struct sigaction, SignalsOfUsers.size()> _FormerActions = {};
    sigset_t _FormerMask = {};
};

/// Runs `work` in a child. A signal by which users and pipes end programs ends this process, too. Throws CHostError.
CChildEnd RunInChild(const std::function<int()>& work);

/// What is to be said of a document whose reading ended early: that the machine ended it, or what the document holds.
CHostError EarlyEnd(const std::string& document, const CChildEnd& end);

/// Runs `work` in a child process and answers its exit code. A document may hold data at which the plug-in ends the
/// process by design: that ends the child, and the user gets one line about `document` in place of a core dump.
int RunGuarded(const std::string& document, const std::function<int()>& work);

} // namespace HostTool
