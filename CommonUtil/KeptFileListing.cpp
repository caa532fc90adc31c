#include "CommonUtil/KeptFileListing.h"

namespace CommonUtil
{

CKeptFileListing::CPointer CKeptFileListing::Get(const std::wstring& folder)
{
    CPointer kept;
    {
        const CLock lock(_mutex);
        if (_folder == folder)
            kept = _listing;
    }
    return kept && kept->IsUpToDate() ? kept : Read(folder);
}

CKeptFileListing::CPointer CKeptFileListing::Read(const std::wstring& folder)
{
    auto listing = std::make_shared<const CFileListing>(folder, L"", true);
    const bool isWorthKeeping = listing->TellsAllChanges() && listing->SizeInBytes() <= MaxSizeInBytes;
    CPointer kept = isWorthKeeping ? listing : nullptr;
    std::wstring nameOfFolder = folder;
    const CLock lock(_mutex);
    _folder.swap(nameOfFolder);
    _listing.swap(kept);
    return listing;
}

} // namespace CommonUtil
