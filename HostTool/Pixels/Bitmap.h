#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace HostTool
{

/// A BMP file in memory, told by its headers: uncompressed pixels of 1, 4, 8, 24 or 32 bits.
class CBitmap
{
public:
    /// Throws CTileError if it is no such file. The bytes are borrowed.
    explicit CBitmap(std::span<const uint8_t> bytes);

    uint32_t Width() const { return _Width; }
    uint32_t Height() const { return _Height; }
    /// Whether all that it can show is grey.
    bool IsGrey() const;
    /// A row, counted from the top, as red, green and blue, 8 bits each: 3 x Width() bytes at `out`.
    void ReadRow(uint32_t y, uint8_t* out) const;

private:
    std::span<const uint8_t> _Bytes;
    uint32_t _Width = 0;
    uint32_t _Height = 0;
    bool _IsTopFirst = false;
    uint32_t _BitsPerPixel = 0;
    uint64_t _OffsetOfPixels = 0;
    uint64_t _BytesPerRow = 0;
    std::vector<std::array<uint8_t, 3>> _Palette; ///< red, green, blue
};

} // namespace HostTool
