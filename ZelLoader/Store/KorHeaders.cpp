#include "ZelLoader/Store/KorHeaders.h"

#include "CommonUtil/Assertion.h"

#include <optional>

namespace Zel
{

namespace
{

struct CComponentType
{
    uint32_t Size;
    PixelComponentFormat::E Format;
};

std::optional<CComponentType> ComponentTypeOf(uint32_t number)
{
    switch (number)
    {
    case 1:
        return CComponentType{1, PixelComponentFormat::PixelComponentFormat_IntOfAnySize};
    case 2:
        return CComponentType{1, PixelComponentFormat::PixelComponentFormat_UintOfAnySize};
    case 3:
        return CComponentType{2, PixelComponentFormat::PixelComponentFormat_IntOfAnySize};
    case 4:
        return CComponentType{2, PixelComponentFormat::PixelComponentFormat_UintOfAnySize};
    case 5:
        return CComponentType{4, PixelComponentFormat::PixelComponentFormat_IntOfAnySize};
    case 6:
        return CComponentType{4, PixelComponentFormat::PixelComponentFormat_UintOfAnySize};
    case 7:
        return CComponentType{8, PixelComponentFormat::PixelComponentFormat_IntOfAnySize};
    case 8:
        return CComponentType{8, PixelComponentFormat::PixelComponentFormat_UintOfAnySize};
    case 9:
        return CComponentType{4, PixelComponentFormat::PixelComponentFormat_FloatOfAnySize};
    case 10:
        return CComponentType{8, PixelComponentFormat::PixelComponentFormat_FloatOfAnySize};
    default:
        return {};
    }
}

bool IsCompressionFormat(uint32_t number)
{
    switch (number)
    {
    case KorCompressionFormat::RAWDATA:
    case KorCompressionFormat::JPEG:
    case KorCompressionFormat::J2K:
    case KorCompressionFormat::JPEG_LOSSLESS:
    case KorCompressionFormat::PNG:
    case KorCompressionFormat::BMP:
        return true;
    default:
        return false;
    }
}

} // namespace

void CKorVolumeHeader::Read(CBinaryFileReader& file)
{
    file.ReadUInt32(); // magic number
    HeaderSize = file.ReadUInt32();
    VolumeVersion = file.ReadUInt32();
    DimensionCount = file.ReadUInt32();
    AdditionalHeaderOffset = file.ReadUInt64();
    AdditionalHeaderSize = file.ReadUInt32();
    file.ReadUInt32(); // unused
    FilePositionOfUsedChunks = file.ReadInt64();
    NumberOfUsedChunks = file.ReadUInt32();
    file.ReadUInt32(); // unused
    FilePositionOfFreeChunks = file.ReadUInt64();
    NumberOfFreeChunks = file.ReadUInt32();
    file.ReadUInt32(); // unused
}

void CKorAdditionalHeader::Read(CBinaryFileReader& file)
{
    MagicID = file.ReadUInt32();
    HeaderVersion = file.ReadUInt32();
    ComponentType = file.ReadUInt32();
    const uint32_t componentCount = file.ReadUInt32();
    ZEL_ASSERT(componentCount == 1 || componentCount == 3);
    ComponentCount = componentCount;
    _ColorSpace = static_cast<KorColorSpace::E>(file.ReadUInt32());
    const uint32_t compressionFormat = file.ReadUInt32();
    ZEL_ASSERT(IsCompressionFormat(compressionFormat));
    _CompressionFormat = static_cast<KorCompressionFormat::E>(compressionFormat);
    CompressionQuality = file.ReadUInt32();
    m_tileX = file.ReadUInt32();
    m_tileY = file.ReadUInt32();
    m_tileZ = file.ReadUInt32();
    for (uint32_t& hint : m_pixInfoHints)
        hint = file.ReadUInt32();
    for (uint32_t& color : m_backgroundFillColor)
        color = file.ReadUInt32();
    SetComponentOrder(file.ReadInt32());
    m_pyramidUsage = file.ReadUInt32();
    ZEL_ASSERT(file.ReadData(m_profileID.data(), static_cast<uint32_t>(m_profileID.size() - 1)));
}

void CKorAdditionalHeader::SetComponentOrder(int32_t componentOrder)
{
    ZEL_ASSERT(componentOrder >= -1 && componentOrder <= 2);
    // Raw pixels of several components do not tell their order themselves.
    const bool isOrderTold = componentOrder > 0;
    ZEL_ASSERT(isOrderTold || _CompressionFormat != KorCompressionFormat::RAWDATA || ComponentCount < 2);
    m_componentOrder = componentOrder;
}

uint32_t CKorAdditionalHeader::PixelComponentSizeInBytes() const
{
    const std::optional<CComponentType> componentType = ComponentTypeOf(ComponentType);
    return componentType ? componentType->Size : 0xFFFFFFFF;
}

PixelComponentFormat::E CKorAdditionalHeader::GetPixelComponentFormat() const
{
    const std::optional<CComponentType> componentType = ComponentTypeOf(ComponentType);
    if (!componentType)
        oldAbortCommonUtil();
    return componentType->Format;
}

} // namespace Zel
