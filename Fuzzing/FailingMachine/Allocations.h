#pragma once
#include "Fuzzing/FailingMachine/CountedCalls.h"

#include <cstddef>

namespace Fuzzing
{

/// All allocations of the program, of the plug-in and the libraries under it, but those of libtiff and of libjpeg under
/// it, which do not survive each of them. Under a sanitizer, which brings an allocator of its own, those by operator
/// new.
CCountedCalls& Allocations();

/// How many blocks are allocated at present.
int64_t NumOfLiveBlocks();

} // namespace Fuzzing
