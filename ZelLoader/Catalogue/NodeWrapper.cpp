#include "ZelLoader/Catalogue/NodeWrapper.h"

#include <algorithm>

namespace Zel
{

const CCatalogueRow* CCatalogueClass::Row(uint32_t tag) const
{
    const auto row = std::find_if(Rows.begin(), Rows.end(),
                                  [tag](const CCatalogueRow& candidate)
                                  { return tag >= candidate.LowestTag && tag <= candidate.HighestTag; });
    return row == Rows.end() ? nullptr : &*row;
}

} // namespace Zel
