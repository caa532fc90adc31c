#pragma once
#include "CommonImageAccess/BrixPropsetProvider.h"
#include "CommonImageAccess/ChannelSelection.h"
#include "CommonImageAccess/DeepZoomTile.h"
#include "CommonImageAccess/ObjThatHasCoords.h"

namespace CIA
{

class CFrameCoords;

/// A position in the tile matrix of a level, common to all frames: what the host calls an area. Owned by its level.
class CMultiDimTile : public ObjThatHasCoords, public CBrixPropsetProvider
{
public:
    /// The position `index` tiles behind the corner of the level's matrix, counted row by row.
    CMultiDimTile(CDeepZoomPyramidLevel& level, uint32_t index);

    CDeepZoomPyramidLevel& Level() const { return _Level; }
    int32_t getRow() const { return TileRowIdx; }
    int32_t getCol() const { return TileColIdx; }

    /// The tile of the frame that the coordinates name; a dimension of one point needs none. Null with EINVAL for
    /// coordinates that name no frame, null with errno 0 when the frame has no tile here.
    CDeepZoomTile* DeepZoomTile(const CFrameCoords& frameDifferentiatorCoords);
    /// The next tile in the order of the file behind the one fetched last here, of this level, fitting the coordinates
    /// and the channels. Null with EBADFD when none was fetched or the walk has ended before, with EINVAL for
    /// coordinates that the image has not, with errno 0 at the end of the walk.
    CDeepZoomTile* NextDeepZoomTile(const CFrameCoords& framePartialDifferentiatorCoords,
                                    const CChannelSelection& selectedChannelIDs);

protected:
    bool Coords_init(CCoords& varToInit) override;
    bool PixelOrRealWorldWidth_init(double& varToInit) override;
    bool PixelOrRealWorldHeight_init(double& varToInit) override;
    bool ZoomoutFactor_init(double& varToInit) override;
    bool BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset) override;
    CBrixPropsets& KeptPropsets() override { return PropsetsInState(); }

private:
    struct CPropsetHandler;
    bool BrixPropset_AnalysisROIInfo(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_ImageSize(const AC_PARAMS& params, CBrixPropset& propset);
    bool IsRealWorldSizeOrPixelSizeAvailable() const override { return false; }
    static bool AreCoordsOfTheImage(const CFrameCoords& coords, CDimensionTypes missing);
    CDeepZoomTile* TileOf(CFrame& frame);

    CDeepZoomPyramidLevel& _Level;
    int32_t TileRowIdx = 0;
    int32_t TileColIdx = 0;
    CDeepZoomTile* LastDeepZoomTileFetched = nullptr;
};
static_assert(sizeof(CMultiDimTile) == 48); // a slide has a million of these

} // namespace CIA
