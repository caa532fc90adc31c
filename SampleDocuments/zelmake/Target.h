#pragma once

#include "SampleDocuments/Document.h"

namespace ZelMake
{

/// Throws CSampleError unless all that stands in the way of a document at `path` was written by this program, which it
/// can tell by the maker's name in the document. What lies in the folder beside it counts as written with it.
void CheckMayBeReplaced(const std::filesystem::path& path);

/// Throws CSampleError if a file that is read is the document at `path`, or lies in the folder beside it.
void CheckIsNotRead(const std::filesystem::path& path, const std::filesystem::path& input);

/// Checks that the document and the stores of its stacks can be written at `path` and that nothing leads out of the
/// folder of the document. Makes that folder. Throws CSampleError.
void CheckTarget(const std::filesystem::path& path, const SampleDocuments::Document& document);

/// Takes away the document of an earlier run, which may have a second name that is to keep it, and the stores that
/// would stand in the way of the new ones: a stack whose folder holds two stores is refused by readers.
void RemoveOldFiles(const std::filesystem::path& path, const SampleDocuments::Document& document);

} // namespace ZelMake
