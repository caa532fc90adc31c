#pragma once

#include "HostTool/CommandLine.h"
#include "HostTool/DocumentFacts.h"

#include <ostream>

namespace HostTool
{

/// `zel info`: the document, its groups, channels, axes, levels and tile grids, as text for people.
void PrintFacts(std::ostream& out, const CDocumentFacts& facts);

/// The same, in a line for the document and one for each group.
void PrintShortFacts(std::ostream& out, const CDocumentFacts& facts);

void AddInfoCommand(CCommandLine& line);

} // namespace HostTool
