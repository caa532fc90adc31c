#include "HostTool/Pixels/J2kHandles.h"
#include "HostTool/Pixels/TileCodec.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

namespace HostTool
{

namespace
{

/// Bytes in memory, as the library reads them.
struct CBytesAndPosition
{
    std::span<const uint8_t> Bytes;
    size_t Position = 0;
};

OPJ_SIZE_T Read(void* buffer, OPJ_SIZE_T size, void* user)
{
    auto& source = *static_cast<CBytesAndPosition*>(user);
    const size_t count = std::min<size_t>(size, source.Bytes.size() - source.Position);
    if (count == 0)
        return std::numeric_limits<OPJ_SIZE_T>::max();
    std::memcpy(buffer, source.Bytes.data() + source.Position, count);
    source.Position += count;
    return count;
}

OPJ_BOOL Seek(OPJ_OFF_T position, void* user)
{
    auto& source = *static_cast<CBytesAndPosition*>(user);
    if (position < 0 || static_cast<uint64_t>(position) > source.Bytes.size())
        return OPJ_FALSE;
    source.Position = static_cast<size_t>(position);
    return OPJ_TRUE;
}

OPJ_OFF_T Skip(OPJ_OFF_T count, void* user)
{
    auto& source = *static_cast<CBytesAndPosition*>(user);
    const auto position = static_cast<OPJ_OFF_T>(source.Position);
    return Seek(std::min(position + count, static_cast<OPJ_OFF_T>(source.Bytes.size())), user) ? count : -1;
}

bool IsCodestream(std::span<const uint8_t> bytes)
{
    return bytes.size() > 1 && bytes[0] == 0xFF && bytes[1] == 0x4F;
}

std::unique_ptr<opj_image_t, CImageDeleter> ReadImage(std::span<const uint8_t> bytes, const CPixelTarget& target)
{
    const std::unique_ptr<opj_codec_t, CCodecDeleter> codec(
        opj_create_decompress(IsCodestream(bytes) ? OPJ_CODEC_J2K : OPJ_CODEC_JP2));
    const std::unique_ptr<opj_stream_t, CStreamDeleter> stream(opj_stream_default_create(OPJ_TRUE));
    CBytesAndPosition source{bytes};
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (!codec || !stream || !opj_setup_decoder(codec.get(), &parameters))
        throw CTileError("the JPEG 2000 library cannot be started");
    opj_stream_set_user_data(stream.get(), &source, nullptr);
    opj_stream_set_user_data_length(stream.get(), bytes.size());
    opj_stream_set_read_function(stream.get(), Read);
    opj_stream_set_skip_function(stream.get(), Skip);
    opj_stream_set_seek_function(stream.get(), Seek);

    opj_image_t* read = nullptr;
    const bool hasHeader = opj_read_header(stream.get(), codec.get(), &read) != OPJ_FALSE;
    std::unique_ptr<opj_image_t, CImageDeleter> image(read);
    if (!hasHeader || !image)
        throw CTileError("the JPEG 2000 stream is damaged: its header cannot be read");
    // Asked before anything is decoded: a damaged header may claim a size that takes all memory.
    RequireSize(uint64_t{image->x1} - image->x0, uint64_t{image->y1} - image->y0, target);
    if (!opj_decode(codec.get(), stream.get(), image.get()) || !opj_end_decompress(codec.get(), stream.get()))
        throw CTileError("the JPEG 2000 stream is damaged");
    return image;
}

/// One row of a component, as bytes `step` apart. A subsampled component is repeated.
void PutComponent(const opj_image_comp_t& component, uint32_t width, uint32_t y, uint32_t bytesPerComponent,
                  uint8_t* out, size_t step)
{
    const OPJ_INT32* row = component.data + size_t{y / component.dy} * component.w;
    for (uint32_t x = 0; x < width; ++x, out += step)
    {
        const auto value = static_cast<uint32_t>(row[x / component.dx]);
        out[0] = static_cast<uint8_t>(value);
        if (bytesPerComponent == 2)
            out[1] = static_cast<uint8_t>(value >> 8);
    }
}

void RequireComponents(const opj_image_t& image, const CPixelTarget& target)
{
    if (image.color_space == OPJ_CLRSPC_SYCC || image.color_space == OPJ_CLRSPC_EYCC)
        throw CTileError("the JPEG 2000 stream has colours of a kind that is not read");
    for (uint32_t i = 0; i < image.numcomps; ++i)
    {
        const opj_image_comp_t& component = image.comps[i];
        if (!component.data || component.dx == 0 || component.dy == 0 || component.prec > 16 ||
            uint64_t{component.w} * component.dx < target.Width || uint64_t{component.h} * component.dy < target.Height)
            throw CTileError("the JPEG 2000 stream has components of a kind that is not read");
    }
}

} // namespace

void DecodeJ2k(std::span<const uint8_t> bytes, const CPixelTarget& target)
{
    const auto image = ReadImage(bytes, target);
    RequireComponents(*image, target);
    const uint32_t numOfComponents = image->numcomps < 3 ? 1 : 3; // others are transparency
    // Values of 9 to 16 bits have two bytes; those of fewer bits fill two if the document says so.
    const uint32_t bytesPerComponent = image->comps[0].prec > 8 ? 2 : target.Format.BytesPerComponent == 2 ? 2 : 1;
    std::vector<uint8_t> row(size_t{target.Width} * numOfComponents * bytesPerComponent);
    for (uint32_t y = 0; y < target.Height; ++y)
    {
        for (uint32_t i = 0; i < numOfComponents; ++i)
            PutComponent(image->comps[i], target.Width, y, bytesPerComponent,
                         row.data() + size_t{i} * bytesPerComponent, size_t{numOfComponents} * bytesPerComponent);
        PutRow(row, numOfComponents, bytesPerComponent, target, y);
    }
}

} // namespace HostTool
