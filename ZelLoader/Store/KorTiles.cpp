#include "ZelLoader/Store/KorTiles.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/LargeMemory.h"

#include <algorithm>

namespace Zel
{

namespace
{

/// Room for the next run. Where runs have turned out to be short, for as many as there may be: to move them again and
/// again would cost more than to read them.
void MakeRoomForARun(std::vector<CKorTileRun>& runs, uint32_t numOfTiles, uint32_t numOfTilesToCome)
{
    constexpr size_t Many = 1024;
    constexpr uint32_t ShortLength = 8;
    if (runs.size() < runs.capacity() || runs.size() < Many || numOfTiles / runs.size() >= ShortLength)
        return;
    runs.reserve(runs.size() + numOfTilesToCome);
    ExpectToFill(runs.data(), runs.capacity() * sizeof(CKorTileRun));
}

} // namespace

void CKorTiles::ReserveBlocks(uint32_t numOfTiles)
{
    ZEL_ASSERT(_Size == 0);
    _Blocks = std::make_unique_for_overwrite<CKorBlock[]>(numOfTiles);
    _NumOfBlocks = numOfTiles;
    ExpectToFill(_Blocks.get(), numOfTiles * sizeof(CKorBlock));
}

void CKorTiles::AddRun(const CDecompressedKorTileIdx& first, uint32_t length)
{
    if (ContinuesLatestRun(first))
        _Runs.back().Length += length;
    else
    {
        MakeRoomForARun(_Runs, _Size, _NumOfBlocks - std::min(_NumOfBlocks, _Size));
        _Runs.push_back({first, _Size, length});
    }
    _Size += length;
    while (_RunsOfStretches.size() * SizeOfStretch < _Size)
        _RunsOfStretches.push_back(static_cast<uint32_t>(_Runs.size() - 1));
}

void CKorTiles::AddRun(const CDecompressedKorTileIdx& first, uint32_t length, const Byte* blocks, size_t sizeOfRecord)
{
    ZEL_ASSERT(length <= _NumOfBlocks - _Size);
    for (CKorBlock* block = &_Blocks[_Size]; block != &_Blocks[_Size + length]; ++block, blocks += sizeOfRecord)
        std::memcpy(block, blocks, sizeof *block);
    AddRun(first, length);
}

bool CKorTiles::ContinuesLatestRun(const CDecompressedKorTileIdx& first) const
{
    if (_Runs.empty())
        return false;
    const CKorTileRun& latest = _Runs.back();
    CDecompressedKorTileIdx inLatestColumn = first;
    inLatestColumn.ColIdx = latest.FirstIdx.ColIdx;
    return int64_t{first.ColIdx} == int64_t{latest.FirstIdx.ColIdx} + latest.Length &&
           inLatestColumn == latest.FirstIdx;
}

const CKorTileRun& CKorTiles::RunBehind(size_t stretch, uint32_t number) const
{
    const auto first = _Runs.begin() + _RunsOfStretches[stretch];
    const auto last =
        stretch + 1 < _RunsOfStretches.size() ? _Runs.begin() + _RunsOfStretches[stretch + 1] + 1 : _Runs.end();
    const uint32_t distance = number - first->FirstNumber;
    if (distance < last - first && first[distance].Holds(number)) // all are runs of one
        return first[distance];
    const auto beginsBehind = [](uint32_t n, const CKorTileRun& run) { return n < run.FirstNumber; };
    return *std::prev(std::upper_bound(first, last, number, beginsBehind));
}

CKorTile CKorTiles::operator[](uint32_t number) const
{
    const CKorBlock block = Block(number);
    return {.Idx = Idx(number), .BlockSize = block.Size(), .BlockOffset = block.Offset()};
}

} // namespace Zel
