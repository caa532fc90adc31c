#include "HostTool/Pixels/Blend.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace HostTool
{

namespace
{

using Rgb = std::array<uint8_t, 3>;

constexpr Rgb Grey = {255, 255, 255};
constexpr std::array<Rgb, 6> ColoursInTurn = {
    {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {0, 255, 255}, {255, 0, 255}, {255, 255, 0}}};

double LargestValue(const CPixelFormat& format)
{
    if (format.Values == ValueKind::Float)
        return 1;
    return std::ldexp(1.0,
                      static_cast<int>(8 * format.BytesPerComponent) - (format.Values == ValueKind::Signed ? 1 : 0)) -
           1;
}

CDisplay DisplayOf(const CArea& area, const CChannelPixels& channel)
{
    CDisplay display;
    display.White = LargestValue(channel.Format);
    const auto limits = area.Properties(L"LUTInfo", L"channelId", std::to_wstring(channel.ID));
    const auto black = limits ? limits->Number(L"shadow") : std::nullopt;
    const auto white = limits ? limits->Number(L"highlight") : std::nullopt;
    if (black && white && *black < *white)
    {
        display.Black = *black;
        display.White = *white;
    }
    for (const auto& colour : area.LookUpTable(channel.ID))
    {
        const auto byte = [](int value) { return static_cast<uint8_t>(std::clamp(value, 0, 255)); };
        display.Table.push_back({byte(colour[0]), byte(colour[1]), byte(colour[2])});
    }
    return display;
}

/// Black to the colour, in as many steps as the result can show.
std::vector<Rgb> RampTo(const Rgb& colour)
{
    std::vector<Rgb> table(256);
    for (uint32_t i = 0; i < 256; ++i)
        for (size_t c = 0; c < 3; ++c)
            table[i][c] = static_cast<uint8_t>(i * colour[c] / 255);
    return table;
}

template <typename Number>
double NumberAt(const uint8_t* in)
{
    Number number;
    std::memcpy(&number, in, sizeof(number));
    return static_cast<double>(number);
}

void AddColour(const Rgb& colour, uint8_t* out)
{
    for (size_t c = 0; c < 3; ++c)
        out[c] = static_cast<uint8_t>(std::min(255, out[c] + colour[c]));
}

} // namespace

std::vector<CDisplay> DisplaysOf(const CGroupPixels& pixels, const std::vector<uint32_t>& channels)
{
    const CArea area = pixels.Group().Area(0, 0);
    std::vector<CDisplay> displays;
    for (const uint32_t id : channels)
    {
        CDisplay display = DisplayOf(area, pixels.Channel(id));
        if (display.Table.size() < 2)
            display.Table = RampTo(channels.size() == 1 ? Grey : ColoursInTurn[displays.size() % ColoursInTurn.size()]);
        displays.push_back(std::move(display));
    }
    return displays;
}

CBlender::CBlender(const CPixelFormat& format, CDisplay display) : _Format(format), _Display(std::move(display))
{
    if (format.IsColour() || format.Values != ValueKind::Unsigned || format.BytesPerComponent > 2)
        return;
    const uint32_t numOfValues = 1U << (8 * format.BytesPerComponent);
    for (uint32_t value = 0; value < numOfValues; ++value)
        _Colours.push_back(ColourOf(value));
}

double CBlender::PartOf(double value) const
{
    const double part = (value - _Display.Black) / (_Display.White - _Display.Black);
    // Written so that what is no number is shown as the first colour.
    return part > 0 ? std::min(part, 1.0) : 0;
}

uint8_t CBlender::ComponentOf(double value) const
{
    return static_cast<uint8_t>(std::lround(255 * PartOf(value)));
}

Rgb CBlender::ColourOf(double value) const
{
    const auto last = static_cast<double>(_Display.Table.size() - 1);
    return _Display.Table[static_cast<size_t>(std::lround(last * PartOf(value)))];
}

double CBlender::ValueAt(const uint8_t* in) const
{
    const bool isSigned = _Format.Values == ValueKind::Signed;
    switch (_Format.BytesPerComponent)
    {
    case 1:
        return isSigned ? NumberAt<int8_t>(in) : NumberAt<uint8_t>(in);
    case 2:
        return isSigned ? NumberAt<int16_t>(in) : NumberAt<uint16_t>(in);
    case 4:
        return _Format.Values == ValueKind::Float ? NumberAt<float>(in)
               : isSigned                         ? NumberAt<int32_t>(in)
                                                  : NumberAt<uint32_t>(in);
    default:
        return _Format.Values == ValueKind::Float ? NumberAt<double>(in)
               : isSigned                         ? NumberAt<int64_t>(in)
                                                  : NumberAt<uint64_t>(in);
    }
}

void CBlender::Add(const uint8_t* in, size_t numOfPixels, uint8_t* out) const
{
    const size_t bytesPerPixel = _Format.BytesPerPixel();
    for (size_t i = 0; i < numOfPixels; ++i, in += bytesPerPixel, out += 3)
    {
        if (_Format.IsColour())
        {
            const size_t component = _Format.BytesPerComponent;
            AddColour({ComponentOf(ValueAt(in)), ComponentOf(ValueAt(in + component)),
                       ComponentOf(ValueAt(in + 2 * component))},
                      out);
        }
        else if (!_Colours.empty())
        {
            const size_t value = bytesPerPixel == 1 ? in[0] : in[0] | size_t{in[1]} << 8;
            AddColour(_Colours[value], out);
        }
        else
        {
            AddColour(ColourOf(ValueAt(in)), out);
        }
    }
}

} // namespace HostTool
