#pragma once

#include "HostTool/Export/TiffWriter.h"
#include "HostTool/Pixels/PixelFormat.h"

#include <cstdint>
#include <optional>

namespace HostTool
{

/// The fields of TIFF directories that are written here, by their numbers in the file.
namespace TiffTag
{
enum E : uint16_t
{
    NewSubfileType = 254,
    ImageWidth = 256,
    ImageLength = 257,
    BitsPerSample = 258,
    Compression = 259,
    Photometric = 262,
    ImageDescription = 270,
    StripOffsets = 273,
    SamplesPerPixel = 277,
    RowsPerStrip = 278,
    StripByteCounts = 279,
    XResolution = 282,
    YResolution = 283,
    PlanarConfig = 284,
    ResolutionUnit = 296,
    Software = 305,
    Predictor = 317,
    TileWidth = 322,
    TileLength = 323,
    TileOffsets = 324,
    TileByteCounts = 325,
    SubIfds = 330,
    SampleFormat = 339,
    JpegTables = 347,
    YCbCrSubsampling = 530
};
}

namespace TiffCompression
{
enum E : uint16_t
{
    None = 1,
    Jpeg = 7,
    Deflate = 8,
    Jpeg2000OfRgb = 33005, ///< a bare codestream, which OpenSlide looks for
    Jpeg2000 = 34712,
    Zstd = 50000
};
}

namespace TiffPhotometric
{
enum E : uint16_t
{
    Grey = 1,
    Rgb = 2,
    YCbCr = 6
};
}

/// The fields that tell size and pixels of a picture, but for compression and photometric interpretation.
void SetPixels(CTiffDirectory& directory, uint32_t width, uint32_t height, const CPixelFormat& format);

/// The fields that tell the size of a pixel, which is given in micrometres; none if it's not known.
void SetPixelSize(CTiffDirectory& directory, std::optional<double> width, std::optional<double> height);

} // namespace HostTool
