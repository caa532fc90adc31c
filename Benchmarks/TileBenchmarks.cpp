// The main path at growing numbers of tiles, each job beside what limits it, measured in the same run.

#include "Benchmarks/Slide.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <memory>
#include <numeric>
#include <random>
#include <unistd.h>
#include <unordered_map>

namespace Benchmarks
{
namespace
{

constexpr uint32_t MaxNumOfBodies = 20000;

/// The bytes of a file, read without any of the plug-in's code.
class CFile
{
public:
    explicit CFile(const std::filesystem::path& name) : _file(open(name.c_str(), O_RDONLY | O_CLOEXEC))
    {
        Require(_file >= 0, "opening a store");
    }
    ~CFile() { close(_file); }
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    void Read(void* target, size_t size, uint64_t offset) const
    {
        Require(pread(_file, target, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size), "pread");
    }

private:
    int _file;
};

/// Times `job` and `peer` in turn; the benchmark's own time is the job's. "ratio" is job / peer, by medians.
void CompareWithPeer(benchmark::State& state, double numOfItems, const std::function<double()>& job,
                     const std::function<double()>& peer)
{
    std::vector<double> jobs;
    std::vector<double> peers;
    for (auto iteration : state)
    {
        static_cast<void>(iteration);
        jobs.push_back(job());
        peers.push_back(peer());
        state.SetIterationTime(jobs.back());
    }
    state.counters["ns_per_tile"] = Median(jobs) / numOfItems * 1e9;
    state.counters["peer_ns_per_tile"] = Median(peers) / numOfItems * 1e9;
    state.counters["ratio"] = Median(jobs) / Median(peers);
}

/// Opening a document up to the bytes of its first tile, beside reading the list's bytes once and summing them.
void OpenToTheFirstTile(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const CFile store(slide.StoreName());
    std::vector<BYTE> body(TileSize);
    std::vector<uint32_t> list(slide.SizeOfList() / sizeof(uint32_t));
    const auto job = [&]
    {
        return SecondsOf(
            [&]
            {
                const COpenSlide open(slide);
                open.ReadBody(open.Tile(0), body);
            });
    };
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                store.Read(list.data(), slide.SizeOfList(), slide.OffsetOfList());
                benchmark::DoNotOptimize(std::accumulate(list.begin(), list.end(), uint64_t{0}));
            });
    };
    CompareWithPeer(state, slide.NumOfTiles(), job, peer);
}

struct CHeapObject
{
    uint64_t Words[4] = {};
};

/// Asking for every tile in rows, the first time, beside putting as many small heap objects into a hash map.
void EveryTileFirstTime(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const auto job = [&]
    {
        const COpenSlide open(slide);
        open.Tile(0); // the list is read by the time the walk begins
        return SecondsOf(
            [&]
            {
                for (uint32_t number = 0; number < slide.NumOfTiles(); ++number)
                    benchmark::DoNotOptimize(open.Tile(number));
            });
    };
    const auto peer = [&]
    {
        std::unordered_map<uint32_t, std::unique_ptr<CHeapObject>> map;
        return SecondsOf(
            [&]
            {
                for (uint32_t number = 0; number < slide.NumOfTiles(); ++number)
                    map.emplace(number, std::make_unique<CHeapObject>());
            });
    };
    CompareWithPeer(state, slide.NumOfTiles(), job, peer);
}

/// The same walk again, beside looking each object up.
void EveryTileAgain(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const COpenSlide open(slide);
    std::unordered_map<uint32_t, std::unique_ptr<CHeapObject>> map;
    for (uint32_t number = 0; number < slide.NumOfTiles(); ++number)
    {
        open.Tile(number);
        map.emplace(number, std::make_unique<CHeapObject>());
    }
    const auto job = [&]
    {
        return SecondsOf(
            [&]
            {
                for (uint32_t number = 0; number < slide.NumOfTiles(); ++number)
                    benchmark::DoNotOptimize(open.Tile(number));
            });
    };
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                for (uint32_t number = 0; number < slide.NumOfTiles(); ++number)
                    benchmark::DoNotOptimize(map.find(number));
            });
    };
    CompareWithPeer(state, slide.NumOfTiles(), job, peer);
}

/// Reading the bytes of tiles, beside pread of the same ranges.
void Bodies(benchmark::State& state, bool isRandom)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const COpenSlide open(slide);
    const CFile store(slide.StoreName());
    std::vector<uint32_t> numbers(std::min(slide.NumOfTiles(), MaxNumOfBodies));
    std::iota(numbers.begin(), numbers.end(), 0);
    if (isRandom)
        std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    std::vector<AC_HIMAGE> tiles;
    for (const uint32_t number : numbers)
        tiles.push_back(open.Tile(number));
    std::vector<BYTE> body(TileSize);
    const auto job = [&]
    {
        return SecondsOf(
            [&]
            {
                for (AC_HIMAGE tile : tiles)
                    open.ReadBody(tile, body);
            });
    };
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                for (const uint32_t number : numbers)
                    store.Read(body.data(), TileSize, slide.TileOffsets()[number]);
            });
    };
    CompareWithPeer(state, static_cast<double>(numbers.size()), job, peer);
}

void BodiesInStoreOrder(benchmark::State& state)
{
    Bodies(state, false);
}
void BodiesAtRandom(benchmark::State& state)
{
    Bodies(state, true);
}

BENCHMARK(OpenToTheFirstTile)
    ->Arg(1000)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(7)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(EveryTileFirstTime)
    ->Arg(1000)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(EveryTileAgain)
    ->Arg(1000)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BodiesInStoreOrder)->Arg(1000)->Arg(100000)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(BodiesAtRandom)->Arg(1000)->Arg(100000)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Benchmarks

BENCHMARK_MAIN();
