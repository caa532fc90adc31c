#include "ZelLoader/Images/ZelPixelFormat.h"

#include "CommonImageAccess/TiffAccess.h"
#include "CommonUtil/Log.h"
#include "ZelLoader/Store/KorFile.h"

#include <cerrno>

namespace Zel
{

CZelPixelFormat::CSource CZelPixelFormat::Source()
{
    if (_ParentZelImage.UsesKorFile())
    {
        CKorFile* korFile = _ParentZelImage.KorFile();
        ZEL_ASSERT(korFile);
        if (korFile->IsOmeType())
            return {nullptr, korFile->TiffFilePtr(), true};
        return {&korFile->AdditionalHeader(), nullptr, false};
    }
    if (_ParentZelImage.IsKorFileMissing())
        ThrowWithErrno(EREMOTE, "TODO: handle missing KOR file using 'coarse data'");
    return {nullptr, _ParentZelImage.TiffFilePtrSetToIfdOf1stFrame(), false};
}

CZelMetaDataForMultiDimImgProps& CZelPixelFormat::ImageProps()
{
    CZelMetaDataForMultiDimImgProps* props = _ParentZelImage.MetaData().MultiDimImgProps();
    ZEL_ASSERT(props);
    return *props;
}

bool CZelPixelFormat::NumOfBitsPerPixelComponent_init(uint32_t& varToInit)
{
    const CSource source = Source();
    if (!source.Header)
    {
        varToInit = CIA::TIFFGetField<uint16_t>(source.Tiff, TIFFTAG_BITSPERSAMPLE);
        return true;
    }
    const uint32_t size = source.Header->PixelComponentSizeInBytes();
    varToInit = size * 8; // an unknown component type gives an absurd number, as hosts know it
    return true;
}

bool CZelPixelFormat::NumOfPixelComponents_init(uint32_t& varToInit)
{
    const CSource source = Source();
    varToInit = source.Header ? source.Header->NumOfPixelComponents()
                              : CIA::TIFFGetField<uint16_t>(source.Tiff, TIFFTAG_SAMPLESPERPIXEL);
    return true;
}

bool CZelPixelFormat::ColorSpace_init(ColorSpaceType::E& varToInit)
{
    const CSource source = Source();
    if (source.Header)
        return ColorSpaceOfHeader(*source.Header, varToInit);
    varToInit = ColorSpaceOfTiff(source);
    return true;
}

/// The Photometric tag's numbers are those of the colour spaces.
ColorSpaceType::E CZelPixelFormat::ColorSpaceOfTiff(const CSource& source)
{
    const auto photometric =
        static_cast<ColorSpaceType::E>(CIA::TIFFGetField<uint16_t>(source.Tiff, TIFFTAG_PHOTOMETRIC));
    ZEL_ASSERT(photometric == ColorSpaceType::GrayScale || photometric == ColorSpaceType::StandardRgb ||
               (photometric == ColorSpaceType::YCbCr && source.IsTiffStore));
    return photometric;
}

bool CZelPixelFormat::ColorSpaceOfHeader(const CKorAdditionalHeader& header, ColorSpaceType::E& varToInit)
{
    ZEL_ASSERT(header.ColorSpace() == KorColorSpace::GrayscaleOrZelLUT || !HasLutZelDataField());
    ColorSpaceType::E colorSpace = ColorSpaceType::Unknown;
    switch (header.ColorSpace())
    {
    case KorColorSpace::GrayscaleOrZelLUT:
        colorSpace = ColorSpaceType::GrayScale;
        break;
    case KorColorSpace::PALETTE:
        ZEL_LOG("TODO");
        oldAbortCommonUtil();
    case KorColorSpace::STANDARDRGB:
        colorSpace = ColorSpaceType::StandardRgb;
        break;
    case KorColorSpace::HSV:
        colorSpace = ColorSpaceType::Hsv;
        break;
    case KorColorSpace::ADOBERGB:
        colorSpace = ColorSpaceType::AdobeRgb;
        break;
    default:
        return false;
    }
    const bool isRgb = colorSpace == ColorSpaceType::StandardRgb;
    switch (header.GetComponentOrder())
    {
    case 0:
    case -1:
        ZEL_ASSERT(!isRgb);
        break;
    case 1:
        ZEL_ASSERT(isRgb);
        colorSpace = ColorSpaceType::Bgr;
        break;
    case 2:
        ZEL_ASSERT(isRgb);
        break;
    default:
        FailAssertion(__FILE__, __LINE__);
    }
    varToInit = colorSpace;
    return true;
}

bool CZelPixelFormat::ComponentFormat_init(PixelComponentFormat::E& varToInit)
{
    ZEL_ASSERT(varToInit == PixelComponentFormat::NotYetKnown);
    const CSource source = Source();
    if (source.Header)
    {
        varToInit = source.Header->GetPixelComponentFormat();
        return true;
    }
    uint16_t sampleFormat = 0;
    if (!CIA::TIFFGetField_mayFail(source.Tiff, TIFFTAG_SAMPLEFORMAT, &sampleFormat))
    {
        varToInit = PixelComponentFormat::PixelComponentFormat_Unknown;
        return true;
    }
    switch (sampleFormat)
    {
    case SAMPLEFORMAT_UINT:
        varToInit = PixelComponentFormat::PixelComponentFormat_UintOfAnySize;
        return true;
    case SAMPLEFORMAT_INT:
        varToInit = PixelComponentFormat::PixelComponentFormat_IntOfAnySize;
        return true;
    case SAMPLEFORMAT_IEEEFP:
        varToInit = PixelComponentFormat::PixelComponentFormat_FloatOfAnySize;
        return true;
    case SAMPLEFORMAT_VOID:
    case SAMPLEFORMAT_COMPLEXINT:
    case SAMPLEFORMAT_COMPLEXIEEEFP:
        ZEL_LOG("ERROR: unexpected/unhandled TIFF Pixel Component Format type %d!", int{sampleFormat});
        oldAbortCommonUtil();
    default:
        ZEL_LOG("Warning: unexpected/unhandled TIFF Pixel Component Format type %u!Considering this as "
                "garbage/unitialized value and assuming the format to be the most common type (UintOfAnySize)...",
                unsigned{sampleFormat});
        varToInit = PixelComponentFormat::PixelComponentFormat_UintOfAnySize;
        return true;
    }
}

bool CZelPixelFormat::HasLutZelDataField()
{
    return ImageProps().ImgDisplayLutForSingleChannel() ||
           (_Channel.MetaData() && _Channel.MetaData()->ImgDisplayLutForMultiChannel());
}

} // namespace Zel
