#pragma once

#include "HostTool/Pixels/PixelFormat.h"

#include <array>

namespace HostTool
{

/// A colour for what is not stored, 8 bits each.
struct CColour
{
    uint8_t Red = 255;
    uint8_t Green = 255;
    uint8_t Blue = 255;
};

/// A pixel of that colour in a format; grey is its lightness.
std::array<uint8_t, 24> PixelOf(const CColour& colour, const CPixelFormat& format);

} // namespace HostTool
