#include "HostTool/TileCommand.h"

#include "HostTool/DecodedTile.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/TileFile.h"

#include <CLI/CLI.hpp>

namespace HostTool
{

namespace
{

/// Throws CHostError unless `number`, of a thing that lies in `where`, is below `count`.
void RequireBelow(const CDocument& document, const std::string& thing, uint64_t number, const std::string& where,
                  uint64_t count)
{
    if (number < count)
        return;
    const std::string range = count == 0 ? "there is none" : "the last one is " + std::to_string(count - 1);
    throw CHostError(ExitCode::WrongUsage, document.Path().string() + ": there is no " + thing + " " +
                                               std::to_string(number) + " in " + where + "; " + range);
}

void AddTileOptions(CLI::App& command, CTileRequest& tile)
{
    AddGroupOption(command, tile.Group);
    command.add_option("-l,--level", tile.Level, "level; 0 is the finest")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command.add_option("-x,--col", tile.Col, "column of the level's tile grid, from 0")->required();
    command.add_option("-y,--row", tile.Row, "row of the level's tile grid, from 0")->required();
    command.add_option("-c,--channel", tile.Position.Channel, "channel")->capture_default_str();
    AddPositionOptions(command, tile.Position);
    command
        .add_option("-o,--output", tile.Output,
                    "file to write; without an extension it gets the one that fits; - for standard output")
        ->required();
    AddOutputOptions(command);
    command.add_flag("--png", tile.IsDecoded, "decode the tile and write it as a PNG picture");
}

} // namespace

std::string WriteTileCommand(const CDocument& document, const CTileRequest& request)
{
    RequireGroup(document, request.Group);
    const CGroup group = document.Group(request.Group);
    const std::string groupText = "group " + std::to_string(request.Group);
    RequireBelow(document, "level", static_cast<uint64_t>(request.Level), groupText,
                 static_cast<uint64_t>(group.NumOfLevels()));
    const std::string levelText = "level " + std::to_string(request.Level) + " of " + groupText;
    if (!group.LevelRect(request.Level))
        throw CHostError(ExitCode::WrongUsage,
                         document.Path().string() + ": " + levelText + " has no data; choose another one");
    const CGrid grid = group.Grid(request.Level);
    RequireBelow(document, "column", request.Col, levelText, grid.Cols);
    RequireBelow(document, "row", request.Row, levelText, grid.Rows);

    const CArea area = group.Area(request.Level, grid.AreaID(request.Col, request.Row));
    const auto image = area.Image(request.Position);
    if (!image)
        throw CHostError(ExitCode::WrongUsage, document.Path().string() + ": no tile is stored at column " +
                                                   std::to_string(request.Col) + ", row " +
                                                   std::to_string(request.Row) + " of " + levelText + ", " +
                                                   TextOf(request.Position) + "; choose another one");
    if (request.IsDecoded)
        return WriteDecodedTile(CGroupPixels(document, request.Group),
                                {request.Level, request.Col, request.Row, request.Position}, request.Output);
    return WriteTile(ReadTile(area, *image, request.Position.Channel), request.Output);
}

void AddTileCommand(CCommandLine& line)
{
    const auto request = std::make_shared<CTileRequest>();
    AddTileOptions(line.AddCommand({"tile", "Writes one tile to a file, as it is stored; raw pixels as PNG.",
                                    "  zel tile slide.zel -x 2 -y 1 -o tile\n"
                                    "  zel tile slide.zel -g 0 -l 3 -x 0 -y 0 -c 1 -z 4 --png -o tile.png"},
                                   [request](const CDocument& document)
                                   {
                                       Say(WriteTileCommand(document, *request));
                                       return ExitCode::Done;
                                   }),
                   *request);
}

} // namespace HostTool
