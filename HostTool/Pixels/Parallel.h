#pragma once

#include <cstddef>
#include <functional>

namespace HostTool
{

/// Runs work(0) to work(count - 1) on up to `jobs` threads, this one among them, and waits for all. If any throws, no
/// more is begun, and the first exception is thrown on.
void ForEachInParallel(size_t count, unsigned jobs, const std::function<void(size_t)>& work);

/// The threads that this machine runs at once; at least 1.
unsigned UsualNumOfJobs();

} // namespace HostTool
