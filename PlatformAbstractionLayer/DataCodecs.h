#pragma once
#include <string>

// What a codec library exports. A result below 1 is a failure.

/// The largest encoded size of so many bytes.
using PAL_FN_GET_ENCODE_BOUND = long (*)(long size);
/// The size written, which is stored in `written` as well.
using PAL_FN_ENCODE = int (*)(const char* source, int sourceSize, char* target, int targetSize, int* written);
using PAL_FN_DECODE = PAL_FN_ENCODE;

/// One codec.
struct tagAC_DATACODEC_ACCESSOR_DEF
{
    void* hModule = nullptr; ///< of the library, owned by the registry; null for the built-in codec
    PAL_FN_GET_ENCODE_BOUND pfnGetEncodeBound = nullptr;
    PAL_FN_ENCODE pfnEncode = nullptr;
    PAL_FN_DECODE pfnDecode = nullptr;
};

/// The codec over the LZ4 library.
tagAC_DATACODEC_ACCESSOR_DEF DefaultLZ4DataCodec();

/// The name of the codec in a library, by the library's file name in whatever case: what stands before PLUGIN_FORHDF5,
/// else before DATACODEC, else before DLL, and in any case before the extension; in upper case. Empty for the name of
/// no codec.
std::wstring GetDataCodecName(const std::wstring& strFile);
