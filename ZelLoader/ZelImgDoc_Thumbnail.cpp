// The thumbnail of a document.

#include "CommonImageAccess/Bmp.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonImageAccess/TiffCompression.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"
#include "ZelLoader/ZelImgDoc.h"

#include <cerrno>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>

namespace Zel
{

namespace
{

constexpr uint32_t SizeOfFileHeader = 14;
constexpr uint32_t SizeOfInfoHeader = 40; ///< the only form in which thumbnails are stored
constexpr uint32_t MaxSizeOfPicture = 65535;
// A directory can claim any size. This many pixels are always tried, more only where the file can hold them: how many
// can a byte stand for at most?
constexpr uint64_t MaxNumOfPixelsInAnyCase = 1 << 24;
constexpr uint64_t MaxNumOfPixels = 1 << 26; ///< 256 MB to decode them into, far more than any thumbnail needs
constexpr uint64_t MaxNumOfPixelsOfARawByte = 8;
constexpr uint64_t MaxNumOfPixelsOfAJpegByte = 512;

// Where a BITMAPINFOHEADER keeps what the size of the palette depends on.
constexpr uint32_t OffsetOfBitCount = 14;
constexpr uint32_t OffsetOfColorsUsed = 32;
constexpr uint64_t SizeOfPaletteEntry = 4;

template <typename T>
T NumberAt(const CArrayStartAndSize<Byte>& bytes, uint32_t offset)
{
    T number;
    std::memcpy(&number, bytes.Arr + offset, sizeof number);
    return number;
}

uint32_t DIBNumColors(const CArrayStartAndSize<Byte>& dib)
{
    if (const auto colorsUsed = NumberAt<uint32_t>(dib, OffsetOfColorsUsed); colorsUsed != 0)
        return colorsUsed;
    switch (NumberAt<uint16_t>(dib, OffsetOfBitCount))
    {
    case 1:
        return 2;
    case 4:
        return 16;
    case 8:
        return 256;
    default:
        return 0;
    }
}

uint64_t PaletteSize(const CArrayStartAndSize<Byte>& dib)
{
    return DIBNumColors(dib) * SizeOfPaletteEntry;
}

/// A stored thumbnail is a BMP file without its file header.
void WriteStoredThumbnail(const CArrayStartAndSize<Byte>& dib, CByteArray& buffer)
{
    const uint32_t offsetOfPixels = ToUint32WithCheck(SizeOfInfoHeader + SizeOfFileHeader + PaletteSize(dib));
    std::memset(buffer.Arr, 0, SizeOfFileHeader);
    buffer.Arr[0] = 'B';
    buffer.Arr[1] = 'M';
    std::memcpy(buffer.Arr + 2, &buffer.Size, sizeof buffer.Size);
    std::memcpy(buffer.Arr + 10, &offsetOfPixels, sizeof offsetOfPixels);
    std::memcpy(buffer.Arr + SizeOfFileHeader, dib.Arr, dib.Size);
}

bool FailWithEnopkg(CByteArray& buffer)
{
    buffer = {};
    errno = ENOPKG;
    return false;
}

/// Whether a picture of this size, which may only be claimed, is decoded.
bool IsWorthTrying(uint32_t width, uint32_t height, PixelFrameCompressionType::E compression, uint64_t fileSize)
{
    const uint64_t pixelsOfAByte =
        compression == PixelFrameCompressionType::None ? MaxNumOfPixelsOfARawByte : MaxNumOfPixelsOfAJpegByte;
    const uint64_t numOfPixels = uint64_t{width} * height;
    return width <= MaxSizeOfPicture && height <= MaxSizeOfPicture && numOfPixels <= MaxNumOfPixels &&
           (numOfPixels <= MaxNumOfPixelsInAnyCase || numOfPixels <= fileSize * pixelsOfAByte);
}

/// Gives libtiff a buffer of the very size of a tile. Its own is rounded up when the file is not mapped into memory,
/// and then it takes an uncompressed tile for a damaged one.
class CBufferOfRawTile
{
public:
    /// Makes none when tiles are damaged indeed, or larger than `maxSize`: such tiles are nowhere in the file.
    CBufferOfRawTile(TIFF* tif, uint64_t maxSize) : _tif(tif)
    {
        const tmsize_t size = TIFFIsTiled(tif) ? TIFFTileSize(tif) : 0;
        if (size <= 0 || static_cast<uint64_t>(size) > maxSize || !IsSizeOfAllTiles(static_cast<uint64_t>(size)))
            return;
        _bytes = std::make_unique_for_overwrite<Byte[]>(static_cast<size_t>(size));
        TIFFReadBufferSetup(tif, _bytes.get(), size);
    }
    ~CBufferOfRawTile()
    {
        if (_bytes)
            TIFFReadBufferSetup(_tif, nullptr, 1); // one of its own again, which it makes larger as it needs it
    }
    CBufferOfRawTile(const CBufferOfRawTile&) = delete;
    CBufferOfRawTile& operator=(const CBufferOfRawTile&) = delete;

private:
    bool IsSizeOfAllTiles(uint64_t size) const
    {
        for (uint32_t tile = 0; tile < TIFFNumberOfTiles(_tif); ++tile)
            if (TIFFGetStrileByteCount(_tif, tile) != size)
                return false;
        return true;
    }

    TIFF* _tif;
    std::unique_ptr<Byte[]> _bytes;
};

} // namespace

const CArrayStartAndSize<Byte>* CZelImgDoc::StoredThumbnail()
{
    CZelMetaDataForOldDocProperties* oldProperties = MetaData().OldDocProperties();
    CZelMetaDataForDocThumb* oldThumb = oldProperties ? oldProperties->DocThumb() : nullptr;
    if (oldThumb && oldThumb->DocThumbArray())
        return oldThumb->DocThumbArray();
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    ZEL_ASSERT(propSet);
    CZelMetaDataForNewDocThumb* newThumb = propSet->NewDocThumb();
    return newThumb ? newThumb->DocThumbArray() : nullptr;
}

bool CZelImgDoc::Thumbnail(CByteArray& buffer)
{
    const CLock lock(ThreadSafetyMutex());
    const CArrayStartAndSize<Byte>* stored = StoredThumbnail();
    if (!stored)
        return ThumbnailFromFirstDirectory(buffer);
    const uint32_t sizeOfBmp = ToUint32WithCheck(uint64_t{stored->Size} + SizeOfFileHeader);
    if (buffer.Arr && buffer.Size < sizeOfBmp)
    {
        errno = EINVAL;
        return false;
    }
    buffer.Size = sizeOfBmp;
    if (!buffer.Arr)
        return true;
    ZEL_ASSERT(stored->Size >= SizeOfInfoHeader && NumberAt<uint32_t>(*stored, 0) == SizeOfInfoHeader);
    WriteStoredThumbnail(*stored, buffer);
    return true;
}

bool CZelImgDoc::ThumbnailFromFirstDirectory(CByteArray& buffer)
{
    for (const auto& [id, image] : MultiDimImages())
        ZEL_ASSERT(image->DbgDoesNotUseIFD0());
    if (!_AsTiff.TrySetDirectory(0))
        return FailWithEnopkg(buffer);
    TIFF* tif = AsTiffFilePtr();
    const PixelFrameCompressionType::E compression = GetPixelFrameCompressionTypeOfCurrentTiffIfd(tif);
    uint32_t width = 0;
    uint32_t height = 0;
    if (!TIFFGetField_mayFail(tif, TIFFTAG_IMAGEWIDTH, &width) ||
        !TIFFGetField_mayFail(tif, TIFFTAG_IMAGELENGTH, &height))
        return FailWithEnopkg(buffer);
    const uint64_t byteline = (uint64_t{width} + 1) * 3 / 4 * 4;
    const uint64_t sizeOfBmp = SizeOfBmpHeaders + height * byteline;
    if (byteline > std::numeric_limits<uint32_t>::max() || sizeOfBmp > std::numeric_limits<uint32_t>::max())
        return FailWithEnopkg(buffer);
    if (buffer.Arr && buffer.Size < sizeOfBmp)
    {
        errno = EINVAL;
        return false;
    }
    buffer.Size = static_cast<uint32_t>(sizeOfBmp);
    if (!buffer.Arr)
        return true;
    if (compression != PixelFrameCompressionType::None && compression != PixelFrameCompressionType::Jpeg7)
    {
        ZEL_LOG("compression format for IFD0 is %s. Decompression is not yet supported by ZEL plugin!",
                A(CompressionFormatToBrixString(compression)).c_str());
        return FailWithEnopkg(buffer);
    }
    if (!IsWorthTrying(width, height, compression, FileSize()))
        return FailWithEnopkg(buffer);
    std::optional<CBufferOfRawTile> bufferOfRawTile;
    if (compression == PixelFrameCompressionType::None)
        bufferOfRawTile.emplace(tif, FileSize());
    return Make24BitBMPBufferTiff(tif, buffer) == 0 || FailWithEnopkg(buffer);
}

} // namespace Zel
