#pragma once
#include "CommonImageAccess/DeepZoomTile.h"
#include "ZelLoader/Store/TiffStoreTiles.h"

#include <tiffio.h>

namespace Zel
{

class CKorFile;

/// A tile or strip that lies in a TIFF store.
class CZelTiffStoreTile : public CDeepZoomTile
{
public:
    /// The tile of a plane at a position of the level; all that it belongs to outlives it.
    CZelTiffStoreTile(const CTiffStoreLevel& levelOfStore, uint32_t plane, const CTileCorner& position,
                      CZelFrame& frame, CDeepZoomPyramidLevel& level, bool repeatsAPosition);

    /// The number of the directory that should hold it.
    uint16_t TiffIfd() const { return _LevelOfStore.TiffIfd(_Plane); }
    /// The tile of the next plane at this position, whatever frame that lies on.
    CDeepZoomTile* NextTileOnDisk() override;

protected:
    bool PixelBuf_rValidated(CByteArray& buf, const CPixelRect& r) override;

private:
    CKorFile& KorFile() const;
    void ReadWholeTile(CByteArray& buf);
    void ReadWholeStrip(CByteArray& buf, TIFF* tif);
    void ReadPart(CByteArray& buf, const CPixelRect& r);
    TIFF* TiffFilePtr(); ///< the store, standing on the directory of this tile
    uint32_t NumberOfTile();
    uint32_t CheckedStripNumber(TIFF* tif);

    const CTiffStoreLevel& _LevelOfStore;
    const uint32_t _Plane;
};

} // namespace Zel
