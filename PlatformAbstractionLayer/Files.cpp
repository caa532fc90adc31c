#include "PlatformAbstractionLayer/Files.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/FileList.h"
#include "CommonUtil/PlatformCalls.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <unistd.h>

namespace
{

/// Closes a descriptor and leaves errno alone.
void CloseDescriptor(int file)
{
    const CommonUtil::CErrnoKeeper errnoKeeper;
    close(file);
}

/// A descriptor to read from, or -1 with errno. A plain open would wait at a pipe until somebody writes; and what comes
/// out of a pipe has no size and cannot be read in any order. Everything else opens as ever, a folder included.
int OpenDescriptorToRead(const std::string& name)
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

/// The lock that a flag of _wfsopen asks for.
int LockOf(int shflag)
{
    switch (shflag)
    {
    case _SH_DENYRW:
    case _SH_DENYWR:
    case _SH_DENYRD:
        return LOCK_EX;
    case _SH_DENYNO:
        return LOCK_UN;
    case _SH_SECURE:
        return LOCK_SH;
    default:
        CommonUtil::oldAbortCommonUtil();
    }
}

/// Calls `posixCall` with the UTF-8 name; -1 with EINVAL for a null name.
template <typename PosixCall>
int WithName(const wchar_t* name, PosixCall&& posixCall)
{
    if (name)
        return posixCall(Utf16ToUtf8(name).c_str());
    errno = EINVAL;
    return -1;
}

/// The result of fopen_s and its kind.
int Hand(std::FILE* opened, std::FILE** stream)
{
    *stream = opened;
    return opened ? 0 : errno;
}

} // namespace

std::FILE* OpenStream(const std::string& name, std::string mode)
{
    if (!mode.empty())
        mode.insert(1, 1, 'e'); // a program that the host starts must not inherit the file
    return std::fopen(name.c_str(), mode.c_str());
}

std::FILE* OpenFileToRead(const std::string& name)
{
    const int file = OpenDescriptorToRead(name);
    std::FILE* const stream = file < 0 ? nullptr : fdopen(file, "rb");
    if (file >= 0 && !stream)
        CloseDescriptor(file);
    return stream;
}

std::FILE* OpenFileToRead(const std::wstring& name)
{
    return OpenFileToRead(Utf16ToUtf8(name));
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
    return WithName(name, [result](const char* utf8) { return stat(utf8, result); });
}

bool IsFolder(const std::string& name)
{
    struct stat status = {};
    const bool isThere = stat(name.c_str(), &status) == 0;
    ZEL_ASSERT(isThere || CommonUtil::MeansNotThere(errno));
    return isThere && S_ISDIR(status.st_mode);
}

std::FILE* _wfopen(const wchar_t* name, const wchar_t* mode)
{
    if (!name || !mode)
        errno = EINVAL;
    return PAL_OpenFile(name, mode);
}

int _wfopen_s(std::FILE** stream, const wchar_t* name, const wchar_t* mode)
{
    return stream ? Hand(_wfopen(name, mode), stream) : EINVAL;
}

int fopen_s(std::FILE** stream, const char* name, const char* mode)
{
    if (!stream || !name || !mode)
        return EINVAL;
    return Hand(OpenStream(name, mode), stream);
}

std::FILE* _wfsopen(const wchar_t* name, const wchar_t* mode, int shflag)
{
    std::FILE* stream = _wfopen(name, mode);
    if (!stream || flock(fileno(stream), LockOf(shflag) | LOCK_NB) == 0)
        return stream;
    const CommonUtil::CErrnoKeeper errnoKeeper;
    std::fclose(stream);
    return nullptr;
}

int _wsopen_s(int* descriptor, const wchar_t* name, int oflag, int, int pmode)
{
    if (!descriptor)
        return EINVAL;
    *descriptor =
        WithName(name, [=](const char* utf8) { return open(utf8, oflag | O_CLOEXEC, static_cast<mode_t>(pmode)); });
    return *descriptor < 0 ? errno : 0;
}

int _wremove(const wchar_t* name)
{
    return WithName(name, [](const char* utf8) { return std::remove(utf8); });
}

int _wmkdir(const wchar_t* name)
{
    return WithName(name, [](const char* utf8) { return mkdir(utf8, 0777); });
}

int _waccess(const wchar_t* name, int mode)
{
    return WithName(name, [mode](const char* utf8) { return access(utf8, mode); });
}

int DeleteFile(const wchar_t* name)
{
    return WithName(name, [](const char* utf8) { return unlink(utf8); }) == 0 ? 1 : 0;
}

int CreateDirectory(const wchar_t* name, const void*)
{
    return _wmkdir(name) == 0 ? 1 : 0;
}

int SetCurrentDirectory(const wchar_t* name)
{
    return WithName(name, [](const char* utf8) { return chdir(utf8); }) == 0 ? 1 : 0;
}

uint32_t GetFileAttributes(const wchar_t* name)
{
    struct stat status = {};
    if (_wstat64(name, &status) != 0)
        return INVALID_FILE_ATTRIBUTES;
    return S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
}
