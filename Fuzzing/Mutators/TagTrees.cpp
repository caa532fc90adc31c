#include "Fuzzing/Mutators/TagTrees.h"

#include <algorithm>

namespace Fuzzing
{

namespace
{

constexpr uint32_t StartOfVolumeHeader = 0x52510018; // 24 and the letters QR
constexpr size_t SizeOfVolumeHeader = 24;
constexpr size_t OffsetOfFirstChild = 8;
constexpr size_t OffsetOfCount = 16;

constexpr uint32_t ExtraTag = 1u << 27;
constexpr uint32_t Extended = 1u << 28;
constexpr uint32_t Inline = 1u << 30;

constexpr size_t MaxFieldsOfVolume = 64;
constexpr size_t MaxVolumes = 512;
constexpr size_t MaxSizeOfCopy = 4096;

CTreeField FieldAt(std::span<const uint8_t> bytes, size_t offset)
{
    CTreeField field{.Offset = offset, .Flags = static_cast<uint32_t>(NumberAt(bytes, offset, 4))};
    const bool isInline = field.Flags & Inline;
    field.OffsetOfValue = offset + (isInline ? 12u : 16u) + (field.Flags & ExtraTag ? 4u : 0u);
    field.IsVolume = (field.Flags & Extended) && (field.Flags & 0xFFFFFF) <= 2;
    field.SizeOfValue = isInline ? 4 : static_cast<size_t>(NumberAt(bytes, offset + 12, 4));
    return field;
}

CTreeVolume VolumeAt(std::span<const uint8_t> bytes, size_t offset)
{
    CTreeVolume volume{.Offset = offset, .Fields = {}};
    const uint64_t count =
        std::min<uint64_t>(NumberAt(bytes, offset + OffsetOfCount, 4) & 0xFFFFFFF, MaxFieldsOfVolume);
    uint64_t next = NumberAt(bytes, offset + OffsetOfFirstChild, 8);
    while (volume.Fields.size() < count && next != 0 && next < bytes.size() && offset + next + 16 <= bytes.size())
    {
        volume.Fields.push_back(FieldAt(bytes, offset + next));
        next = NumberAt(bytes, offset + next + 8, 4);
    }
    return volume;
}

void AddPlacesOfField(CPlaces& places, std::span<const uint8_t> bytes, const CTreeField& field)
{
    const size_t size = bytes.size();
    AddPlace(places, size, {field.Offset, 4, PlaceKind::Code});
    AddPlace(places, size, {field.Offset + 4, 4, PlaceKind::Tag});
    AddPlace(places, size, {field.Offset + 8, 4, PlaceKind::Offset});
    if (field.Flags & ExtraTag)
        AddPlace(places, size, {field.OffsetOfValue - 4, 4, PlaceKind::Number});
    if (field.IsVolume)
        return;
    if (!(field.Flags & Inline))
        AddPlace(places, size, {field.Offset + 12, 4, PlaceKind::Count});
    if (field.SizeOfValue == 0 || field.SizeOfValue > size)
        return;
    AddPlace(places, size, {field.OffsetOfValue, field.SizeOfValue, PlaceKind::Bytes});
    const size_t sizeOfNumber = field.SizeOfValue % 8 == 0 ? 8 : 4;
    for (size_t at = 0; at + sizeOfNumber <= std::min<size_t>(field.SizeOfValue, 64); at += sizeOfNumber)
        AddPlace(places, size, {field.OffsetOfValue + at, sizeOfNumber, PlaceKind::Number});
}

/// How many bytes a field takes with all that is below it.
size_t ExtentOf(std::span<const uint8_t> bytes, const CTreeField& field, int depth = 0)
{
    size_t end = field.OffsetOfValue + field.SizeOfValue;
    if (field.IsVolume)
    {
        end = field.OffsetOfValue + SizeOfVolumeHeader;
        if (depth < 16)
            for (const CTreeField& child : VolumeAt(bytes, field.OffsetOfValue).Fields)
                end = std::max(end, child.Offset + ExtentOf(bytes, child, depth + 1));
    }
    return end - field.Offset;
}

/// The place that points at a field of the volume: the volume's header, or the field before it.
CPlace LinkTo(const CTreeVolume& volume, size_t n)
{
    if (n == 0)
        return {volume.Offset + OffsetOfFirstChild, 8, PlaceKind::Offset};
    return {volume.Fields[n - 1].Offset + 8, 4, PlaceKind::Offset};
}

void AddToCount(CBytes& bytes, const CTreeVolume& volume, int32_t difference)
{
    const size_t at = volume.Offset + OffsetOfCount;
    SetNumberAt(bytes, at, 4, NumberAt(bytes, at, 4) + static_cast<uint64_t>(int64_t{difference}));
}

void Drop(CBytes& bytes, const CTreeVolume& volume, size_t n)
{
    const CPlace link = LinkTo(volume, n);
    SetNumberAt(bytes, link.Offset, link.Size, NumberAt(bytes, volume.Fields[n].Offset + 8, 4));
    AddToCount(bytes, volume, -1);
}

/// Puts a copy of a field behind the nth one of a volume; its bytes go to the end of the input.
void Repeat(CBytes& bytes, const CTreeField& field, const CTreeVolume& volume, size_t n)
{
    const size_t size = ExtentOf(bytes, field);
    if (size > MaxSizeOfCopy || field.Offset > bytes.size() || size > bytes.size() - field.Offset)
        return;
    const size_t at = bytes.size();
    const CBytes copy(bytes.begin() + static_cast<std::ptrdiff_t>(field.Offset),
                      bytes.begin() + static_cast<std::ptrdiff_t>(field.Offset + size));
    bytes.insert(bytes.end(), copy.begin(), copy.end());
    const size_t link = volume.Fields[n].Offset + 8;
    SetNumberAt(bytes, at + 8, 4, NumberAt(bytes, link, 4));
    SetNumberAt(bytes, link, 4, at - volume.Offset);
    AddToCount(bytes, volume, 1);
}

} // namespace

std::vector<CTreeVolume> VolumesOf(std::span<const uint8_t> bytes)
{
    std::vector<CTreeVolume> volumes;
    for (size_t at = 0; at + SizeOfVolumeHeader <= bytes.size() && volumes.size() < MaxVolumes; ++at)
        if (bytes[at] == 24 && NumberAt(bytes, at, 4) == StartOfVolumeHeader)
            volumes.push_back(VolumeAt(bytes, at));
    return volumes;
}

CPlaces PlacesOfTagTrees(std::span<const uint8_t> bytes)
{
    CPlaces places;
    for (const CTreeVolume& volume : VolumesOf(bytes))
    {
        AddPlace(places, bytes.size(), {volume.Offset, 4, PlaceKind::Code});
        AddPlace(places, bytes.size(), {volume.Offset + OffsetOfFirstChild, 8, PlaceKind::Offset});
        AddPlace(places, bytes.size(), {volume.Offset + OffsetOfCount, 4, PlaceKind::Count});
        for (const CTreeField& field : volume.Fields)
            AddPlacesOfField(places, bytes, field);
    }
    return places;
}

bool EditTree(CBytes& bytes, CRandom& random)
{
    std::vector<CTreeVolume> volumes = VolumesOf(bytes);
    std::erase_if(volumes, [](const CTreeVolume& volume) { return volume.Fields.empty(); });
    if (volumes.empty())
        return false;
    const CTreeVolume& volume = volumes[Below(random, volumes.size())];
    const size_t n = Below(random, volume.Fields.size());
    const CTreeVolume& other = volumes[Below(random, volumes.size())];
    const CTreeField& otherField = other.Fields[Below(random, other.Fields.size())];
    switch (Below(random, 5))
    {
    case 0:
        Drop(bytes, volume, n);
        break;
    case 1: // in its own volume, where a second one of a kind means something
        Repeat(bytes, volume.Fields[n], volume, n);
        break;
    case 2:
        Repeat(bytes, otherField, volume, n);
        break;
    case 3:
        SetNumberAt(bytes, volume.Fields[n].Offset + 4, 4, NumberAt(bytes, otherField.Offset + 4, 4));
        break;
    default:
        SetNumberAt(bytes, LinkTo(volume, n).Offset, 4, otherField.Offset - volume.Offset);
        break;
    }
    return true;
}

} // namespace Fuzzing
