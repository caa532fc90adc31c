#pragma once

#include "HostTool/Pixels/GroupPixels.h"

#include <array>

namespace HostTool
{

/// How a channel is shown: values up to `Black` have the table's first colour, those from `White` on its last one.
struct CDisplay
{
    double Black = 0;
    double White = 255;
    std::vector<std::array<uint8_t, 3>> Table; ///< of a grey channel: red, green, blue; at least two
};

/// The displays of channels that are shown together. What the document leaves open is filled in: limits are those of
/// the used bits; a channel without a table is grey, or, beside others, of one of six colours in turn.
std::vector<CDisplay> DisplaysOf(const CGroupPixels& pixels, const std::vector<uint32_t>& channels);

/// Turns the values of one channel into colours, 8 bits each, and adds them to what other channels have put there.
class CBlender
{
public:
    CBlender(const CPixelFormat& format, CDisplay display);

    /// Adds `numOfPixels` pixels of the channel's format at `in` to as many of red, green and blue at `out`; a sum
    /// beyond 255 is 255.
    void Add(const uint8_t* in, size_t numOfPixels, uint8_t* out) const;

private:
    /// How far a value lies from black to white, 0 to 1.
    double PartOf(double value) const;
    uint8_t ComponentOf(double value) const;
    std::array<uint8_t, 3> ColourOf(double value) const;
    double ValueAt(const uint8_t* in) const;

    CPixelFormat _Format;
    CDisplay _Display;
    std::vector<std::array<uint8_t, 3>> _Colours; ///< of each value that 8 or 16 bits can have
};

} // namespace HostTool
