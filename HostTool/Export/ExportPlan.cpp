#include "HostTool/Export/ExportPlan.h"

#include "HostTool/HostError.h"
#include "HostTool/Pixels/Stitch.h"

#include <algorithm>
#include <cmath>

namespace HostTool
{

namespace
{

constexpr uint32_t TileUnit = 16; // sizes of tiles in TIFF files are multiples of it
constexpr uint32_t UsualTileSize = 256;
constexpr uint32_t MostTileSize = 4096;

bool IsTileSize(uint32_t size)
{
    return size % TileUnit == 0;
}

std::string TextOfSize(const CLevel& level)
{
    return std::to_string(level.TileWidth) + " x " + std::to_string(level.TileHeight);
}

/// Why a TIFF file cannot hold the tiles as they are; empty if it can.
std::string WhyNotAsStored(const CGroupPixels& pixels, const CLevel& level, const CPlanRules& rules)
{
    if (rules.IsRecompressed)
        return "that is asked for";
    for (const CChannelPixels& channel : pixels.Channels())
    {
        if (channel.Coding == TileCoding::Png)
            return "its tiles are PNG";
        if (channel.Coding == TileCoding::Bmp)
            return "its tiles are BMP";
        if (rules.IsForOpenSlide && channel.Coding == TileCoding::Raw)
            return "OpenSlide reads no raw tiles beside a thumbnail";
        if (channel.IsBlueFirst && channel.Coding == TileCoding::Raw)
            return "its pixels have blue first";
    }
    if (!IsTileSize(level.TileWidth) || !IsTileSize(level.TileHeight))
        return "its tiles of " + TextOfSize(level) + " are no multiples of 16";
    if (pixels.HasLowLastStrip(level))
        return "its last strip is lower than the others";
    return {};
}

bool BeginsWithTile(const CLevel& level, int64_t x, int64_t y)
{
    return x % level.TileWidth == 0 && y % level.TileHeight == 0;
}

/// The part of a level that shows what a part of another level shows, at least a pixel. An edge of the picture stays
/// one.
CPixelRect SamePart(const CPixelRect& part, const CLevel& ofPart, const CLevel& level)
{
    const CPixelRect& from = ofPart.Picture;
    const CPixelRect& to = level.Picture;
    if (from.IsEmpty() || to.IsEmpty())
        return {};
    const double zoomOut = static_cast<double>(from.Width) / static_cast<double>(to.Width);
    const auto scaled = [&](int64_t distance) -> int64_t
    { return std::llround(static_cast<double>(distance) / zoomOut); };
    const int64_t x = std::min(to.X + scaled(part.X - from.X), to.Right() - 1);
    const int64_t y = std::min(to.Y + scaled(part.Y - from.Y), to.Bottom() - 1);
    const int64_t right = part.Right() == from.Right() ? to.Right() : to.X + scaled(part.Right() - from.X);
    const int64_t bottom = part.Bottom() == from.Bottom() ? to.Bottom() : to.Y + scaled(part.Bottom() - from.Y);
    return {x, y, std::clamp(right, x + 1, to.Right()) - x, std::clamp(bottom, y + 1, to.Bottom()) - y};
}

/// Makes a level begin with a whole tile.
void BeginWithTile(CLevelPlan& plan)
{
    const CTileRange range = TilesOf(*plan.Level, {plan.Rect.X, plan.Rect.Y, 1, 1});
    const CPixelRect tile = plan.Level->TileRect(range.FirstCol, range.FirstRow);
    plan.Rect = {tile.X, tile.Y, plan.Wanted.Right() - tile.X, plan.Wanted.Bottom() - tile.Y};
}

CLevelPlan PlanOfFinest(const CGroupPixels& pixels, const CLevel& level, const CExportSelection& selection,
                        const CPixelRect& wanted, const CPlanRules& rules)
{
    CLevelPlan plan;
    plan.Level = &level;
    plan.WhyNotAsStored = WhyNotAsStored(pixels, level, rules);
    plan.Wanted = plan.Rect = SamePart(wanted, pixels.Level(0), level);
    if (!plan.IsAsStored() || plan.Rect.IsEmpty())
        return plan;
    // A rectangle is what was asked for, a whole picture is there for its tiles.
    if (!selection.Rect || selection.IsBegunWithWholeTile)
        BeginWithTile(plan);
    else if (!BeginsWithTile(level, plan.Rect.X, plan.Rect.Y))
        plan.WhyNotAsStored = "the rectangle begins within a tile (--whole-tiles widens it)";
    return plan;
}

CLevelPlan PlanOfLevel(const CGroupPixels& pixels, const CLevel& level, const CLevelPlan& finest,
                       const CPlanRules& rules)
{
    CLevelPlan plan;
    plan.Level = &level;
    plan.WhyNotAsStored = WhyNotAsStored(pixels, level, rules);
    plan.Wanted = SamePart(finest.Wanted, *finest.Level, level);
    plan.Rect = SamePart(finest.Rect, *finest.Level, level);
    if (plan.IsAsStored() && !BeginsWithTile(level, plan.Rect.X, plan.Rect.Y))
        plan.WhyNotAsStored =
            "its tiles do not begin where those of level " + std::to_string(finest.Level->Level) + " do";
    return plan;
}

/// Whether a level fits into one tile, so that what is below it adds nothing.
bool IsOneTile(const CLevelPlan& plan)
{
    return plan.Rect.Width <= plan.Level->TileWidth && plan.Rect.Height <= plan.Level->TileHeight;
}

/// The selected part of level 0.
CPixelRect WantedPart(const CGroupPixels& pixels, const CExportSelection& selection)
{
    const CPixelRect& picture = pixels.Level(0).Picture;
    if (!selection.Rect)
        return picture;
    const CPixelRect& rect = *selection.Rect;
    const CPixelRect part = Intersection({picture.X + rect.X, picture.Y + rect.Y, rect.Width, rect.Height}, picture);
    if (part.IsEmpty())
        throw CHostError(ExitCode::WrongUsage, pixels.Document().Path().string() +
                                                   ": --rect: the rectangle lies beside the picture of " +
                                                   std::to_string(picture.Width) + " x " +
                                                   std::to_string(picture.Height) + " pixels; give one that is in it");
    return part;
}

/// Throws CHostError if there is none of the selected levels.
void RequireLevels(const CGroupPixels& pixels, const CRange& levels)
{
    const int64_t last = levels.IsAll() || levels.Last == CRange().Last ? levels.First : levels.Last;
    if (last >= pixels.NumOfLevels())
        throw CHostError(ExitCode::WrongUsage, pixels.Document().Path().string() + ": there is no level " +
                                                   std::to_string(last) + " in " + NameOfGroup(pixels.Group()) +
                                                   "; the last one is " + std::to_string(pixels.NumOfLevels() - 1));
    pixels.Level(static_cast<int>(levels.First)); // throws if it has no data
}

/// A size of tiles that is no larger than that of the picture, if there is one.
uint32_t Within(uint32_t tileSize, int64_t pictureSize)
{
    const int64_t most = std::max<int64_t>(pictureSize / TileUnit * TileUnit, TileUnit);
    return static_cast<uint32_t>(std::min<int64_t>(tileSize, most));
}

void SetTileSize(CLevelPlan& plan, const CPlanRules& rules)
{
    const auto usable = [](uint32_t size) { return IsTileSize(size) && size <= MostTileSize ? size : UsualTileSize; };
    plan.TileWidth = plan.IsAsStored() ? plan.Level->TileWidth : usable(plan.Level->TileWidth);
    plan.TileHeight = plan.IsAsStored() ? plan.Level->TileHeight : usable(plan.Level->TileHeight);
    if (plan.IsAsStored() || !rules.IsForOpenSlide)
        return;
    plan.TileWidth = Within(plan.TileWidth, plan.Rect.Width);
    plan.TileHeight = Within(plan.TileHeight, plan.Rect.Height);
}

/// A damaged document may tell of a picture of any size: what is written has to be in proportion to what there is.
void RequireProportion(const CGroupPixels& pixels, const CLevelPlan& plan)
{
    const CLevel& level = *plan.Level;
    const auto pixelsOfTiles = static_cast<double>(level.Grid.Cols) * static_cast<double>(level.Grid.Rows) *
                               level.TileWidth * level.TileHeight;
    constexpr double pixelsThatAreFewAnyway = 1 << 24;
    const double pixelsOfPicture = static_cast<double>(plan.Rect.Width) * static_cast<double>(plan.Rect.Height);
    if (plan.Rect.IsEmpty() || pixelsOfPicture > 16 * std::max(pixelsOfTiles, pixelsThatAreFewAnyway))
        throw CHostError(ExitCode::BadFile, pixels.Document().Path().string() + ": level " +
                                                std::to_string(level.Level) + " of " + NameOfGroup(pixels.Group()) +
                                                " is told to be " + std::to_string(plan.Rect.Width) + " x " +
                                                std::to_string(plan.Rect.Height) +
                                                " pixels, which its tiles are far from; the document "
                                                "is damaged, 'zel region' still gets parts of it");
}

struct CPlaceInGrid
{
    int64_t Col = 0;
    int64_t Row = 0;
};

/// Where a tile of the file stands in its level.
CPlaceInGrid PlaceOf(const CLevelPlan& plan, uint64_t col, uint64_t row)
{
    const CTileRange first = TilesOf(*plan.Level, {plan.Rect.X, plan.Rect.Y, 1, 1});
    return {first.FirstCol + static_cast<int64_t>(col), first.FirstRow + static_cast<int64_t>(row)};
}

} // namespace

std::vector<CLevelPlan> PlanOf(const CGroupPixels& pixels, const CExportSelection& selection, const CPlanRules& rules)
{
    RequireLevels(pixels, selection.Levels);
    const auto first = static_cast<int>(selection.Levels.First);
    const auto end = static_cast<int>(std::min<int64_t>(selection.Levels.Last, pixels.NumOfLevels() - 1)) + 1;
    std::vector<CLevelPlan> plans = {
        PlanOfFinest(pixels, pixels.Level(first), selection, WantedPart(pixels, selection), rules)};
    for (int level = first + 1; level < end; ++level)
    {
        if (selection.Rect && IsOneTile(plans.back()))
            break;
        if (pixels.HasLevel(level) && !pixels.Level(level).Picture.IsEmpty())
            plans.push_back(PlanOfLevel(pixels, pixels.Level(level), plans.front(), rules));
    }
    if (rules.IsForOpenSlide)
        while (plans.size() > 1 && std::min(plans.back().Rect.Width, plans.back().Rect.Height) < TileUnit)
            plans.pop_back();
    for (CLevelPlan& plan : plans)
    {
        SetTileSize(plan, rules);
        RequireProportion(pixels, plan);
    }
    return plans;
}

std::optional<CStoredTile> ReadStoredTile(const CGroupPixels& pixels, const CLevelPlan& plan, uint64_t col,
                                          uint64_t row, const CPosition& position)
{
    const CPlaceInGrid place = PlaceOf(plan, col, row);
    auto tile = pixels.ReadTile(*plan.Level, place.Col, place.Row, position);
    const CPixelFormat& format = pixels.Channel(position.Channel).Format;
    const uint64_t bytes = uint64_t{plan.TileWidth} * plan.TileHeight * format.BytesPerPixel();
    if (tile && tile->Coding == TileCoding::Raw && tile->Bytes.size() != bytes)
        throw CTileError("it has " + std::to_string(tile->Bytes.size()) + " bytes and not " + std::to_string(bytes));
    if (tile && (tile->Bytes.empty() || tile->Bytes.size() > 0xFFFFFFFFU))
        throw CTileError("it has " + std::to_string(tile->Bytes.size()) + " bytes");
    return tile;
}

std::string NameOfStoredTile(const CLevelPlan& plan, uint64_t col, uint64_t row, const CPosition& position)
{
    const CPlaceInGrid place = PlaceOf(plan, col, row);
    return NameOfTile(*plan.Level, place.Col, place.Row, position);
}

uint64_t NumOfTilesBeside(const CGroupPixels& pixels, const CLevel& level, const CLevelPlan* plan,
                          const std::vector<CPosition>& planes)
{
    const CTileRange shown = plan ? TilesOf(level, plan->Rect) : CTileRange();
    uint64_t count = 0;
    for (uint64_t area = 0; area < level.Grid.Cols * level.Grid.Rows; ++area)
    {
        const int64_t col = level.FirstCol + static_cast<int64_t>(area % level.Grid.Cols);
        const int64_t row = level.FirstRow + static_cast<int64_t>(area / level.Grid.Cols);
        const bool isShown =
            col >= shown.FirstCol && col <= shown.LastCol && row >= shown.FirstRow && row <= shown.LastRow;
        if (!isShown)
            count += static_cast<uint64_t>(std::count_if(planes.begin(), planes.end(),
                                                         [&](const CPosition& position)
                                                         { return pixels.FindImage(level, col, row, position); }));
    }
    return count;
}

} // namespace HostTool
