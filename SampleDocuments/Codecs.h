#pragma once

#include "SampleDocuments/Picture.h"
#include "SampleDocuments/TileStore.h"

namespace SampleDocuments
{

/// How the pixels of a tile become bytes.
struct CEncoding
{
    uint32_t Compression = StoreCompression::Raw;
    uint32_t Quality = 85; ///< of JPEG, 1 to 100; JPEG 2000 is lossless at 100
    bool IsBgr = false;    ///< of raw pixels: blue first
};

/// The encoding that a store with this header holds. Throws CSampleError if there is no encoder for it.
CEncoding EncodingOf(const CStoreAdditionalHeader& header);

/// The bytes of a picture: raw rows, or a whole JPEG, JPEG 2000, PNG or BMP file. Throws CSampleError if the encoding
/// can't hold the picture's bits (JPEG and BMP take 8) or its library refuses.
ByteString Encode(const CPicture& picture, const CEncoding& encoding);

ByteString EncodeJpeg(const CPicture& picture, uint32_t quality);
ByteString EncodeJ2k(const CPicture& picture, uint32_t quality);
ByteString EncodePng(const CPicture& picture);
ByteString EncodeBmp(const CPicture& picture);

/// The pixels of a JPEG, JPEG 2000 or PNG file in memory. Throws CSampleError if it is none of them or damaged.
CPicture Decode(std::span<const uint8_t> bytes);

CPicture DecodeJpeg(std::span<const uint8_t> bytes);
CPicture DecodeJ2k(std::span<const uint8_t> bytes);
CPicture DecodePng(std::span<const uint8_t> bytes);

} // namespace SampleDocuments
