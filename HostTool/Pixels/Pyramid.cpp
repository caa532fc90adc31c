#include "HostTool/Pixels/Pyramid.h"

#include "HostTool/HostError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <sstream>

namespace HostTool
{

namespace
{

constexpr int64_t MostPixels = std::numeric_limits<int32_t>::max();

int64_t FloorDiv(int64_t a, int64_t b)
{
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

/// The plug-in wraps what is left of or above the origin around at 32 bits.
int64_t Unwrapped(UINT64 place)
{
    return static_cast<int32_t>(static_cast<uint32_t>(place));
}

using Pair = std::array<double, 2>;

std::optional<Pair> PairOf(const std::optional<std::string>& text)
{
    if (!text)
        return std::nullopt;
    std::istringstream stream(*text);
    stream.imbue(std::locale::classic());
    Pair pair{};
    char comma = 0;
    if (!(stream >> pair[0] >> comma >> pair[1]))
        return std::nullopt;
    return pair;
}

/// The size of a pixel of the finest level in micrometres; nothing if it's not told.
std::optional<Pair> PixelSizeOf(const CGroup& group)
{
    const auto length = group.FirstArea().Properties(L"PixelLength");
    const Pair size = {length ? length->Number(L"xLength").value_or(0) : 0,
                       length ? length->Number(L"yLength").value_or(0) : 0};
    return size[0] > 0 && size[1] > 0 ? std::optional(size) : std::nullopt;
}

/// How far the plug-in takes a group's picture to lie from the corner of all pictures of the document, in its pixels:
/// it divides the distance of the origins, in whatever unit the document has, by the size of a pixel in micrometres.
/// 0 if it's not told.
std::array<int64_t, 2> DistanceToOthers(const CDocument& document, const CGroup& group)
{
    const auto origin = PairOf(group.DisplayProperty(L"ZEL_GroupFrameOrigin"));
    const auto pixelSize = PixelSizeOf(group);
    if (!origin || !pixelSize)
        return {};
    Pair corner = *origin;
    for (const int other : document.ReadableGroups())
        if (const auto its = PairOf(document.Group(other).DisplayProperty(L"ZEL_GroupFrameOrigin")))
            corner = {std::min(corner[0], (*its)[0]), std::min(corner[1], (*its)[1])};
    std::array<int64_t, 2> distance{};
    for (size_t i = 0; i < 2; ++i)
    {
        const double pixels = std::abs(((*origin)[i] - corner[i]) / (*pixelSize)[i]);
        if (pixels < static_cast<double>(MostPixels)) // not if it is no number
            distance[i] = std::llround(pixels);
    }
    return distance;
}

/// The number of the tile at a place of a calibrated group, which the plug-in tells from the corner of all pictures of
/// the document; `distance` is that of this group's, in pixels of the level.
int64_t TileAt(UINT64 place, double distance, UINT64 tileSize)
{
    return std::llround((static_cast<double>(Unwrapped(place)) - distance) / static_cast<double>(tileSize));
}

/// All of a level but where its picture begins. `distance` is that of the group's picture from the corner of all
/// pictures of the document, in pixels of the finest level, whose picture is `widthOfFinest` wide.
std::optional<CLevel> LevelOf(const CGroup& group, int number, const std::array<int64_t, 2>& distance,
                              UINT64 widthOfFinest)
{
    const auto rect = group.LevelRect(number);
    if (!rect)
        return std::nullopt;
    CLevel level;
    level.Level = number;
    level.Grid = group.Grid(number);
    if (level.Grid.Cols == 0 || level.Grid.Rows == 0)
        return std::nullopt;
    const CArea area = group.Area(number, 0);
    const CMN_RECT tile = area.Position();
    if (tile.width == 0 || tile.height == 0 || rect->width < level.Grid.Cols || rect->height < level.Grid.Rows ||
        rect->width > MostPixels || rect->height > MostPixels)
        return std::nullopt;
    // Areas are told in the size of level 0's tiles, which need not be that of this level's.
    level.TileWidth = static_cast<uint32_t>(rect->width / level.Grid.Cols);
    level.TileHeight = static_cast<uint32_t>(rect->height / level.Grid.Rows);
    const CMN_RECT picture = group.PictureRect(number).value_or(CMN_RECT{0, 0, rect->width, rect->height});
    level.Picture = {static_cast<int64_t>(picture.x), static_cast<int64_t>(picture.y),
                     static_cast<int64_t>(std::min<UINT64>(picture.width, MostPixels)),
                     static_cast<int64_t>(std::min<UINT64>(picture.height, MostPixels))};
    if (const auto length = area.Properties(L"PixelLength"))
    {
        const auto known = [](std::optional<double> number_)
        { return number_.value_or(0) > 0 ? number_ : std::nullopt; };
        level.PixelWidth = known(length->Number(L"xLength"));
        level.PixelHeight = known(length->Number(L"yLength"));
    }
    const bool hasDistance = level.PixelWidth && level.PixelHeight && picture.width > 0;
    const double zoomOut = hasDistance ? static_cast<double>(widthOfFinest) / static_cast<double>(picture.width) : 1;
    const auto ofLevel = [&](int64_t pixels) { return hasDistance ? static_cast<double>(pixels) / zoomOut : 0; };
    level.FirstCol = TileAt(tile.x, ofLevel(distance[0]), tile.width);
    level.FirstRow = TileAt(tile.y, ofLevel(distance[1]), tile.height);
    return level;
}

bool Fits(const CToldAxis& axis, int64_t start)
{
    const int64_t end = (std::min<int64_t>(axis.FirstTile, 0) + axis.NumOfTiles) * axis.TileSize;
    return start >= axis.FirstTile * axis.TileSize && start + axis.PictureSize <= end;
}

int64_t UncheckedStartOf(const CToldAxis& axis)
{
    const bool isBeforeOrigin = axis.FirstTile < 0;
    if (!axis.IsCalibrated)
        return isBeforeOrigin ? -axis.Told : axis.Told; // the cropping itself
    // A picture that is not cropped begins at tile 0. All the same, one that begins with its first tile is told alike.
    if (axis.Told == axis.DistanceToOthers)
        return Fits(axis, 0) || !Fits(axis, axis.FirstTile * axis.TileSize) ? 0 : axis.FirstTile * axis.TileSize;
    // The distance from the first tile, if that were as high as it's wide.
    return isBeforeOrigin ? axis.FirstTile * axis.TileWidth + axis.Told : axis.Told;
}

} // namespace

int64_t PictureStartOf(const CToldAxis& axis)
{
    const int64_t start = UncheckedStartOf(axis);
    // Beyond its own tiles the number is none that could be understood.
    return Fits(axis, start) || !Fits(axis, 0) ? start : 0;
}

CPixelRect Intersection(const CPixelRect& a, const CPixelRect& b)
{
    const int64_t x = std::max(a.X, b.X);
    const int64_t y = std::max(a.Y, b.Y);
    return {x, y, std::max<int64_t>(std::min(a.Right(), b.Right()) - x, 0),
            std::max<int64_t>(std::min(a.Bottom(), b.Bottom()) - y, 0)};
}

CPixelRect CLevel::TileRect(int64_t col, int64_t row) const
{
    return {col * TileWidth, row * TileHeight, TileWidth, TileHeight};
}

std::optional<uint64_t> CLevel::AreaOf(int64_t col, int64_t row) const
{
    const auto x = static_cast<uint64_t>(col - FirstCol); // wraps below the first one
    const auto y = static_cast<uint64_t>(row - FirstRow);
    if (x >= Grid.Cols || y >= Grid.Rows)
        return std::nullopt;
    return Grid.AreaID(x, y);
}

CTileRange TilesOf(const CLevel& level, const CPixelRect& rect)
{
    return {FloorDiv(rect.X, level.TileWidth), FloorDiv(rect.Right() - 1, level.TileWidth),
            FloorDiv(rect.Y, level.TileHeight), FloorDiv(rect.Bottom() - 1, level.TileHeight)};
}

std::vector<std::optional<CLevel>> PyramidOf(const CDocument& document, const CGroup& group)
{
    std::vector<std::optional<CLevel>> levels;
    const auto distance = DistanceToOthers(document, group);
    const UINT64 widthOfFinest = group.PictureRect(0).value_or(CMN_RECT{}).width;
    for (int number = 0; number < group.NumOfLevels(); ++number)
        levels.push_back(LevelOf(group, number, distance, widthOfFinest));
    if (levels.empty() || !levels.front())
        throw CHostError(ExitCode::BadFile, document.Path().string() + ": group " + std::to_string(group.Number()) +
                                                " has no data for its finest level; the document is damaged");
    const CLevel finest = *levels.front();
    const bool isCalibrated = finest.PixelWidth && finest.PixelHeight;
    const int64_t x =
        PictureStartOf({finest.Picture.X, finest.FirstCol, finest.TileWidth, finest.TileWidth,
                        static_cast<int64_t>(finest.Grid.Cols), finest.Picture.Width, isCalibrated, distance[0]});
    const int64_t y =
        PictureStartOf({finest.Picture.Y, finest.FirstRow, finest.TileHeight, finest.TileWidth,
                        static_cast<int64_t>(finest.Grid.Rows), finest.Picture.Height, isCalibrated, distance[1]});
    for (auto& level : levels)
    {
        if (!level || level->Picture.Width <= 0 || finest.Picture.Width <= 0)
            continue;
        const double zoomOut = static_cast<double>(finest.Picture.Width) / static_cast<double>(level->Picture.Width);
        level->Picture.X = static_cast<int64_t>(static_cast<double>(x) / zoomOut);
        level->Picture.Y = static_cast<int64_t>(static_cast<double>(y) / zoomOut);
    }
    return levels;
}

} // namespace HostTool
