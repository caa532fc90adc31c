#include "ZelLoader/Store/KorTile.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Text.h"

namespace Zel
{

uint32_t CDecompressedKorTileIdx::Idx(DimensionType::E type)
{
    switch (type)
    {
    case DimensionType::DimensionType_X:
        return 0;
    case DimensionType::DimensionType_Y:
        return 1;
    case DimensionType::DimensionType_Z:
        return 2;
    case DimensionType::DimensionType_T:
        return 3;
    case DimensionType::DimensionType_C:
        return 4;
    case DimensionType::DimensionType_L:
        return 5;
    case DimensionType::DimensionType_P:
        return 6;
    default:
        FailAssertion(__FILE__, __LINE__);
    }
}

std::string CDecompressedKorTileIdx::ToString() const
{
    using CommonUtil::ToString;
    return "{ColIdx=" + ToString(ColIdx) + ", RowIdx=" + ToString(RowIdx) + ", ZIdx=" + ToString(ZIdx) +
           ", TIdx=" + ToString(TIdx) + ", CIdx=" + ToString(CIdx) + ", LIdx=" + ToString(LIdx) +
           ", PIdx=" + ToString(PIdx) + "}";
}

} // namespace Zel
