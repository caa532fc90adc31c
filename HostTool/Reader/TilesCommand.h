#pragma once

#include "HostTool/CommandLine.h"

namespace HostTool
{

/// `zel tiles`: where every tile of a group lies, for who reads it without this program.
void AddTilesCommand(CCommandLine& line);

} // namespace HostTool
