#pragma once

#include "HostTool/Pixels/PixelFormat.h"

#include <optional>
#include <string>
#include <vector>

namespace HostTool
{

enum class Recompression : uint8_t
{
    Deflate,
    Zstd,
    Jpeg2000, ///< without loss
    Jpeg
};

/// How tiles are compressed that are not copied as stored.
struct CRecompression
{
    Recompression Kind = Recompression::Deflate;
    int Quality = 90; ///< of JPEG

    bool IsLossy() const { return Kind == Recompression::Jpeg; }
    /// JPEG of high quality keeps all colours, others those of each second column and row.
    uint16_t JpegSampling() const { return Quality >= 90 ? 1 : 2; }
    /// The number that stands for it in TIFF files.
    uint16_t TiffCompression() const;
    /// Whether numbers are stored as differences from their neighbours, as TIFF has it.
    bool HasDifferences(const CPixelFormat& format) const;
    /// Why it cannot hold pixels of a format, "JPEG has pixels of 8 bits only"; empty if it can.
    std::string WhyNotHoldable(const CPixelFormat& format) const;
    /// May change the pixels on the way. Throws CTileError or std::bad_alloc.
    std::vector<uint8_t> Encode(const CPixelTarget& pixels) const;
};

/// "deflate", "zstd", "jpeg2000", "jpeg" or "jpeg:85"; nothing for any other text.
std::optional<CRecompression> ParseRecompression(const std::string& text);

} // namespace HostTool
