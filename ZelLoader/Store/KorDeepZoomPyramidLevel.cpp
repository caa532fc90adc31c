#include "ZelLoader/Store/KorDeepZoomPyramidLevel.h"

#include "CommonUtil/Log.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Store/KorFile.h"

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

CKorDeepZoomPyramidLevel::CKorDeepZoomPyramidLevel(uint32_t levelId, CZelMultiDimImage& image,
                                                   std::span<const CKorTile> korTiles, uint32_t firstTileNumber)
    : CDeepZoomPyramidLevel(levelId, image), _ParentZelImage(image), _FirstTileNumber(firstTileNumber)
{
    ZEL_ASSERT(!korTiles.empty());
    CDecompressedKorTileIdx smallest = korTiles.front().Idx;
    CDecompressedKorTileIdx greatest = smallest;
    for (const CKorTile& tile : korTiles)
    {
        smallest.ColIdx = std::min(smallest.ColIdx, tile.Idx.ColIdx);
        smallest.RowIdx = std::min(smallest.RowIdx, tile.Idx.RowIdx);
        greatest.ColIdx = std::max(greatest.ColIdx, tile.Idx.ColIdx);
        greatest.RowIdx = std::max(greatest.RowIdx, tile.Idx.RowIdx);
        greatest.ZIdx = std::max(greatest.ZIdx, tile.Idx.ZIdx);
        greatest.TIdx = std::max(greatest.TIdx, tile.Idx.TIdx);
        greatest.CIdx = std::max(greatest.CIdx, tile.Idx.CIdx);
        greatest.LIdx = std::max(greatest.LIdx, tile.Idx.LIdx);
    }
    _SmallestCol = smallest.ColIdx;
    _GreatestCol = greatest.ColIdx;
    _SmallestRow = smallest.RowIdx;
    _GreatestRow = greatest.RowIdx;
    AssertIndexesLieOnDimensions(greatest);
}

void CKorDeepZoomPyramidLevel::AssertIndexesLieOnDimensions(const CDecompressedKorTileIdx& greatest)
{
    const CFrameIdx greatestFrameIdx = greatest.FrameIdx();
    for (const auto& [type, dimension] : _ParentZelImage.Dimensions())
        if (IsFrameDifferentiatorCoordDimension(type))
            ZEL_ASSERT(greatestFrameIdx.SubIdx(type) < dimension->NumOfPoints());
}

uint16_t CKorDeepZoomPyramidLevel::getTiffIfd()
{
    CKorFile* korFile = _ParentZelImage.KorFile();
    ZEL_ASSERT(korFile);
    return korFile->TiffIfdOf(_FirstTileNumber);
}

bool CKorDeepZoomPyramidLevel::IsMatrixATileLargerThanTheImage(uint32_t numOfTiles, uint32_t tileSize,
                                                               uint32_t imageSize, uint32_t& excess)
{
    excess = numOfTiles * tileSize - imageSize; // unsigned: an image larger than its matrix wraps, and is told of too
    return excess >= tileSize;
}

bool CKorDeepZoomPyramidLevel::NumOfCols_init(uint32_t& varToInit)
{
    varToInit = NumOfTiles(_SmallestCol, _GreatestCol);
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
    varToInit = NumOfTiles(_SmallestRow, _GreatestRow);
    if (ID() != 0)
        return true;
    uint32_t excess = 0;
    if (IsMatrixATileLargerThanTheImage(varToInit, _ParentZelImage.DeepZoomTilePixelHeight(0),
                                        _ParentZelImage.PixelHeight(), excess))
        ZEL_LOG("STRANGE: Level 0's last rows(s) are completely transparent?");
    return true;
}

} // namespace Zel
