#include "CommonUtil/FileList.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/PlatformCalls.h"
#include "CommonUtil/Text.h"

#include <array>
#include <cerrno>
#include <map>
#include <memory>
#include <utility>
#include <uuid/uuid.h>

namespace CommonUtil
{

namespace
{

constexpr int TempPathFailed = 4;

struct CFolderEntry
{
    std::wstring Name;
    bool IsFolder;
};

bool IsThere(const std::wstring& name, struct stat& status)
{
    if (_wstat64(name.c_str(), &status) == 0)
        return true;
    ZEL_ASSERT(MeansNotThere(errno));
    return false;
}

CFolderEntry EntryOf(const WIN32_FIND_DATA& found)
{
    return {found.cFileName, found.dwFileAttributes == FILE_ATTRIBUTE_DIRECTORY};
}

/// All that a search finds. The search has ended by then, so that one folder after the other is searched and not one
/// inside the other: each search in progress keeps a file open.
std::vector<CFolderEntry> Find(const std::wstring& pattern)
{
    const auto found = std::make_unique<WIN32_FIND_DATA>(); // 9 KB
    const FindHandle search = FindFirstFile(pattern.c_str(), found.get());
    if (search == 0 || search == INVALID_FIND_HANDLE)
        return {};
    const auto endSearch = [](const FindHandle* handle)
    {
        const CErrnoKeeper errnoKeeper;
        FindClose(*handle);
    };
    const std::unique_ptr<const FindHandle, decltype(endSearch)> owner(&search, endSearch);
    std::vector<CFolderEntry> entries{EntryOf(*found)};
    while (FindNextFile(search, found.get()) != 0)
        entries.push_back(EntryOf(*found));
    return entries;
}

/// Gathers the files of a folder and, if wanted, of the folders below it. Links may lead back or multiply the ways to
/// one folder, so no folder is entered more than MaxNumOfVisits times: without loops of links that changes nothing.
class CFolderWalk
{
public:
    CFolderWalk(std::vector<std::wstring>& files, bool isRecursive) : _files(files), _isRecursive(isRecursive) {}

    void AddFilesOf(const std::wstring& folder, const std::wstring& extension)
    {
        if (!MayEnter(folder))
            return;
        const std::wstring pattern = extension.empty() || extension == L".ome.tif" ? L"/*.*" : L"/*" + extension;
        for (const auto& [name, isFolder] : Find(folder + pattern))
        {
            if (!isFolder)
                _files.push_back(folder + L"/" + name);
            else if (_isRecursive && name != L"." && name != L"..")
                AddFilesOf(folder + L"/" + name, L"");
        }
    }

private:
    static constexpr int MaxNumOfVisits = 8;

    bool MayEnter(const std::wstring& folder)
    {
        struct stat status = {};
        return IsThere(folder, status) && ++_visits[{status.st_dev, status.st_ino}] <= MaxNumOfVisits;
    }

    std::vector<std::wstring>& _files;
    bool _isRecursive;
    std::map<std::pair<dev_t, ino_t>, int> _visits;
};

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
    CFolderWalk(vecFileList, bRecursive).AddFilesOf(szFolderPath, szExtension);
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
