#pragma once

#include "SampleDocuments/Bytes.h"

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <unordered_map>

namespace SampleDocuments
{

/// How the bytes of a pixel component are to be read.
struct ComponentType
{
    enum E : uint32_t
    {
        Int8 = 1,
        Uint8 = 2,
        Int16 = 3,
        Uint16 = 4,
        Int32 = 5,
        Uint32 = 6,
        Int64 = 7,
        Uint64 = 8,
        Float = 9,
        Double = 10
    };
};

/// Bytes of one component; 1 for a type that is not known.
uint32_t BytesOfComponent(uint32_t componentType);

struct StoreCompression
{
    enum E : uint32_t
    {
        Raw = 0,
        Jpeg = 2,
        J2k = 3,
        JpegLossless = 5,
        Png = 8,
        Bmp = 9
    };
};

struct StoreColorSpace
{
    enum E : uint32_t
    {
        Gray = 1,
        Palette = 2,
        Rgb = 4,
        Hsv = 5,
        AdobeRgb = 19
    };
};

struct ComponentOrder
{
    enum E : int32_t
    {
        Unknown = -1,
        None = 0,
        Bgr = 1,
        Rgb = 2
    };
};

/// The 64 bytes at the start of a store; what is optional is worked out when the store is written.
struct CStoreVolumeHeader
{
    std::array<uint8_t, 4> Magic = {'S', 'T', 'O', 'R'};
    uint32_t HeaderSize = 64;
    uint32_t VolumeVersion = 1;
    std::optional<uint32_t> DimensionCount;
    std::optional<uint64_t> AdditionalHeaderOffset;
    uint32_t AdditionalHeaderSize = 172;
    uint32_t Unused1 = 0;
    std::optional<int64_t> FilePositionOfUsedChunks;
    std::optional<uint32_t> NumberOfUsedChunks;
    uint32_t Unused2 = 0;
    uint64_t FilePositionOfFreeChunks = 0;
    uint32_t NumberOfFreeChunks = 0;
    uint32_t Unused3 = 0;
};

/// The 172 bytes that tell what the pixels of a store are.
struct CStoreAdditionalHeader
{
    std::array<uint8_t, 4> MagicID = {'A', 'D', 'D', 'H'};
    uint32_t HeaderVersion = 1;
    uint32_t ComponentType = ComponentType::Uint8;
    uint32_t ComponentCount = 1;
    uint32_t ColorSpace = StoreColorSpace::Gray;
    uint32_t CompressionFormat = StoreCompression::Raw;
    uint32_t CompressionQuality = 0;
    uint32_t TileX = 256;
    uint32_t TileY = 256;
    uint32_t TileZ = 1;
    std::array<uint32_t, 17> PixInfoHints = {};
    std::array<uint32_t, 10> BackgroundFillColor = {};
    int32_t ComponentOrder = ComponentOrder::None;
    uint32_t PyramidUsage = 0;
    std::array<uint8_t, 16> ProfileID = {};
};

/// One record of the chunk list with the bytes that it stands for.
struct CStoredTile
{
    std::vector<int32_t> Elements; ///< column, row, one per dimension of the stack, level
    ByteString Body;
    std::optional<uint64_t> Offset;       ///< worked out if not set; a record may point anywhere
    std::optional<uint32_t> Size;         ///< that of the body if not set
    std::optional<uint32_t> ElementCount; ///< that of the elements if not set
    uint32_t Spare = 0;                   ///< the last 4 bytes of the record
};

/// A whole binary tile store in memory, to be looked at and damaged before it is written. For stores that do not fit
/// there is CTileStoreWriter.
class CTileStore
{
public:
    CStoreVolumeHeader Header;
    CStoreAdditionalHeader Additional;
    std::vector<CStoredTile> Tiles; ///< records and bodies are written in this order
    bool ChunkListBeforeBodies = false;
    ByteString Tail; ///< bytes behind everything

    /// Appends a tile; `indexes` are the elements between row and level.
    CStoredTile& Add(int32_t column, int32_t row, const std::vector<int32_t>& indexes, int32_t level, ByteString body);
    /// The first tile with these elements. Throws CSampleError if there is none.
    CStoredTile& Tile(const std::vector<int32_t>& elements);
    /// Takes away the tiles for which `condition(tile)` holds; answers how many they were.
    template <typename Condition>
    size_t DropIf(Condition condition)
    {
        return std::erase_if(Tiles, condition);
    }

    ByteString ToBytes() const;
    void WriteTo(const std::filesystem::path& path) const;
};

/// Writes a store of any size to a file, body by body: only the records (20 bytes and 4 per element) stay in memory.
/// The chunk list comes behind the bodies. A file that is not finished is taken away by the destructor.
class CTileStoreWriter
{
public:
    /// Throws CSampleError if the file can't be made; folders above it are made.
    CTileStoreWriter(const std::filesystem::path& path, CStoreVolumeHeader header,
                     const CStoreAdditionalHeader& additional);
    ~CTileStoreWriter();
    CTileStoreWriter(const CTileStoreWriter&) = delete;
    CTileStoreWriter& operator=(const CTileStoreWriter&) = delete;

    /// A tile with a body of its own. All records of a store must have the same number of elements.
    void Add(std::span<const int32_t> elements, std::span<const uint8_t> body);
    /// A tile with a body of zeros that takes no room on disk.
    void AddHole(std::span<const int32_t> elements, uint32_t size);
    /// A tile whose record points at the body that was written for `key`. False if there is none yet: then write it
    /// by AddKeyed.
    bool AddShared(std::span<const int32_t> elements, uint64_t key);
    /// A tile with a body of its own, which later ones may share.
    void AddKeyed(std::span<const int32_t> elements, uint64_t key, std::span<const uint8_t> body);
    /// Like AddShared, but copies the bytes within the file, so that each record has its own.
    bool AddCopy(std::span<const int32_t> elements, uint64_t key);

    size_t NumOfTiles() const { return _NumOfTiles; }
    /// Writes the chunk list and the headers and closes the file.
    void Finish();

private:
    struct CBody
    {
        uint64_t Offset;
        uint32_t Size;
    };
    void AddRecord(std::span<const int32_t> elements, CBody body);
    void WriteAt(uint64_t offset, std::span<const uint8_t> bytes);

    struct CFileCloser
    {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::filesystem::path _Path;
    CStoreVolumeHeader _Header;
    CStoreAdditionalHeader _Additional;
    std::unique_ptr<std::FILE, CFileCloser> _File;
    ByteString _Records;
    std::unordered_map<uint64_t, CBody> _Shared;
    uint64_t _End;
    size_t _NumOfTiles = 0;
    size_t _NumOfElements = 0;
    bool _IsFinished = false;
};

} // namespace SampleDocuments
