#pragma once

#include "HostTool/Manual/CommandTexts.h"

namespace HostTool
{

/// The manual page of a command as `man` reads it. That of the program, which has no name, lists all commands.
std::string ManualPageOf(const CCommandTexts& command, const std::vector<CCommandTexts>& all,
                         const std::string& version);

} // namespace HostTool
