#include "HostTool/TourCommand.h"

#include "HostTool/DecodedTile.h"
#include "HostTool/InfoCommand.h"
#include "HostTool/OutputFile.h"
#include "HostTool/Pixels/Bitmap.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Pixels/PictureFile.h"
#include "HostTool/RegionFacts.h"
#include "HostTool/Table.h"
#include "HostTool/Text.h"
#include "HostTool/TileFile.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace HostTool
{

namespace
{

std::string WriteThumbnail(const ByteBuffer& thumbnail, const std::filesystem::path& path)
try
{
    const CBitmap bitmap(thumbnail);
    WriteBitmap(bitmap, path);
    return path.string() + ": thumbnail, " + std::to_string(bitmap.Width()) + " x " + std::to_string(bitmap.Height()) +
           ", as PNG";
}
catch (const CTileError& error)
{
    throw CHostError(ExitCode::BadFile, path.string() + ": is not written, since the thumbnail can't be shown: " +
                                            error.what() + "; 'zel thumbnail -o NAME.bmp' takes it as stored");
}

CPosition MiddleOf(const CGroupFacts& group)
{
    CPosition position;
    for (const CAxisFacts& axis : group.Axes)
    {
        const int64_t middle = axis.NumOfPositions / 2;
        (axis.Type == AC_AT_Z ? position.Z : axis.Type == AC_AT_TIME ? position.T : position.Lambda) = middle;
    }
    if (!group.Channels.empty())
        position.Channel = group.Channels.front().ID;
    return position;
}

/// The stored tile that is the nearest, in the order of the grid, to the middle of a level.
std::optional<uint64_t> FindAreaWithImage(const CGroup& group, const CLevelFacts& level, const CPosition& position)
{
    const uint64_t numOfAreas = level.Grid.Cols * level.Grid.Rows;
    // A level in one column may be one of strips, of which the plug-in does not hand out the last one in a TIFF store.
    const uint64_t middleRow = level.Grid.Cols == 1 ? (level.Grid.Rows - 1) / 2 : level.Grid.Rows / 2;
    const uint64_t middle = level.Grid.AreaID(level.Grid.Cols / 2, middleRow);
    const auto isStored = [&](uint64_t areaID)
    {
        try
        {
            return group.Area(level.Level, areaID).PresenceAt(position) == Presence::Stored;
        }
        catch (const CHostError&)
        {
            return false; // of several tiles in a directory of the document all but the first one fail
        }
    };
    for (uint64_t distance = 0; distance < numOfAreas; ++distance)
    {
        if (middle + distance < numOfAreas && isStored(middle + distance))
            return middle + distance;
        if (distance <= middle && isStored(middle - distance))
            return middle - distance;
    }
    return std::nullopt;
}

std::string TextOfPoints(const std::vector<CRegionPoint>& points)
{
    constexpr size_t most = 4;
    std::string text;
    for (size_t i = 0; i < std::min(most, points.size()); ++i)
        text += (i == 0 ? "(" : " (") + std::to_string(points[i].X) + ", " + std::to_string(points[i].Y) + ")";
    return points.size() <= most ? text : text + " and " + std::to_string(points.size() - most) + " more";
}

void PrintRegions(std::ostream& out, const CGroup& group)
{
    constexpr size_t most = 20;
    const std::vector<CRegionFacts> regions = RegionsOf(group);
    if (regions.empty())
        return;
    CTable table;
    table.Add({"region", "name", "shape", "rotation", "vertices in pixels"});
    for (size_t i = 0; i < std::min(most, regions.size()); ++i)
        table.Add({Printable(regions[i].ID), Printable(regions[i].Name.value_or("unknown")),
                   Printable(regions[i].Shape.value_or("unknown")),
                   regions[i].Rotation ? TextOf(*regions[i].Rotation) : "unknown", TextOfPoints(regions[i].Points)});
    out << "\nregions of interest of group " << group.Number() << '\n';
    table.Print(out, "  ");
    if (regions.size() > most)
        out << "  and " << regions.size() - most << " more\n";
}

/// Visits a document and counts what could be written and what could not be read.
class CTour
{
public:
    CTour(std::ostream& out, const CDocument& document, const CTourRequest& request)
        : _Out(out), _Document(document), _Request(request)
    {
    }

    ExitCode Go()
    {
        const CDocumentFacts facts = FactsOf(_Document);
        Print(facts);
        MakeFolder(_Request.Folder);
        if (facts.Thumbnail)
            Write([&] { return WriteThumbnail(*facts.Thumbnail, _Request.Folder / "thumbnail.png"); });
        for (const CGroupFacts& group : facts.Groups)
            for (const CLevelFacts& level : group.Levels)
                VisitLevel(_Document.Group(group.Number), level, MiddleOf(group));
        if (_Request.IsShort)
            _Out << "  " << _NumOfFiles << " files written to " << Printable(_Request.Folder.string()) << '\n';
        return _Code;
    }

private:
    void Print(const CDocumentFacts& facts)
    {
        if (_Request.IsShort)
        {
            PrintShortFacts(_Out, facts);
            return;
        }
        PrintFacts(_Out, facts);
        for (const CGroupFacts& group : facts.Groups)
            PrintRegions(_Out, _Document.Group(group.Number));
        _Out << '\n';
    }

    void VisitLevel(const CGroup& group, const CLevelFacts& level, const CPosition& position)
    {
        const std::string name = "group" + std::to_string(group.Number()) + "-level" + std::to_string(level.Level);
        const auto areaID = level.HasData ? FindAreaWithImage(group, level, position) : std::nullopt;
        if (!areaID)
        {
            _Out << name << ": no tile is stored at " << TextOf(position) << '\n';
            return;
        }
        const CArea area = group.Area(level.Level, *areaID);
        const auto image = area.Image(position);
        const CTilePlace place{level.Level, *areaID % level.Grid.Cols, *areaID / level.Grid.Cols, position};
        const std::filesystem::path file =
            _Request.Folder / (name + "-col" + std::to_string(place.Col) + "-row" + std::to_string(place.Row));
        Write(
            [&]
            {
                const CTile tile = ReadTile(area, image.value(), position.Channel);
                if (tile.HasTablesApart)
                    return WriteDecodedTile(CGroupPixels(_Document, group.Number()), place, file);
                return WriteTile(tile, file);
            });
    }

    /// What can't be read does not end the tour; what can't be written does.
    template <typename Writing>
    void Write(const Writing& writing)
    try
    {
        const std::string line = writing();
        ++_NumOfFiles;
        if (!_Request.IsShort)
            _Out << Printable(line) << '\n';
    }
    catch (const COutputSkipped& skipped)
    {
        _Out << Printable(skipped.what()) << '\n';
    }
    catch (const CHostError& error)
    {
        if (error.Code() == ExitCode::WrongUsage || error.Code() == ExitCode::Machine)
            throw;
        _Out.flush();
        std::cerr << "zel: " << Printable(error.what()) << '\n';
        _Code = error.Code();
    }

    std::ostream& _Out;
    const CDocument& _Document;
    const CTourRequest& _Request;
    size_t _NumOfFiles = 0;
    ExitCode _Code = ExitCode::Done;
};

} // namespace

ExitCode TourCommand(std::ostream& out, const CDocument& document, const CTourRequest& request)
{
    return CTour(out, document, request).Go();
}

void AddTourCommand(CCommandLine& line)
{
    const auto request = std::make_shared<CTourRequest>();
    CLI::App& command =
        line.AddCommand({"tour",
                         "Prints what info prints, and the regions of interest, and writes the thumbnail and one tile "
                         "of each level into a folder.",
                         "  zel tour slide.zel tiles\n  zel tour /data/slide.zel /tmp/tiles --short"},
                        [request](const CDocument& document)
                        {
                            request->Folder = std::filesystem::absolute(request->Folder);
                            return TourCommand(std::cout, document, *request);
                        });
    command.add_option("FOLDER", request->Folder, "where the pictures go; made if it is not there")->required();
    AddOutputOptions(command);
    command.add_flag("--short", request->IsShort, "print a line for each group and none for each tile");
}

} // namespace HostTool
