#include "PlatformAbstractionLayer/Heap.h"

#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>

namespace
{

struct FreeBlock
{
    void operator()(void* block) const { std::free(block); }
};

struct CHeap
{
    std::mutex Mutex;
    std::map<void*, std::unique_ptr<void, FreeBlock>> Blocks;
};

} // namespace

void* HeapCreate(uint32_t, size_t, size_t)
{
    return std::make_unique<CHeap>().release(); // the handle owns it until HeapDestroy
}

void* HeapAlloc(void* heap, uint32_t flags, size_t size)
{
    if (!heap)
        return nullptr;
    const size_t least = size == 0 ? 1 : size; // a block of nothing has an address of its own, too
    std::unique_ptr<void, FreeBlock> block((flags & HEAP_ZERO_MEMORY) != 0 ? std::calloc(1, least)
                                                                           : std::malloc(least));
    void* const address = block.get();
    if (!address)
        return nullptr;
    auto& [mutex, blocks] = *static_cast<CHeap*>(heap);
    const std::lock_guard lock(mutex);
    blocks.emplace(address, std::move(block));
    return address;
}

int HeapFree(void* heap, uint32_t, void* block)
{
    if (!heap)
        return 0;
    auto& [mutex, blocks] = *static_cast<CHeap*>(heap);
    const std::lock_guard lock(mutex);
    return blocks.erase(block) != 0 ? 1 : 0;
}

int HeapDestroy(void* heap)
{
    const std::unique_ptr<CHeap> owner(static_cast<CHeap*>(heap));
    return owner ? 1 : 0;
}
