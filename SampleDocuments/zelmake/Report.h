#pragma once

#include "SampleDocuments/Document.h"

namespace ZelMake
{

/// What was written, a line for the document and one for each stack.
std::string ReportAsText(const std::filesystem::path& path, const SampleDocuments::Document& document);

/// The same as JSON: the document's path, and of each stack its ID, size, tile size, store and the grid of each level.
std::string ReportAsJson(const std::filesystem::path& path, const SampleDocuments::Document& document);

} // namespace ZelMake
