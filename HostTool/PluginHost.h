#pragma once

#include "Brix/AccessorInterface.h"
#include "HostTool/PluginModule.h"

namespace HostTool
{

/// The plug-in as a host has it: loaded at run time, and reached through nothing but its exported functions.
class CPluginHost
{
    CPluginModule _Module; // before the functions, which are looked up in it

public:
    /// Throws CHostError if the plug-in can't be loaded or lacks a function.
    explicit CPluginHost(const std::filesystem::path& plugin) : _Module(plugin) {}

    explicit CPluginHost(CPluginModule module) : _Module(std::move(module)) {}

    const CPluginFunction<decltype(_AC_Open)> Open{_Module, "_AC_Open"};
    const CPluginFunction<decltype(_AC_Close)> Close{_Module, "_AC_Close"};
    const CPluginFunction<decltype(_AC_GetFileVersion)> GetFileVersion{_Module, "_AC_GetFileVersion"};
    const CPluginFunction<decltype(_AC_GetCustomData)> GetCustomData{_Module, "_AC_GetCustomData"};
    const CPluginFunction<decltype(_AC_GetNumOfGroups)> GetNumOfGroups{_Module, "_AC_GetNumOfGroups"};
    const CPluginFunction<decltype(_AC_GetGroup)> GetGroup{_Module, "_AC_GetGroup"};
    const CPluginFunction<decltype(_AC_ReleaseGroup)> ReleaseGroup{_Module, "_AC_ReleaseGroup"};
    const CPluginFunction<decltype(_AC_GetNumOfLevels)> GetNumOfLevels{_Module, "_AC_GetNumOfLevels"};
    const CPluginFunction<decltype(_AC_GetLevelImageSize)> GetLevelImageSize{_Module, "_AC_GetLevelImageSize"};
    const CPluginFunction<decltype(_AC_GetNumOfArea)> GetNumOfArea{_Module, "_AC_GetNumOfArea"};
    const CPluginFunction<decltype(_AC_GetArea)> GetArea{_Module, "_AC_GetArea"};
    const CPluginFunction<decltype(_AC_ReleaseArea)> ReleaseArea{_Module, "_AC_ReleaseArea"};
    const CPluginFunction<decltype(_AC_GetAreaPosition)> GetAreaPosition{_Module, "_AC_GetAreaPosition"};
    const CPluginFunction<decltype(_AC_GetAreaProperty)> GetAreaProperty{_Module, "_AC_GetAreaProperty"};
    const CPluginFunction<decltype(_AC_GetFrameProperty)> GetFrameProperty{_Module, "_AC_GetFrameProperty"};
    const CPluginFunction<decltype(_AC_GetPropertyValue)> GetPropertyValue{_Module, "_AC_GetPropertyValue"};
    const CPluginFunction<decltype(_AC_ReleaseProperty)> ReleaseProperty{_Module, "_AC_ReleaseProperty"};
    const CPluginFunction<decltype(_AC_GetImage)> GetImage{_Module, "_AC_GetImage"};
    const CPluginFunction<decltype(_AC_ReleaseImage)> ReleaseImage{_Module, "_AC_ReleaseImage"};
    const CPluginFunction<decltype(_AC_GetImageSize)> GetImageSize{_Module, "_AC_GetImageSize"};
    const CPluginFunction<decltype(_AC_GetImageBody)> GetImageBody{_Module, "_AC_GetImageBody"};
    const CPluginFunction<decltype(_AC_GetLUT)> GetLUT{_Module, "_AC_GetLUT"};
    const CPluginFunction<decltype(_AC_GetGroupCustomData)> GetGroupCustomData{_Module, "_AC_GetGroupCustomData"};
    const CPluginFunction<decltype(_AC_GetThumbnailData)> GetThumbnailData{_Module, "_AC_GetThumbnailData"};
};

/// Gives a handle back to the plug-in.
struct CReleaser
{
    AC_Result (*Release)(void*) = nullptr;
    void operator()(void* handle) const { Release(handle); }
};

/// A handle that is given back at the end of its scope.
using CHandle = std::unique_ptr<void, CReleaser>;

} // namespace HostTool
