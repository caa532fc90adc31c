#pragma once

#include "SampleDocuments/Document.h"

namespace ZelMake
{

/// Checks that the document and the stores of its stacks can be written at `path` and that nothing leads out of the
/// folder of the document. Makes that folder. Throws CSampleError.
void CheckTarget(const std::filesystem::path& path, const SampleDocuments::Document& document);

/// Takes away the stores of an earlier run that would stand in the way of the new ones: a stack whose folder holds two
/// stores is refused by readers.
void RemoveOldStores(const std::filesystem::path& path, const SampleDocuments::Document& document);

} // namespace ZelMake
