#pragma once

#include "HostTool/PluginHost.h"

namespace HostTool
{

/// The exported functions as they are linked into this program with the reader's own layers.
CPluginHost BuiltInPlugin();

/// The plug-in of that name, or the built-in one for an empty name. Throws CHostError.
CPluginHost HostOf(const std::filesystem::path& plugin);

} // namespace HostTool
