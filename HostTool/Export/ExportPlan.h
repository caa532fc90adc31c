#pragma once

#include "HostTool/Export/ExportSelection.h"

namespace HostTool
{

/// How a level becomes a picture of a TIFF file.
struct CLevelPlan
{
    const CLevel* Level = nullptr; ///< of the group's pixels
    /// What is shown, from the corner of the level's tile 0. As stored it begins with a whole tile, so that some pixels
    /// left of and above the picture may be shown, too.
    CPixelRect Rect;
    CPixelRect Wanted;      ///< what was to be shown: the picture, or a part of it
    uint32_t TileWidth = 0; ///< of the file
    uint32_t TileHeight = 0;
    std::string WhyNotAsStored; ///< empty: the bytes of its tiles are copied

    bool IsAsStored() const { return WhyNotAsStored.empty(); }
    uint64_t NumOfCols() const { return (static_cast<uint64_t>(Rect.Width) + TileWidth - 1) / TileWidth; }
    uint64_t NumOfRows() const { return (static_cast<uint64_t>(Rect.Height) + TileHeight - 1) / TileHeight; }
};

/// What a file asks of its levels, beside what is selected.
struct CPlanRules
{
    bool IsRecompressed = false; ///< no tiles are copied
    /// What OpenSlide 3.4 can read by libtiff 4.5: of tiles that it does not decode by itself only compressed ones, and
    /// none that are larger than the picture. Levels too small for any such tile are left out.
    bool IsForOpenSlide = false;
};

/// A group on its way into a file: its finest selected level and those below it, which all show the same.
/// Throws CHostError if the picture is too large for the tiles that there are, or nothing of it is selected.
std::vector<CLevelPlan> PlanOf(const CGroupPixels& pixels, const CExportSelection& selection = {},
                               const CPlanRules& rules = {});

/// A tile of the file as it is stored in the document, by its column and row in the file; nothing if none is stored.
/// Throws CTileError if it can't be read, or no reader of the file could take it for a tile.
std::optional<CStoredTile> ReadStoredTile(const CGroupPixels& pixels, const CLevelPlan& plan, uint64_t col,
                                          uint64_t row, const CPosition& position);

/// "level 0, column 3, row 4, ..." of such a tile.
std::string NameOfStoredTile(const CLevelPlan& plan, uint64_t col, uint64_t row, const CPosition& position);

/// How many stored tiles of a level lie wholly beside what the file shows of it, in all planes. `plan` is null for a
/// level that is left out.
uint64_t NumOfTilesBeside(const CGroupPixels& pixels, const CLevel& level, const CLevelPlan* plan,
                          const std::vector<CPosition>& planes);

} // namespace HostTool
