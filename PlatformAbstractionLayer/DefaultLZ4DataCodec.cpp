#include "PlatformAbstractionLayer/DataCodecs.h"

#include <lz4.h>

// Sizes that make no sense are told apart before they reach the library, which computes with them.

namespace
{

constexpr int Failure = 0;

long GetEncodeBound(long size)
{
    return size < 0 || size > LZ4_MAX_INPUT_SIZE ? Failure : LZ4_compressBound(static_cast<int>(size));
}

int Encode(const char* source, int sourceSize, char* target, int targetSize, int* written)
{
    constexpr int Acceleration = 17;
    *written = sourceSize < 0 || targetSize < 0
                   ? Failure
                   : LZ4_compress_fast(source, target, sourceSize, targetSize, Acceleration);
    return *written;
}

int Decode(const char* source, int sourceSize, char* target, int targetSize, int* written)
{
    *written = sourceSize < 0 || targetSize < 0 ? Failure : LZ4_decompress_safe(source, target, sourceSize, targetSize);
    return *written;
}

} // namespace

tagAC_DATACODEC_ACCESSOR_DEF DefaultLZ4DataCodec()
{
    return {.hModule = nullptr, .pfnGetEncodeBound = GetEncodeBound, .pfnEncode = Encode, .pfnDecode = Decode};
}
