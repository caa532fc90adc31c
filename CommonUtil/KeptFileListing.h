#pragma once
#include "CommonUtil/FileListing.h"
#include "CommonUtil/Mutex.h"

#include <memory>

namespace CommonUtil
{

/// Listings of folders with all that lies below them, of which the last one is kept for the next question, so that
/// asking for the names of many files one by one reads the folders once. For any number of threads.
class CKeptFileListing
{
public:
    using CPointer = std::shared_ptr<const CFileListing>;

    /// The listing of a folder as it is now: the kept one, unless a folder in it has changed.
    CPointer Get(const std::wstring& folder);
    /// The same, read anew.
    CPointer Read(const std::wstring& folder);

private:
    /// A listing that takes more memory is not kept. Files with names of 100 characters: 70,000.
    static constexpr size_t MaxSizeInBytes = 32U << 20;

    CMyMutex _mutex;
    std::wstring _folder;
    CPointer _listing; ///< of that folder, and one that tells all changes; null when there is none to keep
};

} // namespace CommonUtil
