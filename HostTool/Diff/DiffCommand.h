#pragma once

#include "HostTool/CommandLine.h"

namespace HostTool
{

/// `zel diff`: what two documents differ in, in properties, regions of interest and tiles.
void AddDiffCommand(CCommandLine& line);

} // namespace HostTool
