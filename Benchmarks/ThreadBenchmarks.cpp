// Two threads with a document each: documents never wait for each other.

#include "Benchmarks/Comparison.h"
#include "Benchmarks/Host.h"
#include "Benchmarks/Slide.h"

#include <atomic>
#include <mutex>
#include <thread>

namespace Benchmarks
{
namespace
{

/// So often that a thread works for about a tenth of a second: the system takes some thousandths to spread threads.
uint32_t RoundsOver(uint32_t count)
{
    return 2000000 / count;
}

/// The work of a host that pans: all tiles of a part, time and again.
void Work(const COpenDocument& document, uint32_t numOfTiles)
{
    for (uint32_t round = 0; round < RoundsOver(numOfTiles); ++round)
        for (uint32_t number = 0; number < numOfTiles; ++number)
            benchmark::DoNotOptimize(document.Tile(number));
}

/// As much work of the same kind without the plug-in: memory of the size of a tile's objects, and a lock around it.
class CPlainWork
{
public:
    explicit CPlainWork(uint32_t count) : _items(count) {}

    void Do()
    {
        for (uint32_t round = 0; round < RoundsOver(static_cast<uint32_t>(_items.size())); ++round)
            for (CItem& item : _items)
                for (uint64_t& part : item.Parts)
                {
                    const std::lock_guard lock(_mutex);
                    benchmark::DoNotOptimize(++part);
                }
    }

private:
    struct alignas(64) CItem
    {
        uint64_t Parts[2] = {};
        std::byte Rest[112] = {};
    };

    alignas(64) std::recursive_mutex _mutex;
    std::vector<CItem> _items;
};

/// Seconds from when both threads run to when both are done.
double SecondsOfBoth(const std::function<void()>& first, const std::function<void()>& second)
{
    std::atomic<bool> isOtherRunning = false;
    std::atomic<bool> mayBegin = false;
    std::thread other(
        [&]
        {
            isOtherRunning = true;
            while (!mayBegin)
                continue;
            second();
        });
    while (!isOtherRunning)
        continue;
    return SecondsOf(
        [&]
        {
            mayBegin = true;
            first();
            other.join();
        });
}

/// The share is of the rate that two of them could have: twice that of one thread.
void CompareTwoThreads(benchmark::State& state, const char* beside, const char* unit, double target,
                       const std::function<void()>& first, const std::function<void()>& second)
{
    first();
    second();
    Compare(
        state, {beside, unit, 1e3, true, target}, [&] { return SecondsOfBoth(first, second) / 2; },
        [&] { return SecondsOf(first); });
}

void TwoThreads(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const COpenDocument first(slide.FileName());
    const COpenDocument second(slide.FileName());
    const auto numOfTiles = slide.NumOfTiles();
    CompareTwoThreads(
        state, "one thread on one document", "ms/document", 1.9, [&] { Work(first, numOfTiles); },
        [&] { Work(second, numOfTiles); });
}

/// What the machine itself makes of a second thread.
void TwoThreadsWithoutThePlugin(benchmark::State& state)
{
    const auto count = static_cast<uint32_t>(state.range(0));
    CPlainWork first(count);
    CPlainWork second(count);
    CompareTwoThreads(
        state, "one thread on memory of its own", "ms/thread", 0, [&] { first.Do(); }, [&] { second.Do(); });
}

BENCHMARK(TwoThreadsWithoutThePlugin)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(9);
BENCHMARK(TwoThreads)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(9);

} // namespace
} // namespace Benchmarks
