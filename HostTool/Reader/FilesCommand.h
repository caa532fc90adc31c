#pragma once

#include "HostTool/CommandLine.h"

namespace HostTool
{

/// `zel files`: the files that a document is made of, and what is missing.
void AddFilesCommand(CCommandLine& line);

} // namespace HostTool
