#include "HostTool/Export/TileEncoders.h"

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <memory>

namespace HostTool
{

namespace
{

struct CErrors
{
    jpeg_error_mgr Manager;
    std::jmp_buf Back;
};

void Leave(j_common_ptr jpeg)
{
    std::longjmp(reinterpret_cast<CErrors*>(jpeg->err)->Back, 1);
}

void Silence(j_common_ptr, int) {}

struct CFree
{
    void operator()(unsigned char* memory) const { std::free(memory); }
};

/// The library leaves a failing call by longjmp: nothing with a destructor may live in here. `out` is to be freed even
/// after a failure. A stride of 0 repeats the first row.
bool Compress(const CPixelTarget& pixels, const CJpegHeader& like, int quality, unsigned char*& out,
              unsigned long& size)
{
    jpeg_compress_struct jpeg{};
    CErrors errors{};
    jpeg.err = jpeg_std_error(&errors.Manager);
    errors.Manager.error_exit = Leave;
    errors.Manager.emit_message = Silence;
    if (setjmp(errors.Back))
    {
        jpeg_destroy_compress(&jpeg);
        return false;
    }
    jpeg_create_compress(&jpeg);
    jpeg_mem_dest(&jpeg, &out, &size);
    jpeg.image_width = pixels.Width;
    jpeg.image_height = pixels.Height;
    jpeg.input_components = static_cast<int>(like.NumOfComponents);
    jpeg.in_color_space = like.NumOfComponents == 3 ? JCS_RGB : JCS_GRAYSCALE;
    jpeg_set_defaults(&jpeg);
    if (like.AreColoursRgb)
        jpeg_set_colorspace(&jpeg, JCS_RGB);
    jpeg.comp_info[0].h_samp_factor = like.HorizontalSampling;
    jpeg.comp_info[0].v_samp_factor = like.VerticalSampling;
    jpeg_set_quality(&jpeg, quality, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    while (jpeg.next_scanline < jpeg.image_height)
    {
        JSAMPROW row = pixels.Row(jpeg.next_scanline);
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    return true;
}

std::vector<uint8_t> Compressed(const CPixelTarget& pixels, const CJpegHeader& like, int quality)
{
    unsigned char* out = nullptr;
    unsigned long size = 0;
    const bool isDone = Compress(pixels, like, quality, out, size);
    const std::unique_ptr<unsigned char, CFree> owner(out);
    if (!isDone)
        throw CTileError("a JPEG stream like those of the tiles cannot be made");
    return {out, out + size};
}

} // namespace

std::vector<uint8_t> RawOfOneColour(const CColour& colour, uint32_t width, uint32_t height, const CPixelFormat& format)
{
    const auto pixel = PixelOf(colour, format);
    std::vector<uint8_t> pixels;
    pixels.reserve(size_t{width} * height * format.BytesPerPixel());
    for (uint64_t i = 0; i < uint64_t{width} * height; ++i)
        pixels.insert(pixels.end(), pixel.begin(), pixel.begin() + format.BytesPerPixel());
    return pixels;
}

std::vector<uint8_t> EncodeJpegOfOneColour(const CColour& colour, uint32_t width, uint32_t height,
                                           const CJpegHeader& like)
{
    if (like.NumOfComponents != 1 && like.NumOfComponents != 3)
        throw CTileError("a JPEG stream of " + std::to_string(like.NumOfComponents) + " components cannot be made");
    const CPixelFormat format{like.NumOfComponents, 1, ValueKind::Unsigned};
    std::vector<uint8_t> row = RawOfOneColour(colour, width, 1, format);
    constexpr int bestQuality = 100;
    return Compressed({row.data(), 0, width, height, format}, like, bestQuality);
}

std::vector<uint8_t> EncodeJpeg(const CPixelTarget& pixels, int quality, uint16_t sampling)
{
    CJpegHeader like;
    like.NumOfComponents = pixels.Format.NumOfComponents;
    like.HorizontalSampling = like.VerticalSampling = pixels.Format.IsColour() ? sampling : uint16_t{1};
    return Compressed(pixels, like, quality);
}

} // namespace HostTool
