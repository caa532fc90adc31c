#include "HostTool/Pixels/Colour.h"

#include <cmath>
#include <cstring>

namespace HostTool
{

namespace
{

template <typename Number>
void PutNumber(Number number, uint8_t* out)
{
    std::memcpy(out, &number, sizeof(number));
}

/// `part` of 255 of the largest value that a component can have; 1 for floating point.
void PutComponent(uint8_t part, const CPixelFormat& format, uint8_t* out)
{
    if (format.Values == ValueKind::Float)
    {
        if (format.BytesPerComponent == 4)
            PutNumber(static_cast<float>(part) / 255.0F, out);
        else
            PutNumber(part / 255.0, out);
        return;
    }
    const uint32_t bits = 8 * format.BytesPerComponent - (format.Values == ValueKind::Signed ? 1 : 0);
    const uint64_t most = ~uint64_t{0} >> (64 - bits);
    const uint64_t number = most / 255 * part + most % 255 * part / 255;
    std::memcpy(out, &number, format.BytesPerComponent); // both are little-endian
}

} // namespace

std::array<uint8_t, 24> PixelOf(const CColour& colour, const CPixelFormat& format)
{
    std::array<uint8_t, 24> pixel{};
    if (format.IsColour())
    {
        PutComponent(colour.Red, format, pixel.data());
        PutComponent(colour.Green, format, pixel.data() + format.BytesPerComponent);
        PutComponent(colour.Blue, format, pixel.data() + size_t{2} * format.BytesPerComponent);
        return pixel;
    }
    const double lightness = 0.299 * colour.Red + 0.587 * colour.Green + 0.114 * colour.Blue;
    PutComponent(static_cast<uint8_t>(std::lround(lightness)), format, pixel.data());
    return pixel;
}

} // namespace HostTool
