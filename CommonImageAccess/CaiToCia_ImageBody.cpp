// The exported function that reads the bytes of an image.

#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/Handles.h"

#include <bit>

using namespace CIA;
using namespace CommonUtil;

namespace
{

constexpr UINT64 MaxBufferSize = 0xFFFFFFFE;

/// The host's rectangle; asserts that each of its numbers fits 32 bits.
CPixelRect ToPixelRect(const CMN_RECT& rect)
{
    const auto asGiven = std::bit_cast<CPixelRect>(rect);
    return {asGiven.X(), asGiven.Y(), asGiven.Width(), asGiven.Height()};
}

/// AC_RESULT_SUCCESS for a rectangle that can be read from this tile.
AC_Result CheckRect(CDeepZoomTile& tile, const CPixelRect& r)
{
    if (!tile.IsInRawFormat() && tile.PartialTileNeedsToBeRead(r))
    {
        ZEL_LOG("For non-raw formats, we do not support returning part of a deepzoom tile! Send in pRect initialized "
                "to all zeroes instead, OR as requested pRect->width and pRect->height if intialized to the deepzoom "
                "tile width(%u) and deepzoom tile height(%u) thereby implying the full tile, will also be accepted.",
                tile.PixelWidth(), tile.PixelHeight());
        return AC_RESULT_INVALID_PARAM;
    }
    if (r.Width() == 0 || r.Height() == 0)
    {
        if (r.X() != 0 || r.Y() != 0 || r.Width() != 0 || r.Height() != 0)
            return Complain("Error: height or width is 0, but remaining parameters are not all 0, that would have "
                            "indicated to fetch the entire deepzoom tile! Treating this as invalid accordingly...");
        return AC_RESULT_SUCCESS;
    }
    const bool liesInTile =
        uint64_t{r.Y()} + r.Height() <= tile.PixelHeight() && uint64_t{r.X()} + r.Width() <= tile.PixelWidth();
    return liesInTile ? AC_RESULT_SUCCESS
                      : Complain("Error: The rectangle specified does not lie entirely within the tile!");
}

} // namespace

extern "C"
{

    AC_Result _AC_GetImageBody(AC_HTILE hDeepZoomTile, CMN_RECT* pRect, BYTE* buffer, UINT64 bufferSize,
                               UINT64* sizeFilledOrNeeded)
    {
        if (!hDeepZoomTile || !pRect || !sizeFilledOrNeeded)
            return Complain("Error: params hDeepZoomTile or pRect or sizeFilledOrNeeded are NULL!");
        return AtBoundary(
            [&]
            {
                const CPixelRect r = ToPixelRect(*pRect);
                CDeepZoomTile& tile = Tile(hDeepZoomTile);
                const CLock lock(DocOf(tile).ThreadSafetyMutex());
                if (const AC_Result result = CheckRect(tile, r); result != AC_RESULT_SUCCESS)
                    return result;
                ZEL_ASSERT(bufferSize <= MaxBufferSize);
                CByteArray array(buffer, static_cast<uint32_t>(bufferSize));
                const bool isRead = tile.PixelBuf(array, r);
                *sizeFilledOrNeeded = isRead ? array.Size : 0;
                return isRead ? AC_RESULT_SUCCESS : CiaResultToAC_Result();
            });
    }

} // extern "C"
