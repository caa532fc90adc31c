#pragma once
#include <new>
#include <stdexcept>
#include <sys/mman.h>

namespace Fuzzing
{

/// A `T` in memory that this process and the children which it starts from then on all see: what a child writes its
/// parent can read, however the child ends. Throws std::runtime_error when there is no such memory.
template <typename T>
class CSharedWithChild
{
public:
    CSharedWithChild() : _memory(mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        if (_memory == MAP_FAILED)
            throw std::runtime_error("cannot share memory with a child");
        new (_memory) T;
    }
    ~CSharedWithChild() { munmap(_memory, sizeof(T)); }
    CSharedWithChild(const CSharedWithChild&) = delete;
    CSharedWithChild& operator=(const CSharedWithChild&) = delete;
    T& operator*() const { return *static_cast<T*>(_memory); }
    T* operator->() const { return static_cast<T*>(_memory); }

private:
    void* _memory;
};

} // namespace Fuzzing
