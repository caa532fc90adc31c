#include "HostTool/Export/ExportCommand.h"

#include "HostTool/Export/FlatLayout.h"
#include "HostTool/Export/FurtherPictures.h"
#include "HostTool/Export/GroupExport.h"
#include "HostTool/Export/OmeXml.h"
#include "HostTool/Export/PersonalFacts.h"
#include "HostTool/Export/Proof.h"
#include "HostTool/HostError.h"
#include "HostTool/OutputPlace.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Reader/SoundStacks.h"
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

/// The file, from its tiles to its name.
class CExporter
{
public:
    CExporter(const CDocument& document, const CExportRequest& request) : _Document(document), _Request(request)
    {
        if (!request.Group)
            RequireAllThere(document);
        for (const int number : document.ReadableGroups())
            if (request.Group.value_or(number) == number)
                _Groups.push_back(std::make_unique<CGroupExport>(document, number, request));
        if (_Groups.empty())
            throw CHostError(ExitCode::WrongUsage,
                             document.Path().string() +
                                 ": the document has no pictures; 'zel info' tells what there is");
        if (request.IsFlat)
            RequireOnePlane();
        AddFurtherPictures();
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
        RequireComplete(outcome);
        if (_Request.IsProved)
            outcome.Lines.push_back(Prove(file.UnfinishedPath()));
        file.Finish();
        return outcome;
    }

private:
    CRecompression Recompression() const { return _Request.Recompression.value_or(CRecompression()); }

    void RequireOnePlane() const
    {
        const CGroupExport& group = *_Groups.front();
        const size_t numOfPlanes = group.Planes.Planes().size();
        if (_Groups.size() == 1 && numOfPlanes == 1)
            return;
        const std::string what = _Groups.size() > 1
                                     ? TextOfCount(_Groups.size(), "group")
                                     : TextOfCount(numOfPlanes, "plane") + " of " + NameOfGroup(group.Pixels.Group());
        throw CHostError(ExitCode::WrongUsage, _Document.Path().string() + ": --layout flat holds one plane, and " +
                                                   what + " would be exported; choose by -g, -c, -z and -t");
    }

    void AddFurtherPictures()
    {
        if (_Request.HasOverview)
            _Overview = OverviewOf(_Document);
        if (!_Request.HasThumbnail && !_Request.IsFlat)
            return;
        // That of the document shows all of it.
        if (!_Request.Selection.Rect)
            _Thumbnail = ThumbnailOf(_Document);
        const CGroupExport& group = *_Groups.front();
        if (!_Thumbnail)
            _Thumbnail = MakeThumbnail(group.Pixels, group.Plan.back(), group.Planes.Planes().front(),
                                       BackgroundOf(group.Pixels, _Request.Background), _Request.Jobs);
    }

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

    /// Of a file that may lack nothing. Throws CHostError with all that it lacks.
    void RequireComplete(const CExportOutcome& outcome) const
    {
        if (!_Request.IsStrict)
            return;
        uint64_t filled = 0;
        uint64_t beside = 0;
        bool isServed = true;
        for (const auto& group : _Groups)
        {
            filled += group->Counts.Filled;
            beside += group->NumOfTilesBeside;
            isServed = isServed && group->Pixels.Limits().empty();
        }
        if (filled > 0 || beside > 0 || !isServed || outcome.Code != ExitCode::Done)
            throw CHostError(ExitCode::BadFile,
                             _Document.Path().string() + ": --strict: " + TextOfCount(filled, "tile") + " filled, " +
                                 std::to_string(beside) + " left out" + (isServed ? "" : ", some not served") +
                                 (_Failures.empty() ? "" : ", " + _Failures.front()) + "; nothing is written");
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
            AddBrokenStreams(planes.BrokenStreams());
        }
        if (_Request.IsFlat)
            Flatten(directories, file);
        else
            Describe(directories, file);
        directories.front().Set(TiffTag::Software, std::string("zel"));
        _Places = file.Complete(directories);
    }

    /// Writes the pictures beside the groups, and the description of all.
    void Describe(std::vector<CTiffDirectory>& directories, CTiffWriter& file) const
    {
        std::vector<COmePicture> pictures;
        for (const auto* picture : {&_Thumbnail, &_Overview})
            if (*picture)
            {
                pictures.push_back({&**picture, directories.size()});
                directories.push_back(WriteFurtherPicture(file, **picture));
            }
        directories.front().Set(TiffTag::ImageDescription, OmeXml(pictures));
    }

    /// Levels in a row, with the thumbnail behind the finest one, where readers of the dialect expect it.
    void Flatten(std::vector<CTiffDirectory>& directories, CTiffWriter& file) const
    {
        const CGroupExport& group = *_Groups.front();
        std::vector<CTiffDirectory> levels = std::move(directories.front().Children);
        directories.front().Children.clear();
        directories.push_back(WriteFurtherPicture(file, *_Thumbnail));
        directories.back().Set(TiffTag::ImageDescription, FlatDescriptionOf(*_Thumbnail, "thumbnail"));
        for (CTiffDirectory& level : levels)
        {
            level.SetNumber(TiffTag::NewSubfileType, 0);
            directories.push_back(std::move(level));
        }
        directories.front().Set(
            TiffTag::ImageDescription,
            FlatDescriptionOf(group.Plan.front(), group.Pixels, group.Facts.Lens ? &*group.Facts.Lens : nullptr));
        const bool isColour = group.Pixels.Channel(group.Planes.Channels().front()).Format.IsColour();
        for (CTiffDirectory& directory : directories)
            if (isColour && group.Counts.Jp2Files == 0 && HasJpeg2000(directory))
                directory.SetShort(TiffTag::Compression, TiffCompression::Jpeg2000OfRgb);
        if (!_Overview)
            return;
        constexpr uint32_t pictureOfTheSlide = 9;
        directories.push_back(WriteFurtherPicture(file, *_Overview));
        directories.back().SetNumber(TiffTag::NewSubfileType, pictureOfTheSlide);
        directories.back().Set(TiffTag::ImageDescription, FlatDescriptionOf(*_Overview, "macro"));
    }

    static bool HasJpeg2000(const CTiffDirectory& directory)
    {
        const auto& compression = std::get<std::vector<uint16_t>>(directory.Fields().at(TiffTag::Compression));
        return compression.front() == TiffCompression::Jpeg2000;
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

    void AddBrokenStreams(const CTileFailures& tiles)
    {
        if (tiles.Count() == 0)
            return;
        _Failures.push_back(_Document.Path().string() + ": " + TextOfCount(tiles.Count(), "tile") +
                            " copied as stored, which no reader can decode:");
        for (const std::string& line : tiles.Lines())
            _Failures.push_back("  " + line);
    }

    std::string OmeXml(const std::vector<COmePicture>& pictures) const
    {
        std::vector<COmeImage> images;
        uint64_t firstDirectory = 0;
        for (const auto& group : _Groups)
        {
            const CPlaneSelection& planes = group->Planes;
            images.push_back({&group->Pixels, &group->Facts, &group->Plan, &planes, group->Regions, group->Times(),
                              group->Depths(), firstDirectory});
            firstDirectory += group->Planes.Planes().size();
        }
        CDocumentFacts facts = FactsOf(_Document);
        if (_Request.IsStripped)
            Strip(facts);
        return OmeXmlOf(facts, images, pictures);
    }

    void Report(CGroupExport& group, CExportOutcome& outcome) const
    {
        outcome.Lines.push_back(LineOf(group));
        if (!_Request.Recompression)
            ReportRecompressed(group, outcome);
        ReportPixelsBeside(group, outcome);
        if (!_Request.Selection.Rect && _Request.Selection.Levels.IsAll())
            ReportTilesBeside(group, outcome);
        const std::string name = NameOfGroup(group.Pixels.Group());
        if (_Request.IsFlat && group.Counts.Jp2Files > 0)
            outcome.Remarks.push_back(name +
                                      ": its JPEG 2000 tiles are files and not bare codestreams, which OpenSlide "
                                      "cannot read; --recompress jpeg2000 makes some");
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
               std::to_string(group.Counts.Filled) + " filled";
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

    static void ReportTilesBeside(CGroupExport& group, CExportOutcome& outcome)
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
        group.NumOfTilesBeside = count;
        if (count > 0)
            outcome.Remarks.push_back(NameOfGroup(group.Pixels.Group()) + ": " + TextOfCount(count, "tile") +
                                      " wholly beside the picture left out: level" + levels);
    }

    std::string Prove(const std::filesystem::path& file) const
    {
        CProgress progress(NumOfTiles(), "tiles");
        CProof proof(file, _Request.Output, _Request.Background, _Request.Jobs, progress);
        if (_Request.IsFlat)
            ProveFlat(proof);
        else
            ProvePlanes(proof);
        return _Request.Output.string() + ": read back; " + TextOfCount(proof.Counts().BytesEqual, "tile") +
               " equal byte for byte, " + std::to_string(proof.Counts().PixelsEqual) + " pixel for pixel";
    }

    void ProvePlanes(CProof& proof) const
    {
        size_t plane = 0;
        for (const auto& group : _Groups)
            for (const CPosition& position : group->Planes.Planes())
                proof.ProvePlane(group->Pixels, group->Plan, position, _Places.at(plane++));
    }

    void ProveFlat(CProof& proof) const
    {
        const CGroupExport& group = *_Groups.front();
        std::vector<uint64_t> levels = _Places;
        levels.erase(levels.begin() + 1); // the thumbnail
        proof.ProveLevels(group.Pixels, group.Plan, group.Planes.Planes().front(), levels);
    }

    const CDocument& _Document;
    const CExportRequest& _Request;
    std::vector<std::unique_ptr<CGroupExport>> _Groups;
    std::optional<CFurtherPicture> _Thumbnail;
    std::optional<CFurtherPicture> _Overview;
    std::vector<uint64_t> _Places; ///< of the directories, in their order
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

void AddLayoutOptions(CLI::App& command, CExportRequest& request)
{
    const auto setLayout = [&request](const std::string& layout) { request.IsFlat = layout == "flat"; };
    command
        .add_option_function<std::string>("--layout", setLayout,
                                          "ome: OME-TIFF; flat: one plane with its levels in a row and a description "
                                          "from which OpenSlide tells micrometres and objective power. Default: ome")
        ->check(CLI::IsMember({"ome", "flat"}));
    command.add_flag("--thumbnail", request.HasThumbnail, "write a thumbnail as well; the flat layout always has one");
    CLI::Option* overview =
        command.add_flag("--overview", request.HasOverview,
                         "write the picture of the whole slide as well, on which its label may be seen");
    command
        .add_flag("--strip", request.IsStripped,
                  "leave out author, comment, names of groups and regions, dates, experiment and sample; 'zel info "
                  "--private' tells what there is")
        ->excludes(overview);
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
        std::string Background;
        CSelectionOptions Selection;
        std::string Recompression;
        CCommonOptions Common;
        COutputPlace Output;
    };
    const auto options = std::make_shared<COptions>();
    CLI::App& command = line.AddTolerantCommand(
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
            request.Background = ParseColour(options->Background);
            request.Output = options->Output.For(document.Path());
            request.Values = options->Common.Values();
            request.Jobs = options->Common.JobsOfOne();
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
    AddLayoutOptions(command, options->Request);
    command.add_flag("--prove", options->Request.IsProved,
                     "read the file back and compare each tile with the document");
    command.add_flag("--bigtiff", options->Request.IsBigTiff, "write a BigTIFF file even where it need not be one");
    AddBackgroundOption(command, options->Background);
    AddStrictOption(command, options->Request.IsStrict, "is filled, not served, left out or undecodable");
    options->Common.AddTo(command);
    options->Output.AddTo(command, "-o,--output", "file to write: NAME.ome.tif", "{stem}.ome.tif");
    AddOutputOptions(command);
    line.TakeSeveral(command,
                     [options](const auto& files)
                     {
                         options->Output.RequireGiven();
                         options->Output.Prepare(files);
                     });
}

} // namespace HostTool
