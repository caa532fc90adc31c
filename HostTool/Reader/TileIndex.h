#pragma once

#include "HostTool/Document.h"
#include "HostTool/Reader/ReaderDocument.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Zel
{
class CKorFile;
struct CTiffStoreLevel;
} // namespace Zel

namespace HostTool
{

/// Where the bytes of one tile lie.
struct CTileRecord
{
    uint32_t Level = 0;
    int64_t Col = 0; ///< of the level's tiles, where it may be below 0
    int64_t Row = 0;
    CPosition Position;
    uint64_t Offset = 0;
    uint64_t Length = 0;
    uint32_t Directory = 0;                    ///< of a TIFF file, from 0
    std::optional<int64_t> FirstPixelRow = {}; ///< of a strip, whose height the plug-in tells otherwise

    /// The order of a file that was written level by level, frame by frame, row by row.
    bool IsBefore(const CTileRecord& other) const;
};

/// The tiles of one group, and the file that they lie in; none if its tile store is missing.
class CGroupIndex
{
public:
    /// Throws CHostError if they can't be listed.
    CGroupIndex(const CReaderDocument& document, Zel::CZelMultiDimImage& image);

    uint32_t StackID() const { return _StackID; }
    const std::filesystem::path& File() const { return _File; }
    uint64_t SizeOfFile() const { return _SizeOfFile; }
    bool IsTiff() const { return _IsTiff; }
    /// In the order of CTileRecord::IsBefore, each position once.
    std::span<const CTileRecord> Records() const { return _Records; }
    /// Null if there is none.
    const CTileRecord* Find(uint32_t level, int64_t col, int64_t row, const CPosition& position) const;
    /// Whether the bytes of a tile reach beyond the end of the file.
    bool IsOutOfFile(const CTileRecord& record) const
    {
        return record.Offset > _SizeOfFile || record.Length > _SizeOfFile - record.Offset;
    }

private:
    void ReadBinaryStore(Zel::CZelMultiDimImage& image);
    void ReadTiffStore(Zel::CZelMultiDimImage& image);
    void AddTilesOfPlane(Zel::CKorFile& store, const Zel::CTiffStoreLevel& level, size_t plane);
    void ReadDirectoriesOfDocument(Zel::CZelMultiDimImage& image);
    void Sort();

    uint32_t _StackID = 0;
    std::filesystem::path _File;
    uint64_t _SizeOfFile = 0;
    bool _IsTiff = false;
    std::vector<CTileRecord> _Records;
};

/// The tiles of all groups, by number.
std::vector<CGroupIndex> TileIndexOf(const CReaderDocument& document);

} // namespace HostTool
