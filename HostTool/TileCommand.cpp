#include "HostTool/TileCommand.h"

#include "HostTool/HostError.h"
#include "HostTool/TileFile.h"

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

} // namespace

std::string WriteTileCommand(const CDocument& document, const CTileRequest& request)
{
    RequireBelow(document, "group", static_cast<uint64_t>(request.Group), "the document",
                 static_cast<uint64_t>(document.NumOfGroups()));
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
    return WriteTile(ReadTile(area, *image, request.Position.Channel), request.Output);
}

} // namespace HostTool
