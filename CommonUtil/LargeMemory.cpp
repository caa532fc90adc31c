#include "CommonUtil/LargeMemory.h"

#include "CommonUtil/ErrnoKeeper.h"

#include <cstdint>
#include <sys/mman.h>

namespace CommonUtil
{

namespace
{

constexpr uintptr_t SizeOfLargePage = uintptr_t{1} << 21;

} // namespace

void ExpectToFill(void* memory, size_t size)
{
    const CErrnoKeeper errnoKeeper;
    const auto begin = reinterpret_cast<uintptr_t>(memory);
    const uintptr_t firstPage = (begin + SizeOfLargePage - 1) & ~(SizeOfLargePage - 1);
    const uintptr_t end = (begin + size) & ~(SizeOfLargePage - 1);
    if (firstPage < end)
        madvise(reinterpret_cast<void*>(firstPage), end - firstPage, MADV_HUGEPAGE);
}

} // namespace CommonUtil
