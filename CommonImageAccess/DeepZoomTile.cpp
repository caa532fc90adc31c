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
    NeedCoords();
    return _ParentFrame.ParentMultiDimImg().ChannelOf(_ParentFrame.FrameIdx());
}

bool CDeepZoomTile::IsInRawFormat()
{
    return Channel().CompressionType() == PixelFrameCompressionType::None;
}

CPixelIndexes CDeepZoomTile::WorkOutFirstPixel()
{
    ZEL_ASSERT(static_cast<int64_t>(TileRowIdx) < _ParentLevel.NumOfRows());
    CMultiDimImage& image = _ParentFrame.ParentMultiDimImg();
    const auto index = [&](DimensionType::E type, uint32_t first, int32_t colOrRow, uint32_t tileSize)
    {
        // Positions are unsigned 32-bit numbers that wrap: a tile before the first pixel lies just below 2^32.
        const uint32_t indexOfTile = first + static_cast<uint32_t>(colOrRow) * tileSize;
        CCoordinate::AssertIsIndexOf(image.DimensionOf(type), indexOfTile);
        return indexOfTile;
    };
    const uint32_t firstX = _ParentFrame.FirstX();
    ZEL_ASSERT(!_ParentLevel.Coords().empty());
    const uint32_t width = _HasCoords ? image.TileWidthOfCoords() : image.AskTileWidthOfCoords();
    const uint32_t x = index(DimensionType::DimensionType_X, firstX, TileColIdx, width);
    const uint32_t firstY = _ParentFrame.FirstY();
    const uint32_t height = _HasCoords ? image.TileHeightOfCoords() : image.AskTileHeightOfCoords();
    const uint32_t y = index(DimensionType::DimensionType_Y, firstY, TileRowIdx, height);
    _HasCoords = true;
    return {x, y};
}

bool CDeepZoomTile::Coords_init(CCoords& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    const CPixelIndexes indexes = WorkOutFirstPixel();
    varToInit = _ParentFrame.Coords();
    ZEL_ASSERT(!varToInit.contains(DimensionType::DimensionType_P));
    varToInit.insert(*_ParentLevel.Coords().find(DimensionType::DimensionType_P));
    CMultiDimImage& image = _ParentFrame.ParentMultiDimImg();
    const auto replace = [&](DimensionType::E type, uint32_t index)
    { varToInit[type] = MakeOwnCoord(index, image.DimensionOf(type)); };
    replace(DimensionType::DimensionType_X, indexes.X);
    replace(DimensionType::DimensionType_Y, indexes.Y);
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

uint32_t CDeepZoomTile::NumOfBytesPerPixel()
{
    CPixelFormat* pixelFormat = Channel().PixelFormat();
    ZEL_ASSERT(pixelFormat);
    const uint32_t numOfBytes = pixelFormat->NumOfBytes();
    ZEL_ASSERT(numOfBytes != 0xFFFFFFFF);
    return numOfBytes;
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
