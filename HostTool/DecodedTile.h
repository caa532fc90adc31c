#pragma once

#include "HostTool/Pixels/GroupPixels.h"

#include <filesystem>
#include <string>

namespace HostTool
{

/// Which tile, by the column and row of its level's grid, from 0.
struct CTilePlace
{
    int Level = 0;
    uint64_t Col = 0;
    uint64_t Row = 0;
    CPosition Position;
};

/// Gives a target, which has the size that the plug-in tells, the size that the tile's stream tells. The plug-in tells
/// strips of one size for all of them, though the last one is lower, and each level has its own.
void TakeSizeOfStream(CPixelTarget& target, const CStoredTile& tile);

/// Writes a tile decoded, as a PNG picture, every value as it is. A path without an extension gets ".png". Answers a
/// line that says what was written. Throws CHostError if the tile can't be decoded, PNG can't hold it, or the file
/// can't be written.
std::string WriteDecodedTile(const CGroupPixels& pixels, const CTilePlace& place, std::filesystem::path path);

} // namespace HostTool
