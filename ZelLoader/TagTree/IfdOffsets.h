#pragma once
#include "CommonUtil/BinaryFileReader.h"

#include <cstdint>
#include <unordered_set>
#include <vector>

namespace Zel
{

using namespace CommonUtil;

/// Where the TIFF directories of a file lie. They are chained, and the chain is walked once: what was found stays, so
/// that asking for one directory after the other costs one step each.
class CIfdOffsets
{
public:
    /// The offset of the directory with this number, from 0; number 0 is `offsetOfFirstIfd` itself, whose directory is
    /// not read. A chain that ends before the number, leads back to a directory that it came by or out of the file is
    /// a failed assertion; what was found up to there stays.
    uint32_t IfdOffset(uint32_t offsetOfFirstIfd, CBinaryFileReader& b, uint32_t ifdIdx);

private:
    void StartAt(uint32_t offsetOfFirstIfd, CBinaryFileReader& b);
    void FindNext(CBinaryFileReader& b);

    std::vector<uint32_t> _Offsets; ///< by number
    std::unordered_set<uint32_t> _KnownOffsets;
};

} // namespace Zel
