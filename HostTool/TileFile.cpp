#include "HostTool/TileFile.h"

#include "HostTool/HostError.h"
#include "HostTool/OutputFile.h"
#include "HostTool/Pixels/JpegHeader.h"
#include "HostTool/Pixels/PictureFile.h"
#include "HostTool/Pixels/TileCodec.h"
#include "HostTool/TileKind.h"

namespace HostTool
{

namespace
{

std::string TextOfSize(const CTile& tile)
{
    return std::to_string(tile.Rect.width) + " x " + std::to_string(tile.Rect.height);
}

/// The format of a raw tile's pixels if PNG can hold them; nothing if it can't.
std::optional<CPixelFormat> FormatForPng(const CTile& tile)
{
    constexpr uint64_t mostPixels = 1'000'000; // of libpng in a row or column, and small enough for the products below
    const uint64_t bytesPerPixel = tile.BytesPerRawPixel.value_or(0);
    const bool isGrey = bytesPerPixel == 1 || bytesPerPixel == 2;
    const bool isColour = bytesPerPixel == 3 || bytesPerPixel == 6;
    if ((!isGrey && !isColour) || tile.Rect.width == 0 || tile.Rect.height == 0 || tile.Rect.width > mostPixels ||
        tile.Rect.height > mostPixels || tile.Bytes.size() != tile.Rect.width * tile.Rect.height * bytesPerPixel)
        return std::nullopt;
    return CPixelFormat{isGrey ? 1U : 3U, bytesPerPixel % 2 == 0 ? 2U : 1U, ValueKind::Unsigned};
}

void RequireExtension(const std::filesystem::path& path, std::string_view extension, std::string_view other,
                      const std::string& what)
{
    if (!IsStream(path) && path.extension() != extension && path.extension() != other)
        throw CHostError(ExitCode::WrongUsage, path.string() + ": the tile is " + what + "; give a name that ends in " +
                                                   std::string(extension));
}

std::string WriteAsStored(const CTile& tile, const std::filesystem::path& path, const std::string& what)
{
    COutputFile file(path);
    file.Write(tile.Bytes);
    file.Finish();
    return path.string() + ": " + what + ", " + std::to_string(tile.Bytes.size()) + " bytes as stored";
}

std::string WriteAsPng(const CTile& tile, const CPixelFormat& format, const std::filesystem::path& path,
                       const std::string& what)
{
    const auto width = static_cast<uint32_t>(tile.Rect.width);
    const auto height = static_cast<uint32_t>(tile.Rect.height);
    CStoredTile stored;
    stored.Bytes = tile.Bytes;
    stored.IsBlueFirst = tile.ColorSpace == "BGR";
    ByteBuffer pixels(tile.Bytes.size());
    DecodeTile(stored, {pixels.data(), size_t{width} * format.BytesPerPixel(), width, height, format});
    const auto writer = MakePictureWriter(path, {width, height, format, std::nullopt, std::nullopt});
    writer->Write(pixels);
    writer->Finish();
    return path.string() + ": " + what + ", as PNG";
}

std::string WriteRaw(const CTile& tile, std::filesystem::path path)
{
    const auto format = FormatForPng(tile);
    path = WithExtension(std::move(path), format ? ".png" : ".raw");
    std::string what = "raw pixels, " + TextOfSize(tile) + " of " + std::to_string(*tile.BytesPerRawPixel) + " bytes";
    if (format && format->IsColour() && !tile.ColorSpace)
        what += " (taken as red, green, blue: the plug-in does not tell)";
    if (path.extension() == ".raw" || (!format && IsStream(path)))
        return WriteAsStored(tile, path, what);
    if (!format)
        RequireExtension(path, ".raw", ".raw", what + ", which PNG cannot hold");
    RequireExtension(path, ".png", ".png", what);
    return WriteAsPng(tile, *format, path, what);
}

} // namespace

CTile ReadTile(const CArea& area, const CImage& image, uint32_t channel)
{
    CTile tile{image.Body(), image.Size(), image.BytesPerRawPixel(), std::nullopt, false};
    if (const auto header = tile.BytesPerRawPixel ? std::nullopt : ReadJpegHeader(tile.Bytes))
        tile.HasTablesApart = !header->HasTables;
    // Facts of a channel can cost a scan of all its pixels, so they are asked for only where the colours' order
    // matters.
    if (const uint64_t bytes = tile.BytesPerRawPixel.value_or(0); bytes == 3 || bytes == 6)
        tile.ColorSpace = ChannelFacts(area, channel).ColorSpace;
    return tile;
}

std::string WriteTile(const CTile& tile, std::filesystem::path path)
{
    if (tile.BytesPerRawPixel)
        return WriteRaw(tile, std::move(path));
    static constexpr CTileKind unknownKind{"", ".raw", ".raw", "of a compression that is not known here"};
    const CTileKind* known = FindTileKind(tile.Bytes);
    const CTileKind& kind = known ? *known : unknownKind;
    path = WithExtension(std::move(path), kind.Extension);
    RequireExtension(path, kind.Extension, kind.OtherExtension, std::string(kind.Name));
    const std::string apart =
        tile.HasTablesApart ? " (its tables stand apart, so viewers can't show it; --png can)" : "";
    return WriteAsStored(tile, path, std::string(kind.Name) + ", " + TextOfSize(tile)) + apart;
}

} // namespace HostTool
