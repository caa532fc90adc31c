#pragma once

#include <cstdint>
#include <cstdio>
#include <span>

namespace HostTool
{

/// Pixels in memory: rows from top to bottom without padding, components side by side, little-endian.
struct CPixels
{
    std::span<const uint8_t> Bytes; ///< Width * Height * NumOfComponents * BitsPerComponent / 8 of them
    uint32_t Width = 0;
    uint32_t Height = 0;
    int NumOfComponents = 1;  ///< 1: grey, 3: colours
    int BitsPerComponent = 8; ///< 8 or 16
    bool IsBlueFirst = false;
};

/// Writes pixels as a PNG picture, every value as it is. False if libpng refuses; then the stream holds no picture.
bool WritePng(std::FILE* stream, const CPixels& pixels);

} // namespace HostTool
