#include "SampleDocuments/zelmake/Target.h"

namespace ZelMake
{

namespace fs = std::filesystem;
using namespace SampleDocuments;

namespace
{

constexpr const char* StoreNames[] = {"frame_t_0.kor",  "frame_t.kor", "frame_t_0.tif",
                                      "frame_t_0.tiff", "frame_t.tif", "frame_t.tiff"};

fs::path FolderOf(const fs::path& path)
{
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

/// A link at the file or at a folder on the way to it could lead anywhere, also one that leads nowhere yet.
void CheckHasNoLinks(const fs::path& folder, const fs::path& file)
{
    for (fs::path part = file; part != folder; part = FolderOf(part))
        if (fs::is_symlink(part))
            throw CSampleError(part.string() + ": is a symbolic link and may lead out of the folder of the document; "
                                               "remove it or choose another folder");
}

} // namespace

void CheckTarget(const fs::path& path, const Document& document)
{
    if (path.extension() != ".zel" || path.stem().empty())
        throw CSampleError(path.string() + ": the name of a document ends in .zel");
    if (fs::is_directory(path))
        throw CSampleError(path.string() + ": is a folder; choose another name");
    std::error_code error;
    fs::create_directories(FolderOf(path), error);
    if (error)
        throw CSampleError(FolderOf(path).string() + ": the folder can't be made: " + error.message() +
                           "; choose another one");
    const fs::path target = FolderOf(path) / path.filename();
    CheckHasNoLinks(FolderOf(path), target);
    for (const Stack& stack : document.Stacks())
        CheckHasNoLinks(FolderOf(path), document.StorePath(target, stack.Id()));
}

void RemoveOldStores(const fs::path& path, const Document& document)
{
    for (const Stack& stack : document.Stacks())
        for (const char* name : StoreNames)
        {
            std::error_code error;
            fs::remove(document.StorePath(path, stack.Id()).parent_path() / name, error);
            if (error)
                throw CSampleError(document.StorePath(path, stack.Id()).parent_path().string() + ": the old " + name +
                                   " can't be removed: " + error.message() + "; remove it, or choose another name");
        }
}

} // namespace ZelMake
