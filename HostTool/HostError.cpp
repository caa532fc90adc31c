#include "HostTool/HostError.h"

namespace HostTool
{

namespace
{

struct CMeaning
{
    ExitCode Code;
    std::string Text;
};

CMeaning MeaningOf(AC_Result result, const std::filesystem::path& document)
{
    switch (result)
    {
    case AC_RESULT_FILE_NOT_FOUND:
        return {ExitCode::WrongUsage, "no such file, or no right to read it; check the name"};
    case AC_RESULT_INVALID_PARAM:
        return {ExitCode::WrongUsage, "this is not the name of a document; give the file that ends in .zel"};
    case AC_RESULT_MISSING_FILE:
        return {ExitCode::MissingFile, "a tile store is missing; put the folder " + SideFolderOf(document).string() +
                                           " back beside the document"};
    case AC_RESULT_IN_USE:
        return {ExitCode::BadFile,
                "a file of the document is being written by another program, or may not be read; try again when it has "
                "finished, or check the rights"};
    case AC_RESULT_DATA_NOT_SUPPORTED:
    case AC_RESULT_UNSUPPORTED_OPERATION:
        return {ExitCode::BadFile, "the document holds data of a kind that the plug-in does not read"};
    case AC_RESULT_FAILURE:
        if (std::error_code ignored; std::filesystem::is_directory(document, ignored))
            return {ExitCode::WrongUsage, "this is a folder; give the file that ends in .zel"};
        // The plug-in tells a rule that the file breaks and a read that fails by the same result.
        return {ExitCode::BadFile,
                "the file is damaged or not a document of this format, or this machine could not read it (disk, "
                "memory, open files); try again, or another copy"};
    default:
        return {ExitCode::BadFile, "the file is damaged, or not a document of this format; try another copy"};
    }
}

} // namespace

std::filesystem::path SideFolderOf(const std::filesystem::path& document)
{
    return document.parent_path() / ("_" + document.stem().string() + "_");
}

CHostError FailedCall(const std::filesystem::path& document, const std::string& what, AC_Result result)
{
    const CMeaning meaning = MeaningOf(result, document);
    return {meaning.Code, document.string() + ": " + what + ": " + meaning.Text + " (result " +
                              std::to_string(static_cast<int>(result)) + ")"};
}

} // namespace HostTool
