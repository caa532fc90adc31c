#pragma once
#include <benchmark/benchmark.h>

namespace Benchmarks
{

/// The numbers of tiles that jobs are done at, so that growth shows.
inline void Sizes(benchmark::internal::Benchmark* job)
{
    job->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime();
}

} // namespace Benchmarks
