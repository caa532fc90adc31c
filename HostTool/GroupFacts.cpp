#include "HostTool/DocumentFacts.h"
#include "HostTool/Text.h"

#include <cmath>
#include <cstdio>
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

/// Of a lens: what the document doesn't tell comes as 0 or as an empty text.
std::optional<double> Known(std::optional<double> number)
{
    return number && std::isfinite(*number) && *number > 0 ? number : std::nullopt;
}
std::optional<std::string> Known(std::optional<std::string> text)
{
    return text && !text->empty() ? std::move(text) : std::nullopt;
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
        facts.PixelWidth = Known(length->Number(L"xLength"));
        facts.PixelHeight = Known(length->Number(L"yLength"));
    }
    return facts;
}

/// Property sets of a group. One that can't be read though the document has it becomes a remark.
class CGroupQuestions
{
public:
    CGroupQuestions(const CGroup& group, const CArea& area, Diagnostics& remarks)
        : _Group(group), _Area(area), _Remarks(remarks)
    {
    }

    std::optional<CPropertySet> Ask(const wchar_t* key) const
    {
        AC_Result result = AC_RESULT_SUCCESS;
        auto set = _Area.Properties(key, &result);
        if (result == AC_RESULT_FAILURE || result == AC_RESULT_FILE_CORRUPT)
            _Remarks.push_back({"error", "property-unreadable",
                                "group " + std::to_string(_Group.Number()) + ": '" + ToUtf8(key) +
                                    "' can't be read (result " + std::to_string(static_cast<int>(result)) + ")"});
        return set;
    }

private:
    const CGroup& _Group;
    const CArea& _Area;
    Diagnostics& _Remarks;
};

std::optional<CLensFacts> LensFacts(const CGroupQuestions& questions)
{
    const auto set = questions.Ask(L"ObjectiveLensInfo");
    if (!set)
        return std::nullopt;
    return CLensFacts{Known(set->Text(L"name")),      Known(set->Number(L"magnification")),
                      Known(set->Text(L"immersion")), Known(set->Number(L"na")),
                      Known(set->Number(L"wd")),      Known(set->Number(L"refraction"))};
}

std::map<std::string, std::string> DisplayFacts(const CGroup& group)
{
    std::map<std::string, std::string> display;
    for (const wchar_t* name :
         {L"Type", L"Order", L"RenderOperation", L"Transparency", L"PlaneUnit", L"PlaneYUnit", L"PlaneOrigin",
          L"PlaneScale", L"PlaneSize", L"FrameOrigin", L"FrameScale", L"FrameUnit", L"FrameYUnit", L"Axis0", L"Axis1"})
        if (auto text = group.DisplayProperty(std::wstring(L"ZEL_Group") + name))
            display.emplace(ToUtf8(name), std::move(*text));
    return display;
}

void AddSample(CGroupFacts& facts, const CGroupQuestions& questions)
{
    facts.Lens = LensFacts(questions);
    if (const auto stage = questions.Ask(L"XYStagePosition"))
        for (const AC_POINT& position : stage->Points(L"position"))
            facts.StagePosition = position;
    if (const auto work = questions.Ask(L"WorkInfo"))
    {
        facts.Experiment = Known(work->Text(L"name"));
        facts.Sample = Known(work->Text(L"sampleName"));
        facts.SampleComment = Known(work->Text(L"sampleComment"));
    }
    if (const auto regions = questions.Ask(L"AnalysisROIList"))
        facts.NumOfRegions = regions->Texts(L"id").size();
}

CLimits LimitsOf(const CPropertySet& set)
{
    return {static_cast<int>(set.Number(L"shadow").value_or(0)),
            static_cast<int>(set.Number(L"highlight").value_or(0))};
}

CChannelFacts ChannelFacts(const CGroup& group, const CArea& area, uint32_t channel)
{
    CChannelFacts facts = ChannelFacts(area, channel);
    if (const auto limits = area.Properties(L"LUTInfo", L"channelId", std::to_wstring(channel)))
        facts.Limits = LimitsOf(*limits);
    facts.LookUpTable = area.LookUpTable(channel);
    facts.ExposureTime = group.ExposureTime(channel);
    return facts;
}

} // namespace

std::string UnitNameOf(const std::string& units)
{
    static const std::map<std::string, std::string> names = {
        {"10^0m^1", "m"},    {"10^-2m^1", "cm"}, {"10^-3m^1", "mm"}, {"10^-6m^1", "um"}, {"10^-9m^1", "nm"},
        {"10^-12m^1", "pm"}, {"10^0s^1", "s"},   {"10^-3s^1", "ms"}, {"10^-6s^1", "us"}, {"10^-9s^1", "ns"}};
    const auto name = names.find(units);
    return name == names.end() ? units : name->second;
}

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

std::optional<std::string> CChannelFacts::BrightestColour() const
{
    if (LookUpTable.empty())
        return std::nullopt;
    std::array<char, 8> text{};
    const auto& colour = LookUpTable.back();
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", static_cast<unsigned>(colour[0]) & 0xFF,
                  static_cast<unsigned>(colour[1]) & 0xFF, static_cast<unsigned>(colour[2]) & 0xFF);
    return std::string(text.data());
}

std::vector<uint32_t> ChannelIDs(const CArea& area)
{
    std::vector<uint32_t> channels;
    if (const auto list = area.Properties(L"EnabledChannelIdList"))
        for (const std::string& text : list->Texts(L"id"))
            channels.push_back(static_cast<uint32_t>(std::stoul(text)));
    return channels;
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

CGroupFacts FactsOf(const CGroup& group, Diagnostics& remarks)
{
    CGroupFacts facts;
    facts.Number = group.Number();
    const CArea area = group.FirstArea();
    const CGroupQuestions questions(group, area, remarks);
    if (const auto name = questions.Ask(L"GroupName"))
        facts.Name = name->Text(L"name");
    AddSample(facts, questions);
    facts.Display = DisplayFacts(group);
    for (const uint32_t channel : ChannelIDs(area))
        facts.Channels.push_back(ChannelFacts(group, area, channel));
    facts.Axes = AxesFacts(area);
    const int numOfLevels = group.NumOfLevels();
    for (int level = 0; level < numOfLevels; ++level)
        facts.Levels.push_back(LevelFacts(group, level));
    for (const CLevelFacts& level : facts.Levels)
        if (!level.HasData)
            remarks.push_back(
                {"warning", "level-without-data",
                 "group " + std::to_string(facts.Number) + ": level " + std::to_string(level.Level) + " has no data"});
    return facts;
}

} // namespace HostTool
