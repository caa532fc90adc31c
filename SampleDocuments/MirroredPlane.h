#pragma once

#include "SampleDocuments/Picture.h"

namespace SampleDocuments
{

/// A picture that goes on without end in both directions, mirrored at each of its edges. However large the part of it
/// that a slide shows, no more than about one picture is in memory.
class CMirroredPlane
{
public:
    explicit CMirroredPlane(CPicture picture);

    /// The same plane at half the size: each pixel is the mean of two by two.
    CMirroredPlane Halved() const;

    /// The plane repeats itself after so many pixels.
    uint32_t PeriodX() const { return _IsMirrored ? 2 * _Block.Width() : _Block.Width(); }
    uint32_t PeriodY() const { return _IsMirrored ? 2 * _Block.Height() : _Block.Height(); }

    /// A rectangle of the plane. What lies beyond `visibleWidth` and `visibleHeight` has the colour `background`.
    CPicture Window(uint32_t x, uint32_t y, uint32_t width, uint32_t height, uint32_t visibleWidth,
                    uint32_t visibleHeight, uint16_t background) const;

private:
    CMirroredPlane(CPicture block, bool isMirrored);
    uint32_t Column(uint64_t x) const;
    uint32_t RowOf(uint64_t y) const;

    CPicture _Block; ///< the part that is repeated, or, when mirrored, the quarter of it that decides the rest
    bool _IsMirrored = true;
};

} // namespace SampleDocuments
