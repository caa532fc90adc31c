#include "HostTool/Pixels/Stitch.h"

#include "HostTool/Pixels/Parallel.h"
#include "HostTool/Pixels/StreamSize.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace HostTool
{

namespace
{

constexpr size_t MostFailuresTold = 20;

/// The part of a target that begins at x and y.
CPixelTarget PartOf(const CPixelTarget& target, int64_t x, int64_t y, int64_t width, int64_t height)
{
    CPixelTarget part = target;
    part.Pixels += static_cast<size_t>(y) * target.Stride + static_cast<size_t>(x) * target.Format.BytesPerPixel();
    part.Width = static_cast<uint32_t>(width);
    part.Height = static_cast<uint32_t>(height);
    return part;
}

/// Copies what a part shows of a whole, from x and y on.
void CopyPart(const CPixelTarget& whole, int64_t x, int64_t y, const CPixelTarget& part)
{
    const size_t bytesPerPixel = part.Format.BytesPerPixel();
    for (uint32_t line = 0; line < part.Height; ++line)
        std::memcpy(part.Row(line), whole.Row(static_cast<uint32_t>(y) + line) + static_cast<size_t>(x) * bytesPerPixel,
                    part.Width * bytesPerPixel);
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
    if (++_Count <= MostFailuresTold)
        _Lines.push_back(std::move(line));
}

std::vector<std::string> CTileFailures::Lines() const
{
    std::vector<std::string> lines = _Lines;
    if (_Count > lines.size())
        lines.push_back("and " + std::to_string(_Count - lines.size()) + " more; 'zel verify --list' tells all");
    return lines;
}

std::string CTileFailures::Text(const std::string& what) const
{
    return Count() == 1 ? "1 tile cannot be " + what + " and is background: " + _Lines.front()
                        : std::to_string(Count()) + " tiles cannot be " + what + " and are background; the first is " +
                              _Lines.front();
}

std::string NameOfTile(const CLevel& level, int64_t col, int64_t row, const CPosition& position)
{
    // Columns and rows as 'zel tile' takes them: from the first that exists.
    return "level " + std::to_string(level.Level) + ", column " + std::to_string(col - level.FirstCol) + ", row " +
           std::to_string(row - level.FirstRow) + ", " + TextOf(position);
}

CColour BackgroundOf(const CGroupPixels& pixels, const std::optional<CColour>& asked)
{
    const bool isPicture = pixels.Channels().size() == 1 && pixels.Channels().front().Format.IsColour();
    return asked.value_or(isPicture ? CColour{255, 255, 255} : CColour{0, 0, 0});
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

CStitcher::Outcome CStitcher::Decode(const CLevel& level, int64_t col, int64_t row, const CPosition& position,
                                     const CPixelTarget& target)
{
    try
    {
        const auto tile = _Pixels.ReadTile(level, col, row, position);
        if (!tile)
            return Outcome::Missing;
        CPixelTarget stored = target;
        stored.Height = HeightOfStream(*tile, level, row, target);
        const bool isCutShort =
            tile->Coding == TileCoding::Raw &&
            tile->Bytes.size() < target.Height * size_t{target.Width} * target.Format.BytesPerPixel();
        if (isCutShort || stored.Height < target.Height)
            Fill(target);
        DecodeTile(*tile, stored);
        return Outcome::Decoded;
    }
    catch (const CTileError& error)
    {
        _Failures.Add(NameOfTile(level, col, row, position) + ": " + error.what());
        return Outcome::Failed;
    }
}

void CStitcher::NoteBand(const CLevel& level, const CPosition& position, const CPixelRect& rect)
{
    const bool isNext = level.Level == _Level && TextOf(position) == TextOf(_Position) && rect.X == _Band.X &&
                        rect.Width == _Band.Width && rect.Y == _Band.Bottom();
    _Level = level.Level;
    _Position = position;
    _Band = rect;
    _TopOfNewTiles = isNext ? rect.Y : std::numeric_limits<int64_t>::min();
}

void CStitcher::NoteMissing(const CLevel& level, const CPixelRect& tile)
{
    // What lies beside the picture is no part of it that is missing.
    const CPixelRect seen = Intersection(Intersection(tile, _Band), level.Picture);
    if (tile.Y >= _TopOfNewTiles && !seen.IsEmpty())
        ++_NumOfFilled;
}

void CStitcher::ReadPart(const CLevel& level, int64_t col, int64_t row, const CPosition& position,
                         const CPixelRect& rect, const CPixelTarget& target)
{
    const CPixelRect tile = level.TileRect(col, row);
    const CPixelRect shown = Intersection(tile, rect);
    const CPixelTarget part = PartOf(target, shown.X - rect.X, shown.Y - rect.Y, shown.Width, shown.Height);
    const bool isWhole = shown == tile;
    CPixelTarget whole = part;
    ByteBuffer pixels;
    if (!isWhole)
    {
        whole.Width = level.TileWidth;
        whole.Height = level.TileHeight;
        whole.Stride = whole.Width * size_t{target.Format.BytesPerPixel()};
        if (_Pixels.FindImage(level, col, row, position))
            pixels.resize(whole.Stride * whole.Height);
        whole.Pixels = pixels.data();
    }
    const Outcome outcome = isWhole || !pixels.empty() ? Decode(level, col, row, position, whole) : Outcome::Missing;
    if (outcome == Outcome::Missing)
        NoteMissing(level, tile);
    if (outcome != Outcome::Decoded)
        return Fill(part);
    if (!isWhole)
        CopyPart(whole, shown.X - tile.X, shown.Y - tile.Y, part);
}

void CStitcher::Read(const CLevel& level, const CPosition& position, const CPixelRect& rect, const CPixelTarget& target)
{
    NoteBand(level, position, rect);
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
