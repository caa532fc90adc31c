#include "HostTool/Pixels/TileCodec.h"

#include <algorithm>
#include <cstring>

namespace HostTool
{

namespace
{

void SwapRedAndBlue(uint8_t* row, const CPixelTarget& target)
{
    const size_t component = target.Format.BytesPerComponent;
    for (uint32_t x = 0; x < target.Width; ++x, row += target.Format.BytesPerPixel())
        std::swap_ranges(row, row + component, row + 2 * component);
}

} // namespace

void RequireSize(uint64_t width, uint64_t height, const CPixelTarget& target)
{
    if (width != target.Width || height != target.Height)
        throw CTileError("it is " + std::to_string(width) + " x " + std::to_string(height) + " pixels and not " +
                         std::to_string(target.Width) + " x " + std::to_string(target.Height));
}

void PutRow(std::span<const uint8_t> row, uint32_t numOfComponents, uint32_t bytesPerComponent,
            const CPixelTarget& target, uint32_t y)
{
    const CPixelFormat& format = target.Format;
    if (bytesPerComponent != format.BytesPerComponent ||
        (numOfComponents != format.NumOfComponents && numOfComponents != 1))
        throw CTileError("its pixels have " + std::to_string(numOfComponents) + " components of " +
                         std::to_string(8 * bytesPerComponent) + " bits and not " +
                         std::to_string(format.NumOfComponents) + " of " +
                         std::to_string(8 * format.BytesPerComponent));
    uint8_t* out = target.Row(y);
    if (numOfComponents == format.NumOfComponents)
    {
        std::memcpy(out, row.data(), size_t{target.Width} * format.BytesPerPixel());
        return;
    }
    for (uint32_t x = 0; x < target.Width; ++x)
        for (uint32_t component = 0; component < format.NumOfComponents; ++component, out += bytesPerComponent)
            std::memcpy(out, row.data() + size_t{x} * bytesPerComponent, bytesPerComponent);
}

void DecodeRaw(const CStoredTile& tile, const CPixelTarget& target)
{
    const size_t bytesPerRow = size_t{target.Width} * target.Format.BytesPerPixel();
    const size_t numOfRows = tile.Bytes.size() / bytesPerRow;
    if (numOfRows == 0 || tile.Bytes.size() % bytesPerRow != 0 || numOfRows > target.Height)
        throw CTileError("it has " + std::to_string(tile.Bytes.size()) + " bytes and not " +
                         std::to_string(bytesPerRow * target.Height));
    for (uint32_t y = 0; y < numOfRows; ++y)
    {
        std::memcpy(target.Row(y), tile.Bytes.data() + y * bytesPerRow, bytesPerRow);
        if (tile.IsBlueFirst && target.Format.IsColour())
            SwapRedAndBlue(target.Row(y), target);
    }
}

void DecodeTile(const CStoredTile& tile, const CPixelTarget& target)
{
    switch (tile.Coding)
    {
    case TileCoding::Raw:
        return DecodeRaw(tile, target);
    case TileCoding::Jpeg:
        return DecodeJpeg(tile.Bytes, tile.JpegTables, target);
    case TileCoding::J2k:
        return DecodeJ2k(tile.Bytes, target);
    case TileCoding::Png:
        return DecodePng(tile.Bytes, target);
    case TileCoding::Bmp:
        return DecodeBmp(tile.Bytes, target);
    }
}

} // namespace HostTool
