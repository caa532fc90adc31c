#pragma once
#include "CommonImageAccess/BrixPropsetProvider.h"
#include "CommonImageAccess/ObjThatHasCoords.h"
#include "CommonUtil/ArrayStartAndSize.h"

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace CIA
{

class CDeepZoomPyramidLevel;
class CFrame;
class CPixelFrameFormat;

using CByteArray = CommonUtil::CArrayStartAndSize<unsigned char>;

/// The key of a tile in its frame, ordered by column, then row, then level.
struct CDeepZoomTileIdx
{
    int32_t _TileColIdx = 0;
    int32_t _TileRowIdx = 0;
    uint32_t _PyramidLevelIdx = 0;

    auto operator<=>(const CDeepZoomTileIdx&) const = default;
};

/// What is stored at one tile position of one frame: the thing whose pixels can be read. Owned by its frame.
class CDeepZoomTile : public ObjThatHasCoords, public CBrixPropsetProvider
{
public:
    /// `repeatsAPosition`: another tile of the frame is the one that is served at this position.
    CDeepZoomTile(CFrame& frame, CDeepZoomPyramidLevel& level, int32_t col, int32_t row, bool repeatsAPosition = false)
        : TileColIdx(col), TileRowIdx(row), _ParentLevel(level), _ParentFrame(frame),
          _RepeatsAPosition(repeatsAPosition)
    {
    }

    int32_t ColIdx() const { return TileColIdx; }
    int32_t RowIdx() const { return TileRowIdx; }
    CDeepZoomPyramidLevel& ParentLevel() const { return _ParentLevel; }
    CFrame& ParentFrame() const { return _ParentFrame; }
    /// True for a tile that is met in the walk over the file alone: another one of its frame has the same position.
    bool RepeatsAPosition() const { return _RepeatsAPosition; }
    /// Asserts that the coordinates of this tile can be made. Until they could be for the first time, the image is
    /// asked for its tile size at each call, which clears errno and leaves a TIFF store on its first directory.
    void NeedCoords()
    {
        if (!_HasCoords)
            WorkOutFirstPixel();
    }
    /// The channel on which the tile's coordinates lie, owned by the image.
    CPixelFrameFormat& Channel();
    /// True when the pixels are stored as they are: then any rectangle of the tile can be read.
    bool IsInRawFormat();
    /// False for the whole tile: all four numbers 0, or exactly its rectangle. A rectangle with only one of width and
    /// height 0 is a failed assertion.
    bool PartialTileNeedsToBeRead(const CPixelRect& r);
    /// Reads the pixels of `r` (all 0: the whole tile) as they are stored. With `buf.Arr` null or `buf.Size` too small,
    /// only the needed size is put into `buf.Size`, and that is no error. False with errno on failure.
    bool PixelBuf(CByteArray& buf, const CPixelRect& r);
    /// The next tile in the order of the file, whatever its frame and level, also one that repeats a position; null at
    /// the end.
    virtual CDeepZoomTile* NextTileOnDisk() = 0;

protected:
    bool Coords_init(CCoords& varToInit) override;
    bool PixelOrRealWorldWidth_init(double& varToInit) override;
    bool PixelOrRealWorldHeight_init(double& varToInit) override;
    bool ZoomoutFactor_init(double& varToInit) override;
    bool BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset) override;
    CBrixPropsets& KeptPropsets() override { return PropsetsInState(); }
    /// True when `r` does not reach beyond the tile. An exception where the tile's size cannot be found out.
    virtual bool IsWithinTile(const CPixelRect& r);
    /// PixelBuf with a rectangle that lies within the tile.
    virtual bool PixelBuf_rValidated(CByteArray& buf, const CPixelRect& r) = 0;
    /// Asserts that the channel tells.
    uint32_t NumOfBytesPerPixel();

private:
    struct CPropsetHandler;
    bool IsRealWorldSizeOrPixelSizeAvailable() const override { return false; }
    bool BrixPropset_StimulationROIList(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_StimulationROIInfo(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_AxisPosition(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_JpegTables(const AC_PARAMS& params, CBrixPropset& propset);
    CPixelIndexes WorkOutFirstPixel();

    const int32_t TileColIdx;
    const int32_t TileRowIdx;
    CDeepZoomPyramidLevel& _ParentLevel;
    CFrame& _ParentFrame;
    const bool _RepeatsAPosition;
    /// They could be made: from then on they are known, whether or not anyone asked for the objects.
    bool _HasCoords = false;
};

/// A corner of a tile matrix.
struct CTileCorner
{
    int32_t Col = 0;
    int32_t Row = 0;
};

/// The tiles of one frame. Each tile object is made when it is first asked for and then keeps its address.
class CDeepZoomTiles
{
public:
    virtual ~CDeepZoomTiles() = default;
    /// How many tiles the frame has, over all levels.
    virtual uint64_t Size() const = 0;
    /// The tile at a position; null when the frame has none there.
    virtual CDeepZoomTile* Find(const CDeepZoomTileIdx& idx) = 0;
    /// The smallest column and the smallest row among the tiles of a level; nothing when it has none of this frame.
    virtual std::optional<CTileCorner> SmallestColAndRow(uint32_t level) const = 0;
    /// Calls `visit` for each tile of a level in the order of the file until it returns false; false then.
    virtual bool ForEachOfLevel(uint32_t level, const std::function<bool(CDeepZoomTile&)>& visit) = 0;
};

} // namespace CIA
