#pragma once
#include "CommonImageAccess/DeepZoomTile.h"
#include "CommonImageAccess/ObjThatHasCoords.h"
#include "CommonUtil/ArrayStartAndSize.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Lazy.h"

#include <compare>
#include <initializer_list>
#include <memory>
#include <vector>

namespace CIA
{

class CPixelFrameFormat;

/// The key of a frame: its index on each dimension that tells frames apart, 0 on those that the image has not.
struct CFrameIdx
{
    uint32_t Z = 0;
    uint32_t C = 0;
    uint32_t L = 0;
    uint32_t T = 0;

    CFrameIdx() = default;
    CFrameIdx(uint32_t z, uint32_t c, uint32_t l, uint32_t t) : Z(z), C(c), L(l), T(t) {}

    /// By Z, then C, then L, then T.
    auto operator<=>(const CFrameIdx&) const = default;

    /// The index on Z, T, L or C; any other type ends the process.
    uint32_t SubIdx(DimensionType::E dimensionType) const { return this->*SubIdxOf(dimensionType); }
    void SetSubIdx(DimensionType::E dimensionType, uint32_t index) { this->*SubIdxOf(dimensionType) = index; }

private:
    static uint32_t CFrameIdx::*SubIdxOf(DimensionType::E dimensionType)
    {
        switch (dimensionType)
        {
        case DimensionType::DimensionType_Z:
            return &CFrameIdx::Z;
        case DimensionType::DimensionType_T:
            return &CFrameIdx::T;
        case DimensionType::DimensionType_L:
            return &CFrameIdx::L;
        case DimensionType::DimensionType_C:
            return &CFrameIdx::C;
        default:
            CommonUtil::oldAbortCommonUtil();
        }
    }
};

/// What a request says of a frame: its index on some of the dimensions that tell frames apart. Made for each request,
/// so that it takes no heap.
class CFrameCoords
{
public:
    CFrameCoords() = default;
    /// The indexes of coordinates. Asserts that their dimensions tell frames apart.
    CFrameCoords(std::initializer_list<CCoords::value_type> coords)
    {
        for (const auto& [type, coord] : coords)
            Set(type, coord->Index());
    }
    bool Has(DimensionType::E type) const { return _types.Has(type); }
    CDimensionTypes Types() const { return _types; }
    /// Asserts that the dimension tells frames apart.
    void Set(DimensionType::E type, uint32_t index)
    {
        ZEL_ASSERT(IsFrameDifferentiatorCoordDimension(type));
        _idx.SetSubIdx(type, index);
        _types.Add(type);
    }
    /// With 0 on the dimensions that were not named.
    const CFrameIdx& FrameIdx() const { return _idx; }

private:
    CFrameIdx _idx;
    CDimensionTypes _types; ///< which dimensions were named
};

/// One plane of an image: one combination of Z, C, L and T, as wide and high as the image. It owns its tiles.
class CFrame : public ObjThatHasCoords
{
public:
    CFrame(CMultiDimImage& image, const CFrameIdx& idx);
    ~CFrame() override;

    CMultiDimImage& ParentMultiDimImg() const { return _ParentMultiDimImg; }
    const CFrameIdx& FrameIdx() const { return Idx; }
    /// The channel on which this frame's coordinates lie, owned by the image.
    CPixelFrameFormat& Channel();
    /// The indexes of this frame's first pixel, which is the image's. Assert that the coordinates of the frame can be
    /// made and that the pixel lies on the dimension.
    uint32_t FirstX()
    {
        return _FirstX.Get([this](uint32_t& varToInit)
                           { return First_init(varToInit, DimensionType::DimensionType_X); });
    }
    uint32_t FirstY()
    {
        return _FirstY.Get([this](uint32_t& varToInit)
                           { return First_init(varToInit, DimensionType::DimensionType_Y); });
    }
    /// The tiles of this frame at all levels. Empty when they could not be listed; the next call tries again.
    CDeepZoomTiles& DeepZoomTiles() { return _DeepZoomTiles ? *_DeepZoomTiles : ListDeepZoomTiles(); }
    /// The JPEG tables that the tiles of a Jpeg7 frame lack, owned by this frame. Empty, with EBADFD, for any other
    /// compression.
    CommonUtil::CArrayStartAndSize<const unsigned char> JpegTables();
    /// Asserts that the index is 0 on each dimension that the image has not.
    void DbgValidateIdx();

protected:
    bool Coords_init(CCoords& varToInit) override;
    bool PixelOrRealWorldWidth_init(double& varToInit) override;
    bool PixelOrRealWorldHeight_init(double& varToInit) override;
    bool ZoomoutFactor_init(double& varToInit) override;
    /// The tiles of the frame; null when they cannot be listed.
    virtual std::unique_ptr<CDeepZoomTiles> DeepZoomTiles_init() = 0;
    /// The bytes of the tables; empty with errno on failure.
    virtual std::vector<unsigned char> JpegTables_init() = 0;

private:
    bool IsRealWorldSizeOrPixelSizeAvailable() const override { return false; }
    CDeepZoomTiles& ListDeepZoomTiles();
    void DbgValidateDeepZoomTiles(const CDeepZoomTiles& tiles);
    bool First_init(uint32_t& varToInit, DimensionType::E type);

    CMultiDimImage& _ParentMultiDimImg;
    const CFrameIdx Idx;
    CommonUtil::CLazy<uint32_t, 0xFFFFFFFFu> _FirstX;
    CommonUtil::CLazy<uint32_t, 0xFFFFFFFFu> _FirstY;
    std::unique_ptr<CDeepZoomTiles> _DeepZoomTiles;
    std::vector<unsigned char> _JpegTables;
};

using CFrames = std::map<CFrameIdx, std::unique_ptr<CFrame>>;

} // namespace CIA
