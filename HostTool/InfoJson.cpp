#include "HostTool/InfoJson.h"

#include "HostTool/HostError.h"
#include "HostTool/Pixels/Bitmap.h"
#include "HostTool/Pixels/TileCodec.h"
#include "HostTool/TileKind.h"

#include <nlohmann/json.hpp>

namespace HostTool
{

namespace
{

using Json = nlohmann::ordered_json;

constexpr int SchemaVersion = 2;

template <typename T>
Json OrNull(const std::optional<T>& value)
{
    return value ? Json(*value) : Json();
}

std::string RoleOf(FileRole role)
{
    return role == FileRole::Document ? "document" : role == FileRole::TileStore ? "tileStore" : "other";
}

Json JsonOf(const std::vector<CDocumentFile>& files)
{
    Json list = Json::array();
    for (const CDocumentFile& file : files)
        list.push_back({{"path", file.Path.string()},
                        {"role", RoleOf(file.Role)},
                        {"stack", OrNull(file.StackID)},
                        {"bytes", OrNull(file.Size)},
                        {"isMissing", !file.Size}});
    return list;
}

Json JsonOf(const Diagnostics& first, const Diagnostics& second)
{
    Json list = Json::array();
    for (const Diagnostics* diagnostics : {&first, &second})
        for (const CDiagnostic& diagnostic : *diagnostics)
            list.push_back({{"severity", diagnostic.Severity}, {"code", diagnostic.Code}, {"text", diagnostic.Text}});
    return list;
}

Json JsonOf(const CMN_RECT& rect)
{
    // Tiles left of or above the origin have a place that wrapped around at 32 bits.
    return {{"x", static_cast<int32_t>(static_cast<uint32_t>(rect.x))},
            {"y", static_cast<int32_t>(static_cast<uint32_t>(rect.y))},
            {"width", rect.width},
            {"height", rect.height}};
}

Json JsonOfThumbnail(const std::optional<ByteBuffer>& thumbnail)
{
    if (!thumbnail)
        return {};
    try
    {
        const CBitmap bitmap(*thumbnail);
        return {{"width", bitmap.Width()}, {"height", bitmap.Height()}};
    }
    catch (const CTileError&)
    {
        return {};
    }
}

Json JsonOfOverview(const std::optional<ByteBuffer>& overview)
{
    if (!overview)
        return {};
    const CTileKind* kind = FindTileKind(*overview);
    return {{"kind", kind ? Json(kind->Name) : Json()}, {"bytes", overview->size()}};
}

Json JsonOf(const CDocumentFacts& facts)
{
    return {{"formatVersion", OrNull(facts.FormatVersion)},
            {"deviceName", OrNull(facts.DeviceName)},
            {"deviceVersion", OrNull(facts.DeviceVersion)},
            {"author", OrNull(facts.Author)},
            {"comment", OrNull(facts.Comment)},
            {"familyId", OrNull(facts.FamilyID)},
            {"created", OrNull(facts.Created)},
            {"updated", OrNull(facts.Updated)},
            {"thumbnail", JsonOfThumbnail(facts.Thumbnail)},
            {"overview", JsonOfOverview(facts.Overview)}};
}

Json JsonOf(const CChannelFacts& channel)
{
    Json limits;
    if (channel.Limits)
        limits = {{"shadow", channel.Limits->Shadow}, {"highlight", channel.Limits->Highlight}};
    return {{"channel", channel.ID},
            {"name", OrNull(channel.Name)},
            {"compression", OrNull(channel.Format)},
            {"colorSpace", OrNull(channel.ColorSpace)},
            {"bytesPerPixel", OrNull(channel.BytesPerPixel)},
            {"usedBits", OrNull(channel.NumOfUsedBits)},
            {"color", OrNull(channel.BrightestColour())},
            {"lookUpTableSize", channel.LookUpTable.size()},
            {"limits", std::move(limits)},
            {"exposureTime", OrNull(channel.ExposureTime)},
            {"exposureTimeUnit", channel.ExposureTime ? Json("us") : Json()}};
}

Json JsonOf(const CAxisFacts& axis)
{
    return {{"axis", NameOf(axis.Type)},
            {"positions", axis.NumOfPositions},
            {"start", OrNull(axis.Start)},
            {"end", OrNull(axis.End)},
            {"step", OrNull(axis.Step)},
            {"isEven", axis.Step.value_or(0) != 0},
            {"unit", axis.Units ? Json(UnitNameOf(*axis.Units)) : Json()}};
}

/// By how much a level is smaller than the finest one; nothing if the document doesn't tell.
std::optional<double> DownsampleOf(const CLevelFacts& level, const CLevelFacts& finest)
{
    if (level.PixelWidth && finest.PixelWidth)
        return *level.PixelWidth / *finest.PixelWidth;
    if (level.PictureRect && finest.PictureRect && level.PictureRect->width > 0)
        return static_cast<double>(finest.PictureRect->width) / static_cast<double>(level.PictureRect->width);
    return std::nullopt;
}

Json JsonOf(const CLevelFacts& level, const CLevelFacts& finest, const std::map<int, CStoredCount>& counts)
{
    if (!level.HasData)
        return {{"level", level.Level}, {"hasData", false}};
    const auto count = counts.find(level.Level);
    const bool isCounted = count != counts.end();
    return {{"level", level.Level},
            {"hasData", true},
            {"picture", level.PictureRect ? JsonOf(*level.PictureRect) : Json()},
            {"wholeTiles", JsonOf(level.TilesRect)},
            {"columns", level.Grid.Cols},
            {"rows", level.Grid.Rows},
            {"tileWidth", level.TileWidth},
            {"tileHeight", level.TileHeight},
            {"downsample", OrNull(DownsampleOf(level, finest))},
            {"pixelWidthUm", OrNull(level.PixelWidth)},
            {"pixelHeightUm", OrNull(level.PixelHeight)},
            {"tilesStored", isCounted ? Json(count->second.NumOfStored) : Json()},
            {"tilesAbsent", isCounted ? Json(count->second.NumOfAbsent) : Json()}};
}

Json JsonOf(const CLensFacts& lens)
{
    return {{"name", OrNull(lens.Name)},
            {"magnification", OrNull(lens.Magnification)},
            {"immersion", OrNull(lens.Immersion)},
            {"numericalAperture", OrNull(lens.NumericalAperture)},
            {"workingDistanceMm", OrNull(lens.WorkingDistance)},
            {"refractiveIndex", OrNull(lens.RefractiveIndex)}};
}

Json JsonOfStage(const AC_POINT& position)
{
    return {{"xNm", position.x}, {"yNm", position.y}};
}

Json JsonOf(const CGroupFacts& group, const std::map<int, CStoredCount>& counts)
{
    Json json = {{"group", group.Number},
                 {"name", OrNull(group.Name)},
                 {"lens", group.Lens ? JsonOf(*group.Lens) : Json()},
                 {"stagePosition", group.StagePosition ? JsonOfStage(*group.StagePosition) : Json()},
                 {"experiment", OrNull(group.Experiment)},
                 {"sample", OrNull(group.Sample)},
                 {"sampleComment", OrNull(group.SampleComment)},
                 {"regions", group.NumOfRegions},
                 {"display", Json::object()},
                 {"channels", Json::array()},
                 {"axes", Json::array()},
                 {"levels", Json::array()}};
    for (const auto& [name, text] : group.Display)
        json["display"][name] = text;
    for (const CChannelFacts& channel : group.Channels)
        json["channels"].push_back(JsonOf(channel));
    for (const CAxisFacts& axis : group.Axes)
        json["axes"].push_back(JsonOf(axis));
    for (const CLevelFacts& level : group.Levels)
        json["levels"].push_back(JsonOf(level, group.Levels.front(), counts));
    return json;
}

} // namespace

std::string JsonOf(const CInfo& info, bool isPretty)
{
    static const Diagnostics none;
    Json json = {{"format", "zel info"},
                 {"version", SchemaVersion},
                 {"path", info.Path.string()},
                 {"isOpened", info.Facts.has_value() && info.Missing.empty()},
                 {"document", info.Facts ? JsonOf(*info.Facts) : Json()},
                 {"files", info.Files ? JsonOf(*info.Files) : Json()},
                 {"groups", info.Facts ? Json::array() : Json()},
                 {"diagnostics", JsonOf(info.Remarks, info.Facts ? info.Facts->Remarks : none)}};
    static const std::map<int, CStoredCount> noCounts;
    for (size_t i = 0; info.Facts && i < info.Facts->Groups.size(); ++i)
        json["groups"].push_back(JsonOf(info.Facts->Groups[i], i < info.Counts.size() ? info.Counts[i] : noCounts));
    // What is no UTF-8 in the document must not spoil all else.
    return json.dump(isPretty ? 2 : -1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace HostTool
