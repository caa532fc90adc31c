#include "CommonImageAccess/ObjThatHasCoords.h"

#include "CommonImageAccess/PixelDimension.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/ScopedFlag.h"

#include <cmath>
#include <limits>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr uint32_t UnknownSize = 0xFFFFFFFF;
constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();

} // namespace

struct ObjThatHasCoords::CState
{
    CCoords _Coords;
    std::vector<std::unique_ptr<CCoordinate>> _OwnCoords;
    double _ZoomoutFactor = Unknown;
    bool DbgCoordsInitIsInProgress = false;
    CBrixPropsets _Propsets;
    CPublishedPtr<CPixelRect> _KeptRect;
};

void ObjThatHasCoords::CStateDeleter::operator()(CState* state) const
{
    std::default_delete<CState>()(state);
}

ObjThatHasCoords::CState& ObjThatHasCoords::MakeState()
{
    return _State.Publish(std::make_unique<CState>());
}

CBrixPropsets& ObjThatHasCoords::PropsetsInState()
{
    return State()._Propsets;
}

CCoordinate* ObjThatHasCoords::Keep(std::unique_ptr<CCoordinate> coordinate)
{
    State()._OwnCoords.push_back(std::move(coordinate));
    return State()._OwnCoords.back().get();
}

bool ObjThatHasCoords::DbgIsCoordsInitInProgress() const
{
    const CState* state = _State.Get();
    return state && state->DbgCoordsInitIsInProgress;
}

const CCoords& ObjThatHasCoords::Coords()
{
    CState& state = State();
    if (!state._Coords.empty())
        return state._Coords;
    ZEL_ASSERT(!state.DbgCoordsInitIsInProgress);
    const CScopedFlag isInProgress(state.DbgCoordsInitIsInProgress);
    state._OwnCoords.clear(); // left over where an earlier attempt ended in an exception
    CCoords coords;
    if (Coords_init(coords))
        state._Coords = std::move(coords);
    else
        state._OwnCoords.clear();
    return state._Coords;
}

CCoordinate& ObjThatHasCoords::Coord(DimensionType::E type)
{
    const auto found = Coords().find(type);
    ZEL_ASSERT(found != Coords().end() && found->second);
    return *found->second;
}

uint32_t ObjThatHasCoords::PixelX()
{
    return Coord(DimensionType::DimensionType_X).PixelValue(ZoomoutFactor());
}
uint32_t ObjThatHasCoords::PixelY()
{
    return Coord(DimensionType::DimensionType_Y).PixelValue(ZoomoutFactor());
}

CPixelRect ObjThatHasCoords::PixelRect()
{
    const uint32_t x = PixelX();
    const uint32_t y = PixelY();
    const uint32_t width = PixelWidth();
    return {x, y, width, PixelHeight()};
}

void ObjThatHasCoords::KeepPixelRect(const CPixelRect& rect)
{
    if (!State()._KeptRect.Get())
        State()._KeptRect.Publish(std::make_unique<CPixelRect>(rect));
}

const CPixelRect* ObjThatHasCoords::KeptPixelRect() const
{
    const CState* state = _State.Get();
    return state ? state->_KeptRect.Get() : nullptr;
}

uint32_t ObjThatHasCoords::PixelWidth()
{
    return PixelSize(DimensionType::DimensionType_X, &ObjThatHasCoords::PixelOrRealWorldWidth_init,
                     IsRealWorldSizeOrPixelSizeAvailable() ? RealWorldWidth() : Unknown);
}

uint32_t ObjThatHasCoords::PixelHeight()
{
    return PixelSize(DimensionType::DimensionType_Y, &ObjThatHasCoords::PixelOrRealWorldHeight_init,
                     IsRealWorldSizeOrPixelSizeAvailable() ? RealWorldHeight() : Unknown);
}

uint32_t ObjThatHasCoords::PixelSize(DimensionType::E type, bool (ObjThatHasCoords::*init)(double&),
                                     double realWorldSize)
{
    if (IsRealWorldSizeOrPixelSizeAvailable())
        return std::isnan(realWorldSize) ? UnknownSize
                                         : Coord(type).PixDim().PixelDistance(realWorldSize, ZoomoutFactor());
    double size = Unknown;
    if (!(this->*init)(size))
        return UnknownSize;
    ZEL_ASSERT(size >= 0 && size < 4294967295.0 && size == std::floor(size));
    return static_cast<uint32_t>(size);
}

double ObjThatHasCoords::RealWorldWidth()
{
    return RealWorldSize(DimensionType::DimensionType_X, &ObjThatHasCoords::PixelOrRealWorldWidth_init);
}

double ObjThatHasCoords::RealWorldHeight()
{
    return RealWorldSize(DimensionType::DimensionType_Y, &ObjThatHasCoords::PixelOrRealWorldHeight_init);
}

double ObjThatHasCoords::RealWorldSize(DimensionType::E type, bool (ObjThatHasCoords::*init)(double&))
{
    if (IsRealWorldSizeOrPixelSizeAvailable())
    {
        double size = Unknown;
        return (this->*init)(size) ? size : Unknown;
    }
    const uint32_t pixelSize = PixelSize(type, init, Unknown);
    return pixelSize == UnknownSize ? Unknown : Coord(type).PixDim().RealWorldDistance(pixelSize, ZoomoutFactor());
}

double ObjThatHasCoords::ZoomoutFactor()
{
    CState& state = State();
    if (std::isnan(state._ZoomoutFactor))
    {
        double factor = Unknown;
        if (ZoomoutFactor_init(factor))
            state._ZoomoutFactor = factor;
    }
    return state._ZoomoutFactor;
}

} // namespace CIA
