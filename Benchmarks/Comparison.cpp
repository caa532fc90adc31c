#include "Benchmarks/Comparison.h"

#include "Benchmarks/Slide.h"

#include <algorithm>

namespace Benchmarks
{

namespace
{

double Quantile(std::vector<double> values, double part)
{
    Require(!values.empty(), "taking a quantile");
    const auto place = static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1) + 0.5);
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<size_t>(place)];
}

} // namespace

double Median(std::vector<double> values)
{
    return Quantile(std::move(values), 0.5);
}

void Compare(benchmark::State& state, const CComparison& comparison, const std::function<double()>& job,
             const std::function<double()>& peer)
{
    std::vector<double> jobs;
    std::vector<double> peers;
    std::vector<double> ratios;
    for (auto iteration : state)
    {
        static_cast<void>(iteration);
        // Neither of the two always profits from what the other one left in the caches.
        const bool isJobFirst = jobs.size() % 2 == 0;
        const double first = isJobFirst ? job() : peer();
        const double second = isJobFirst ? peer() : job();
        jobs.push_back(isJobFirst ? first : second);
        peers.push_back(isJobFirst ? second : first);
        ratios.push_back(comparison.IsShare ? peers.back() / jobs.back() : jobs.back() / peers.back());
        state.SetIterationTime(1e-9);
    }
    const double ratio = Median(ratios);
    state.counters["ours"] = Median(jobs) * comparison.Factor;
    state.counters["peer"] = Median(peers) * comparison.Factor;
    state.counters["ratio"] = ratio;
    state.counters["spread"] = (Quantile(ratios, 0.75) - Quantile(ratios, 0.25)) / ratio;
    state.counters["target"] = comparison.Target;
    state.counters["is_share"] = comparison.IsShare ? 1 : 0;
    state.SetLabel(std::string(comparison.Unit) + '|' + comparison.Beside);
}

} // namespace Benchmarks
