#pragma once
#include <cstdint>
#include <span>
#include <vector>

namespace CIA
{

/// How a TIFF file writes its numbers and directories: classic or BigTIFF, in either byte order.
class CTiffLayout
{
public:
    CTiffLayout(bool isBigTiff, bool isBigEndian) : _isBigTiff(isBigTiff), _isBigEndian(isBigEndian) {}

    bool IsBigTiff() const { return _isBigTiff; }
    // Sizes in bytes.
    uint64_t SizeOfNumOfEntries() const { return _isBigTiff ? 8 : 2; }
    uint64_t SizeOfEntry() const { return _isBigTiff ? 20 : 12; }
    uint64_t SizeOfOffset() const { return _isBigTiff ? 8 : 4; }

    /// The number that these bytes stand for, at most 8 of them.
    uint64_t NumberOf(std::span<const unsigned char> bytes) const;
    void AppendNumber(std::vector<unsigned char>& bytes, uint64_t number, uint64_t sizeOfNumber) const;

private:
    bool _isBigTiff;
    bool _isBigEndian;
};

/// The entries of a directory that a picture needs.
struct CNeededEntries
{
    std::vector<unsigned char> Bytes; ///< one entry after the other, as they stand in the file
    uint64_t SizeOfValues = 0;        ///< bytes of those values that lie elsewhere in the file
};

/// Leaves out of the entries of a directory what neither serves nor decodes a picture, as colour profiles, texts and
/// private tags, and of entries with the same tag all but the first, which counts for libtiff too.
CNeededEntries NeededEntriesOf(std::span<const unsigned char> entries, const CTiffLayout& layout, uint64_t sizeOfFile);

} // namespace CIA
