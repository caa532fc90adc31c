#pragma once

#include "HostTool/Document.h"

#include <string>
#include <vector>

namespace HostTool
{

/// What `zel info` tells, gathered from the plug-in. What the plug-in does not tell is left empty.

struct CChannelFacts
{
    uint32_t ID = 0;
    std::optional<std::string> Name;
    std::optional<std::string> Format;     ///< "RAW", "JPEG", "J2K", "PNG", "BMP"
    std::optional<std::string> ColorSpace; ///< "GRAYSCALE", "RGB", "BGR"
    std::optional<int> BytesPerPixel;
    std::optional<int> NumOfUsedBits; ///< of a component
};

/// An axis with more than one position.
struct CAxisFacts
{
    AC_AxisType Type = AC_AT_TIME;
    int64_t NumOfPositions = 1;
    std::optional<double> Start;
    std::optional<double> End;
    std::optional<double> Step; ///< 0: not evenly spaced
    std::optional<std::string> Units;
};

struct CLevelFacts
{
    int Level = 0;
    bool HasData = false; ///< without it, nothing below holds
    CMN_RECT TilesRect{};
    std::optional<CMN_RECT> PictureRect;
    CGrid Grid;
    uint64_t TileWidth = 0;
    uint64_t TileHeight = 0;
    std::optional<double> PixelWidth; ///< in micrometres
    std::optional<double> PixelHeight;
};

struct CGroupFacts
{
    int Number = 0;
    std::optional<std::string> Name;
    std::vector<CChannelFacts> Channels;
    std::vector<CAxisFacts> Axes; ///< in the order Z, time, lambda
    std::vector<CLevelFacts> Levels;
};

struct CDocumentFacts
{
    std::filesystem::path Path;
    std::optional<std::string> FormatVersion;
    std::vector<CGroupFacts> Groups;
};

/// Throws CHostError if the document fails in what every document must tell.
CDocumentFacts FactsOf(const CDocument& document);
CGroupFacts FactsOf(const CGroup& group);
CChannelFacts ChannelFacts(const CArea& area, uint32_t channel);

/// The short name of an axis: "Z", "T", "lambda".
std::string NameOf(AC_AxisType axis);

} // namespace HostTool
