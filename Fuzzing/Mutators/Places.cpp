#include "Fuzzing/Mutators/Places.h"

#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace Fuzzing
{

namespace
{

uint64_t AnyOf(CRandom& random, std::span<const uint64_t> numbers)
{
    return numbers[Below(random, numbers.size())];
}

uint64_t NearBy(uint64_t number, CRandom& random)
{
    return number + Below(random, 33) - 16;
}

uint64_t OddNumber(size_t size, uint64_t former, CRandom& random)
{
    static const std::array<uint64_t, 14> Integers = {0,      1,      2,      3,   ~uint64_t{0}, 0x7FFFFFFF, 0x80000000,
                                                      0xFFFF, 0x8000, 0x7FFF, 255, 65536,        0x10000000, 1000};
    static const std::array<uint64_t, 8> Doubles = {
        std::bit_cast<uint64_t>(std::nan("")), std::bit_cast<uint64_t>(std::numeric_limits<double>::infinity()),
        std::bit_cast<uint64_t>(-1.0),         std::bit_cast<uint64_t>(-0.0),
        std::bit_cast<uint64_t>(1e308),        std::bit_cast<uint64_t>(1e10),
        std::bit_cast<uint64_t>(0.5),          std::bit_cast<uint64_t>(1e-300)};
    switch (Below(random, 4))
    {
    case 0:
        return NearBy(former, random);
    case 1:
        return former ^ (uint64_t{1} << Below(random, 8 * size));
    case 2:
        return size == 8 ? AnyOf(random, Doubles) : uint64_t{1} << Below(random, 8 * size);
    default:
        return AnyOf(random, Integers);
    }
}

uint64_t OddOffset(uint64_t sizeOfInput, const CPlaces& places, const CPlace& place, uint64_t former, CRandom& random)
{
    switch (Below(random, 6))
    {
    case 0:
        return places[Below(random, places.size())].Offset;
    case 1: // counted from somewhere before this place
        return places[Below(random, places.size())].Offset - places[Below(random, places.size())].Offset;
    case 2:
        return NearBy(sizeOfInput, random);
    case 3:
        return NearBy(place.Offset, random);
    case 4:
        return Below(random, 2) == 0 ? 0 : uint64_t{0} - Below(random, 64);
    default:
        return NearBy(former, random);
    }
}

/// What stands at another place of that kind and size; the number itself when there is none.
uint64_t SameAsAnother(const CBytes& bytes, const CPlaces& places, const CPlace& place, CRandom& random)
{
    for (int attempt = 0; attempt < 16; ++attempt)
    {
        const CPlace& other = places[Below(random, places.size())];
        if (other.Kind == place.Kind && other.Size == place.Size)
            return NumberAt(bytes, other.Offset, other.Size);
    }
    return NumberAt(bytes, place.Offset, place.Size);
}

} // namespace

size_t Below(CRandom& random, size_t limit)
{
    return limit == 0 ? 0 : random() % limit;
}

uint64_t NumberAt(std::span<const uint8_t> bytes, size_t offset, size_t size)
{
    if (offset > bytes.size() || size > bytes.size() - offset)
        return 0;
    uint64_t number = 0;
    for (size_t i = 0; i < size; ++i)
        number |= uint64_t{bytes[offset + i]} << (8 * i);
    return number;
}

bool SetNumberAt(std::span<uint8_t> bytes, size_t offset, size_t size, uint64_t number)
{
    if (offset > bytes.size() || size > bytes.size() - offset)
        return false;
    for (size_t i = 0; i < size; ++i)
        bytes[offset + i] = static_cast<uint8_t>(number >> (8 * i));
    return true;
}

void AddPlace(CPlaces& places, size_t sizeOfInput, CPlace place)
{
    if (place.Size > 0 && place.Offset <= sizeOfInput && place.Size <= sizeOfInput - place.Offset)
        places.push_back(place);
}

void ChangePlace(CBytes& bytes, const CPlaces& places, const CPlace& place, CRandom& random)
{
    const uint64_t former = NumberAt(bytes, place.Offset, place.Size);
    uint64_t number = former;
    switch (place.Kind)
    {
    case PlaceKind::Offset:
        number = OddOffset(bytes.size(), places, place, former, random);
        break;
    case PlaceKind::Tag:
    case PlaceKind::Code:
        number =
            Below(random, 3) == 0 ? OddNumber(place.Size, former, random) : SameAsAnother(bytes, places, place, random);
        break;
    case PlaceKind::Count:
        number = Below(random, 2) == 0 ? NearBy(former, random) : OddNumber(place.Size, former, random);
        break;
    case PlaceKind::Number:
    case PlaceKind::Bytes:
        number = OddNumber(place.Size, former, random);
        break;
    }
    SetNumberAt(bytes, place.Offset, place.Size, number);
}

} // namespace Fuzzing
