#include "PlatformAbstractionLayer/Heap.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

TEST(Heap, GivesAndTakesBlocks)
{
    void* const heap = HeapCreate(0, 0, 0);
    void* const block = HeapAlloc(heap, 0, 100);
    ASSERT_TRUE(block);
    std::fill_n(static_cast<char*>(block), 100, 'x');
    EXPECT_EQ(HeapFree(heap, 0, block), 1);
    EXPECT_EQ(HeapFree(heap, 0, block), 0);
    EXPECT_EQ(HeapDestroy(heap), 1);
}

TEST(Heap, FillsABlockWithZerosIfWanted)
{
    void* const heap = HeapCreate(0, 0, 0);
    const char* const block = static_cast<char*>(HeapAlloc(heap, HEAP_ZERO_MEMORY, 1000));
    EXPECT_EQ(std::count(block, block + 1000, '\0'), 1000);
    HeapDestroy(heap);
}

TEST(Heap, FreesItsBlocksAtItsEnd)
{
    void* const heap = HeapCreate(0, 0, 0);
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(HeapAlloc(heap, 0, 0));
    EXPECT_EQ(HeapDestroy(heap), 1); // the leak sanitizer knows whether it does
}

TEST(Heap, IsNotNull)
{
    EXPECT_EQ(HeapAlloc(nullptr, 0, 1), nullptr);
    EXPECT_EQ(HeapFree(nullptr, 0, nullptr), 0);
    EXPECT_EQ(HeapDestroy(nullptr), 0);
}

} // namespace
