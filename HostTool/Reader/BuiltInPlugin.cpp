#include "HostTool/Reader/BuiltInPlugin.h"

namespace HostTool
{

namespace
{

template <typename Function>
void* AddressOf(Function* function)
{
    return reinterpret_cast<void*>(function);
}

} // namespace

CPluginHost BuiltInPlugin()
{
    return CPluginHost(CPluginModule({{"_AC_Open", AddressOf(_AC_Open)},
                                      {"_AC_Close", AddressOf(_AC_Close)},
                                      {"_AC_GetFileVersion", AddressOf(_AC_GetFileVersion)},
                                      {"_AC_GetCustomData", AddressOf(_AC_GetCustomData)},
                                      {"_AC_GetNumOfGroups", AddressOf(_AC_GetNumOfGroups)},
                                      {"_AC_GetGroup", AddressOf(_AC_GetGroup)},
                                      {"_AC_ReleaseGroup", AddressOf(_AC_ReleaseGroup)},
                                      {"_AC_GetNumOfLevels", AddressOf(_AC_GetNumOfLevels)},
                                      {"_AC_GetLevelImageSize", AddressOf(_AC_GetLevelImageSize)},
                                      {"_AC_GetNumOfArea", AddressOf(_AC_GetNumOfArea)},
                                      {"_AC_GetArea", AddressOf(_AC_GetArea)},
                                      {"_AC_ReleaseArea", AddressOf(_AC_ReleaseArea)},
                                      {"_AC_GetAreaPosition", AddressOf(_AC_GetAreaPosition)},
                                      {"_AC_GetAreaProperty", AddressOf(_AC_GetAreaProperty)},
                                      {"_AC_GetFrameProperty", AddressOf(_AC_GetFrameProperty)},
                                      {"_AC_GetPropertyValue", AddressOf(_AC_GetPropertyValue)},
                                      {"_AC_ReleaseProperty", AddressOf(_AC_ReleaseProperty)},
                                      {"_AC_GetImage", AddressOf(_AC_GetImage)},
                                      {"_AC_ReleaseImage", AddressOf(_AC_ReleaseImage)},
                                      {"_AC_GetImageSize", AddressOf(_AC_GetImageSize)},
                                      {"_AC_GetImageBody", AddressOf(_AC_GetImageBody)},
                                      {"_AC_GetLUT", AddressOf(_AC_GetLUT)},
                                      {"_AC_GetGroupCustomData", AddressOf(_AC_GetGroupCustomData)},
                                      {"_AC_GetThumbnailData", AddressOf(_AC_GetThumbnailData)}}));
}

CPluginHost HostOf(const std::filesystem::path& plugin)
{
    if (plugin.empty())
        return BuiltInPlugin();
    return CPluginHost(plugin);
}

} // namespace HostTool
