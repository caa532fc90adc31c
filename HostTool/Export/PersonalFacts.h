#pragma once

#include "HostTool/DocumentFacts.h"
#include "HostTool/RegionFacts.h"

#include <ostream>

namespace HostTool
{

/// Something in a document by which a person, a case or a laboratory may be told.
struct CPersonalFact
{
    std::string What; ///< "group 0, sample"
    std::string Value;
    std::string InExport; ///< what becomes of it in an export
};

/// All of them that the document tells; `regions` by group.
std::vector<CPersonalFact> PersonalFactsOf(const CDocumentFacts& document,
                                           const std::vector<std::vector<CRegionFacts>>& regions);

/// For people: a line for each.
void PrintPersonalFacts(std::ostream& out, const CDocument& document);

// Takes away what an export is not to tell: author, comment, names, dates, experiment and sample. Names of channels
// stay, which are those of dyes.
void Strip(CDocumentFacts& document);
void Strip(CGroupFacts& group);
void Strip(CRegionFacts& region);

} // namespace HostTool
