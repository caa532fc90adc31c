#pragma once

#include "HostTool/Manual/CommandTexts.h"

namespace HostTool
{

/// What bash and zsh complete the program's words by.
std::string BashCompletionOf(const std::vector<CCommandTexts>& all);
std::string ZshCompletionOf(const std::vector<CCommandTexts>& all);

} // namespace HostTool
