#include "PlatformAbstractionLayer/WideStrings.h"

#include "CommonUtil/ClassicLocale.h"
#include "CommonUtil/PlatformCalls.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <limits>
#include <string>
#include <string_view>

namespace
{

/// Writes `text` and its zero, or empties the target when it does not fit.
int Put(std::wstring_view text, wchar_t* target, size_t size)
{
    if (text.size() >= size)
    {
        *target = L'\0';
        return ERANGE;
    }
    std::wmemmove(target, text.data(), text.size());
    target[text.size()] = L'\0';
    return 0;
}

/// The rest of the work of the two calls that print at most so many characters. `length` is what the C library told:
/// negative or too large when the text did not fit.
template <typename Char>
int EndOfPrint(Char* buffer, size_t size, size_t count, int length)
{
    if (length >= 0 && static_cast<size_t>(length) < size && static_cast<size_t>(length) <= count)
        return length;
    const size_t cut = std::min(size - 1, count);
    buffer[count == _TRUNCATE || count < size ? cut : 0] = Char{};
    return -1;
}

/// True when each conversion of a scan format is one of a number.
bool ReadsNumbersOnly(std::wstring_view format)
{
    for (size_t percent = format.find(L'%'); percent != std::wstring_view::npos; percent = format.find(L'%', percent))
    {
        const size_t conversion = format.find_first_not_of(L"*0123456789hlLqjzt", percent + 1);
        if (conversion == std::wstring_view::npos ||
            std::wstring_view(L"diouxXaAeEfFgGn%").find(format[conversion]) == std::wstring_view::npos)
            return false;
        percent = conversion + 1;
    }
    return true;
}

} // namespace

int wcscpy_s(wchar_t* target, size_t size, const wchar_t* source)
{
    if (!target || !source || size == 0)
        return EINVAL;
    return Put(source, target, size);
}

int wcscat_s(wchar_t* target, size_t size, const wchar_t* source)
{
    if (!target || !source || size == 0)
        return EINVAL;
    const size_t length = wcsnlen(target, size);
    if (length == size)
        return EINVAL;
    const int error = Put(source, target + length, size - length);
    if (error != 0)
        *target = L'\0';
    return error;
}

int wcsncpy_s(wchar_t* target, size_t size, const wchar_t* source, size_t count)
{
    if (!target || !source || size == 0)
        return EINVAL;
    const size_t most = count == _TRUNCATE ? size - 1 : std::min(count, size); // `size` characters do not fit already
    return Put(std::wstring_view(source, wcsnlen(source, most)), target, size);
}

int _wtoi(const wchar_t* text)
{
    if (!text)
        return 0;
    const long number = std::wcstol(text, nullptr, 10);
    return static_cast<int>(std::clamp<long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

double _wtof(const wchar_t* text)
{
    const CommonUtil::CClassicLocale classicLocale;
    return text ? std::wcstod(text, nullptr) : 0.0;
}

char* itoa(int value, char* result, int base)
{
    constexpr size_t MaxNumOfDigits = 33;
    *result = '\0';
    if (base < 2 || base > 36)
        return result;
    const auto end = base == 10
                         ? std::to_chars(result, result + MaxNumOfDigits, value, base).ptr
                         : std::to_chars(result, result + MaxNumOfDigits, static_cast<unsigned>(value), base).ptr;
    *end = '\0';
    return result;
}

int _wcslwr_s(wchar_t* text, size_t size)
{
    if (!text || wcsnlen(text, size) == size)
        return EINVAL;
    for (; *text != L'\0'; ++text)
        if (*text >= L'A' && *text <= L'Z')
            *text += L'a' - L'A';
    return 0;
}

int _finite(double value)
{
    return std::isfinite(value) ? 1 : 0;
}

int vsnprintf_s(char* buffer, size_t size, size_t count, const char* format, std::va_list arguments)
{
    if (!buffer || size == 0 || !format)
        return -1;
    const CommonUtil::CClassicLocale classicLocale;
    return EndOfPrint(buffer, size, count, std::vsnprintf(buffer, size, format, arguments));
}

int _vsnwprintf_s(wchar_t* buffer, size_t size, size_t count, const wchar_t* format, std::va_list arguments)
{
    if (!buffer || size == 0 || !format)
        return -1;
    const CommonUtil::CClassicLocale classicLocale;
    std::wstring holder;
    return EndOfPrint(buffer, size, count,
                      std::vswprintf(buffer, size, PAL_fmt_return_scstr(format, holder), arguments));
}

int sprintf_s(char* buffer, size_t size, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf_s(buffer, size, size, format, arguments);
    va_end(arguments);
    return length;
}

int wsprintf(wchar_t* buffer, const wchar_t* format, ...)
{
    constexpr size_t Size = 1024;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = _vsnwprintf_s(buffer, Size, _TRUNCATE, format, arguments);
    va_end(arguments);
    return length < 0 && buffer ? static_cast<int>(wcsnlen(buffer, Size)) : length;
}

int swscanf_s(const wchar_t* text, const wchar_t* format, ...)
{
    if (!text || !format || !ReadsNumbersOnly(format))
        return -1;
    const CommonUtil::CClassicLocale classicLocale;
    std::va_list arguments;
    va_start(arguments, format);
    const int numOfNumbers = std::vswscanf(text, format, arguments);
    va_end(arguments);
    return numOfNumbers;
}
