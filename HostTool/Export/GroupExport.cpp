#include "HostTool/Export/GroupExport.h"

#include "HostTool/Export/OmeXml.h"
#include "HostTool/Export/PersonalFacts.h"

#include <algorithm>

namespace HostTool
{

namespace
{

/// The regions of a group, without those that lie beside the selected rectangle.
std::vector<CRegionFacts> RegionsIn(const CGroupPixels& pixels, const CExportSelection& selection)
{
    std::vector<CRegionFacts> regions = RegionsOf(pixels.Group());
    if (!selection.Rect)
        return regions;
    const CPixelRect& picture = pixels.Level(0).Picture;
    const int64_t left = picture.X + selection.Rect->X;
    const int64_t top = picture.Y + selection.Rect->Y;
    const auto isBeside =
        [](const std::vector<CRegionPoint>& points, int64_t CRegionPoint::*axis, int64_t first, int64_t end)
    {
        return std::all_of(points.begin(), points.end(), [&](const auto& point) { return point.*axis < first; }) ||
               std::all_of(points.begin(), points.end(), [&](const auto& point) { return point.*axis >= end; });
    };
    std::erase_if(regions,
                  [&](const CRegionFacts& region)
                  {
                      return isBeside(region.Points, &CRegionPoint::X, left, left + selection.Rect->Width) ||
                             isBeside(region.Points, &CRegionPoint::Y, top, top + selection.Rect->Height);
                  });
    return regions;
}

/// Where the images at a position of an axis lie, in the unit of the axis; evenly spaced ones are told by the axis
/// itself.
std::optional<double> PlaceOn(const CGroupExport& group, const CAxisFacts& axis, int64_t index)
{
    if (axis.Start && axis.Step.value_or(0) > 0)
        return *axis.Start + static_cast<double>(index) * *axis.Step;
    const bool isTime = axis.Type == AC_AT_TIME;
    CPosition position;
    position.Channel = group.Pixels.Channels().front().ID;
    (isTime ? position.T : position.Z) = index;
    const CLevel& finest = group.Pixels.Level(0);
    const auto image = group.Pixels.FindImage(finest, finest.FirstCol, finest.FirstRow, position);
    std::optional<double> place = image ? image->AxisPosition(isTime ? L"TIMELAPSE" : L"ZSTACK") : std::nullopt;
    constexpr double millisecondsPerSecond = 1000;
    if (place && isTime)
        *place /= millisecondsPerSecond;
    return place;
}

/// The same of `count` positions from the first one on, in seconds or micrometres.
std::vector<std::optional<double>> PlacesOn(const CGroupExport& group, AC_AxisType type, int64_t first, int64_t count)
{
    std::vector<std::optional<double>> places(static_cast<size_t>(count));
    const auto axis = std::find_if(group.Facts.Axes.begin(), group.Facts.Axes.end(),
                                   [&](const CAxisFacts& candidate) { return candidate.Type == type; });
    if (axis == group.Facts.Axes.end() || !axis->Units)
        return places;
    for (size_t i = 0; i < places.size(); ++i)
        if (const auto place = PlaceOn(group, *axis, first + static_cast<int64_t>(i)))
            places[i] = type == AC_AT_TIME ? place : Micrometres(*place, *axis->Units);
    return places;
}

void RequireHoldable(const CDocument& document, const CGroupExport& group)
{
    const CPixelFormat& format = group.Pixels.Channel(group.Planes.Channels().front()).Format;
    for (const uint32_t id : group.Planes.Channels())
        if (const CChannelPixels& channel = group.Pixels.Channel(id);
            OmeTypeOf(channel.Format).empty() || channel.Format != format)
            throw CHostError(ExitCode::WrongUsage,
                             document.Path().string() + ": OME-TIFF cannot hold the pixels of channel " +
                                 std::to_string(channel.ID) + " of " + NameOfGroup(group.Pixels.Group()) +
                                 "; 'zel region -c' writes them, or say --values float");
}

/// Throws CHostError if the pixels of a group can't be recompressed as it is asked for.
void RequireRecompressible(const CDocument& document, const CGroupExport& group, const CRecompression& recompression)
{
    const uint32_t channel = group.Planes.Channels().front();
    const std::string reason = recompression.WhyNotHoldable(group.Pixels.Channel(channel).Format);
    if (!reason.empty())
        throw CHostError(ExitCode::WrongUsage, document.Path().string() + ": --recompress: " + reason +
                                                   ", unlike channel " + std::to_string(channel) + " of " +
                                                   NameOfGroup(group.Pixels.Group()) + "; choose deflate or zstd");
}

} // namespace

CGroupExport::CGroupExport(const CDocument& document, int number, const CExportRequest& request)
    : Pixels(document, number, request.Values), Planes(Pixels, request.Selection),
      Plan(PlanOf(Pixels, request.Selection, {request.Recompression.has_value(), request.IsFlat})),
      Facts(FactsOf(document.Group(number), Remarks)), Regions(RegionsIn(Pixels, request.Selection))
{
    // Those that are exported, in the order of the file.
    std::vector<CChannelFacts> channels;
    for (const uint32_t id : Planes.Channels())
        for (const CChannelFacts& channel : Facts.Channels)
            if (channel.ID == id)
                channels.push_back(channel);
    Facts.Channels = std::move(channels);
    if (request.IsStripped)
    {
        Strip(Facts);
        for (CRegionFacts& region : Regions)
            Strip(region);
    }
    RequireHoldable(document, *this);
    RequireRecompressible(document, *this, request.Recompression.value_or(CRecompression()));
}

uint64_t CGroupExport::NumOfTiles() const
{
    uint64_t tiles = 0;
    for (const CLevelPlan& level : Plan)
        tiles += level.NumOfCols() * level.NumOfRows();
    return tiles * Planes.Planes().size();
}

std::vector<std::optional<double>> CGroupExport::Times() const
{
    return PlacesOn(*this, AC_AT_TIME, Planes.FirstT(), Planes.Sizes().T);
}

std::vector<std::optional<double>> CGroupExport::Depths() const
{
    return PlacesOn(*this, AC_AT_Z, Planes.FirstZ(), Planes.Sizes().Z);
}

} // namespace HostTool
