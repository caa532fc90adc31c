#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace HostTool
{

/// A file of little-endian numbers, of which any part may be missing.
class CReaderFile
{
public:
    /// Throws CHostError if it can't be opened.
    explicit CReaderFile(const std::filesystem::path& path);
    ~CReaderFile();
    CReaderFile(const CReaderFile&) = delete;
    CReaderFile& operator=(const CReaderFile&) = delete;

    uint64_t Size() const { return _Size; }
    /// Whether so many bytes lie at an offset.
    bool Has(uint64_t offset, uint64_t size) const { return offset <= _Size && size <= _Size - offset; }
    /// Nothing where the bytes do not lie in the file, or can't be read.
    std::optional<std::vector<uint8_t>> Bytes(uint64_t offset, size_t size) const;
    std::optional<uint64_t> Number(uint64_t offset, size_t size) const;

private:
    int _Descriptor = -1;
    uint64_t _Size = 0;
};

/// The first `size` bytes as an unsigned number, lowest byte first.
uint64_t NumberOf(const uint8_t* bytes, size_t size);

} // namespace HostTool
