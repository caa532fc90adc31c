#pragma once

#include "HostTool/OutputFile.h"
#include "HostTool/Verify/TileCheck.h"

#include <filesystem>
#include <string>
#include <vector>

namespace HostTool
{

/// Writes the hashes of a checked document as JSON: of each tile, of each level and of the document. A level's hash is
/// that of its tiles' verdicts, sizes and hashes in their order, the document's that of its levels' hashes.
/// Throws CHostError if the file can't be written.
void WriteHashes(const CCheckedDocument& checked, COutputFile& file);

/// What differs between a checked document and hashes that were written before, a line for each tile or level, for
/// people; empty if nothing does. At most 50 lines, and one that counts the rest.
/// Throws CHostError if the file is none that WriteHashes wrote.
std::vector<std::string> DifferencesTo(const CCheckedDocument& checked, const std::filesystem::path& path);

/// The hash of a document, as 16 hexadecimal digits.
std::string HashOf(const CCheckedDocument& checked);

} // namespace HostTool
