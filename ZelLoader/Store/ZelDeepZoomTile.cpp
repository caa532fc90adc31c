#include "ZelLoader/Store/ZelDeepZoomTile.h"

#include "CommonImageAccess/PixelFormat.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/Store/KorFrameTiles.h"

namespace Zel
{

namespace
{

/// The frame of a record. The XML of a TIFF store may place planes on dimensions that the image has not: where they
/// stand there makes no difference.
CFrame& FrameOf(const CFrameIdx& idx, CMultiDimImage& image)
{
    CFrame* frame = image.FindFrame(idx);
    if (!frame)
    {
        CFrameIdx idxOnDimensions = idx;
        for (const DimensionType::E type : FrameDifferentiators)
            if (!image.FindDimension(type))
                idxOnDimensions.SetSubIdx(type, 0);
        frame = image.FindFrame(idxOnDimensions);
    }
    ZEL_ASSERT(frame);
    return *frame;
}

} // namespace

CZelDeepZoomTile::CZelDeepZoomTile(const CKorTiles& korTiles, uint32_t tileNumber, const CDeepZoomTileIdx& idx,
                                   uint32_t place, CZelFrame& frame, CDeepZoomPyramidLevel& level)
    : CDeepZoomTile(frame, level, idx._TileColIdx, idx._TileRowIdx), _TileNumber(tileNumber), _Place(place),
      _Block(korTiles.Block(tileNumber))
{
}

CKorFile& CZelDeepZoomTile::KorFile() const
{
    return static_cast<CZelFrame&>(ParentFrame()).ParentZelImage().OpenedKorFile();
}

CDeepZoomTile* CZelDeepZoomTile::NextTileOnDisk()
{
    // Neighbours in the file are neighbours in the table of their frame as well, mostly; that one must be there, since
    // it has made this tile.
    CZelDeepZoomTile* neighbour = static_cast<CKorFrameTiles&>(ParentFrame().DeepZoomTiles()).FindBehind(*this);
    return neighbour ? neighbour : FindNextTileOnDisk();
}

CDeepZoomTile* CZelDeepZoomTile::FindNextTileOnDisk()
{
    CMultiDimImage& image = ParentFrame().ParentMultiDimImg();
    const CKorFile& korFile = KorFile();
    const CKorTiles& korTiles = korFile.KorTiles();
    for (uint32_t number = korFile.NextTileOnDisk(_TileNumber); number < korTiles.Size();
         number = korFile.NextTileOnDisk(number))
    {
        const CDecompressedKorTileIdx idx = korTiles.Idx(number);
        CFrame& frame = FrameOf(idx.FrameIdx(), image);
        auto* tile = static_cast<CZelDeepZoomTile*>(frame.DeepZoomTiles().Find(idx.TileIdx()));
        ZEL_ASSERT(tile);
        if (tile->TileNumber() == number) // else the record repeats the position of one before it
            return tile;
    }
    return nullptr;
}

bool CZelDeepZoomTile::IsWithinTile(const CPixelRect& r)
{
    // The whole of a tile needs no look at its size, save in a TIFF: where that has none, its bytes are not read
    // either.
    return (r.IsAllZero() && !KorFile().IsOmeType()) || CDeepZoomTile::IsWithinTile(r);
}

bool CZelDeepZoomTile::PixelBuf_rValidated(CByteArray& buf, const CPixelRect& r)
{
    const bool isPart = PartialTileNeedsToBeRead(r);
    if (!KorFile().IsOmeType())
        return isPart ? ReadPartOfTile(buf, r) : ReadWholeTile(buf);
    if (isPart)
        ReadPartOfTiffTile(buf, r);
    else
        ReadWholeTiffTile(buf);
    return true;
}

bool CZelDeepZoomTile::ReadWholeTile(CByteArray& buf)
{
    errno = 0; // a read that fails has no reason, whatever failed before it
    const uint32_t sizeOffered = buf.Size;
    buf.Size = _Block.Size();
    if (!buf.Arr || buf.Size > sizeOffered)
        return true;
    return KorFile().ReadData(buf.Arr, buf.Size, _Block.Offset());
}

uint32_t CZelDeepZoomTile::NumOfBytesPerPixel()
{
    CPixelFormat* pixelFormat = Channel().PixelFormat();
    ZEL_ASSERT(pixelFormat);
    const uint32_t numOfBytes = pixelFormat->NumOfBytes();
    ZEL_ASSERT(numOfBytes != 0xFFFFFFFF);
    return numOfBytes;
}

bool CZelDeepZoomTile::ReadPartOfTile(CByteArray& buf, const CPixelRect& r)
{
    const uint32_t sizeOffered = buf.Size;
    const uint64_t b = NumOfBytesPerPixel();
    const uint64_t sizeOfTileRow = PixelWidth() * b;
    const uint32_t sizeOfRow = ToUint32WithCheck(r.Width() * b);
    buf.Size = ToUint32WithCheck(uint64_t{sizeOfRow} * r.Height());
    if (!buf.Arr || buf.Size > sizeOffered)
        return true;
    uint64_t end = 0; // of the rows in the file: no sum on the way there may wrap
    const uint64_t firstByte = _Block.Offset() + r.X() * b;
    ZEL_ASSERT(firstByte >= _Block.Offset());
    ZEL_ASSERT(!__builtin_mul_overflow(sizeOfTileRow, uint64_t{r.Y()} + r.Height(), &end) &&
               !__builtin_add_overflow(end, firstByte, &end));
    uint64_t offset = firstByte + sizeOfTileRow * r.Y();
    Byte* row = buf.Arr;
    for (uint32_t i = 0; i < r.Height(); ++i, offset += sizeOfTileRow, row += sizeOfRow)
        if (!KorFile().ReadData(row, sizeOfRow, offset))
            return false;
    return true;
}

} // namespace Zel
