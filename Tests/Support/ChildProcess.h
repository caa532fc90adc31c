#pragma once
#include <functional>
#include <ostream>

namespace TestSupport
{

/// How a process ended: by `Signal`, or with `ExitCode` when that is 0.
struct EndOfProcess
{
    int ExitCode = 0;
    int Signal = 0;

    bool operator==(const EndOfProcess&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const EndOfProcess& end);

constexpr EndOfProcess ExitedWith(int code)
{
    return {.ExitCode = code, .Signal = 0};
}
constexpr EndOfProcess KilledBy(int signal)
{
    return {.ExitCode = 0, .Signal = signal};
}

/// Runs `function` in a child process, whose exit code is what it returns (255 when it throws), and tells how that
/// ended. A child that has not ended after `timeoutInSeconds` is killed by SIGALRM.
EndOfProcess RunInChild(const std::function<int()>& function, unsigned timeoutInSeconds = 60);

} // namespace TestSupport
