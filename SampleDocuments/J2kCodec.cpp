#include "SampleDocuments/Codecs.h"

#include <algorithm>
#include <memory>
#include <openjpeg.h>

namespace SampleDocuments
{

namespace
{

template <auto Destroy>
struct CDestroyer
{
    template <typename T>
    void operator()(T* object) const
    {
        Destroy(object);
    }
};

using Codec = std::unique_ptr<opj_codec_t, CDestroyer<opj_destroy_codec>>;
using Stream = std::unique_ptr<opj_stream_t, CDestroyer<opj_stream_destroy>>;
using Image = std::unique_ptr<opj_image_t, CDestroyer<opj_image_destroy>>;

/// A file in memory, written or read at a position.
struct CMemory
{
    ByteString Bytes;
    size_t At = 0;
};

OPJ_SIZE_T Write(void* buffer, OPJ_SIZE_T size, void* user)
{
    auto& memory = *static_cast<CMemory*>(user);
    memory.Bytes.resize(std::max(memory.Bytes.size(), memory.At + size));
    std::memcpy(memory.Bytes.data() + memory.At, buffer, size);
    memory.At += size;
    return size;
}

OPJ_SIZE_T Read(void* buffer, OPJ_SIZE_T size, void* user)
{
    auto& memory = *static_cast<CMemory*>(user);
    const size_t count = std::min(size, memory.Bytes.size() - memory.At);
    if (count == 0)
        return static_cast<OPJ_SIZE_T>(-1);
    std::memcpy(buffer, memory.Bytes.data() + memory.At, count);
    memory.At += count;
    return count;
}

OPJ_BOOL Seek(OPJ_OFF_T offset, void* user)
{
    auto& memory = *static_cast<CMemory*>(user);
    memory.At = static_cast<size_t>(offset);
    return memory.At <= memory.Bytes.size();
}

OPJ_OFF_T Skip(OPJ_OFF_T count, void* user)
{
    auto& memory = *static_cast<CMemory*>(user);
    memory.At = std::min(memory.At + static_cast<size_t>(count), memory.Bytes.size());
    return count;
}

Stream MakeStream(CMemory& memory, bool isInput)
{
    Stream stream(opj_stream_default_create(isInput));
    opj_stream_set_user_data(stream.get(), &memory, nullptr);
    opj_stream_set_user_data_length(stream.get(), memory.Bytes.size());
    opj_stream_set_read_function(stream.get(), Read);
    opj_stream_set_write_function(stream.get(), Write);
    opj_stream_set_seek_function(stream.get(), Seek);
    opj_stream_set_skip_function(stream.get(), Skip);
    return stream;
}

Image ToImage(const CPicture& picture)
{
    opj_image_cmptparm_t parameters[3] = {};
    for (auto& component : parameters)
    {
        component.dx = component.dy = 1;
        component.w = picture.Width();
        component.h = picture.Height();
        component.prec = picture.Bits();
    }
    Image image(
        opj_image_create(picture.Samples(), parameters, picture.Samples() == 3 ? OPJ_CLRSPC_SRGB : OPJ_CLRSPC_GRAY));
    if (!image)
        throw CSampleError("JPEG 2000: no memory for the picture");
    image->x1 = picture.Width();
    image->y1 = picture.Height();
    for (uint32_t y = 0; y < picture.Height(); ++y)
        for (uint32_t x = 0; x < picture.Width(); ++x)
            for (uint16_t s = 0; s < picture.Samples(); ++s)
                image->comps[s].data[size_t{y} * picture.Width() + x] = picture.At(x, y, s);
    return image;
}

} // namespace

ByteString EncodeJ2k(const CPicture& picture, uint32_t quality)
{
    const Image image = ToImage(picture);
    opj_cparameters_t parameters;
    opj_set_default_encoder_parameters(&parameters);
    parameters.tcp_numlayers = 1;
    parameters.cp_disto_alloc = 1;
    // A quality of 85 makes about a tenth of the raw size; 100 leaves nothing out.
    const bool isLossless = quality >= 100;
    parameters.tcp_rates[0] = isLossless ? 0 : 1 + static_cast<float>(100 - quality) * 0.6f;
    parameters.irreversible = !isLossless;
    parameters.tcp_mct = picture.Samples() == 3;
    while (parameters.numresolution > 1 &&
           (1u << (parameters.numresolution - 1)) > std::min(picture.Width(), picture.Height()))
        --parameters.numresolution;

    CMemory memory;
    const Codec codec(opj_create_compress(OPJ_CODEC_J2K));
    const Stream stream = MakeStream(memory, false);
    if (!opj_setup_encoder(codec.get(), &parameters, image.get()) ||
        !opj_start_compress(codec.get(), image.get(), stream.get()) || !opj_encode(codec.get(), stream.get()) ||
        !opj_end_compress(codec.get(), stream.get()))
        throw CSampleError("JPEG 2000: the library refuses a picture of " + std::to_string(picture.Width()) + " x " +
                           std::to_string(picture.Height()) + " pixels");
    return std::move(memory.Bytes);
}

CPicture DecodeJ2k(std::span<const uint8_t> bytes)
{
    CMemory memory;
    memory.Bytes.assign(bytes.begin(), bytes.end());
    const Codec codec(opj_create_decompress(OPJ_CODEC_J2K));
    const Stream stream = MakeStream(memory, true);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    opj_image_t* made = nullptr;
    const bool isRead = opj_setup_decoder(codec.get(), &parameters) &&
                        opj_read_header(stream.get(), codec.get(), &made) &&
                        opj_decode(codec.get(), stream.get(), made);
    const Image image(made);
    if (!isRead)
        throw CSampleError("is a damaged JPEG 2000 picture");
    CPicture picture(image->comps[0].w, image->comps[0].h, static_cast<uint16_t>(image->numcomps),
                     image->comps[0].prec > 8 ? 16 : 8);
    for (uint32_t y = 0; y < picture.Height(); ++y)
        for (uint32_t x = 0; x < picture.Width(); ++x)
            for (uint16_t s = 0; s < picture.Samples(); ++s)
                picture.At(x, y, s) = static_cast<uint16_t>(image->comps[s].data[size_t{y} * picture.Width() + x]);
    return picture;
}

} // namespace SampleDocuments
