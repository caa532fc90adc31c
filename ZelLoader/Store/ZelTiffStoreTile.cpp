#include "ZelLoader/Store/ZelTiffStoreTile.h"

#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/TiffDeepZoomTile.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Store/KorFile.h"

namespace Zel
{

namespace
{

constexpr uint64_t NumOfBitsOfAByte = 8;

} // namespace

CZelTiffStoreTile::CZelTiffStoreTile(const CTiffStoreLevel& levelOfStore, uint32_t plane, const CTileCorner& position,
                                     CZelFrame& frame, CDeepZoomPyramidLevel& level, bool repeatsAPosition)
    : CDeepZoomTile(frame, level, position.Col, position.Row, repeatsAPosition), _LevelOfStore(levelOfStore),
      _Plane(plane)
{
}

CKorFile& CZelTiffStoreTile::KorFile() const
{
    return static_cast<CZelFrame&>(ParentFrame()).ParentZelImage().OpenedKorFile();
}

CDeepZoomTile* CZelTiffStoreTile::NextTileOnDisk()
{
    const uint32_t next = _Plane + 1;
    if (next == _LevelOfStore.Planes.size())
        return nullptr;
    CFrame& frame = FrameOfRecord(_LevelOfStore.Planes[next], ParentFrame().ParentMultiDimImg());
    CDeepZoomTiles& tiles = frame.DeepZoomTiles();
    ZEL_ASSERT(tiles.Size() > 0); // else they could not be listed
    return &static_cast<CTiffStoreFrameTiles&>(tiles).TileOfPlane(_LevelOfStore, next, ColIdx(), RowIdx());
}

bool CZelTiffStoreTile::PixelBuf_rValidated(CByteArray& buf, const CPixelRect& r)
{
    TiffFilePtr(); // a tile whose directory is not there has no size either
    if (PartialTileNeedsToBeRead(r))
        ReadPart(buf, r);
    else
        ReadWholeTile(buf);
    return true;
}

TIFF* CZelTiffStoreTile::TiffFilePtr()
{
    return KorFile().TiffFilePtrSetTo(TiffIfd());
}

uint32_t CZelTiffStoreTile::NumberOfTile()
{
    return static_cast<uint32_t>(RowIdx()) * ParentLevel().NumOfCols() + static_cast<uint32_t>(ColIdx());
}

uint32_t CZelTiffStoreTile::CheckedStripNumber(TIFF* tif)
{
    const uint32_t numOfStrips = TIFFNumberOfStrips(tif);
    ZEL_ASSERT(numOfStrips > 0 && ColIdx() == 0);
    ZEL_ASSERT(RowIdx() >= 0 && static_cast<uint32_t>(RowIdx()) < numOfStrips);
    return static_cast<uint32_t>(RowIdx());
}

void CZelTiffStoreTile::ReadWholeTile(CByteArray& buf)
{
    const uint32_t tileNumber = NumberOfTile();
    TIFF* tif = TiffFilePtr();
    if (!TIFFIsTiled(tif))
    {
        ReadWholeStrip(buf, tif);
        return;
    }
    const uint32_t sizeOffered = buf.Size;
    buf.Size = ToUint32WithCheck(static_cast<uint64_t>(TIFFTileSize(tif)));
    if (!buf.Arr || buf.Size > sizeOffered)
        return;
    ClearBehind(CIA::TIFFReadRawTile(tif, tileNumber, buf.Arr, static_cast<tmsize_t>(buf.Size)), buf.Arr, buf.Size);
}

/// `buf.Size` stays as the caller gave it when the strip was read.
void CZelTiffStoreTile::ReadWholeStrip(CByteArray& buf, TIFF* tif)
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

void CZelTiffStoreTile::ReadPart(CByteArray& buf, const CPixelRect& r)
{
    const uint32_t sizeOffered = buf.Size;
    TiffFilePtr(); // asking for the tile's size has left it: what its pixels are is told by its own directory
    const uint64_t b = NumOfBytesPerPixel();
    ZEL_ASSERT(b != 0);
    buf.Size = SizeOfRect(r, b);
    if (!buf.Arr || buf.Size > sizeOffered)
        return;
    const uint64_t width = PixelWidth();
    const uint64_t height = PixelHeight();
    const uint64_t sizeOfPixels = MultiplyWithCheck(MultiplyWithCheck(width, height), b);
    // Raw pixels, which the file holds all, eight of them in a byte at most.
    ZEL_ASSERT(sizeOfPixels / NumOfBitsOfAByte <= KorFile().FileSize());
    std::vector<unsigned char> scratch(sizeOfPixels);
    const auto sizeOfScratch = static_cast<tmsize_t>(scratch.size());
    const uint32_t tileNumber = NumberOfTile();
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
