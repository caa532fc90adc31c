#pragma once

#include "HostTool/Diff/DiffReport.h"
#include "HostTool/InfoJson.h"
#include "HostTool/RegionFacts.h"

namespace HostTool
{

/// What a document tells beside its pixels.
struct CToldFacts
{
    CInfo Info;
    std::vector<std::vector<CRegionFacts>> Regions; ///< by group
};

CToldFacts ToldFactsOf(const std::filesystem::path& plugin, const CDocument& document);

/// Compares what two documents tell, property by property, and their regions of interest. With `isDecoded`, how pixels
/// are stored is no difference.
void CompareFacts(const CToldFacts& a, const CToldFacts& b, bool isDecoded, CDiffReport& report);

} // namespace HostTool
