#include "HostTool/Export/ExportCommand.h"

#include "HostTool/Export/OmeXml.h"
#include "HostTool/Export/PlaneExport.h"
#include "HostTool/Export/Proof.h"
#include "HostTool/HostError.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/Text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>

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

/// A group on its way into the file.
struct CGroupExport
{
    CGroupExport(const CDocument& document, int number, const CExportRequest& request)
        : Pixels(document, number, request.Values), Planes(Pixels, request.Selection),
          Plan(PlanOf(Pixels, request.Selection, request.Recompression.has_value())),
          Facts(FactsOf(document.Group(number), Remarks)), Regions(RegionsIn(Pixels, request.Selection))
    {
        // Those that are exported, in the order of the file.
        std::vector<CChannelFacts> channels;
        for (const uint32_t id : Planes.Channels())
            for (const CChannelFacts& channel : Facts.Channels)
                if (channel.ID == id)
                    channels.push_back(channel);
        Facts.Channels = std::move(channels);
    }
    uint64_t NumOfTiles() const
    {
        uint64_t tiles = 0;
        for (const CLevelPlan& level : Plan)
            tiles += level.NumOfCols() * level.NumOfRows();
        return tiles * Planes.Planes().size();
    }

    CGroupPixels Pixels;
    CPlaneSelection Planes;
    std::vector<CLevelPlan> Plan;
    Diagnostics Remarks;
    CGroupFacts Facts;
    std::vector<CRegionFacts> Regions;
    CExportCounts Counts;
};

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

/// The file, from its tiles to its name.
class CExporter
{
public:
    CExporter(const CDocument& document, const CExportRequest& request) : _Document(document), _Request(request)
    {
        for (int number = 0; number < document.NumOfGroups(); ++number)
            if (request.Group.value_or(number) == number)
            {
                _Groups.push_back(std::make_unique<CGroupExport>(document, number, request));
                RequireHoldable(document, *_Groups.back());
                RequireRecompressible(document, *_Groups.back(), Recompression());
            }
        if (_Groups.empty())
            throw CHostError(ExitCode::WrongUsage,
                             document.Path().string() +
                                 ": the document has no pictures; 'zel info' tells what there is");
    }

    CExportOutcome Run()
    {
        CTiffWriter file(_Request.Output, _Request.IsBigTiff);
        RequireReadable(file);
        Write(file);
        CExportOutcome outcome;
        for (const auto& group : _Groups)
            Report(*group, outcome);
        outcome.Code = _Failures.empty() ? ExitCode::Done : ExitCode::BadFile;
        outcome.Remarks.insert(outcome.Remarks.end(), _Failures.begin(), _Failures.end());
        if (_Request.IsProved)
            outcome.Lines.push_back(Prove(file.UnfinishedPath()));
        file.Finish();
        return outcome;
    }

private:
    CRecompression Recompression() const { return _Request.Recompression.value_or(CRecompression()); }

    uint64_t NumOfTiles() const
    {
        uint64_t tiles = 0;
        for (const auto& group : _Groups)
            tiles += group->NumOfTiles();
        return tiles;
    }

    void RequireReadable(const CTiffWriter& file) const
    {
        if (_Request.IsProved && file.UnfinishedPath().empty())
            throw CHostError(ExitCode::WrongUsage, _Request.Output.string() +
                                                       ": is a device, from which nothing can be read back; leave "
                                                       "--prove out, or give the name of a file");
    }

    void Write(CTiffWriter& file)
    {
        CProgress progress(NumOfTiles(), "tiles");
        std::vector<CTiffDirectory> directories;
        for (const auto& group : _Groups)
        {
            CPlaneExport planes(group->Pixels, file, _Request.Background, Recompression(), _Request.Jobs, progress);
            for (const CPosition& position : group->Planes.Planes())
                directories.push_back(WritePlane(planes, *group, position));
            group->Counts = planes.Counts();
            AddFailures(planes.Failures(), "read");
            AddFailures(planes.DecodeFailures(), "decoded");
        }
        directories.front().Set(TiffTag::ImageDescription, OmeXml());
        directories.front().Set(TiffTag::Software, std::string("zel"));
        _PlacesOfPlanes = file.Complete(directories);
    }

    static CTiffDirectory WritePlane(CPlaneExport& planes, const CGroupExport& group, const CPosition& position)
    {
        constexpr uint32_t reducedResolution = 1;
        CTiffDirectory directory = planes.WriteLevel(group.Plan.front(), position);
        directory.SetNumber(TiffTag::NewSubfileType, 0);
        for (size_t level = 1; level < group.Plan.size(); ++level)
        {
            directory.Children.push_back(planes.WriteLevel(group.Plan[level], position));
            directory.Children.back().SetNumber(TiffTag::NewSubfileType, reducedResolution);
        }
        return directory;
    }

    void AddFailures(const CTileFailures& failures, const std::string& what)
    {
        if (failures.Count() > 0)
            _Failures.push_back(_Document.Path().string() + ": " + failures.Text(what));
    }

    std::string OmeXml() const
    {
        std::vector<COmeImage> images;
        uint64_t firstDirectory = 0;
        for (const auto& group : _Groups)
        {
            const CPlaneSelection& planes = group->Planes;
            images.push_back({&group->Pixels, &group->Facts, &group->Plan, &planes, group->Regions,
                              PlacesOn(*group, AC_AT_TIME, planes.FirstT(), planes.Sizes().T),
                              PlacesOn(*group, AC_AT_Z, planes.FirstZ(), planes.Sizes().Z), firstDirectory});
            firstDirectory += group->Planes.Planes().size();
        }
        return OmeXmlOf(FactsOf(_Document), images);
    }

    void Report(const CGroupExport& group, CExportOutcome& outcome) const
    {
        outcome.Lines.push_back(LineOf(group));
        if (!_Request.Recompression)
            ReportRecompressed(group, outcome);
        ReportPixelsBeside(group, outcome);
        if (!_Request.Selection.Rect && _Request.Selection.Levels.IsAll())
            ReportTilesBeside(group, outcome);
        const std::string name = NameOfGroup(group.Pixels.Group());
        if (group.Counts.UnlikeOthers > 0)
            outcome.Remarks.push_back(name + ": " + TextOfCount(group.Counts.UnlikeOthers, "tile") +
                                      " as stored differ in size, sampling or tables from the first of their level, by "
                                      "which readers go");
        for (const CChannelPixels& channel : group.Pixels.Channels())
            if (channel.AreValuesGuessed)
                outcome.Remarks.push_back(name + ", channel " + std::to_string(channel.ID) + ": values of " +
                                          std::to_string(8 * channel.Format.BytesPerComponent) +
                                          " bits are taken as floating point; --values says otherwise");
        outcome.Remarks.insert(outcome.Remarks.end(), group.Pixels.Limits().begin(), group.Pixels.Limits().end());
    }

    std::string LineOf(const CGroupExport& group) const
    {
        const CPixelRect& rect = group.Plan.front().Rect;
        return _Request.Output.string() + ": " + NameOfGroup(group.Pixels.Group()) + ", " + std::to_string(rect.Width) +
               " x " + std::to_string(rect.Height) + " pixels, " + TextOfCount(group.Plan.size(), "level") + ", " +
               TextOfCount(group.Planes.Planes().size(), "plane") + "; " + TextOfCount(group.Counts.AsStored, "tile") +
               " as stored, " + std::to_string(group.Counts.Recompressed) + " recompressed, " +
               std::to_string(group.Counts.Background) + " background";
    }

    static void ReportRecompressed(const CGroupExport& group, CExportOutcome& outcome)
    {
        std::map<std::string, std::string> levelsByReason;
        for (const CLevelPlan& level : group.Plan)
            if (!level.IsAsStored())
                levelsByReason[level.WhyNotAsStored] += " " + std::to_string(level.Level->Level);
        for (const auto& [reason, levels] : levelsByReason)
            outcome.Remarks.push_back(NameOfGroup(group.Pixels.Group()) + ": recompressed without loss, as " + reason +
                                      ": level" + levels);
    }

    static void ReportPixelsBeside(const CGroupExport& group, CExportOutcome& outcome)
    {
        const CLevelPlan& finest = group.Plan.front();
        if (finest.Rect == finest.Wanted)
            return;
        const std::string what = finest.Wanted == finest.Level->Picture ? "the picture" : "the rectangle";
        outcome.Remarks.push_back(NameOfGroup(group.Pixels.Group()) + ": " + what + " begins within a tile, so " +
                                  std::to_string(finest.Wanted.X - finest.Rect.X) + " pixels left of and " +
                                  std::to_string(finest.Wanted.Y - finest.Rect.Y) + " above it are there as well");
    }

    static void ReportTilesBeside(const CGroupExport& group, CExportOutcome& outcome)
    {
        const std::vector<CPosition> planes = group.Planes.Planes();
        uint64_t count = 0;
        std::string levels;
        for (int level = 0; level < group.Pixels.NumOfLevels(); ++level)
        {
            if (!group.Pixels.HasLevel(level))
                continue;
            const auto plan =
                std::find_if(group.Plan.begin(), group.Plan.end(),
                             [&](const CLevelPlan& candidate) { return candidate.Level->Level == level; });
            const uint64_t ofLevel = NumOfTilesBeside(group.Pixels, group.Pixels.Level(level),
                                                      plan == group.Plan.end() ? nullptr : &*plan, planes);
            count += ofLevel;
            if (ofLevel > 0)
                levels += " " + std::to_string(level);
        }
        if (count > 0)
            outcome.Remarks.push_back(NameOfGroup(group.Pixels.Group()) + ": " + TextOfCount(count, "tile") +
                                      " wholly beside the picture left out: level" + levels);
    }

    std::string Prove(const std::filesystem::path& file) const
    {
        CProgress progress(NumOfTiles(), "tiles");
        CProof proof(file, _Request.Output, _Request.Background, _Request.Jobs, progress);
        size_t plane = 0;
        for (const auto& group : _Groups)
            for (const CPosition& position : group->Planes.Planes())
                proof.ProvePlane(group->Pixels, group->Plan, position, _PlacesOfPlanes.at(plane++));
        return _Request.Output.string() + ": read back; " + TextOfCount(proof.Counts().BytesEqual, "tile") +
               " equal byte for byte, " + std::to_string(proof.Counts().PixelsEqual) + " pixel for pixel";
    }

    const CDocument& _Document;
    const CExportRequest& _Request;
    std::vector<std::unique_ptr<CGroupExport>> _Groups;
    std::vector<uint64_t> _PlacesOfPlanes;
    std::vector<std::string> _Failures;
};

void AddRecompressionOption(CLI::App& command, std::string& text)
{
    const auto check = [](const std::string& given)
    {
        return ParseRecompression(given) ? std::string()
                                         : "'" + given +
                                               "' is no compression; give deflate, zstd, jpeg2000, jpeg or "
                                               "jpeg:QUALITY from 1 to 100";
    };
    command
        .add_option("--recompress", text,
                    "compress all tiles anew: deflate, zstd or jpeg2000 without loss, jpeg or jpeg:QUALITY with loss, "
                    "90 if none is given. Default: copy what can be copied")
        ->check(CLI::Validator(check, "COMPRESSION"));
}

} // namespace

CExportOutcome Export(const CDocument& document, const CExportRequest& request)
{
    if (request.Group)
        RequireGroup(document, *request.Group);
    if (request.IsProved && request.Recompression && request.Recompression->IsLossy())
        throw CHostError(ExitCode::WrongUsage, "--prove: JPEG loses something, so that nothing can be equal; leave one "
                                               "of the two out, or recompress as jpeg2000");
    if (!request.Group && !request.Selection.IsAll() && document.NumOfGroups() > 1)
        throw CHostError(ExitCode::WrongUsage, document.Path().string() +
                                                   ": the document has several groups; say by -g of which one a part "
                                                   "is to be exported");
    return CExporter(document, request).Run();
}

void AddExportCommand(CCommandLine& line)
{
    struct COptions
    {
        CExportRequest Request;
        std::string Background = "white";
        CSelectionOptions Selection;
        std::string Recompression;
        CCommonOptions Common;
    };
    const auto options = std::make_shared<COptions>();
    CLI::App& command = line.AddCommand(
        {"export",
         "Writes a pyramidal OME-TIFF file with all planes. JPEG, JPEG 2000 and raw tiles are copied as stored, bit "
         "for bit; what TIFF cannot hold so is recompressed without loss.",
         "  zel export slide.zel -o slide.ome.tif --prove\n  zel export slide.zel -g 1 --rect 8000,6000,4096,4096 -z "
         "2-4 -o part.ome.tif"},
        [options](const CDocument& document)
        {
            CExportRequest& request = options->Request;
            request.Selection = options->Selection.Selection();
            request.Recompression = ParseRecompression(options->Recompression);
            request.Background = ParseColour(options->Background).value_or(CColour());
            request.Values = options->Common.Values();
            request.Jobs = options->Common.Jobs;
            const CExportOutcome outcome = Export(document, request);
            for (const std::string& text : outcome.Lines)
                Say(text);
            for (const std::string& remark : outcome.Remarks)
                std::cerr << "zel: " << Printable(remark) << '\n';
            return outcome.Code;
        });
    command.add_option("-g,--group", options->Request.Group, "group, from 0. Default: all of them")
        ->check(CLI::NonNegativeNumber);
    options->Selection.AddTo(command);
    AddRecompressionOption(command, options->Recompression);
    command.add_flag("--prove", options->Request.IsProved,
                     "read the file back and compare each tile with the document");
    command.add_flag("--bigtiff", options->Request.IsBigTiff, "write a BigTIFF file even where it need not be one");
    AddBackgroundOption(command, options->Background);
    options->Common.AddTo(command);
    command.add_option("-o,--output", options->Request.Output, "file to write: NAME.ome.tif")->required();
    AddOutputOptions(command);
}

} // namespace HostTool
