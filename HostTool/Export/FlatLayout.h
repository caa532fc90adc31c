#pragma once

#include "HostTool/DocumentFacts.h"
#include "HostTool/Export/ExportPlan.h"
#include "HostTool/Export/FurtherPictures.h"

namespace HostTool
{

// Descriptions of directories in the dialect in which OpenSlide looks for micrometres and objective power. A page in
// docs/decisions tells why.

/// Of the finest level; `lens` may be null.
std::string FlatDescriptionOf(const CLevelPlan& finest, const CGroupPixels& pixels, const CLensFacts* lens);

/// Of a picture that readers know by `name`: "thumbnail", "macro".
std::string FlatDescriptionOf(const CFurtherPicture& picture, const std::string& name);

} // namespace HostTool
