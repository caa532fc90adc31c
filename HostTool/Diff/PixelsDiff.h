#pragma once

#include "HostTool/Diff/DiffReport.h"
#include "HostTool/Pixels/GroupPixels.h"
#include "HostTool/Pixels/Progress.h"

namespace HostTool
{

/// The same group of two documents.
struct CGroupPair
{
    const CGroupPixels& A;
    const CGroupPixels& B;

    /// "group 0, "
    std::string Name() const { return NameOfGroup(A.Group()) + ", "; }
};

/// The planes that both groups have, channels first.
std::vector<CPosition> CommonPlanes(const CGroupPair& groups);

/// Compares the tiles of all planes and levels that both have, by their stored bytes.
void CompareStored(const CGroupPair& groups, unsigned jobs, CDiffReport& report);

/// Compares the decoded pixels of all planes and levels that both have, whatever tiles they are stored in. A pixel that
/// has no tile in one document only is a difference.
void CompareDecoded(const CGroupPair& groups, unsigned jobs, CDiffReport& report);

} // namespace HostTool
