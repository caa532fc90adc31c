#include "HostTool/CommandLine.h"
#include "HostTool/Diff/DiffCommand.h"
#include "HostTool/Export/ExportCommand.h"
#include "HostTool/Export/RoisCommand.h"
#include "HostTool/InfoCommand.h"
#include "HostTool/Manual/ManualCommand.h"
#include "HostTool/Pixels/RegionCommand.h"
#include "HostTool/Pixels/SmallPictureCommands.h"
#include "HostTool/Reader/FilesCommand.h"
#include "HostTool/Reader/TilesCommand.h"
#include "HostTool/Reader/TreeCommand.h"
#include "HostTool/TileCommand.h"
#include "HostTool/TourCommand.h"
#include "HostTool/Verify/VerifyCommand.h"

#include <malloc.h>

namespace
{

/// What decoding a tile takes and gives back stays with the program. By default it would go back to the system, and
/// each of its pages would be cleared anew for the next tile.
void KeepMemory()
{
    constexpr int mostKept = 64 << 20;
    constexpr int mostInOnePiece = 2 << 20;
    mallopt(M_TRIM_THRESHOLD, mostKept);
    mallopt(M_MMAP_THRESHOLD, mostInOnePiece);
}

} // namespace

int main(int argc, char** argv)
{
    KeepMemory();
    HostTool::CCommandLine line;
    // In the order of the help.
    HostTool::AddInfoCommand(line);
    HostTool::AddTileCommand(line);
    HostTool::AddRegionCommand(line);
    HostTool::AddThumbnailCommand(line);
    HostTool::AddOverviewCommand(line);
    HostTool::AddRoisCommand(line);
    HostTool::AddExportCommand(line);
    HostTool::AddVerifyCommand(line);
    HostTool::AddDiffCommand(line);
    HostTool::AddTilesCommand(line);
    HostTool::AddFilesCommand(line);
    HostTool::AddTreeCommand(line);
    HostTool::AddTourCommand(line);
    HostTool::AddManualCommand(line);
    return line.Run(argc, argv);
}
