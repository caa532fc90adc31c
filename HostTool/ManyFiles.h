#pragma once

#include "HostTool/HostError.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace HostTool
{

/// The documents that a command line names.
struct CNamedFiles
{
    std::vector<std::filesystem::path> Files;
    std::vector<CHostError> Failures; ///< folders and lists that can't be read
};

/// The documents of the words: files as they stand, `@LIST` for the lines of a file (`@-` for standard input), and, if
/// folders are searched, all documents in a folder and below, by name.
CNamedFiles FilesNamedBy(const std::vector<std::string>& words, bool areFoldersSearched);

/// How many documents are read at once.
unsigned FilesAtOnce();

struct CManyOptions
{
    unsigned AtOnce = 1;
    bool IsFailFast = false; ///< begins no more documents after one that failed
};

/// Runs `work` on each of the documents in a process of its own, and prints what each printed as a whole, in the order
/// of the documents. Answers the worst exit code. Throws CHostError if the machine fails.
ExitCode RunOnEach(const std::vector<std::filesystem::path>& files, const CManyOptions& options,
                   const std::function<int(const std::filesystem::path&)>& work);

} // namespace HostTool
