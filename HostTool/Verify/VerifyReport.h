#pragma once

#include "HostTool/Verify/TileCheck.h"

#include <ostream>

namespace HostTool
{

/// What was found, for people: a map of each level, the bad tiles, and a summary. With `isEachTileListed` a line for
/// each tile as well.
void PrintReport(std::ostream& out, const CCheckedDocument& checked, bool isEachTileListed);

/// The rows of a level's map, at most `mostCols` wide and `mostRows` high. A place stands for one or more tiles in all
/// frames, and shows the worst: '#' all stored, '+' some, '.' none, '?' not served, 'X' bad.
std::vector<std::string> MapOf(const CCheckedLevel& level, uint64_t mostCols, uint64_t mostRows);

} // namespace HostTool
