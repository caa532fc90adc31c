#include "Fuzzing/Support/GuardedChild.h"

#include "Fuzzing/Support/SharedWithChild.h"
#include "PlatformAbstractionLayer/LogHook.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <new>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Fuzzing
{

namespace
{

#if defined(__has_feature) // clang's way to ask
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZEL_UNDER_A_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZEL_UNDER_A_SANITIZER
#endif

#ifdef ZEL_UNDER_A_SANITIZER
constexpr bool IsMemoryLimited = false;
constexpr unsigned SlowerBy = 10;
#else
constexpr bool IsMemoryLimited = true;
constexpr unsigned SlowerBy = 1;
#endif

enum ExitCode : int
{
    Answered = 0,
    NoMemory = 101,
    Thrown = 102
};

/// What the child leaves for its parent.
struct CNote
{
    std::atomic<bool> IsAbortLastLine = false;
};

CNote* noteOfChild = nullptr;

void NoteLine(const CLogLine& line)
{
    noteOfChild->IsAbortLastLine = line.Text == L"abort() called."; // a text of the file may hold the words
}

uint64_t BytesOfAddressSpace()
{
    uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
}

void LimitTheChild(const CChildLimits& limits)
{
    const itimerval time{.it_interval = {}, .it_value = {.tv_sec = limits.SecondsOfProcessor * SlowerBy, .tv_usec = 0}};
    setitimer(ITIMER_PROF, &time, nullptr); // user and system time; the signal ends the process
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    alarm(60); // one that waits uses no processor
    if (!IsMemoryLimited)
        return;
    const rlim_t bytes = BytesOfAddressSpace() + limits.BytesOfMemory;
    const rlimit memory{bytes, bytes};
    setrlimit(RLIMIT_AS, &memory);
    // A failed allocation would become a result code, and nobody would see that the limit was hit.
    std::set_new_handler([] { _exit(NoMemory); });
}

void SilenceTheChild()
{
    const int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
}

[[noreturn]] void RunTheChild(const std::function<void()>& body, const CChildLimits& limits, bool isLoud, CNote& note)
{
    if (!isLoud)
        SilenceTheChild();
    noteOfChild = &note;
    SetLogReader(NoteLine);
    LimitTheChild(limits);
    int code = Answered;
    try
    {
        body();
    }
    catch (...)
    {
        code = Thrown;
    }
    _exit(code);
}

double SecondsOf(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

CEndOfChild EndOf(int status, const CNote& note)
{
    if (!WIFSIGNALED(status))
        switch (WEXITSTATUS(status))
        {
        case Answered:
            return {.How = HowItEnded::WithAnswers};
        case NoMemory:
            return {.How = HowItEnded::OutOfMemory};
        case Thrown:
            return {.How = HowItEnded::WithAnException};
        default: // that of a sanitizer
            return {.How = HowItEnded::ByASignal};
        }
    const int signal = WTERMSIG(status);
    if (signal == SIGPROF || signal == SIGALRM)
        return {.How = HowItEnded::OutOfTime, .Signal = signal};
    if (signal == SIGABRT && note.IsAbortLastLine)
        return {.How = HowItEnded::ByDesign, .Signal = signal};
    return {.How = HowItEnded::ByASignal, .Signal = signal};
}

} // namespace

std::string CEndOfChild::ToString() const
{
    switch (How)
    {
    case HowItEnded::WithAnswers:
        return "answered";
    case HowItEnded::ByDesign:
        return "ended the process by design";
    case HowItEnded::ByASignal:
        return Signal != 0 ? std::string("crashed: ") + strsignal(Signal) : "ended the process unasked";
    case HowItEnded::OutOfTime:
        return "took too long";
    case HowItEnded::OutOfMemory:
        return "took too much memory";
    case HowItEnded::WithAnException:
        return "threw an exception";
    }
    return "unknown";
}

bool IsMemoryOfChildrenLimited()
{
    return IsMemoryLimited;
}

CEndOfChild RunGuarded(const std::function<void()>& body, const CChildLimits& limits, bool isLoud)
{
    const CSharedWithChild<CNote> note;
    std::fflush(nullptr); // else the child would print what its parent has not printed yet
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("cannot start a process");
    if (child == 0)
        RunTheChild(body, limits, isLoud, *note);
    int status = 0;
    rusage usage{};
    while (wait4(child, &status, 0, &usage) < 0)
        if (errno != EINTR)
            throw std::runtime_error("cannot wait for a process");
    CEndOfChild end = EndOf(status, *note);
    end.SecondsOfProcessor = SecondsOf(usage.ru_utime) + SecondsOf(usage.ru_stime);
    end.BytesOfMemory = static_cast<uint64_t>(usage.ru_maxrss) * 1024;
    return end;
}

} // namespace Fuzzing
