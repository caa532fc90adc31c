#include "CommonImageAccess/MultiDimTile.h"

#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/Frame.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonUtil/Log.h"

#include <cerrno>
#include <cmath>

namespace CIA
{

CMultiDimTile::CMultiDimTile(CDeepZoomPyramidLevel& level, uint32_t index) : _Level(level)
{
    const uint32_t cols = level.NumOfCols();
    ZEL_ASSERT(cols != 0 && cols != 0xFFFFFFFF);
    const CTileCorner corner = level.CornerOfTileMatrix();
    // Unsigned sums: an area number far beyond the matrix wraps to a position that holds no tile.
    TileRowIdx = static_cast<int32_t>(static_cast<uint32_t>(corner.Row) + index / cols);
    TileColIdx = static_cast<int32_t>(static_cast<uint32_t>(corner.Col) + index % cols);
}

bool CMultiDimTile::Coords_init(CCoords& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    CMultiDimImage& image = _Level.ParentMultiDimImg();
    CCoords coords = _Level.Coords();
    const auto replace = [&](DimensionType::E type, uint32_t index)
    {
        const auto found = coords.find(type);
        ZEL_ASSERT(found != coords.end());
        found->second = MakeOwnCoord(index, found->second->Dimension());
    };
    // Positions are unsigned 32-bit numbers that wrap: a column before 0 lies just below 2^32.
    replace(DimensionType::DimensionType_X, static_cast<uint32_t>(TileColIdx) * image.DeepZoomTilePixelWidth(0));
    replace(DimensionType::DimensionType_Y, static_cast<uint32_t>(TileRowIdx) * image.DeepZoomTilePixelHeight(0));
    varToInit = std::move(coords);
    return true;
}

bool CMultiDimTile::PixelOrRealWorldWidth_init(double& varToInit)
{
    varToInit = _Level.ParentMultiDimImg().DeepZoomTilePixelWidth(0);
    return true;
}

bool CMultiDimTile::PixelOrRealWorldHeight_init(double& varToInit)
{
    varToInit = _Level.ParentMultiDimImg().DeepZoomTilePixelHeight(0);
    return true;
}

bool CMultiDimTile::ZoomoutFactor_init(double& varToInit)
{
    varToInit = _Level.ZoomoutFactor();
    ZEL_ASSERT(_Level.ID() == 0 || !(varToInit < 1.0));
    return !std::isnan(varToInit);
}

/// `missing`: what the coordinates name and the image has not.
bool CMultiDimTile::AreCoordsOfTheImage(const CFrameCoords& coords, CDimensionTypes missing)
{
    for (; !missing.IsEmpty(); missing = missing.WithoutFirst())
    {
        if (coords.FrameIdx().SubIdx(missing.First()) != 0)
        {
            ZEL_LOG("Error: Coordinate for non-existent dimension specified with non-zero index value! Only 0 index "
                    "value will be tolerated for non-existent dimension!");
            errno = EINVAL;
            return false;
        }
    }
    return true;
}

CDeepZoomTile* CMultiDimTile::DeepZoomTile(const CFrameCoords& frameDifferentiatorCoords)
{
    CMultiDimImage& image = _Level.ParentMultiDimImg();
    const CDimensionTypes frameDimensions = image.FrameDimensions();
    const CDimensionTypes missing = frameDifferentiatorCoords.Types().Without(frameDimensions);
    if (!missing.IsEmpty() && !AreCoordsOfTheImage(frameDifferentiatorCoords, missing))
        return nullptr;
    CDimensionTypes notNamed = frameDimensions.Without(frameDifferentiatorCoords.Types());
    for (; !notNamed.IsEmpty(); notNamed = notNamed.WithoutFirst())
    {
        if (image.FindDimension(notNamed.First())->NumOfPoints() != 1)
        {
            ZEL_LOG("Missing '%s' coordinate!", DimensionTypeToString(notNamed.First()));
            errno = EINVAL;
            return nullptr;
        }
    }
    CFrame* frame = image.FindFrame(frameDifferentiatorCoords.FrameIdx());
    if (!frame)
    {
        ZEL_LOG("Error: Invalid frame index!");
        errno = EINVAL;
        return nullptr;
    }
    CDeepZoomTile* tile = TileOf(*frame);
    if (tile)
        LastDeepZoomTileFetched = tile;
    else
        errno = 0; // a position without a tile in this frame is no error
    return tile;
}

CDeepZoomTile* CMultiDimTile::TileOf(CFrame& frame)
{
    // Hosts ask again for what they had: then nothing has to be looked up.
    CDeepZoomTile* last = LastDeepZoomTileFetched;
    if (last && &last->ParentFrame() == &frame && &last->ParentLevel() == &_Level && last->ColIdx() == TileColIdx &&
        last->RowIdx() == TileRowIdx && !last->RepeatsAPosition())
        return last;
    return frame.DeepZoomTiles().Find({TileColIdx, TileRowIdx, _Level.ID()});
}

CDeepZoomTile* CMultiDimTile::NextDeepZoomTile(const CFrameCoords& framePartialDifferentiatorCoords,
                                               const CChannelSelection& selectedChannelIDs)
{
    const CDimensionTypes missing =
        framePartialDifferentiatorCoords.Types().Without(_Level.ParentMultiDimImg().FrameDimensions());
    if (!missing.IsEmpty() && !AreCoordsOfTheImage(framePartialDifferentiatorCoords, missing))
        return nullptr;
    ZEL_ASSERT(!selectedChannelIDs.IsEmpty());
    if (!LastDeepZoomTileFetched)
    {
        errno = EBADFD;
        return nullptr;
    }
    errno = 0;
    LastDeepZoomTileFetched =
        _Level.NextDeepZoomTileOnDisk(*LastDeepZoomTileFetched, framePartialDifferentiatorCoords, selectedChannelIDs);
    return LastDeepZoomTileFetched;
}

} // namespace CIA
