#pragma once
#include "Brix/AccessorInterface.h"
#include "CommonUtil/Log.h"

#include <cerrno>
#include <utility>

namespace CIA
{

/// The result that belongs to errno: 0 for 0, 8 for a number that this program never gives as a reason. No arguments,
/// no exception.
AC_Result CiaResultToAC_ResultArr();

/// The same on a path of failure: an errno of 0, or one that is no reason, is a failed assertion.
AC_Result CiaResultToAC_Result();

/// Logs, as the function that calls it, what is wrong with an argument; AC_RESULT_INVALID_PARAM.
AC_Result Complain(const char* text, const char* function = __builtin_FUNCTION(), int line = __builtin_LINE());

/// Runs the body of an exported function, whose exceptions end here. A failed assertion without a reason in errno gives
/// AC_RESULT_FAILURE; with one it is logged and gives the result of the reason.
template <typename Body>
AC_Result AtBoundary(Body&& body, const char* function = __builtin_FUNCTION(), int line = __builtin_LINE()) noexcept
{
    try
    {
        return std::forward<Body>(body)();
    }
    catch (const char* text)
    {
        if (errno == 0)
            return AC_RESULT_FAILURE;
        CommonUtil::pw_flf(false, __FILE__, function, L"Error: %s", line, text);
    }
    catch (...)
    {
        if (errno == 0)
            return AC_RESULT_FAILURE;
    }
    return CiaResultToAC_ResultArr();
}

} // namespace CIA
