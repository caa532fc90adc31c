#include "HostTool/DecodedTile.h"

#include "HostTool/HostError.h"
#include "HostTool/Pixels/JpegHeader.h"
#include "HostTool/Pixels/PictureFile.h"
#include "HostTool/Pixels/Stitch.h"

namespace HostTool
{

namespace
{

/// The size of the pixels that decoding gives. The plug-in tells strips of one size for all of them; a JPEG stream
/// knows its own.
void SetSize(CPixelTarget& target, const CStoredTile& tile, const CPixelRect& told)
{
    target.Width = static_cast<uint32_t>(told.Width);
    target.Height = static_cast<uint32_t>(told.Height);
    const auto header = tile.Coding == TileCoding::Jpeg ? ReadJpegHeader(tile.Bytes) : std::nullopt;
    const auto pixels = header ? uint64_t{header->Width} * header->Height : 0;
    // A stream of a damaged document can claim any size; strips differ by less than this.
    if (header && pixels <= 2 * static_cast<uint64_t>(told.Width * told.Height))
    {
        target.Width = header->Width;
        target.Height = header->Height;
    }
    target.Stride = size_t{target.Width} * target.Format.BytesPerPixel();
}

} // namespace

std::string WriteDecodedTile(const CGroupPixels& pixels, const CTilePlace& place, std::filesystem::path path)
{
    const CLevel& level = pixels.Level(place.Level);
    const int64_t col = level.FirstCol + static_cast<int64_t>(place.Col);
    const int64_t row = level.FirstRow + static_cast<int64_t>(place.Row);
    const std::string name = NameOfTile(level, col, row, place.Position);
    if (!path.has_extension())
        path += ".png";
    if (path.extension() != ".png")
        throw CHostError(ExitCode::WrongUsage,
                         path.string() + ": a decoded tile is a PNG picture; give a name that ends in .png");
    try
    {
        const auto tile = pixels.ReadTile(level, col, row, place.Position);
        if (!tile)
            throw CTileError("it is not handed out by the plug-in");
        CPixelTarget target;
        target.Format = pixels.Channel(place.Position.Channel).Format;
        SetSize(target, *tile, level.TileRect(col, row));
        ByteBuffer bytes(target.Stride * target.Height);
        target.Pixels = bytes.data();
        DecodeTile(*tile, target);
        const auto writer =
            MakePictureWriter(path, {target.Width, target.Height, target.Format, level.PixelWidth, level.PixelHeight});
        writer->Write(bytes);
        writer->Finish();
        return path.string() + ": decoded, " + std::to_string(target.Width) + " x " + std::to_string(target.Height) +
               ", as PNG";
    }
    catch (const CTileError& error)
    {
        throw CHostError(ExitCode::BadFile,
                         pixels.Document().Path().string() + ": " + name + ": cannot be decoded: " + error.what());
    }
}

} // namespace HostTool
