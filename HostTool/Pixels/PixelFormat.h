#pragma once

#include <cstddef>
#include <cstdint>

namespace HostTool
{

/// What the numbers of a pixel are.
enum class ValueKind
{
    Unsigned,
    Signed,
    Float
};

/// How decoded pixels lie in memory: rows from top to bottom, components side by side, red first, little-endian.
struct CPixelFormat
{
    uint32_t NumOfComponents = 1;   ///< 1: grey, 3: red, green, blue
    uint32_t BytesPerComponent = 1; ///< 1, 2, 4 or 8
    ValueKind Values = ValueKind::Unsigned;

    uint32_t BytesPerPixel() const { return NumOfComponents * BytesPerComponent; }
    bool IsColour() const { return NumOfComponents == 3; }
    bool operator==(const CPixelFormat&) const = default;
};

/// Where a tile's pixels go: `Height` rows of `Width` pixels, `Stride` bytes apart. Borrowed.
struct CPixelTarget
{
    uint8_t* Pixels = nullptr;
    size_t Stride = 0;
    uint32_t Width = 0;
    uint32_t Height = 0;
    CPixelFormat Format;

    uint8_t* Row(uint32_t y) const { return Pixels + y * Stride; }
};

} // namespace HostTool
