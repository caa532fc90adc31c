#pragma once

#include "HostTool/DocumentFacts.h"
#include "HostTool/Export/ExportCommand.h"
#include "HostTool/Export/PlaneExport.h"
#include "HostTool/RegionFacts.h"

namespace HostTool
{

/// A group on its way into a file.
struct CGroupExport
{
    /// Throws CHostError if the group, or what of it is selected, can't be exported so.
    CGroupExport(const CDocument& document, int number, const CExportRequest& request);

    /// In the file.
    uint64_t NumOfTiles() const;
    /// Where the images at the exported positions of an axis lie, in seconds or micrometres.
    std::vector<std::optional<double>> Times() const;
    std::vector<std::optional<double>> Depths() const;

    CGroupPixels Pixels;
    CPlaneSelection Planes;
    std::vector<CLevelPlan> Plan;
    Diagnostics Remarks;
    CGroupFacts Facts;
    std::vector<CRegionFacts> Regions;
    CExportCounts Counts;
    uint64_t NumOfTilesBeside = 0; ///< the picture, which the file leaves out
};

} // namespace HostTool
