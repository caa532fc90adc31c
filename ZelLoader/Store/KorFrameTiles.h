#pragma once
#include "CommonImageAccess/DeepZoomTile.h"
#include "ZelLoader/Store/KorTile.h"

#include <memory>
#include <span>
#include <vector>

namespace Zel
{

class CZelFrame;

/// Which records of a store belong to which frame. Made once per store by two walks over its records; each frame then
/// finds its own without looking at those of the others.
class CKorTilesByFrame
{
public:
    /// `korTiles` must outlive this.
    CKorTilesByFrame(const std::vector<CKorTile>& korTiles, const CDimensions& dimensions, uint64_t maxNumOfFrames);

    /// The numbers of a frame's records, by level, then row, then column. Of records for one position the first in the
    /// file is the one that counts.
    std::span<const uint32_t> TilesOf(const CFrameIdx& idx) const;

private:
    uint64_t FrameNumber(const CFrameIdx& idx) const;
    void SortTilesOf(uint64_t frameNumber);

    const std::vector<CKorTile>& _KorTiles;
    CFrameIdx _Strides; ///< how far apart neighbours on each dimension lie in the numbering of frames; 0: no dimension
    std::vector<uint32_t> _TileNumbers;
    std::vector<uint32_t> _FirstOfFrame; ///< by frame number, and the end
    std::vector<uint32_t> _NumOfTiles;   ///< by frame number, without repeated positions
};

/// The tiles of a frame whose pixels lie in a tile store.
std::unique_ptr<CDeepZoomTiles> MakeKorFrameTiles(CZelFrame& frame);

} // namespace Zel
