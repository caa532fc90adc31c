#pragma once
#include "Fuzzing/Walk/FullWalk.h"

#include <cstddef>
#include <string>

namespace Fuzzing
{

/// Thrown by a walk that was told that it is over.
struct CWalkIsOver
{
};

/// Takes down what a document answers: each answer is looked at byte by byte, counted and made part of the digest.
class CAnswers
{
public:
    explicit CAnswers(const CWalkLimits& limits) : _limits(limits) {}

    const CWalkLimits& Limits() const { return _limits; }
    const CWalkAnswers& Get() const { return _answers; }
    void SetResultOfOpening(AC_Result result) { _answers.ResultOfOpening = result; }

    /// Calls an exported function with a clean errno and takes its result down.
    template <typename Function, typename... Arguments>
    AC_Result Ask(const char* question, Function&& function, Arguments... arguments)
    {
        if (_limits.BeforeCall)
            _limits.BeforeCall();
        CleanErrno();
        const auto result = static_cast<AC_Result>(function(arguments...));
        if (_limits.AfterCall)
            _limits.AfterCall(result);
        return TakeResult(question, result);
    }
    /// The same; true when it went well.
    template <typename Function, typename... Arguments>
    bool Succeeds(const char* question, Function&& function, Arguments... arguments)
    {
        return Ask(question, function, arguments...) == AC_RESULT_SUCCESS;
    }

    void Number(const char* what, int64_t value);
    void Real(const char* what, double value);
    void Text(const char* what, const wchar_t* text); ///< may be NULL
    void Bytes(const char* what, const void* bytes, size_t size);
    void Rect(const char* what, const CMN_RECT& rect);
    void Value(const AC_VALUE& value);

    /// An image was met for whose bytes there is no room.
    void NoteLargeBody() { _hasMetLargeBody = true; }
    bool HasMetLargeBody() const { return _hasMetLargeBody; }

private:
    static void CleanErrno();
    AC_Result TakeResult(const char* question, AC_Result result);
    void Take(const char* what, const std::string& told, const void* bytes, size_t size);

    const CWalkLimits& _limits;
    CWalkAnswers _answers;
    bool _hasMetLargeBody = false;
};

} // namespace Fuzzing
