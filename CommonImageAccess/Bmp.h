#pragma once
#include "CommonUtil/ArrayStartAndSize.h"

#include <cstdint>
#include <tiffio.h>

namespace CIA
{

using CByteArray = CommonUtil::CArrayStartAndSize<unsigned char>;

/// Bytes of a BMP file before its pixels: the file header and a BITMAPINFOHEADER.
constexpr uint32_t SizeOfBmpHeaders = 54;

/// Writes 32-bit pixels (red in the lowest byte, the first row at the top) as a BMP file of 24 bits a pixel, by the
/// two-call protocol: a null buffer gets the size and 0. Too small a buffer gets the size and 22, with EINVAL in errno.
/// `Size` is the number of bytes written in the end.
/// `resx` and `resy` are pixels a metre.
int Make24BitBMPBufferImgRGBA(uint16_t width, uint16_t height, const uint32_t* img, CByteArray& buf, uint32_t resx,
                              uint32_t resy);

} // namespace CIA

#pragma GCC visibility push(default)
extern "C"
{
    /// Writes the current directory of a TIFF as a BMP file of 24 bits a pixel. A null buffer gets the size and 0. 22
    /// for too small a buffer, 61 when the directory does not tell its size, the value of errno (and a size of 0) when
    /// its pixels cannot be decoded, which goes for all pictures wider or higher than 65535 pixels and for those whose
    /// size exceeds 32 bits, of which a null buffer is told as well.
    int Make24BitBMPBufferTiff(TIFF* tiff, CIA::CByteArray& buf);
}
#pragma GCC visibility pop
