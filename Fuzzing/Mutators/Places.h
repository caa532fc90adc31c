#pragma once
#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

namespace Fuzzing
{

using CBytes = std::vector<uint8_t>;
using CRandom = std::minstd_rand;

/// A number from 0 to `limit` - 1; 0 when that is 0.
size_t Below(CRandom& random, size_t limit);

/// What stands at a place, which decides what it is changed to.
struct PlaceKind
{
    enum E
    {
        Number,
        Offset,
        Count,
        Tag,  ///< the name of something: another one of the same input may stand there
        Code, ///< of a type, or flags
        Bytes ///< a text or an array
    };
};

/// A part of an input that means something.
struct CPlace
{
    size_t Offset = 0;
    size_t Size = 0;
    PlaceKind::E Kind = PlaceKind::Number;
};

using CPlaces = std::vector<CPlace>;

// The places of an input that may be damaged in any way: what is found lies within it.

/// Of tag trees, wherever in the input their volumes lie.
CPlaces PlacesOfTagTrees(std::span<const uint8_t> bytes);
/// Of a binary tile store.
CPlaces PlacesOfStore(std::span<const uint8_t> bytes);
/// Of the directories of a TIFF.
CPlaces PlacesOfTiff(std::span<const uint8_t> bytes);

/// The little-endian number of up to 8 bytes at an offset; 0 when it does not lie in the bytes.
uint64_t NumberAt(std::span<const uint8_t> bytes, size_t offset, size_t size);
/// Writes it; false when it would not lie in the bytes.
bool SetNumberAt(std::span<uint8_t> bytes, size_t offset, size_t size, uint64_t number);

/// Adds a place if it lies in `sizeOfInput` bytes.
void AddPlace(CPlaces& places, size_t sizeOfInput, CPlace place);

/// Gives a place of at most 8 bytes another value, of those that readers trip over.
void ChangePlace(CBytes& bytes, const CPlaces& places, const CPlace& place, CRandom& random);

} // namespace Fuzzing
