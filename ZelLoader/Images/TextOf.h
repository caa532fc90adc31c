#pragma once
#include "CommonUtil/ArrayStartAndSize.h"

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

/// The value of a field that must be there; a missing one is a failed assertion.
template <typename T>
T ValueOf(const T* value)
{
    ZEL_ASSERT(value);
    return *value;
}

} // namespace Zel
