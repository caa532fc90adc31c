#include "HostTool/ThumbnailFile.h"

#include "HostTool/HostError.h"
#include "HostTool/OutputFile.h"
#include "HostTool/Pixels/Bitmap.h"
#include "HostTool/Pixels/TileCodec.h"
#include "HostTool/PngFile.h"

namespace HostTool
{

std::string WriteBitmapAsPng(const ByteBuffer& bitmap, const std::filesystem::path& path)
try
{
    const CBitmap picture(bitmap);
    constexpr size_t components = 3;
    ByteBuffer bytes(components * picture.Width() * picture.Height());
    for (uint32_t y = 0; y < picture.Height(); ++y)
        picture.ReadRow(y, bytes.data() + components * picture.Width() * y);
    COutputFile file(path);
    CPixels pixels;
    pixels.Bytes = bytes;
    pixels.Width = picture.Width();
    pixels.Height = picture.Height();
    pixels.NumOfComponents = components;
    if (!WritePng(file.Stream(), pixels))
        throw CHostError(ExitCode::WrongUsage, path.string() + ": cannot be written as PNG; choose another place");
    file.Finish();
    return path.string() + ": thumbnail, " + std::to_string(picture.Width()) + " x " +
           std::to_string(picture.Height()) + ", as PNG";
}
catch (const CTileError& error)
{
    throw CHostError(ExitCode::BadFile,
                     path.string() + ": is not written, since the thumbnail can't be shown: " + error.what());
}

} // namespace HostTool
