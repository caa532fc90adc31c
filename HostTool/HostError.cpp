#include "HostTool/HostError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace HostTool
{

namespace
{

struct CMeaning
{
    ExitCode Code;
    std::string Text;
};

bool MayNotBeRead(const std::filesystem::path& document)
{
    return access(document.c_str(), R_OK) != 0 && errno == EACCES;
}

/// Of errors that the system gives whatever the file holds.
bool IsOfMachine(int reason)
{
    constexpr std::array reasons = {ENOMEM, EIO, EMFILE, ENFILE, EDQUOT, ENOSPC, ESTALE, ETIMEDOUT, EDEADLK, ENOLCK};
    return std::find(reasons.begin(), reasons.end(), reason) != reasons.end();
}

CMeaning MeaningOf(AC_Result result, const std::filesystem::path& document, int reason)
{
    // The plug-in tells it by several results.
    if (MayNotBeRead(document))
        return {ExitCode::Machine, "no right to read it; ask its owner for it"};
    switch (result)
    {
    case AC_RESULT_FILE_NOT_FOUND:
        return {ExitCode::WrongUsage, "no such file; check the name"};
    case AC_RESULT_INVALID_PARAM:
        return {ExitCode::WrongUsage, "this is not the name of a document; give the file that ends in .zel"};
    case AC_RESULT_MISSING_FILE:
        return {ExitCode::MissingFile, "a tile store is missing; put the folder " + SideFolderOf(document).string() +
                                           " back beside the document"};
    case AC_RESULT_IN_USE:
        return {ExitCode::Machine,
                "a file of the document is being written by another program, or may not be read; try again when it has "
                "finished, or check the rights"};
    case AC_RESULT_DATA_NOT_SUPPORTED:
    case AC_RESULT_UNSUPPORTED_OPERATION:
        return {ExitCode::BadFile, "the document holds data of a kind that the plug-in does not read"};
    case AC_RESULT_FAILURE:
        if (std::error_code ignored; std::filesystem::is_directory(document, ignored))
            return {ExitCode::WrongUsage, "this is a folder; give the file that ends in .zel"};
        // The plug-in tells a rule that the file breaks and a read that fails by the same result.
        if (IsOfMachine(reason))
            return {ExitCode::Machine,
                    std::string("this machine could not read it: ") + std::strerror(reason) + "; try again"};
        return {ExitCode::BadFile, "the file is damaged, or not a document of this format; try another copy"};
    default:
        return {ExitCode::BadFile, "the file is damaged, or not a document of this format; try another copy"};
    }
}

} // namespace

std::filesystem::path SideFolderOf(const std::filesystem::path& document)
{
    return document.parent_path() / ("_" + document.stem().string() + "_");
}

ExitCode WorseOf(ExitCode a, ExitCode b)
{
    constexpr std::array fromWorst = {ExitCode::Machine,  ExitCode::BadFile,    ExitCode::MissingFile,
                                      ExitCode::NotEqual, ExitCode::WrongUsage, ExitCode::Done};
    const auto rankOf = [&](ExitCode code) { return std::find(fromWorst.begin(), fromWorst.end(), code); };
    return rankOf(a) <= rankOf(b) ? a : b;
}

ExitCode CodeOfErrno(int reason)
{
    constexpr std::array namesGiven = {ENOENT, ENOTDIR, EISDIR, ENAMETOOLONG, ELOOP, EEXIST, EINVAL, ENXIO};
    return std::find(namesGiven.begin(), namesGiven.end(), reason) != namesGiven.end() ? ExitCode::WrongUsage
                                                                                       : ExitCode::Machine;
}

CCallError FailedCall(const std::filesystem::path& document, const std::string& what, AC_Result result, int reason)
{
    const CMeaning meaning = MeaningOf(result, document, reason);
    return {meaning.Code, document.string() + ": " + what + ": " + meaning.Text + " (result " +
                              std::to_string(static_cast<int>(result)) + ")"};
}

} // namespace HostTool
