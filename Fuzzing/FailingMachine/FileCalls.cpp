// The calls by which the plug-in and libtiff reach files: those of the C library, with a count and failures on demand.
// What is defined here replaces the functions of these names in the whole program, shared libraries included.

#include "Fuzzing/FailingMachine/FileCalls.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Fuzzing
{

namespace
{

constinit CFileCalls fileCalls;

} // namespace

CFileCalls& FileCalls()
{
    return fileCalls;
}

namespace
{

bool FailsWith(int reason)
{
    if (!fileCalls.DoesNextFail())
        return false;
    errno = reason;
    return true;
}

/// True when an open is to fail, errno then tells why.
bool DoesOpenFail()
{
    switch (fileCalls.Failure)
    {
    case FileFailure::Broken:
        return FailsWith(EIO);
    case FileFailure::NoHandle:
        return FailsWith(EMFILE);
    case FileFailure::NoAccess:
        return FailsWith(EACCES);
    default:
        return false;
    }
}

bool DoesOtherFail()
{
    return fileCalls.Failure == FileFailure::Broken && FailsWith(EIO);
}

/// How many bytes a read of `size` bytes may bring; -1 when it fails.
ssize_t SizeToRead(size_t size)
{
    switch (fileCalls.Failure)
    {
    case FileFailure::Broken:
        return FailsWith(EIO) ? -1 : static_cast<ssize_t>(size);
    case FileFailure::CutOff:
        return fileCalls.DoesNextFail() ? 0 : static_cast<ssize_t>(size);
    case FileFailure::Short:
        return static_cast<ssize_t>(size > 1 && fileCalls.DoesNextFail() ? size / 2 : size);
    default:
        return static_cast<ssize_t>(size);
    }
}

/// The function of that name that would be called without those of this file.
template <typename Function>
Function* Real(Function*, const char* name)
{
    void* function = dlsym(RTLD_NEXT, name);
    if (!function)
        std::abort();
    return reinterpret_cast<Function*>(function);
}

} // namespace

} // namespace Fuzzing

using namespace Fuzzing;

#define ZEL_REPLACES [[gnu::visibility("default"), gnu::used]]

extern "C"
{
    ZEL_REPLACES int open(const char* name, int flags, ...)
    {
        static const auto real = Real<int(const char*, int, ...)>(nullptr, "open");
        va_list arguments;
        va_start(arguments, flags);
        const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0);
        va_end(arguments);
        return DoesOpenFail() ? -1 : real(name, flags, mode);
    }

    ZEL_REPLACES int scandir(const char* name, dirent*** entries, int (*filter)(const dirent*),
                             int (*compare)(const dirent**, const dirent**))
    {
        static const auto real =
            Real<int(const char*, dirent***, int (*)(const dirent*), int (*)(const dirent**, const dirent**))>(
                nullptr, "scandir");
        return DoesOpenFail() ? -1 : real(name, entries, filter, compare);
    }

    ZEL_REPLACES int stat(const char* name, struct stat* status) noexcept
    {
        static const auto real = Real<int(const char*, struct stat*)>(nullptr, "stat");
        return DoesOtherFail() ? -1 : real(name, status);
    }

    ZEL_REPLACES int fstat(int file, struct stat* status) noexcept
    {
        static const auto real = Real<int(int, struct stat*)>(nullptr, "fstat");
        return DoesOtherFail() ? -1 : real(file, status);
    }

    ZEL_REPLACES off_t lseek(int file, off_t offset, int whence) noexcept
    {
        static const auto real = Real<off_t(int, off_t, int)>(nullptr, "lseek");
        return DoesOtherFail() ? -1 : real(file, offset, whence);
    }

    ZEL_REPLACES ssize_t read(int file, void* bytes, size_t size)
    {
        static const auto real = Real<ssize_t(int, void*, size_t)>(nullptr, "read");
        const ssize_t sizeToRead = SizeToRead(size);
        return sizeToRead < 0 ? -1 : real(file, bytes, static_cast<size_t>(sizeToRead));
    }

    ZEL_REPLACES ssize_t pread(int file, void* bytes, size_t size, off_t offset)
    {
        static const auto real = Real<ssize_t(int, void*, size_t, off_t)>(nullptr, "pread");
        const ssize_t sizeToRead = SizeToRead(size);
        return sizeToRead < 0 ? -1 : real(file, bytes, static_cast<size_t>(sizeToRead), offset);
    }

    ZEL_REPLACES size_t fread(void* items, size_t size, size_t count, FILE* stream)
    {
        static const auto real = Real<size_t(void*, size_t, size_t, FILE*)>(nullptr, "fread");
        const ssize_t countToRead = SizeToRead(count);
        return countToRead < 0 ? 0 : real(items, size, static_cast<size_t>(countToRead), stream);
    }
}
