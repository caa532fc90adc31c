#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace HostTool
{

/// A bar on a terminal that shows how far long work is, with its rate and the time that is left. Without a terminal
/// nothing is printed.
class CProgress
{
public:
    /// `total` of things called `unit`, in the plural: "tiles".
    CProgress(uint64_t total, std::string unit);
    /// Takes the bar away.
    ~CProgress();
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    /// Tells that so many more are done.
    void Advance(uint64_t count);

private:
    void Draw() const;

    using Clock = std::chrono::steady_clock;
    uint64_t _Total;
    std::string _Unit;
    uint64_t _Done = 0;
    bool _IsOnTerminal;
    Clock::time_point _Start = Clock::now();
    Clock::time_point _LastDrawn = _Start;
};

/// The line that the bar shows, `seconds` after the start: "[=====     ]  50%  120 tiles/s  0:03 left".
std::string ProgressLine(uint64_t done, uint64_t total, const std::string& unit, double seconds);

} // namespace HostTool
