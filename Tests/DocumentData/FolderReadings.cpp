// The call by which folders are read: that of the C library, with a count.

#include "Tests/DocumentData/FolderReadings.h"

#include <atomic>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>

namespace
{

std::atomic<unsigned> numOfFolderReadings = 0;

using Filter = int (*)(const dirent*);
using Compare = int (*)(const dirent**, const dirent**);
using ScanFolder = int (*)(const char*, dirent***, Filter, Compare);

} // namespace

unsigned SlideOfTest::NumOfFolderReadings()
{
    return numOfFolderReadings;
}

extern "C" [[gnu::visibility("default"), gnu::used]] int scandir(const char* name, dirent*** entries, Filter filter,
                                                                 Compare compare)
{
    static const auto real = reinterpret_cast<ScanFolder>(dlsym(RTLD_NEXT, "scandir"));
    if (!real)
        std::abort();
    ++numOfFolderReadings;
    return real(name, entries, filter, compare);
}
