#pragma once
#include "CommonUtil/ArrayStartAndSize.h"
#include "CommonUtil/Numbers.h"

#include <cwchar>
#include <string>

namespace Zel
{

/// The text of a field up to its terminating zero, or all of it where that is missing.
inline std::wstring TextOf(const CommonUtil::CArrayStartAndSize<wchar_t>& text)
{
    return {text.Arr, wcsnlen(text.Arr, text.Size)};
}

/// The text of a field that must be there; a missing one is a failed assertion.
inline std::wstring TextOf(const CommonUtil::CArrayStartAndSize<wchar_t>* text)
{
    ZEL_ASSERT(text);
    return TextOf(*text);
}

/// The text of a field that may be absent; asserts that it ends within the field. Lives as long as the field.
inline const wchar_t* TextOrEmpty(const CommonUtil::CArrayStartAndSize<wchar_t>* text)
{
    if (!text)
        return L"";
    text->CheckLen();
    return text->Arr;
}

/// "1.5,2": the first `count` elements; asserts that there are as many.
template <typename T, typename ToText>
std::string Joined(const CommonUtil::CArrayStartAndSize<T>& numbers, uint32_t count, ToText toText)
{
    ZEL_ASSERT(numbers.Size >= count);
    std::string text;
    for (uint32_t i = 0; i < count; ++i)
        text += (i == 0 ? "" : ",") + toText(numbers.Arr[i]);
    return text;
}

/// "1.5,2": the first two elements, with as many digits as tell every double apart; asserts that there are two.
inline std::string TwoDoubles(const CommonUtil::CArrayStartAndSize<double>& numbers)
{
    return Joined(numbers, 2, [](double number) { return CommonUtil::ToGeneralStr(number, 17); });
}

/// The value of a field that must be there; a missing one is a failed assertion.
template <typename T>
T ValueOf(const T* value)
{
    ZEL_ASSERT(value);
    return *value;
}

} // namespace Zel
