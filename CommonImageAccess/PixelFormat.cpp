#include "CommonImageAccess/PixelFormat.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"

#include <ostream>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr uint32_t UnknownNumber = 0xFFFFFFFF;

/// Fills a field that holds its start value by `init`; puts the start value back when that fails or throws, so that the
/// next call tries again. The field is written before `validate` runs, which may come back here.
template <typename T, typename Init, typename Validate>
T GetValidated(T& field, T startValue, Init init, Validate validate)
{
    if (field != startValue)
        return field;
    T value = startValue;
    if (!init(value))
        return startValue;
    field = value;
    try
    {
        validate();
    }
    catch (...)
    {
        field = startValue;
        throw;
    }
    return field;
}

uint32_t NumOfComponentsOf(ColorSpaceType::E colorSpace)
{
    switch (colorSpace)
    {
    case ColorSpaceType::GrayScale:
    case ColorSpaceType::Palette:
        return 1;
    case ColorSpaceType::StandardRgb:
    case ColorSpaceType::YCbCr:
    case ColorSpaceType::Hsv:
    case ColorSpaceType::AdobeRgb:
    case ColorSpaceType::Bgr:
        return 3;
    default:
        oldAbortCommonUtil();
    }
}

bool IsColorSpace(ColorSpaceType::E colorSpace)
{
    switch (colorSpace)
    {
    case ColorSpaceType::GrayScale:
    case ColorSpaceType::StandardRgb:
    case ColorSpaceType::Palette:
    case ColorSpaceType::YCbCr:
    case ColorSpaceType::Hsv:
    case ColorSpaceType::AdobeRgb:
    case ColorSpaceType::Bgr:
        return true;
    default:
        return false;
    }
}

} // namespace

std::ostream& operator<<(std::ostream& stream, PixelComponentFormat::E format)
{
    switch (format)
    {
    case PixelComponentFormat::PixelComponentFormat_UintOfAnySize:
        return stream << "PixelComponentFormat_UintOfAnySize";
    case PixelComponentFormat::PixelComponentFormat_IntOfAnySize:
        return stream << "PixelComponentFormat_IntOfAnySize";
    case PixelComponentFormat::PixelComponentFormat_FloatOfAnySize:
        return stream << "PixelComponentFormat_FloatOfAnySize";
    case PixelComponentFormat::PixelComponentFormat_Unknown:
        return stream << "PixelComponentFormat_Unknown";
    default:
        oldAbortCommonUtil();
    }
}

PixelComponentFormat::E CPixelFormat::ComponentFormat()
{
    return GetValidated(
        _ComponentFormat, PixelComponentFormat::NotYetKnown,
        [this](PixelComponentFormat::E& varToInit) { return ComponentFormat_init(varToInit); }, [] {});
}

uint32_t CPixelFormat::NumOfBitsPerPixelComponent()
{
    return GetValidated(
        _NumOfBitsPerPixelComponent, UnknownNumber,
        [this](uint32_t& varToInit) { return NumOfBitsPerPixelComponent_init(varToInit); }, [] {});
}

ColorSpaceType::E CPixelFormat::ColorSpace()
{
    return GetValidated(
        _ColorSpace, ColorSpaceType::Unknown,
        [this](ColorSpaceType::E& varToInit) { return ColorSpace_init(varToInit); },
        [this]
        {
            ZEL_ASSERT(IsColorSpace(_ColorSpace));
            ValidateNumOfPixelComponentsVsColorSpace();
        });
}

uint32_t CPixelFormat::NumOfPixelComponents()
{
    return GetValidated(
        _NumOfPixelComponents, UnknownNumber,
        [this](uint32_t& varToInit) { return NumOfPixelComponents_init(varToInit); },
        [this] { ValidateNumOfPixelComponentsVsColorSpace(); });
}

uint32_t CPixelFormat::NumOfBytes()
{
    return GetValidated(
        _NumOfBytes, UnknownNumber, [this](uint32_t& varToInit) { return NumOfBytes_init(varToInit); },
        [this] { ValidateNumOfBytesVsMaxNumOfUsedBits(_MaxNumOfUsedBits); });
}

uint32_t CPixelFormat::MaxNumOfUsedBits()
{
    return GetValidated(
        _MaxNumOfUsedBits, UnknownNumber, [this](uint32_t& varToInit) { return MaxNumOfUsedBits_init(varToInit); },
        [this] { ValidateNumOfBytesVsMaxNumOfUsedBits(_MaxNumOfUsedBits); });
}

const std::vector<CColor>& CPixelFormat::ColorLookupTable()
{
    if (_ColorLookupTable.empty())
    {
        std::vector<CColor> table;
        if (ColorLookupTable_init(table))
            _ColorLookupTable = std::move(table);
    }
    return _ColorLookupTable;
}

void CPixelFormat::ValidateNumOfPixelComponentsVsColorSpace()
{
    const ColorSpaceType::E colorSpace = ColorSpace();
    ZEL_ASSERT(NumOfPixelComponents() == NumOfComponentsOf(colorSpace));
}

bool CPixelFormat::NumOfBytes_init(uint32_t& varToInit)
{
    const uint64_t numOfBits = uint64_t{NumOfBitsPerPixelComponent()} * NumOfPixelComponents();
    if (numOfBits >= 0xFFFFFFFE)
        return false;
    varToInit = static_cast<uint32_t>((numOfBits + 7) / 8);
    return true;
}

void CPixelFormat::ValidateNumOfBytesVsMaxNumOfUsedBits(uint32_t maxNumOfUsedBits)
{
    if (maxNumOfUsedBits != UnknownNumber)
        ZEL_ASSERT(NumOfBytes() >= maxNumOfUsedBits / 8);
}

CPixelFormat* CPixelFrameFormat::PixelFormat()
{
    if (!_PixelFormat)
    {
        std::unique_ptr<CPixelFormat> pixelFormat;
        if (PixelFormat_init(pixelFormat))
            _PixelFormat = std::move(pixelFormat);
        else
            ZEL_LOG("Error, returning NULL");
    }
    return _PixelFormat.get();
}

} // namespace CIA
