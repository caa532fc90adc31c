#pragma once
#include "CommonImageAccess/Dimension.h"

namespace CIA
{

/// X or Y: a dimension whose points are the pixels of level 0. The display window is the union of all images of the
/// document; pixel positions count from its left top corner.
class CPixelDimension : public CDimension
{
public:
    using CDimension::CDimension;

    const wchar_t* Name() override;
    bool DbgIsCallingLastPointAllowed() override;

    /// The pixel position of a real-world value, at the given zoom-out factor (1 at level 0). A value more than half a
    /// pixel before the display window is a failed assertion.
    uint32_t CoordInPixels(double value, double zoomoutFactor);
    /// The pixel position `idx` pixels behind the first point; an unsigned sum that wraps, so that tiles before the
    /// first one have a position as well.
    uint32_t CoordInPixelsGivenIdx(uint32_t idx, double zoomoutFactor);
    uint32_t PixelDistance(double distance, double zoomoutFactor);
    double CoordInRealWorldUnits(uint32_t coordInPixels, double zoomoutFactor);
    double RealWorldDistance(uint32_t distanceInPixels, double zoomoutFactor);
    /// The least first point of all images of the document; NaN when it could not be worked out.
    double RealWorldCoordOfDisplayWindow();

protected:
    bool FirstPoint_init(double& varToInit) override;
    bool IsEachPointAPixel_init(bool& varToInit) override;

private:
    bool RealWorldCoordOfDisplayWindow_init(double& varToInit);
    double RealWorldXCoordOfDisplayWindow(bool isY);
    double CroppingBeforeFirstPixel();

    double _RealWorldCoordOfDisplayWindow = std::numeric_limits<double>::quiet_NaN();
};

} // namespace CIA
