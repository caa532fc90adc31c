#pragma once
#include "CommonUtil/Assertion.h"

#include <cstdint>

namespace CIA
{

/// A rectangle of pixels. It has the layout of the host's CMN_RECT: four unsigned 64-bit numbers.
class CPixelRect
{
public:
    CPixelRect() = default;
    CPixelRect(uint32_t x, uint32_t y, uint32_t width, uint32_t height) : _X(x), _Y(y), _Width(width), _Height(height)
    {
    }

    // Each asserts that the number is below 0xFFFFFFFF; a host can pass any.
    uint32_t X() const { return Checked(_X); }
    uint32_t Y() const { return Checked(_Y); }
    uint32_t Width() const { return Checked(_Width); }
    uint32_t Height() const { return Checked(_Height); }
    /// Stands for the whole of something, whatever its size.
    bool IsAllZero() const { return (_X | _Y | _Width | _Height) == 0; }

private:
    static uint32_t Checked(uint64_t number)
    {
        ZEL_ASSERT(number < 0xFFFFFFFF);
        return static_cast<uint32_t>(number);
    }

    uint64_t _X = 0;
    uint64_t _Y = 0;
    uint64_t _Width = 0;
    uint64_t _Height = 0;
};
static_assert(sizeof(CPixelRect) == 32);

} // namespace CIA
