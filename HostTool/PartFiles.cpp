#include "HostTool/PartFiles.h"

#include <array>
#include <atomic>
#include <climits>
#include <cstring>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

namespace HostTool
{

namespace
{

/// One file. It may be read by another process at any time, so it is filled before it counts.
struct CSlot
{
    std::atomic<pid_t> Owner;  ///< 0: the slot is free
    std::atomic<bool> IsNamed; ///< the name below is whole
    std::array<char, PATH_MAX> Name;
};
static_assert(std::atomic<pid_t>::is_always_lock_free && std::atomic<bool>::is_always_lock_free,
              "processes share these, and no lock");

using Slots = std::array<CSlot, 256>;

/// Null until it is made; its pages cost memory only where they were written.
Slots* Shared = nullptr;

void Free(CSlot& slot)
{
    slot.IsNamed = false;
    slot.Owner = 0;
}

} // namespace

void PartFiles::Share()
{
    if (Shared)
        return;
    void* memory = mmap(nullptr, sizeof(Slots), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    Shared = static_cast<Slots*>(memory); // zeros, which is what free slots are made of
}

void PartFiles::Add(const std::filesystem::path& path)
{
    const std::string& name = path.native();
    Share();
    if (name.size() >= PATH_MAX)
        return; // no file can be made of that name
    const pid_t self = getpid();
    for (CSlot& slot : *Shared)
    {
        pid_t expected = 0;
        if (!slot.Owner.compare_exchange_strong(expected, self))
            continue;
        std::memcpy(slot.Name.data(), name.c_str(), name.size() + 1);
        slot.IsNamed = true;
        return;
    }
}

void PartFiles::Forget(const std::filesystem::path& path)
{
    if (!Shared)
        return;
    for (CSlot& slot : *Shared)
        if (slot.Owner == getpid() && slot.IsNamed && path.native() == slot.Name.data())
            return Free(slot);
}

void PartFiles::RemoveThoseOf(pid_t process)
{
    if (!Shared)
        return;
    for (CSlot& slot : *Shared)
    {
        if (slot.Owner != process)
            continue;
        if (slot.IsNamed)
            unlink(slot.Name.data());
        Free(slot);
    }
}

} // namespace HostTool
