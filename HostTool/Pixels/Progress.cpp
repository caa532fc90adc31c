#include "HostTool/Pixels/Progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace HostTool
{

namespace
{

constexpr std::chrono::milliseconds TimeBetweenDrawings{100};
constexpr const char* ClearLine = "\r\033[K";

} // namespace

std::string ProgressLine(uint64_t done, uint64_t total, const std::string& unit, double seconds)
{
    constexpr uint64_t width = 30;
    const double part = total == 0 ? 1 : std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
    const auto filled = static_cast<size_t>(part * width);
    const auto percent = static_cast<int>(part * 100);
    std::string line = "[" + std::string(filled, '=') + std::string(width - filled, ' ') + "] " +
                       std::string(percent < 10    ? "  "
                                   : percent < 100 ? " "
                                                   : "") +
                       std::to_string(percent) + "%";
    if (done == 0 || seconds <= 0)
        return line;
    const double rate = static_cast<double>(done) / seconds;
    const auto left = static_cast<uint64_t>(std::ceil(static_cast<double>(total - std::min(done, total)) / rate));
    const uint64_t remainder = left % 60;
    return line + "  " + std::to_string(std::llround(rate)) + " " + unit + "/s  " + std::to_string(left / 60) +
           (remainder < 10 ? ":0" : ":") + std::to_string(remainder) + " left";
}

CProgress::CProgress(uint64_t total, std::string unit)
    : _Total(total), _Unit(std::move(unit)), _IsOnTerminal(isatty(STDERR_FILENO) != 0)
{
}

CProgress::~CProgress()
{
    if (_IsOnTerminal && _LastDrawn != _Start)
        std::fputs(ClearLine, stderr);
}

void CProgress::Advance(uint64_t count)
{
    _Done += count;
    if (!_IsOnTerminal || Clock::now() - _LastDrawn < TimeBetweenDrawings)
        return;
    _LastDrawn = Clock::now();
    Draw();
}

void CProgress::Draw() const
{
    const double seconds = std::chrono::duration<double>(_LastDrawn - _Start).count();
    std::fputs((ClearLine + ProgressLine(_Done, _Total, _Unit, seconds)).c_str(), stderr);
}

} // namespace HostTool
