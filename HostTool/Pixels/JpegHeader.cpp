#include "HostTool/Pixels/JpegHeader.h"

#include <array>
#include <cstring>

namespace HostTool
{

namespace
{

enum Marker : uint8_t
{
    StartOfImage = 0xD8,
    StartOfScan = 0xDA,
    HuffmanTables = 0xC4,
    ArithmeticTables = 0xCC,
    QuantisationTables = 0xDB,
    App0 = 0xE0,
    App14 = 0xEE,
    JpgReserved = 0xC8
};

bool BeginsFrame(uint8_t marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != HuffmanTables && marker != ArithmeticTables &&
           marker != JpgReserved;
}

/// The hints at the kind of three components, in the order in which decoders go by them.
struct CColourHints
{
    bool IsJfif = false;
    std::optional<uint8_t> AdobeTransform;
    std::array<uint8_t, 3> Ids{};

    bool AreRgb() const
    {
        if (IsJfif)
            return false;
        if (AdobeTransform)
            return *AdobeTransform == 0;
        return Ids == std::array<uint8_t, 3>{'R', 'G', 'B'};
    }
};

bool ReadFrame(std::span<const uint8_t> segment, CJpegHeader& header, CColourHints& hints)
{
    if (segment.size() < 6)
        return false;
    header.BitsPerComponent = segment[0];
    header.Height = uint32_t{segment[1]} << 8 | segment[2];
    header.Width = uint32_t{segment[3]} << 8 | segment[4];
    header.NumOfComponents = segment[5];
    if (header.NumOfComponents == 0 || segment.size() < 6 + size_t{3} * header.NumOfComponents)
        return false;
    for (size_t i = 0; i < 3 && i < header.NumOfComponents; ++i)
        hints.Ids[i] = segment[6 + 3 * i];
    const auto sampling = [&](size_t component) { return segment[7 + 3 * component]; };
    if (header.NumOfComponents == 3 && sampling(1) >> 4 != 0 && (sampling(1) & 15) != 0)
    {
        header.HorizontalSampling = static_cast<uint16_t>((sampling(0) >> 4) / (sampling(1) >> 4));
        header.VerticalSampling = static_cast<uint16_t>((sampling(0) & 15) / (sampling(1) & 15));
    }
    return true;
}

void ReadHint(uint8_t marker, std::span<const uint8_t> segment, CColourHints& hints)
{
    if (marker == App0 && segment.size() >= 5 && std::memcmp(segment.data(), "JFIF", 5) == 0)
        hints.IsJfif = true;
    if (marker == App14 && segment.size() >= 12 && std::memcmp(segment.data(), "Adobe", 5) == 0)
        hints.AdobeTransform = segment[11];
}

} // namespace

std::optional<CJpegHeader> ReadJpegHeader(std::span<const uint8_t> bytes)
{
    if (bytes.size() < 2 || bytes[0] != 0xFF || bytes[1] != StartOfImage)
        return std::nullopt;
    CJpegHeader header;
    CColourHints hints;
    bool hasFrame = false;
    for (size_t at = 2; at + 4 <= bytes.size();)
    {
        if (bytes[at] != 0xFF)
            return std::nullopt;
        const uint8_t marker = bytes[at + 1];
        if (marker == 0xFF) // fill bytes
        {
            ++at;
            continue;
        }
        const size_t size = size_t{bytes[at + 2]} << 8 | bytes[at + 3];
        if (size < 2 || size > bytes.size() - at - 2)
            return std::nullopt;
        const auto segment = bytes.subspan(at + 4, size - 2);
        if (marker == StartOfScan)
        {
            header.AreColoursRgb = header.NumOfComponents == 3 && hints.AreRgb();
            return hasFrame ? std::optional<CJpegHeader>(header) : std::nullopt;
        }
        if (BeginsFrame(marker))
        {
            header.Process = marker;
            hasFrame = ReadFrame(segment, header, hints);
        }
        header.HasTables = header.HasTables || marker == QuantisationTables || marker == HuffmanTables;
        ReadHint(marker, segment, hints);
        at += 2 + size;
    }
    return std::nullopt;
}

} // namespace HostTool
