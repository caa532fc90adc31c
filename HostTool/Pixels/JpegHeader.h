#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace HostTool
{

/// What the segments of a JPEG stream tell before its pixels begin.
struct CJpegHeader
{
    uint32_t Width = 0;
    uint32_t Height = 0;
    uint32_t NumOfComponents = 0;
    uint32_t BitsPerComponent = 8;
    uint8_t Process = 0xC0;          ///< the marker that begins the frame; 0xC3 is lossless
    bool AreColoursRgb = false;      ///< of three components; otherwise they are luminance and chrominance
    uint16_t HorizontalSampling = 1; ///< of the first component, as a multiple of the others'
    uint16_t VerticalSampling = 1;
    bool HasTables = false; ///< the quantisation tables that its decoding takes, or some
    bool operator==(const CJpegHeader&) const = default;
};

/// Nothing if the bytes are no JPEG stream, or end before the pixels begin.
std::optional<CJpegHeader> ReadJpegHeader(std::span<const uint8_t> bytes);

} // namespace HostTool
