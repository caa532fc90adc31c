#include "SampleDocuments/TiffDirectory.h"

#include <algorithm>

namespace SampleDocuments
{

namespace
{

struct TiffTag
{
    enum E : uint16_t
    {
        ImageWidth = 256,
        ImageLength = 257,
        BitsPerSample = 258,
        Compression = 259,
        Photometric = 262,
        ImageDescription = 270,
        StripOffsets = 273,
        SamplesPerPixel = 277,
        RowsPerStrip = 278,
        StripByteCounts = 279,
        PlanarConfig = 284,
        TileWidth = 322,
        TileLength = 323,
        TileOffsets = 324,
        TileByteCounts = 325,
        SampleFormat = 339,
        JpegTables = 347
    };
};

constexpr uint16_t PhotometricMinIsBlack = 1;
constexpr uint16_t PhotometricRgb = 2;

CTiffEntry EntryOf(uint16_t type, const std::vector<uint32_t>& values)
{
    CTiffEntry entry;
    entry.Type = type;
    entry.Count = static_cast<uint32_t>(values.size());
    for (const uint32_t value : values)
    {
        if (type == TiffType::Byte || type == TiffType::Ascii || type == TiffType::Undefined)
            Append(entry.Value, static_cast<uint8_t>(value));
        else if (type == TiffType::Short)
            Append(entry.Value, static_cast<uint16_t>(value));
        else
            Append(entry.Value, value);
    }
    if (type == TiffType::Rational)
        entry.Count /= 2;
    return entry;
}

CTiffEntry EntryOf(uint16_t type, ByteString bytes)
{
    CTiffEntry entry;
    entry.Type = type;
    entry.Count = static_cast<uint32_t>(bytes.size());
    entry.Value = std::move(bytes);
    return entry;
}

size_t Parts(size_t whole, size_t part)
{
    return part == 0 ? 0 : (whole + part - 1) / part;
}

} // namespace

CTiffDirectory::CTiffDirectory(uint32_t width, uint32_t height) : _Width(width), _Height(height), _RowsPerStrip(height)
{
}

CTiffDirectory& CTiffDirectory::Bits(uint16_t bitsPerSample)
{
    _Bits = bitsPerSample;
    return *this;
}

CTiffDirectory& CTiffDirectory::Samples(uint16_t samplesPerPixel)
{
    _Samples = samplesPerPixel;
    return *this;
}

CTiffDirectory& CTiffDirectory::Strips(uint32_t rowsPerStrip)
{
    _TileWidth = _TileHeight = 0;
    _RowsPerStrip = rowsPerStrip;
    return *this;
}

CTiffDirectory& CTiffDirectory::Tiles(uint32_t width, uint32_t height)
{
    _TileWidth = width;
    _TileHeight = height;
    return *this;
}

CTiffDirectory& CTiffDirectory::Compression(uint16_t code)
{
    _Compression = code;
    return *this;
}

CTiffDirectory& CTiffDirectory::Photometric(uint16_t code)
{
    _Photometric = code;
    return *this;
}

CTiffDirectory& CTiffDirectory::SampleFormat(uint16_t code)
{
    _SampleFormat = code;
    return *this;
}

CTiffDirectory& CTiffDirectory::PlanarConfig(uint16_t code)
{
    _PlanarConfig = code;
    return *this;
}

CTiffDirectory& CTiffDirectory::JpegTables(ByteString tables)
{
    return Set(TiffTag::JpegTables, EntryOf(TiffType::Undefined, std::move(tables)));
}

CTiffDirectory& CTiffDirectory::Description(std::string_view text)
{
    ByteString terminated = BytesOf(text);
    terminated.push_back(0);
    return Set(TiffTag::ImageDescription, EntryOf(TiffType::Ascii, std::move(terminated)));
}

CTiffDirectory& CTiffDirectory::Data(std::vector<ByteString> stripsOrTiles)
{
    _Data = std::move(stripsOrTiles);
    return *this;
}

CTiffDirectory& CTiffDirectory::Set(uint16_t tag, uint16_t type, const std::vector<uint32_t>& values)
{
    return Set(tag, EntryOf(type, values));
}

CTiffDirectory& CTiffDirectory::Set(uint16_t tag, CTiffEntry entry)
{
    _Set[tag] = std::move(entry);
    return *this;
}

CTiffDirectory& CTiffDirectory::Drop(uint16_t tag)
{
    _Dropped.push_back(tag);
    return *this;
}

CTiffDirectory& CTiffDirectory::EntryCount(uint16_t count)
{
    _EntryCount = count;
    return *this;
}

CTiffDirectory& CTiffDirectory::Next(uint32_t offset)
{
    _Next = offset;
    return *this;
}

size_t CTiffDirectory::NumOfStripsOrTiles() const
{
    if (!_Data.empty())
        return _Data.size();
    return IsTiled() ? Parts(_Width, _TileWidth) * Parts(_Height, _TileHeight) : Parts(_Height, _RowsPerStrip);
}

size_t CTiffDirectory::UncompressedSize(size_t index) const
{
    const size_t bitsPerPixel = size_t{_Bits} * _Samples;
    if (IsTiled())
        return Parts(_TileWidth * bitsPerPixel, 8) * _TileHeight;
    const size_t firstRow = index * _RowsPerStrip;
    return Parts(_Width * bitsPerPixel, 8) * std::min<size_t>(_RowsPerStrip, _Height - firstRow);
}

ByteString CTiffDirectory::StripOrTile(size_t index) const
{
    if (index >= NumOfStripsOrTiles())
        throw CSampleError("TIFF directory: there is no strip or tile " + std::to_string(index));
    if (!_Data.empty())
        return _Data[index];
    ByteString pattern(UncompressedSize(index));
    for (size_t i = 0; i < pattern.size(); ++i)
        pattern[i] = static_cast<uint8_t>(i * 7 + index * 31 + _Width);
    return pattern;
}

std::map<uint16_t, CTiffEntry> CTiffDirectory::Entries(const std::vector<uint32_t>& offsets,
                                                       const std::vector<uint32_t>& sizes) const
{
    std::map<uint16_t, CTiffEntry> entries;
    entries[TiffTag::ImageWidth] = EntryOf(TiffType::Long, std::vector{_Width});
    entries[TiffTag::ImageLength] = EntryOf(TiffType::Long, std::vector{_Height});
    entries[TiffTag::BitsPerSample] = EntryOf(TiffType::Short, std::vector<uint32_t>(_Samples, _Bits));
    entries[TiffTag::Compression] = EntryOf(TiffType::Short, std::vector<uint32_t>{_Compression});
    const uint16_t usual = _Samples == 3 ? PhotometricRgb : PhotometricMinIsBlack;
    entries[TiffTag::Photometric] = EntryOf(TiffType::Short, std::vector<uint32_t>{_Photometric.value_or(usual)});
    entries[TiffTag::SamplesPerPixel] = EntryOf(TiffType::Short, std::vector<uint32_t>{_Samples});
    if (_PlanarConfig)
        entries[TiffTag::PlanarConfig] = EntryOf(TiffType::Short, std::vector<uint32_t>{*_PlanarConfig});
    if (_SampleFormat)
        entries[TiffTag::SampleFormat] = EntryOf(TiffType::Short, std::vector<uint32_t>(_Samples, *_SampleFormat));
    if (IsTiled())
    {
        entries[TiffTag::TileWidth] = EntryOf(TiffType::Long, std::vector{_TileWidth});
        entries[TiffTag::TileLength] = EntryOf(TiffType::Long, std::vector{_TileHeight});
    }
    else
        entries[TiffTag::RowsPerStrip] = EntryOf(TiffType::Long, std::vector{_RowsPerStrip});
    entries[IsTiled() ? TiffTag::TileOffsets : TiffTag::StripOffsets] = EntryOf(TiffType::Long, offsets);
    entries[IsTiled() ? TiffTag::TileByteCounts : TiffTag::StripByteCounts] = EntryOf(TiffType::Long, sizes);
    for (const auto& [tag, entry] : _Set)
        entries[tag] = entry;
    for (const uint16_t tag : _Dropped)
        entries.erase(tag);
    return entries;
}

/// Writes one directory behind the other, each one behind its pixels and the values that do not fit its entries.
class CTiffChainWriter
{
public:
    explicit CTiffChainWriter(ByteString& bytes) : _Bytes(bytes) {}

    uint32_t Write(const CTiffDirectory& directory)
    {
        std::vector<uint32_t> offsets, sizes;
        for (size_t i = 0; i < directory.NumOfStripsOrTiles(); ++i)
        {
            const ByteString data = directory.StripOrTile(i);
            offsets.push_back(AppendAligned(data));
            sizes.push_back(static_cast<uint32_t>(data.size()));
        }
        const auto entries = directory.Entries(offsets, sizes);
        ByteString table;
        Append(table, directory._EntryCount.value_or(static_cast<uint16_t>(entries.size())));
        for (const auto& [tag, entry] : entries)
            AppendEntry(table, tag, entry);
        const uint32_t offset = AppendAligned(table);
        if (_PlaceOfNext)
            Patch(_Bytes, *_PlaceOfNext, offset);
        _PlaceOfNext = directory._Next ? std::nullopt : std::optional(_Bytes.size());
        Append(_Bytes, directory._Next.value_or(0));
        return offset;
    }

private:
    /// Directories and values begin at even offsets, as TIFF asks for.
    uint32_t AppendAligned(const ByteString& more)
    {
        if (_Bytes.size() % 2 != 0)
            _Bytes.push_back(0);
        const auto offset = static_cast<uint32_t>(_Bytes.size());
        Append(_Bytes, std::span<const uint8_t>(more));
        return offset;
    }

    void AppendEntry(ByteString& table, uint16_t tag, const CTiffEntry& entry)
    {
        Append(table, tag);
        Append(table, entry.Type);
        Append(table, entry.Count);
        if (entry.OffsetInstead)
            Append(table, *entry.OffsetInstead);
        else if (entry.Value.size() > 4)
            Append(table, AppendAligned(entry.Value));
        else
        {
            ByteString four = entry.Value;
            four.resize(4);
            Append(table, std::span<const uint8_t>(four));
        }
    }

    ByteString& _Bytes;
    std::optional<size_t> _PlaceOfNext;
};

uint32_t AppendDirectories(ByteString& bytes, const std::vector<CTiffDirectory>& directories,
                           std::vector<uint32_t>* offsets)
{
    CTiffChainWriter writer(bytes);
    uint32_t first = 0;
    for (const CTiffDirectory& directory : directories)
    {
        const uint32_t offset = writer.Write(directory);
        if (first == 0)
            first = offset;
        if (offsets)
            offsets->push_back(offset);
    }
    return first;
}

ByteString TiffFileOf(const std::vector<CTiffDirectory>& directories)
{
    ByteString bytes = BytesOf("II*");
    bytes.resize(8);
    Patch(bytes, 4, AppendDirectories(bytes, directories));
    return bytes;
}

} // namespace SampleDocuments
