#pragma once
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

namespace Benchmarks
{

/// The size of a stored tile, that of a JPEG tile of 256 x 256 pixels.
constexpr uint32_t TileSize = 20480;

/// The bytes of a file, read without any of the plug-in's code.
class CFile
{
public:
    explicit CFile(const std::filesystem::path& name);
    ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    int Descriptor() const { return _file; }
    void Read(void* target, size_t size, uint64_t offset) const;

private:
    int _file;
};

/// The list of a store's records, read with none of the plug-in's code: what is measured beside it must not depend on
/// it.
struct CStoreList
{
    CStoreList() = default;
    explicit CStoreList(const CFile& store);

    uint64_t Begin = 0;            ///< in the file
    uint64_t Size = 0;             ///< in bytes
    std::vector<uint64_t> Offsets; ///< of the bytes of each tile
};

/// A slide of one level for measurements: `numOfTiles` tiles of TileSize bytes in rows, in a binary store. Written on
/// first use into a temporary folder, which goes with the program; the tiles' bytes are holes in the file.
class CSlide
{
public:
    static const CSlide& Of(int64_t numOfTiles);

    uint32_t NumOfTiles() const { return _numOfTiles; }
    const std::filesystem::path& FileName() const { return _fileName; }
    const std::filesystem::path& StoreName() const { return _storeName; }
    /// Where the store keeps the bytes of each tile, by number.
    const std::vector<uint64_t>& TileOffsets() const { return _list.Offsets; }
    /// Where the list of records lies, and how many bytes it takes.
    uint64_t OffsetOfList() const { return _list.Begin; }
    uint64_t SizeOfList() const { return _list.Size; }

private:
    explicit CSlide(int64_t numOfTiles);

    uint32_t _numOfTiles;
    std::filesystem::path _fileName;
    std::filesystem::path _storeName;
    CStoreList _list;
};

/// A folder of this program's own, which goes with it.
const std::filesystem::path& Folder();

/// Ends the program with a line when a measurement went wrong: a figure that was not verified is none.
void Require(bool condition, const char* what);

/// Seconds that `work` takes.
double SecondsOf(const std::function<void()>& work);

} // namespace Benchmarks
