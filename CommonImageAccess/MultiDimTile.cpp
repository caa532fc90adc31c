#include "CommonImageAccess/MultiDimTile.h"

#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/Frame.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonUtil/Log.h"

#include <cerrno>
#include <cmath>
#include <list>

namespace CIA
{

namespace
{

/// Owns the temporary coordinates of one search.
class CTmpCoordDeletor
{
public:
    CCoordinate* Make(uint32_t index, CDimension& dimension)
    {
        return &_coordinates.emplace_back(index, dimension, nullptr);
    }

private:
    std::list<CCoordinate> _coordinates;
};

} // namespace

CMultiDimTile::CMultiDimTile(CDeepZoomPyramidLevel& level, uint32_t index) : ObjThatHasCoords(false), _Level(level)
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

bool CMultiDimTile::AreCoordsOfTheImage(const CCoords& coords)
{
    const CDimensions& dimensions = _Level.ParentMultiDimImg().Dimensions();
    for (const auto& [type, coordinate] : coords)
    {
        ZEL_ASSERT(IsFrameDifferentiatorCoordDimension(type));
        if (!dimensions.contains(type) && coordinate->Index() != 0)
        {
            ZEL_LOG("Error: Coordinate for non-existent dimension specified with non-zero index value! Only 0 index "
                    "value will be tolerated for non-existent dimension!");
            errno = EINVAL;
            return false;
        }
    }
    return true;
}

CDeepZoomTile* CMultiDimTile::DeepZoomTile(const CCoords& frameDifferentiatorCoords)
{
    if (!AreCoordsOfTheImage(frameDifferentiatorCoords))
        return nullptr;
    CMultiDimImage& image = _Level.ParentMultiDimImg();
    CCoords coords = frameDifferentiatorCoords;
    CTmpCoordDeletor tmpCoords;
    for (const auto& [type, dimension] : image.Dimensions())
    {
        if (!IsFrameDifferentiatorCoordDimension(type) || coords.contains(type))
            continue;
        if (dimension->NumOfPoints() != 1)
        {
            ZEL_LOG("Missing '%s' coordinate!", DimensionTypeToString(type));
            errno = EINVAL;
            return nullptr;
        }
        coords[type] = tmpCoords.Make(0, *dimension);
    }
    const CFrames& frames = image.Frames();
    const auto frame = frames.find(CFrameIdx(coords));
    if (frame == frames.end())
    {
        ZEL_LOG("Error: Invalid frame index!");
        errno = EINVAL;
        return nullptr;
    }
    CDeepZoomTile* tile = frame->second->DeepZoomTiles().Find({TileColIdx, TileRowIdx, _Level.ID()});
    if (tile)
        LastDeepZoomTileFetched = tile;
    else
        errno = 0; // a position without a tile in this frame is no error
    return tile;
}

CDeepZoomTile* CMultiDimTile::NextDeepZoomTile(const CCoords& framePartialDifferentiatorCoords,
                                               const std::set<uint32_t>& selectedChannelIDs)
{
    if (!AreCoordsOfTheImage(framePartialDifferentiatorCoords))
        return nullptr;
    ZEL_ASSERT(!selectedChannelIDs.empty());
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
