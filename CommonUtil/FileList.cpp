#include "CommonUtil/FileList.h"

#include "CommonUtil/PlatformCalls.h"
#include "CommonUtil/Text.h"

#include <array>
#include <memory>
#include <time.h>
#include <uuid/uuid.h>

namespace CommonUtil
{

namespace
{

constexpr int TempPathFailed = 4;

/// Folders below folders are entered down to this depth: a loop of links ends there.
constexpr int MaxFolderDepth = 64;

class CFolderSearch
{
public:
    explicit CFolderSearch(const std::wstring& pattern) : _search(FindFirstFile(pattern.c_str(), _found.get())) {}
    ~CFolderSearch()
    {
        if (HasFound())
            FindClose(_search);
    }
    CFolderSearch(const CFolderSearch&) = delete;
    CFolderSearch& operator=(const CFolderSearch&) = delete;

    bool HasFound() const { return _search != 0 && _search != INVALID_FIND_HANDLE; }
    bool Next() { return FindNextFile(_search, _found.get()) != 0; }
    std::wstring Name() const { return _found->cFileName; }
    bool IsFolder() const { return _found->dwFileAttributes == FILE_ATTRIBUTE_DIRECTORY; }

private:
    // On the heap: the record is 5 KB, and one search runs inside another.
    std::unique_ptr<WIN32_FIND_DATA> _found = std::make_unique<WIN32_FIND_DATA>();
    FindHandle _search;
};

void AddFilesOf(const std::wstring& folder, const std::wstring& extension, std::vector<std::wstring>& files,
                bool isRecursive, int depth)
{
    const std::wstring pattern = extension.empty() || extension == L".ome.tif" ? L"/*.*" : L"/*" + extension;
    CFolderSearch search(folder + pattern);
    for (bool hasFound = search.HasFound(); hasFound; hasFound = search.Next())
    {
        const std::wstring name = search.Name();
        if (!search.IsFolder())
            files.push_back(folder + L"/" + name);
        else if (isRecursive && name != L"." && name != L".." && depth < MaxFolderDepth)
            AddFilesOf(folder + L"/" + name, L"", files, isRecursive, depth + 1);
    }
}

} // namespace

bool FileExists(const std::wstring& path, const std::wstring& name)
{
    struct stat status = {};
    return _wstat64((path + L"/" + name).c_str(), &status) == 0;
}

void GetFileList(const std::wstring& szFolderPath, const std::wstring& szExtension,
                 std::vector<std::wstring>& vecFileList, bool bRecursive)
{
    AddFilesOf(szFolderPath, szExtension, vecFileList, bRecursive, 0);
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
    timespec resolution{};
    clock_getres(CLOCK_MONOTONIC, &resolution);
    const double nanosecondsPerTick =
        static_cast<double>(resolution.tv_sec) * 1e9 + static_cast<double>(resolution.tv_nsec);
    return 1e6 / nanosecondsPerTick;
}

} // namespace CommonUtil
