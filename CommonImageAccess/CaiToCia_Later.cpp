// The exported functions for properties, look-up tables, custom data and file lists, which this version does not
// answer yet: a host is told so by AC_RESULT_UNSUPPORTED_OPERATION.

#include "Brix/AccessorConveniences.h"

extern "C"
{

    AC_Result _AC_GetAreaProperty(AC_HMULTIDIMTILE, const wchar_t*, const AC_PARAMS*, AC_HPROPSET*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetFrameProperty(AC_HTILE, const wchar_t*, const AC_PARAMS*, AC_HPROPSET*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetPropertyValue(AC_HPROPSET, const wchar_t*, AC_VALUE_WITH_TYPE*, int, int*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetPropertyKeyList(AC_HPROPSET, const wchar_t**, int, int*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_ReleaseProperty(AC_HPROPSET)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetFileVersion(AC_HIMG_DOC, CMN_VERSION_INFO*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetLUT(AC_HMULTIDIMTILE, wchar_t*, int*, int*, int*, int, int*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetSupportedCustomData(AC_HIMG_DOC, AC_CUSTOM_DATA_INFO*, int, int*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetCustomData(AC_HIMG_DOC, wchar_t*, const AC_PARAMS*, BYTE*, UINT64, UINT64*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetGroupCustomData(AC_HMULTIDIMIMG, wchar_t*, const AC_PARAM*, BYTE*, UINT64, UINT64*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetThumbnailData(AC_HIMG_DOC, BYTE*, UINT, UINT*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetNumOfFiles(const wchar_t*, UINT*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetFileName(const wchar_t*, UINT, wchar_t*, UINT*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result _AC_GetFileId(const wchar_t*, wchar_t*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }

    AC_Result GetValue(AC_HPROPERTY, const wchar_t*, std::vector<std::wstring>&)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result GetDateTimeString(AC_HAREA, std::wstring&)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }
    AC_Result GetSampleImageBody(AC_HAREA, BYTE**, UINT64*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }

} // extern "C"
