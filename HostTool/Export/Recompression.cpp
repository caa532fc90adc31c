#include "HostTool/Export/Recompression.h"

#include "HostTool/Export/TiffFields.h"
#include "HostTool/Export/TileEncoders.h"

#include <charconv>
#include <map>

namespace HostTool
{

uint16_t CRecompression::TiffCompression() const
{
    switch (Kind)
    {
    case Recompression::Zstd:
        return TiffCompression::Zstd;
    case Recompression::Jpeg2000:
        return TiffCompression::Jpeg2000;
    case Recompression::Jpeg:
        return TiffCompression::Jpeg;
    default:
        return TiffCompression::Deflate;
    }
}

bool CRecompression::HasDifferences(const CPixelFormat& format) const
{
    return (Kind == Recompression::Deflate || Kind == Recompression::Zstd) && HostTool::HasDifferences(format);
}

std::string CRecompression::WhyNotHoldable(const CPixelFormat& format) const
{
    if (Kind == Recompression::Jpeg && format.BytesPerComponent > 1)
        return "JPEG has values of 8 bits only";
    if (Kind == Recompression::Jpeg2000 && (format.BytesPerComponent > 2 || format.Values != ValueKind::Unsigned))
        return "JPEG 2000 has values of 8 and 16 bits without a sign here";
    return {};
}

std::vector<uint8_t> CRecompression::Encode(const CPixelTarget& pixels) const
{
    switch (Kind)
    {
    case Recompression::Zstd:
        return EncodeZstd(pixels);
    case Recompression::Jpeg2000:
        return EncodeJ2k(pixels);
    case Recompression::Jpeg:
        return EncodeJpeg(pixels, Quality, JpegSampling());
    default:
        return EncodeDeflate(pixels);
    }
}

std::optional<CRecompression> ParseRecompression(const std::string& text)
{
    static const std::map<std::string, Recompression> kinds = {{"deflate", Recompression::Deflate},
                                                               {"zstd", Recompression::Zstd},
                                                               {"jpeg2000", Recompression::Jpeg2000},
                                                               {"jpeg", Recompression::Jpeg}};
    const size_t colon = text.find(':');
    const auto kind = kinds.find(text.substr(0, colon));
    if (kind == kinds.end())
        return std::nullopt;
    CRecompression recompression{kind->second};
    if (colon == std::string::npos)
        return recompression;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data() + colon + 1, end, recompression.Quality);
    const bool isQuality = error == std::errc() && rest == end && recompression.Quality >= 1 &&
                           recompression.Quality <= 100 && kind->second == Recompression::Jpeg;
    return isQuality ? std::optional(recompression) : std::nullopt;
}

} // namespace HostTool
