#pragma once
#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "ZelLoader/Store/KorFile.h"

namespace Zel
{

class CZelMultiDimImage;

/// A level whose tiles lie in a tile store. The records of a level stand together in the file, so that their extent in
/// rows and columns is all that has to be kept of them.
class CKorDeepZoomPyramidLevel : public CDeepZoomPyramidLevel
{
public:
    /// Of the records of a level. Asserts that each index lies on its dimension.
    CKorDeepZoomPyramidLevel(CZelMultiDimImage& image, const CLevelOfStore& levelOfStore);

    uint16_t getTiffIfd() override { return _TiffIfd; }

protected:
    bool NumOfCols_init(uint32_t& varToInit) override;
    bool NumOfRows_init(uint32_t& varToInit) override;
    bool DeepZoomTilesAreTogetherOnDisk() override { return true; }

private:
    void AssertIndexesLieOnDimensions(const CFrameIdx& greatestFrameIdx);
    bool IsMatrixATileLargerThanTheImage(uint32_t numOfTiles, uint32_t tileSize, uint32_t imageSize, uint32_t& excess);

    CZelMultiDimImage& _ParentZelImage;
    CTileExtent _Extent;
    uint16_t _TiffIfd;
};

} // namespace Zel
