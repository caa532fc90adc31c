// How much memory a document keeps for each of its tiles.

#include "Benchmarks/Slide.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

namespace Benchmarks
{
namespace
{

struct CMemory
{
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
    const double before = ResidentBytes();
    const COpenSlide open(slide);
    open.Tile(0);
    CMemory memory;
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

void ResidentBytesPerTile(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    CMemory memory;
    for (auto iteration : state)
    {
        static_cast<void>(iteration);
        memory = MeasureInAChild(slide);
    }
    state.counters["before_a_walk"] = memory.BeforeAWalk / slide.NumOfTiles();
    state.counters["after_a_walk"] = memory.AfterAWalk / slide.NumOfTiles();
    state.counters["record_in_file"] = static_cast<double>(slide.SizeOfList()) / slide.NumOfTiles();
}

BENCHMARK(ResidentBytesPerTile)->Arg(1000)->Arg(100000)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Benchmarks
