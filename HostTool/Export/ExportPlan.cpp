#include "HostTool/Export/ExportPlan.h"

#include "HostTool/HostError.h"

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
std::string WhyNotAsStored(const CGroupPixels& pixels, const CLevel& level)
{
    for (const CChannelPixels& channel : pixels.Channels())
    {
        if (channel.Coding == TileCoding::Png)
            return "its tiles are PNG";
        if (channel.Coding == TileCoding::Bmp)
            return "its tiles are BMP";
        if (channel.IsBlueFirst && channel.Coding == TileCoding::Raw)
            return "its pixels have blue first";
    }
    if (!IsTileSize(level.TileWidth) || !IsTileSize(level.TileHeight))
        return "its tiles of " + TextOfSize(level) + " are no multiples of 16";
    return {};
}

bool BeginsWithTile(const CLevel& level, int64_t x, int64_t y)
{
    return x % level.TileWidth == 0 && y % level.TileHeight == 0;
}

CPixelRect RectFrom(const CLevel& level, int64_t x, int64_t y)
{
    return {x, y, level.Picture.Right() - x, level.Picture.Bottom() - y};
}

CLevelPlan PlanOfFinest(const CGroupPixels& pixels, const CLevel& level)
{
    CLevelPlan plan;
    plan.Level = &level;
    plan.WhyNotAsStored = WhyNotAsStored(pixels, level);
    plan.Rect = level.Picture;
    if (!plan.IsAsStored())
        return plan;
    const CTileRange range = TilesOf(level, level.Picture);
    const CPixelRect firstTile = level.TileRect(range.FirstCol, range.FirstRow);
    plan.Rect = RectFrom(level, firstTile.X, firstTile.Y);
    return plan;
}

CLevelPlan PlanOfLevel(const CGroupPixels& pixels, const CLevel& level, const CLevelPlan& finest)
{
    CLevelPlan plan;
    plan.Level = &level;
    plan.WhyNotAsStored = WhyNotAsStored(pixels, level);
    const CPixelRect& picture = finest.Level->Picture;
    const double zoomOut = static_cast<double>(picture.Width) / static_cast<double>(level.Picture.Width);
    const auto scaled = [&](int64_t margin) { return std::llround(static_cast<double>(margin) / zoomOut); };
    const int64_t x = level.Picture.X - scaled(picture.X - finest.Rect.X);
    const int64_t y = level.Picture.Y - scaled(picture.Y - finest.Rect.Y);
    plan.Rect = RectFrom(level, x, y);
    if (plan.IsAsStored() && !BeginsWithTile(level, x, y))
        plan.WhyNotAsStored = "its tiles do not begin where those of level 0 do";
    return plan;
}

void SetTileSize(CLevelPlan& plan)
{
    const auto usable = [](uint32_t size) { return IsTileSize(size) && size <= MostTileSize ? size : UsualTileSize; };
    plan.TileWidth = plan.IsAsStored() ? plan.Level->TileWidth : usable(plan.Level->TileWidth);
    plan.TileHeight = plan.IsAsStored() ? plan.Level->TileHeight : usable(plan.Level->TileHeight);
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

} // namespace

std::vector<CLevelPlan> PlanOf(const CGroupPixels& pixels)
{
    std::vector<CLevelPlan> plans = {PlanOfFinest(pixels, pixels.Level(0))};
    for (int level = 1; level < pixels.NumOfLevels(); ++level)
        if (pixels.HasLevel(level) && !pixels.Level(level).Picture.IsEmpty())
            plans.push_back(PlanOfLevel(pixels, pixels.Level(level), plans.front()));
    for (CLevelPlan& plan : plans)
    {
        SetTileSize(plan);
        RequireProportion(pixels, plan);
    }
    return plans;
}

} // namespace HostTool
