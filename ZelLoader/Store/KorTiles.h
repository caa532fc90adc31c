#pragma once
#include "CommonUtil/BinaryFileReader.h"
#include "ZelLoader/Store/KorTile.h"

#include <array>
#include <cstring>
#include <memory>
#include <vector>

namespace Zel
{

/// Where the bytes of a tile lie, in the 12 bytes that a record of a binary store has for it.
class CKorBlock
{
public:
    uint64_t Offset() const
    {
        uint64_t offset;
        std::memcpy(&offset, _asInFile.data(), sizeof offset);
        return offset;
    }
    uint32_t Size() const
    {
        uint32_t size;
        std::memcpy(&size, _asInFile.data() + sizeof(uint64_t), sizeof size);
        return size;
    }

private:
    std::array<Byte, 12> _asInFile; ///< not cleared when room for many is made
};

/// Records that follow each other in the file and stand side by side: each is one column behind the one before it, all
/// else in their indexes is equal.
struct CKorTileRun
{
    CDecompressedKorTileIdx FirstIdx;
    uint32_t FirstNumber = 0;
    uint32_t Length = 0; ///< how many there are

    bool Holds(uint32_t number) const { return number - FirstNumber < Length; }
    /// Of a record of the run, by its number in the store.
    CDecompressedKorTileIdx Idx(uint32_t number) const
    {
        CDecompressedKorTileIdx idx = FirstIdx;
        idx.ColIdx += static_cast<int32_t>(number - FirstNumber);
        return idx;
    }
    CDecompressedKorTileIdx LastIdx() const { return Idx(FirstNumber + Length - 1); }
};

/// The tile records of a binary store by number, which is their place in its list. A slide has millions of them, nearly
/// all in rows: an index is kept for each run of neighbours, and of the rest only where the bytes lie. Records in any
/// other order are runs of one, and take no more memory than they would one by one.
class CKorTiles
{
public:
    /// Makes room for the places of the bytes of that many records.
    void ReserveBlocks(uint32_t numOfTiles);
    /// Adds records that stand side by side, the greatest column included.
    void AddRun(const CDecompressedKorTileIdx& first, uint32_t length);
    /// The same with the places of their bytes, `sizeOfRecord` apart; there must be room for them.
    void AddRun(const CDecompressedKorTileIdx& first, uint32_t length, const Byte* blocks, size_t sizeOfRecord);

    uint32_t Size() const { return _Size; }
    CDecompressedKorTileIdx Idx(uint32_t number) const { return RunOf(number).Idx(number); }
    CKorBlock Block(uint32_t number) const { return _Blocks ? _Blocks[number] : CKorBlock(); }
    CKorTile operator[](uint32_t number) const;
    const std::vector<CKorTileRun>& Runs() const { return _Runs; } ///< in the order of the file

private:
    static constexpr uint32_t SizeOfStretch = 64;

    bool ContinuesLatestRun(const CDecompressedKorTileIdx& first) const;
    const CKorTileRun& RunOf(uint32_t number) const
    {
        const size_t stretch = number / SizeOfStretch;
        const CKorTileRun& run = _Runs[_RunsOfStretches[stretch]];
        return run.Holds(number) ? run : RunBehind(stretch, number);
    }
    const CKorTileRun& RunBehind(size_t stretch, uint32_t number) const;

    uint32_t _Size = 0;
    std::vector<CKorTileRun> _Runs;
    std::vector<uint32_t> _RunsOfStretches; ///< the run of each 64th record, from which that of any is not far
    std::unique_ptr<CKorBlock[]> _Blocks;   ///< of each record; null where no room was made
    uint32_t _NumOfBlocks = 0;
};

} // namespace Zel
