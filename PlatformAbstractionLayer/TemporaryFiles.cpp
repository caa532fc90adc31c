#include "PlatformAbstractionLayer/TemporaryFiles.h"

#include "CommonUtil/Mutex.h"
#include "CommonUtil/PlatformCalls.h"
#include "PlatformAbstractionLayer/Files.h"
#include "PlatformAbstractionLayer/InternalErrors.h"

#include <cerrno>
#include <cstdlib>
#include <cwchar>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr const char* TemporaryFolder = "/var/tmp/";

/// Two threads may make the folder at the same time, so what counts is what stands there afterwards.
bool MakeFolder(const std::string& folder)
{
    return mkdir(folder.c_str(), 0777) == 0 || (errno == EEXIST && IsFolder(folder));
}

} // namespace

uint32_t MakeAndNameFolder(const std::string& folder, uint32_t maxSize, wchar_t* wTempPath)
{
    const std::wstring name = Utf8ToUtf16(folder);
    if (!wTempPath || name.size() >= maxSize || !MakeFolder(folder))
    {
        LogInternalError();
        return 0;
    }
    std::wmemcpy(wTempPath, name.c_str(), name.size() + 1);
    return 1;
}

uint32_t GetTempPath(uint32_t maxSize, wchar_t* wTempPath)
{
    return MakeAndNameFolder(std::string(TemporaryFolder) + "/.temp", maxSize, wTempPath);
}

uint32_t GetTempFileName(const wchar_t* path, const wchar_t* prefix, uint32_t unique, wchar_t* result)
{
    static CommonUtil::CMyMutex mutex;
    const CommonUtil::CLock lock(mutex);
    constexpr int LengthOfSuffix = 4;
    std::string name = path && prefix ? Utf16ToUtf8(path) + "/" + Utf16ToUtf8(prefix) + "XXXXXX.tmp" : "";
    if (name.empty() || name.size() > MaxLengthOfTempFileName || unique != 0 || !result)
    {
        LogInternalError();
        return 0;
    }
    const int file = mkstemps(name.data(), LengthOfSuffix);
    if (file < 0)
        return 0;
    close(file);
    const std::wstring wideName = Utf8ToUtf16(name);
    std::wmemcpy(result, wideName.c_str(), wideName.size() + 1);
    return 1;
}
