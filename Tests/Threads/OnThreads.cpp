#include "Tests/Threads/OnThreads.h"

#include <algorithm>
#include <cstdlib>

namespace ThreadsOfTest
{

int NumOfRounds()
{
    const char* const rounds = std::getenv("ZEL_THREAD_ROUNDS");
    return rounds ? std::max(std::atoi(rounds), 1) : 1;
}

} // namespace ThreadsOfTest
