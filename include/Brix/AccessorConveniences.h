#ifndef BRIX_ACCESSOR_CONVENIENCES_H
#define BRIX_ACCESSOR_CONVENIENCES_H
/// Exported conveniences over the functions of AccessorInterface.h. They take C++ types, so a host that calls them must
/// be built with the same C++ standard library as the plug-in.

#include "Brix/AccessorInterface.h"

#include <string>
#include <vector>

#pragma GCC visibility push(default)

extern "C"
{
    /// _AC_GetImage (particularOrNext true, exactly one channel) and _AC_GetNextImage (false) in one. The channel texts
    /// are borrowed for the call.
    AC_Result GetImage_ParticularOrNext(bool particularOrNext, AC_HMULTIDIMTILE hMultiDimTile,
                                        const std::vector<const wchar_t*>& channelIDs, AC_AXIS_INFO* ztlCoordIndexes,
                                        int numOfElesInZtlCoordIndexes, AC_HTILE* phDeepZoomTile);

    /// Appends the values of a key, which must all be texts, to `strList` and releases the property set, also on
    /// failure. AC_RESULT_INVALID_PARAM: a value that is no text, or what _AC_GetPropertyValue complains of.
    /// AC_RESULT_FAILURE: the list is empty in the end.
    AC_Result GetValue(AC_HPROPERTY hProperty, const wchar_t* pszKey, std::vector<std::wstring>& strList);

    /// The creation time and, directly behind it without a separator, the time of the last update.
    /// Answers the first failure of the property calls behind it.
    AC_Result GetDateTimeString(AC_HAREA hArea, std::wstring& strDateTime);

    /// The bytes of a representative image of an area: its first channel in the middle of its axes. On success the
    /// caller owns *pBuffer, *punSize bytes made by new[]; on failure nothing is left to free, and *punSize is the size
    /// of the image when that was known. AC_RESULT_FAILURE: the group has no axis, or the image claims more than 256 MB
    /// and more than the document and the group's store have together.
    AC_Result GetSampleImageBody(AC_HAREA hArea, uint8_t** pBuffer, uint64_t* punSize);

    /// Releases the area and the group and closes the document; each may be NULL and is then passed over. The document
    /// is closed whatever happens before; the first failure is answered.
    AC_Result ReleaseAndClose(AC_HAREA hArea, AC_HGROUP hGroup, AC_HFILE hFile);
}

#pragma GCC visibility pop

#endif
