#include "Fuzzing/Mutators/Places.h"

#include <algorithm>

namespace Fuzzing
{

namespace
{

// Of the volume header at the start.
constexpr size_t OffsetOfAdditionalHeader = 16;
constexpr size_t OffsetOfList = 32;
constexpr size_t OffsetOfNumOfRecords = 40;

constexpr size_t MaxRecords = 256;
constexpr size_t MaxElements = 16;

void AddPlacesOfRecords(CPlaces& places, std::span<const uint8_t> bytes)
{
    uint64_t at = NumberAt(bytes, OffsetOfList, 8);
    const uint64_t count = std::min<uint64_t>(NumberAt(bytes, OffsetOfNumOfRecords, 4), MaxRecords);
    for (uint64_t n = 0; n < count && at < bytes.size(); ++n)
    {
        AddPlace(places, bytes.size(), {at, 4, PlaceKind::Count});
        const uint64_t numOfElements = NumberAt(bytes, at, 4);
        if (numOfElements > MaxElements)
            return;
        for (uint64_t element = 0; element < numOfElements; ++element)
            AddPlace(places, bytes.size(), {at + 4 + 4 * element, 4, PlaceKind::Number});
        at += 4 + 4 * numOfElements;
        AddPlace(places, bytes.size(), {at, 8, PlaceKind::Offset});
        AddPlace(places, bytes.size(), {at + 8, 4, PlaceKind::Count});
        at += 16;
    }
}

} // namespace

CPlaces PlacesOfStore(std::span<const uint8_t> bytes)
{
    CPlaces places;
    AddPlace(places, bytes.size(), {OffsetOfAdditionalHeader, 8, PlaceKind::Offset});
    AddPlace(places, bytes.size(), {OffsetOfList, 8, PlaceKind::Offset});
    AddPlace(places, bytes.size(), {OffsetOfNumOfRecords, 4, PlaceKind::Count});
    // Component type, components, colour space, compression, quality, tile width and height; the order of components.
    const uint64_t additional = NumberAt(bytes, OffsetOfAdditionalHeader, 8);
    if (additional < bytes.size())
        for (const size_t offset : {8u, 12u, 16u, 20u, 24u, 28u, 32u, 148u})
            AddPlace(places, bytes.size(), {additional + offset, 4, PlaceKind::Number});
    AddPlacesOfRecords(places, bytes);
    return places;
}

} // namespace Fuzzing
