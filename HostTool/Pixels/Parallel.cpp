#include "HostTool/Pixels/Parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace HostTool
{

void ForEachInParallel(size_t count, unsigned jobs, const std::function<void(size_t)>& work)
{
    std::atomic<size_t> next = 0;
    std::mutex mutex;
    std::exception_ptr failure;
    const auto run = [&]
    {
        for (size_t i = next++; i < count; i = next++)
        {
            try
            {
                work(i);
            }
            catch (...)
            {
                const std::lock_guard lock(mutex);
                if (!failure)
                    failure = std::current_exception();
                next = count;
            }
        }
    };
    std::vector<std::jthread> threads;
    const size_t numOfThreads = std::min<size_t>(jobs, count);
    for (size_t i = 1; i < numOfThreads; ++i)
        threads.emplace_back(run);
    run();
    threads.clear();
    if (failure)
        std::rethrow_exception(failure);
}

unsigned UsualNumOfJobs()
{
    return std::max(1U, std::thread::hardware_concurrency());
}

} // namespace HostTool
