#include "HostTool/Pixels/StreamSize.h"

#include "HostTool/Pixels/JpegHeader.h"

#include <algorithm>
#include <array>

namespace HostTool
{

namespace
{

uint32_t BigEndianAt(std::span<const uint8_t> bytes, size_t at)
{
    return uint32_t{bytes[at]} << 24 | uint32_t{bytes[at + 1]} << 16 | uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

/// What the first segment of a JPEG 2000 codestream, which may stand behind the boxes of a file, tells of its size.
std::optional<CStreamSize> SizeOfJ2k(std::span<const uint8_t> bytes)
{
    constexpr std::array<uint8_t, 4> start = {0xFF, 0x4F, 0xFF, 0x51};
    constexpr size_t mostBytesOfBoxes = 4096;
    const auto head = bytes.first(std::min(bytes.size(), mostBytesOfBoxes));
    const auto found = std::search(head.begin(), head.end(), start.begin(), start.end());
    const auto at = static_cast<size_t>(found - head.begin());
    constexpr size_t sizeOfSegment = 24; // up to the offset of the picture, inclusive
    if (at + sizeOfSegment > head.size())
        return std::nullopt;
    const CStreamSize end{BigEndianAt(head, at + 8), BigEndianAt(head, at + 12)};
    const CStreamSize offset{BigEndianAt(head, at + 16), BigEndianAt(head, at + 20)};
    if (offset.Width >= end.Width || offset.Height >= end.Height)
        return std::nullopt;
    return CStreamSize{end.Width - offset.Width, end.Height - offset.Height};
}

} // namespace

std::optional<CStreamSize> SizeOfStream(const CStoredTile& tile)
{
    if (tile.Coding == TileCoding::J2k)
        return SizeOfJ2k(tile.Bytes);
    const auto header = tile.Coding == TileCoding::Jpeg ? ReadJpegHeader(tile.Bytes) : std::nullopt;
    return header ? std::optional(CStreamSize{header->Width, header->Height}) : std::nullopt;
}

} // namespace HostTool
