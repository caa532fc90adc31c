#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/FileList.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Mutex.h"
#include "CommonUtil/PlatformCalls.h"
#include "PlatformAbstractionLayer/Files.h"
#include "PlatformAbstractionLayer/InternalErrors.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace
{

constexpr FindHandle NameIsTooLong = 0;

struct CloseStream
{
    void operator()(std::FILE* stream) const
    {
        const CommonUtil::CErrnoKeeper errnoKeeper;
        std::fclose(stream);
    }
};
using Stream = std::unique_ptr<std::FILE, CloseStream>;

/// What a search has found and not yet handed out.
struct CListing
{
    Stream FirstEntry; ///< its address is the handle of the search
    std::string Folder;
    std::vector<std::string> Names;
    size_t NextName = 0;
};

CommonUtil::CMyMutex& FindMutex()
{
    static CommonUtil::CMyMutex mutex;
    return mutex;
}

// Both are guarded by FindMutex. The pattern stands here because scandir hands nothing to its filter.
std::string FFF_FilePattern;
std::map<FindHandle, CListing> FFF_States;

int FilterFnptrImplForScandir(const dirent* entry)
{
    const char* slash = std::strrchr(entry->d_name, '/');
    const char* name = slash ? slash + 1 : entry->d_name;
    return fnmatch(FFF_FilePattern.c_str(), name, FNM_PATHNAME | FNM_NOESCAPE) == 0 ? 1 : 0;
}

int direntCompare(const dirent** left, const dirent** right)
{
    return std::strcmp((*left)->d_name, (*right)->d_name);
}

std::vector<std::string> MatchesIn(const std::string& folder)
{
    dirent** entries = nullptr;
    const int count = scandir(folder.c_str(), &entries, FilterFnptrImplForScandir, direntCompare);
    const auto free = [count](dirent** list)
    {
        std::for_each(list, list + std::max(count, 0), std::free);
        std::free(list);
    };
    const std::unique_ptr<dirent*, decltype(free)> owner(entries, free);
    ZEL_ASSERT(count >= 0 || CommonUtil::MeansNotThere(errno)); // no memory or handle left is no empty folder
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i)
        names.emplace_back(entries[i]->d_name);
    return names;
}

/// Opens an entry only to have something that is the search's alone. It may be a pipe, which nobody must wait at.
Stream OpenEntry(const std::string& name)
{
    const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return nullptr;
    Stream stream(fdopen(file, "rb"));
    if (!stream)
        close(file);
    return stream;
}

bool HandOutNext(CListing& listing, WIN32_FIND_DATA& found)
{
    const CommonUtil::CErrnoKeeper errnoKeeper; // a link that leads nowhere is an entry as good as any other
    const std::string& name = listing.Names[listing.NextName++];
    const std::wstring wideName = Utf8ToUtf16(name);
    if (wideName.size() >= std::size(found.cFileName))
    {
        LogInternalError();
        return false;
    }
    std::wmemcpy(found.cFileName, wideName.c_str(), wideName.size() + 1);
    found.dwFileAttributes = IsFolder(listing.Folder + "/" + name) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
    return true;
}

} // namespace

FindHandle FindFirstFile(const wchar_t* filePattern, WIN32_FIND_DATA* found)
{
    if (!filePattern || !found)
        return INVALID_FIND_HANDLE;
    const CommonUtil::CLock lock(FindMutex());
    const std::string text = Utf16ToUtf8(filePattern);
    const size_t slash = text.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : text.substr(0, slash);
    const std::string pattern = text.substr(slash == std::string::npos ? 0 : slash + 1);
    if (folder.size() >= std::size(found->pattern) || pattern.size() >= std::size(found->pattern))
    {
        LogInternalError();
        return NameIsTooLong;
    }
    if (!IsFolder(folder))
        return INVALID_FIND_HANDLE;
    FFF_FilePattern = pattern;
    CListing listing{.FirstEntry = nullptr, .Folder = folder, .Names = MatchesIn(folder)};
    if (listing.Names.empty())
        return INVALID_FIND_HANDLE;
    listing.FirstEntry = OpenEntry(folder + "/" + listing.Names.front());
    if (!listing.FirstEntry)
    {
        ZEL_LOG("Unexpected internal error!!!");
        return INVALID_FIND_HANDLE;
    }
    if (!HandOutNext(listing, *found))
        return NameIsTooLong;
    std::memcpy(found->pattern, pattern.c_str(), pattern.size() + 1);
    const auto search = reinterpret_cast<FindHandle>(listing.FirstEntry.get());
    FFF_States.insert_or_assign(search, std::move(listing));
    return search;
}

int FindNextFile(FindHandle search, WIN32_FIND_DATA* found)
{
    const CommonUtil::CLock lock(FindMutex());
    const auto state = FFF_States.find(search);
    if (state == FFF_States.end() || !found)
        return 0;
    CListing& listing = state->second;
    return listing.NextName < listing.Names.size() && HandOutNext(listing, *found) ? 1 : 0;
}

int FindClose(FindHandle search)
{
    const CommonUtil::CLock lock(FindMutex());
    if (FFF_States.erase(search) == 0)
    {
        ZEL_LOG(" invalid handle specified!!!");
        return 0;
    }
    return 1;
}
