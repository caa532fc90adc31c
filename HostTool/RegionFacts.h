#pragma once

#include "HostTool/Document.h"

#include <string>
#include <vector>

namespace HostTool
{

struct CRegionPoint
{
    int64_t X = 0;
    int64_t Y = 0;
};

/// A region of interest of a group.
struct CRegionFacts
{
    std::string ID;
    std::optional<std::string> Name;
    std::optional<std::string> Type;
    std::optional<std::string> Shape;
    std::optional<double> Rotation;
    /// Its vertices, in pixels of the finest level that has data.
    std::vector<CRegionPoint> Points;
};

/// All regions of interest of a group, in the document's order.
std::vector<CRegionFacts> RegionsOf(const CGroup& group);

} // namespace HostTool
