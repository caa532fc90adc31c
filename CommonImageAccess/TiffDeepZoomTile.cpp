#include "CommonImageAccess/TiffDeepZoomTile.h"

#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/Frame.h"
#include "CommonImageAccess/JpegStrip.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/PixelFormat.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"

#include <algorithm>
#include <cstring>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr uint32_t SizeOfClosingMarker = 2;
constexpr uint32_t MinSizeOfJpegTables = 5;

CDeepZoomPyramidLevel& OnlyLevelOf(CFrame& frame)
{
    const auto& levels = frame.ParentMultiDimImg().DeepZoomPyramidLevels();
    ZEL_ASSERT(levels.size() == 1 && levels.front());
    return *levels.front();
}

/// True when the size that `buf` holds now is all that the caller wants, or can take.
bool IsSizeAllThatIsWanted(const CByteArray& buf, uint32_t sizeOffered)
{
    return !buf.Arr || buf.Size > sizeOffered;
}

} // namespace

CTiffDeepZoomTile::CTiffDeepZoomTile(CFrame& frame, int32_t col, int32_t row)
    : CDeepZoomTile(frame, OnlyLevelOf(frame), col, row)
{
}

CTiffDeepZoomTile::CPlace CTiffDeepZoomTile::Place()
{
    // For a tiled directory column and row are offsets in pixels, and go into the number as they are.
    return {Channel().CompressionType() == PixelFrameCompressionType::Jpeg7,
            static_cast<uint32_t>(RowIdx()) * ParentLevel().NumOfCols() + static_cast<uint32_t>(ColIdx()),
            static_cast<uint32_t>(RowIdx())};
}

bool CTiffDeepZoomTile::PixelBuf_rValidated(CByteArray& buf, const CPixelRect& r)
{
    ZEL_ASSERT(CIA::TIFFGetField<uint16_t>(TiffFilePtr(), TIFFTAG_PLANARCONFIG) == PLANARCONFIG_CONTIG);
    if (PartialTileNeedsToBeRead(r))
        ReadPart(buf, r);
    else
        ReadWholeTile(buf);
    return true;
}

void CTiffDeepZoomTile::ReadWholeTile(CByteArray& buf)
{
    const CPlace place = Place();
    const uint32_t sizeOffered = buf.Size;
    TIFF* tif = TiffFilePtr();
    if (!TIFFIsTiled(tif))
    {
        ReadWholeStrip(buf, place, tif);
        return;
    }
    if (place.IsJpeg7)
    {
        ZEL_LOG("TODO!!!");
        oldAbortCommonUtil();
    }
    buf.Size = ToUint32WithCheck(static_cast<uint64_t>(TIFFTileSize(tif)));
    if (IsSizeAllThatIsWanted(buf, sizeOffered))
        return;
    ClearBehind(CIA::TIFFReadRawTile(tif, place.TileNumber, buf.Arr, static_cast<tmsize_t>(buf.Size)), buf.Arr,
                buf.Size);
}

uint32_t CTiffDeepZoomTile::CheckedRawStripSize(const CPlace& place, TIFF* tif)
{
    ZEL_ASSERT(ColIdx() == 0 && place.StripNumber < TIFFNumberOfStrips(tif));
    const tmsize_t size = TIFFRawStripSize(tif, place.StripNumber);
    ZEL_ASSERT(size > 0);
    return ToUint32WithCheck(static_cast<uint64_t>(size));
}

void CTiffDeepZoomTile::ReadWholeStrip(CByteArray& buf, const CPlace& place, TIFF* tif)
{
    const uint32_t sizeOffered = buf.Size;
    ZEL_ASSERT(TIFFNumberOfStrips(tif) > 0);
    if (place.IsJpeg7)
    {
        const std::vector<unsigned char> stream = JpegStream(place, tif);
        buf.Size = ToUint32WithCheck(stream.size());
        if (!IsSizeAllThatIsWanted(buf, sizeOffered))
            std::memcpy(buf.Arr, stream.data(), stream.size());
        return;
    }
    buf.Size = CheckedRawStripSize(place, tif);
    if (IsSizeAllThatIsWanted(buf, sizeOffered))
        return;
    const auto size = static_cast<tmsize_t>(buf.Size);
    ZEL_ASSERT(CIA::TIFFReadRawStrip(tif, place.StripNumber, buf.Arr, size) == size);
}

/// A JPEG stream that stands for itself: the directory's tables, the strip without its own, the closing marker.
std::vector<unsigned char> CTiffDeepZoomTile::JpegStream(const CPlace& place, TIFF* tif)
{
    ZEL_ASSERT(TIFFNumberOfStrips(tif) == 1);
    uint32_t sizeOfTables = 0;
    const unsigned char* tables = nullptr;
    ZEL_ASSERT(CIA::TIFFGetField_mayFail(tif, TIFFTAG_JPEGTABLES, &sizeOfTables, &tables));
    ZEL_ASSERT(sizeOfTables >= MinSizeOfJpegTables && tables);
    std::vector<unsigned char> stream(tables, tables + sizeOfTables - SizeOfClosingMarker);
    const uint32_t sizeOfStrip = CheckedRawStripSize(place, tif);
    ZEL_ASSERT(sizeOfStrip <= SizeOfFile()); // before it is allocated
    std::vector<unsigned char> strip(sizeOfStrip);
    const auto size = static_cast<tmsize_t>(strip.size());
    ZEL_ASSERT(CIA::TIFFReadRawStrip(tif, place.StripNumber, strip.data(), size) == size);
    Apply_Huffman_On_JPEG(strip, stream, 0, CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_IMAGELENGTH));
    stream.insert(stream.end(), {0xFF, 0xD9});
    return stream;
}

void CTiffDeepZoomTile::ReadPart(CByteArray& buf, const CPixelRect& r)
{
    const uint32_t sizeOffered = buf.Size;
    const uint64_t b = NumOfBytesPerPixel();
    const uint64_t width = PixelWidth();
    buf.Size = SizeOfRect(r, b);
    if (IsSizeAllThatIsWanted(buf, sizeOffered))
        return;
    const uint64_t lastRow = uint64_t{r.Y()} + r.Height() - 1;
    const uint64_t numOfPixels = AddWithCheck(MultiplyWithCheck(lastRow, width), r.X() + r.Width());
    const uint64_t need = MultiplyWithCheck(numOfPixels, b);
    CopyRectOfPixels(ReadUpTo(need).data(), width, b, r, buf.Arr);
}

/// The first `need` bytes of the tile or strip.
std::vector<unsigned char> CTiffDeepZoomTile::ReadUpTo(uint64_t need)
{
    ZEL_ASSERT(need <= SizeOfFile());
    std::vector<unsigned char> bytes(need);
    const auto size = static_cast<tmsize_t>(need);
    const CPlace place = Place();
    TIFF* tif = TiffFilePtr();
    tmsize_t numOfBytesRead = 0;
    if (TIFFIsTiled(tif))
    {
        ZEL_ASSERT(TIFFTileSize(tif) >= size);
        numOfBytesRead = CIA::TIFFReadRawTile(tif, place.TileNumber, bytes.data(), size);
    }
    else
    {
        ZEL_ASSERT(CheckedRawStripSize(place, tif) >= need);
        numOfBytesRead = CIA::TIFFReadRawStrip(tif, place.StripNumber, bytes.data(), size);
    }
    ZEL_ASSERT(numOfBytesRead == size);
    return bytes;
}

uint32_t NumOfTilesAcross(uint32_t pixels, uint32_t pixelsOfTile)
{
    ZEL_ASSERT(pixelsOfTile != 0);
    return pixels / pixelsOfTile + (pixels % pixelsOfTile != 0 ? 1 : 0);
}

uint32_t SizeOfRect(const CPixelRect& r, uint64_t b)
{
    return ToUint32WithCheck(MultiplyWithCheck(MultiplyWithCheck(r.Width(), b), r.Height()));
}

void ClearBehind(tmsize_t numOfBytesRead, unsigned char* buffer, size_t size)
{
    const size_t filled = numOfBytesRead > 0 ? std::min(static_cast<size_t>(numOfBytesRead), size) : 0;
    std::memset(buffer + filled, 0, size - filled);
}

void CopyRectOfPixels(const unsigned char* pixels, uint64_t width, uint64_t b, const CPixelRect& r,
                      unsigned char* target)
{
    const uint64_t sizeOfRow = r.Width() * b;
    const unsigned char* row = pixels + (r.X() + width * r.Y()) * b;
    for (uint32_t i = 0; i < r.Height(); ++i, row += width * b, target += sizeOfRow)
        std::memcpy(target, row, sizeOfRow);
}

} // namespace CIA
