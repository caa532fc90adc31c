#pragma once
#include "CommonImageAccess/BrixPropsetProvider.h"
#include "CommonImageAccess/Coordinate.h"
#include "CommonImageAccess/PixelRect.h"
#include "CommonUtil/PublishedPtr.h"

#include <memory>
#include <vector>

namespace CIA
{

/// Anything that sits somewhere in an image: the image itself, a frame, a level, an area, a tile. It has a coordinate
/// on each dimension that matters to it, a size and a zoom-out factor. What it works out is kept in a part that is
/// allocated on first use, since a slide has a million of these and few are ever asked.
class ObjThatHasCoords
{
public:
    ObjThatHasCoords() = default;
    virtual ~ObjThatHasCoords() = default;
    ObjThatHasCoords(const ObjThatHasCoords&) = delete;
    ObjThatHasCoords& operator=(const ObjThatHasCoords&) = delete;

    /// Empty after a failure, with errno; the next call tries again.
    const CCoords& Coords();
    bool DbgIsCoordsInitInProgress() const;

    uint32_t PixelX(); ///< in pixels of the display window at this object's zoom
    uint32_t PixelY();
    uint32_t PixelWidth(); ///< 0xFFFFFFFF: could not be worked out
    uint32_t PixelHeight();
    CPixelRect PixelRect();
    /// Keeps a rectangle that never changes. From then on KeptPixelRect gives it, on any thread and without the lock of
    /// the document; null before.
    void KeepPixelRect(const CPixelRect& rect);
    const CPixelRect* KeptPixelRect() const;
    double RealWorldWidth(); ///< in the units of X; NaN: could not be worked out
    double RealWorldHeight();
    double ZoomoutFactor(); ///< how many pixels of level 0 one pixel spans; NaN: could not be worked out

protected:
    virtual bool Coords_init(CCoords& varToInit) = 0;
    virtual bool PixelOrRealWorldWidth_init(double& varToInit) = 0;
    virtual bool PixelOrRealWorldHeight_init(double& varToInit) = 0;
    virtual bool ZoomoutFactor_init(double& varToInit) = 0;

    /// Makes a coordinate that this object owns; to be called by Coords_init.
    template <typename... Arguments>
    CCoordinate* MakeOwnCoord(Arguments&&... arguments)
    {
        return Keep(std::make_unique<CCoordinate>(std::forward<Arguments>(arguments)..., this));
    }

    /// Room for the property sets of those that are asked for some.
    CBrixPropsets& PropsetsInState();

private:
    /// What the size operations of the derived class give: real-world size (true) or pixels (false). No field, since
    /// every tile would carry it.
    virtual bool IsRealWorldSizeOrPixelSizeAvailable() const = 0;

    struct CState;
    struct CStateDeleter
    {
        void operator()(CState* state) const;
    };
    CState& State()
    {
        CState* state = _State.Get();
        return state ? *state : MakeState();
    }
    CState& MakeState();
    CCoordinate* Keep(std::unique_ptr<CCoordinate> coordinate);
    uint32_t PixelSize(DimensionType::E type, bool (ObjThatHasCoords::*init)(double&), double realWorldSize);
    double RealWorldSize(DimensionType::E type, bool (ObjThatHasCoords::*init)(double&));
    CCoordinate& Coord(DimensionType::E type);

    CommonUtil::CPublishedPtr<CState, CStateDeleter> _State;
};

} // namespace CIA
