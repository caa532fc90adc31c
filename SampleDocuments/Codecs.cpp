#include "SampleDocuments/Codecs.h"

#include <algorithm>

namespace SampleDocuments
{

namespace
{

ByteString EncodeRaw(const CPicture& picture, bool isBgr)
{
    ByteString rows = PackedRows(picture);
    if (!isBgr || picture.Samples() != 3)
        return rows;
    const size_t sampleSize = picture.Bits() / 8;
    for (size_t at = 0; at < rows.size(); at += 3 * sampleSize)
        std::swap_ranges(&rows[at], &rows[at] + sampleSize, &rows[at + 2 * sampleSize]);
    return rows;
}

} // namespace

CEncoding EncodingOf(const CStoreAdditionalHeader& header)
{
    switch (header.CompressionFormat)
    {
    case StoreCompression::Raw:
    case StoreCompression::Jpeg:
    case StoreCompression::J2k:
    case StoreCompression::Png:
    case StoreCompression::Bmp:
        return {header.CompressionFormat, header.CompressionQuality, header.ComponentOrder == ComponentOrder::Bgr};
    default:
        throw CSampleError("tile store: there is no encoder for compression " +
                           std::to_string(header.CompressionFormat) + "; give the bytes of the tiles yourself");
    }
}

ByteString Encode(const CPicture& picture, const CEncoding& encoding)
{
    switch (encoding.Compression)
    {
    case StoreCompression::Jpeg:
        return EncodeJpeg(picture, encoding.Quality);
    case StoreCompression::J2k:
        return EncodeJ2k(picture, encoding.Quality);
    case StoreCompression::Png:
        return EncodePng(picture);
    case StoreCompression::Bmp:
        return EncodeBmp(picture);
    default:
        return EncodeRaw(picture, encoding.IsBgr);
    }
}

CPicture Decode(std::span<const uint8_t> bytes)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (text.starts_with("\x89PNG"))
        return DecodePng(bytes);
    if (text.starts_with("\xFF\xD8"))
        return DecodeJpeg(bytes);
    if (text.starts_with("\xFF\x4F\xFF\x51"))
        return DecodeJ2k(bytes);
    throw CSampleError("is no PNG, JPEG, JPEG 2000 or TIFF picture; take one of these");
}

ByteString EncodeBmp(const CPicture& picture)
{
    if (picture.Bits() != 8)
        throw CSampleError("BMP holds 8 bits per sample; take raw, J2K or PNG for more");
    constexpr uint32_t SizeOfHeaders = 14 + 40;
    const uint32_t palette = picture.Samples() == 1 ? 256 : 0;
    const uint32_t rowSize = (picture.Width() * picture.Samples() + 3) / 4 * 4;
    const uint32_t pixels = SizeOfHeaders + 4 * palette;
    ByteString bytes = BytesOf("BM");
    Append(bytes, pixels + rowSize * picture.Height());
    Append(bytes, uint32_t{0});
    Append(bytes, pixels);
    Append(bytes, uint32_t{40});
    Append(bytes, picture.Width());
    Append(bytes, picture.Height());
    Append(bytes, uint16_t{1});
    Append(bytes, static_cast<uint16_t>(8 * picture.Samples()));
    for (const uint32_t number : {0u, rowSize * picture.Height(), 2835u, 2835u, palette, 0u})
        Append(bytes, number);
    for (uint32_t grey = 0; grey < palette; ++grey)
        Append(bytes, grey * 0x010101u);
    for (uint32_t y = picture.Height(); y-- > 0;)
    {
        for (uint32_t x = 0; x < picture.Width(); ++x)
            for (uint16_t s = picture.Samples(); s-- > 0;)
                bytes.push_back(static_cast<uint8_t>(picture.At(x, y, s)));
        bytes.resize(pixels + size_t{rowSize} * (picture.Height() - y));
    }
    return bytes;
}

} // namespace SampleDocuments
