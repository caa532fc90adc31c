#pragma once
#include "CommonImageAccess/PixelFormat.h"
#include "CommonUtil/BinaryFileReader.h"

#include <array>
#include <cstdint>

namespace Zel
{

using namespace CIA;
using namespace CommonUtil;

// The two headers of a binary tile store, as they stand in the file; all numbers are little-endian. Fields that have no
// use here are kept for whoever looks into an odd file.

/// How a store packs its tiles; no other value is accepted.
struct KorCompressionFormat
{
    enum E : uint32_t
    {
        RAWDATA = 0,
        JPEG = 2,
        J2K = 3,
        JPEG_LOSSLESS = 5,
        PNG = 8,
        BMP = 9
    };
};

/// How a store's pixels make a colour; other values occur.
struct KorColorSpace
{
    enum E : uint32_t
    {
        GrayscaleOrZelLUT = 1,
        PALETTE = 2,
        STANDARDRGB = 4,
        HSV = 5,
        ADOBERGB = 19
    };
};

/// The 64 bytes at the start of a store. Nothing of them is validated, the magic number included: the file's extension
/// and the checks on what follows are the only gates.
class CKorVolumeHeader
{
public:
    /// Reads it from the stream's position.
    void Read(CBinaryFileReader& file);

    uint32_t HeaderSize = 0;
    uint32_t VolumeVersion = 0;
    uint32_t DimensionCount = 0; ///< not used: the document tells how many elements a record has
    uint64_t AdditionalHeaderOffset = 0;
    uint32_t AdditionalHeaderSize = 0;
    int64_t FilePositionOfUsedChunks = 0;
    uint32_t NumberOfUsedChunks = 0;
    uint64_t FilePositionOfFreeChunks = 0;
    uint32_t NumberOfFreeChunks = 0;
};

/// The 172 bytes at AdditionalHeaderOffset: what the pixels are and how large a tile is.
class CKorAdditionalHeader
{
public:
    /// Reads it from the stream's position. A component count other than 1 and 3, an unknown compression and a
    /// component order against the rule are failed assertions; the fields before it are then set.
    void Read(CBinaryFileReader& file);

    KorCompressionFormat::E CompressionFormat() const { return _CompressionFormat; }
    KorColorSpace::E ColorSpace() const { return _ColorSpace; }
    uint32_t NumOfPixelComponents() const { return ComponentCount; } ///< 1 or 3
    uint32_t PixelComponentSizeInBytes() const;                      ///< 0xFFFFFFFF for an unknown component type
    /// An unknown component type ends the process.
    PixelComponentFormat::E GetPixelComponentFormat() const;
    /// -1: not told, 0: no colour, 1: blue first, 2: red first.
    int32_t GetComponentOrder() const { return m_componentOrder; }
    uint32_t TilePixelWidth() const { return m_tileX; }
    uint32_t TilePixelHeight() const { return m_tileY; }

    uint32_t MagicID = 0;
    uint32_t HeaderVersion = 0;
    uint32_t ComponentType = 0;
    uint32_t ComponentCount = 0;
    uint32_t CompressionQuality = 0;
    uint32_t m_tileZ = 0;
    std::array<uint32_t, 17> m_pixInfoHints{};
    std::array<uint32_t, 10> m_backgroundFillColor{};
    uint32_t m_pyramidUsage = 0;
    std::array<Byte, 17> m_profileID{}; ///< 16 bytes of an ICC profile's ID, and a zero

private:
    void SetComponentOrder(int32_t componentOrder);

    KorColorSpace::E _ColorSpace = KorColorSpace::GrayscaleOrZelLUT;
    KorCompressionFormat::E _CompressionFormat = KorCompressionFormat::RAWDATA;
    uint32_t m_tileX = 0;
    uint32_t m_tileY = 0;
    int32_t m_componentOrder = 0;
};

} // namespace Zel
