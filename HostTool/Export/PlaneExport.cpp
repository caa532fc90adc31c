#include "HostTool/Export/PlaneExport.h"

#include "HostTool/Pixels/Parallel.h"
#include "HostTool/Pixels/StreamCheck.h"

#include <cstring>

namespace HostTool
{

namespace
{

/// Whether a directory that speaks of one of them speaks of the other.
bool AreAlike(const CJpegHeader& a, const CJpegHeader& b)
{
    return a.NumOfComponents == b.NumOfComponents && a.BitsPerComponent == b.BitsPerComponent &&
           a.AreColoursRgb == b.AreColoursRgb && a.HorizontalSampling == b.HorizontalSampling &&
           a.VerticalSampling == b.VerticalSampling;
}

uint16_t CompressionAsStored(const CChannelPixels& channel)
{
    switch (channel.Coding)
    {
    case TileCoding::Jpeg:
        return TiffCompression::Jpeg;
    case TileCoding::J2k:
        return TiffCompression::Jpeg2000;
    default:
        return TiffCompression::None;
    }
}

/// Of JPEG 2000: it begins with a marker, a file with a box.
bool IsCodestream(std::span<const uint8_t> bytes)
{
    return bytes.size() > 1 && bytes[0] == 0xFF && bytes[1] == 0x4F;
}

} // namespace

CJpegHeader UsualJpegHeader(const CLevelPlan& plan, const CPixelFormat& format)
{
    CJpegHeader header;
    header.Width = plan.TileWidth;
    header.Height = plan.TileHeight;
    header.NumOfComponents = format.NumOfComponents;
    return header;
}

CPlaneExport::CPlace CPlaneExport::Append(std::span<const uint8_t> bytes)
{
    return {_File.Append(bytes), static_cast<uint32_t>(bytes.size())};
}

std::vector<uint8_t> CPlaneExport::EncodeBackground(const CLevelPlan& plan, const CChannelPixels& channel,
                                                    const CStoredFacts& facts) const
{
    switch (channel.Coding)
    {
    case TileCoding::Jpeg:
        return EncodeJpegOfOneColour(_Background, plan.TileWidth, plan.TileHeight,
                                     facts.Jpeg.value_or(UsualJpegHeader(plan, channel.Format)));
    case TileCoding::J2k:
        return EncodeJ2kOfOneColour(_Background, plan.TileWidth, plan.TileHeight, channel.Format, facts.IsCodestream);
    default:
        return RawOfOneColour(_Background, plan.TileWidth, plan.TileHeight, channel.Format);
    }
}

CPlaneExport::CPlace CPlaneExport::BackgroundTile(const CLevelPlan& plan, const CChannelPixels& channel,
                                                  const CStoredFacts& facts)
{
    std::vector<uint8_t> bytes;
    try
    {
        bytes = EncodeBackground(plan, channel, facts);
    }
    catch (const CTileError&)
    {
        return {}; // a tile without bytes: readers show nothing there
    }
    const auto known = _BackgroundTiles.find(bytes);
    if (known != _BackgroundTiles.end())
        return known->second;
    const CPlace place = Append(bytes);
    _BackgroundTiles.emplace(std::move(bytes), place);
    return place;
}

std::optional<CStoredTile> CPlaneExport::ReadTile(const CLevelPlan& plan, uint64_t col, uint64_t row,
                                                  const CPosition& position)
{
    try
    {
        return ReadStoredTile(_Pixels, plan, col, row, position);
    }
    catch (const CTileError& error)
    {
        _ReadFailures.Add(NameOfStoredTile(plan, col, row, position) + ": " + error.what());
        return std::nullopt;
    }
}

void CPlaneExport::Note(const CStoredTile& tile, const CLevelPlan& plan, CStoredFacts& facts)
{
    const auto jpeg = tile.Coding == TileCoding::Jpeg ? ReadJpegHeader(tile.Bytes) : std::nullopt;
    if (!facts.AreKnown)
    {
        facts.AreKnown = true;
        facts.Jpeg = jpeg;
        facts.JpegTables = tile.JpegTables;
        facts.IsCodestream = IsCodestream(tile.Bytes);
    }
    if (tile.Coding == TileCoding::J2k && !IsCodestream(tile.Bytes))
        ++_Counts.Jp2Files;
    if (tile.Coding == TileCoding::Jpeg &&
        (!jpeg || !facts.Jpeg || !AreAlike(*jpeg, *facts.Jpeg) || jpeg->Width != plan.TileWidth ||
         jpeg->Height != plan.TileHeight || tile.JpegTables != facts.JpegTables))
        ++_Counts.UnlikeOthers;
}

CPlaneExport::CPlaces CPlaneExport::CopyTiles(const CLevelPlan& plan, const CPosition& position, CStoredFacts& facts)
{
    CPlaces places;
    std::vector<size_t> missing;
    for (uint64_t row = 0; row < plan.NumOfRows(); ++row)
    {
        for (uint64_t col = 0; col < plan.NumOfCols(); ++col)
        {
            const auto tile = ReadTile(plan, col, row, position);
            if (!tile)
            {
                missing.push_back(places.Offsets.size());
                places.Add({});
                continue;
            }
            Note(*tile, plan, facts);
            if (const std::string why = WhyNoStream(*tile); !why.empty())
                _BrokenStreams.Add(NameOfStoredTile(plan, col, row, position) + ": " + why);
            places.Add(Append(tile->Bytes));
            ++_Counts.AsStored;
        }
        _Progress.Advance(plan.NumOfCols());
    }
    if (missing.empty())
        return places;
    const CPlace background = BackgroundTile(plan, _Pixels.Channel(position.Channel), facts);
    for (const size_t i : missing)
    {
        places.Offsets[i] = background.Offset;
        places.Sizes[i] = background.Size;
    }
    _Counts.Filled += missing.size();
    return places;
}

CPlaneExport::CPlaces CPlaneExport::RecompressTiles(const CLevelPlan& plan, const CPosition& position)
{
    const CPixelFormat& format = _Pixels.Channel(position.Channel).Format;
    const uint64_t numOfCols = plan.NumOfCols();
    const size_t bytesPerTileRow = size_t{plan.TileWidth} * format.BytesPerPixel();
    CPixelTarget band{nullptr, bytesPerTileRow * numOfCols, static_cast<uint32_t>(numOfCols * plan.TileWidth),
                      plan.TileHeight, format};
    ByteBuffer pixels(band.Stride * band.Height);
    band.Pixels = pixels.data();
    CPlaces places;
    for (uint64_t row = 0; row < plan.NumOfRows(); ++row)
    {
        const int64_t y = plan.Rect.Y + static_cast<int64_t>(row * plan.TileHeight);
        _Stitcher.Read(*plan.Level, position, {plan.Rect.X, y, band.Width, band.Height}, band);
        std::vector<std::vector<uint8_t>> encoded(numOfCols);
        ForEachInParallel(
            numOfCols, _Jobs,
            [&](size_t col)
            {
                ByteBuffer tilePixels(bytesPerTileRow * plan.TileHeight);
                const CPixelTarget tile{tilePixels.data(), bytesPerTileRow, plan.TileWidth, plan.TileHeight, format};
                for (uint32_t line = 0; line < plan.TileHeight; ++line)
                    std::memcpy(tile.Row(line), band.Row(line) + col * bytesPerTileRow, bytesPerTileRow);
                encoded[col] = _Recompression.Encode(tile);
            });
        for (const auto& tile : encoded)
            places.Add(Append(tile));
        _Counts.Recompressed += numOfCols;
        _Progress.Advance(numOfCols);
    }
    return places;
}

void CPlaneExport::Describe(CTiffDirectory& directory, const CLevelPlan& plan, const CChannelPixels& channel,
                            const CStoredFacts& facts) const
{
    SetPixels(directory, static_cast<uint32_t>(plan.Rect.Width), static_cast<uint32_t>(plan.Rect.Height),
              channel.Format);
    SetPixelSize(directory, plan.Level->PixelWidth, plan.Level->PixelHeight);
    directory.SetNumber(TiffTag::TileWidth, plan.TileWidth);
    directory.SetNumber(TiffTag::TileLength, plan.TileHeight);
    const uint16_t compression = plan.IsAsStored() ? CompressionAsStored(channel) : _Recompression.TiffCompression();
    directory.SetShort(TiffTag::Compression, compression);
    uint16_t photometric = channel.Format.IsColour() ? TiffPhotometric::Rgb : TiffPhotometric::Grey;
    if (compression == TiffCompression::Jpeg && channel.Format.IsColour())
    {
        CJpegHeader jpeg = facts.Jpeg.value_or(UsualJpegHeader(plan, channel.Format));
        if (!plan.IsAsStored())
            jpeg.HorizontalSampling = jpeg.VerticalSampling = _Recompression.JpegSampling();
        if (!jpeg.AreColoursRgb)
        {
            photometric = TiffPhotometric::YCbCr;
            directory.Set(TiffTag::YCbCrSubsampling,
                          std::vector<uint16_t>{jpeg.HorizontalSampling, jpeg.VerticalSampling});
        }
        if (!facts.JpegTables.empty())
            directory.Set(TiffTag::JpegTables, std::vector<uint8_t>(facts.JpegTables.begin(), facts.JpegTables.end()));
    }
    directory.SetShort(TiffTag::Photometric, photometric);
    constexpr uint16_t differences = 2;
    if (!plan.IsAsStored() && _Recompression.HasDifferences(channel.Format))
        directory.SetShort(TiffTag::Predictor, differences);
}

CTiffDirectory CPlaneExport::WriteLevel(const CLevelPlan& plan, const CPosition& position)
{
    CStoredFacts facts;
    const uint64_t filledBefore = _Stitcher.NumOfFilled() + _Stitcher.Failures().Count();
    CPlaces places = plan.IsAsStored() ? CopyTiles(plan, position, facts) : RecompressTiles(plan, position);
    _Counts.Filled += _Stitcher.NumOfFilled() + _Stitcher.Failures().Count() - filledBefore;
    CTiffDirectory directory;
    Describe(directory, plan, _Pixels.Channel(position.Channel), facts);
    directory.Set(TiffTag::TileOffsets, CTiffOffsets{std::move(places.Offsets)});
    directory.Set(TiffTag::TileByteCounts, std::move(places.Sizes));
    return directory;
}

} // namespace HostTool
