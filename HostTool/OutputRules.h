#pragma once

#include <filesystem>
#include <sys/stat.h>
#include <vector>

namespace HostTool
{

/// What becomes of a file that is there already under the name of an output.
enum class IfExists
{
    Replace,
    Refuse, ///< wrong usage
    Skip    ///< COutputSkipped, and the file stays as it is
};

/// What outputs may not touch. All outputs of the program ask these rules, which are set before work begins.
namespace OutputRules
{

void Set(IfExists what);
IfExists WhatIfExists();

/// Names the documents that are read. Whatever they are made of, under whatever name, is no place for an output: the
/// documents, their stores, and all else in the folders beside them, into which nothing new may go either.
void ProtectDocuments(const std::vector<std::filesystem::path>& documents);
/// The same for a single file that is read.
void ProtectFile(const std::filesystem::path& file);

/// Throws CHostError, naming the output, if a file of these facts is read.
void RequireNotRead(const std::filesystem::path& output, const struct stat& facts);
/// Throws CHostError if an output within this folder would lie in a document's own folder.
void RequireOutsideOfDocuments(const std::filesystem::path& output, const std::filesystem::path& folder);

} // namespace OutputRules

} // namespace HostTool
