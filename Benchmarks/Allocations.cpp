// Replaces the operators of the whole program, so that what allocates can be told. Alone in its file: where a compiler
// sees them together with their callers, it takes the pair for a mistake.

#include "Benchmarks/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

std::atomic<uint64_t> Count = 0;

} // namespace

uint64_t Benchmarks::NumOfAllocations()
{
    return Count;
}

void* operator new(size_t size)
{
    Count.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, size_t) noexcept
{
    std::free(memory);
}
