#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <vector>

namespace HostTool
{

/// Leaves new numbers as they are. A buffer whose size a damaged document made up thus costs no memory until the
/// plug-in writes into it, and a good one is written once and not twice.
template <typename T>
struct CUninitialisedAllocator : std::allocator<T>
{
    template <typename U>
    struct rebind
    {
        using other = CUninitialisedAllocator<U>;
    };
    template <typename U>
    void construct(U* place) noexcept
    {
        ::new (static_cast<void*>(place)) U;
    }
    template <typename U, typename... Arguments>
    void construct(U* place, Arguments&&... arguments)
    {
        ::new (static_cast<void*>(place)) U(std::forward<Arguments>(arguments)...);
    }
};

/// Bytes that came out of a document.
using ByteBuffer = std::vector<uint8_t, CUninitialisedAllocator<uint8_t>>;

} // namespace HostTool
