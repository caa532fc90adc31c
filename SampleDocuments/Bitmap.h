#pragma once

#include "SampleDocuments/LookUpTable.h"
#include "SampleDocuments/Picture.h"

namespace SampleDocuments
{

/// How a bitmap stores its pixels.
struct CBitmapOptions
{
    uint16_t Bits = 24;                        ///< 1, 4 or 8 with a palette, or 24
    std::optional<uint32_t> NumOfColours = {}; ///< told in the header: a palette of so many; not set: all, told as 0
    std::optional<uint32_t> SizeOfHeader = {}; ///< told in its first word; 40 if not set
};

/// A bitmap without its file header, as documents keep thumbnails: the 40 bytes of its information header, the palette,
/// the rows from the bottom. Pixels take the nearest colour of the palette. Throws CSampleError for other bits.
ByteString BitmapOf(const CPicture& picture, const CBitmapOptions& options = {});

/// The palette of such a bitmap: greys for a grey picture, else an even choice of colours; none at 24 bits.
std::vector<CColour> PaletteOf(const CPicture& picture, const CBitmapOptions& options);

} // namespace SampleDocuments
