#pragma once

#include "HostTool/CommandLine.h"

namespace HostTool
{

/// `zel thumbnail`: the small picture of the document.
void AddThumbnailCommand(CCommandLine& line);

/// `zel overview`: the picture of the whole slide.
void AddOverviewCommand(CCommandLine& line);

} // namespace HostTool
