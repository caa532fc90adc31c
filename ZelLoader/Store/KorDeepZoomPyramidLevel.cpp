#include "ZelLoader/Store/KorDeepZoomPyramidLevel.h"

#include "CommonUtil/Log.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

#include <algorithm>

namespace Zel
{

namespace
{

/// How many columns (or rows) there are from the smallest to the greatest. One that begins behind 0 is counted from 0.
uint32_t NumOfTiles(int32_t smallest, int32_t greatest)
{
    const int64_t beforeZero = std::max<int64_t>(-int64_t{smallest}, 0);
    return static_cast<uint32_t>(greatest + beforeZero + 1);
}

} // namespace

CKorDeepZoomPyramidLevel::CKorDeepZoomPyramidLevel(CZelMultiDimImage& image, const CLevelOfStore& levelOfStore)
    : CDeepZoomPyramidLevel(levelOfStore.Level, image), _ParentZelImage(image), _Extent(levelOfStore.Extent),
      _TiffIfd(levelOfStore.TiffIfd)
{
    AssertIndexesLieOnDimensions(levelOfStore.GreatestFrameIdx);
}

void CKorDeepZoomPyramidLevel::AssertIndexesLieOnDimensions(const CFrameIdx& greatestFrameIdx)
{
    for (const auto& [type, dimension] : _ParentZelImage.Dimensions())
        if (IsFrameDifferentiatorCoordDimension(type))
            ZEL_ASSERT(greatestFrameIdx.SubIdx(type) < dimension->NumOfPoints());
}

bool CKorDeepZoomPyramidLevel::IsMatrixATileLargerThanTheImage(uint32_t numOfTiles, uint32_t tileSize,
                                                               uint32_t imageSize, uint32_t& excess)
{
    excess = numOfTiles * tileSize - imageSize; // unsigned: an image larger than its matrix wraps, and is told of too
    return excess >= tileSize;
}

bool CKorDeepZoomPyramidLevel::NumOfCols_init(uint32_t& varToInit)
{
    varToInit = NumOfTiles(_Extent.SmallestCol, _Extent.GreatestCol);
    if (ID() != 0)
        return true;
    const uint32_t tileWidth = _ParentZelImage.DeepZoomTilePixelWidth(0);
    ZEL_ASSERT(tileWidth != 0);
    uint32_t excess = 0;
    if (IsMatrixATileLargerThanTheImage(varToInit, tileWidth, _ParentZelImage.PixelWidth(), excess))
    {
        // In spite of the words all columns are reported: hosts rely on it.
        ZEL_LOG("STRANGE: Level 0's last %u column(s) are completely transparent?", excess / tileWidth);
        ZEL_LOG("Reporting back %u columns and ignoring the completely transparent ones.", varToInit);
    }
    return true;
}

bool CKorDeepZoomPyramidLevel::NumOfRows_init(uint32_t& varToInit)
{
    varToInit = NumOfTiles(_Extent.SmallestRow, _Extent.GreatestRow);
    if (ID() != 0)
        return true;
    uint32_t excess = 0;
    if (IsMatrixATileLargerThanTheImage(varToInit, _ParentZelImage.DeepZoomTilePixelHeight(0),
                                        _ParentZelImage.PixelHeight(), excess))
        ZEL_LOG("STRANGE: Level 0's last rows(s) are completely transparent?");
    return true;
}

} // namespace Zel
