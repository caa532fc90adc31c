#include "CommonImageAccess/Bmp.h"

#include "CommonUtil/ErrnoKeeper.h"

#include <cerrno>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace CIA
{

namespace
{

constexpr uint32_t SizeOfInfoHeader = 40;
constexpr unsigned char BitsPerPixel = 24;
constexpr size_t MemoryForADecoder = 1 << 18;

/// libtiff does not survive each allocation that fails while it sets up a decoder, so what that takes is asked for
/// before.
bool IsMemoryLeftForADecoder()
{
    void* memory = ::operator new(MemoryForADecoder, std::nothrow);
    const bool isLeft = memory != nullptr;
    ::operator delete(memory);
    return isLeft;
}

/// Rows are padded to a multiple of 4 bytes.
uint64_t SizeOfRow(uint64_t width)
{
    return ((width * 24 + 31) >> 5) << 2;
}

void Put32(unsigned char* target, uint32_t value)
{
    std::memcpy(target, &value, sizeof value);
}

/// All zero but what is put here; the number of planes stays 0 as well, which viewers put up with.
void WriteHeaders(unsigned char* target, uint32_t width, uint32_t height, uint32_t totalSize, uint32_t resx,
                  uint32_t resy)
{
    std::memset(target, 0, SizeOfBmpHeaders);
    target[0] = 'B';
    target[1] = 'M';
    Put32(target + 2, totalSize);
    Put32(target + 10, SizeOfBmpHeaders);
    Put32(target + 14, SizeOfInfoHeader);
    Put32(target + 18, width);
    Put32(target + 22, height);
    target[28] = BitsPerPixel;
    Put32(target + 34, width * height * 3);
    Put32(target + 38, resx);
    Put32(target + 42, resy);
}

void WriteRow(unsigned char* target, const uint32_t* pixels, uint32_t width)
{
    std::memset(target, 0, SizeOfRow(width));
    for (uint32_t i = 0; i < width; ++i, target += 3)
    {
        target[0] = static_cast<unsigned char>(pixels[i] >> 16);
        target[1] = static_cast<unsigned char>(pixels[i] >> 8);
        target[2] = static_cast<unsigned char>(pixels[i]);
    }
}

} // namespace

int Make24BitBMPBufferImgRGBA(uint16_t width, uint16_t height, const uint32_t* img, CByteArray& buf, uint32_t resx,
                              uint32_t resy)
{
    const uint64_t size = SizeOfRow(width) * height + SizeOfBmpHeaders;
    if (size > std::numeric_limits<uint32_t>::max())
    {
        errno = EINVAL;
        return EINVAL;
    }
    const auto totalSize = static_cast<uint32_t>(size);
    const uint32_t sizeOffered = buf.Size;
    if (!buf.Arr || sizeOffered < totalSize)
    {
        buf.Size = totalSize;
        if (!buf.Arr)
            return 0;
        errno = EINVAL;
        return EINVAL;
    }
    WriteHeaders(buf.Arr, width, height, totalSize, resx, resy);
    unsigned char* target = buf.Arr + SizeOfBmpHeaders;
    for (uint32_t row = height; row > 0; --row, target += SizeOfRow(width)) // the last row comes first
        WriteRow(target, img + uint64_t{row - 1} * width, width);
    buf.Size = totalSize;
    return 0;
}

} // namespace CIA

int Make24BitBMPBufferTiff(TIFF* tiff, CIA::CByteArray& buf)
{
    uint32_t width = 0;
    uint32_t height = 0;
    {
        const CommonUtil::CErrnoKeeper errnoKeeper;
        if (!TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width) || !TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height))
            return ENODATA;
    }
    const auto failed = [&buf](int reason)
    {
        buf.Size = 0;
        return reason;
    };
    const uint64_t size = CIA::SizeOfRow(width) * height + CIA::SizeOfBmpHeaders;
    if (size > std::numeric_limits<uint32_t>::max())
        return failed(EINVAL);
    if (!buf.Arr)
    {
        buf.Size = static_cast<uint32_t>(size);
        return 0;
    }
    if (buf.Size < size)
        return EINVAL;
    if (width > 0xFFFF || height > 0xFFFF)
        return failed(EINVAL);
    const std::unique_ptr<uint32_t[]> pixels(new (std::nothrow) uint32_t[uint64_t{width} * height]());
    if (!pixels || !CIA::IsMemoryLeftForADecoder())
        return failed(ENOMEM);
    errno = 0;
    if (!TIFFReadRGBAImageOriented(tiff, width, height, pixels.get(), ORIENTATION_TOPLEFT, 0))
        return failed(errno != 0 ? errno : EIO);
    errno = 0; // decoding leaves reasons that are none
    const int result = CIA::Make24BitBMPBufferImgRGBA(static_cast<uint16_t>(width), static_cast<uint16_t>(height),
                                                      pixels.get(), buf, 0, 0);
    return result == 0 ? 0 : failed(errno);
}
