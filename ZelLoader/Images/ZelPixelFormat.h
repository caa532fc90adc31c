#pragma once
#include "CommonImageAccess/PixelFormat.h"
#include "ZelLoader/Images/ZelChannel.h"

#include <optional>
#include <tiffio.h>

namespace Zel
{

class CKorAdditionalHeader;

/// What the pixels of a channel are made of, told by wherever the stack keeps them: the header of its tile store, the
/// first directory of a TIFF store, or the directory of the first frame in the document.
class CZelPixelFormat : public CPixelFormat
{
public:
    explicit CZelPixelFormat(CZelChannel& channel)
        : CPixelFormat(channel), _Channel(channel), _ParentZelImage(channel.ParentZelImage())
    {
    }

    /// True when the channel or the image has a colour look-up table.
    bool HasLutZelDataField();

protected:
    bool MaxNumOfUsedBits_init(uint32_t& varToInit) override;
    bool ColorSpace_init(ColorSpaceType::E& varToInit) override;
    bool ColorLookupTable_init(std::vector<CColor>& varToInit) override;
    bool NumOfBitsPerPixelComponent_init(uint32_t& varToInit) override;
    bool NumOfPixelComponents_init(uint32_t& varToInit) override;
    bool ComponentFormat_init(PixelComponentFormat::E& varToInit) override;

private:
    /// The pixels of a stack are described by exactly one of the two.
    struct CSource
    {
        const CKorAdditionalHeader* Header = nullptr;
        TIFF* Tiff = nullptr; ///< standing on the directory that counts
        bool IsTiffStore = false;
    };

    using CLutBytes = CArrayStartAndSize<Byte>;

    CSource Source();
    CLutBytes LutBytes();
    CZelMetaDataForMultiDimImgProps& ImageProps();
    ColorSpaceType::E ColorSpaceOfTiff(const CSource& source);
    bool ColorSpaceOfHeader(const CKorAdditionalHeader& header, ColorSpaceType::E& varToInit);
    const CArrayStartAndSize<double>* ImgDisplayLimits();
    bool MaxPixelValueOfLimits(std::optional<uint64_t>& maxPixelValue);
    bool MaxPixelValueOfTiles(uint64_t& maxPixelValue);
    uint32_t NumOfUsedBits(uint64_t maxPixelValue);

    CZelChannel& _Channel;
    CZelMultiDimImage& _ParentZelImage;
};

} // namespace Zel
