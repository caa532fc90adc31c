#include "SampleDocuments/zelmake/Target.h"

#include <algorithm>
#include <fstream>

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

fs::path SideFolderOf(const fs::path& path)
{
    return FolderOf(path) / ("_" + path.stem().string() + "_");
}

/// The maker's name as it lies in a document: two bytes for each character.
std::string MakersName()
{
    std::string bytes;
    for (const char c : CDocumentProperties().CreatorName.value_or(""))
        bytes += {c, '\0'};
    return bytes;
}

/// Whether a file holds the maker's name; it is read in pieces, as it may be large.
bool IsOfThisProgram(const fs::path& path)
{
    constexpr size_t sizeOfPiece = size_t{1} << 20;
    const std::string name = MakersName();
    std::ifstream file(path, std::ios::binary);
    std::string piece;
    while (file)
    {
        const size_t kept = std::min(piece.size(), name.size() - 1); // the name may lie across two pieces
        piece.erase(0, piece.size() - kept);
        piece.resize(kept + sizeOfPiece);
        file.read(piece.data() + kept, static_cast<std::streamsize>(sizeOfPiece));
        piece.resize(kept + static_cast<size_t>(file.gcount()));
        if (piece.find(name) != std::string::npos)
            return true;
    }
    return false;
}

} // namespace

void CheckMayBeReplaced(const fs::path& path)
{
    constexpr auto advice = "; choose another name, or replace it by --force";
    const bool isThere = fs::exists(path);
    if (isThere && (!fs::is_regular_file(path) || !IsOfThisProgram(path)))
        throw CSampleError(path.string() +
                           ": is there already, and not a document that this program can tell it wrote" + advice);
    if (!isThere && fs::exists(SideFolderOf(path)))
        throw CSampleError(SideFolderOf(path).string() +
                           ": is there already without a document that this program wrote" + advice);
}

void CheckIsNotRead(const fs::path& path, const fs::path& input)
{
    std::error_code error;
    bool isPart = fs::equivalent(path, input, error) && !error;
    for (fs::recursive_directory_iterator entry(SideFolderOf(path), error), end; !error && entry != end;
         entry.increment(error))
    {
        std::error_code ofEntry;
        isPart = isPart || (fs::equivalent(entry->path(), input, ofEntry) && !ofEntry);
    }
    if (isPart)
        throw CSampleError(input.string() + ": is read, and would be replaced; choose another name for the document");
}

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

void RemoveOldFiles(const fs::path& path, const Document& document)
{
    std::error_code ofDocument;
    fs::remove(path, ofDocument);
    if (ofDocument)
        throw CSampleError(path.string() + ": the old document can't be removed: " + ofDocument.message() +
                           "; remove it, or choose another name");
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
