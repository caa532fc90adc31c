#include "Tests/HostLife/State/HostState.h"

#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <cwchar>
#include <exception>
#include <filesystem>
#include <fstream>
#include <locale>
#include <new>
#include <sstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>
#include <xmmintrin.h>

namespace
{

template <typename Number>
std::string Hex(Number number)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::hex << number;
    return stream.str();
}

std::string BytesInHex(const void* bytes, size_t size)
{
    std::string text;
    for (size_t i = 0; i < size; ++i)
        text += Hex(unsigned{static_cast<const unsigned char*>(bytes)[i]}) + ' ';
    return text;
}

template <typename... Arguments>
std::string Printed(const char* format, Arguments... arguments)
{
    char text[100];
    std::snprintf(text, sizeof text, format, arguments...);
    return text;
}

void AddLanguage(CHostState& state)
{
    state["locale"] = std::setlocale(LC_ALL, nullptr);
    state["locale of the thread"] = Printed("%p", static_cast<void*>(uselocale(nullptr)));
    state["locale of streams"] = std::locale().name();
    state["number in print"] = Printed("%.2f", 1234.5);
    std::ostringstream stream;
    stream << 1234.5;
    state["number in a stream"] = stream.str();
    state["width of standard output"] = std::to_string(std::fwide(stdout, 0));
    state["time zone"] = Printed("%s %s %ld %d", tzname[0], tzname[1], timezone, daylight);
}

void AddSignals(CHostState& state)
{
    for (int number = 1; number < NSIG; ++number)
    {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) == 0)
            state["signal " + std::to_string(number)] = Hex(reinterpret_cast<uintptr_t>(action.sa_sigaction)) +
                                                        " flags " + Hex(action.sa_flags) + " mask " +
                                                        BytesInHex(&action.sa_mask, NSIG / 8);
    }
    sigset_t blocked = {};
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    state["blocked signals"] = BytesInHex(&blocked, NSIG / 8);
    stack_t stack = {};
    sigaltstack(nullptr, &stack);
    state["stack of signals"] = Printed("%p, %zu", stack.ss_sp, stack.ss_size);
    for (const int timer : {ITIMER_REAL, ITIMER_VIRTUAL, ITIMER_PROF})
    {
        itimerval value = {};
        getitimer(static_cast<__itimer_which_t>(timer), &value);
        state["timer " + std::to_string(timer)] = std::to_string(value.it_interval.tv_sec);
    }
}

/// "Umask", "NoNewPrivs" and so on: lines of what the kernel tells of a process.
void AddStatus(CHostState& state)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        for (const char* name : {"Umask", "Threads", "NoNewPrivs", "Seccomp", "CoreDumping", "CapEff"})
            if (line.starts_with(std::string(name) + ":"))
                state[name] = line;
}

void AddProcess(CHostState& state)
{
    AddStatus(state);
    state["folder"] = std::filesystem::current_path().string();
    for (char** variable = environ; *variable; ++variable)
        state["environment"] += std::string(*variable) + '\n';
    for (int resource = 0; resource < RLIMIT_NLIMITS; ++resource)
    {
        rlimit limit = {};
        getrlimit(static_cast<__rlimit_resource_t>(resource), &limit);
        state["limit " + std::to_string(resource)] = Hex(limit.rlim_cur) + ' ' + Hex(limit.rlim_max);
    }
    state["priority"] = std::to_string(getpriority(PRIO_PROCESS, 0));
    char name[17] = {};
    prctl(PR_GET_NAME, name);
    state["name of the thread"] = name;
    state["dumpable"] = std::to_string(prctl(PR_GET_DUMPABLE));
}

void AddFiles(CHostState& state)
{
    for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd"))
    {
        std::error_code error;
        const std::string target = std::filesystem::read_symlink(file, error).string();
        if (target.find("/proc/") != 0 || target.find("/fd") == std::string::npos) // the listing itself
            state["file " + file.path().filename().string()] = target;
    }
}

void AddProcessor(CHostState& state)
{
    constexpr unsigned Settings = ~static_cast<unsigned>(_MM_EXCEPT_MASK); // beside the flags that each division sets
    fenv_t environment = {};
    std::fegetenv(&environment);
    std::fesetenv(&environment); // reading it masks its traps
    state["rounding"] = std::to_string(std::fegetround());
    state["settings of the processor"] = Hex(_mm_getcsr() & Settings) + ' ' + Hex(environment.__control_word);
}

} // namespace

CHostState StateOfThisProcess()
{
    CHostState state;
    AddLanguage(state);
    AddSignals(state);
    AddProcess(state);
    AddFiles(state);
    AddProcessor(state);
    state["terminate handler"] = Hex(reinterpret_cast<uintptr_t>(std::get_terminate()));
    state["new handler"] = Hex(reinterpret_cast<uintptr_t>(std::get_new_handler()));
    state["functions at exit"] = std::to_string(NumOfFunctionsAtExit());
    return state;
}

std::string Difference(const CHostState& before, const CHostState& now)
{
    std::string text;
    for (const auto& [name, value] : before)
        if (const auto found = now.find(name); found == now.end())
            text += name + ": gone\n";
        else if (found->second != value)
            text += name + ": was " + value + ", is " + found->second + '\n';
    for (const auto& [name, value] : now)
        if (!before.contains(name))
            text += name + ": new, " + value + '\n';
    return text;
}
