// How much memory a document keeps for each of its tiles.

#include "Benchmarks/Host.h"
#include "Benchmarks/Sizes.h"
#include "Benchmarks/Slide.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Benchmarks
{
namespace
{

/// A document of so few tiles shows what any document takes, with the pages of the program and its libraries that
/// opening one touches for the first time.
constexpr int64_t FewTiles = 100;

struct CMemory
{
    double BeforeOpening = 0; ///< of the whole program; the others are what came in addition
    double BeforeAWalk = 0;
    double AfterAWalk = 0;
};

double ResidentBytes()
{
    std::ifstream statm("/proc/self/statm");
    double pages = 0;
    double residentPages = 0;
    statm >> pages >> residentPages;
    Require(!statm.fail(), "reading the resident size");
    return residentPages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

CMemory Measure(const CSlide& slide)
{
    malloc_trim(0); // what other benchmarks have freed would serve without counting
    const double before = ResidentBytes();
    const COpenDocument open(slide.FileName());
    open.Tile(0);
    CMemory memory;
    memory.BeforeOpening = before;
    memory.BeforeAWalk = ResidentBytes() - before;
    for (uint32_t number = 0; number < slide.NumOfTiles(); ++number)
        open.Tile(number);
    memory.AfterAWalk = ResidentBytes() - before;
    return memory;
}

/// In a child, whose heap holds nothing that another benchmark has left.
CMemory MeasureInAChild(const CSlide& slide)
{
    int ends[2];
    Require(pipe(ends) == 0, "pipe");
    const pid_t child = fork();
    Require(child >= 0, "fork");
    if (child == 0)
    {
        const CMemory memory = Measure(slide);
        Require(write(ends[1], &memory, sizeof memory) == sizeof memory, "telling the parent");
        std::_Exit(0);
    }
    CMemory memory;
    Require(read(ends[0], &memory, sizeof memory) == sizeof memory, "hearing from the child");
    close(ends[0]);
    close(ends[1]);
    int status = 0;
    Require(waitpid(child, &status, 0) == child && status == 0, "the end of the child");
    return memory;
}

/// What a tile adds to a document: the difference to one of few tiles. The record's own bytes in the file are what it
/// is beside.
void Compare(benchmark::State& state, double target, double CMemory::*kind)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const CSlide& smallSlide = CSlide::Of(FewTiles);
    const double numOfTiles = slide.NumOfTiles() - smallSlide.NumOfTiles();
    const double sizeOfRecord = static_cast<double>(slide.SizeOfList()) / slide.NumOfTiles();
    for (auto iteration : state)
    {
        static_cast<void>(iteration);
        const double bytes = (MeasureInAChild(slide).*kind - MeasureInAChild(smallSlide).*kind) / numOfTiles;
        state.counters["ours"] = bytes;
        state.counters["peer"] = sizeOfRecord;
        state.counters["ratio"] = bytes / sizeOfRecord;
        state.counters["target"] = target / sizeOfRecord;
    }
    state.SetLabel("bytes/tile|the record in the file");
}

/// The part that does not grow with the tiles.
void ResidentOfADocument(benchmark::State& state)
{
    for (auto iteration : state)
    {
        static_cast<void>(iteration);
        const CMemory memory = MeasureInAChild(CSlide::Of(state.range(0)));
        state.counters["ours"] = memory.BeforeAWalk / 1024;
        state.counters["peer"] = memory.BeforeOpening / 1024;
        state.counters["ratio"] = memory.BeforeAWalk / memory.BeforeOpening;
    }
    state.SetLabel("KiB|the program that opens it");
}

void ResidentBeforeAWalk(benchmark::State& state)
{
    Compare(state, 72, &CMemory::BeforeAWalk);
}
void ResidentAfterAWalk(benchmark::State& state)
{
    Compare(state, 160, &CMemory::AfterAWalk);
}

BENCHMARK(ResidentOfADocument)->Arg(FewTiles)->UseManualTime()->Iterations(1);
BENCHMARK(ResidentBeforeAWalk)->Apply(Sizes)->Iterations(1);
BENCHMARK(ResidentAfterAWalk)->Apply(Sizes)->Iterations(1);

} // namespace
} // namespace Benchmarks
