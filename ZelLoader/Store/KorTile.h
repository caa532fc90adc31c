#pragma once
#include "CommonImageAccess/Frame.h"

#include <array>
#include <cstdint>
#include <string>

namespace Zel
{

using namespace CIA;
using namespace CommonUtil;

/// The position of a tile record on every dimension, whichever of them its file stores.
struct CDecompressedKorTileIdx
{
    static constexpr size_t NumOfSlots = 7;

    int32_t ColIdx = 0; ///< may be negative
    int32_t RowIdx = 0; ///< may be negative
    uint32_t ZIdx = 0;
    uint32_t TIdx = 0;
    uint32_t CIdx = 0;
    uint32_t LIdx = 0;
    uint32_t PIdx = 0; ///< pyramid level

    /// The slot of a dimension, in the order of the fields (C before L, unlike the dimensions themselves). A type that
    /// is no dimension is a failed assertion.
    static uint32_t Idx(DimensionType::E type);

    bool operator==(const CDecompressedKorTileIdx&) const = default;
    CFrameIdx FrameIdx() const { return {ZIdx, CIdx, LIdx, TIdx}; }
    CDeepZoomTileIdx TileIdx() const { return {ColIdx, RowIdx, PIdx}; }
    /// "{ColIdx=0, RowIdx=0, ...}" with all seven.
    std::string ToString() const;
};

/// One record of a binary store: where a tile belongs and where its bytes lie.
struct CKorTile
{
    CDecompressedKorTileIdx Idx;
    uint32_t BlockSize = 0;   ///< in bytes
    uint64_t BlockOffset = 0; ///< absolute, of the tile's bytes
};

} // namespace Zel
