#include "HostTool/Reader/FilesCommand.h"

#include "HostTool/Reader/FileRoles.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/Table.h"
#include "HostTool/Text.h"

#include <algorithm>

namespace HostTool
{

namespace
{

ExitCode ListFiles(const std::filesystem::path& path)
{
    const CReaderDocument document(path);
    const std::vector<CDocumentFile> files = FilesOf(document);
    CTable table;
    table.Add({"bytes", "role", "file"});
    for (const CDocumentFile& file : files)
        table.Add({file.Size ? std::to_string(*file.Size) : "missing", NameOf(file), Printable(file.Path.string())});
    table.Print(WhereItIsSaid(), "");
    const auto missing = std::find_if(files.begin(), files.end(), [](const CDocumentFile& file) { return !file.Size; });
    if (missing != files.end())
        throw CHostError(ExitCode::MissingFile, missing->Path.string() + ": the " + NameOf(*missing) +
                                                    " is missing; put it back beside the document");
    return ExitCode::Done;
}

} // namespace

void AddFilesCommand(CCommandLine& line)
{
    line.TakeSeveral(
        line.AddFileCommand(
            {"files", "Lists the files that the document is made of, with their roles, and what is missing.",
             "  zel files slide.zel\n  zel files /data/slide.zel"},
            [](const std::filesystem::path&, const std::filesystem::path& file) { return ListFiles(file); }),
        {});
}

} // namespace HostTool
