#pragma once

#include "HostTool/Pixels/Colour.h"
#include "HostTool/Pixels/JpegHeader.h"
#include "HostTool/Pixels/TileCodec.h"

#include <vector>

namespace HostTool
{

/// Pixels as Deflate with the differences of neighbours, as TIFF has it, without loss. The pixels are changed on the
/// way. Throws std::bad_alloc.
std::vector<uint8_t> EncodeDeflate(const CPixelTarget& pixels);
/// The same as Zstandard.
std::vector<uint8_t> EncodeZstd(const CPixelTarget& pixels);

/// Whether these two took differences: not of floating point.
bool HasDifferences(const CPixelFormat& format);

/// Pixels of 8 bits as a whole JPEG stream; colours are luminance and chrominance, the latter of each `sampling`th
/// column and row. Throws CTileError.
std::vector<uint8_t> EncodeJpeg(const CPixelTarget& pixels, int quality, uint16_t sampling);

/// Pixels of 8 or 16 bits as a JPEG 2000 codestream, without loss. Throws CTileError.
std::vector<uint8_t> EncodeJ2k(const CPixelTarget& pixels);

// Tiles of one colour, for places where none is stored. They are such as the decoders of their neighbours take.

/// A JPEG stream with the components, colours and sampling of `like`. Throws CTileError.
std::vector<uint8_t> EncodeJpegOfOneColour(const CColour& colour, uint32_t width, uint32_t height,
                                           const CJpegHeader& like);

/// A JPEG 2000 codestream, or a file with one. Throws CTileError.
std::vector<uint8_t> EncodeJ2kOfOneColour(const CColour& colour, uint32_t width, uint32_t height,
                                          const CPixelFormat& format, bool isCodestream);

std::vector<uint8_t> RawOfOneColour(const CColour& colour, uint32_t width, uint32_t height, const CPixelFormat& format);

} // namespace HostTool
