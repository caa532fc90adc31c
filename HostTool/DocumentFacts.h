#pragma once

#include "HostTool/Document.h"

#include <array>
#include <map>
#include <string>
#include <vector>

namespace HostTool
{

/// What `zel info` tells, gathered from the plug-in. What the plug-in does not tell is left empty.

/// Something about the document that its reader should know.
struct CDiagnostic
{
    std::string Severity; ///< "warning": all else holds; "error": something can't be read
    std::string Code;     ///< the same for ever, for programs: "level-without-data"
    std::string Text;     ///< for people
};
using Diagnostics = std::vector<CDiagnostic>;

struct CLimits
{
    int Shadow = 0;
    int Highlight = 0;
};

struct CChannelFacts
{
    uint32_t ID = 0;
    std::optional<std::string> Name;
    std::optional<std::string> Format;     ///< "RAW", "JPEG", "J2K", "PNG", "BMP"
    std::optional<std::string> ColorSpace; ///< "GRAYSCALE", "RGB", "BGR"
    std::optional<int> BytesPerPixel;
    std::optional<int> NumOfUsedBits;                   ///< of a component
    std::optional<CLimits> Limits;                      ///< the values that are shown darkest and brightest
    std::vector<std::array<int, 3>> LookUpTable;        ///< red, green, blue; empty: it has none
    std::optional<double> ExposureTime;                 ///< in microseconds
    std::optional<std::string> BrightestColour() const; ///< the last colour of the table as "#00FF00"
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

struct CLensFacts
{
    std::optional<std::string> Name;
    std::optional<double> Magnification;
    std::optional<std::string> Immersion;
    std::optional<double> NumericalAperture;
    std::optional<double> WorkingDistance; ///< in millimetres
    std::optional<double> RefractiveIndex;
};

struct CGroupFacts
{
    int Number = 0;
    std::optional<std::string> Name;
    std::optional<CLensFacts> Lens;
    std::optional<AC_POINT> StagePosition; ///< in nanometres
    std::optional<std::string> Experiment;
    std::optional<std::string> Sample;
    std::optional<std::string> SampleComment;
    size_t NumOfRegions = 0;
    /// How the group is shown, by the interface's names without "ZEL_Group": "Type", "PlaneUnit".
    std::map<std::string, std::string> Display;
    std::vector<CChannelFacts> Channels;
    std::vector<CAxisFacts> Axes; ///< in the order Z, time, lambda
    std::vector<CLevelFacts> Levels;
};

struct CDocumentFacts
{
    std::filesystem::path Path;
    std::optional<std::string> FormatVersion;
    std::optional<std::string> DeviceName; ///< the hardware that made it
    std::optional<std::string> DeviceVersion;
    std::optional<std::string> Author;
    std::optional<std::string> Comment;
    std::optional<std::string> FamilyID;
    std::optional<std::string> Created; ///< as "2024-02-29T12:00:00Z"
    std::optional<std::string> Updated;
    std::optional<ByteBuffer> Thumbnail; ///< a BMP file
    std::optional<ByteBuffer> Overview;  ///< the picture of the whole slide, as it is stored
    std::vector<CGroupFacts> Groups;
    Diagnostics Remarks;
};

/// Throws CHostError if the document fails in what every document must tell.
CDocumentFacts FactsOf(const CDocument& document);
/// `remarks` gets what is not as it should be.
CGroupFacts FactsOf(const CGroup& group, Diagnostics& remarks);
/// The channels of a group, by one of its areas.
std::vector<uint32_t> ChannelIDs(const CArea& area);
CChannelFacts ChannelFacts(const CArea& area, uint32_t channel);

/// The short name of a unit of length or time, as "um" of "10^-6m^1"; any other text as it is.
std::string UnitNameOf(const std::string& units);

/// The short name of an axis: "Z", "T", "lambda".
std::string NameOf(AC_AxisType axis);

} // namespace HostTool
