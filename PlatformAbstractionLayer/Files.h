#pragma once
#include <cstdint>
#include <cstdio>
#include <string>

/// Opens a file by UTF-8 name and mode as fopen does, but a program that the host starts does not inherit it.
std::FILE* OpenStream(const std::string& name, std::string mode);

/// OpenFileToRead of PlatformCalls.h by a UTF-8 name.
std::FILE* OpenFileToRead(const std::string& name);

/// True for a folder, or a link to one.
bool IsFolder(const std::string& name);

// The Win32-shaped calls: a wide name, converted to UTF-8, and the POSIX call. A null name fails with EINVAL.

/// The stream, or null with errno.
std::FILE* _wfopen(const wchar_t* name, const wchar_t* mode);
/// 0, or errno and a null stream.
int _wfopen_s(std::FILE** stream, const wchar_t* name, const wchar_t* mode);
int fopen_s(std::FILE** stream, const char* name, const char* mode);

/// How _wfsopen shares a file with others that open it by the same call, in this process or another.
enum : int
{
    _SH_DENYRW = 16,
    _SH_DENYWR = 32,
    _SH_DENYRD = 48,
    _SH_DENYNO = 64,
    _SH_SECURE = 128
};

/// Opens a file and locks it as a whole for as long as the stream is open: against everybody by the first three flags,
/// not at all by _SH_DENYNO, against those by _SH_SECURE. Null with errno when the open fails, and (EWOULDBLOCK) when
/// another one's lock is in the way. Any other flag ends the process.
std::FILE* _wfsopen(const wchar_t* name, const wchar_t* mode, int shflag);

/// 0 and a descriptor, or errno and -1. `oflag` and `pmode` are those of open; `shflag` has no effect.
int _wsopen_s(int* descriptor, const wchar_t* name, int oflag, int shflag, int pmode);

// 0, or -1 with errno.
int _wremove(const wchar_t* name);
int _wmkdir(const wchar_t* name);
int _waccess(const wchar_t* name, int mode);

// 1, or 0 with errno.
int DeleteFile(const wchar_t* name);
int CreateDirectory(const wchar_t* name, const void* security);
int SetCurrentDirectory(const wchar_t* name);

constexpr uint32_t INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
/// FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_NORMAL, or INVALID_FILE_ATTRIBUTES with errno.
uint32_t GetFileAttributes(const wchar_t* name);
