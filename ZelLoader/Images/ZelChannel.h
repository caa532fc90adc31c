#pragma once
#include "CommonImageAccess/PixelFormat.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

namespace Zel
{

/// A channel of a stack: an entry of its channel dimension, or the one that a stack without such a dimension has.
class CZelChannel : public CPixelFrameFormat
{
public:
    /// `metaData` is null for the single channel of a stack without a channel dimension.
    CZelChannel(uint32_t id, CZelMetaDataForDimensionChannel* metaData, CZelMultiDimImage& image)
        : CPixelFrameFormat(image), _ID(id), _MetaData(metaData), _ParentZelImage(image)
    {
    }

    CZelMetaDataForDimensionChannel* MetaData() const { return _MetaData; }
    CZelMultiDimImage& ParentZelImage() const { return _ParentZelImage; }

protected:
    bool ID_init(uint32_t& varToInit) override;
    bool Name_init(const wchar_t*& varToInit) override;
    bool PixelFormat_init(std::unique_ptr<CPixelFormat>& varToInit) override;
    bool CompressionType_init(PixelFrameCompressionType::E& varToInit) override;
    bool CompressionQuality_init(uint32_t& varToInit) override;

private:
    bool CompressionTypeOfDirectories(PixelFrameCompressionType::E& varToInit);

    const uint32_t _ID;
    CZelMetaDataForDimensionChannel* const _MetaData;
    CZelMultiDimImage& _ParentZelImage;
};

} // namespace Zel
