#pragma once
#include <functional>
#include <latch>
#include <thread>
#include <vector>

namespace ThreadsOfTest
{

constexpr int NumOfThreads = 8;

/// Runs `work` on each thread of a test, which all begin at the same moment, and waits for them.
inline void OnThreads(const std::function<void(int thread)>& work)
{
    std::latch start(NumOfThreads);
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < NumOfThreads; ++thread)
        threads.emplace_back(
            [&, thread]
            {
                start.arrive_and_wait();
                work(thread);
            });
}

/// How often a test repeats its work: once, or ZEL_THREAD_ROUNDS times for a long run.
int NumOfRounds();

} // namespace ThreadsOfTest
