#pragma once

#include "HostTool/DocumentFacts.h"

#include <filesystem>
#include <string>

namespace HostTool
{

/// A tile that was read: its bytes, and what is known of their pixels.
struct CTile
{
    ByteBuffer Bytes;
    CMN_RECT Rect{};
    std::optional<uint64_t> BytesPerRawPixel; ///< nothing: the tile is compressed
    std::optional<std::string> ColorSpace;    ///< of a raw tile in colours: "RGB", "BGR"
    bool HasTablesApart = false;              ///< a JPEG stream that viewers can't show by itself
};

CTile ReadTile(const CArea& area, const CImage& image, uint32_t channel);

/// Writes a tile to a file: a compressed one as it is stored, a raw one as a PNG picture, or as stored if PNG has no
/// such pixels or `path` ends in ".raw". A path without an extension gets the one that fits. Answers a line that says
/// what was written. Throws CHostError if the extension is that of another kind of file, or the file can't be written.
std::string WriteTile(const CTile& tile, std::filesystem::path path);

} // namespace HostTool
