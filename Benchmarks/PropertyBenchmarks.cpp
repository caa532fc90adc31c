// Property sets that a host asks for again and again.

#include "Benchmarks/Allocations.h"
#include "Benchmarks/Comparison.h"
#include "Benchmarks/Host.h"
#include "Benchmarks/Slide.h"

#include <map>
#include <string>

namespace Benchmarks
{
namespace
{

constexpr uint32_t NumOfRequests = 10000;

AC_HPROPERTY SetOf(AC_HAREA area)
{
    AC_HPROPERTY set = nullptr;
    AC_PARAMS none{};
    Require(_AC_GetAreaProperty(area, L"GroupName", &none, &set) == AC_RESULT_SUCCESS, "_AC_GetAreaProperty");
    return set;
}

/// A set that was built before, beside one look-up of a text in a map of few. It must not take the heap.
void PropertySetAgain(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(1000);
    const COpenDocument open(slide.FileName());
    AC_HAREA area = COpenDocument::Area(open.Group(), 0);
    const AC_HPROPERTY first = SetOf(area);
    const auto job = [&]
    {
        const uint64_t allocationsBefore = NumOfAllocations();
        const double seconds = SecondsOf(
            [&]
            {
                for (uint32_t i = 0; i < NumOfRequests; ++i)
                    Require(SetOf(area) == first, "_AC_GetAreaProperty asked again");
            });
        Require(NumOfAllocations() == allocationsBefore, "asking again without taking the heap");
        return seconds;
    };
    const std::map<std::wstring, int, std::less<>> sets = {{L"GroupName", 1}};
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                for (uint32_t i = 0; i < NumOfRequests; ++i)
                {
                    const wchar_t* key = L"GroupName";
                    benchmark::DoNotOptimize(key);
                    benchmark::DoNotOptimize(sets.find(std::wstring_view(key)));
                }
            });
    };
    Compare(state, {"a look-up in a map", "ns/request", PerItem(NumOfRequests), false, 0}, job, peer);
}

BENCHMARK(PropertySetAgain)->Arg(1000)->UseManualTime()->Iterations(9);

} // namespace
} // namespace Benchmarks
