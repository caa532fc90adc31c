#pragma once
#include "Brix/AccessorInterface.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace Benchmarks
{

/// The size of a stored tile, that of a JPEG tile of 256 x 256 pixels.
constexpr uint32_t TileSize = 20480;

/// A slide of one level for measurements: `numOfTiles` tiles of TileSize bytes in rows, in a binary store. Written on
/// first use into a temporary folder, which goes with the program; the tiles' bytes are holes in the file.
class CSlide
{
public:
    static const CSlide& Of(int64_t numOfTiles);

    uint32_t NumOfTiles() const { return _numOfTiles; }
    const std::wstring& FileName() const { return _fileName; }
    const std::filesystem::path& StoreName() const { return _storeName; }
    /// Where the store keeps the bytes of each tile, by number.
    const std::vector<uint64_t>& TileOffsets() const { return _tileOffsets; }
    /// Where the list of records lies, and how many bytes it takes.
    uint64_t OffsetOfList() const { return _offsetOfList; }
    uint64_t SizeOfList() const { return _sizeOfList; }

private:
    explicit CSlide(int64_t numOfTiles);
    void ReadList();

    uint32_t _numOfTiles;
    std::wstring _fileName;
    std::filesystem::path _storeName;
    std::vector<uint64_t> _tileOffsets;
    uint64_t _offsetOfList = 0;
    uint64_t _sizeOfList = 0;
};

/// A slide that a host has opened; a failing call ends the program with a line that names it.
class COpenSlide
{
public:
    explicit COpenSlide(const CSlide& slide);
    ~COpenSlide();
    COpenSlide(const COpenSlide&) = delete;
    COpenSlide& operator=(const COpenSlide&) = delete;

    AC_HGROUP Group() const { return _group; }
    AC_HIMAGE Tile(uint32_t number) const;
    /// Reads a tile's bytes into `buffer`, which holds TileSize of them.
    void ReadBody(AC_HIMAGE tile, std::vector<BYTE>& buffer) const;

private:
    AC_HFILE _document = nullptr;
    AC_HGROUP _group = nullptr;
};

/// A folder of this program's own, which goes with it.
const std::filesystem::path& Folder();

/// Ends the program with a line when a measurement went wrong: a figure that was not verified is none.
void Require(bool condition, const char* what);

/// Seconds that `work` takes.
double SecondsOf(const std::function<void()>& work);

/// The middle one of several measurements.
double Median(std::vector<double> values);

} // namespace Benchmarks
