#pragma once
#include <benchmark/benchmark.h>
#include <functional>
#include <optional>

namespace Benchmarks
{

/// How a job does beside its peer, of which its limit or what people would use instead is measured in the same run.
struct CComparison
{
    const char* Beside;   ///< what the peer does
    const char* Unit;     ///< "ns/tile", of both figures
    double Factor = 1;    ///< what a measured number is multiplied by to be in that unit
    bool IsShare = false; ///< the ratio is the peer's time by the job's: the share of the peer's rate
    double Target = 0;    ///< what the ratio may be at most, or of a share must be at least; 0: it is only shown
};

/// Nanoseconds per item of a time in seconds.
inline double PerItem(double numOfItems)
{
    return 1e9 / numOfItems;
}

/// Measures `job` and `peer` in turn, once in each iteration of `state`, and notes the line for the table: the medians,
/// the median of the ratios of neighbours, and their spread (the distance of the quartiles by the median). Each of the
/// two answers a figure, seconds for the most part.
void Compare(benchmark::State& state, const CComparison& comparison, const std::function<double()>& job,
             const std::function<double()>& peer);

/// The middle one of several measurements.
double Median(std::vector<double> values);

} // namespace Benchmarks
