#pragma once

#include "HostTool/Pixels/GroupPixels.h"

#include <limits>

namespace CLI
{
class App;
}

namespace HostTool
{

/// Numbers from the first to the last one, both included.
struct CRange
{
    int64_t First = 0;
    int64_t Last = std::numeric_limits<int64_t>::max(); ///< to the end, if not said otherwise

    bool IsAll() const { return First == 0 && Last == std::numeric_limits<int64_t>::max(); }
};

/// "3", "2-5" or "2-"; nothing for any other text.
std::optional<CRange> ParseRange(const std::string& text);

/// What of a group is exported.
struct CExportSelection
{
    std::optional<CPixelRect> Rect;    ///< in pixels of level 0, from the picture's corner
    bool IsBegunWithWholeTile = false; ///< the rectangle may grow to the left and upwards, so that bytes can be copied
    CRange Levels;
    std::vector<uint32_t> Channels; ///< in the order of the file; empty: all
    CRange Z;
    CRange T;

    bool IsAll() const { return !Rect && Levels.IsAll() && Channels.empty() && Z.IsAll() && T.IsAll(); }
};

/// The planes of a group that are exported.
class CPlaneSelection
{
public:
    /// Throws CHostError if the group has not what is selected.
    CPlaneSelection(const CGroupPixels& pixels, const CExportSelection& selection);

    const std::vector<uint32_t>& Channels() const { return _Channels; }
    const CAxisSizes& Sizes() const { return _Sizes; }
    int64_t FirstZ() const { return _FirstZ; }
    int64_t FirstT() const { return _FirstT; }
    /// All of them as the document counts them, in the order of the file: channels and, within them, wavelengths first,
    /// then Z, then time.
    std::vector<CPosition> Planes() const;
    /// The index of a plane on the axis of channels, which holds wavelengths as well.
    uint64_t ChannelIndex(const CPosition& plane) const;

private:
    std::vector<uint32_t> _Channels;
    CAxisSizes _Sizes;
    int64_t _FirstZ = 0;
    int64_t _FirstT = 0;
};

/// What the user says of it, as texts.
struct CSelectionOptions
{
    std::vector<int64_t> Rect;
    bool IsBegunWithWholeTile = false;
    std::string Levels;
    std::vector<uint32_t> Channels;
    std::string Z;
    std::string T;

    void AddTo(CLI::App& command);
    /// Throws CHostError for a rectangle without pixels.
    CExportSelection Selection() const;
};

} // namespace HostTool
