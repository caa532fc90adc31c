#pragma once

#include "HostTool/Pixels/TileCodec.h"

#include <optional>

namespace HostTool
{

struct CStreamSize
{
    uint32_t Width = 0;
    uint32_t Height = 0;
};

/// The size in pixels that a JPEG or JPEG 2000 stream tells of itself; nothing of tiles of other kinds, and of streams
/// whose beginning is damaged.
std::optional<CStreamSize> SizeOfStream(const CStoredTile& tile);

} // namespace HostTool
