#include "CommonImageAccess/DeepZoomTile.h"

#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/Frame.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/PixelFormat.h"
#include "CommonUtil/Log.h"

#include <cerrno>
#include <cmath>

namespace CIA
{

CPixelFrameFormat& CDeepZoomTile::Channel()
{
    return _ParentFrame.Channel();
}

bool CDeepZoomTile::IsInRawFormat()
{
    return Channel().CompressionType() == PixelFrameCompressionType::None;
}

bool CDeepZoomTile::Coords_init(CCoords& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    ZEL_ASSERT(static_cast<int64_t>(TileRowIdx) < _ParentLevel.NumOfRows());
    CCoords coords = _ParentFrame.Coords();
    ZEL_ASSERT(!coords.contains(DimensionType::DimensionType_P));
    const CCoords& levelCoords = _ParentLevel.Coords();
    const auto levelCoord = levelCoords.find(DimensionType::DimensionType_P);
    ZEL_ASSERT(levelCoord != levelCoords.end());
    coords.insert(*levelCoord);

    CMultiDimImage& image = _ParentFrame.ParentMultiDimImg();
    // Positions are unsigned 32-bit numbers that wrap: a tile before the first pixel lies just below 2^32.
    const auto moveBy = [&](DimensionType::E type, uint32_t distance)
    {
        const auto found = coords.find(type);
        ZEL_ASSERT(found != coords.end());
        CDimension& dimension = found->second->Dimension();
        const uint32_t oldIndex = found->second->Index();
        ZEL_ASSERT(oldIndex < dimension.NumOfPoints());
        found->second = MakeOwnCoord(oldIndex + distance, dimension);
    };
    moveBy(DimensionType::DimensionType_X, static_cast<uint32_t>(TileColIdx) * image.DeepZoomTilePixelWidth(0));
    moveBy(DimensionType::DimensionType_Y, static_cast<uint32_t>(TileRowIdx) * image.DeepZoomTilePixelHeight(0));
    varToInit = std::move(coords);
    return true;
}

bool CDeepZoomTile::PixelOrRealWorldWidth_init(double& varToInit)
{
    const uint32_t width = _ParentFrame.ParentMultiDimImg().DeepZoomTilePixelWidth(_ParentLevel.getTiffIfd());
    varToInit = width;
    return width != 0xFFFFFFFF;
}

bool CDeepZoomTile::PixelOrRealWorldHeight_init(double& varToInit)
{
    const uint32_t height = _ParentFrame.ParentMultiDimImg().DeepZoomTilePixelHeight(_ParentLevel.getTiffIfd());
    varToInit = height;
    return height != 0xFFFFFFFF;
}

bool CDeepZoomTile::ZoomoutFactor_init(double& varToInit)
{
    varToInit = _ParentLevel.ZoomoutFactor();
    return !std::isnan(varToInit);
}

bool CDeepZoomTile::PartialTileNeedsToBeRead(const CPixelRect& r)
{
    if (r.IsAllZero())
        return false;
    ZEL_ASSERT(r.Width() != 0 && r.Height() != 0);
    const bool isWholeTile = r.X() == 0 && r.Y() == 0 && r.Width() == PixelWidth() && r.Height() == PixelHeight();
    return !isWholeTile;
}

bool CDeepZoomTile::IsWithinTile(const CPixelRect& r)
{
    return uint64_t{r.X()} + r.Width() <= PixelWidth() && uint64_t{r.Y()} + r.Height() <= PixelHeight();
}

bool CDeepZoomTile::PixelBuf(CByteArray& buf, const CPixelRect& r)
{
    if (PartialTileNeedsToBeRead(r) && !IsInRawFormat())
    {
        ZEL_LOG("Error: partial tile cannot be read for non-RAW formats!");
        errno = EINVAL;
        return false;
    }
    ZEL_ASSERT(IsWithinTile(r));
    return PixelBuf_rValidated(buf, r);
}

} // namespace CIA
