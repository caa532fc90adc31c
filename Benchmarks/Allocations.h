#pragma once
#include <cstdint>

namespace Benchmarks
{

/// How often the program, the plug-in included, has taken memory by operator new.
uint64_t NumOfAllocations();

} // namespace Benchmarks
