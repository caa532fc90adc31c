#pragma once
#include "Fuzzing/Mutators/Places.h"

#include <functional>

namespace Fuzzing
{

/// libFuzzer's own mutation, which knows of no format: changes up to `maxSize` bytes at `data`, of which `size` hold;
/// the new size.
using CBlindMutation = std::function<size_t(uint8_t* data, size_t size, size_t maxSize)>;

/// What a mutator knows of a format.
struct CFormat
{
    CPlaces (*Places)(std::span<const uint8_t> bytes);
    bool (*Edit)(CBytes& bytes, CRandom& random) = nullptr; ///< larger changes; may be missing
};

/// A few changes at places of the format, or a blind one now and then. As libFuzzer asks for it: the input lies at
/// `data`, there is room for `maxSize`, and the answer is the new size.
size_t Mutate(uint8_t* data, size_t size, size_t maxSize, unsigned seed, const CFormat& format,
              const CBlindMutation& blind);

} // namespace Fuzzing
