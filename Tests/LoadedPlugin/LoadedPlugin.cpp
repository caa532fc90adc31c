// The exported functions as a host has them that loads the plug-in at run time: each is looked up in the shared object.
// Tests that are linked with this file play through it what others play over the linked layers.

#include "Tests/LoadedPlugin/LoadedPlugin.h"
#include "Brix/AccessorConveniences.h"

#include <dlfcn.h>
#include <mutex>
#include <stdexcept>

namespace
{

std::mutex moduleMutex;
void* module = nullptr; ///< the shared object while it is loaded

/// Looked up each time: it lies elsewhere each time that the shared object is loaded.
template <auto Function>
decltype(Function) Loaded(const char* name)
{
    return reinterpret_cast<decltype(Function)>(AddressInPlugin(name));
}

} // namespace

void* AddressInPlugin(const char* name)
{
    const std::lock_guard lock(moduleMutex);
    if (!module)
        module = dlopen(PLUGIN, RTLD_NOW | RTLD_LOCAL);
    if (!module)
        throw std::runtime_error(dlerror());
    void* address = dlsym(module, name);
    if (!address)
        throw std::runtime_error(std::string("the plug-in has no function ") + name);
    return address;
}

void UnloadPlugin()
{
    const std::lock_guard lock(moduleMutex);
    if (module && dlclose(module) != 0)
        throw std::runtime_error(dlerror());
    module = nullptr;
}

bool IsPluginInMemory()
{
    void* const found = dlopen(PLUGIN, RTLD_NOW | RTLD_NOLOAD);
    if (found)
        dlclose(found);
    return found != nullptr;
}

extern "C"
{

    AC_Result _AC_Connect()
    {
        return Loaded<&_AC_Connect>("_AC_Connect")();
    }

    AC_Result _AC_Disconnect()
    {
        return Loaded<&_AC_Disconnect>("_AC_Disconnect")();
    }

    int _AC_CanAccess(const wchar_t* fileName)
    {
        return Loaded<&_AC_CanAccess>("_AC_CanAccess")(fileName);
    }

    AC_Result _AC_Open(const wchar_t* fileName, int mode, AC_HIMG_DOC* phImgDoc)
    {
        return Loaded<&_AC_Open>("_AC_Open")(fileName, mode, phImgDoc);
    }

    AC_Result _AC_Close(AC_HIMG_DOC hImgDoc)
    {
        return Loaded<&_AC_Close>("_AC_Close")(hImgDoc);
    }

    AC_Result _AC_GetNumOfGroups(AC_HIMG_DOC hImgDoc, INT32* numOfGroups)
    {
        return Loaded<&_AC_GetNumOfGroups>("_AC_GetNumOfGroups")(hImgDoc, numOfGroups);
    }

    AC_Result _AC_GetGroup(AC_HIMG_DOC hImgDoc, int brixGroupID, AC_HMULTIDIMIMG* phMultiDimImg)
    {
        return Loaded<&_AC_GetGroup>("_AC_GetGroup")(hImgDoc, brixGroupID, phMultiDimImg);
    }

    AC_Result _AC_ReleaseGroup(AC_HMULTIDIMIMG hMultiDimImg)
    {
        return Loaded<&_AC_ReleaseGroup>("_AC_ReleaseGroup")(hMultiDimImg);
    }

    AC_Result _AC_GetNumOfLevels(AC_HMULTIDIMIMG hMultiDimImg, int* numOfLevels)
    {
        return Loaded<&_AC_GetNumOfLevels>("_AC_GetNumOfLevels")(hMultiDimImg, numOfLevels);
    }

    AC_Result _AC_GetLevelImageSize(AC_HMULTIDIMIMG hMultiDimImg, int levelID, CMN_RECT* pRect)
    {
        return Loaded<&_AC_GetLevelImageSize>("_AC_GetLevelImageSize")(hMultiDimImg, levelID, pRect);
    }

    AC_Result _AC_GetNumOfArea(AC_HMULTIDIMIMG hMultiDimImg, int levelID, INT32* numOfAreas)
    {
        return Loaded<&_AC_GetNumOfArea>("_AC_GetNumOfArea")(hMultiDimImg, levelID, numOfAreas);
    }

    AC_Result _AC_GetArea(AC_HMULTIDIMIMG hMultiDimImg, int levelID, UINT64 areaID, AC_HMULTIDIMTILE* phArea)
    {
        return Loaded<&_AC_GetArea>("_AC_GetArea")(hMultiDimImg, levelID, areaID, phArea);
    }

    AC_Result _AC_ReleaseArea(AC_HMULTIDIMTILE hMultiDimTile)
    {
        return Loaded<&_AC_ReleaseArea>("_AC_ReleaseArea")(hMultiDimTile);
    }

    AC_Result _AC_GetAreaPosition(AC_HMULTIDIMTILE hMultiDimTile, CMN_RECT* pRect)
    {
        return Loaded<&_AC_GetAreaPosition>("_AC_GetAreaPosition")(hMultiDimTile, pRect);
    }

    AC_Result _AC_GetImage(AC_HMULTIDIMTILE hMultiDimTile, const wchar_t* channelID, AC_AXIS_INFO* ztlCoordIndexes,
                           int numOfElesInZtlCoordIndexes, AC_HTILE* phDeepZoomTile)
    {
        return Loaded<&_AC_GetImage>("_AC_GetImage")(hMultiDimTile, channelID, ztlCoordIndexes,
                                                     numOfElesInZtlCoordIndexes, phDeepZoomTile);
    }

    AC_Result _AC_GetNextImage(AC_HAREA hMultiDimTile, const wchar_t** channelIds, int numOfChannels,
                               AC_AXIS_INFO* ztlCoordIndexes, int numOfZtlCoordIndexes, AC_HIMAGE* phDeepZoomTile)
    {
        return Loaded<&_AC_GetNextImage>("_AC_GetNextImage")(hMultiDimTile, channelIds, numOfChannels, ztlCoordIndexes,
                                                             numOfZtlCoordIndexes, phDeepZoomTile);
    }

    AC_Result _AC_GetImageBody(AC_HTILE hDeepZoomTile, CMN_RECT* pRect, BYTE* buffer, UINT64 bufferSize,
                               UINT64* sizeFilledOrNeeded)
    {
        return Loaded<&_AC_GetImageBody>("_AC_GetImageBody")(hDeepZoomTile, pRect, buffer, bufferSize,
                                                             sizeFilledOrNeeded);
    }

    AC_Result _AC_ReleaseImage(AC_HTILE hDeepZoomTile)
    {
        return Loaded<&_AC_ReleaseImage>("_AC_ReleaseImage")(hDeepZoomTile);
    }

    AC_Result _AC_GetImageSize(AC_HIMAGE hImage, CMN_RECT* pRect)
    {
        return Loaded<&_AC_GetImageSize>("_AC_GetImageSize")(hImage, pRect);
    }

    AC_Result _AC_GetImageAxis(AC_HTILE hDeepZoomTile, AC_AXIS_INFO* ztlIndexes, int maxAllowedEles,
                               int* filledOrNeededNumOfEles)
    {
        return Loaded<&_AC_GetImageAxis>("_AC_GetImageAxis")(hDeepZoomTile, ztlIndexes, maxAllowedEles,
                                                             filledOrNeededNumOfEles);
    }

    AC_Result _AC_GetImageChannelId(AC_HTILE hDeepZoomTile, wchar_t* channelID, int channelIdArrSize,
                                    int* channelIdSize)
    {
        return Loaded<&_AC_GetImageChannelId>("_AC_GetImageChannelId")(hDeepZoomTile, channelID, channelIdArrSize,
                                                                       channelIdSize);
    }

    AC_Result _AC_GetAxisName(AC_AxisType axisType, wchar_t* pBuffer, int nBufferSize, int* pnSize)
    {
        return Loaded<&_AC_GetAxisName>("_AC_GetAxisName")(axisType, pBuffer, nBufferSize, pnSize);
    }

    AC_Result _AC_GetAreaProperty(AC_HMULTIDIMTILE hMultiDimTile, const wchar_t* propsetKey,
                                  const AC_PARAMS* propsetParams, AC_HPROPSET* phPropset)
    {
        return Loaded<&_AC_GetAreaProperty>("_AC_GetAreaProperty")(hMultiDimTile, propsetKey, propsetParams, phPropset);
    }

    AC_Result _AC_GetFrameProperty(AC_HTILE hDeepZoomTile, const wchar_t* propsetKey, const AC_PARAMS* propsetParams,
                                   AC_HPROPSET* phPropset)
    {
        return Loaded<&_AC_GetFrameProperty>("_AC_GetFrameProperty")(hDeepZoomTile, propsetKey, propsetParams,
                                                                     phPropset);
    }

    AC_Result _AC_GetPropertyValue(AC_HPROPSET hPropSet, const wchar_t* propertyKey, AC_VALUE_WITH_TYPE* listOfValues,
                                   int sizeOfListOfValues, int* numOfValues)
    {
        return Loaded<&_AC_GetPropertyValue>("_AC_GetPropertyValue")(hPropSet, propertyKey, listOfValues,
                                                                     sizeOfListOfValues, numOfValues);
    }

    AC_Result _AC_GetPropertyKeyList(AC_HPROPSET hPropset, const wchar_t** keys, int sizeOfKeysArr, int* numOfKeys)
    {
        return Loaded<&_AC_GetPropertyKeyList>("_AC_GetPropertyKeyList")(hPropset, keys, sizeOfKeysArr, numOfKeys);
    }

    AC_Result _AC_ReleaseProperty(AC_HPROPSET hPropertySet)
    {
        return Loaded<&_AC_ReleaseProperty>("_AC_ReleaseProperty")(hPropertySet);
    }

    AC_Result _AC_GetFileVersion(AC_HIMG_DOC hImgDoc, CMN_VERSION_INFO* version)
    {
        return Loaded<&_AC_GetFileVersion>("_AC_GetFileVersion")(hImgDoc, version);
    }

    AC_Result _AC_GetLUT(AC_HMULTIDIMTILE hMultiDimTile, wchar_t* channelID, int* pTableBufferR, int* pTableBufferG,
                         int* pTableBufferB, int tableBufferSize, int* numOfEles)
    {
        return Loaded<&_AC_GetLUT>("_AC_GetLUT")(hMultiDimTile, channelID, pTableBufferR, pTableBufferG, pTableBufferB,
                                                 tableBufferSize, numOfEles);
    }

    AC_Result _AC_GetSupportedCustomData(AC_HIMG_DOC hImgDoc, AC_CUSTOM_DATA_INFO* buffer, int bufferSize,
                                         int* numOfEles)
    {
        return Loaded<&_AC_GetSupportedCustomData>("_AC_GetSupportedCustomData")(hImgDoc, buffer, bufferSize,
                                                                                 numOfEles);
    }

    AC_Result _AC_GetCustomData(AC_HIMG_DOC hImgDoc, wchar_t* key, const AC_PARAMS* params, BYTE* buffer,
                                UINT64 bufferSize, UINT64* numOfElesPopulated)
    {
        return Loaded<&_AC_GetCustomData>("_AC_GetCustomData")(hImgDoc, key, params, buffer, bufferSize,
                                                               numOfElesPopulated);
    }

    AC_Result _AC_GetGroupCustomData(AC_HMULTIDIMIMG hMultiDimImg, wchar_t* pszGroupCustomDataName,
                                     const AC_PARAM* params, BYTE* pBuffer, UINT64 nBufferSize, UINT64* pnSize)
    {
        return Loaded<&_AC_GetGroupCustomData>("_AC_GetGroupCustomData")(hMultiDimImg, pszGroupCustomDataName, params,
                                                                         pBuffer, nBufferSize, pnSize);
    }

    AC_Result _AC_GetThumbnailData(AC_HIMG_DOC hImgDoc, BYTE* buffer, UINT bufferSize, UINT* numOfEles)
    {
        return Loaded<&_AC_GetThumbnailData>("_AC_GetThumbnailData")(hImgDoc, buffer, bufferSize, numOfEles);
    }

    AC_Result _AC_GetNumOfFiles(const wchar_t* pszFileName, UINT* pnNumOfFiles)
    {
        return Loaded<&_AC_GetNumOfFiles>("_AC_GetNumOfFiles")(pszFileName, pnNumOfFiles);
    }

    AC_Result _AC_GetFileName(const wchar_t* pszFileName, UINT nUnitNumber, wchar_t* pszUnitFileName,
                              UINT* pnUnitFileNameSize)
    {
        return Loaded<&_AC_GetFileName>("_AC_GetFileName")(pszFileName, nUnitNumber, pszUnitFileName,
                                                           pnUnitFileNameSize);
    }

    AC_Result _AC_GetFileId(const wchar_t* pszFileName, wchar_t* pszFileId)
    {
        return Loaded<&_AC_GetFileId>("_AC_GetFileId")(pszFileName, pszFileId);
    }

    AC_Result GetImage_ParticularOrNext(bool particularOrNext, AC_HMULTIDIMTILE hMultiDimTile,
                                        const std::vector<const wchar_t*>& channelIDs, AC_AXIS_INFO* ztlCoordIndexes,
                                        int numOfElesInZtlCoordIndexes, AC_HTILE* phDeepZoomTile)
    {
        return Loaded<&GetImage_ParticularOrNext>("GetImage_ParticularOrNext")(
            particularOrNext, hMultiDimTile, channelIDs, ztlCoordIndexes, numOfElesInZtlCoordIndexes, phDeepZoomTile);
    }

    AC_Result GetValue(AC_HPROPERTY hProperty, const wchar_t* pszKey, std::vector<std::wstring>& strList)
    {
        return Loaded<&GetValue>("GetValue")(hProperty, pszKey, strList);
    }

    AC_Result GetDateTimeString(AC_HAREA hArea, std::wstring& strDateTime)
    {
        return Loaded<&GetDateTimeString>("GetDateTimeString")(hArea, strDateTime);
    }

    AC_Result GetSampleImageBody(AC_HAREA hArea, BYTE** pBuffer, UINT64* punSize)
    {
        return Loaded<&GetSampleImageBody>("GetSampleImageBody")(hArea, pBuffer, punSize);
    }

    AC_Result ReleaseAndClose(AC_HAREA hArea, AC_HGROUP hGroup, AC_HFILE hFile)
    {
        return Loaded<&ReleaseAndClose>("ReleaseAndClose")(hArea, hGroup, hFile);
    }
}
