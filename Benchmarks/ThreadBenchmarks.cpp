// Two threads with a document each: documents never wait for each other.

#include "Benchmarks/Comparison.h"
#include "Benchmarks/Host.h"
#include "Benchmarks/Slide.h"

#include <thread>

namespace Benchmarks
{
namespace
{

/// The work of a host that pans: all tiles of a part, time and again.
void Work(const COpenDocument& document, uint32_t numOfTiles)
{
    constexpr uint32_t Rounds = 20;
    for (uint32_t round = 0; round < Rounds; ++round)
        for (uint32_t number = 0; number < numOfTiles; ++number)
            benchmark::DoNotOptimize(document.Tile(number));
}

/// The share is of the rate that two documents could have: twice that of one thread.
void TwoThreads(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const COpenDocument first(slide.FileName());
    const COpenDocument second(slide.FileName());
    const auto numOfTiles = slide.NumOfTiles();
    const auto job = [&]
    {
        return SecondsOf(
                   [&]
                   {
                       std::thread other([&] { Work(second, numOfTiles); });
                       Work(first, numOfTiles);
                       other.join();
                   }) /
               2;
    };
    const auto peer = [&] { return SecondsOf([&] { Work(first, numOfTiles); }); };
    job();
    Compare(state, {"one thread on one document", "ms/document", 1e3, true, 1.9}, job, peer);
}

BENCHMARK(TwoThreads)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(9);

} // namespace
} // namespace Benchmarks
