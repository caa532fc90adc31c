#include "HostTool/Pixels/GroupPixels.h"

#include "HostTool/HostError.h"
#include "HostTool/Pixels/JpegHeader.h"
#include "HostTool/Pixels/StreamSize.h"
#include "HostTool/Reader/StoreKind.h"

#include <algorithm>

namespace HostTool
{

namespace
{

TileCoding CodingOf(const std::string& format)
{
    if (format == "JPEG")
        return TileCoding::Jpeg;
    if (format == "J2K")
        return TileCoding::J2k;
    if (format == "PNG")
        return TileCoding::Png;
    if (format == "BMP")
        return TileCoding::Bmp;
    return TileCoding::Raw;
}

int64_t SizeOf(const CArea& area, const wchar_t* axis)
{
    const auto info = area.Properties(L"AxisInfo", L"axisName", axis);
    return info ? std::max<int64_t>(1, static_cast<int64_t>(info->Number(L"maxSize").value_or(1))) : 1;
}

} // namespace

std::string NameOfGroup(const CGroup& group)
{
    return "group " + std::to_string(group.Number());
}

CGroupPixels::CGroupPixels(const CDocument& document, int group, std::optional<ValueKind> values)
    : _Document(document), _Group(document.Group(group)), _Levels(PyramidOf(document, _Group))
{
    FindAxes();
    FindChannels(values);
    FindLimits();
}

const CLevel& CGroupPixels::Level(int level) const
{
    if (!HasLevel(level))
        throw CHostError(ExitCode::WrongUsage, _Document.Path().string() + ": level " + std::to_string(level) + " of " +
                                                   NameOfGroup(_Group) +
                                                   " is not there or has no data; 'zel info' tells what there is");
    return *_Levels[static_cast<size_t>(level)];
}

const CChannelPixels& CGroupPixels::Channel(uint32_t id) const
{
    const auto channel = std::find_if(_Channels.begin(), _Channels.end(),
                                      [&](const CChannelPixels& candidate) { return candidate.ID == id; });
    if (channel == _Channels.end())
        throw CHostError(ExitCode::WrongUsage, _Document.Path().string() + ": there is no channel " +
                                                   std::to_string(id) + " in " + NameOfGroup(_Group) +
                                                   "; 'zel info' tells what there is");
    return *channel;
}

void CGroupPixels::FindAxes()
{
    const CArea area = _Group.Area(0, 0);
    _Axes = {SizeOf(area, L"ZSTACK"), SizeOf(area, L"TIMELAPSE"), SizeOf(area, L"LAMBDA")};
}

void CGroupPixels::FindChannels(std::optional<ValueKind> values)
{
    const CArea area = _Group.Area(0, 0);
    for (const uint32_t id : ChannelIDs(area))
        _Channels.push_back(ChannelOf(area, id, values));
    if (_Channels.empty())
        throw CHostError(ExitCode::BadFile, _Document.Path().string() + ": " + NameOfGroup(_Group) +
                                                " has no channels; the document is damaged");
}

CChannelPixels CGroupPixels::ChannelOf(const CArea& area, uint32_t id, std::optional<ValueKind> values) const
{
    CChannelPixels channel;
    channel.ID = id;
    const auto image = AnyImage(id);
    const uint64_t rawBytes = image ? image->BytesPerRawPixel().value_or(0) : 0;
    // The facts of a raw channel without display limits cost a scan of all its pixels, so those of grey ones are told
    // by their size.
    const bool isPlainGrey = rawBytes == 1U || rawBytes == 2U || rawBytes == 4U || rawBytes == 8U;
    uint64_t bytesPerPixel = rawBytes;
    if (!isPlainGrey)
    {
        const CChannelFacts facts = ChannelFacts(area, id);
        channel.Coding = CodingOf(facts.Format.value_or("RAW"));
        channel.Format.NumOfComponents = facts.ColorSpace.value_or("GRAYSCALE") == "GRAYSCALE" ? 1 : 3;
        channel.IsBlueFirst = channel.Coding == TileCoding::Raw && facts.ColorSpace == "BGR";
        bytesPerPixel = static_cast<uint64_t>(facts.BytesPerPixel.value_or(1));
    }
    SetNumbers(channel, bytesPerPixel, values);
    return channel;
}

void CGroupPixels::SetNumbers(CChannelPixels& channel, uint64_t bytesPerPixel, std::optional<ValueKind> values) const
{
    const uint64_t bytesPerComponent = bytesPerPixel / channel.Format.NumOfComponents;
    if ((bytesPerComponent != 1 && bytesPerComponent != 2 && bytesPerComponent != 4 && bytesPerComponent != 8) ||
        bytesPerPixel % channel.Format.NumOfComponents != 0)
        throw CHostError(ExitCode::BadFile, _Document.Path().string() + ": channel " + std::to_string(channel.ID) +
                                                " of " + NameOfGroup(_Group) + " has pixels of " +
                                                std::to_string(bytesPerPixel) +
                                                " bytes; the document is damaged, or of a kind that is not known");
    channel.Format.BytesPerComponent = static_cast<uint32_t>(bytesPerComponent);
    channel.AreValuesGuessed = bytesPerComponent > 2 && !values;
    channel.Format.Values = values.value_or(channel.AreValuesGuessed ? ValueKind::Float : ValueKind::Unsigned);
    if (channel.Format.Values == ValueKind::Float && bytesPerComponent < 4)
        channel.Format.Values = ValueKind::Unsigned;
}

std::optional<CImage> CGroupPixels::AnyImage(uint32_t channel) const
{
    CPosition position;
    position.Channel = channel;
    const CGrid grid = Level(0).Grid;
    for (uint64_t area = 0; area < grid.Cols * grid.Rows; ++area)
        if (auto image = _Group.Area(0, area).Image(position))
            return image;
    return std::nullopt;
}

void CGroupPixels::FindRowsOfStrips(CLevel& level) const
{
    const CChannelPixels& channel = _Channels.front();
    CPosition position;
    position.Channel = channel.ID;
    try
    {
        // The plug-in tells strips of one height, which need not be that of the strips in the file.
        const auto strip = ReadTile(level, level.FirstCol, level.FirstRow, position);
        if (!strip)
            return;
        const auto size = SizeOfStream(*strip);
        const uint64_t rows = channel.Coding == TileCoding::Raw
                                  ? strip->Bytes.size() / (uint64_t{level.TileWidth} * channel.Format.BytesPerPixel())
                                  : (size ? size->Height : 0);
        if (rows > 0 && rows <= static_cast<uint64_t>(level.Picture.Height))
            level.TileHeight = static_cast<uint32_t>(rows);
    }
    catch (const CTileError&)
    {
        return; // its failure is told when its pixels are asked for
    }
}

bool CGroupPixels::HandsOutSecondTile() const
{
    const CLevel& finest = Level(0);
    if (finest.Grid.Cols * finest.Grid.Rows < 2)
        return true;
    CPosition first;
    first.Channel = _Channels.front().ID;
    try
    {
        return _Group.Area(0, 1).Image(first).has_value();
    }
    catch (const CHostError&)
    {
        return false; // it fails for all but the first one of a directory of the document
    }
}

void CGroupPixels::FindLimits()
{
    const bool hasStrips =
        std::any_of(_Levels.begin(), _Levels.end(), [](const auto& level) { return level && level->IsInStrips(); });
    const bool hasSecondTile = HandsOutSecondTile();
    if (!hasStrips && hasSecondTile)
        return;
    const StoreKind kind = StoreKindOf(_Document.Path(), _Group.Number());
    if (!hasSecondTile && kind == StoreKind::Document)
    {
        _HandsOutFirstTileOnly = true;
        _Limits.push_back(NameOfGroup(_Group) + ": its directories in the document have several tiles each, of which "
                                                "the plug-in's interface hands out the first one only");
        return;
    }
    _HasStripsOfDocument = hasStrips && kind == StoreKind::Document;
    if (!hasStrips || kind != StoreKind::TiffStrips)
        return;
    for (auto& level : _Levels)
    {
        if (!level || !level->IsInStrips())
            continue;
        FindRowsOfStrips(*level);
        _LevelsWithoutLastRow.insert(level->Level);
    }
    _Limits.push_back(NameOfGroup(_Group) + ": it is kept in strips of a TIFF store, of which the plug-in's interface "
                                            "does not hand out the last one of each level");
}

std::optional<CImage> CGroupPixels::FindImage(const CLevel& level, int64_t col, int64_t row,
                                              const CPosition& position) const
{
    const auto area = level.AreaOf(col, row);
    const bool isLastRow = row - level.FirstRow == static_cast<int64_t>(level.Grid.Rows) - 1;
    if (!area || (_HandsOutFirstTileOnly && *area != 0) || (isLastRow && _LevelsWithoutLastRow.contains(level.Level)))
        return std::nullopt;
    return _Group.Area(level.Level, *area).Image(position);
}

std::optional<CStoredTile> CGroupPixels::ReadTile(const CLevel& level, int64_t col, int64_t row,
                                                  const CPosition& position) const
{
    const auto image = FindImage(level, col, row, position);
    if (!image)
        return std::nullopt;
    const CChannelPixels& channel = Channel(position.Channel);
    CStoredTile tile;
    tile.Coding = channel.Coding;
    tile.IsBlueFirst = channel.IsBlueFirst;
    try
    {
        tile.Bytes = image->Body();
    }
    catch (const CHostError& error)
    {
        throw CTileError(std::string("it cannot be read: ") + error.what());
    }
    if (tile.Coding == TileCoding::Jpeg)
        if (const auto header = ReadJpegHeader(tile.Bytes); header && !header->HasTables)
            tile.JpegTables = image->JpegTables();
    return tile;
}

} // namespace HostTool
