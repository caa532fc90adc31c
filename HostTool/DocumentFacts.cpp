#include "HostTool/DocumentFacts.h"

#include <limits>

namespace HostTool
{

namespace
{

std::optional<int> AsInt(std::optional<double> number)
{
    // The interface hands out "unknown" as a number below 0.
    return number && *number >= 0 && *number <= std::numeric_limits<int>::max()
               ? std::optional<int>(static_cast<int>(*number))
               : std::nullopt;
}

/// How the interface's property keys call an axis.
const wchar_t* PropertyNameOf(AC_AxisType axis)
{
    switch (axis)
    {
    case AC_AT_Z:
        return L"ZSTACK";
    case AC_AT_TIME:
        return L"TIMELAPSE";
    default:
        return L"LAMBDA";
    }
}

/// Nothing if the group does not have the axis.
std::optional<CAxisFacts> AxisFacts(const CArea& area, AC_AxisType axis)
{
    const auto info = area.Properties(L"AxisInfo", L"axisName", PropertyNameOf(axis));
    if (!info)
        return std::nullopt;
    CAxisFacts facts;
    facts.Type = axis;
    facts.NumOfPositions = AsInt(info->Number(L"maxSize")).value_or(1);
    facts.Start = info->Number(L"start");
    facts.End = info->Number(L"end");
    facts.Step = info->Number(L"step");
    facts.Units = info->Text(L"units");
    if (axis == AC_AT_TIME && !facts.Units)
        facts.Units = "s"; // the interface counts times in seconds, and does not say so
    return facts;
}

std::vector<CAxisFacts> AxesFacts(const CArea& area)
{
    std::vector<CAxisFacts> axes;
    for (const AC_AxisType axis : {AC_AT_Z, AC_AT_TIME, AC_AT_LAMBDA})
    {
        const auto facts = AxisFacts(area, axis);
        if (facts && facts->NumOfPositions > 1)
            axes.push_back(*facts);
    }
    return axes;
}

std::vector<uint32_t> ChannelIDs(const CArea& area)
{
    std::vector<uint32_t> channels;
    if (const auto list = area.Properties(L"EnabledChannelIdList"))
        for (const std::string& text : list->Texts(L"id"))
            channels.push_back(static_cast<uint32_t>(std::stoul(text)));
    return channels;
}

CLevelFacts LevelFacts(const CGroup& group, int level)
{
    CLevelFacts facts;
    facts.Level = level;
    const auto rect = group.LevelRect(level);
    if (!rect)
        return facts;
    facts.HasData = true;
    facts.TilesRect = *rect;
    facts.PictureRect = group.PictureRect(level);
    facts.Grid = group.Grid(level);
    const CArea area = group.Area(level, 0);
    const CMN_RECT tile = area.Position();
    facts.TileWidth = tile.width;
    facts.TileHeight = tile.height;
    if (const auto length = area.Properties(L"PixelLength"))
    {
        // An uncalibrated image reports a length of 0.
        const auto known = [](std::optional<double> number) { return number.value_or(0) > 0 ? number : std::nullopt; };
        facts.PixelWidth = known(length->Number(L"xLength"));
        facts.PixelHeight = known(length->Number(L"yLength"));
    }
    return facts;
}

} // namespace

std::string NameOf(AC_AxisType axis)
{
    switch (axis)
    {
    case AC_AT_Z:
        return "Z";
    case AC_AT_TIME:
        return "T";
    default:
        return "lambda";
    }
}

CChannelFacts ChannelFacts(const CArea& area, uint32_t channel)
{
    CChannelFacts facts;
    facts.ID = channel;
    if (const auto info = area.Properties(L"ChannelInfo", L"channelId", std::to_wstring(channel)))
    {
        facts.Name = info->Text(L"name");
        facts.Format = info->Text(L"format");
        facts.ColorSpace = info->Text(L"colorSpace");
        facts.BytesPerPixel = AsInt(info->Number(L"depth"));
        facts.NumOfUsedBits = AsInt(info->Number(L"bitCount"));
    }
    return facts;
}

CGroupFacts FactsOf(const CGroup& group)
{
    CGroupFacts facts;
    facts.Number = group.Number();
    const CArea area = group.Area(0, 0);
    if (const auto name = area.Properties(L"GroupName"))
        facts.Name = name->Text(L"name");
    for (const uint32_t channel : ChannelIDs(area))
        facts.Channels.push_back(ChannelFacts(area, channel));
    facts.Axes = AxesFacts(area);
    const int numOfLevels = group.NumOfLevels();
    for (int level = 0; level < numOfLevels; ++level)
        facts.Levels.push_back(LevelFacts(group, level));
    return facts;
}

CDocumentFacts FactsOf(const CDocument& document)
{
    CDocumentFacts facts;
    facts.Path = document.Path();
    facts.FormatVersion = document.FormatVersion();
    const int numOfGroups = document.NumOfGroups();
    for (int group = 0; group < numOfGroups; ++group)
        facts.Groups.push_back(FactsOf(document.Group(group)));
    return facts;
}

} // namespace HostTool
