#include "SampleDocuments/Bitmap.h"

namespace SampleDocuments
{

namespace
{

constexpr uint32_t SizeOfHeader = 40;
constexpr uint32_t PixelsPerMetre = 2835;

/// How many steps of each colour a palette of so many bits has: 2, 16 and 256 colours in all.
struct CSteps
{
    uint32_t Red;
    uint32_t Green;
    uint32_t Blue;
};

uint8_t Step(uint32_t number, uint32_t steps)
{
    return static_cast<uint8_t>(steps > 1 ? 255 * number / (steps - 1) : 0);
}

/// Red varies fastest.
std::vector<CColour> EvenColours(const CSteps& steps)
{
    std::vector<CColour> colours;
    for (uint32_t blue = 0; blue < steps.Blue; ++blue)
        for (uint32_t green = 0; green < steps.Green; ++green)
            for (uint32_t red = 0; red < steps.Red; ++red)
                colours.push_back({Step(red, steps.Red), Step(green, steps.Green), Step(blue, steps.Blue)});
    return colours;
}

CColour ColourAt(const CPicture& rgb, uint32_t x, uint32_t y)
{
    return {static_cast<uint8_t>(rgb.At(x, y, 0)), static_cast<uint8_t>(rgb.At(x, y, 1)),
            static_cast<uint8_t>(rgb.At(x, y, 2))};
}

uint32_t Nearest(const std::vector<CColour>& palette, const CColour& colour)
{
    const auto distance = [&colour](const CColour& other)
    {
        const int red = colour.Red - other.Red, green = colour.Green - other.Green, blue = colour.Blue - other.Blue;
        return red * red + green * green + blue * blue;
    };
    uint32_t nearest = 0;
    for (uint32_t i = 1; i < palette.size(); ++i)
        if (distance(palette[i]) < distance(palette[nearest]))
            nearest = i;
    return nearest;
}

/// One row, with the first pixel in the highest bits of a byte, filled up to whole 32-bit words.
void AppendRow(ByteString& bytes, const CPicture& rgb, uint32_t y, uint16_t bits, const std::vector<CColour>& palette)
{
    const size_t start = bytes.size();
    bytes.resize(start + (size_t{rgb.Width()} * bits + 31) / 32 * 4);
    for (uint32_t x = 0; x < rgb.Width(); ++x)
    {
        const CColour colour = ColourAt(rgb, x, y);
        const size_t bit = size_t{x} * bits;
        uint8_t* byte = &bytes[start + bit / 8];
        if (bits == 24)
        {
            byte[0] = colour.Blue;
            byte[1] = colour.Green;
            byte[2] = colour.Red;
        }
        else
            *byte = static_cast<uint8_t>(*byte | Nearest(palette, colour) << (8 - bits - bit % 8));
    }
}

} // namespace

std::vector<CColour> PaletteOf(const CPicture& picture, const CBitmapOptions& options)
{
    if (options.Bits != 1 && options.Bits != 4 && options.Bits != 8 && options.Bits != 24)
        throw CSampleError("bitmap: there are 1, 4, 8 or 24 bits for a pixel, not " + std::to_string(options.Bits));
    if (options.Bits == 24)
        return std::vector<CColour>(options.NumOfColours.value_or(0));
    const uint32_t all = 1u << options.Bits;
    std::vector<CColour> colours;
    if (picture.Samples() == 1 || options.Bits == 1)
        colours = Ramp(std::min(options.NumOfColours.value_or(all), all), {255, 255, 255});
    else
        colours = EvenColours(options.Bits == 4 ? CSteps{2, 4, 2} : CSteps{8, 8, 4});
    colours.resize(options.NumOfColours.value_or(all));
    return colours;
}

ByteString BitmapOf(const CPicture& picture, const CBitmapOptions& options)
{
    const std::vector<CColour> palette = PaletteOf(picture, options);
    const CPicture rgb = picture.WithBits(8).WithSamples(3);
    const uint32_t rowSize = (picture.Width() * options.Bits + 31) / 32 * 4;
    ByteString bytes;
    Append(bytes, options.SizeOfHeader.value_or(SizeOfHeader));
    Append(bytes, picture.Width());
    Append(bytes, picture.Height());
    Append(bytes, uint16_t{1});
    Append(bytes, options.Bits);
    for (const uint32_t number :
         {0u, rowSize * picture.Height(), PixelsPerMetre, PixelsPerMetre, options.NumOfColours.value_or(0), 0u})
        Append(bytes, number);
    for (const CColour& colour : palette)
        for (const uint8_t byte : {colour.Blue, colour.Green, colour.Red, uint8_t{0}})
            bytes.push_back(byte);
    for (uint32_t y = picture.Height(); y-- > 0;)
        AppendRow(bytes, rgb, y, options.Bits, palette);
    return bytes;
}

} // namespace SampleDocuments
