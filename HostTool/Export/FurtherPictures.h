#pragma once

#include "HostTool/Export/ExportPlan.h"
#include "HostTool/Export/TiffFields.h"
#include "HostTool/Pixels/Colour.h"

namespace HostTool
{

/// A picture beside those of the groups, small enough for memory.
struct CFurtherPicture
{
    std::string Name; ///< "Thumbnail"
    uint32_t Width = 0;
    uint32_t Height = 0;
    CPixelFormat Format;
    ByteBuffer Pixels;
};

/// The document's own thumbnail; nothing if it has none, or it can't be read.
std::optional<CFurtherPicture> ThumbnailOf(const CDocument& document);

/// The picture of the whole slide. Throws CHostError, naming the reason, if there is none or it can't be decoded.
CFurtherPicture OverviewOf(const CDocument& document);

/// A thumbnail of what is exported, made of its coarsest level: its pixels, some left out.
CFurtherPicture MakeThumbnail(const CGroupPixels& pixels, const CLevelPlan& coarsest, const CPosition& position,
                              CColour background, unsigned jobs);

/// Writes a picture as one strip. Answers the directory that speaks of it.
CTiffDirectory WriteFurtherPicture(CTiffWriter& file, CFurtherPicture picture);

} // namespace HostTool
