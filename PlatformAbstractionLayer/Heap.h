#pragma once
#include <cstddef>
#include <cstdint>

// Heaps over that of the C library: a heap knows its blocks and frees the rest of them when it is destroyed.

constexpr uint32_t HEAP_ZERO_MEMORY = 8;

/// A new heap. The options and sizes have no effect; it is as large as the memory.
void* HeapCreate(uint32_t options, size_t initialSize, size_t maximumSize);
/// A block of the heap; null when there is no memory, or no heap. HEAP_ZERO_MEMORY fills it with zeros.
void* HeapAlloc(void* heap, uint32_t flags, size_t size);
/// Frees a block: 1; 0 when the heap has no such block.
int HeapFree(void* heap, uint32_t flags, void* block);
/// Frees a heap with all its blocks: 1; 0 for null.
int HeapDestroy(void* heap);
