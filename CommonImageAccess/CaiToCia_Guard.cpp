// A host binds to the functions of the interface by name, so that nothing but this list would notice at link time that
// one of them is missing.

#include "Brix/AccessorInterface.h"

#include <array>

namespace
{

using CAnyFunction = void (*)();

template <typename... Functions>
std::array<CAnyFunction, sizeof...(Functions)>
CheckAtCompiletimeThatAllCommonAccessorInterfaceFnsAreImplemented(Functions... functions)
{
    return {reinterpret_cast<CAnyFunction>(functions)...};
}

[[gnu::used]] const auto InterfaceFns = CheckAtCompiletimeThatAllCommonAccessorInterfaceFnsAreImplemented(
    _AC_Connect, _AC_Open, _AC_CanAccess, _AC_Close, _AC_Disconnect, _AC_GetNumOfGroups, _AC_GetGroup, _AC_ReleaseGroup,
    _AC_GetNumOfLevels, _AC_GetLevelImageSize, _AC_GetNumOfArea, _AC_GetArea, _AC_ReleaseArea, _AC_GetAreaProperty,
    _AC_GetPropertyValue, _AC_GetPropertyKeyList, _AC_ReleaseProperty, _AC_GetImage, _AC_GetNextImage, _AC_GetImageBody,
    _AC_GetFrameProperty, _AC_GetImageAxis, _AC_GetImageChannelId, _AC_ReleaseImage, _AC_GetFileVersion, _AC_GetLUT,
    _AC_GetCustomData, _AC_GetSupportedCustomData, _AC_GetAreaPosition, _AC_GetImageSize, _AC_GetAxisName,
    _AC_GetThumbnailData, _AC_GetNumOfFiles, _AC_GetFileName, _AC_GetGroupCustomData);

} // namespace
