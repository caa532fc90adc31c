#pragma once
#include "Brix/PlatformAbstractionLayer.h"
#include "CommonUtil/Numbers.h"

#include <algorithm>
#include <string_view>

/// Stores the size of `text`, its zeros included, and copies it when it fits; else writes nothing and tells so. A text
/// of 2^32 characters or more is a failed assertion.
template <typename Char>
int FillOrTellSize(std::basic_string_view<Char> text, Char* result, uint32_t resultSize, uint32_t* sizeFilledOrNeeded)
{
    *sizeFilledOrNeeded = CommonUtil::ToUint32WithCheck(text.size());
    if (text.size() > resultSize)
        return PAL_RESULT_TOO_SMALL;
    std::copy(text.begin(), text.end(), result);
    return PAL_RESULT_SUCCESS;
}

/// The same for the calls that are asked for the size alone by a null buffer of size 0. A buffer without a size, or a
/// size without a buffer, fails.
template <typename Char>
int FillOrTellSizeAlone(std::basic_string_view<Char> text, Char* result, uint32_t resultSize,
                        uint32_t* sizeFilledOrNeeded)
{
    if (!sizeFilledOrNeeded || (result == nullptr) != (resultSize == 0))
        return PAL_RESULT_FAILURE;
    const int filled = FillOrTellSize(text, result, resultSize, sizeFilledOrNeeded);
    return result ? filled : PAL_RESULT_SUCCESS;
}
