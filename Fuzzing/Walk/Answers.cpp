#include "Fuzzing/Walk/Answers.h"

#include <cerrno>
#include <cwchar>
#include <functional>
#include <string_view>

namespace Fuzzing
{

namespace
{

constexpr uint64_t StartOfDigest = 0xCBF29CE484222325u; // that of FNV-1a, as is the prime
constexpr uint64_t PrimeOfDigest = 0x100000001B3u;

std::string WordsOf(std::string_view bytes)
{
    const std::string size = std::to_string(bytes.size()) + " bytes, ";
    if (bytes.find_first_not_of('\0') == std::string_view::npos)
        return size + "all 0";
    return size + "hash " + std::to_string(std::hash<std::string_view>()(bytes));
}

} // namespace

void CAnswers::CleanErrno()
{
    errno = 0;
}

void CAnswers::Take(const char* what, const std::string& told, const void* bytes, size_t size)
{
    ++_answers.NumOfAnswers;
    if (_answers.Digest == 0)
        _answers.Digest = StartOfDigest;
    for (size_t i = 0; i < size; ++i)
        _answers.Digest = (_answers.Digest ^ static_cast<const unsigned char*>(bytes)[i]) * PrimeOfDigest;
    if (_limits.Tell)
        _limits.Tell(std::string(what) + ": " + told);
}

AC_Result CAnswers::TakeResult(const char* question, AC_Result result)
{
    if (_limits.IsOver && _limits.IsOver())
        throw CWalkIsOver();
    if (result != AC_RESULT_SUCCESS)
        ++_answers.NumOfFailures;
    Number(question, result);
    return result;
}

void CAnswers::Number(const char* what, int64_t value)
{
    Take(what, _limits.Tell ? std::to_string(value) : std::string(), &value, sizeof value);
}

void CAnswers::Real(const char* what, double value)
{
    Take(what, _limits.Tell ? std::to_string(value) : std::string(), &value, sizeof value);
}

void CAnswers::Text(const char* what, const wchar_t* text)
{
    if (!text)
        return Take(what, "no text", "", 1);
    const size_t length = std::wcslen(text);
    std::string told;
    if (_limits.Tell)
        for (size_t i = 0; i < length; ++i)
            told += text[i] >= L' ' && text[i] <= L'~' ? static_cast<char>(text[i]) : '?';
    Take(what, told, text, length * sizeof *text);
}

void CAnswers::Bytes(const char* what, const void* bytes, size_t size)
{
    Take(what, _limits.Tell ? WordsOf({static_cast<const char*>(bytes), size}) : std::string(), bytes, size);
}

void CAnswers::Rect(const char* what, const CMN_RECT& rect)
{
    for (const UINT64 number : {rect.x, rect.y, rect.width, rect.height})
        Number(what, static_cast<int64_t>(number));
}

void CAnswers::Value(const AC_VALUE& value)
{
    Number("type of value", value.nType);
    switch (value.nType)
    {
    case AC_VT_INTEGER:
        return Number("value", value.value.nInteger);
    case AC_VT_DOUBLE:
        return Real("value", value.value.dDouble);
    case AC_VT_STRING:
        return Text("value", value.value.pszString);
    case AC_VT_POINT:
        Number("value", value.value.point.x);
        return Number("value", value.value.point.y);
    case AC_VT_RECT:
        return Rect("value", value.value.rRect);
    }
}

} // namespace Fuzzing
