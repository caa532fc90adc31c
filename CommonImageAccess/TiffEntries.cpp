#include "CommonImageAccess/TiffEntries.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <tiffio.h>

namespace CIA
{

namespace
{

/// Sorted. What is asked of libtiff here, what it needs to find and decode pixels by itself, and what it refuses a
/// directory for when it is damaged.
constexpr auto NeededTags = std::to_array<uint16_t>({TIFFTAG_IMAGEWIDTH,
                                                     TIFFTAG_IMAGELENGTH,
                                                     TIFFTAG_BITSPERSAMPLE,
                                                     TIFFTAG_COMPRESSION,
                                                     TIFFTAG_PHOTOMETRIC,
                                                     TIFFTAG_FILLORDER,
                                                     TIFFTAG_IMAGEDESCRIPTION,
                                                     TIFFTAG_STRIPOFFSETS,
                                                     TIFFTAG_ORIENTATION,
                                                     TIFFTAG_SAMPLESPERPIXEL,
                                                     TIFFTAG_ROWSPERSTRIP,
                                                     TIFFTAG_STRIPBYTECOUNTS,
                                                     TIFFTAG_MINSAMPLEVALUE,
                                                     TIFFTAG_MAXSAMPLEVALUE,
                                                     TIFFTAG_PLANARCONFIG,
                                                     TIFFTAG_WHITEPOINT,
                                                     TIFFTAG_COLORMAP,
                                                     TIFFTAG_TILEWIDTH,
                                                     TIFFTAG_TILELENGTH,
                                                     TIFFTAG_TILEOFFSETS,
                                                     TIFFTAG_TILEBYTECOUNTS,
                                                     TIFFTAG_INKSET,
                                                     TIFFTAG_EXTRASAMPLES,
                                                     TIFFTAG_SAMPLEFORMAT,
                                                     TIFFTAG_SMINSAMPLEVALUE,
                                                     TIFFTAG_SMAXSAMPLEVALUE,
                                                     TIFFTAG_JPEGTABLES,
                                                     TIFFTAG_JPEGPROC,
                                                     TIFFTAG_JPEGIFOFFSET,
                                                     TIFFTAG_JPEGIFBYTECOUNT,
                                                     TIFFTAG_JPEGRESTARTINTERVAL,
                                                     TIFFTAG_JPEGQTABLES,
                                                     TIFFTAG_JPEGDCTABLES,
                                                     TIFFTAG_JPEGACTABLES,
                                                     TIFFTAG_YCBCRCOEFFICIENTS,
                                                     TIFFTAG_YCBCRSUBSAMPLING,
                                                     TIFFTAG_YCBCRPOSITIONING,
                                                     TIFFTAG_REFERENCEBLACKWHITE,
                                                     TIFFTAG_DATATYPE,
                                                     TIFFTAG_IMAGEDEPTH,
                                                     TIFFTAG_TILEDEPTH});
static_assert(std::ranges::is_sorted(NeededTags));

// An entry is a tag, a type, the number of values, and the values or where they lie.
constexpr uint64_t SizeOfTag = 2;
constexpr uint64_t SizeOfType = 2;

/// By type, 0 for one that is none.
constexpr std::array<uint8_t, 19> SizesOfValues = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4, 0, 0, 8, 8, 8};

/// The bytes that the file has of the values of an entry, if they do not stand in the entry itself.
uint64_t SizeOfValuesElsewhere(std::span<const unsigned char> entry, const CTiffLayout& layout, uint64_t sizeOfFile)
{
    const uint64_t type = layout.NumberOf(entry.subspan(SizeOfTag, SizeOfType));
    const uint64_t sizeOfValue = type < SizesOfValues.size() ? SizesOfValues[type] : 0;
    const auto counts = entry.subspan(SizeOfTag + SizeOfType);
    const uint64_t numOfValues = layout.NumberOf(counts.first(layout.SizeOfOffset()));
    if (sizeOfValue == 0 || numOfValues <= layout.SizeOfOffset() / sizeOfValue)
        return 0;
    const uint64_t offset = layout.NumberOf(counts.last(layout.SizeOfOffset()));
    const uint64_t sizeOfRest = sizeOfFile - std::min(offset, sizeOfFile);
    return numOfValues > sizeOfRest / sizeOfValue ? sizeOfRest : numOfValues * sizeOfValue;
}

} // namespace

uint64_t CTiffLayout::NumberOf(std::span<const unsigned char> bytes) const
{
    uint64_t number = 0;
    for (size_t n = 0; n < bytes.size(); ++n)
        number = number << 8 | bytes[_isBigEndian ? n : bytes.size() - 1 - n];
    return number;
}

void CTiffLayout::AppendNumber(std::vector<unsigned char>& bytes, uint64_t number, uint64_t sizeOfNumber) const
{
    for (uint64_t n = 0; n < sizeOfNumber; ++n)
        bytes.push_back(static_cast<unsigned char>(number >> 8 * (_isBigEndian ? sizeOfNumber - 1 - n : n)));
}

CNeededEntries NeededEntriesOf(std::span<const unsigned char> entries, const CTiffLayout& layout, uint64_t sizeOfFile)
{
    CNeededEntries needed;
    std::bitset<NeededTags.size()> areFound;
    for (; entries.size() >= layout.SizeOfEntry(); entries = entries.subspan(layout.SizeOfEntry()))
    {
        const auto entry = entries.first(layout.SizeOfEntry());
        const auto tag = std::ranges::lower_bound(NeededTags, layout.NumberOf(entry.first(SizeOfTag)));
        const auto numberOfTag = static_cast<size_t>(tag - NeededTags.begin());
        if (tag == NeededTags.end() || *tag != layout.NumberOf(entry.first(SizeOfTag)) || areFound[numberOfTag])
            continue;
        areFound.set(numberOfTag);
        needed.Bytes.insert(needed.Bytes.end(), entry.begin(), entry.end());
        needed.SizeOfValues += SizeOfValuesElsewhere(entry, layout, sizeOfFile);
    }
    return needed;
}

} // namespace CIA
