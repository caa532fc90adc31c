#include "ZelLoader/Images/ZelTiffFrameTiles.h"

#include "CommonUtil/Numbers.h"
#include "CommonUtil/PagedObjects.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Images/ZelTiffTile.h"
#include "ZelLoader/ZelImgDoc.h"

namespace Zel
{

namespace
{

/// The grid of tiles of a directory, which says where each one is without a list.
class CZelTiffFrameTiles : public CDeepZoomTiles
{
public:
    CZelTiffFrameTiles(CZelFrame& frame, const CTileGrid& grid)
        : _Frame(frame), _NumOfCols(grid.NumOfCols), _NumOfRows(grid.NumOfRows), _ColStep(grid.ColStep),
          _RowStep(grid.RowStep)
    {
    }

    uint64_t Size() const override { return uint64_t{_NumOfCols} * _NumOfRows; }

    CDeepZoomTile* Find(const CDeepZoomTileIdx& idx) override
    {
        if (idx._PyramidLevelIdx != 0 || idx._TileColIdx < 0 || idx._TileRowIdx < 0)
            return nullptr;
        const auto col = static_cast<uint32_t>(idx._TileColIdx);
        const auto row = static_cast<uint32_t>(idx._TileRowIdx);
        if (col % _ColStep != 0 || row % _RowStep != 0 || col / _ColStep >= _NumOfCols || row / _RowStep >= _NumOfRows)
            return nullptr;
        return &TileAt(uint64_t{row / _RowStep} * _NumOfCols + col / _ColStep);
    }

    std::optional<CTileCorner> SmallestColAndRow(uint32_t level) const override
    {
        if (level != 0 || Size() == 0)
            return {};
        return CTileCorner{0, 0};
    }

    bool ForEachOfLevel(uint32_t level, const std::function<bool(CDeepZoomTile&)>& visit) override
    {
        const uint64_t numOfTiles = level == 0 ? Size() : 0;
        for (uint64_t number = 0; number < numOfTiles; ++number)
            if (!visit(TileAt(number)))
                return false;
        return true;
    }

private:
    CZelTiffTile& TileAt(uint64_t number)
    {
        const uint32_t place = ToUint32WithCheck(number);
        if (CZelTiffTile* tile = _Tiles.Find(place))
            return *tile;
        return _Tiles.Emplace(place, _Frame, static_cast<int32_t>(number % _NumOfCols * _ColStep),
                              static_cast<int32_t>(number / _NumOfCols * _RowStep));
    }

    CZelFrame& _Frame;
    const uint32_t _NumOfCols;
    const uint32_t _NumOfRows;
    const uint32_t _ColStep;
    const uint32_t _RowStep;
    CPagedObjects<CZelTiffTile> _Tiles;
};

/// A tile or strip takes some bytes of its directory at least: a small file cannot claim a million of them. Those of
/// frames that share a directory are the same.
void AssertThatFileHolds(uint64_t numOfTiles, CZelFrame& frame)
{
    CZelMultiDimImage& image = frame.ParentZelImage();
    ZEL_ASSERT(numOfTiles <= image.ParentZelImgDoc().FileSize() / image.NumOfDirectoriesOfFrames());
}

CTileGrid GridOfDirectory(CZelFrame& frame)
{
    TIFF* tif = frame.TiffFilePtr();
    const auto width = CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_IMAGEWIDTH);
    const auto height = CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_IMAGELENGTH);
    if (!TIFFIsTiled(tif))
        return {.NumOfCols = 1, .NumOfRows = TIFFNumberOfStrips(tif), .ColStep = 1, .RowStep = 1};
    const auto tileWidth = CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_TILEWIDTH);
    const auto tileHeight = CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_TILELENGTH);
    // From here on the file may stand on another directory.
    CMultiDimImage& image = frame.ParentMultiDimImg();
    ZEL_ASSERT(tileWidth == image.DeepZoomTilePixelWidth(0) && tileHeight == image.DeepZoomTilePixelHeight(0));
    ZEL_ASSERT(tileWidth != 0 && tileHeight != 0);
    return {.NumOfCols = NumOfTilesAcross(width, tileWidth),
            .NumOfRows = NumOfTilesAcross(height, tileHeight),
            .ColStep = tileWidth,
            .RowStep = tileHeight};
}

} // namespace

std::unique_ptr<CDeepZoomTiles> MakeZelTiffFrameTiles(CZelFrame& frame)
{
    std::map<uint32_t, CTileGrid>& grids = frame.ParentZelImage().TileGridsByDirectory();
    auto grid = grids.find(frame.TiffDirectory());
    if (grid == grids.end())
        grid = grids.emplace(frame.TiffDirectory(), GridOfDirectory(frame)).first;
    auto tiles = std::make_unique<CZelTiffFrameTiles>(frame, grid->second);
    AssertThatFileHolds(tiles->Size(), frame);
    return tiles;
}

} // namespace Zel
