#include "HostTool/Pixels/StreamCheck.h"

#include "HostTool/Pixels/JpegHeader.h"

#include <algorithm>
#include <array>

namespace HostTool
{

namespace
{

constexpr std::array<uint8_t, 8> StartOfJp2 = {0, 0, 0, 12, 'j', 'P', ' ', ' '};
constexpr std::array<uint8_t, 4> StartOfCodestream = {0xFF, 0x4F, 0xFF, 0x51};

template <size_t Size>
bool BeginsWith(std::span<const uint8_t> bytes, const std::array<uint8_t, Size>& start)
{
    return bytes.size() >= Size && std::equal(start.begin(), start.end(), bytes.begin());
}

/// Both codings end with the same marker. A tile of a TIFF file may come filled up with zeros.
bool EndsWithMarker(std::span<const uint8_t> bytes)
{
    size_t size = bytes.size();
    while (size > 0 && bytes[size - 1] == 0)
        --size;
    return size >= 2 && bytes[size - 2] == 0xFF && bytes[size - 1] == 0xD9;
}

uint32_t NumberAt(std::span<const uint8_t> bytes, size_t at)
{
    return uint32_t{bytes[at]} << 24 | uint32_t{bytes[at + 1]} << 16 | uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

/// The codestream in the boxes of a file, cut where the file ends; empty if there is none.
std::span<const uint8_t> CodestreamIn(std::span<const uint8_t> bytes)
{
    constexpr uint32_t codestream = 0x6A703263; // "jp2c"
    constexpr size_t sizeOfHead = 8;
    constexpr size_t sizeOfLargeHead = 16; // its true size follows the head, when the size in that is 1
    while (bytes.size() >= sizeOfHead)
    {
        const uint32_t told = NumberAt(bytes, 0);
        const bool isLarge = told == 1 && bytes.size() >= sizeOfLargeHead;
        const uint64_t size = told == 0 ? bytes.size()
                              : isLarge ? uint64_t{NumberAt(bytes, 8)} << 32 | NumberAt(bytes, 12)
                                        : told;
        const size_t head = isLarge ? sizeOfLargeHead : sizeOfHead;
        if (NumberAt(bytes, 4) == codestream)
            return bytes.first(std::min<uint64_t>(size, bytes.size())).subspan(std::min(head, bytes.size()));
        if (size < head || size > bytes.size())
            return {};
        bytes = bytes.subspan(size);
    }
    return {};
}

bool BeginsAsJ2k(std::span<const uint8_t> bytes)
{
    return BeginsWith(BeginsWith(bytes, StartOfJp2) ? CodestreamIn(bytes) : bytes, StartOfCodestream);
}

} // namespace

std::string WhyNoBeginning(TileCoding coding, std::span<const uint8_t> bytes)
{
    if (coding == TileCoding::Jpeg && !ReadJpegHeader(bytes))
        return "it does not begin as a JPEG stream";
    if (coding == TileCoding::J2k && !BeginsAsJ2k(bytes))
        return "it does not begin as a JPEG 2000 stream";
    return {};
}

bool HasEnd(TileCoding coding, std::span<const uint8_t> bytes)
{
    if (coding == TileCoding::J2k && BeginsWith(bytes, StartOfJp2))
        return EndsWithMarker(CodestreamIn(bytes));
    return (coding != TileCoding::Jpeg && coding != TileCoding::J2k) || EndsWithMarker(bytes);
}

std::string WhyNoStream(const CStoredTile& tile)
{
    std::string why = WhyNoBeginning(tile.Coding, tile.Bytes);
    if (!why.empty() || HasEnd(tile.Coding, tile.Bytes))
        return why;
    return tile.Coding == TileCoding::Jpeg ? "its JPEG stream has no end" : "its JPEG 2000 stream has no end";
}

} // namespace HostTool
