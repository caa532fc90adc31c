#include "SampleDocuments/Codecs.h"

#include <png.h>

namespace SampleDocuments
{

namespace
{

struct CPngState
{
    ByteString Out;
    std::span<const uint8_t> In;
    std::string Message;
};

void Leave(png_structp png, png_const_charp message)
{
    static_cast<CPngState*>(png_get_error_ptr(png))->Message = message;
    png_longjmp(png, 1);
}

void Silence(png_structp, png_const_charp) {}

void Write(png_structp png, png_bytep data, size_t size)
{
    Append(static_cast<CPngState*>(png_get_io_ptr(png))->Out, std::span<const uint8_t>(data, size));
}

void Flush(png_structp) {}

void Read(png_structp png, png_bytep data, size_t size)
{
    auto& in = static_cast<CPngState*>(png_get_io_ptr(png))->In;
    if (size > in.size())
        png_error(png, "the file ends too early");
    std::memcpy(data, in.data(), size);
    in = in.subspan(size);
}

// The functions below jump back out of the library: nothing with a destructor may live in them.

bool Compress(const uint8_t* rows, const CPicture& picture, CPngState& state)
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &state, Leave, Silence);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info || setjmp(png_jmpbuf(png)))
    {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_set_write_fn(png, &state, Write, Flush);
    png_set_IHDR(png, info, picture.Width(), picture.Height(), picture.Bits(),
                 picture.Samples() == 3 ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, 3);
    png_write_info(png, info);
    const size_t rowSize = size_t{picture.Width()} * picture.Samples() * (picture.Bits() / 8u);
    for (uint32_t y = 0; y < picture.Height(); ++y)
        png_write_row(png, rows + rowSize * y);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

bool Decompress(CPngState& state, CPicture& picture)
{
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &state, Leave, Silence);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info || setjmp(png_jmpbuf(png)))
    {
        png_destroy_read_struct(&png, &info, nullptr);
        return false;
    }
    png_set_read_fn(png, &state, Read);
    png_read_info(png, info);
    png_set_expand(png);
    png_set_strip_alpha(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    const auto width = png_get_image_width(png, info);
    const auto height = png_get_image_height(png, info);
    const size_t rowSize = png_get_rowbytes(png, info);
    state.Out.resize(rowSize * height);
    const int passes = png_get_interlace_type(png, info) == PNG_INTERLACE_NONE ? 1 : 7;
    for (int pass = 0; pass < passes; ++pass)
        for (uint32_t y = 0; y < height; ++y)
            png_read_row(png, state.Out.data() + rowSize * y, nullptr);
    picture = FromPackedRows(width, height, png_get_channels(png, info), png_get_bit_depth(png, info), state.Out, true);
    png_read_end(png, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    return true;
}

} // namespace

ByteString EncodePng(const CPicture& picture)
{
    const ByteString rows = PackedRows(picture, true);
    CPngState state;
    if (!Compress(rows.data(), picture, state))
        throw CSampleError("PNG: " + state.Message);
    return std::move(state.Out);
}

CPicture DecodePng(std::span<const uint8_t> bytes)
{
    CPngState state;
    state.In = bytes;
    CPicture picture;
    if (!Decompress(state, picture))
        throw CSampleError("is a damaged PNG picture: " + state.Message);
    return picture;
}

} // namespace SampleDocuments
