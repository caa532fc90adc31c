#include "HostTool/DecodedTile.h"

#include "HostTool/HostError.h"
#include "HostTool/OutputFile.h"
#include "HostTool/Pixels/PictureFile.h"
#include "HostTool/Pixels/Stitch.h"
#include "HostTool/Pixels/StreamSize.h"

namespace HostTool
{

void TakeSizeOfStream(CPixelTarget& target, const CStoredTile& tile)
{
    const auto size = SizeOfStream(tile);
    // A stream of a damaged document can claim any size; those of strips differ by less than this.
    if (!size || uint64_t{size->Width} * size->Height > 2 * uint64_t{target.Width} * target.Height)
        return;
    target.Width = size->Width;
    target.Height = size->Height;
}

std::string WriteDecodedTile(const CGroupPixels& pixels, const CTilePlace& place, std::filesystem::path path)
{
    const CLevel& level = pixels.Level(place.Level);
    const int64_t col = level.FirstCol + static_cast<int64_t>(place.Col);
    const int64_t row = level.FirstRow + static_cast<int64_t>(place.Row);
    const std::string name = NameOfTile(level, col, row, place.Position);
    path = WithExtension(std::move(path), ".png");
    if (path.extension() != ".png" && !IsStream(path))
        throw CHostError(ExitCode::WrongUsage,
                         path.string() + ": a decoded tile is a PNG picture; give a name that ends in .png");
    try
    {
        const auto tile = pixels.ReadTile(level, col, row, place.Position);
        if (!tile)
            throw CTileError("it is not handed out by the plug-in");
        CPixelTarget target;
        target.Format = pixels.Channel(place.Position.Channel).Format;
        target.Width = level.TileWidth;
        target.Height = level.TileHeight;
        TakeSizeOfStream(target, *tile);
        target.Stride = size_t{target.Width} * target.Format.BytesPerPixel();
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
        throw CHostError(ExitCode::BadFile, pixels.Document().Path().string() + ": " + name + ": cannot be decoded: " +
                                                error.what() + "; 'zel tile' without --png writes it as stored");
    }
}

} // namespace HostTool
