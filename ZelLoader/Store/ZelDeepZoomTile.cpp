#include "ZelLoader/Store/ZelDeepZoomTile.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Store/FrameNumbers.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/Store/KorFrameTiles.h"

namespace Zel
{

CZelDeepZoomTile::CZelDeepZoomTile(const CKorTiles& korTiles, uint32_t tileNumber, const CDeepZoomTileIdx& idx,
                                   uint32_t place, CZelFrame& frame, CDeepZoomPyramidLevel& level,
                                   bool repeatsAPosition)
    : CDeepZoomTile(frame, level, idx._TileColIdx, idx._TileRowIdx, repeatsAPosition), _TileNumber(tileNumber),
      _Place(place), _Block(korTiles.Block(tileNumber))
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
    const CKorTiles& korTiles = KorFile().KorTiles();
    const uint32_t next = _TileNumber + 1;
    if (next == korTiles.Size())
        return nullptr;
    const CDecompressedKorTileIdx idx = korTiles.Idx(next);
    CDeepZoomTiles& tiles = FrameOfRecord(idx.FrameIdx(), ParentFrame().ParentMultiDimImg()).DeepZoomTiles();
    auto* tile = static_cast<CZelDeepZoomTile*>(tiles.Find(idx.TileIdx()));
    ZEL_ASSERT(tile);
    return tile->TileNumber() == next ? tile : &static_cast<CKorFrameTiles&>(tiles).Repeat(next);
}

bool CZelDeepZoomTile::IsWithinTile(const CPixelRect& r)
{
    return r.IsAllZero() || CDeepZoomTile::IsWithinTile(r); // the whole of a tile needs no look at its size
}

bool CZelDeepZoomTile::PixelBuf_rValidated(CByteArray& buf, const CPixelRect& r)
{
    return PartialTileNeedsToBeRead(r) ? ReadPartOfTile(buf, r) : ReadWholeTile(buf);
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
