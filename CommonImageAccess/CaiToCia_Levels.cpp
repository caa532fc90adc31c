// The exported functions for the levels of a group and the areas of a level.

#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/Handles.h"

#include <bit>
#include <cerrno>

using namespace CIA;
using namespace CommonUtil;

namespace
{

constexpr UINT64 MaxAreaID = 0xFFFFFFFE;

CMultiDimImage& ImageOf(CMultiDimTile& area)
{
    return area.Level().ParentMultiDimImg();
}
CMultiDimImage& ImageOf(CDeepZoomTile& tile)
{
    return tile.ParentFrame().ParentMultiDimImg();
}

/// The position of an area or a tile. Hosts are told that no lock is taken and may ask from any thread, also while
/// another one reads a tile: what was told once and cannot change is told without. The first time it is worked out,
/// which fills caches; in a TIFF it always is, and moves the file from directory to directory.
template <typename Object>
AC_Result GetPosition(Object& object, CMN_RECT* pRect)
{
    return AtBoundary(
        [&]
        {
            if (const CPixelRect* kept = object.KeptPixelRect())
            {
                errno = 0; // whoever asks for the size of a tile clears it
                *pRect = std::bit_cast<CMN_RECT>(*kept);
                return AC_RESULT_SUCCESS;
            }
            const CLock lock(DocOf(object).ThreadSafetyMutex());
            const CPixelRect rect = object.PixelRect();
            if (ImageOf(object).HasOneTileSize())
                object.KeepPixelRect(rect);
            *pRect = std::bit_cast<CMN_RECT>(rect);
            return AC_RESULT_SUCCESS;
        });
}

AC_Result ComplainOfMissingLevel(int levelID)
{
    ZEL_LOG("Error: Data for the specified level %u does not exist!", static_cast<unsigned>(levelID));
    errno = ENODATA;
    return CiaResultToAC_Result();
}

} // namespace

extern "C"
{

    AC_Result _AC_GetNumOfLevels(AC_HMULTIDIMIMG hMultiDimImg, int* numOfLevels)
    {
        if (!hMultiDimImg || !numOfLevels)
            return Complain("Error: params hMultiDimImg or numOfLevels are NULL!");
        return AtBoundary(
            [&]
            {
                CMultiDimImage& image = Group(hMultiDimImg);
                const CLock lock(DocOf(image).ThreadSafetyMutex());
                *numOfLevels = static_cast<int>(image.DimensionOf(DimensionType::DimensionType_P).NumOfPoints());
                return *numOfLevels > 0 ? AC_RESULT_SUCCESS : CiaResultToAC_Result();
            });
    }

    AC_Result _AC_GetLevelImageSize(AC_HMULTIDIMIMG hMultiDimImg, int levelID, CMN_RECT* pRect)
    {
        if (!hMultiDimImg || !pRect)
            return Complain("Error: params 'hMultiDimImg' or 'pRect' are NULL!");
        return AtBoundary(
            [&]
            {
                CMultiDimImage& image = Group(hMultiDimImg);
                const CLock lock(DocOf(image).ThreadSafetyMutex());
                const auto& levels = image.DeepZoomPyramidLevels();
                if (levelID < 0 || static_cast<size_t>(levelID) >= levels.size())
                    return AC_RESULT_INVALID_PARAM;
                const auto& level = levels[static_cast<size_t>(levelID)];
                if (!level)
                    return ComplainOfMissingLevel(levelID);
                const CPixelRect rect = level->PixelRect();
                ZEL_ASSERT(rect.Width() != 0 && rect.Height() != 0);
                *pRect = std::bit_cast<CMN_RECT>(rect);
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetNumOfArea(AC_HMULTIDIMIMG hMultiDimImg, int levelID, INT32* numOfAreas)
    {
        if (!hMultiDimImg || !numOfAreas)
            return Complain("Error: hMultiDimImg or numOfAreas is NULL!");
        return AtBoundary(
            [&]
            {
                CMultiDimImage& image = Group(hMultiDimImg);
                const CLock lock(DocOf(image).ThreadSafetyMutex());
                const auto& levels = image.DeepZoomPyramidLevels();
                if (levelID < 0 || static_cast<size_t>(levelID) >= levels.size())
                {
                    errno = 0; // the host's own affair: a failure without a name, whatever happened before
                    FailAssertion(__FILE__, __LINE__);
                }
                const auto& level = levels[static_cast<size_t>(levelID)];
                if (!level)
                {
                    *numOfAreas = 0;
                    return ComplainOfMissingLevel(levelID);
                }
                const auto cols = static_cast<INT32>(level->NumOfCols());
                ZEL_ASSERT(cols != 0);
                if (cols < 0)
                    return CiaResultToAC_Result();
                const auto rows = static_cast<INT32>(level->NumOfRows());
                ZEL_ASSERT(rows != 0);
                if (rows < 0)
                    return CiaResultToAC_Result();
                *numOfAreas = static_cast<INT32>(static_cast<uint32_t>(rows) * static_cast<uint32_t>(cols));
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetArea(AC_HMULTIDIMIMG hMultiDimImg, int levelID, UINT64 areaID, AC_HMULTIDIMTILE* phArea)
    {
        if (!hMultiDimImg || !phArea)
            return Complain("Error: params hMultiDimImg or phArea are NULL!");
        if (levelID < 0)
            return Complain("Error: param levelID/areaID was specified as negative value!");
        return AtBoundary(
            [&]
            {
                CMultiDimImage& image = Group(hMultiDimImg);
                const CLock lock(DocOf(image).ThreadSafetyMutex());
                const auto& levels = image.DeepZoomPyramidLevels();
                ZEL_ASSERT(!levels.empty());
                if (static_cast<size_t>(levelID) >= levels.size())
                {
                    ZEL_LOG("Error: param levelID was passed in as %d, which exceeds the maximum allowed levelID %u!",
                            levelID, static_cast<unsigned>(levels.size() - 1));
                    return AC_RESULT_INVALID_PARAM;
                }
                const auto& level = levels[static_cast<size_t>(levelID)];
                ZEL_ASSERT(level);
                ZEL_ASSERT(areaID <= MaxAreaID);
                *phArea = &level->MultiDimTile(static_cast<uint32_t>(areaID));
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_ReleaseArea(AC_HMULTIDIMTILE hMultiDimTile)
    {
        return hMultiDimTile ? AC_RESULT_SUCCESS : AC_RESULT_INVALID_PARAM;
    }

    AC_Result _AC_GetAreaPosition(AC_HMULTIDIMTILE hMultiDimTile, CMN_RECT* pRect)
    {
        if (!hMultiDimTile || !pRect)
            return AC_RESULT_INVALID_PARAM;
        return GetPosition(Area(hMultiDimTile), pRect);
    }

    AC_Result _AC_GetImageSize(AC_HIMAGE hImage, CMN_RECT* pRect)
    {
        if (!hImage || !pRect)
            return Complain("One of the parameters hImage or pRect, are NULL!");
        return GetPosition(Tile(hImage), pRect);
    }

} // extern "C"
