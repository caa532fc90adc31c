#pragma once

#include "SampleDocuments/Bytes.h"

#include <cstddef>

namespace SampleDocuments
{

/// Pixels of one sample (grey) or three (red, green, blue), 8 or 16 bits each, row by row from the top.
class CPicture
{
public:
    CPicture() = default;
    /// A black picture. Throws CSampleError for samples other than 1 and 3 or bits other than 8 and 16.
    CPicture(uint32_t width, uint32_t height, uint16_t samples, uint16_t bits);

    uint32_t Width() const { return _Width; }
    uint32_t Height() const { return _Height; }
    uint16_t Samples() const { return _Samples; }
    uint16_t Bits() const { return _Bits; }
    uint16_t Largest() const { return static_cast<uint16_t>((1u << _Bits) - 1); }

    uint16_t& At(uint32_t x, uint32_t y, uint16_t sample) { return _Pixels[Index(x, y) + sample]; }
    uint16_t At(uint32_t x, uint32_t y, uint16_t sample) const { return _Pixels[Index(x, y) + sample]; }
    /// The samples of one row: Width() x Samples() of them.
    std::span<uint16_t> Row(uint32_t y) { return {_Pixels.data() + Index(0, y), size_t{_Width} * _Samples}; }
    std::span<const uint16_t> Row(uint32_t y) const
    {
        return {_Pixels.data() + Index(0, y), size_t{_Width} * _Samples};
    }

    /// The left top part of the picture. Throws CSampleError if it is not that large.
    CPicture Cut(uint32_t width, uint32_t height) const;
    /// The same picture in grey, or in three equal samples.
    CPicture WithSamples(uint16_t samples) const;
    /// The same picture with its range stretched or cut to other bits.
    CPicture WithBits(uint16_t bits) const;

    bool operator==(const CPicture&) const = default;

private:
    size_t Index(uint32_t x, uint32_t y) const { return (size_t{y} * _Width + x) * _Samples; }

    uint32_t _Width = 0;
    uint32_t _Height = 0;
    uint16_t _Samples = 1;
    uint16_t _Bits = 8;
    std::vector<uint16_t> _Pixels;
};

/// Reads a PNG, JPEG or TIFF file. Throws CSampleError if it can't be read or is none of these.
CPicture LoadPicture(const std::filesystem::path& path);

/// A picture that looks like stained tissue under the microscope, always the same for the same size. RGB, 8 bits.
CPicture DrawPicture(uint32_t width, uint32_t height);

/// The rows of a picture as they lie in memory of picture libraries: 1 or 2 bytes per sample, the latter in the order
/// asked for.
ByteString PackedRows(const CPicture& picture, bool isBigEndian = false);

/// The inverse of PackedRows.
CPicture FromPackedRows(uint32_t width, uint32_t height, uint16_t samples, uint16_t bits, std::span<const uint8_t> rows,
                        bool isBigEndian = false);

} // namespace SampleDocuments
