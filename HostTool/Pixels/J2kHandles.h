#pragma once
#include <memory>
#include <openjpeg.h>

namespace HostTool
{

// What OpenJPEG makes, with an owner each: its streams and codecs are pointers to anything, which no overload tells
// apart.

struct CStreamDeleter
{
    void operator()(opj_stream_t* stream) const { opj_stream_destroy(stream); }
};
struct CCodecDeleter
{
    void operator()(opj_codec_t* codec) const { opj_destroy_codec(codec); }
};
struct CImageDeleter
{
    void operator()(opj_image_t* image) const { opj_image_destroy(image); }
};

} // namespace HostTool
