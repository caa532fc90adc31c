#pragma once
#include "CommonImageAccess/BrixPropsetProvider.h"
#include "CommonImageAccess/MultiDimTile.h"
#include "CommonImageAccess/ObjThatHasCoords.h"
#include "CommonUtil/Lazy.h"
#include "CommonUtil/PagedObjects.h"

#include <optional>

namespace CIA
{

class CImgDoc;

/// One resolution of an image: 0 is the finest, each next one about half the size. Its picture is cut into a matrix of
/// tiles of one size, whose size is the level's size, the parts of edge tiles beyond the picture included.
class CDeepZoomPyramidLevel : public ObjThatHasCoords, public CBrixPropsetProvider
{
public:
    static constexpr uint32_t MaxLevelID = 99;

    /// Asserts that the level number is at most MaxLevelID.
    CDeepZoomPyramidLevel(uint32_t levelId, CMultiDimImage& image);

    CMultiDimImage& ParentMultiDimImg() const { return _ParentMultiDimImg; }
    CImgDoc& ParentImgDoc() const { return _ParentImgDoc; }
    uint16_t ID() const { return _LevelID; }

    /// Tile columns and rows; 0xFFFFFFFF: could not be worked out.
    uint32_t NumOfCols()
    {
        return _NumOfCols.Get([this](uint32_t& varToInit) { return NumOfCols_init(varToInit); });
    }
    uint32_t NumOfRows()
    {
        return _NumOfRows.Get([this](uint32_t& varToInit) { return NumOfRows_init(varToInit); });
    }
    /// The tile position of the host's area number, made on first use and owned by this level. A number beyond the
    /// matrix gives a position beyond its last row, which holds no tile.
    CMultiDimTile& MultiDimTile(uint32_t brixAreaID)
    {
        CMultiDimTile* tile = _MultiDimTiles.Find(brixAreaID);
        return tile ? *tile : MakeMultiDimTile(brixAreaID);
    }
    /// The smallest column and row of this level's tiles in the last frame: where area 0 lies. A last frame without a
    /// tile on this level is a failed assertion.
    CTileCorner CornerOfTileMatrix();
    /// How far the picture's first pixel lies inside the tile matrix, in pixels of this level, as a positive number.
    double getFirstPointForCrop(bool isX);
    /// The next tile of this level in the order of the file that fits the coordinates and is of one of the channels.
    virtual CDeepZoomTile* NextDeepZoomTileOnDisk(CDeepZoomTile& prevDeepZoomTile,
                                                  const CFrameCoords& selectionCriteria,
                                                  const CChannelSelection& selectedChannelIDs);
    /// The number of the TIFF directory that holds this level, 0 where there is none.
    virtual uint16_t getTiffIfd() = 0;

protected:
    bool Coords_init(CCoords& varToInit) override;
    bool PixelOrRealWorldWidth_init(double& varToInit) override;
    bool PixelOrRealWorldHeight_init(double& varToInit) override;
    bool ZoomoutFactor_init(double& varToInit) override;
    bool BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset) override;
    CBrixPropsets& KeptPropsets() override { return PropsetsInState(); }
    virtual bool NumOfCols_init(uint32_t& varToInit) = 0;
    virtual bool NumOfRows_init(uint32_t& varToInit) = 0;
    /// True when no tile of another level lies between two tiles of this one.
    virtual bool DeepZoomTilesAreTogetherOnDisk() = 0;

private:
    struct CPropsetHandler;
    CMultiDimTile& MakeMultiDimTile(uint32_t brixAreaID);
    bool IsRealWorldSizeOrPixelSizeAvailable() const override { return false; }
    bool BrixPropset_PixelLength(const AC_PARAMS& params, CBrixPropset& propset);
    double FirstPointForCropOfMatrix(bool isX, int32_t crop);

    CMultiDimImage& _ParentMultiDimImg;
    CImgDoc& _ParentImgDoc; ///< that of the image, whose lock each request for a tile needs first of all
    CommonUtil::CLazy<uint32_t, 0xFFFFFFFFu> _NumOfCols;
    CommonUtil::CLazy<uint32_t, 0xFFFFFFFFu> _NumOfRows;
    const uint16_t _LevelID;
    std::optional<CTileCorner> _CornerOfTileMatrix;
    CommonUtil::CPagedObjects<CMultiDimTile> _MultiDimTiles;
};

/// The one flat level of an image that has no pyramid.
class CDummyDeepZoomPyramidLevel : public CDeepZoomPyramidLevel
{
public:
    explicit CDummyDeepZoomPyramidLevel(CMultiDimImage& image) : CDeepZoomPyramidLevel(0, image) {}
};

} // namespace CIA
