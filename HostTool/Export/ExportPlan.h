#pragma once

#include "HostTool/Pixels/GroupPixels.h"

namespace HostTool
{

/// How a level becomes a picture of a TIFF file.
struct CLevelPlan
{
    const CLevel* Level = nullptr; ///< of the group's pixels
    /// What is shown, from the corner of the level's tile 0. As stored it begins with a whole tile, so that some pixels
    /// left of and above the picture may be shown, too.
    CPixelRect Rect;
    uint32_t TileWidth = 0; ///< of the file
    uint32_t TileHeight = 0;
    std::string WhyNotAsStored; ///< empty: the bytes of its tiles are copied

    bool IsAsStored() const { return WhyNotAsStored.empty(); }
    uint64_t NumOfCols() const { return (static_cast<uint64_t>(Rect.Width) + TileWidth - 1) / TileWidth; }
    uint64_t NumOfRows() const { return (static_cast<uint64_t>(Rect.Height) + TileHeight - 1) / TileHeight; }
};

/// A group on its way into a file: level 0 and those below it, which all show the same.
/// Throws CHostError if the picture is too large for the tiles that there are.
std::vector<CLevelPlan> PlanOf(const CGroupPixels& pixels);

} // namespace HostTool
