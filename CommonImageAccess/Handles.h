#pragma once
#include "Brix/AccessorInterface.h"
#include "CommonImageAccess/ImgDoc.h"
#include "CommonUtil/Mutex.h"

namespace CIA
{

// A handle is the address of the model object itself; nothing detects one that is stale or foreign. A handle is made of
// and turned back into exactly the class named here: seen as one of its bases, the object has another address.
inline CImgDoc& Doc(AC_HIMG_DOC handle)
{
    return *static_cast<CImgDoc*>(handle);
}
inline CMultiDimImage& Group(AC_HMULTIDIMIMG handle)
{
    return *static_cast<CMultiDimImage*>(handle);
}
inline CMultiDimTile& Area(AC_HMULTIDIMTILE handle)
{
    return *static_cast<CMultiDimTile*>(handle);
}
inline CDeepZoomTile& Tile(AC_HTILE handle)
{
    return *static_cast<CDeepZoomTile*>(handle);
}

inline CImgDoc& DocOf(CMultiDimImage& image)
{
    return image.ParentImgDoc();
}
inline CImgDoc& DocOf(CMultiDimTile& area)
{
    return area.Level().ParentImgDoc();
}
inline CImgDoc& DocOf(CDeepZoomTile& tile)
{
    return DocOf(tile.ParentFrame().ParentMultiDimImg());
}

} // namespace CIA
