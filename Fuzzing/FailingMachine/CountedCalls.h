#pragma once
#include <cstdint>

namespace Fuzzing
{

/// How much of the machine fails.
struct FailureSpan
{
    enum E
    {
        OneCall,
        RestOfFunction, ///< one call, and all that follow before the exported function returns
        AllCalls        ///< one call, and all that follow
    };
};

/// Calls of one sort, such as allocations, counted while an exported function runs; one of them can be made to fail.
/// For one thread: a test that lets its machine fail does nothing beside.
class CCountedCalls
{
public:
    /// Counts from 0 on and lets no call fail.
    void StartCounting() { *this = {}; }
    /// Counts from 0 on and lets the call of that number, from 1, fail.
    void LetFail(uint64_t number, FailureSpan::E span = FailureSpan::OneCall)
    {
        *this = {};
        _numberToFail = number;
        _span = span;
    }
    uint64_t NumOfCalls() const { return _numOfCalls; }
    bool HasFailed() const { return _hasFailed; }

    // The exported functions of the plug-in run between these.
    void EnterFunction()
    {
        _isInFunction = true;
        _hasFailedInFunction = false;
    }
    void LeaveFunction() { _isInFunction = false; }

    /// Counts a call; true when it is to fail.
    bool DoesNextFail()
    {
        if (!_isInFunction)
            return false;
        const bool fails = ++_numOfCalls == _numberToFail ||
                           (_span == FailureSpan::RestOfFunction && _hasFailedInFunction) ||
                           (_span == FailureSpan::AllCalls && _hasFailed);
        _hasFailedInFunction = _hasFailedInFunction || fails;
        _hasFailed = _hasFailed || fails;
        return fails;
    }

private:
    bool _isInFunction = false;
    bool _hasFailedInFunction = false;
    bool _hasFailed = false;
    FailureSpan::E _span = FailureSpan::OneCall;
    uint64_t _numOfCalls = 0;
    uint64_t _numberToFail = 0;
};

} // namespace Fuzzing
