#include "HostTool/InfoCommand.h"

#include "HostTool/Export/PersonalFacts.h"
#include "HostTool/GuardedRun.h"
#include "HostTool/InfoCsv.h"
#include "HostTool/InfoJson.h"
#include "HostTool/Pixels/Bitmap.h"
#include "HostTool/Pixels/TileCodec.h"
#include "HostTool/Reader/BuiltInPlugin.h"
#include "HostTool/Reader/ReaderLog.h"
#include "HostTool/Reader/SoundStacks.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/Table.h"
#include "HostTool/Text.h"
#include "HostTool/TileKind.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace HostTool
{

namespace
{

std::string TextOfSize(uint64_t width, uint64_t height)
{
    return std::to_string(width) + " x " + std::to_string(height);
}

std::string OrUnknown(const std::optional<std::string>& text)
{
    return text ? Printable(*text) : "unknown";
}

/// Facts with their names before them; those that the document doesn't tell are left out.
class CFactList
{
public:
    void Add(const std::string& name, const std::optional<std::string>& value)
    {
        if (value && !value->empty())
            _Table.Add({name, Printable(*value)});
    }
    void Print(std::ostream& out) const { _Table.Print(out, "  "); }

private:
    CTable _Table;
};

/// Several facts in one line, with ", " between them.
class CFactLine
{
public:
    void Add(const std::string& text)
    {
        if (!text.empty())
            _Text += (_Text.empty() ? "" : ", ") + text;
    }
    void Add(const std::string& before, const std::optional<double>& number, const std::string& after)
    {
        if (number)
            Add(before + TextOf(*number) + after);
    }
    const std::string& Text() const { return _Text; }

private:
    std::string _Text;
};

std::string TextOfLens(const CLensFacts& lens)
{
    CFactLine line;
    line.Add(lens.Name.value_or(""));
    line.Add("", lens.Magnification, "x");
    line.Add("NA ", lens.NumericalAperture, "");
    line.Add(lens.Immersion.value_or(""));
    line.Add("refractive index ", lens.RefractiveIndex, "");
    line.Add("working distance ", lens.WorkingDistance, " mm");
    return line.Text();
}

std::string TextOfStage(const AC_POINT& position)
{
    constexpr double nanometres = 1000; // in a micrometre
    return "x " + TextOf(position.x / nanometres) + " um, y " + TextOf(position.y / nanometres) + " um";
}

std::string TextOfMaker(const CDocumentFacts& facts)
{
    CFactLine line;
    line.Add(facts.DeviceName.value_or(""));
    line.Add(facts.DeviceVersion ? "version " + *facts.DeviceVersion : "");
    return line.Text();
}

std::optional<std::string> TextOfThumbnail(const CDocumentFacts& facts)
{
    if (!facts.Thumbnail)
        return std::nullopt;
    try
    {
        const CBitmap bitmap(*facts.Thumbnail);
        return TextOfSize(bitmap.Width(), bitmap.Height());
    }
    catch (const CTileError& error)
    {
        return error.what();
    }
}

std::optional<std::string> TextOfOverview(const CDocumentFacts& facts)
{
    if (!facts.Overview)
        return std::nullopt;
    const CTileKind* kind = FindTileKind(*facts.Overview);
    return std::string(kind ? kind->Name : "of an unknown kind") + ", " + std::to_string(facts.Overview->size()) +
           " bytes";
}

void PrintChannels(std::ostream& out, const std::vector<CChannelFacts>& channels)
{
    CTable table;
    table.Add({"channel", "name", "compression", "colours", "bits", "shown", "shadow", "highlight", "exposure"});
    for (const CChannelFacts& channel : channels)
        table.Add({std::to_string(channel.ID), OrUnknown(channel.Name), OrUnknown(channel.Format),
                   OrUnknown(channel.ColorSpace),
                   channel.NumOfUsedBits ? std::to_string(*channel.NumOfUsedBits) : "unknown",
                   channel.BrightestColour().value_or("as it is"),
                   channel.Limits ? std::to_string(channel.Limits->Shadow) : "unknown",
                   channel.Limits ? std::to_string(channel.Limits->Highlight) : "unknown",
                   channel.ExposureTime ? TextOf(*channel.ExposureTime) + " us" : "unknown"});
    table.Print(out, "  ");
}

void PrintAxes(std::ostream& out, const std::vector<CAxisFacts>& axes)
{
    CTable table;
    table.Add({"axis", "positions", "start", "end", "step", "unit"});
    for (const CAxisFacts& axis : axes)
    {
        const auto number = [](std::optional<double> value) { return value ? TextOf(*value) : "unknown"; };
        table.Add({NameOf(axis.Type), std::to_string(axis.NumOfPositions), number(axis.Start), number(axis.End),
                   axis.Step == 0.0 ? "uneven" : number(axis.Step),
                   axis.Units ? Printable(UnitNameOf(*axis.Units)) : "unknown"});
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
                   level.PictureRect ? TextOfSize(level.PictureRect->width, level.PictureRect->height) : "unknown",
                   TextOfSize(level.TilesRect.width, level.TilesRect.height),
                   TextOfSize(level.Grid.Cols, level.Grid.Rows), TextOfSize(level.TileWidth, level.TileHeight),
                   isCalibrated ? TextOf(*level.PixelWidth) + " x " + TextOf(*level.PixelHeight) + " um" : "unknown"});
    }
    table.Print(out, "  ");
}

void PrintDocument(std::ostream& out, const CDocumentFacts& facts)
{
    out << Printable(facts.Path.string()) << '\n';
    CFactList list;
    list.Add("format version", facts.FormatVersion.value_or("unknown"));
    list.Add("made by", TextOfMaker(facts));
    list.Add("author", facts.Author);
    list.Add("comment", facts.Comment);
    list.Add("family", facts.FamilyID);
    list.Add("created", facts.Created);
    list.Add("updated", facts.Updated);
    list.Add("thumbnail", TextOfThumbnail(facts));
    list.Add("overview", TextOfOverview(facts));
    list.Add("groups", std::to_string(facts.Groups.size()));
    list.Print(out);
    for (const CDiagnostic& remark : facts.Remarks)
        out << "  " << remark.Severity << ": " << Printable(remark.Text) << '\n';
}

void PrintFiles(std::ostream& out, const std::vector<CDocumentFile>& files)
{
    CTable table;
    for (const CDocumentFile& file : files)
        table.Add({file.Size ? std::to_string(*file.Size) + " bytes" : "missing", NameOf(file),
                   Printable(file.Path.string())});
    out << "\nfiles\n";
    table.Print(out, "  ");
}

void PrintGroup(std::ostream& out, const CGroupFacts& group)
{
    out << "\ngroup " << group.Number << ", name " << OrUnknown(group.Name) << '\n';
    CFactList list;
    const auto type = group.Display.find("Type");
    if (type != group.Display.end())
        list.Add("type", type->second);
    if (group.Lens)
        list.Add("lens", TextOfLens(*group.Lens));
    if (group.StagePosition)
        list.Add("stage", TextOfStage(*group.StagePosition));
    list.Add("experiment", group.Experiment);
    list.Add("sample", group.Sample);
    list.Add("its description", group.SampleComment);
    if (group.NumOfRegions > 0)
        list.Add("regions", std::to_string(group.NumOfRegions));
    list.Print(out);
    PrintChannels(out, group.Channels);
    PrintAxes(out, group.Axes);
    PrintLevels(out, group.Levels);
}

std::string ShortTextOf(const CGroupFacts& group)
{
    CFactLine line;
    if (!group.Levels.empty() && group.Levels.front().HasData)
    {
        const CLevelFacts& level = group.Levels.front();
        const CMN_RECT& rect = level.PictureRect ? *level.PictureRect : level.TilesRect;
        line.Add(TextOfSize(rect.width, rect.height));
        line.Add("tiles of " + TextOfSize(level.TileWidth, level.TileHeight));
    }
    line.Add("levels " + std::to_string(group.Levels.size()));
    for (const CAxisFacts& axis : group.Axes)
        line.Add(NameOf(axis.Type) + " " + std::to_string(axis.NumOfPositions));
    line.Add("channels " + std::to_string(group.Channels.size()));
    if (!group.Channels.empty())
        line.Add(OrUnknown(group.Channels.front().Format) + " " + OrUnknown(group.Channels.front().ColorSpace));
    return line.Text();
}

/// What `zel info` prints: text for people, if nothing else is asked for.
struct CInfoRequest
{
    bool IsJson = false;
    bool IsPretty = false;
    bool IsCsv = false;
    bool IsPrivate = false;
};

ExitCode PrintInfo(const std::filesystem::path& plugin, const std::filesystem::path& file)
{
    const CPluginHost host = HostOf(plugin);
    const CDocument document = OpenWhatThereIs(host, file);
    const CDocumentFacts facts = FactsOf(document);
    PrintFacts(WhereItIsSaid(), facts);
    PrintFiles(WhereItIsSaid(), FilesOf(CReaderDocument(file)));
    RequireAllThere(document);
    return ExitCode::Done;
}

/// In one piece, so that what several programs append to a file stays in whole lines.
void PrintData(const CInfo& info, const CInfoRequest& request)
{
    PrintWhole(request.IsCsv ? CsvOf(info) : JsonOf(info, request.IsPretty));
}

ExitCode PrintPrivate(const std::filesystem::path& plugin, const std::filesystem::path& file)
{
    const CPluginHost host = HostOf(plugin);
    PrintPersonalFacts(std::cout, CDocument(host, file));
    return ExitCode::Done;
}

/// A failure stands in the output; the code is that of a document that can't be opened.
ExitCode PrintKnownAsData(const std::filesystem::path& plugin, const std::filesystem::path& file,
                          const CInfoRequest& request)
{
    const CInfo info = InfoOf(plugin, file);
    PrintData(info, request);
    if (!info.Missing.empty())
        throw info.Missing.front();
    if (!info.Facts)
        CDocument(HostOf(plugin), file); // throws what it failed by
    return ExitCode::Done;
}

/// Data also where the plug-in ends the process: that is a child of this one, which prints nothing before it knows all.
ExitCode PrintInfoAsData(const std::filesystem::path& plugin, const std::filesystem::path& file,
                         const CInfoRequest& request)
{
    const CChildEnd end = RunInChild([&] { return static_cast<int>(PrintKnownAsData(plugin, file, request)); });
    if (!end.IsEarly())
        return static_cast<ExitCode>(end.ExitCode);
    const CHostError early = EarlyEnd(file.string(), end);
    const CHostError failure(early.Code(), WithReason(early.what(), file));
    CInfo info;
    info.Path = std::filesystem::absolute(file);
    info.Remarks.push_back({"error", "ended-early", failure.what()});
    PrintData(info, request);
    throw failure;
}

} // namespace

void PrintFacts(std::ostream& out, const CDocumentFacts& facts)
{
    PrintDocument(out, facts);
    for (const CGroupFacts& group : facts.Groups)
        PrintGroup(out, group);
}

void PrintShortFacts(std::ostream& out, const CDocumentFacts& facts)
{
    out << Printable(facts.Path.string()) << '\n';
    for (const CGroupFacts& group : facts.Groups)
        out << "  " << OrUnknown(group.Name) << ": " << Printable(ShortTextOf(group)) << '\n';
}

void AddInfoCommand(CCommandLine& line)
{
    const auto request = std::make_shared<CInfoRequest>();
    CLI::App& command = line.AddFileCommand(
        {"info", "Prints what documents tell: their properties, files, groups, channels, axes, levels and tile grids.",
         "  zel info slide.zel\n  zel info -r slides --json > slides.jsonl"},
        [request](const std::filesystem::path& plugin, const std::filesystem::path& file)
        {
            if (request->IsPrivate)
                return PrintPrivate(plugin, file);
            return request->IsJson || request->IsCsv ? PrintInfoAsData(plugin, file, *request)
                                                     : PrintInfo(plugin, file);
        });
    CLI::Option* json = command.add_flag(
        "--json", request->IsJson, "print JSON, complete and stable, also of what can't be opened: a line for each");
    command.add_flag("--pretty", request->IsPretty, "print JSON for people, in many lines")->needs(json);
    command.add_flag("--csv", request->IsCsv, "print a table with a line for each group")->excludes(json);
    command
        .add_flag("--private", request->IsPrivate,
                  "print only what may tell a person, a case or a laboratory, and what an export does with it")
        ->excludes(json);
    line.TakeSeveral(command,
                     [request](const auto&)
                     {
                         if (request->IsCsv)
                             PrintWhole(CsvHead());
                     });
}

} // namespace HostTool
