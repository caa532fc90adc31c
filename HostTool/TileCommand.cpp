#include "HostTool/TileCommand.h"

#include "HostTool/HostError.h"
#include "HostTool/TileFile.h"

namespace HostTool
{

namespace
{

/// Throws CHostError unless `number` is below `count`.
void RequireBelow(const CDocument& document, const std::string& what, uint64_t number, uint64_t count)
{
    if (number < count)
        return;
    const std::string range = count == 0 ? "there is none" : "the last one is " + std::to_string(count - 1);
    throw CHostError(ExitCode::WrongUsage,
                     document.Path().string() + ": there is no " + what + " " + std::to_string(number) + "; " + range);
}

} // namespace

std::string WriteTileCommand(const CDocument& document, const CTileRequest& request)
{
    RequireBelow(document, "group", static_cast<uint64_t>(request.Group),
                 static_cast<uint64_t>(document.NumOfGroups()));
    const CGroup group = document.Group(request.Group);
    const std::string where = " of group " + std::to_string(request.Group);
    RequireBelow(document, "level" + where, static_cast<uint64_t>(request.Level),
                 static_cast<uint64_t>(group.NumOfLevels()));
    const std::string levelText = "level " + std::to_string(request.Level) + where;
    if (!group.LevelRect(request.Level))
        throw CHostError(ExitCode::WrongUsage,
                         document.Path().string() + ": " + levelText + " has no data; choose another one");
    const CGrid grid = group.Grid(request.Level);
    RequireBelow(document, "column in the grid of " + levelText + ":", request.Col, grid.Cols);
    RequireBelow(document, "row in the grid of " + levelText + ":", request.Row, grid.Rows);

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
