#include "HostTool/DecodedTile.h"

#include "HostTool/HostError.h"
#include "HostTool/Pixels/JpegHeader.h"
#include "HostTool/Pixels/PictureFile.h"
#include "HostTool/Pixels/Stitch.h"

#include <algorithm>
#include <array>

namespace HostTool
{

namespace
{

struct CStreamSize
{
    uint32_t Width = 0;
    uint32_t Height = 0;
};

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

std::optional<CStreamSize> SizeOfStream(const CStoredTile& tile)
{
    if (tile.Coding == TileCoding::J2k)
        return SizeOfJ2k(tile.Bytes);
    const auto header = tile.Coding == TileCoding::Jpeg ? ReadJpegHeader(tile.Bytes) : std::nullopt;
    return header ? std::optional(CStreamSize{header->Width, header->Height}) : std::nullopt;
}

} // namespace

void TakeSizeOfStream(CPixelTarget& target, const CStoredTile& tile)
{
    const auto size = SizeOfStream(tile);
    // A stream of a damaged document can claim any size; those of strips differ by less than this.
    if (!size || uint64_t{size->Width} * size->Height > 2 * uint64_t{target.Width} * target.Height)
        return;
    target.Width = size->Width;
    target.Height = size->Height;
}

std::string WriteDecodedTile(const CGroupPixels& pixels, const CTilePlace& place, std::filesystem::path path)
{
    const CLevel& level = pixels.Level(place.Level);
    const int64_t col = level.FirstCol + static_cast<int64_t>(place.Col);
    const int64_t row = level.FirstRow + static_cast<int64_t>(place.Row);
    const std::string name = NameOfTile(level, col, row, place.Position);
    if (!path.has_extension())
        path += ".png";
    if (path.extension() != ".png")
        throw CHostError(ExitCode::WrongUsage,
                         path.string() + ": a decoded tile is a PNG picture; give a name that ends in .png");
    try
    {
        const auto tile = pixels.ReadTile(level, col, row, place.Position);
        if (!tile)
            throw CTileError("it is not handed out by the plug-in");
        CPixelTarget target;
        target.Format = pixels.Channel(place.Position.Channel).Format;
        target.Width = level.TileWidth;
        target.Height = level.TileHeight;
        TakeSizeOfStream(target, *tile);
        target.Stride = size_t{target.Width} * target.Format.BytesPerPixel();
        ByteBuffer bytes(target.Stride * target.Height);
        target.Pixels = bytes.data();
        DecodeTile(*tile, target);
        const auto writer =
            MakePictureWriter(path, {target.Width, target.Height, target.Format, level.PixelWidth, level.PixelHeight});
        writer->Write(bytes);
        writer->Finish();
        return path.string() + ": decoded, " + std::to_string(target.Width) + " x " + std::to_string(target.Height) +
               ", as PNG";
    }
    catch (const CTileError& error)
    {
        throw CHostError(ExitCode::BadFile,
                         pixels.Document().Path().string() + ": " + name + ": cannot be decoded: " + error.what());
    }
}

} // namespace HostTool
