#include "ZelLoader/Images/PixelScan.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"

#include <algorithm>
#include <cstring>

namespace Zel
{

namespace
{

/// A plain loop over numbers of one size, which the compiler turns into vector instructions.
template <typename Number>
uint64_t Greatest(const unsigned char* bytes, size_t numOfPixels)
{
    Number greatest = 0;
    for (size_t i = 0; i < numOfPixels; ++i)
    {
        Number pxVal;
        std::memcpy(&pxVal, bytes + i * sizeof pxVal, sizeof pxVal);
        greatest = std::max(greatest, pxVal);
    }
    return greatest;
}

uint64_t GreatestOf3Bytes(const unsigned char* bytes, size_t numOfPixels)
{
    uint32_t greatest = 0;
    for (size_t i = 0; i < numOfPixels; ++i, bytes += 3)
        greatest = std::max(greatest, bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16);
    return greatest;
}

/// The bytes at 3 and 5 are left out: hosts know the bit counts that follow from it.
uint64_t GreatestOf6Bytes(const unsigned char* bytes, size_t numOfPixels)
{
    uint64_t greatest = 0;
    for (size_t i = 0; i < numOfPixels; ++i, bytes += 6)
    {
        const uint64_t low = bytes[0] | uint32_t{bytes[1]} << 8;
        greatest = std::max(greatest, low + (uint64_t{bytes[2]} << 16) + (uint64_t{bytes[4]} << 32));
    }
    return greatest;
}

} // namespace

CMaxPixelValueScan::CMaxPixelValueScan(uint32_t numOfBytesPerPixel, uint64_t maxPixelValue)
    : _numOfBytesPerPixel(numOfBytesPerPixel), _maxPixelValue(maxPixelValue)
{
}

void CMaxPixelValueScan::Add(const std::vector<unsigned char>& tile)
{
    const size_t numOfPixels = _numOfBytesPerPixel == 0 ? 0 : tile.size() / _numOfBytesPerPixel;
    uint64_t greatest = 0;
    switch (_numOfBytesPerPixel)
    {
    case 1:
        greatest = Greatest<uint8_t>(tile.data(), numOfPixels);
        break;
    case 2:
        greatest = Greatest<uint16_t>(tile.data(), numOfPixels);
        break;
    case 3:
        greatest = GreatestOf3Bytes(tile.data(), numOfPixels);
        break;
    case 4:
        greatest = Greatest<uint32_t>(tile.data(), numOfPixels);
        break;
    case 6:
        greatest = GreatestOf6Bytes(tile.data(), numOfPixels);
        break;
    case 8:
        greatest = Greatest<uint64_t>(tile.data(), numOfPixels);
        break;
    default:
        ZEL_LOG("Unexpected/unhandled numOfBytesPerPixel %u!", _numOfBytesPerPixel);
        CommonUtil::oldAbortCommonUtil();
    }
    _maxPixelValue = std::max(_maxPixelValue, greatest);
}

} // namespace Zel
