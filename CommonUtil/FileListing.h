#pragma once
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <set>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace CommonUtil
{

/// The files of a folder and, if wanted, of all folders below it, as they were when this was made.
class CFileListing
{
public:
    /// Reads the folder; what it finds is told at GetFileList. A folder that cannot be read for another reason than
    /// that it is not there is a failed assertion. So is one entry more than MaxNumOfEntriesSeenAgain in folders that
    /// were entered before, by other links.
    CFileListing(const std::wstring& folder, const std::wstring& extension, bool isRecursive);

    static constexpr uint32_t MaxNumOfEntriesSeenAgain = 100'000;

    const std::vector<std::wstring>& Files() const { return _files; } ///< full names, in the order of the search
    /// False where a folder could not be read, or had changed so shortly before that it may have changed once more
    /// without another time to show.
    bool TellsAllChanges() const { return _tellsAllChanges; }
    /// True when each folder is the one that was read and has not changed, so that another reading would find the same.
    /// Asserts that all changes are told.
    bool IsUpToDate() const;
    /// About how much memory this takes.
    size_t SizeInBytes() const;

private:
    using CFolder = std::pair<dev_t, ino_t>;
    using CMoment = std::pair<std::time_t, long>; ///< seconds and nanoseconds
    struct CFolderState
    {
        CFolder Folder;
        CMoment Modified;
        CMoment Changed;
        bool operator==(const CFolderState&) const = default;
    };
    using CNamedState = std::pair<std::wstring, CFolderState>;

    static CFolderState StateOf(const struct stat& status);
    void AddFilesOf(const std::wstring& folder, const std::wstring& extension);
    void AddEntriesOf(const std::wstring& folder, const std::wstring& extension, bool isEnteredAgain);
    void NoteState(const std::wstring& folder, const CFolderState& state);

    const bool _isRecursive;
    /// Folders must not have changed since for their times to tell of each later change.
    const CMoment _startOfTick;
    const CMoment _startOfLongTick;
    std::vector<std::wstring> _files;
    /// Of all folders met, by the names they were met under.
    std::vector<CNamedState> _states;
    std::set<CFolder> _entered;
    std::set<CFolder> _path; ///< the folders that the present one lies in, and itself
    uint32_t _numOfEntriesSeenAgain = 0;
    bool _tellsAllChanges = true;
};

} // namespace CommonUtil
