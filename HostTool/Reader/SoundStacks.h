#pragma once

#include "HostTool/Document.h"

namespace HostTool
{

/// Opens a document as the plug-in does; one of which some tile stores are missing, which the plug-in refuses as a
/// whole, comes as far as it can be read, through the reader's own layers. Throws CHostError if nothing of it can be
/// read.
CDocument OpenWhatThereIs(const CPluginHost& host, const std::filesystem::path& path);

/// Throws CHostError, naming what is missing, if not all of a document could be opened; `code` is what became of the
/// rest.
void RequireAllThere(const CDocument& document, ExitCode code = ExitCode::Done);

} // namespace HostTool
