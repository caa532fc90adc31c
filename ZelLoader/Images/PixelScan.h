#pragma once
#include <cstdint>
#include <vector>

namespace Zel
{

/// Finds the greatest pixel value in raw tiles. A whole pixel counts as one little-endian number, also when it has
/// several components.
class CMaxPixelValueScan
{
public:
    /// Sizes other than 1, 2, 3, 4, 6 and 8 bytes are logged and end the process.
    CMaxPixelValueScan(uint32_t numOfBytesPerPixel, uint64_t maxPixelValue);

    /// Bytes behind the last whole pixel are passed over.
    void Add(const std::vector<unsigned char>& tile);
    uint64_t MaxPixelValue() const { return _maxPixelValue; }

private:
    uint32_t _numOfBytesPerPixel;
    uint64_t _maxPixelValue;
};

} // namespace Zel
