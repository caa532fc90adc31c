#pragma once
#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "ZelLoader/Store/KorTile.h"

#include <span>

namespace Zel
{

class CZelMultiDimImage;

/// A level whose tiles lie in a tile store. The records of a level stand together in the file, so that their extent in
/// rows and columns is all that has to be kept of them.
class CKorDeepZoomPyramidLevel : public CDeepZoomPyramidLevel
{
public:
    /// `korTiles` are the level's records, the first of them with the number `firstTileNumber`. Asserts that each index
    /// lies on its dimension.
    CKorDeepZoomPyramidLevel(uint32_t levelId, CZelMultiDimImage& image, std::span<const CKorTile> korTiles,
                             uint32_t firstTileNumber);

    uint16_t getTiffIfd() override;

protected:
    bool NumOfCols_init(uint32_t& varToInit) override;
    bool NumOfRows_init(uint32_t& varToInit) override;
    bool DeepZoomTilesAreTogetherOnDisk() override { return true; }

private:
    void AssertIndexesLieOnDimensions(const CDecompressedKorTileIdx& greatest);
    bool IsMatrixATileLargerThanTheImage(uint32_t numOfTiles, uint32_t tileSize, uint32_t imageSize, uint32_t& excess);

    CZelMultiDimImage& _ParentZelImage;
    uint32_t _FirstTileNumber;
    int32_t _SmallestCol;
    int32_t _GreatestCol;
    int32_t _SmallestRow;
    int32_t _GreatestRow;
};

} // namespace Zel
