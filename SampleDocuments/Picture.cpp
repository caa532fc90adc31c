#include "SampleDocuments/Picture.h"

#include "SampleDocuments/Codecs.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <tiffio.h>

namespace SampleDocuments
{

CPicture::CPicture(uint32_t width, uint32_t height, uint16_t samples, uint16_t bits)
    : _Width(width), _Height(height), _Samples(samples), _Bits(bits)
{
    if ((samples != 1 && samples != 3) || (bits != 8 && bits != 16))
        throw CSampleError("a picture has 1 or 3 samples of 8 or 16 bits, not " + std::to_string(samples) + " of " +
                           std::to_string(bits));
    _Pixels.resize(size_t{width} * height * samples);
}

CPicture CPicture::Cut(uint32_t width, uint32_t height) const
{
    if (width > _Width || height > _Height)
        throw CSampleError("a picture of " + std::to_string(_Width) + " x " + std::to_string(_Height) +
                           " pixels has no part of " + std::to_string(width) + " x " + std::to_string(height));
    CPicture part(width, height, _Samples, _Bits);
    for (uint32_t y = 0; y < height; ++y)
        std::copy_n(Row(y).begin(), size_t{width} * _Samples, part.Row(y).begin());
    return part;
}

CPicture CPicture::WithSamples(uint16_t samples) const
{
    if (samples == _Samples)
        return *this;
    CPicture result(_Width, _Height, samples, _Bits);
    for (size_t i = 0; i < size_t{_Width} * _Height; ++i)
    {
        if (samples == 3)
            std::fill_n(result._Pixels.begin() + static_cast<std::ptrdiff_t>(3 * i), 3, _Pixels[i]);
        else
        {
            const uint32_t weighted = 299u * _Pixels[3 * i] + 587u * _Pixels[3 * i + 1] + 114u * _Pixels[3 * i + 2];
            result._Pixels[i] = static_cast<uint16_t>((weighted + 500) / 1000);
        }
    }
    return result;
}

CPicture CPicture::WithBits(uint16_t bits) const
{
    if (bits == _Bits)
        return *this;
    CPicture result(_Width, _Height, _Samples, bits);
    std::transform(_Pixels.begin(), _Pixels.end(), result._Pixels.begin(),
                   [bits](uint16_t value)
                   { return static_cast<uint16_t>(bits == 16 ? value * 257u : (value + 128u) / 257u); });
    return result;
}

ByteString PackedRows(const CPicture& picture, bool isBigEndian)
{
    ByteString rows;
    rows.reserve(size_t{picture.Width()} * picture.Height() * picture.Samples() * picture.Bits() / 8);
    for (uint32_t y = 0; y < picture.Height(); ++y)
        for (const uint16_t sample : picture.Row(y))
        {
            const auto low = static_cast<uint8_t>(sample);
            const auto high = static_cast<uint8_t>(sample >> 8);
            if (picture.Bits() == 8)
                rows.push_back(low);
            else
                rows.insert(rows.end(), {isBigEndian ? high : low, isBigEndian ? low : high});
        }
    return rows;
}

CPicture FromPackedRows(uint32_t width, uint32_t height, uint16_t samples, uint16_t bits, std::span<const uint8_t> rows,
                        bool isBigEndian)
{
    CPicture picture(width, height, samples, bits);
    if (rows.size() < size_t{width} * height * samples * (bits / 8u))
        throw CSampleError("a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                           " pixels needs more than " + std::to_string(rows.size()) + " bytes");
    size_t at = 0;
    for (uint32_t y = 0; y < height; ++y)
        for (uint16_t& sample : picture.Row(y))
        {
            if (bits == 8)
                sample = rows[at++];
            else
            {
                sample =
                    static_cast<uint16_t>(isBigEndian ? rows[at] << 8 | rows[at + 1] : rows[at] | rows[at + 1] << 8);
                at += 2;
            }
        }
    return picture;
}

namespace
{

struct CTiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

/// Messages of libtiff go nowhere: the one line of the exception is enough.
int Silence(TIFF*, void*, const char*, const char*, va_list)
{
    return 1;
}

std::unique_ptr<TIFF, CTiffCloser> OpenTiff(const std::filesystem::path& path)
{
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options, Silence, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, Silence, nullptr);
    std::unique_ptr<TIFF, CTiffCloser> tiff(TIFFOpenExt(path.c_str(), "r", options));
    TIFFOpenOptionsFree(options);
    return tiff;
}

/// Grey or RGB strips are taken as they are; all else goes through libtiff's own conversion to 8 bits.
CPicture LoadTiff(const std::filesystem::path& path)
{
    const auto tiff = OpenTiff(path);
    uint32_t width = 0, height = 0;
    if (!tiff || !TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width) ||
        !TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height) || width == 0 || height == 0)
        throw CSampleError(path.string() + ": is no TIFF file that can be read");
    uint16_t bits = 1, samples = 1, planar = PLANARCONFIG_CONTIG, photometric = PHOTOMETRIC_RGB;
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_PLANARCONFIG, &planar);
    TIFFGetField(tiff.get(), TIFFTAG_PHOTOMETRIC, &photometric);
    if (bits == 16 && !TIFFIsTiled(tiff.get()) && planar == PLANARCONFIG_CONTIG &&
        ((samples == 1 && photometric == PHOTOMETRIC_MINISBLACK) || (samples == 3 && photometric == PHOTOMETRIC_RGB)))
    {
        CPicture picture(width, height, samples, bits);
        for (uint32_t y = 0; y < height; ++y)
            if (TIFFReadScanline(tiff.get(), picture.Row(y).data(), y, 0) < 0)
                throw CSampleError(path.string() + ": row " + std::to_string(y) + " can't be read");
        return picture;
    }
    std::vector<uint32_t> pixels(size_t{width} * height);
    if (!TIFFReadRGBAImageOriented(tiff.get(), width, height, pixels.data(), ORIENTATION_TOPLEFT, 1))
        throw CSampleError(path.string() + ": its pixels can't be read");
    CPicture picture(width, height, 3, 8);
    for (uint32_t y = 0; y < height; ++y)
        for (uint32_t x = 0; x < width; ++x)
        {
            const uint32_t pixel = pixels[size_t{y} * width + x];
            picture.At(x, y, 0) = static_cast<uint16_t>(TIFFGetR(pixel));
            picture.At(x, y, 1) = static_cast<uint16_t>(TIFFGetG(pixel));
            picture.At(x, y, 2) = static_cast<uint16_t>(TIFFGetB(pixel));
        }
    return picture;
}

} // namespace

CPicture LoadPicture(const std::filesystem::path& path)
{
    const ByteString bytes = ReadFile(path);
    const std::string_view start(reinterpret_cast<const char*>(bytes.data()), std::min<size_t>(bytes.size(), 4));
    try
    {
        return start.starts_with("II") || start.starts_with("MM") ? LoadTiff(path) : Decode(bytes);
    }
    catch (const CSampleError& error)
    {
        const std::string text = error.what();
        throw CSampleError(text.starts_with(path.string()) ? text : path.string() + ": " + text);
    }
}

namespace
{

double Noise(int64_t x, int64_t y)
{
    uint64_t number = static_cast<uint64_t>(x) * 0x9E3779B97F4A7C15u ^ static_cast<uint64_t>(y) * 0xC2B2AE3D27D4EB4Fu;
    number = (number ^ (number >> 29)) * 0xBF58476D1CE4E5B9u;
    return static_cast<double>((number ^ (number >> 32)) & 0xFFFFFF) / 0xFFFFFF;
}

/// Noise that changes smoothly over `scale` pixels.
double SmoothNoise(double x, double y, double scale)
{
    const double left = std::floor(x / scale), top = std::floor(y / scale);
    const auto ease = [](double t) { return t * t * (3 - 2 * t); };
    const double right = ease(x / scale - left), down = ease(y / scale - top);
    const auto column = static_cast<int64_t>(left), row = static_cast<int64_t>(top);
    const double above = std::lerp(Noise(column, row), Noise(column + 1, row), right);
    const double below = std::lerp(Noise(column, row + 1), Noise(column + 1, row + 1), right);
    return std::lerp(above, below, down);
}

/// How deep inside a nucleus a point lies: 0 outside, up to 1. One nucleus to a square of 24 pixels, somewhere in it.
double Nucleus(double x, double y)
{
    constexpr double Grid = 24;
    double depth = 0;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
        {
            const auto column = static_cast<int64_t>(x / Grid) + dx, row = static_cast<int64_t>(y / Grid) + dy;
            const double centerX = (static_cast<double>(column) + Noise(column * 3, row)) * Grid;
            const double centerY = (static_cast<double>(row) + Noise(column, row * 5)) * Grid;
            const double radius = 4 + 5 * Noise(column * 7, row * 11);
            depth = std::max(depth, 1 - std::hypot(x - centerX, y - centerY) / radius);
        }
    return depth;
}

} // namespace

CPicture DrawPicture(uint32_t width, uint32_t height)
{
    CPicture picture(width, height, 3, 8);
    for (uint32_t y = 0; y < height; ++y)
        for (uint32_t x = 0; x < width; ++x)
        {
            const double tissue = std::clamp(SmoothNoise(x, y, 120) * 1.6 + SmoothNoise(x, y, 17) * 0.5 - 0.6, 0., 1.);
            const double nucleus = tissue > 0.3 ? std::min(1., 2.5 * Nucleus(x, y)) : 0;
            const double colors[3][3] = {{244, 242, 246}, {226, 142, 186}, {92, 58, 138}};
            for (uint16_t s = 0; s < 3; ++s)
            {
                const double stained = std::lerp(colors[0][s], colors[1][s], tissue);
                const double value = std::lerp(stained, colors[2][s], nucleus) + 6 * (Noise(x, y) - 0.5);
                picture.At(x, y, s) = static_cast<uint16_t>(std::clamp(value, 0., 255.));
            }
        }
    return picture;
}

} // namespace SampleDocuments
