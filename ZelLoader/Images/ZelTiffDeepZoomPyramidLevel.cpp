#include "ZelLoader/Images/ZelTiffDeepZoomPyramidLevel.h"

#include "CommonUtil/Assertion.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

namespace Zel
{

namespace
{

uint32_t NumOfTiles(uint32_t imageSize, uint32_t tileSize)
{
    ZEL_ASSERT(tileSize != 0);
    return imageSize / tileSize + (imageSize % tileSize != 0 ? 1 : 0);
}

} // namespace

CZelTiffDeepZoomPyramidLevel::CZelTiffDeepZoomPyramidLevel(CZelMultiDimImage& image)
    : CDummyDeepZoomPyramidLevel(image), _ParentZelImage(image)
{
}

bool CZelTiffDeepZoomPyramidLevel::NumOfCols_init(uint32_t& varToInit)
{
    varToInit = 1;
    if (TIFFIsTiled(_ParentZelImage.TiffFilePtrSetToIfdOf1stFrame()))
        varToInit = NumOfTiles(_ParentZelImage.PixelWidth(), _ParentZelImage.DeepZoomTilePixelWidth(0));
    return true;
}

bool CZelTiffDeepZoomPyramidLevel::NumOfRows_init(uint32_t& varToInit)
{
    TIFF* tif = _ParentZelImage.TiffFilePtrSetToIfdOf1stFrame();
    varToInit = TIFFIsTiled(tif) ? NumOfTiles(_ParentZelImage.PixelHeight(), _ParentZelImage.DeepZoomTilePixelHeight(0))
                                 : TIFFNumberOfStrips(tif);
    return true;
}

} // namespace Zel
