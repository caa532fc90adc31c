#pragma once

#include "HostTool/DocumentFacts.h"
#include "HostTool/Reader/FileRoles.h"

#include <string>

namespace HostTool
{

/// How many tiles of a level are stored, in all planes.
struct CStoredCount
{
    uint64_t NumOfStored = 0;
    uint64_t NumOfAbsent = 0;
};

/// All that `zel info --json` tells.
struct CInfo
{
    std::filesystem::path Path;
    std::optional<CDocumentFacts> Facts;             ///< nothing: the document can't be opened
    std::vector<CHostError> Missing;                 ///< what is to be said of groups that can't be read
    std::optional<std::vector<CDocumentFile>> Files; ///< nothing: its metadata can't be read
    std::vector<std::map<int, CStoredCount>> Counts; ///< by group and level; empty if they can't be told
    Diagnostics Remarks;                             ///< beside those of the facts
};

/// Asks the plug-in, and the reader's library for what it can't tell. Failures become remarks.
CInfo InfoOf(const std::filesystem::path& plugin, const std::filesystem::path& file);

/// The facts as JSON. Its keys stay, and mean the same, as long as "version" does; new ones may come. What is unknown
/// is null.
/// In one line, or in many for people.
std::string JsonOf(const CInfo& info, bool isPretty);

} // namespace HostTool
