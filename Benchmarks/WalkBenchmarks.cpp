// Opening a slide and asking for its tiles, at growing numbers of them.

#include "Benchmarks/Comparison.h"
#include "Benchmarks/Host.h"
#include "Benchmarks/Sizes.h"
#include "Benchmarks/Slide.h"

#include <memory>
#include <mutex>
#include <numeric>
#include <unordered_map>

namespace Benchmarks
{
namespace
{

struct CHeapObject
{
    uint64_t Words[4] = {};
};
using CHeapObjects = std::unordered_map<uint32_t, std::unique_ptr<CHeapObject>>;

void Fill(CHeapObjects& objects, uint32_t count)
{
    for (uint32_t number = 0; number < count; ++number)
        objects.emplace(number, std::make_unique<CHeapObject>());
}

double SecondsOfLookUps(const CHeapObjects& objects, uint32_t count)
{
    return SecondsOf(
        [&]
        {
            for (uint32_t number = 0; number < count; ++number)
                benchmark::DoNotOptimize(objects.find(number)->second.get());
        });
}

/// Each look-up behind so many calls that hold the lock of a document for as long as they last.
double SecondsOfLookUpsBehindLocks(const CHeapObjects& objects, uint32_t count, uint32_t numOfCalls)
{
    std::recursive_mutex mutex;
    return SecondsOf(
        [&]
        {
            for (uint32_t number = 0; number < count; ++number)
            {
                for (uint32_t call = 1; call < numOfCalls; ++call)
                    const std::lock_guard lock(mutex);
                const std::lock_guard lock(mutex);
                benchmark::DoNotOptimize(objects.find(number)->second.get());
            }
        });
}

double SecondsOfWalk(const COpenDocument& document, uint32_t numOfTiles)
{
    return SecondsOf(
        [&]
        {
            for (uint32_t number = 0; number < numOfTiles; ++number)
                benchmark::DoNotOptimize(document.Tile(number));
        });
}

double SecondsOfWalkByNextImage(const COpenDocument& document, uint32_t numOfTiles)
{
    AC_HAREA area = COpenDocument::Area(document.Group(), 0);
    COpenDocument::Image(area);
    const wchar_t* channel = L"0";
    uint32_t count = 1;
    const double seconds = SecondsOf(
        [&]
        {
            AC_HIMAGE image = nullptr;
            while (_AC_GetNextImage(area, &channel, 1, nullptr, 0, &image) == AC_RESULT_SUCCESS)
                ++count;
        });
    Require(count == numOfTiles, "_AC_GetNextImage");
    return seconds;
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
                const COpenDocument open(slide.FileName());
                COpenDocument::ReadBody(open.Tile(0), body);
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
    Compare(state, {"pread of the list, summed", "ns/tile", PerItem(slide.NumOfTiles()), false, 4}, job, peer);
}

/// Asking for every tile in rows, the first time, beside putting as many small heap objects into a hash map.
void EveryTileFirstTime(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const auto job = [&]
    {
        const COpenDocument open(slide.FileName());
        open.Tile(0); // the list is read by the time the walk begins
        return SecondsOfWalk(open, slide.NumOfTiles());
    };
    const auto peer = [&]
    {
        CHeapObjects objects;
        return SecondsOf([&] { Fill(objects, slide.NumOfTiles()); });
    };
    Compare(state, {"heap objects into an unordered_map", "ns/tile", PerItem(slide.NumOfTiles()), false, 2}, job, peer);
}

/// A slide whose tiles have all been asked for, and as many objects in a hash map.
struct CWalkedSlide
{
    explicit CWalkedSlide(int64_t numOfTiles)
        : Open(CSlide::Of(numOfTiles).FileName()), NumOfTiles(CSlide::Of(numOfTiles).NumOfTiles())
    {
        SecondsOfWalk(Open, NumOfTiles);
        Fill(Objects, NumOfTiles);
    }

    COpenDocument Open;
    uint32_t NumOfTiles;
    CHeapObjects Objects;
};

/// The same walk again, beside looking each object up.
void EveryTileAgain(benchmark::State& state)
{
    const CWalkedSlide walked(state.range(0));
    const auto job = [&] { return SecondsOfWalk(walked.Open, walked.NumOfTiles); };
    const auto peer = [&] { return SecondsOfLookUps(walked.Objects, walked.NumOfTiles); };
    Compare(state, {"look-ups in it", "ns/tile", PerItem(walked.NumOfTiles), false, 2}, job, peer);
}

/// The same walk beside look-ups that lock as often as its requests must.
void EveryTileAgainBesideLocks(benchmark::State& state)
{
    const CWalkedSlide walked(state.range(0));
    const auto job = [&] { return SecondsOfWalk(walked.Open, walked.NumOfTiles); };
    const auto peer = [&] { return SecondsOfLookUpsBehindLocks(walked.Objects, walked.NumOfTiles, 2); };
    Compare(state, {"two recursive locks and a look-up", "ns/tile", PerItem(walked.NumOfTiles)}, job, peer);
}

/// Every tile in the order of the file, beside the walk by position above.
void EveryTileByNextImage(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const COpenDocument open(slide.FileName());
    SecondsOfWalk(open, slide.NumOfTiles());
    const auto job = [&] { return SecondsOfWalkByNextImage(open, slide.NumOfTiles()); };
    const auto peer = [&] { return SecondsOfWalk(open, slide.NumOfTiles()); };
    Compare(state, {"_AC_GetArea and _AC_GetImage again", "ns/tile", PerItem(slide.NumOfTiles()), false, 0.5}, job,
            peer);
}

/// The walk in the order of the file beside look-ups that lock as often as its requests must.
void EveryTileByNextImageBesideLocks(benchmark::State& state)
{
    const CWalkedSlide walked(state.range(0));
    const auto job = [&] { return SecondsOfWalkByNextImage(walked.Open, walked.NumOfTiles); };
    const auto peer = [&] { return SecondsOfLookUpsBehindLocks(walked.Objects, walked.NumOfTiles, 1); };
    Compare(state, {"a recursive lock and a look-up", "ns/tile", PerItem(walked.NumOfTiles)}, job, peer);
}

BENCHMARK(OpenToTheFirstTile)->Apply(Sizes)->Iterations(9);
BENCHMARK(EveryTileFirstTime)->Apply(Sizes)->Iterations(7);
BENCHMARK(EveryTileAgain)->Apply(Sizes)->Iterations(7);
BENCHMARK(EveryTileAgainBesideLocks)->Apply(Sizes)->Iterations(7);
BENCHMARK(EveryTileByNextImage)->Apply(Sizes)->Iterations(7);
BENCHMARK(EveryTileByNextImageBesideLocks)->Apply(Sizes)->Iterations(7);

} // namespace
} // namespace Benchmarks
