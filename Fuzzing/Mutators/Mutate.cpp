#include "Fuzzing/Mutators/Mutate.h"

#include <algorithm>

namespace Fuzzing
{

namespace
{

/// Lets the blind mutation at a part of the input, which keeps its size.
void ChangeBlindly(CBytes& bytes, const CPlace& place, const CBlindMutation& blind)
{
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(place.Offset);
    CBytes part(begin, begin + static_cast<std::ptrdiff_t>(place.Size));
    blind(part.data(), part.size(), part.size());
    std::copy(part.begin(), part.end(), begin);
}

void ChangeOnce(CBytes& bytes, const CFormat& format, CRandom& random, const CBlindMutation& blind)
{
    if (format.Edit && Below(random, 4) == 0 && format.Edit(bytes, random))
        return;
    const CPlaces places = format.Places(bytes);
    if (places.empty())
        return;
    const CPlace& place = places[Below(random, places.size())];
    if (place.Size > 8 || (place.Kind == PlaceKind::Bytes && Below(random, 2) == 0))
        ChangeBlindly(bytes, place, blind);
    else
        ChangePlace(bytes, places, place, random);
}

} // namespace

size_t Mutate(uint8_t* data, size_t size, size_t maxSize, unsigned seed, const CFormat& format,
              const CBlindMutation& blind)
{
    CRandom random(seed);
    if (Below(random, 8) == 0)
        return blind(data, size, maxSize);
    CBytes bytes(data, data + size);
    const size_t numOfChanges = 1 + Below(random, 3);
    for (size_t n = 0; n < numOfChanges; ++n)
        ChangeOnce(bytes, format, random, blind);
    const size_t newSize = std::min(bytes.size(), maxSize);
    std::copy_n(bytes.begin(), newSize, data);
    return newSize;
}

} // namespace Fuzzing
