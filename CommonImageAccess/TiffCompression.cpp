#include "CommonImageAccess/TiffCompression.h"

#include "CommonUtil/Log.h"

namespace CIA
{

namespace
{

constexpr uint16_t CompressionJ2k = 34712; ///< not among the compressions that libtiff's header names for reading

} // namespace

PixelFrameCompressionType::E GetPixelFrameCompressionTypeOfCurrentTiffIfd(TIFF* tif)
{
    const auto compression = CIA::TIFFGetField<uint16_t>(tif, TIFFTAG_COMPRESSION);
    switch (compression)
    {
    case COMPRESSION_NONE:
        return PixelFrameCompressionType::None;
    case COMPRESSION_OJPEG:
        return PixelFrameCompressionType::Jpeg;
    case COMPRESSION_JPEG:
        return PixelFrameCompressionType::Jpeg7;
    case CompressionJ2k:
        return PixelFrameCompressionType::J2k;
    default:
        ZEL_LOG("TIFF compression %d is not supported!", int{compression});
        CommonUtil::oldAbortCommonUtil();
    }
}

} // namespace CIA
