#pragma once
#include "CommonImageAccess/DeepZoomTile.h"
#include "ZelLoader/Store/KorTiles.h"

namespace Zel
{

class CKorFile;
class CZelFrame;

/// A tile that lies in a binary store.
class CZelDeepZoomTile : public CDeepZoomTile
{
public:
    /// The tile of the store's record with that number and position, at that place in the table of its frame; all that
    /// it belongs to outlives it.
    CZelDeepZoomTile(const CKorTiles& korTiles, uint32_t tileNumber, const CDeepZoomTileIdx& idx, uint32_t place,
                     CZelFrame& frame, CDeepZoomPyramidLevel& level, bool repeatsAPosition);

    uint32_t TileNumber() const { return _TileNumber; }
    uint32_t Place() const { return _Place; }
    uint64_t BlockOffset() const { return _Block.Offset(); } ///< of its bytes in the file
    CDeepZoomTile* NextTileOnDisk() override;

protected:
    bool IsWithinTile(const CPixelRect& r) override;
    bool PixelBuf_rValidated(CByteArray& buf, const CPixelRect& r) override;

private:
    CDeepZoomTile* FindNextTileOnDisk();
    CKorFile& KorFile() const;
    bool ReadWholeTile(CByteArray& buf);
    bool ReadPartOfTile(CByteArray& buf, const CPixelRect& r);

    const uint32_t _TileNumber;
    const uint32_t _Place;
    /// As the record has it: with a million records, fetching the tile's own would cost a good part of its bytes.
    const CKorBlock _Block;
};
static_assert(sizeof(CZelDeepZoomTile) == 72); // a slide has a million of these

} // namespace Zel
