// Stands before the C library's own function of this name, which atexit calls as well, and counts who asks.

#include "Tests/HostLife/State/HostState.h"

#include <atomic>
#include <dlfcn.h>

namespace
{

std::atomic<int> numOfFunctions = 0;

/// The program itself, and no library of its.
bool IsOfTheProgram(const void* address)
{
    Dl_info ofAddress = {};
    Dl_info ofProgram = {};
    return !address || (dladdr(address, &ofAddress) != 0 &&
                        dladdr(reinterpret_cast<const void*>(&NumOfFunctionsAtExit), &ofProgram) != 0 &&
                        ofAddress.dli_fbase == ofProgram.dli_fbase);
}

} // namespace

int NumOfFunctionsAtExit()
{
    return numOfFunctions;
}

extern "C" __attribute__((visibility("default"))) int __cxa_atexit(void (*function)(void*), void* argument,
                                                                   void* library)
{
    using Register = int (*)(void (*)(void*), void*, void*);
    static const auto next = reinterpret_cast<Register>(dlsym(RTLD_NEXT, "__cxa_atexit"));
    numOfFunctions += IsOfTheProgram(library) ? 1 : 0;
    return next(function, argument, library);
}
