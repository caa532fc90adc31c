#pragma once
#include "Fuzzing/Mutators/Places.h"

namespace Fuzzing
{

/// A field of a volume, as its header says.
struct CTreeField
{
    size_t Offset = 0;
    uint32_t Flags = 0;
    size_t OffsetOfValue = 0;
    size_t SizeOfValue = 0;
    bool IsVolume = false;
};

/// A volume, and the chain of its fields as far as it can be followed.
struct CTreeVolume
{
    size_t Offset = 0;
    std::vector<CTreeField> Fields;
};

/// Every volume of the input, found by the letters that its header begins with, so that broken links hide nothing.
std::vector<CTreeVolume> VolumesOf(std::span<const uint8_t> bytes);

/// Changes how a tree hangs together: drops a field, repeats one somewhere else, lets a chain go another way. What it
/// leaves is sound if the input was. False when there is no tree.
bool EditTree(CBytes& bytes, CRandom& random);

} // namespace Fuzzing
