#pragma once

#include "HostTool/CommandLine.h"

namespace HostTool
{

/// `zel tree`: the tag tree of a document, also of a damaged one.
void AddTreeCommand(CCommandLine& line);

} // namespace HostTool
