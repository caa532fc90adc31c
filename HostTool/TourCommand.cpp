#include "HostTool/TourCommand.h"

#include "HostTool/HostError.h"
#include "HostTool/InfoCommand.h"
#include "HostTool/Text.h"
#include "HostTool/TileFile.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace HostTool
{

namespace
{

void MakeFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw CHostError(ExitCode::WrongUsage,
                         folder.string() + ": cannot make this folder: " + error.message() + "; choose another one");
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
    const uint64_t middle = level.Grid.AreaID(level.Grid.Cols / 2, level.Grid.Rows / 2);
    const auto isStored = [&](uint64_t areaID)
    { return group.Area(level.Level, areaID).PresenceAt(position) == Presence::Stored; };
    for (uint64_t distance = 0; distance < numOfAreas; ++distance)
    {
        if (middle + distance < numOfAreas && isStored(middle + distance))
            return middle + distance;
        if (distance <= middle && isStored(middle - distance))
            return middle - distance;
    }
    return std::nullopt;
}

void VisitLevel(std::ostream& out, const CGroup& group, const CLevelFacts& level, const CPosition& position,
                const std::filesystem::path& folder)
{
    const std::string name = "group" + std::to_string(group.Number()) + "-level" + std::to_string(level.Level);
    const auto areaID = level.HasData ? FindAreaWithImage(group, level, position) : std::nullopt;
    if (!areaID)
    {
        out << name << ": no tile is stored at " << TextOf(position) << '\n';
        return;
    }
    const CArea area = group.Area(level.Level, *areaID);
    const auto image = area.Image(position);
    const std::string tile =
        "-col" + std::to_string(*areaID % level.Grid.Cols) + "-row" + std::to_string(*areaID / level.Grid.Cols);
    out << Printable(WriteTile(ReadTile(area, image.value(), position.Channel), folder / (name + tile))) << '\n';
}

} // namespace

void TourCommand(std::ostream& out, const CDocument& document, const std::filesystem::path& folder)
{
    const CDocumentFacts facts = FactsOf(document);
    PrintFacts(out, facts);
    MakeFolder(folder);
    out << '\n';
    for (const CGroupFacts& groupFacts : facts.Groups)
    {
        const CGroup group = document.Group(groupFacts.Number);
        const CPosition position = MiddleOf(groupFacts);
        for (const CLevelFacts& level : groupFacts.Levels)
            VisitLevel(out, group, level, position, folder);
    }
}

void AddTourCommand(CCommandLine& line)
{
    const auto folder = std::make_shared<std::filesystem::path>();
    line.AddCommand({"tour", "Prints what info prints and writes one tile of each level into a folder.",
                     "  zel tour slide.zel tiles\n  zel tour /data/slide.zel /tmp/tiles"},
                    [folder](const CDocument& document)
                    {
                        TourCommand(std::cout, document, std::filesystem::absolute(*folder));
                        return ExitCode::Done;
                    })
        .add_option("FOLDER", *folder, "where the tiles go; made if it is not there")
        ->required();
}

} // namespace HostTool
