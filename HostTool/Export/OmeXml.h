#pragma once

#include "HostTool/DocumentFacts.h"
#include "HostTool/Export/FurtherPictures.h"
#include "HostTool/RegionFacts.h"

namespace HostTool
{

/// One group of the file, with what is told of it.
struct COmeImage
{
    const CGroupPixels* Pixels = nullptr;
    const CGroupFacts* Facts = nullptr;
    const std::vector<CLevelPlan>* Plan = nullptr;
    const CPlaneSelection* Planes = nullptr;
    std::vector<CRegionFacts> Regions;
    std::vector<std::optional<double>> Times;  ///< in seconds, of each exported position on the time axis
    std::vector<std::optional<double>> Depths; ///< in micrometres, of each exported position on the Z axis
    uint64_t FirstDirectory = 0;               ///< of its planes in the file
};

/// A picture beside the groups: red, green and blue, or grey.
struct COmePicture
{
    const CFurtherPicture* Picture = nullptr;
    uint64_t Directory = 0;
};

/// The facts of the document in the OME data model, as XML in UTF-8.
std::string OmeXmlOf(const CDocumentFacts& document, const std::vector<COmeImage>& images,
                     const std::vector<COmePicture>& pictures = {});

/// How the OME data model calls numbers of this kind; empty if it has no name for them.
std::string OmeTypeOf(const CPixelFormat& format);

/// A length in the document's units as micrometres; nothing if the unit is none of length.
std::optional<double> Micrometres(double value, const std::string& unit);

} // namespace HostTool
