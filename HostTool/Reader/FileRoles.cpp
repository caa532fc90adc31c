#include "HostTool/Reader/FileRoles.h"

#include "ZelLoader/ZelImgDoc.h"

#include <algorithm>
#include <set>

namespace HostTool
{

namespace
{

namespace fs = std::filesystem;

std::optional<uint64_t> SizeOf(const fs::path& file)
{
    std::error_code error;
    const uint64_t size = fs::file_size(file, error);
    return error ? std::nullopt : std::optional(size);
}

/// The stacks that keep their pixels in a store.
std::vector<uint32_t> StacksWithStore(const CReaderDocument& document)
{
    std::vector<uint32_t> stacks;
    document.Do("cannot read its images",
                [&]
                {
                    for (const auto& stack : *document.Document().ImgColl().MultiDimImgs())
                    {
                        const auto* frames = stack->ImgFrames();
                        if (frames && !frames->empty() && frames->front()->KorFile())
                            stacks.push_back(stack->StackID());
                    }
                });
    return stacks;
}

/// The names that a store may have, the usual one first.
constexpr std::array<const char*, 6> StoreNames = {"frame_t.kor",   "frame_t_0.kor", "frame_t.tif",
                                                   "frame_t_0.tif", "frame_t.tiff",  "frame_t_0.tiff"};

void AddStores(std::vector<CDocumentFile>& files, const fs::path& folder, uint32_t stack)
{
    const size_t before = files.size();
    for (const char* name : StoreNames)
        if (const auto size = SizeOf(folder / name))
            files.push_back({folder / name, FileRole::TileStore, stack, size});
    if (files.size() == before)
        files.push_back({folder / StoreNames.front(), FileRole::TileStore, stack, std::nullopt});
}

/// All files in a folder and those below, by name; none if there is no such folder.
std::vector<fs::path> FilesBelow(const fs::path& folder)
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (entry->is_regular_file(error))
            files.push_back(entry->path());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

std::vector<CDocumentFile> FilesOf(const CReaderDocument& document)
{
    const fs::path& path = document.Path();
    std::vector<CDocumentFile> files = {{path, FileRole::Document, std::nullopt, SizeOf(path)}};
    for (const uint32_t stack : StacksWithStore(document))
        AddStores(files, SideFolderOf(path) / ("stack" + std::to_string(stack)), stack);
    std::set<fs::path> known;
    for (const CDocumentFile& file : files)
        known.insert(file.Path);
    for (const fs::path& file : FilesBelow(SideFolderOf(path)))
        if (!known.contains(file))
            files.push_back({file, FileRole::Other, std::nullopt, SizeOf(file)});
    return files;
}

std::string NameOf(const CDocumentFile& file)
{
    switch (file.Role)
    {
    case FileRole::Document:
        return "document";
    case FileRole::TileStore:
        return "tile store of stack " + std::to_string(file.StackID.value_or(0));
    default:
        return "other";
    }
}

} // namespace HostTool
