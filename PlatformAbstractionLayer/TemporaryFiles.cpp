#include "PlatformAbstractionLayer/TemporaryFiles.h"

#include "CommonUtil/PlatformCalls.h"
#include "PlatformAbstractionLayer/InternalErrors.h"

#include <cerrno>
#include <cwchar>
#include <sys/stat.h>

namespace
{

constexpr const char* TemporaryFolder = "/var/tmp/";

bool IsFolder(const std::string& name)
{
    struct stat status = {};
    return stat(name.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

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
