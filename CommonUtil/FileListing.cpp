#include "CommonUtil/FileListing.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/FileList.h"
#include "CommonUtil/PlatformCalls.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>

namespace CommonUtil
{

namespace
{

/// A folder's time is that of the last tick of the system's clock, so that two changes within one look like one. 10 ms
/// are common; a clock on another machine may be a little late.
constexpr std::chrono::milliseconds Tick(100);
/// Some file systems write whole seconds, or every other one.
constexpr std::chrono::seconds LongTick(2);

std::pair<std::time_t, long> MomentBefore(std::chrono::nanoseconds span)
{
    const auto moment = std::chrono::system_clock::now().time_since_epoch() - span;
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment);
    return {seconds.count(), std::chrono::nanoseconds(moment - seconds).count()};
}

struct CFolderEntry
{
    std::wstring Name;
    bool IsFolder;
};

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

} // namespace

CFileListing::CFileListing(const std::wstring& folder, const std::wstring& extension, bool isRecursive)
    : _isRecursive(isRecursive), _startOfTick(MomentBefore(Tick)), _startOfLongTick(MomentBefore(LongTick))
{
    AddFilesOf(folder, extension);
    _entered.clear();
}

void CFileListing::AddFilesOf(const std::wstring& folder, const std::wstring& extension)
{
    struct stat status = {};
    if (_wstat64(folder.c_str(), &status) != 0)
    {
        ZEL_ASSERT(MeansNotThere(errno));
        _tellsAllChanges = false;
        return;
    }
    const CFolderState state = StateOf(status);
    NoteState(folder, state);
    if (!_path.insert(state.Folder).second) // a link that leads back to a folder around it
        return;
    const bool isEnteredAgain = !_entered.insert(state.Folder).second;
    AddEntriesOf(folder, extension, isEnteredAgain);
    _path.erase(state.Folder);
}

void CFileListing::AddEntriesOf(const std::wstring& folder, const std::wstring& extension, bool isEnteredAgain)
{
    const std::wstring pattern = extension.empty() || extension == L".ome.tif" ? L"/*.*" : L"/*" + extension;
    const std::vector<CFolderEntry> entries = Find(folder + pattern);
    if (entries.empty()) // not even itself: it could not be searched, which its times say nothing of
        _tellsAllChanges = false;
    for (const auto& [name, isFolder] : entries)
    {
        if (isEnteredAgain)
            ZEL_ASSERT(++_numOfEntriesSeenAgain <= MaxNumOfEntriesSeenAgain);
        if (!isFolder)
            _files.push_back(folder + L"/" + name);
        else if (_isRecursive && name != L"." && name != L"..")
            AddFilesOf(folder + L"/" + name, L"");
    }
}

CFileListing::CFolderState CFileListing::StateOf(const struct stat& status)
{
    return {{status.st_dev, status.st_ino},
            {status.st_mtim.tv_sec, status.st_mtim.tv_nsec},
            {status.st_ctim.tv_sec, status.st_ctim.tv_nsec}};
}

void CFileListing::NoteState(const std::wstring& folder, const CFolderState& state)
{
    const auto& [lastSecond, lastNanosecond] = std::max(state.Modified, state.Changed);
    const CMoment& startOfTick = lastNanosecond == 0 ? _startOfLongTick : _startOfTick;
    _tellsAllChanges = _tellsAllChanges && CMoment(lastSecond, lastNanosecond) < startOfTick;
    _states.emplace_back(folder, state);
}

bool CFileListing::IsUpToDate() const
{
    const auto isUnchanged = [](const auto& met)
    {
        struct stat status = {};
        return _wstat64(met.first.c_str(), &status) == 0 && StateOf(status) == met.second;
    };
    ZEL_ASSERT(_tellsAllChanges);
    return std::ranges::all_of(_states, isUnchanged);
}

size_t CFileListing::SizeInBytes() const
{
    size_t size = _files.size() * sizeof(std::wstring) + _states.size() * sizeof(CNamedState);
    for (const std::wstring& file : _files)
        size += file.size() * sizeof(wchar_t);
    for (const auto& [folder, state] : _states)
        size += folder.size() * sizeof(wchar_t);
    return size;
}

} // namespace CommonUtil
