#include "CommonUtil/FileList.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/FileListing.h"
#include "CommonUtil/PlatformCalls.h"
#include "CommonUtil/Text.h"

#include <array>
#include <cerrno>
#include <uuid/uuid.h>

namespace CommonUtil
{

namespace
{

constexpr int TempPathFailed = 4;

bool IsThere(const std::wstring& name, struct stat& status)
{
    if (_wstat64(name.c_str(), &status) == 0)
        return true;
    ZEL_ASSERT(MeansNotThere(errno));
    return false;
}

} // namespace

bool MeansNotThere(int reason)
{
    return reason == ENOENT || reason == ENOTDIR || reason == EACCES || reason == ELOOP || reason == ENAMETOOLONG;
}

bool FileExists(const std::wstring& path, const std::wstring& name)
{
    struct stat status = {};
    return IsThere(path + L"/" + name, status);
}

void GetFileList(const std::wstring& szFolderPath, const std::wstring& szExtension,
                 std::vector<std::wstring>& vecFileList, bool bRecursive)
{
    const CFileListing listing(szFolderPath, szExtension, bRecursive);
    vecFileList.insert(vecFileList.end(), listing.Files().begin(), listing.Files().end());
}

int GetTempFilePath(std::wstring& path)
{
    std::array<wchar_t, 1000> folder{};
    if (GetTempPath(static_cast<uint32_t>(folder.size()), folder.data()) < 1)
        return TempPathFailed;
    uuid_t uuid;
    std::array<char, UUID_STR_LEN> text{};
    uuid_generate(uuid);
    uuid_unparse_upper(uuid, text.data());
    path = folder.data() + std::wstring(L"/") + ToWide(text.data());
    return 0;
}

double GetTicksPerMillisecond()
{
    int64_t ticksPerSecond = 0;
    QueryPerformanceFrequency(&ticksPerSecond);
    return static_cast<double>(ticksPerSecond) / 1000.0;
}

} // namespace CommonUtil
