// The program's allocator: that of the C library, with a count and failures on demand. What is defined here replaces
// the functions of these names in the whole program, shared libraries included.

#include "Fuzzing/FailingMachine/Allocations.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <link.h>
#include <new>

namespace Fuzzing
{

namespace
{

constinit CCountedCalls allocations;
constinit int64_t numOfLiveBlocks = 0;

/// A library, and where its code lies.
struct CLibrary
{
    const char* Name;
    uintptr_t Begin = 0;
    uintptr_t End = 0;

    bool Holds(uintptr_t address) const { return address >= Begin && address < End; }
};

/// libtiff, and the decoder under it, may crash where an allocation of theirs fails, which no caller can prevent.
constinit std::array librariesThatMayCrash = {CLibrary{"/libtiff.so"}, CLibrary{"/libjpeg.so"}};

int FindLibraries(dl_phdr_info* info, size_t, void*)
{
    for (CLibrary& library : librariesThatMayCrash)
        for (int i = 0; std::strstr(info->dlpi_name, library.Name) && i < info->dlpi_phnum; ++i)
            if (info->dlpi_phdr[i].p_type == PT_LOAD && (info->dlpi_phdr[i].p_flags & PF_X) != 0)
            {
                library.Begin = info->dlpi_addr + info->dlpi_phdr[i].p_vaddr;
                library.End = library.Begin + info->dlpi_phdr[i].p_memsz;
            }
    return 0;
}

[[gnu::constructor]] void FindLibrariesAtStart()
{
    dl_iterate_phdr(FindLibraries, nullptr);
}

} // namespace

CCountedCalls& Allocations()
{
    return allocations;
}

int64_t NumOfLiveBlocks()
{
    return __atomic_load_n(&numOfLiveBlocks, __ATOMIC_RELAXED);
}

namespace
{

bool Fails(const void* caller)
{
    for (const CLibrary& library : librariesThatMayCrash)
        if (library.Holds(reinterpret_cast<uintptr_t>(caller)))
            return false;
    if (!allocations.DoesNextFail())
        return false;
    errno = ENOMEM;
    return true;
}

void* Counted(void* block)
{
    if (block)
        __atomic_add_fetch(&numOfLiveBlocks, 1, __ATOMIC_RELAXED);
    return block;
}

void CountFreed(const void* block)
{
    if (block)
        __atomic_sub_fetch(&numOfLiveBlocks, 1, __ATOMIC_RELAXED);
}

} // namespace

} // namespace Fuzzing

using Fuzzing::Counted;
using Fuzzing::CountFreed;
using Fuzzing::Fails;

#define ZEL_REPLACES [[gnu::visibility("default"), gnu::used]]
#define ZEL_CALLER __builtin_return_address(0)

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

ZEL_REPLACES void* operator new(size_t size)
{
    void* block = Fails(ZEL_CALLER) ? nullptr : Counted(std::malloc(size > 0 ? size : 1));
    if (!block)
        throw std::bad_alloc();
    return block;
}

ZEL_REPLACES void* operator new(size_t size, const std::nothrow_t&) noexcept
{
    return Fails(ZEL_CALLER) ? nullptr : Counted(std::malloc(size > 0 ? size : 1));
}

ZEL_REPLACES void operator delete(void* block) noexcept
{
    CountFreed(block);
    std::free(block);
}

ZEL_REPLACES void operator delete(void* block, size_t) noexcept
{
    operator delete(block);
}

ZEL_REPLACES void operator delete(void* block, const std::nothrow_t&) noexcept
{
    operator delete(block);
}

#else

extern "C"
{
    void* __libc_malloc(size_t size);
    void* __libc_calloc(size_t count, size_t size);
    void* __libc_realloc(void* block, size_t size);
    void* __libc_memalign(size_t alignment, size_t size);
    void __libc_free(void* block);

    ZEL_REPLACES void* malloc(size_t size)
    {
        return Fails(ZEL_CALLER) ? nullptr : Counted(__libc_malloc(size));
    }

    ZEL_REPLACES void* calloc(size_t count, size_t size)
    {
        return Fails(ZEL_CALLER) ? nullptr : Counted(__libc_calloc(count, size));
    }

    ZEL_REPLACES void free(void* block)
    {
        CountFreed(block);
        __libc_free(block);
    }

    ZEL_REPLACES void* realloc(void* block, size_t size)
    {
        if (Fails(ZEL_CALLER))
            return nullptr;
        if (!block)
            return Counted(__libc_malloc(size));
        if (size == 0)
            CountFreed(block);
        return __libc_realloc(block, size);
    }

    ZEL_REPLACES void* reallocarray(void* block, size_t count, size_t size)
    {
        size_t bytes = 0;
        if (!__builtin_mul_overflow(count, size, &bytes))
            return realloc(block, bytes);
        errno = ENOMEM;
        return nullptr;
    }

    ZEL_REPLACES void* memalign(size_t alignment, size_t size)
    {
        return Fails(ZEL_CALLER) ? nullptr : Counted(__libc_memalign(alignment, size));
    }

    ZEL_REPLACES void* aligned_alloc(size_t alignment, size_t size)
    {
        return memalign(alignment, size);
    }

    ZEL_REPLACES int posix_memalign(void** block, size_t alignment, size_t size)
    {
        void* aligned = memalign(alignment, size);
        if (!aligned)
            return ENOMEM;
        *block = aligned;
        return 0;
    }
}

#endif
