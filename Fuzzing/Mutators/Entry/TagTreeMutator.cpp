// The custom mutator of targets whose input is made of tag trees.

#include "Fuzzing/Mutators/Mutate.h"
#include "Fuzzing/Mutators/TagTrees.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed)
{
    using namespace Fuzzing;
    return Mutate(data, size, maxSize, seed, {.Places = PlacesOfTagTrees, .Edit = EditTree}, LLVMFuzzerMutate);
}
