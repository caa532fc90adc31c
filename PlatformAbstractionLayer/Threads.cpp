#include "PlatformAbstractionLayer/Threads.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

struct CThread
{
    bool HasEnded = false; ///< guarded by the mutex of the handles
    uint32_t Id = 0;
};
using Thread = std::shared_ptr<CThread>; ///< shared by the handle and the running thread

/// The threads whose handles are open. One condition for all of them, so that the first of several can be waited for.
struct CHandles
{
    std::mutex Mutex;
    std::condition_variable SomethingHasHappened;
    std::map<void*, Thread> Threads;
};

CHandles& Handles()
{
    // Never destroyed: a thread may end after the static objects have gone.
    static CHandles& handles = *std::make_unique<CHandles>().release();
    return handles;
}

void Run(const Thread& thread, ThreadFunction function, void* parameter)
{
    {
        const std::lock_guard lock(Handles().Mutex);
        thread->Id = GetCurrentThreadId();
    }
    Handles().SomethingHasHappened.notify_all();
    function(parameter);
    {
        const std::lock_guard lock(Handles().Mutex);
        thread->HasEnded = true;
    }
    Handles().SomethingHasHappened.notify_all();
}

/// The threads of these handles; nothing when one of them is none. The mutex is held.
std::optional<std::vector<Thread>> ThreadsOf(uint32_t count, void* const* handles)
{
    std::vector<Thread> threads;
    for (uint32_t i = 0; i < count; ++i)
    {
        const auto found = Handles().Threads.find(handles[i]);
        if (found == Handles().Threads.end())
            return std::nullopt;
        threads.push_back(found->second);
    }
    return threads;
}

template <typename Condition>
bool WaitUntil(std::unique_lock<std::mutex>& lock, uint32_t milliseconds, Condition&& condition)
{
    std::condition_variable& happened = Handles().SomethingHasHappened;
    if (milliseconds != INFINITE)
        return happened.wait_for(lock, std::chrono::milliseconds(milliseconds), condition);
    happened.wait(lock, condition);
    return true;
}

} // namespace

uint32_t GetTickCount()
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

void Sleep(uint32_t milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

uint32_t GetCurrentProcessId()
{
    return static_cast<uint32_t>(getpid());
}

uint32_t GetCurrentThreadId()
{
    return static_cast<uint32_t>(gettid());
}

void* CreateThread(const void*, size_t, ThreadFunction function, void* parameter, uint32_t, uint32_t* threadId)
{
    if (!function)
        return nullptr;
    const auto thread = std::make_shared<CThread>();
    try
    {
        std::thread(Run, thread, function, parameter).detach();
    }
    catch (const std::system_error&)
    {
        return nullptr;
    }
    std::unique_lock lock(Handles().Mutex);
    Handles().Threads.emplace(thread.get(), thread);
    WaitUntil(lock, INFINITE, [&] { return thread->Id != 0; });
    if (threadId)
        *threadId = thread->Id;
    return thread.get();
}

int CloseHandle(void* thread)
{
    const std::lock_guard lock(Handles().Mutex);
    return Handles().Threads.erase(thread) != 0 ? 1 : 0;
}

uint32_t WaitForSingleObject(void* thread, uint32_t milliseconds)
{
    return WaitForMultipleObjects(1, &thread, 1, milliseconds);
}

uint32_t WaitForMultipleObjects(uint32_t count, void* const* threads, int waitAll, uint32_t milliseconds)
{
    if (count == 0 || !threads)
        return WAIT_FAILED;
    std::unique_lock lock(Handles().Mutex);
    const auto waited = ThreadsOf(count, threads);
    if (!waited)
        return WAIT_FAILED;
    const auto hasEnded = [](const Thread& thread) { return thread->HasEnded; };
    const auto first = [&] { return std::find_if(waited->begin(), waited->end(), hasEnded); };
    const auto isDone = [&]
    { return waitAll ? std::all_of(waited->begin(), waited->end(), hasEnded) : first() != waited->end(); };
    if (!WaitUntil(lock, milliseconds, isDone))
        return WAIT_TIMEOUT;
    return WAIT_OBJECT_0 + (waitAll ? 0 : static_cast<uint32_t>(first() - waited->begin()));
}
