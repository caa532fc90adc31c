#pragma once

#include "SampleDocuments/Bytes.h"

#include <map>
#include <optional>

namespace SampleDocuments
{

struct TiffType
{
    enum E : uint16_t
    {
        Byte = 1,
        Ascii = 2,
        Short = 3,
        Long = 4,
        Rational = 5,
        Undefined = 7
    };
};

/// The value of one entry of a directory.
struct CTiffEntry
{
    uint16_t Type = TiffType::Long;
    uint32_t Count = 0;
    ByteString Value;                      ///< stored in the entry itself if it takes at most 4 bytes
    std::optional<uint32_t> OffsetInstead; ///< stored in the place of the value or its offset
};

/// One directory of a classic little-endian TIFF file, with its pixels, written by hand so that every number in it can
/// be wrong. A new directory is uncompressed, one strip, 8 bits, one sample; its pixels are a pattern that differs
/// from strip to strip.
///
/// Uncompressed strips and tiles must have the size that the directory tells, or TIFF libraries refuse to read them.
class CTiffDirectory
{
public:
    CTiffDirectory(uint32_t width, uint32_t height);

    CTiffDirectory& Bits(uint16_t bitsPerSample);
    CTiffDirectory& Samples(uint16_t samplesPerPixel); ///< 3 makes it RGB
    CTiffDirectory& Strips(uint32_t rowsPerStrip);
    CTiffDirectory& Tiles(uint32_t width, uint32_t height);
    CTiffDirectory& Compression(uint16_t code);
    CTiffDirectory& Photometric(uint16_t code);
    CTiffDirectory& SampleFormat(uint16_t code);
    CTiffDirectory& PlanarConfig(uint16_t code);
    CTiffDirectory& JpegTables(ByteString tables);
    CTiffDirectory& Description(std::string_view text);
    /// The strips or tiles in their order, as they are to lie in the file.
    CTiffDirectory& Data(std::vector<ByteString> stripsOrTiles);

    /// Any entry, stored last of all, so that it wins over what is worked out.
    CTiffDirectory& Set(uint16_t tag, uint16_t type, const std::vector<uint32_t>& values);
    CTiffDirectory& Set(uint16_t tag, CTiffEntry entry);
    CTiffDirectory& Drop(uint16_t tag);
    /// The number of entries that the directory tells, whatever it holds.
    CTiffDirectory& EntryCount(uint16_t count);
    /// The offset that stands in the place of the next directory's.
    CTiffDirectory& Next(uint32_t offset);

    uint32_t Width() const { return _Width; }
    uint32_t Height() const { return _Height; }
    bool IsTiled() const { return _TileWidth != 0; }
    size_t NumOfStripsOrTiles() const;
    /// The bytes of a strip or tile, as they are written.
    ByteString StripOrTile(size_t index) const;

private:
    friend class CTiffChainWriter;

    std::map<uint16_t, CTiffEntry> Entries(const std::vector<uint32_t>& offsets,
                                           const std::vector<uint32_t>& sizes) const;
    size_t UncompressedSize(size_t index) const;

    uint32_t _Width;
    uint32_t _Height;
    uint16_t _Bits = 8;
    uint16_t _Samples = 1;
    uint32_t _RowsPerStrip;
    uint32_t _TileWidth = 0;
    uint32_t _TileHeight = 0;
    uint16_t _Compression = 1;
    std::optional<uint16_t> _Photometric;
    std::optional<uint16_t> _SampleFormat;
    std::optional<uint16_t> _PlanarConfig = uint16_t{1};
    std::vector<ByteString> _Data;
    std::map<uint16_t, CTiffEntry> _Set;
    std::vector<uint16_t> _Dropped;
    std::optional<uint16_t> _EntryCount;
    std::optional<uint32_t> _Next;
};

/// Appends the directories with their pixels and chains them. Answers the offset of the first one, counted from the
/// first of `bytes`, or 0 if there are none. `offsets`, if not null, gets the offset of each.
uint32_t AppendDirectories(ByteString& bytes, const std::vector<CTiffDirectory>& directories,
                           std::vector<uint32_t>* offsets = nullptr);

/// A classic TIFF file that holds nothing but these directories.
ByteString TiffFileOf(const std::vector<CTiffDirectory>& directories);

} // namespace SampleDocuments
