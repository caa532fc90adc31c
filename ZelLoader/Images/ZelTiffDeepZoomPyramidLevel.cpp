#include "ZelLoader/Images/ZelTiffDeepZoomPyramidLevel.h"

#include "CommonImageAccess/TiffDeepZoomTile.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

namespace Zel
{

CZelTiffDeepZoomPyramidLevel::CZelTiffDeepZoomPyramidLevel(CZelMultiDimImage& image)
    : CDummyDeepZoomPyramidLevel(image), _ParentZelImage(image)
{
}

bool CZelTiffDeepZoomPyramidLevel::NumOfCols_init(uint32_t& varToInit)
{
    varToInit = 1;
    if (TIFFIsTiled(_ParentZelImage.TiffFilePtrSetToIfdOf1stFrame()))
        varToInit = NumOfTilesAcross(_ParentZelImage.PixelWidth(), _ParentZelImage.DeepZoomTilePixelWidth(0));
    return true;
}

bool CZelTiffDeepZoomPyramidLevel::NumOfRows_init(uint32_t& varToInit)
{
    TIFF* tif = _ParentZelImage.TiffFilePtrSetToIfdOf1stFrame();
    varToInit = TIFFIsTiled(tif)
                    ? NumOfTilesAcross(_ParentZelImage.PixelHeight(), _ParentZelImage.DeepZoomTilePixelHeight(0))
                    : TIFFNumberOfStrips(tif);
    return true;
}

} // namespace Zel
