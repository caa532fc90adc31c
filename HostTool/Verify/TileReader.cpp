#include "HostTool/Verify/TileReader.h"

#include "HostTool/DecodedTile.h"
#include "HostTool/Pixels/JpegHeader.h"
#include "HostTool/Pixels/StreamCheck.h"
#include "HostTool/Reader/SoundStacks.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace HostTool
{

CTileReader::CTileReader(const CPluginHost& host, const std::filesystem::path& path, std::span<const CGroupIndex> index,
                         const CCheckOptions& options)
    : _Document(OpenWhatThereIs(host, path)), _Index(index), _Options(options)
{
    for (const int group : _Document.ReadableGroups())
        _Groups.emplace(group, std::make_unique<CCheckedGroupPixels>(CGroupPixels(_Document, group, options.Values)));
}

const CGroupIndex& CTileReader::IndexOf(const CGroupPixels& pixels) const
{
    return _Index[static_cast<size_t>(pixels.Group().Number())];
}

CCheckedTile CTileReader::Check(int groupNumber, int levelNumber, uint64_t area, const CPosition& position)
{
    CCheckedGroupPixels& group = *_Groups.at(groupNumber);
    const CLevel& level = group.Pixels.Level(levelNumber);
    const int64_t col = level.FirstCol + static_cast<int64_t>(area % level.Grid.Cols);
    const int64_t row = level.FirstRow + static_cast<int64_t>(area / level.Grid.Cols);
    const CTileRecord* record = IndexOf(group.Pixels).Find(static_cast<uint32_t>(levelNumber), col, row, position);
    CCheckedTile tile;
    try
    {
        const auto image = group.Pixels.FindImage(level, col, row, position);
        if (image)
            return CheckStored(group, level, record, *image, position);
        tile.Outcome = record ? Verdict::NotServed : Verdict::Absent;
    }
    catch (const CHostError& error)
    {
        tile.Outcome = Verdict::Unreadable;
        tile.Reason = error.what();
    }
    return tile;
}

CCheckedTile CTileReader::CheckStored(CCheckedGroupPixels& group, const CLevel& level, const CTileRecord* record,
                                      const CImage& image, const CPosition& position)
{
    CCheckedTile tile;
    if (record && IndexOf(group.Pixels).IsOutOfFile(*record))
    {
        tile.Outcome = Verdict::OutOfFile;
        tile.Reason = std::to_string(record->Length) + " bytes at " + std::to_string(record->Offset) +
                      " of a file of " + std::to_string(IndexOf(group.Pixels).SizeOfFile());
        return tile;
    }
    _Size = image.ReadInto(_Tile.Bytes);
    tile.Size = _Size;
    tile.Outcome = IsShort(group, level, record, image, position.Channel) ? Verdict::Short : Verdict::Stored;
    tile.Reason = WhyNoBeginning(group.Pixels.Channel(position.Channel).Coding, std::span(_Tile.Bytes).first(_Size));
    if (_Size > 0 && !tile.Reason.empty())
        tile.Outcome = Verdict::Undecodable;
    if (_Options.IsHashing)
        tile.Hash = XXH3_64bits(_Tile.Bytes.data(), _Size);
    if (_Options.IsDecoding && tile.Outcome == Verdict::Stored)
        Decode(tile, group.Pixels, level, image, position.Channel);
    return tile;
}

bool CTileReader::IsShort(CCheckedGroupPixels& group, const CLevel& level, const CTileRecord* record,
                          const CImage& image, uint32_t channel) const
{
    const auto [known, isNew] = group.BytesPerRawPixel.try_emplace(channel);
    if (isNew)
        known->second = image.BytesPerRawPixel();
    // Tiles of a TIFF file come filled up with zeros, so what is stored of them counts; but a stream that was put
    // together of a strip and its tables is longer than that.
    const auto bytes = std::span(_Tile.Bytes).first(_Size);
    const size_t stored = record ? std::min<size_t>(_Size, record->Length) : _Size;
    const TileCoding coding = group.Pixels.Channel(channel).Coding;
    if (!known->second)
        return !HasEnd(coding, bytes.first(stored)) && !HasEnd(coding, bytes);
    if (IndexOf(group.Pixels).IsTiff())
        return record && record->Length < _Size;
    return _Size < uint64_t{level.TileWidth} * level.TileHeight * *known->second;
}

void CTileReader::Decode(CCheckedTile& tile, const CGroupPixels& pixels, const CLevel& level, const CImage& image,
                         uint32_t channel)
{
    const CChannelPixels& facts = pixels.Channel(channel);
    _Tile.Coding = facts.Coding;
    _Tile.IsBlueFirst = facts.IsBlueFirst;
    _Tile.JpegTables.clear();
    CPixelTarget target;
    target.Format = facts.Format;
    target.Width = level.TileWidth;
    target.Height = level.TileHeight;
    const size_t room = _Tile.Bytes.size();
    _Tile.Bytes.resize(_Size);
    const auto header = facts.Coding == TileCoding::Jpeg ? ReadJpegHeader(_Tile.Bytes) : std::nullopt;
    if (header && !header->HasTables)
        _Tile.JpegTables = image.JpegTables();
    if (IndexOf(pixels).IsTiff())
        TakeSizeOfStream(target, _Tile);
    target.Stride = size_t{target.Width} * target.Format.BytesPerPixel();
    _Pixels.resize(target.Stride * target.Height);
    target.Pixels = _Pixels.data();
    try
    {
        DecodeTile(_Tile, target);
    }
    catch (const CTileError& error)
    {
        tile.Outcome = Verdict::Undecodable;
        tile.Reason = error.what();
    }
    _Tile.Bytes.resize(room);
}

} // namespace HostTool
