#pragma once
#include <cstdint>
#include <functional>
#include <string>

namespace Fuzzing
{

/// How the child that ran an input ended.
struct HowItEnded
{
    enum E
    {
        WithAnswers, ///< it came back
        ByDesign,    ///< by the plug-in's own hand, after "abort() called." was logged
        ByASignal,   ///< a crash, and any abort without that line
        OutOfTime,   ///< more time on a processor than allowed
        OutOfMemory, ///< an allocation beyond what is allowed
        WithAnException
    };
};

struct CEndOfChild
{
    HowItEnded::E How = HowItEnded::WithAnswers;
    int Signal = 0;
    double SecondsOfProcessor = 0;
    uint64_t BytesOfMemory = 0; ///< the most that lay in memory at once, what it had from its parent included

    bool IsGood() const { return How == HowItEnded::WithAnswers || How == HowItEnded::ByDesign; }
    std::string ToString() const;
};

/// What a child may use. Under a sanitizer, whose bookkeeping needs address space without end, memory is not limited.
struct CChildLimits
{
    unsigned SecondsOfProcessor = 2;
    uint64_t BytesOfMemory = 256u << 20; ///< beyond what the parent has
};

/// False under a sanitizer.
bool IsMemoryOfChildrenLimited();

/// Runs `body` in a child process and tells how that ended. The child writes nothing unless it is told to by `isLoud`.
CEndOfChild RunGuarded(const std::function<void()>& body, const CChildLimits& limits = {}, bool isLoud = false);

} // namespace Fuzzing
