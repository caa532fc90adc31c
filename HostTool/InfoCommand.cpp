#include "HostTool/InfoCommand.h"

#include "HostTool/Table.h"
#include "HostTool/Text.h"

#include <iostream>
#include <sstream>

namespace HostTool
{

namespace
{

std::string TextOf(double number)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << number;
    return text.str();
}

std::string TextOf(uint64_t width, uint64_t height)
{
    return std::to_string(width) + " x " + std::to_string(height);
}

std::string OrUnknown(const std::optional<std::string>& text)
{
    return text ? Printable(*text) : "unknown";
}

std::string SymbolOf(const std::string& units)
{
    if (units == "10^-3m^1")
        return "mm";
    if (units == "10^-6m^1")
        return "um";
    if (units == "10^-9m^1")
        return "nm";
    return units;
}

void PrintChannels(std::ostream& out, const std::vector<CChannelFacts>& channels)
{
    CTable table;
    table.Add({"channel", "name", "stored as", "colours", "bits"});
    for (const CChannelFacts& channel : channels)
        table.Add({std::to_string(channel.ID), OrUnknown(channel.Name), OrUnknown(channel.Format),
                   OrUnknown(channel.ColorSpace),
                   channel.NumOfUsedBits ? std::to_string(*channel.NumOfUsedBits) : "unknown"});
    table.Print(out, "  ");
}

void PrintAxes(std::ostream& out, const std::vector<CAxisFacts>& axes)
{
    CTable table;
    table.Add({"axis", "positions", "from", "to", "step", "unit"});
    for (const CAxisFacts& axis : axes)
    {
        const auto number = [](std::optional<double> value) { return value ? TextOf(*value) : "unknown"; };
        table.Add({NameOf(axis.Type), std::to_string(axis.NumOfPositions), number(axis.Start), number(axis.End),
                   axis.Step == 0.0 ? "uneven" : number(axis.Step),
                   axis.Units ? Printable(SymbolOf(*axis.Units)) : "unknown"});
    }
    if (!axes.empty())
        table.Print(out, "  ");
}

void PrintLevels(std::ostream& out, const std::vector<CLevelFacts>& levels)
{
    CTable table;
    table.Add({"level", "picture", "in whole tiles", "grid", "tile", "pixel"});
    for (const CLevelFacts& level : levels)
    {
        if (!level.HasData)
        {
            table.Add({std::to_string(level.Level), "no data"});
            continue;
        }
        const bool isCalibrated = level.PixelWidth && level.PixelHeight;
        table.Add({std::to_string(level.Level),
                   level.PictureRect ? TextOf(level.PictureRect->width, level.PictureRect->height) : "unknown",
                   TextOf(level.TilesRect.width, level.TilesRect.height), TextOf(level.Grid.Cols, level.Grid.Rows),
                   TextOf(level.TileWidth, level.TileHeight),
                   isCalibrated ? TextOf(*level.PixelWidth) + " x " + TextOf(*level.PixelHeight) + " um" : "unknown"});
    }
    table.Print(out, "  ");
}

} // namespace

void PrintFacts(std::ostream& out, const CDocumentFacts& facts)
{
    out << Printable(facts.Path.string()) << '\n';
    out << "format version " << OrUnknown(facts.FormatVersion) << ", groups " << facts.Groups.size() << '\n';
    for (const CGroupFacts& group : facts.Groups)
    {
        out << "\ngroup " << group.Number << ", name " << OrUnknown(group.Name) << '\n';
        PrintChannels(out, group.Channels);
        PrintAxes(out, group.Axes);
        PrintLevels(out, group.Levels);
    }
}

void AddInfoCommand(CCommandLine& line)
{
    line.AddCommand({"info", "Prints groups, channels, axes, levels and tile grids.",
                     "  zel info slide.zel\n  zel --plugin ./libZelPluginForBrix.so info slide.zel"},
                    [](const CDocument& document)
                    {
                        PrintFacts(std::cout, FactsOf(document));
                        return ExitCode::Done;
                    });
}

} // namespace HostTool
