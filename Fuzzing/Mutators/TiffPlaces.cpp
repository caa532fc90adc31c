#include "Fuzzing/Mutators/Places.h"

#include <algorithm>
#include <array>

namespace Fuzzing
{

namespace
{

/// How wide numbers are in the two kinds of TIFF.
struct CTiffShape
{
    size_t OffsetOfFirstDirectory;
    size_t SizeOfOffset;
    size_t SizeOfNumOfEntries;
};

constexpr CTiffShape Classic = {4, 4, 2};
constexpr CTiffShape Big = {8, 8, 8};
constexpr uint64_t NumberOfBigTiff = 43;

constexpr size_t MaxDirectories = 32;
constexpr uint64_t MaxEntries = 64;
constexpr uint64_t MaxNumbers = 16;

size_t SizeOfType(uint64_t type)
{
    static constexpr std::array<size_t, 19> Sizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4, 0, 0, 8, 8, 8};
    return type < Sizes.size() ? Sizes[type] : 0;
}

void AddPlacesOfEntry(CPlaces& places, std::span<const uint8_t> bytes, size_t at, const CTiffShape& shape)
{
    const size_t size = bytes.size();
    AddPlace(places, size, {at, 2, PlaceKind::Tag});
    AddPlace(places, size, {at + 2, 2, PlaceKind::Code});
    AddPlace(places, size, {at + 4, shape.SizeOfOffset, PlaceKind::Count});
    const size_t sizeOfNumber = SizeOfType(NumberAt(bytes, at + 2, 2));
    const uint64_t count = NumberAt(bytes, at + 4, shape.SizeOfOffset);
    uint64_t value = at + 4 + shape.SizeOfOffset;
    if (sizeOfNumber == 0 || count > size)
        return;
    if (count * sizeOfNumber > shape.SizeOfOffset)
    {
        AddPlace(places, size, {value, shape.SizeOfOffset, PlaceKind::Offset});
        value = NumberAt(bytes, value, shape.SizeOfOffset);
        if (value >= size)
            return;
        AddPlace(places, size, {value, count * sizeOfNumber, PlaceKind::Bytes});
    }
    for (uint64_t n = 0; n < std::min(count, MaxNumbers); ++n)
        AddPlace(places, size, {value + n * sizeOfNumber, sizeOfNumber, PlaceKind::Number});
}

} // namespace

CPlaces PlacesOfTiff(std::span<const uint8_t> bytes)
{
    const CTiffShape& shape = NumberAt(bytes, 2, 2) == NumberOfBigTiff ? Big : Classic;
    const size_t sizeOfEntry = 4 + 2 * shape.SizeOfOffset;
    CPlaces places;
    size_t link = shape.OffsetOfFirstDirectory;
    for (size_t n = 0; n < MaxDirectories; ++n)
    {
        AddPlace(places, bytes.size(), {link, shape.SizeOfOffset, PlaceKind::Offset});
        const uint64_t directory = NumberAt(bytes, link, shape.SizeOfOffset);
        if (directory == 0 || directory >= bytes.size())
            break;
        AddPlace(places, bytes.size(), {directory, shape.SizeOfNumOfEntries, PlaceKind::Count});
        const uint64_t numOfEntries = std::min(NumberAt(bytes, directory, shape.SizeOfNumOfEntries), MaxEntries);
        for (uint64_t entry = 0; entry < numOfEntries; ++entry)
            AddPlacesOfEntry(places, bytes, directory + shape.SizeOfNumOfEntries + entry * sizeOfEntry, shape);
        link = directory + shape.SizeOfNumOfEntries + numOfEntries * sizeOfEntry;
    }
    return places;
}

} // namespace Fuzzing
