#pragma once
#include "ZelLoader/Store/FrameNumbers.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace Zel
{

class CZelFrame;
class CZelTiffStoreTile;

/// The tile records of one image of a TIFF store, which is a pyramid level: each tile or strip of a grid on each plane
/// of the image. The XML may name any number of planes for a grid of any size; kept are the two, not their product. The
/// records follow each other in the file by position, row by row, and at each position by plane.
struct CTiffStoreLevel
{
    uint32_t Level = 0;
    uint32_t NumOfCols = 0;
    uint32_t NumOfRows = 0;
    uint32_t FirstDirectory = 0;
    std::vector<CFrameIdx> Planes; ///< on which frame each lies

    uint64_t NumOfPositions() const { return uint64_t{NumOfCols} * NumOfRows; }
    /// The directory of a plane's tiles, by number. It need not be there: then they cannot be read.
    uint16_t TiffIfd(size_t plane) const { return static_cast<uint16_t>(FirstDirectory + plane); }
    /// Row by row.
    uint32_t PositionOf(uint32_t col, uint32_t row) const { return row * NumOfCols + col; }
};

/// Which planes of a TIFF store lie on which frame.
class CTiffPlanesByFrame
{
public:
    struct CPlane
    {
        uint64_t FrameNumber;
        const CTiffStoreLevel* Level;
        uint32_t Number; ///< among the planes of the level
    };

    /// `levels` must outlive this.
    CTiffPlanesByFrame(const std::vector<CTiffStoreLevel>& levels, const CDimensions& dimensions,
                       uint64_t maxNumOfFrames);

    /// Level by level, in the order of the file.
    std::span<const CPlane> PlanesOf(const CFrameIdx& idx) const;

private:
    CFrameNumbers _FrameNumbers;
    std::vector<CPlane> _Planes;
};

/// The tiles of a frame whose pixels lie in a TIFF store. Of planes that lie on one frame at one level the first is the
/// one that is served; the walk over the file meets the others as well.
class CTiffStoreFrameTiles : public CDeepZoomTiles
{
public:
    /// The tile of a plane of this frame. Asserts that the plane is one.
    virtual CZelTiffStoreTile& TileOfPlane(const CTiffStoreLevel& level, uint32_t plane, int32_t col, int32_t row) = 0;
};

/// Null when a tile lies outside the matrix of its level.
std::unique_ptr<CTiffStoreFrameTiles> MakeTiffStoreFrameTiles(CZelFrame& frame);

} // namespace Zel
