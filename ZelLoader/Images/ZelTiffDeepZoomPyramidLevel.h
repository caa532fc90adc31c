#pragma once
#include "CommonImageAccess/DeepZoomPyramidLevel.h"

namespace Zel
{

using namespace CIA;

class CZelMultiDimImage;

/// The one level of a stack whose pixels lie in TIFF directories of the document.
class CZelTiffDeepZoomPyramidLevel : public CDummyDeepZoomPyramidLevel
{
public:
    explicit CZelTiffDeepZoomPyramidLevel(CZelMultiDimImage& image);

    uint16_t getTiffIfd() override { return 0; }

protected:
    bool NumOfCols_init(uint32_t& varToInit) override;
    bool NumOfRows_init(uint32_t& varToInit) override;
    bool DeepZoomTilesAreTogetherOnDisk() override { return true; }

private:
    CZelMultiDimImage& _ParentZelImage;
};

} // namespace Zel
