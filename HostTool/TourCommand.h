#pragma once

#include "HostTool/CommandLine.h"

#include <filesystem>
#include <ostream>

namespace HostTool
{

/// `zel tour`: prints the facts of a document and writes one tile of each level of each group into a folder, from the
/// middle of the picture and of its axes. The folder is made if it isn't there.
/// Throws CHostError if a tile can't be read or written.
void TourCommand(std::ostream& out, const CDocument& document, const std::filesystem::path& folder);

void AddTourCommand(CCommandLine& line);

} // namespace HostTool
