#include "HostTool/Pixels/Stitch.h"

#include "HostTool/Pixels/Parallel.h"
#include "HostTool/Pixels/StreamSize.h"

#include <algorithm>
#include <cstring>

namespace HostTool
{

namespace
{

/// The part of a target that begins at x and y.
CPixelTarget PartOf(const CPixelTarget& target, int64_t x, int64_t y, int64_t width, int64_t height)
{
    CPixelTarget part = target;
    part.Pixels += static_cast<size_t>(y) * target.Stride + static_cast<size_t>(x) * target.Format.BytesPerPixel();
    part.Width = static_cast<uint32_t>(width);
    part.Height = static_cast<uint32_t>(height);
    return part;
}

/// The rows of the target that a tile's stream has pixels for: the last strip may end where the picture does.
uint32_t HeightOfStream(const CStoredTile& tile, const CLevel& level, int64_t row, const CPixelTarget& target)
{
    const bool isLastStrip = level.IsInStrips() && row - level.FirstRow == static_cast<int64_t>(level.Grid.Rows) - 1;
    const auto size = isLastStrip ? SizeOfStream(tile) : std::nullopt;
    return size && size->Width == target.Width ? std::min(size->Height, target.Height) : target.Height;
}

} // namespace

void CTileFailures::Add(std::string line)
{
    const std::lock_guard lock(_Mutex);
    if (_Count++ == 0)
        _First = std::move(line);
}

std::string CTileFailures::Text(const std::string& what) const
{
    return Count() == 1
               ? "1 tile cannot be " + what + " and is background: " + First()
               : std::to_string(Count()) + " tiles cannot be " + what + " and are background; the first is " + First();
}

std::string NameOfTile(const CLevel& level, int64_t col, int64_t row, const CPosition& position)
{
    // Columns and rows as 'zel tile' takes them: from the first that exists.
    return "level " + std::to_string(level.Level) + ", column " + std::to_string(col - level.FirstCol) + ", row " +
           std::to_string(row - level.FirstRow) + ", " + TextOf(position);
}

void CStitcher::Fill(const CPixelTarget& target) const
{
    const auto pixel = PixelOf(_Background, target.Format);
    const size_t bytesPerPixel = target.Format.BytesPerPixel();
    for (uint32_t y = 0; y < target.Height; ++y)
    {
        uint8_t* row = target.Row(y);
        for (uint32_t x = 0; x < target.Width; ++x)
            std::memcpy(row + x * bytesPerPixel, pixel.data(), bytesPerPixel);
    }
}

bool CStitcher::Decode(const CLevel& level, int64_t col, int64_t row, const CPosition& position,
                       const CPixelTarget& target)
{
    try
    {
        const auto tile = _Pixels.ReadTile(level, col, row, position);
        if (!tile)
            return false;
        CPixelTarget stored = target;
        stored.Height = HeightOfStream(*tile, level, row, target);
        const bool isCutShort =
            tile->Coding == TileCoding::Raw &&
            tile->Bytes.size() < target.Height * size_t{target.Width} * target.Format.BytesPerPixel();
        if (isCutShort || stored.Height < target.Height)
            Fill(target);
        DecodeTile(*tile, stored);
        return true;
    }
    catch (const CTileError& error)
    {
        _Failures.Add(NameOfTile(level, col, row, position) + ": " + error.what());
        return false;
    }
}

void CStitcher::ReadTile(const CLevel& level, int64_t col, int64_t row, const CPosition& position,
                         const CPixelTarget& target)
{
    if (!Decode(level, col, row, position, target))
        Fill(target);
}

void CStitcher::ReadPart(const CLevel& level, int64_t col, int64_t row, const CPosition& position,
                         const CPixelRect& rect, const CPixelTarget& target)
{
    const CPixelRect tile = level.TileRect(col, row);
    const CPixelRect shown = Intersection(tile, rect);
    const CPixelTarget part = PartOf(target, shown.X - rect.X, shown.Y - rect.Y, shown.Width, shown.Height);
    if (shown == tile)
        return ReadTile(level, col, row, position, part);
    CPixelTarget whole = target;
    const size_t bytesPerPixel = target.Format.BytesPerPixel();
    whole.Width = level.TileWidth;
    whole.Height = level.TileHeight;
    whole.Stride = whole.Width * bytesPerPixel;
    ByteBuffer pixels;
    if (_Pixels.FindImage(level, col, row, position))
    {
        pixels.resize(whole.Stride * whole.Height);
        whole.Pixels = pixels.data();
    }
    if (pixels.empty() || !Decode(level, col, row, position, whole))
        return Fill(part);
    for (uint32_t y = 0; y < part.Height; ++y)
        std::memcpy(part.Row(y),
                    whole.Row(static_cast<uint32_t>(shown.Y - tile.Y) + y) +
                        static_cast<size_t>(shown.X - tile.X) * bytesPerPixel,
                    part.Width * bytesPerPixel);
}

void CStitcher::Read(const CLevel& level, const CPosition& position, const CPixelRect& rect, const CPixelTarget& target)
{
    const CTileRange range = TilesOf(level, rect);
    const auto numOfCols = static_cast<size_t>(range.LastCol - range.FirstCol + 1);
    const auto numOfRows = static_cast<size_t>(range.LastRow - range.FirstRow + 1);
    ForEachInParallel(numOfCols * numOfRows, _Jobs,
                      [&](size_t i)
                      {
                          ReadPart(level, range.FirstCol + static_cast<int64_t>(i % numOfCols),
                                   range.FirstRow + static_cast<int64_t>(i / numOfCols), position, rect, target);
                      });
}

} // namespace HostTool
