#pragma once

#include "HostTool/InfoJson.h"

#include <string>

namespace HostTool
{

/// The names of the columns that `zel info --csv` prints, in a line.
std::string CsvHead();

/// A line for each group that can be read; one that tells why, if there is none.
std::string CsvOf(const CInfo& info);

} // namespace HostTool
