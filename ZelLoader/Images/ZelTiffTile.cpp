#include "ZelLoader/Images/ZelTiffTile.h"

#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonUtil/Assertion.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/ZelImgDoc.h"

namespace Zel
{

CZelTiffTile::CZelTiffTile(CZelFrame& frame, int32_t col, int32_t row)
    : CTiffDeepZoomTile(frame, col, row), _ParentZelFrame(frame)
{
}

TIFF* CZelTiffTile::TiffFilePtr()
{
    return _ParentZelFrame.TiffFilePtr();
}

uint64_t CZelTiffTile::SizeOfFile()
{
    return _ParentZelFrame.ParentZelImage().ParentZelImgDoc().FileSize();
}

CDeepZoomTile* CZelTiffTile::NextTileOnDisk()
{
    ZEL_ASSERT(_ParentZelFrame.ParentMultiDimImg().DeepZoomPyramidLevels().size() == 1);
    const auto numOfCols = static_cast<int64_t>(ParentLevel().NumOfCols());
    const auto numOfRows = static_cast<int64_t>(ParentLevel().NumOfRows());
    if (RowIdx() == numOfRows - 1 && ColIdx() == numOfCols - 1)
        return FirstTileOfNextFrame();
    const bool isRowAtItsEnd = ColIdx() + int64_t{1} == numOfCols;
    const CDeepZoomTileIdx next{isRowAtItsEnd ? 0 : ColIdx() + 1, isRowAtItsEnd ? RowIdx() + 1 : RowIdx(), 0};
    CDeepZoomTile* tile = _ParentZelFrame.DeepZoomTiles().Find(next);
    ZEL_ASSERT(tile);
    return tile;
}

CDeepZoomTile* CZelTiffTile::FirstTileOfNextFrame()
{
    CZelMetaDataForFrameTiffIfd* ifd = _ParentZelFrame.MetaData().FrameTiffIfd();
    ZEL_ASSERT(ifd);
    CFrame* nextFrame = _ParentZelFrame.ParentZelImage().NextFrameOnDisk(ifd->IdxOfTiffIfd());
    if (!nextFrame)
        return nullptr;
    CDeepZoomTile* tile = nextFrame->DeepZoomTiles().Find({0, 0, 0});
    ZEL_ASSERT(tile);
    return tile;
}

} // namespace Zel
