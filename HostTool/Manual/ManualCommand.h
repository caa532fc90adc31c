#pragma once

#include "HostTool/CommandLine.h"

namespace HostTool
{

/// `zel manual`: writes the manual pages and what shells complete by, made of the same texts as the help.
void AddManualCommand(CCommandLine& line);

} // namespace HostTool
