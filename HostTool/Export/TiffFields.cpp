#include "HostTool/Export/TiffFields.h"

namespace HostTool
{

namespace
{

uint16_t SampleFormatOf(const CPixelFormat& format)
{
    switch (format.Values)
    {
    case ValueKind::Signed:
        return 2;
    case ValueKind::Float:
        return 3;
    default:
        return 1;
    }
}

} // namespace

void SetPixels(CTiffDirectory& directory, uint32_t width, uint32_t height, const CPixelFormat& format)
{
    const auto bits = static_cast<uint16_t>(8 * format.BytesPerComponent);
    directory.SetNumber(TiffTag::ImageWidth, width);
    directory.SetNumber(TiffTag::ImageLength, height);
    directory.Set(TiffTag::BitsPerSample, std::vector<uint16_t>(format.NumOfComponents, bits));
    directory.SetShort(TiffTag::SamplesPerPixel, static_cast<uint16_t>(format.NumOfComponents));
    directory.SetShort(TiffTag::PlanarConfig, 1);
    directory.Set(TiffTag::SampleFormat, std::vector<uint16_t>(format.NumOfComponents, SampleFormatOf(format)));
}

void SetPixelSize(CTiffDirectory& directory, std::optional<double> width, std::optional<double> height)
{
    if (!width || !height)
        return;
    constexpr double micrometresPerCentimetre = 10000;
    constexpr uint16_t centimetres = 3;
    directory.Set(TiffTag::XResolution, RationalOf(micrometresPerCentimetre / *width));
    directory.Set(TiffTag::YResolution, RationalOf(micrometresPerCentimetre / *height));
    directory.SetShort(TiffTag::ResolutionUnit, centimetres);
}

} // namespace HostTool
