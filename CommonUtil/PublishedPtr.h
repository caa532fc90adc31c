#pragma once
#include <atomic>
#include <memory>

namespace CommonUtil
{

/// Owns an object that is made once, under a lock, and may be looked at without it: who finds it finds all that was
/// written before it was published.
template <typename T, typename Deleter = std::default_delete<T>>
class CPublishedPtr
{
public:
    CPublishedPtr() = default;
    ~CPublishedPtr() { const std::unique_ptr<T, Deleter> owned(Get()); }
    CPublishedPtr(const CPublishedPtr&) = delete;
    CPublishedPtr& operator=(const CPublishedPtr&) = delete;

    /// Null before it is published.
    T* Get() const { return _object.load(std::memory_order_acquire); }
    /// To be called once.
    T& Publish(std::unique_ptr<T> object)
    {
        T& published = *object;
        _object.store(object.release(), std::memory_order_release);
        return published;
    }

private:
    std::atomic<T*> _object = nullptr;
};

} // namespace CommonUtil
