#pragma once

#include "HostTool/CommandLine.h"
#include "HostTool/Pixels/Pyramid.h"
#include "HostTool/RegionFacts.h"

namespace HostTool
{

/// The regions of a group, with what turns their vertices into pixels and lengths.
struct CGroupRegions
{
    int Group = 0;
    CLevel Finest;
    std::vector<CRegionFacts> Regions;
};

/// The vertices of a region in pixels from the picture's left top corner. An ellipse, which is told by the corners of
/// the rectangle around it, has 64 on its rim.
std::vector<std::array<double, 2>> OutlineOf(const CRegionFacts& region, const CLevel& finest);

/// A GeoJSON feature collection: geometries in pixels of level 0, micrometres among the properties.
std::string GeoJsonOf(const std::vector<CGroupRegions>& groups);

/// A table with a line for each vertex.
std::string CsvOf(const std::vector<CGroupRegions>& groups);

/// `zel rois`: the regions of interest.
void AddRoisCommand(CCommandLine& line);

} // namespace HostTool
