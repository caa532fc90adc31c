#pragma once
#include "CommonUtil/Lazy.h"

#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <vector>

namespace CIA
{

class CMultiDimImage;

/// How pixel values make a colour. -1: not known.
struct ColorSpaceType
{
    enum E : int32_t
    {
        Unknown = -1,
        GrayScale = 1,
        StandardRgb = 2,
        Palette = 3,
        YCbCr = 6,
        Hsv = 11,
        AdobeRgb = 12,
        Bgr = 13
    };
};

struct PixelComponentFormat
{
    enum E : int32_t
    {
        NotYetKnown = -1,
        PixelComponentFormat_UintOfAnySize = 1,
        PixelComponentFormat_IntOfAnySize = 2,
        PixelComponentFormat_FloatOfAnySize = 3,
        PixelComponentFormat_Unknown = 9999
    };
};
/// Writes the enumerator's name; a number that is none ends the process.
std::ostream& operator<<(std::ostream& stream, PixelComponentFormat::E format);

/// How the bytes of a tile are packed. -1: not known.
struct PixelFrameCompressionType
{
    enum E : int32_t
    {
        Unknown = -1,
        None = 0,
        Jpeg = 1,
        J2k = 2,
        Png = 3,
        Bmp = 4,
        Jpeg7 = 5 ///< JPEG whose tables stand apart from the tile
    };
};

/// One entry of a colour look-up table.
struct CColor
{
    uint32_t RedComponent = 0;
    uint32_t GreenComponent = 0;
    uint32_t BlueComponent = 0;
    uint32_t AlphaComponent = 0;
};

class CPixelFrameFormat;

/// What the pixels of a channel are made of. Every property is worked out when first asked for and checked against the
/// others; one that cannot be worked out stays at its start value (0xFFFFFFFF or -1) and is tried again.
class CPixelFormat
{
public:
    explicit CPixelFormat(CPixelFrameFormat& parent) : _ParentPixelFrameFormat(parent) {}
    virtual ~CPixelFormat() = default;
    CPixelFormat(const CPixelFormat&) = delete;
    CPixelFormat& operator=(const CPixelFormat&) = delete;

    CPixelFrameFormat& ParentPixelFrameFormat() const { return _ParentPixelFrameFormat; }
    PixelComponentFormat::E ComponentFormat();
    uint32_t NumOfBitsPerPixelComponent();
    ColorSpaceType::E ColorSpace();
    uint32_t NumOfPixelComponents();
    /// Whole bytes of one pixel, all its components together.
    uint32_t NumOfBytes();
    /// How many bits the largest pixel value takes. 0xFFFFFFFF is also the answer for compressed pixels without
    /// display limits.
    uint32_t MaxNumOfUsedBits();
    /// Empty when the channel has none.
    const std::vector<CColor>& ColorLookupTable();

protected:
    virtual bool MaxNumOfUsedBits_init(uint32_t& varToInit) = 0;
    virtual bool ColorSpace_init(ColorSpaceType::E& varToInit) = 0;
    virtual bool ColorLookupTable_init(std::vector<CColor>& varToInit) = 0;
    virtual bool NumOfBitsPerPixelComponent_init(uint32_t& varToInit) = 0;
    virtual bool NumOfPixelComponents_init(uint32_t& varToInit) = 0;
    virtual bool ComponentFormat_init(PixelComponentFormat::E& varToInit) = 0;

private:
    bool NumOfBytes_init(uint32_t& varToInit);
    void ValidateNumOfPixelComponentsVsColorSpace();
    void ValidateNumOfBytesVsMaxNumOfUsedBits(uint32_t maxNumOfUsedBits);

    uint32_t _NumOfBitsPerPixelComponent = 0xFFFFFFFF;
    uint32_t _NumOfPixelComponents = 0xFFFFFFFF;
    uint32_t _NumOfBytes = 0xFFFFFFFF;
    uint32_t _MaxNumOfUsedBits = 0xFFFFFFFF;
    CPixelFrameFormat& _ParentPixelFrameFormat;
    ColorSpaceType::E _ColorSpace = ColorSpaceType::Unknown;
    PixelComponentFormat::E _ComponentFormat = PixelComponentFormat::NotYetKnown;
    std::vector<CColor> _ColorLookupTable;
};

/// A kind of frame; here: a channel of an image. It owns its pixel format.
class CPixelFrameFormat
{
public:
    explicit CPixelFrameFormat(CMultiDimImage& image) : _ParentMultiDimImg(image) {}
    virtual ~CPixelFrameFormat() = default;
    CPixelFrameFormat(const CPixelFrameFormat&) = delete;
    CPixelFrameFormat& operator=(const CPixelFrameFormat&) = delete;

    CMultiDimImage& ParentMultiDimImg() const { return _ParentMultiDimImg; }
    uint32_t ID()
    {
        return _ID.Get([this](uint32_t& varToInit) { return ID_init(varToInit); });
    }
    /// Lives as long as the document; null on failure.
    const wchar_t* Name()
    {
        return _Name.Get([this](const wchar_t*& varToInit) { return Name_init(varToInit); });
    }
    PixelFrameCompressionType::E CompressionType()
    {
        return _CompressionType.Get([this](PixelFrameCompressionType::E& varToInit)
                                    { return CompressionType_init(varToInit); });
    }
    uint32_t CompressionQuality()
    {
        return _CompressionQuality.Get([this](uint32_t& varToInit) { return CompressionQuality_init(varToInit); });
    }
    /// Null, with a log line, on failure.
    CPixelFormat* PixelFormat();

protected:
    virtual bool ID_init(uint32_t& varToInit) = 0;
    virtual bool Name_init(const wchar_t*& varToInit) = 0;
    virtual bool PixelFormat_init(std::unique_ptr<CPixelFormat>& varToInit) = 0;
    virtual bool CompressionType_init(PixelFrameCompressionType::E& varToInit) = 0;
    virtual bool CompressionQuality_init(uint32_t& varToInit) = 0;

private:
    CommonUtil::CLazy<uint32_t, 0xFFFFFFFFu> _ID;
    CommonUtil::CLazy<const wchar_t*, nullptr> _Name;
    CMultiDimImage& _ParentMultiDimImg;
    std::unique_ptr<CPixelFormat> _PixelFormat;
    CommonUtil::CLazy<PixelFrameCompressionType::E, PixelFrameCompressionType::Unknown> _CompressionType;
    CommonUtil::CLazy<uint32_t, 0xFFFFFFFFu> _CompressionQuality;
};

/// The channels of an image by ID; the IDs are consecutive from 0.
using CChannels = std::map<uint32_t, std::unique_ptr<CPixelFrameFormat>>;

} // namespace CIA
