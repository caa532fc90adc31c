#include "PlatformAbstractionLayer/Paths.h"

#include "CommonUtil/PlatformCalls.h"

#include <algorithm>
#include <cwchar>
#include <filesystem>
#include <limits>
#include <string>

namespace
{

bool IsSeparator(wchar_t character)
{
    return character == L'/' || character == L'\\';
}

/// Empty for a path that has no absolute form.
std::wstring FullPath(const wchar_t* path)
{
    if (!path || *path == L'\0')
        return {};
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(Utf16ToUtf8(path), error);
    return error ? std::wstring() : Utf8ToUtf16(absolute.lexically_normal().string());
}

} // namespace

wchar_t* PathFindFileName(wchar_t* path)
{
    if (!path)
        return nullptr;
    wchar_t* name = path;
    for (wchar_t* character = path; *character != L'\0'; ++character)
        if (IsSeparator(*character))
            name = character + 1;
    return name;
}

void PathRemoveExtension(wchar_t* path)
{
    if (!path)
        return;
    if (wchar_t* dot = std::wcsrchr(PathFindFileName(path), L'.'))
        *dot = L'\0';
}

int PathRemoveFileSpec(wchar_t* path)
{
    if (!path)
        return 0;
    wchar_t* name = PathFindFileName(path);
    const bool hasFolder = name - path > 1;
    wchar_t* end = hasFolder ? name - 1 : name;
    const bool isChanged = *end != L'\0';
    *end = L'\0';
    return isChanged ? 1 : 0;
}

wchar_t* PathRemoveBackslashW(wchar_t* path)
{
    if (!path)
        return nullptr;
    const size_t length = std::wcslen(path);
    if (length > 1 && IsSeparator(path[length - 1]))
        path[length - 1] = L'\0';
    return path + (std::max<size_t>(std::wcslen(path), 1) - 1);
}

int PathIsUNC(const wchar_t* path)
{
    return path && path[0] == L'\\' && path[1] == L'\\' ? 1 : 0;
}

uint32_t GetFullPathName(const wchar_t* path, uint32_t size, wchar_t* buffer, wchar_t** filePart)
{
    const std::wstring full = FullPath(path);
    if (full.empty() || full.size() >= std::numeric_limits<uint32_t>::max())
        return 0;
    if (!buffer || full.size() >= size)
        return static_cast<uint32_t>(full.size()) + 1;
    std::wmemcpy(buffer, full.c_str(), full.size() + 1);
    if (filePart)
        *filePart = PathFindFileName(buffer);
    return static_cast<uint32_t>(full.size());
}

wchar_t* _wfullpath(wchar_t* buffer, const wchar_t* path, size_t size)
{
    const std::wstring full = FullPath(path);
    if (!buffer || full.empty() || full.size() >= size)
        return nullptr;
    std::wmemcpy(buffer, full.c_str(), full.size() + 1);
    return buffer;
}
