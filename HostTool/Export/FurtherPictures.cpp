#include "HostTool/Export/FurtherPictures.h"

#include "HostTool/Export/TileEncoders.h"
#include "HostTool/HostError.h"
#include "HostTool/Pixels/Bitmap.h"
#include "HostTool/Pixels/Stitch.h"
#include "HostTool/Pixels/StreamSize.h"
#include "HostTool/TileKind.h"

#include <algorithm>
#include <cstring>

namespace HostTool
{

namespace
{

constexpr uint64_t MostPixels = uint64_t{1} << 26;

CPixelTarget TargetOf(CFurtherPicture& picture)
{
    const size_t stride = size_t{picture.Width} * picture.Format.BytesPerPixel();
    picture.Pixels.resize(stride * picture.Height);
    return {picture.Pixels.data(), stride, picture.Width, picture.Height, picture.Format};
}

void SetSize(CFurtherPicture& picture, uint64_t width, uint64_t height)
{
    if (width == 0 || height == 0 || width > MostPixels / height)
        throw CTileError("it is told to be " + std::to_string(width) + " x " + std::to_string(height) + " pixels");
    picture.Width = static_cast<uint32_t>(width);
    picture.Height = static_cast<uint32_t>(height);
}

CFurtherPicture PictureOfBitmap(const CBitmap& bitmap)
{
    CFurtherPicture picture;
    picture.Format.NumOfComponents = 3;
    SetSize(picture, bitmap.Width(), bitmap.Height());
    const CPixelTarget target = TargetOf(picture);
    for (uint32_t y = 0; y < target.Height; ++y)
        bitmap.ReadRow(y, target.Row(y));
    return picture;
}

/// A stream that is a file of its own, in red, green and blue of 8 bits.
CFurtherPicture Decoded(const ByteBuffer& bytes)
{
    const CTileKind* kind = FindTileKind(bytes);
    if (kind && kind->Extension == ".bmp")
        return PictureOfBitmap(CBitmap(bytes));
    CStoredTile stream;
    stream.Bytes = bytes;
    stream.Coding = !kind                       ? TileCoding::Raw
                    : kind->Extension == ".jpg" ? TileCoding::Jpeg
                    : kind->Extension == ".png" ? TileCoding::Png
                                                : TileCoding::J2k;
    const auto size = kind ? SizeOfStream(stream) : std::nullopt;
    if (!size)
        throw CTileError("it is of a kind that is not known");
    CFurtherPicture picture;
    picture.Format.NumOfComponents = 3;
    SetSize(picture, size->Width, size->Height);
    DecodeTile(stream, TargetOf(picture));
    return picture;
}

CHostError Unusable(const CDocument& document, const std::string& reason)
{
    return {ExitCode::WrongUsage,
            document.Path().string() + ": --overview: the picture of the whole slide " + reason + "; leave it out"};
}

} // namespace

std::optional<CFurtherPicture> ThumbnailOf(const CDocument& document)
{
    try
    {
        const auto bytes = document.Thumbnail();
        if (!bytes || bytes->empty())
            return std::nullopt;
        CFurtherPicture picture = PictureOfBitmap(CBitmap(*bytes));
        picture.Name = "Thumbnail";
        return picture;
    }
    catch (const std::runtime_error&) // which 'zel info' tells
    {
        return std::nullopt;
    }
}

CFurtherPicture OverviewOf(const CDocument& document)
{
    const auto bytes = document.Overview();
    if (!bytes || bytes->empty())
        throw Unusable(document, "is not there");
    try
    {
        CFurtherPicture picture = Decoded(*bytes);
        picture.Name = "Overview";
        return picture;
    }
    catch (const CTileError& error)
    {
        throw Unusable(document, std::string("cannot be decoded: ") + error.what());
    }
}

CFurtherPicture MakeThumbnail(const CGroupPixels& pixels, const CLevelPlan& coarsest, const CPosition& position,
                              CColour background, unsigned jobs)
{
    constexpr int64_t mostSize = 256;
    const CPixelRect& rect = coarsest.Rect;
    const int64_t step = std::max<int64_t>(1, (std::max(rect.Width, rect.Height) + mostSize - 1) / mostSize);
    CFurtherPicture picture;
    picture.Name = "Thumbnail";
    picture.Format = pixels.Channel(position.Channel).Format;
    SetSize(picture, static_cast<uint64_t>((rect.Width + step - 1) / step),
            static_cast<uint64_t>((rect.Height + step - 1) / step));
    const CPixelTarget target = TargetOf(picture);
    CStitcher stitcher(pixels, background, jobs);
    // A level of any size: all of it at once if it is small, otherwise those rows that are taken.
    constexpr int64_t mostPixelsAtOnce = int64_t{1} << 24;
    const bool isAtOnce = rect.Width <= mostPixelsAtOnce / rect.Height;
    const size_t bytesPerPixel = picture.Format.BytesPerPixel();
    CPixelTarget band{nullptr, static_cast<size_t>(rect.Width) * bytesPerPixel, static_cast<uint32_t>(rect.Width),
                      isAtOnce ? static_cast<uint32_t>(rect.Height) : 1, picture.Format};
    ByteBuffer bytes(band.Stride * band.Height);
    band.Pixels = bytes.data();
    const auto read = [&](int64_t y) {
        stitcher.Read(*coarsest.Level, position, {rect.X, rect.Y + y, rect.Width, band.Height}, band);
    };
    if (isAtOnce)
        read(0);
    for (uint32_t y = 0; y < picture.Height; ++y)
    {
        if (!isAtOnce)
            read(y * step);
        const uint8_t* row = band.Row(isAtOnce ? static_cast<uint32_t>(y * step) : 0);
        for (size_t x = 0; x < picture.Width; ++x)
            std::memcpy(target.Row(y) + x * bytesPerPixel, row + x * static_cast<size_t>(step) * bytesPerPixel,
                        bytesPerPixel);
    }
    return picture;
}

CTiffDirectory WriteFurtherPicture(CTiffWriter& file, CFurtherPicture picture)
{
    const std::vector<uint8_t> encoded = EncodeDeflate(TargetOf(picture));
    CTiffDirectory directory;
    SetPixels(directory, picture.Width, picture.Height, picture.Format);
    directory.SetNumber(TiffTag::NewSubfileType, 0);
    directory.SetShort(TiffTag::Compression, TiffCompression::Deflate);
    directory.SetShort(TiffTag::Photometric, picture.Format.IsColour() ? TiffPhotometric::Rgb : TiffPhotometric::Grey);
    constexpr uint16_t differences = 2;
    if (HasDifferences(picture.Format))
        directory.SetShort(TiffTag::Predictor, differences);
    directory.SetNumber(TiffTag::RowsPerStrip, picture.Height);
    directory.Set(TiffTag::StripOffsets, CTiffOffsets{{file.Append(encoded)}});
    directory.SetNumber(TiffTag::StripByteCounts, static_cast<uint32_t>(encoded.size()));
    return directory;
}

} // namespace HostTool
