#include "CommonImageAccess/DeepZoomPyramidLevel.h"

#include "CommonImageAccess/Frame.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/PixelDimension.h"
#include "CommonUtil/Numbers.h"

#include <cmath>

namespace CIA
{

using namespace CommonUtil;

namespace
{

uint16_t CheckedLevelID(uint32_t levelId)
{
    ZEL_ASSERT(levelId <= CDeepZoomPyramidLevel::MaxLevelID);
    return static_cast<uint16_t>(levelId);
}

/// By the tile's coordinates, which must be such; they lie where those of its frame do.
bool Fits(CDeepZoomTile& tile, const CFrameCoords& selectionCriteria, const CChannelSelection& selectedChannelIDs)
{
    tile.NeedCoords();
    const CFrameIdx& idx = tile.ParentFrame().FrameIdx();
    CDimensionTypes types = selectionCriteria.Types();
    for (; !types.IsEmpty(); types = types.WithoutFirst())
        if (selectionCriteria.FrameIdx().SubIdx(types.First()) != idx.SubIdx(types.First()))
            return false;
    return selectedChannelIDs.Contains(idx.C);
}

} // namespace

CDeepZoomPyramidLevel::CDeepZoomPyramidLevel(uint32_t levelId, CMultiDimImage& image)
    : _ParentMultiDimImg(image), _ParentImgDoc(image.ParentImgDoc()), _LevelID(CheckedLevelID(levelId))
{
}

bool CDeepZoomPyramidLevel::Coords_init(CCoords& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    const CDimensions& dimensions = _ParentMultiDimImg.Dimensions();
    const auto add = [&](DimensionType::E type, uint32_t index)
    {
        const auto found = dimensions.find(type);
        ZEL_ASSERT(found != dimensions.end());
        varToInit[type] = MakeOwnCoord(index, *found->second);
    };
    add(DimensionType::DimensionType_X, 0);
    add(DimensionType::DimensionType_Y, 0);
    add(DimensionType::DimensionType_P, _LevelID);
    return true;
}

bool CDeepZoomPyramidLevel::PixelOrRealWorldWidth_init(double& varToInit)
{
    varToInit = static_cast<double>(_ParentMultiDimImg.DeepZoomTilePixelWidth(getTiffIfd())) * NumOfCols();
    ZEL_ASSERT(varToInit != 0);
    return true;
}

bool CDeepZoomPyramidLevel::PixelOrRealWorldHeight_init(double& varToInit)
{
    varToInit = static_cast<double>(_ParentMultiDimImg.DeepZoomTilePixelHeight(getTiffIfd())) * NumOfRows();
    ZEL_ASSERT(varToInit != 0);
    return true;
}

bool CDeepZoomPyramidLevel::ZoomoutFactor_init(double& varToInit)
{
    const uint32_t widthOfLevel = _ParentMultiDimImg.PixelWidthForLevel(_LevelID);
    ZEL_ASSERT(widthOfLevel != 0);
    varToInit = static_cast<double>(_ParentMultiDimImg.PixelWidth()) / widthOfLevel;
    return true;
}

CMultiDimTile& CDeepZoomPyramidLevel::MakeMultiDimTile(uint32_t brixAreaID)
{
    return _MultiDimTiles.Emplace(brixAreaID, *this, brixAreaID);
}

CTileCorner CDeepZoomPyramidLevel::CornerOfTileMatrix()
{
    if (!_CornerOfTileMatrix)
    {
        // Every frame is asked for its tiles: one whose tiles break a rule leaves the stack without areas. The last
        // frame counts.
        std::optional<CTileCorner> corner;
        for (const auto& [idx, frame] : _ParentMultiDimImg.Frames())
            corner = frame->DeepZoomTiles().SmallestColAndRow(_LevelID);
        ZEL_ASSERT(corner);
        _CornerOfTileMatrix = corner;
    }
    return *_CornerOfTileMatrix;
}

double CDeepZoomPyramidLevel::getFirstPointForCrop(bool isX)
{
    const int32_t crop = isX ? _ParentMultiDimImg.LeftCroppingOfLevel0TileMatrixInPixels()
                             : _ParentMultiDimImg.TopCroppingOfLevel0TileMatrixInPixels();
    const auto found = Coords().find(isX ? DimensionType::DimensionType_X : DimensionType::DimensionType_Y);
    ZEL_ASSERT(found != Coords().end());
    CCoordinate& coordinate = *found->second;
    CDimension& d = coordinate.Dimension();
    if (!d.Units())
        return std::fabs(std::trunc(crop / ZoomoutFactor()));
    if (crop != 0)
        return std::fabs(FirstPointForCropOfMatrix(isX, crop));
    return std::fabs((coordinate.Value() - coordinate.PixDim().RealWorldCoordOfDisplayWindow()) /
                     (ZoomoutFactor() * d.GapBetweenPoints()));
}

double CDeepZoomPyramidLevel::FirstPointForCropOfMatrix(bool isX, int32_t crop)
{
    CMultiDimTile& firstTile = MultiDimTile(0);
    const int64_t firstColOrRow = isX ? firstTile.getCol() : firstTile.getRow();
    // The width serves on both axes: hosts place a cropped picture by it.
    const auto distance = static_cast<uint32_t>(std::llabs(firstColOrRow) * firstTile.PixelWidth());
    const auto cropOfLevel = static_cast<uint32_t>(ToIntegerWithCheck<int32_t>(crop / ZoomoutFactor()));
    return static_cast<int32_t>(distance - cropOfLevel);
}

CDeepZoomTile* CDeepZoomPyramidLevel::NextDeepZoomTileOnDisk(CDeepZoomTile& prevDeepZoomTile,
                                                             const CFrameCoords& selectionCriteria,
                                                             const CChannelSelection& selectedChannelIDs)
{
    for (CDeepZoomTile* tile = prevDeepZoomTile.NextTileOnDisk(); tile; tile = tile->NextTileOnDisk())
    {
        if (&tile->ParentLevel() == this) [[likely]]
        {
            if (tile->RowIdx() >= static_cast<int64_t>(NumOfRows()))
                return nullptr;
            if (Fits(*tile, selectionCriteria, selectedChannelIDs)) [[likely]]
                return tile;
        }
        else if (tile->RowIdx() >= static_cast<int64_t>(tile->ParentLevel().NumOfRows()) ||
                 DeepZoomTilesAreTogetherOnDisk())
            return nullptr;
    }
    return nullptr;
}

} // namespace CIA
