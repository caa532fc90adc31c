#include "HostTool/RegionFacts.h"

#include "HostTool/Text.h"

namespace HostTool
{

namespace
{

CRegionFacts RegionFacts(const CArea& area, const std::string& id)
{
    CRegionFacts region;
    region.ID = id;
    const auto info = area.Properties(L"AnalysisROIInfo", L"roiId", ToWide(id));
    if (!info)
        return region;
    region.Name = info->Text(L"name");
    region.Type = info->Text(L"type");
    region.Shape = info->Text(L"shape");
    region.Rotation = info->Number(L"rotation");
    // The plug-in tells vertices from the corner of the area.
    const CMN_RECT place = area.Position();
    for (const AC_POINT& point : info->Points(L"data"))
        region.Points.push_back({point.x + static_cast<int64_t>(place.x), point.y + static_cast<int64_t>(place.y)});
    return region;
}

/// The first area that is neither left of the origin nor above it: from the others, whose places wrapped around at 32
/// bits, the plug-in tells no vertices.
CArea AreaForRegions(const CGroup& group)
{
    const int level = group.FirstLevel();
    const CGrid grid = group.Grid(level);
    constexpr uint64_t firstWrapped = 1U << 31;
    uint64_t col = 0;
    while (col + 1 < grid.Cols && group.Area(level, col).Position().x >= firstWrapped)
        ++col;
    uint64_t row = 0;
    while (row + 1 < grid.Rows && group.Area(level, grid.AreaID(col, row)).Position().y >= firstWrapped)
        ++row;
    return group.Area(level, grid.AreaID(col, row));
}

} // namespace

std::vector<CRegionFacts> RegionsOf(const CGroup& group)
{
    std::vector<CRegionFacts> regions;
    const CArea area = AreaForRegions(group);
    if (const auto list = area.Properties(L"AnalysisROIList"))
        for (const std::string& id : list->Texts(L"id"))
            regions.push_back(RegionFacts(area, id));
    return regions;
}

} // namespace HostTool
