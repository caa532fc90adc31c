#pragma once

#include "HostTool/CommandLine.h"

#include <filesystem>
#include <ostream>

namespace HostTool
{

struct CTourRequest
{
    std::filesystem::path Folder;
    bool IsShort = false; ///< a line for each group and none for each tile
};

/// `zel tour`: prints the facts and the regions of interest of a document, and writes its thumbnail and one tile of
/// each level of each group into a folder, from the middle of the picture and of its axes. The folder is made if it
/// isn't there. A tile or thumbnail that can't be read gets a line, and the answer is that of a damaged file. Throws
/// CHostError if something can't be written.
ExitCode TourCommand(std::ostream& out, const CDocument& document, const CTourRequest& request);

void AddTourCommand(CCommandLine& line);

} // namespace HostTool
