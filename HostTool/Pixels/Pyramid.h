#pragma once

#include "HostTool/Document.h"

#include <optional>
#include <vector>

namespace HostTool
{

/// A rectangle of pixels; its place may be left of or above the origin.
struct CPixelRect
{
    int64_t X = 0;
    int64_t Y = 0;
    int64_t Width = 0;
    int64_t Height = 0;

    int64_t Right() const { return X + Width; }
    int64_t Bottom() const { return Y + Height; }
    bool IsEmpty() const { return Width <= 0 || Height <= 0; }
    bool operator==(const CPixelRect&) const = default;
};

CPixelRect Intersection(const CPixelRect& a, const CPixelRect& b);

/// A level of a group as it lies on its tiles. Places are pixels of the level, counted from the corner of the tile of
/// column 0 and row 0, whether it exists or not.
struct CLevel
{
    int Level = 0;
    int64_t FirstCol = 0; ///< of area 0; below 0 where the tiles begin left of the origin
    int64_t FirstRow = 0;
    CGrid Grid;
    uint32_t TileWidth = 0;
    uint32_t TileHeight = 0;
    CPixelRect Picture;               ///< the picture, without the parts of the edge tiles beyond it
    std::optional<double> PixelWidth; ///< in micrometres; nothing if the document is not calibrated
    std::optional<double> PixelHeight;

    /// The rectangle of a tile.
    CPixelRect TileRect(int64_t col, int64_t row) const;
    /// The area of a tile; nothing if the grid does not reach there.
    std::optional<uint64_t> AreaOf(int64_t col, int64_t row) const;
    /// Tiles as wide as the picture are strips, for all that a host can see.
    bool IsInStrips() const { return Grid.Cols == 1 && Grid.Rows > 1 && TileWidth >= Picture.Width; }
};

/// The range of tile columns and rows that a rectangle touches, the last ones included.
struct CTileRange
{
    int64_t FirstCol = 0;
    int64_t LastCol = -1;
    int64_t FirstRow = 0;
    int64_t LastRow = -1;
};
CTileRange TilesOf(const CLevel& level, const CPixelRect& rect);

/// All levels of a group; nothing for those without data. Throws CHostError if the document fails in what it must tell.
std::vector<std::optional<CLevel>> PyramidOf(const CDocument& document, const CGroup& group);

/// How one axis of a group is told by the plug-in, in pixels of level 0.
struct CToldAxis
{
    int64_t Told = 0;       ///< where the picture begins, as the plug-in tells: a distance without a sign
    int64_t FirstTile = 0;  ///< the first column or row, as a number of tiles
    int64_t TileSize = 1;   ///< along this axis
    int64_t TileWidth = 1;  ///< on both axes the plug-in reckons with the tile's width
    int64_t NumOfTiles = 0; ///< of the grid, along this axis
    int64_t PictureSize = 0;
    bool IsCalibrated = false;
    int64_t DistanceToOthers =
        0; ///< of the picture from the first one of the document, which is told if it's uncropped
};

/// Where the picture begins, from the corner of the tile of column or row 0. The plug-in tells a distance whose meaning
/// depends on what else holds: from the first tile, from the tile of number 0, or from the other pictures.
int64_t PictureStartOf(const CToldAxis& axis);

} // namespace HostTool
