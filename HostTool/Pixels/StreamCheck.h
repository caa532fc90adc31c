#pragma once

#include "HostTool/Pixels/TileCodec.h"

#include <string>

namespace HostTool
{

/// Why the bytes do not begin as a stream of that coding does; empty if they do, or if the coding has no such
/// beginning.
std::string WhyNoBeginning(TileCoding coding, std::span<const uint8_t> bytes);

/// Whether a JPEG or JPEG 2000 stream has its closing marker, after which there may be zeros; true for other codings.
bool HasEnd(TileCoding coding, std::span<const uint8_t> bytes);

/// Why a tile is not one whole stream of its coding: what it lacks at its beginning or end; empty if nothing.
std::string WhyNoStream(const CStoredTile& tile);

} // namespace HostTool
