#pragma once
#include "CommonImageAccess/Frame.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

namespace Zel
{

/// A frame of this format: a frame node, and the tiles that belong to it.
class CZelFrame : public CFrame
{
public:
    /// The image owns the frame; `metaData` lives as long as the document.
    CZelFrame(CZelMultiDimImage& image, const CFrameIdx& idx, CZelMetaDataForImgFrame& metaData)
        : CFrame(image, idx), _ParentZelImage(image), _MetaData(metaData)
    {
    }

    CZelMultiDimImage& ParentZelImage() const { return _ParentZelImage; }
    CZelMetaDataForImgFrame& MetaData() const { return _MetaData; }
    /// The number of this frame's directory in the document; asserts that it has one.
    uint32_t TiffDirectory() const;
    /// The document as a TIFF, standing on this frame's directory.
    TIFF* TiffFilePtr();

protected:
    std::unique_ptr<CDeepZoomTiles> DeepZoomTiles_init() override;
    std::vector<unsigned char> JpegTables_init() override;

private:
    CZelMultiDimImage& _ParentZelImage;
    CZelMetaDataForImgFrame& _MetaData;
};

} // namespace Zel
