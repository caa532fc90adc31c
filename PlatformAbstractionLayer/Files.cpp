#include "PlatformAbstractionLayer/Files.h"

#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/PlatformCalls.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace
{

/// Closes a descriptor and leaves errno alone.
void CloseDescriptor(int file)
{
    const CommonUtil::CErrnoKeeper errnoKeeper;
    close(file);
}

/// A descriptor to read from, or -1 with errno. Never waits for anybody: a pipe under a document's name, which a
/// plain open would wait at until somebody writes, is refused, since a document must know its size and be read in any
/// order: there is no file to read (ENOENT). Everything else opens as ever, a folder included.
int OpenForReading(const std::string& name)
{
    const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return -1;
    struct stat status = {};
    if (fstat(file, &status) == 0 && S_ISFIFO(status.st_mode))
    {
        CloseDescriptor(file);
        errno = ENOENT;
        return -1;
    }
    fcntl(file, F_SETFL, fcntl(file, F_GETFL) & ~O_NONBLOCK);
    return file;
}

bool OnlyReads(const std::string& mode)
{
    return mode.starts_with('r') && mode.find_first_of("+,") == std::string::npos;
}

} // namespace

std::FILE* OpenStream(const std::string& name, std::string mode)
{
    if (OnlyReads(mode))
    {
        const int file = OpenForReading(name);
        std::FILE* stream = file < 0 ? nullptr : fdopen(file, mode.c_str());
        if (file >= 0 && !stream)
            CloseDescriptor(file);
        return stream;
    }
    if (!mode.empty())
        mode.insert(1, 1, 'e'); // a program that the host starts must not inherit the file
    return std::fopen(name.c_str(), mode.c_str());
}

std::FILE* PAL_OpenFile(const wchar_t* name, const wchar_t* mode)
{
    return name && mode ? OpenStream(Utf16ToUtf8(name), Utf16ToUtf8(mode)) : nullptr;
}

int PAL_CloseFile(std::FILE* stream)
{
    if (!stream)
        return 1;
    std::fclose(stream);
    return 0;
}

int _wstat64(const wchar_t* name, struct stat* result)
{
    if (!name || !result)
    {
        errno = EINVAL;
        return -1;
    }
    return stat(Utf16ToUtf8(name).c_str(), result);
}
