#include "HostTool/Export/TileEncoders.h"
#include "HostTool/Pixels/J2kHandles.h"

#include <array>
#include <cstring>
#include <memory>

namespace HostTool
{

namespace
{

/// Bytes in memory, as the library writes them: it goes back to fill in lengths.
struct CBytesAndPosition
{
    std::vector<uint8_t> Bytes;
    size_t Position = 0;
};

OPJ_SIZE_T Write(void* bytes, OPJ_SIZE_T size, void* user)
{
    auto& out = *static_cast<CBytesAndPosition*>(user);
    out.Bytes.resize(std::max(out.Bytes.size(), out.Position + size));
    std::memcpy(out.Bytes.data() + out.Position, bytes, size);
    out.Position += size;
    return size;
}

OPJ_BOOL Seek(OPJ_OFF_T position, void* user)
{
    static_cast<CBytesAndPosition*>(user)->Position = static_cast<size_t>(position);
    return OPJ_TRUE;
}

OPJ_OFF_T Skip(OPJ_OFF_T count, void* user)
{
    static_cast<CBytesAndPosition*>(user)->Position += static_cast<size_t>(count);
    return count;
}

using Image = std::unique_ptr<opj_image_t, CImageDeleter>;

/// An image without pixels yet.
Image EmptyImage(uint32_t width, uint32_t height, const CPixelFormat& format)
{
    std::array<opj_image_cmptparm_t, 3> parameters{};
    for (auto& parameter : parameters)
    {
        parameter.dx = parameter.dy = 1;
        parameter.w = width;
        parameter.h = height;
        parameter.prec = 8 * format.BytesPerComponent;
    }
    Image image(opj_image_create(format.NumOfComponents, parameters.data(),
                                 format.IsColour() ? OPJ_CLRSPC_SRGB : OPJ_CLRSPC_GRAY));
    if (!image)
        throw CTileError("the JPEG 2000 library cannot be started");
    image->x1 = width;
    image->y1 = height;
    return image;
}

/// A number of 8 or 16 bits.
OPJ_INT32 ValueAt(const uint8_t* component, const CPixelFormat& format)
{
    return component[0] | (format.BytesPerComponent == 2 ? component[1] << 8 : 0);
}

Image ImageOfOneColour(const CColour& colour, uint32_t width, uint32_t height, const CPixelFormat& format)
{
    Image image = EmptyImage(width, height, format);
    const auto pixel = PixelOf(colour, format);
    for (uint32_t i = 0; i < format.NumOfComponents; ++i)
        std::fill_n(image->comps[i].data, size_t{width} * height,
                    ValueAt(pixel.data() + size_t{i} * format.BytesPerComponent, format));
    return image;
}

Image ImageOf(const CPixelTarget& pixels)
{
    const CPixelFormat& format = pixels.Format;
    Image image = EmptyImage(pixels.Width, pixels.Height, format);
    size_t place = 0;
    for (uint32_t y = 0; y < pixels.Height; ++y)
    {
        const uint8_t* component = pixels.Row(y);
        for (uint32_t x = 0; x < pixels.Width; ++x, ++place)
            for (uint32_t i = 0; i < format.NumOfComponents; ++i, component += format.BytesPerComponent)
                image->comps[i].data[place] = ValueAt(component, format);
    }
    return image;
}

std::vector<uint8_t> Compressed(opj_image_t& image, int numOfResolutions, bool isCodestream)
{
    const std::unique_ptr<opj_codec_t, CCodecDeleter> codec(
        opj_create_compress(isCodestream ? OPJ_CODEC_J2K : OPJ_CODEC_JP2));
    const std::unique_ptr<opj_stream_t, CStreamDeleter> stream(opj_stream_default_create(OPJ_FALSE));
    opj_cparameters_t parameters;
    opj_set_default_encoder_parameters(&parameters);
    parameters.tcp_numlayers = 1;
    parameters.cp_disto_alloc = 1;
    parameters.numresolution = numOfResolutions;
    parameters.tcp_mct = image.numcomps == 3 ? 1 : 0;
    CBytesAndPosition out;
    if (!codec || !stream || !opj_setup_encoder(codec.get(), &parameters, &image))
        throw CTileError("the JPEG 2000 library cannot be started");
    opj_stream_set_user_data(stream.get(), &out, nullptr);
    opj_stream_set_write_function(stream.get(), Write);
    opj_stream_set_seek_function(stream.get(), Seek);
    opj_stream_set_skip_function(stream.get(), Skip);
    if (!opj_start_compress(codec.get(), &image, stream.get()) || !opj_encode(codec.get(), stream.get()) ||
        !opj_end_compress(codec.get(), stream.get()))
        throw CTileError("a JPEG 2000 stream like those of the tiles cannot be made");
    return std::move(out.Bytes);
}

} // namespace

std::vector<uint8_t> EncodeJ2kOfOneColour(const CColour& colour, uint32_t width, uint32_t height,
                                          const CPixelFormat& format, bool isCodestream)
{
    constexpr int oneResolution = 1; // there is nothing to resolve, and tiles may be small
    return Compressed(*ImageOfOneColour(colour, width, height, format), oneResolution, isCodestream);
}

std::vector<uint8_t> EncodeJ2k(const CPixelTarget& pixels)
{
    constexpr int usualResolutions = 5; // each is half of the next: tiles are no smaller than 16 pixels
    return Compressed(*ImageOf(pixels), usualResolutions, true);
}

} // namespace HostTool
