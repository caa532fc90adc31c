// Reading a tile that lies in a TIFF store.

#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/TiffDeepZoomTile.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/Store/ZelDeepZoomTile.h"

namespace Zel
{

namespace
{

constexpr uint64_t NumOfBitsOfAByte = 8;

} // namespace

TIFF* CZelDeepZoomTile::TiffFilePtr()
{
    return KorFile().TiffFilePtrSetTo(KorFile().TiffIfdOf(_TileNumber));
}

uint32_t CZelDeepZoomTile::NumberOfTiffTile()
{
    return static_cast<uint32_t>(RowIdx()) * ParentLevel().NumOfCols() + static_cast<uint32_t>(ColIdx());
}

uint32_t CZelDeepZoomTile::CheckedStripNumber(TIFF* tif)
{
    const uint32_t numOfStrips = TIFFNumberOfStrips(tif);
    ZEL_ASSERT(numOfStrips > 0 && ColIdx() == 0);
    ZEL_ASSERT(RowIdx() >= 0 && static_cast<uint32_t>(RowIdx()) < numOfStrips);
    return static_cast<uint32_t>(RowIdx());
}

void CZelDeepZoomTile::ReadWholeTiffTile(CByteArray& buf)
{
    const uint32_t tileNumber = NumberOfTiffTile();
    TIFF* tif = TiffFilePtr();
    if (!TIFFIsTiled(tif))
    {
        ReadWholeTiffStrip(buf, tif);
        return;
    }
    const uint32_t sizeOffered = buf.Size;
    buf.Size = ToUint32WithCheck(static_cast<uint64_t>(TIFFTileSize(tif)));
    if (!buf.Arr || buf.Size > sizeOffered)
        return;
    ClearBehind(CIA::TIFFReadRawTile(tif, tileNumber, buf.Arr, static_cast<tmsize_t>(buf.Size)), buf.Arr, buf.Size);
}

/// `buf.Size` stays as the caller gave it when the strip was read.
void CZelDeepZoomTile::ReadWholeTiffStrip(CByteArray& buf, TIFF* tif)
{
    uint32_t strip = CheckedStripNumber(tif);
    if (strip != 0 && strip + 1 == TIFFNumberOfStrips(tif))
        --strip; // the last strip is served by the one before it: hosts rely on it
    const tmsize_t size = TIFFRawStripSize(tif, strip);
    ZEL_ASSERT(size > 0);
    if (!buf.Arr || static_cast<uint64_t>(size) > buf.Size)
    {
        buf.Size = ToUint32WithCheck(static_cast<uint64_t>(size));
        return;
    }
    ClearBehind(CIA::TIFFReadRawStrip(tif, strip, buf.Arr, size), buf.Arr, static_cast<size_t>(size));
}

void CZelDeepZoomTile::ReadPartOfTiffTile(CByteArray& buf, const CPixelRect& r)
{
    const uint32_t sizeOffered = buf.Size;
    const uint64_t b = NumOfBytesPerPixel();
    ZEL_ASSERT(b != 0);
    const uint64_t width = PixelWidth();
    const uint64_t height = PixelHeight();
    buf.Size = SizeOfRect(r, b);
    if (!buf.Arr || buf.Size > sizeOffered)
        return;
    const uint64_t sizeOfPixels = MultiplyWithCheck(MultiplyWithCheck(width, height), b);
    // Raw pixels, which the file holds all, eight of them in a byte at most.
    ZEL_ASSERT(sizeOfPixels / NumOfBitsOfAByte <= KorFile().FileSize());
    std::vector<unsigned char> scratch(sizeOfPixels);
    const auto sizeOfScratch = static_cast<tmsize_t>(scratch.size());
    const uint32_t tileNumber = NumberOfTiffTile();
    TIFF* tif = TiffFilePtr();
    tmsize_t numOfBytesRead = 0;
    if (TIFFIsTiled(tif))
    {
        const tmsize_t size = TIFFTileSize(tif);
        ZEL_ASSERT(size >= 0 && size <= sizeOfScratch);
        numOfBytesRead = CIA::TIFFReadRawTile(tif, tileNumber, scratch.data(), size);
    }
    else
    {
        const uint32_t strip = CheckedStripNumber(tif);
        const tmsize_t size = TIFFRawStripSize(tif, strip);
        ZEL_ASSERT(size > 0 && size <= sizeOfScratch);
        numOfBytesRead = CIA::TIFFReadRawStrip(tif, strip, scratch.data(), size);
    }
    ZEL_ASSERT(numOfBytesRead <= sizeOfScratch);
    CopyRectOfPixels(scratch.data(), width, b, r, buf.Arr);
}

} // namespace Zel
