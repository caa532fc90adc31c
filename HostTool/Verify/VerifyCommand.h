#pragma once

#include "HostTool/CommandLine.h"

namespace HostTool
{

/// `zel verify`: reads, and if wanted decodes, every tile of every group, and tells what became of each.
void AddVerifyCommand(CCommandLine& line);

} // namespace HostTool
