#pragma once
#include <cstddef>

namespace CommonUtil
{

/// Tells the system that this memory is about to be filled from end to end. A large block then comes in large pages:
/// the faults of small ones cost as much as reading the data that goes there. No more than a hint; keeps errno.
void ExpectToFill(void* memory, size_t size);

} // namespace CommonUtil
