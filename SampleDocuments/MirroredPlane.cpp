#include "SampleDocuments/MirroredPlane.h"

#include <algorithm>

namespace SampleDocuments
{

namespace
{

uint32_t Folded(uint64_t at, uint32_t length, bool isMirrored)
{
    if (!isMirrored)
        return static_cast<uint32_t>(at % length);
    const auto within = static_cast<uint32_t>(at % (2ull * length));
    return within < length ? within : 2 * length - 1 - within;
}

/// After how many pixels a line of half the size repeats itself: two periods make one if the period is odd.
uint32_t HalvedPeriod(uint32_t period)
{
    return period % 2 == 0 ? period / 2 : period;
}

} // namespace

CMirroredPlane::CMirroredPlane(CPicture picture) : CMirroredPlane(std::move(picture), true)
{
    if (_Block.Width() == 0 || _Block.Height() == 0)
        throw CSampleError("the picture has no pixels");
}

CMirroredPlane::CMirroredPlane(CPicture block, bool isMirrored) : _Block(std::move(block)), _IsMirrored(isMirrored) {}

uint32_t CMirroredPlane::Column(uint64_t x) const
{
    return Folded(x, _Block.Width(), _IsMirrored);
}

uint32_t CMirroredPlane::RowOf(uint64_t y) const
{
    return Folded(y, _Block.Height(), _IsMirrored);
}

CMirroredPlane CMirroredPlane::Halved() const
{
    // Two by two pixels never lie across an edge of a picture with even sides, so the result is mirrored as well.
    const bool staysMirrored = _IsMirrored && _Block.Width() % 2 == 0 && _Block.Height() % 2 == 0;
    const uint32_t width = staysMirrored ? _Block.Width() / 2 : HalvedPeriod(PeriodX());
    const uint32_t height = staysMirrored ? _Block.Height() / 2 : HalvedPeriod(PeriodY());
    CPicture half(width, height, _Block.Samples(), _Block.Bits());
    for (uint32_t y = 0; y < height; ++y)
    {
        const auto above = _Block.Row(RowOf(2ull * y)), below = _Block.Row(RowOf(2ull * y + 1));
        for (uint32_t x = 0; x < width; ++x)
        {
            const size_t left = size_t{Column(2ull * x)} * _Block.Samples();
            const size_t right = size_t{Column(2ull * x + 1)} * _Block.Samples();
            for (uint16_t s = 0; s < _Block.Samples(); ++s)
            {
                const uint32_t sum = above[left + s] + above[right + s] + below[left + s] + below[right + s] + 0u;
                half.At(x, y, s) = static_cast<uint16_t>((sum + 2) / 4);
            }
        }
    }
    return CMirroredPlane(std::move(half), staysMirrored);
}

CPicture CMirroredPlane::Window(uint32_t x, uint32_t y, uint32_t width, uint32_t height, uint32_t visibleWidth,
                                uint32_t visibleHeight, uint16_t background) const
{
    const size_t samples = _Block.Samples();
    std::vector<size_t> columns(std::min(width, visibleWidth));
    for (size_t i = 0; i < columns.size(); ++i)
        columns[i] = Column(uint64_t{x} + i) * samples;
    CPicture window(width, height, _Block.Samples(), _Block.Bits());
    for (uint32_t row = 0; row < height; ++row)
    {
        const auto target = window.Row(row);
        std::fill(target.begin(), target.end(), background);
        if (row >= visibleHeight)
            continue;
        const auto source = _Block.Row(RowOf(uint64_t{y} + row));
        for (size_t i = 0; i < columns.size(); ++i)
            std::copy_n(source.begin() + static_cast<std::ptrdiff_t>(columns[i]), samples,
                        target.begin() + static_cast<std::ptrdiff_t>(i * samples));
    }
    return window;
}

} // namespace SampleDocuments
