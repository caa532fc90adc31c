// The exported functions that open and close documents and hand out their groups.

#include "Brix/AccessorConveniences.h"
#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/Handles.h"

using namespace CIA;
using namespace CommonUtil;

namespace
{

constexpr int OpenModeMask = AC_OM_WRITE | AC_OM_STREAMING;

void LogGroup(CMultiDimImage& image)
{
    ZEL_LOG("Info to help analyze test log: The CIA MultiDimImage ID is %u", image.ID());
    ZEL_WLOG(L"Info to help test against Image Viewer: The MultiDimImage name is '%s'", image.Name());
}

/// Builds all images, so that a document that cannot be served fails here and not at the first pixel.
AC_Result BuildGroups(CImgDoc& doc)
{
    const CLock lock(doc.ThreadSafetyMutex());
    const auto numOfGroups = static_cast<uint32_t>(doc.MultiDimImages().size());
    for (uint32_t i = 0; i < numOfGroups; ++i)
    {
        CMultiDimImage& image = *doc.BrixGetGroup(i);
        LogGroup(image);
        const auto numOfLevels = static_cast<int32_t>(image.DimensionOf(DimensionType::DimensionType_P).NumOfPoints());
        if (numOfLevels < 1)
            return AC_RESULT_FAILURE;
    }
    return errno == 0 ? AC_RESULT_SUCCESS : CiaResultToAC_Result();
}

} // namespace

extern "C"
{

    AC_Result _AC_Connect()
    {
        return AC_RESULT_SUCCESS;
    }

    AC_Result _AC_Disconnect()
    {
        return AC_RESULT_SUCCESS;
    }

    int _AC_CanAccess(const wchar_t* fileName)
    {
        return fileName ? 1 : 0;
    }

    AC_Result _AC_Open(const wchar_t* fileName, int mode, AC_HIMG_DOC* phImgDoc)
    {
        if (!fileName || !phImgDoc)
            return Complain("Error: fileName or phImgDoc is NULL!");
        if (mode & OpenModeMask)
            return Complain("Error: Write or Streaming mode currently not supported!");
        *phImgDoc = nullptr;
        return AtBoundary(
            [&]
            {
                const bool strictMode = (mode & AC_OM_FORCE) == 0;
                std::unique_ptr<CImgDoc> doc = NewImgDoc(fileName, strictMode);
                if (errno != 0)
                    return CiaResultToAC_Result();
                const AC_Result result = BuildGroups(*doc);
                if (result == AC_RESULT_SUCCESS)
                    *phImgDoc = doc.release();
                return result;
            });
    }

    AC_Result _AC_Close(AC_HIMG_DOC hImgDoc)
    {
        if (!hImgDoc)
            return Complain("hImgDoc is NULL!");
        const std::unique_ptr<CImgDoc> doc(&Doc(hImgDoc));
        return AC_RESULT_SUCCESS;
    }

    AC_Result _AC_GetNumOfGroups(AC_HIMG_DOC hImgDoc, INT32* numOfGroups)
    {
        if (!hImgDoc || !numOfGroups)
            return Complain("Error: params hImgDoc or numOfGroups are NULL!");
        return AtBoundary(
            [&]
            {
                const CLock lock(Doc(hImgDoc).ThreadSafetyMutex());
                *numOfGroups = static_cast<INT32>(Doc(hImgDoc).MultiDimImages().size());
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetGroup(AC_HIMG_DOC hImgDoc, int brixGroupID, AC_HMULTIDIMIMG* phMultiDimImg)
    {
        if (!hImgDoc || !phMultiDimImg)
            return Complain("Error: params hImgDoc or phMultiDimImg are NULL!");
        if (brixGroupID < 0)
            return Complain("Error: brixGroupID is negative!");
        return AtBoundary(
            [&]
            {
                const CLock lock(Doc(hImgDoc).ThreadSafetyMutex());
                if (static_cast<uint32_t>(brixGroupID) >= Doc(hImgDoc).MultiDimImages().size())
                    return Complain("Error: brixGroupID is too large!");
                CMultiDimImage* image = Doc(hImgDoc).BrixGetGroup(static_cast<uint32_t>(brixGroupID));
                *phMultiDimImg = image;
                if (!image)
                    return CiaResultToAC_Result();
                LogGroup(*image);
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_ReleaseGroup(AC_HMULTIDIMIMG hMultiDimImg)
    {
        return hMultiDimImg ? AC_RESULT_SUCCESS : AC_RESULT_INVALID_PARAM;
    }

    AC_Result ReleaseAndClose(AC_HAREA hArea, AC_HGROUP hGroup, AC_HFILE hFile)
    {
        AC_Result result = hArea ? _AC_ReleaseArea(hArea) : AC_RESULT_SUCCESS;
        if (hGroup)
        {
            const AC_Result groupResult = _AC_ReleaseGroup(hGroup);
            if (result == AC_RESULT_SUCCESS)
                result = groupResult;
        }
        if (hFile)
        {
            const AC_Result fileResult = _AC_Close(hFile);
            if (result == AC_RESULT_SUCCESS)
                result = fileResult;
        }
        return result;
    }

} // extern "C"
