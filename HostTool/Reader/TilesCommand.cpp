#include "HostTool/Reader/TilesCommand.h"

#include "HostTool/Base64.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Reader/TileIndex.h"
#include "HostTool/Table.h"
#include "HostTool/Text.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>

namespace HostTool
{

namespace
{

using Json = nlohmann::ordered_json;

struct CTilesRequest
{
    int Group = 0;
    std::optional<int> Level;
    bool IsJson = false;
};

/// A group with the places of its tiles.
class CTilePlaces
{
public:
    CTilePlaces(const CDocument& document, const CTilesRequest& request)
        : _Pixels(document, request.Group),
          _Index(std::move(TileIndexOf(CReaderDocument(document.Path())).at(static_cast<size_t>(request.Group))))
    {
        if (request.Level)
            _Pixels.Level(*request.Level); // throws if there is none
        for (const CTileRecord& record : _Index.Records())
            if (!request.Level || record.Level == static_cast<uint32_t>(*request.Level))
                _Records.push_back(&record);
    }

    const CGroupPixels& Pixels() const { return _Pixels; }
    const CGroupIndex& Index() const { return _Index; }
    const std::vector<const CTileRecord*>& Records() const { return _Records; }
    /// Null for a level that the group does not have.
    const CLevel* LevelOf(const CTileRecord& record) const
    {
        const auto level = static_cast<int>(record.Level);
        return _Pixels.HasLevel(level) ? &_Pixels.Level(level) : nullptr;
    }
    std::string CompressionOf(uint32_t channel) const
    {
        return ChannelFacts(_Pixels.Group().FirstArea(), channel).Format.value_or("unknown");
    }
    /// By directory, of the JPEG streams whose tables stand apart.
    std::map<uint32_t, ByteBuffer> JpegTables() const
    {
        std::map<uint32_t, ByteBuffer> tables;
        for (const CTileRecord* record : _Records)
        {
            const CLevel* level = LevelOf(*record);
            if (!_Index.IsTiff() || !level || tables.contains(record->Directory))
                continue;
            const auto image = _Pixels.FindImage(*level, record->Col, record->Row, record->Position);
            if (image)
                tables.emplace(record->Directory, image->JpegTables());
        }
        std::erase_if(tables, [](const auto& entry) { return entry.second.empty(); });
        return tables;
    }

private:
    CGroupPixels _Pixels;
    CGroupIndex _Index;
    std::vector<const CTileRecord*> _Records;
};

/// Where a tile lies: in the level's grid, whose columns and rows count from 0, and its upper left corner from that of
/// the picture.
struct CTileCorner
{
    int64_t Col = 0;
    int64_t Row = 0;
    int64_t X = 0;
    int64_t Y = 0;
    std::optional<double> XInMicrometres;
    std::optional<double> YInMicrometres;
};

CTileCorner CornerOf(const CLevel& level, const CTileRecord& record)
{
    const CPixelRect rect = level.TileRect(record.Col, record.Row);
    CTileCorner corner{record.Col - level.FirstCol,
                       record.Row - level.FirstRow,
                       rect.X - level.Picture.X,
                       record.FirstPixelRow.value_or(rect.Y - level.Picture.Y),
                       std::nullopt,
                       std::nullopt};
    if (level.PixelWidth && level.PixelHeight)
    {
        corner.XInMicrometres = static_cast<double>(corner.X) * *level.PixelWidth;
        corner.YInMicrometres = static_cast<double>(corner.Y) * *level.PixelHeight;
    }
    return corner;
}

void PrintText(std::ostream& out, const CTilePlaces& places)
{
    out << Printable(places.Index().File().string()) << '\n';
    for (const CChannelPixels& channel : places.Pixels().Channels())
        out << "channel " << channel.ID << ": " << places.CompressionOf(channel.ID) << '\n';
    for (const auto& [directory, tables] : places.JpegTables())
        out << "directory " << directory << ": JPEG tables of " << tables.size()
            << " bytes stand apart; --json has them\n";
    CTable table;
    table.Add({"level", "column", "row", "channel", "z", "t", "lambda", "offset", "bytes", "x", "y", "x um", "y um"});
    for (const CTileRecord* record : places.Records())
    {
        const CLevel* level = places.LevelOf(*record);
        const CTileCorner corner = level ? CornerOf(*level, *record) : CTileCorner();
        const auto micrometres = [](std::optional<double> number) { return number ? TextOf(*number) : "unknown"; };
        const CPosition& position = record->Position;
        table.Add({std::to_string(record->Level), std::to_string(corner.Col), std::to_string(corner.Row),
                   std::to_string(position.Channel), std::to_string(position.Z), std::to_string(position.T),
                   std::to_string(position.Lambda), std::to_string(record->Offset), std::to_string(record->Length),
                   std::to_string(corner.X), std::to_string(corner.Y), micrometres(corner.XInMicrometres),
                   micrometres(corner.YInMicrometres)});
    }
    table.Print(out, "");
}

Json OrNull(const std::optional<double>& number)
{
    return number ? Json(*number) : Json();
}

Json JsonOf(const CLevel& level)
{
    return {{"level", level.Level},
            {"tileWidth", level.TileWidth},
            {"tileHeight", level.TileHeight},
            {"width", level.Picture.Width},
            {"height", level.Picture.Height},
            {"pixelWidthUm", OrNull(level.PixelWidth)},
            {"pixelHeightUm", OrNull(level.PixelHeight)}};
}

Json HeadOf(const CTilePlaces& places)
{
    Json channels = Json::array();
    for (const CChannelPixels& channel : places.Pixels().Channels())
        channels.push_back({{"channel", channel.ID}, {"compression", places.CompressionOf(channel.ID)}});
    Json levels = Json::array();
    for (int level = 0; level < places.Pixels().NumOfLevels(); ++level)
        if (places.Pixels().HasLevel(level))
            levels.push_back(JsonOf(places.Pixels().Level(level)));
    Json tables = Json::array();
    for (const auto& [directory, bytes] : places.JpegTables())
        tables.push_back({{"directory", directory}, {"base64", ToBase64(bytes)}});
    return {{"format", "zel tiles"},
            {"version", 2},
            {"file", places.Index().File().string()},
            {"kind", places.Index().IsTiff() ? "tiff" : "store"},
            {"group", places.Pixels().Group().Number()},
            {"channels", std::move(channels)},
            {"levels", std::move(levels)},
            {"jpegTables", std::move(tables)},
            {"fields",
             {"level", "column", "row", "channel", "z", "t", "lambda", "directory", "offset", "bytes", "x", "y", "xUm",
              "yUm"}}};
}

/// Written line by line, since there may be millions of tiles.
void PrintJson(std::ostream& out, const CTilePlaces& places)
{
    std::string head = HeadOf(places).dump(2, ' ', false, Json::error_handler_t::replace);
    head.erase(head.find_last_not_of("}\n") + 1);
    out << head << ",\n  \"tiles\": [";
    const char* separator = "\n    ";
    for (const CTileRecord* record : places.Records())
    {
        const CLevel* level = places.LevelOf(*record);
        const CTileCorner corner = level ? CornerOf(*level, *record) : CTileCorner();
        const CPosition& position = record->Position;
        const Json directory = places.Index().IsTiff() ? Json(record->Directory) : Json();
        out << separator
            << Json{record->Level,
                    corner.Col,
                    corner.Row,
                    position.Channel,
                    position.Z,
                    position.T,
                    position.Lambda,
                    directory,
                    record->Offset,
                    record->Length,
                    corner.X,
                    corner.Y,
                    OrNull(corner.XInMicrometres),
                    OrNull(corner.YInMicrometres)}
                   .dump();
        separator = ",\n    ";
    }
    out << "\n  ]\n}\n";
}

} // namespace

void AddTilesCommand(CCommandLine& line)
{
    const auto request = std::make_shared<CTilesRequest>();
    CLI::App& command = line.AddTolerantCommand(
        {"tiles",
         "Prints where every stored tile of a group lies: file, offset and length, and its place in the "
         "picture, from the picture's upper left corner.",
         "  zel tiles slide.zel -g 0 -l 2\n  zel tiles slide.zel --json > tiles.json"},
        [request](const CDocument& document)
        {
            RequireGroup(document, request->Group);
            const CTilePlaces places(document, *request);
            request->IsJson ? PrintJson(std::cout, places) : PrintText(std::cout, places);
            return ExitCode::Done;
        });
    AddGroupOption(command, request->Group);
    command.add_option("-l,--level", request->Level, "only this level; 0 is the finest")->check(CLI::NonNegativeNumber);
    command.add_flag("--json", request->IsJson, "print JSON, with the JPEG tables that stand apart");
}

} // namespace HostTool
