#include "HostTool/Export/TileEncoders.h"

#include <cstring>
#include <new>
#include <zlib.h>
#include <zstd.h>

namespace HostTool
{

namespace
{

constexpr int CompressionLevel = 4; // twice as fast as the usual one, and a few percent larger
constexpr int ZstdLevel = 3;        // smaller than Deflate all the same

/// Each number becomes its difference from the one of the same component in the pixel before it.
template <typename Number>
void TakeDifferences(uint8_t* row, uint32_t width, uint32_t numOfComponents)
{
    const size_t count = size_t{width} * numOfComponents;
    for (size_t i = count; i-- > numOfComponents;)
    {
        Number number;
        Number before;
        std::memcpy(&number, row + i * sizeof(Number), sizeof(Number));
        std::memcpy(&before, row + (i - numOfComponents) * sizeof(Number), sizeof(Number));
        number = static_cast<Number>(number - before);
        std::memcpy(row + i * sizeof(Number), &number, sizeof(Number));
    }
}

void TakeDifferences(const CPixelTarget& pixels)
{
    const CPixelFormat& format = pixels.Format;
    for (uint32_t y = 0; y < pixels.Height; ++y)
    {
        if (format.BytesPerComponent == 1)
            TakeDifferences<uint8_t>(pixels.Row(y), pixels.Width, format.NumOfComponents);
        else if (format.BytesPerComponent == 2)
            TakeDifferences<uint16_t>(pixels.Row(y), pixels.Width, format.NumOfComponents);
        else
            TakeDifferences<uint32_t>(pixels.Row(y), pixels.Width, format.NumOfComponents);
    }
}

} // namespace

bool HasDifferences(const CPixelFormat& format)
{
    return format.Values != ValueKind::Float && format.BytesPerComponent <= 4;
}

std::vector<uint8_t> EncodeDeflate(const CPixelTarget& pixels)
{
    if (HasDifferences(pixels.Format))
        TakeDifferences(pixels);
    const size_t size = pixels.Stride * pixels.Height;
    uLongf encodedSize = compressBound(size);
    std::vector<uint8_t> encoded(encodedSize);
    if (compress2(encoded.data(), &encodedSize, pixels.Pixels, size, CompressionLevel) != Z_OK)
        throw std::bad_alloc();
    encoded.resize(encodedSize);
    return encoded;
}

std::vector<uint8_t> EncodeZstd(const CPixelTarget& pixels)
{
    if (HasDifferences(pixels.Format))
        TakeDifferences(pixels);
    const size_t size = pixels.Stride * pixels.Height;
    std::vector<uint8_t> encoded(ZSTD_compressBound(size));
    const size_t encodedSize = ZSTD_compress(encoded.data(), encoded.size(), pixels.Pixels, size, ZstdLevel);
    if (ZSTD_isError(encodedSize))
        throw std::bad_alloc();
    encoded.resize(encodedSize);
    return encoded;
}

} // namespace HostTool
