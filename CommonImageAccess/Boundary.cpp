#include "CommonImageAccess/Boundary.h"

#include "CommonUtil/Assertion.h"

namespace CIA
{

AC_Result CiaResultToAC_ResultArr()
{
    switch (errno)
    {
    case 0:
        return AC_RESULT_SUCCESS;
    case ENOENT:
        return AC_RESULT_FILE_NOT_FOUND;
    case ENOEXEC:
        return AC_RESULT_FILE_CORRUPT;
    case EACCES:
        return AC_RESULT_IN_USE;
    case EINVAL:
        return AC_RESULT_INVALID_PARAM;
    case ENOSYS:
        return AC_RESULT_UNSUPPORTED_OPERATION;
    case ENODATA:
        return AC_RESULT_PROPERTY_NOT_FOUND;
    case ENOPKG:
        return AC_RESULT_DATA_NOT_SUPPORTED;
    case EREMOTE:
        return AC_RESULT_MISSING_FILE;
    case EBADFD:
        return AC_RESULT_ILLEGAL_STATE;
    default:
        return AC_RESULT_FAILURE;
    }
}

AC_Result CiaResultToAC_Result()
{
    ZEL_ASSERT(errno != 0);
    const AC_Result result = CiaResultToAC_ResultArr();
    ZEL_ASSERT(result != AC_RESULT_FAILURE);
    return result;
}

AC_Result Complain(const char* text, const char* function, int line)
{
    CommonUtil::pw_flf(false, __FILE__, function, L"%s", line, text);
    return AC_RESULT_INVALID_PARAM;
}

} // namespace CIA
