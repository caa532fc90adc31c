#pragma once
#include "CommonUtil/Assertion.h"

#include <cstdint>
#include <type_traits>

namespace CommonUtil
{

/// A view of `Size` elements from `Arr` on; it owns nothing. In the two-call protocol of a sized result a callee
/// overwrites `Size` with the count that it filled or needs.
template <typename T>
struct CArrayStartAndSize
{
    T* Arr = nullptr;
    uint32_t Size = 0;

    CArrayStartAndSize() = default;
    CArrayStartAndSize(T* arr, uint32_t size) : Arr(arr), Size(size) {}

    /// For wide text: asserts that there is an array and that a terminating zero lies within the view, so that `Arr`
    /// may be used as a wide string.
    void CheckLen() const requires std::is_same_v<std::remove_const_t<T>, wchar_t>
    {
        ZEL_ASSERT(Arr);
        uint32_t length = 0;
        while (length < Size && Arr[length] != L'\0')
            ++length;
        ZEL_ASSERT(Size > length);
    }
};

} // namespace CommonUtil
