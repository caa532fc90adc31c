#include "SampleDocuments/Slide.h"

#include "SampleDocuments/MirroredPlane.h"

#include <algorithm>
#include <memory>
#include <tiff.h>

namespace SampleDocuments
{

namespace
{

constexpr uint32_t LargestSide = 0x7FFFFFFF;
constexpr uint32_t MostLevels = 100;
constexpr uint32_t LargestThumbnail = 256;

/// Cuts the tiles of a slide out of its picture. It remembers the plane of the frame and level that was asked for
/// last, since tiles are written level by level and in a level frame by frame.
class CTileCutter
{
public:
    CTileCutter(std::shared_ptr<const CPicture> picture, const CSlideOptions& options, const Stack& stack)
        : _Picture(std::move(picture)), _Options(options), _Stack(stack)
    {
    }

    CPicture Pixels(const CTilePlace& place)
    {
        const CWindow window = WindowOf(place);
        return PlaneOf(place).Window(window.X, window.Y, window.Width, window.Height, window.VisibleWidth,
                                     window.VisibleHeight, Background());
    }

    ByteString Bytes(const CTilePlace& place) { return Encode(Pixels(place), EncodingOf(_Stack.Plan().Pixels)); }

    /// Tiles that show the same part of the same frame have the same key.
    uint64_t Key(const CTilePlace& place)
    {
        const CWindow window = WindowOf(place);
        const CMirroredPlane& plane = PlaneOf(place);
        const std::array<uint32_t, 9> what = {place.Level,
                                              place.At.Z,
                                              place.At.T,
                                              place.At.L,
                                              place.At.C,
                                              window.X % plane.PeriodX(),
                                              window.Y % plane.PeriodY(),
                                              window.VisibleWidth,
                                              window.VisibleHeight};
        return _Keys.emplace(what, _Keys.size()).first->second;
    }

private:
    struct CWindow
    {
        uint32_t X;
        uint32_t Y;
        uint32_t Width;
        uint32_t Height;
        uint32_t VisibleWidth;
        uint32_t VisibleHeight;
    };

    /// Beyond the picture: a dark ground for fluorescence, a bright one for everything else.
    uint16_t Background() const
    {
        return _Options.NumOfChannels > 1 ? uint16_t{0} : static_cast<uint16_t>((1u << _Options.Bits) - 1);
    }

    CWindow WindowOf(const CTilePlace& place) const
    {
        const CTileRegion region = _Stack.RegionOf(place);
        const auto x = static_cast<uint32_t>(region.X), y = static_cast<uint32_t>(region.Y);
        const uint32_t width = _Stack.LevelWidth(place.Level), height = _Stack.LevelHeight(place.Level);
        return {x,
                y,
                region.Width,
                region.Height,
                std::min(width - std::min(x, width), region.Width),
                std::min(height - std::min(y, height), region.Height)};
    }

    const CMirroredPlane& PlaneOf(const CTilePlace& place)
    {
        if (!_Plane || _PlaneAt != place.At || _PlaneLevel > place.Level)
        {
            _Plane.emplace(FrameOf(*_Picture, _Options, place.At));
            _PlaneLevel = 0;
        }
        for (_PlaneAt = place.At; _PlaneLevel < place.Level; ++_PlaneLevel)
            _Plane = _Plane->Halved();
        return *_Plane;
    }

    std::shared_ptr<const CPicture> _Picture;
    CSlideOptions _Options;
    Stack _Stack;
    std::optional<CMirroredPlane> _Plane;
    CIndexes _PlaneAt;
    uint32_t _PlaneLevel = 0;
    std::map<std::array<uint32_t, 9>, uint64_t> _Keys;
};

void CheckSide(const CPicture& picture, const CSlideOptions& options)
{
    const uint64_t side = uint64_t{std::max(picture.Width(), picture.Height())} * options.Grow;
    if (side > LargestSide)
        throw CSampleError("slide: " + std::to_string(side) +
                           " pixels are more than a document can tell; grow it less");
}

/// What readers of a document's own directories rely on.
void CheckInDocument(const CPicture& picture, const CSlideOptions& options)
{
    if (options.NumOfLevels.value_or(1) != 1)
        throw CSampleError("slide: a stack in the document has one level; take a store for more");
    const bool isTiled = options.RowsPerStrip == 0;
    if (isTiled && options.Compression == StoreCompression::Jpeg)
        throw CSampleError("slide: JPEG in the document takes one strip, not tiles");
    if (isTiled && (uint64_t{picture.Width()} * options.Grow > options.TileWidth ||
                    uint64_t{picture.Height()} * options.Grow > options.TileHeight))
        throw CSampleError("slide: a tiled directory of the document has one tile; make it as large as the picture, "
                           "or take strips");
    if (options.Compression == StoreCompression::Jpeg && !isTiled &&
        options.RowsPerStrip < uint64_t{picture.Height()} * options.Grow)
        throw CSampleError("slide: JPEG in the document takes one strip; make it as high as the picture");
}

void CheckOptions(const CPicture& picture, const CSlideOptions& options)
{
    if (picture.Width() == 0 || picture.Height() == 0)
        throw CSampleError("slide: the picture has no pixels");
    for (const uint32_t number : {options.TileWidth, options.TileHeight, options.Grow, options.NumOfZ, options.NumOfT,
                                  options.NumOfLambdas, options.NumOfChannels, options.NumOfStacks})
        if (number == 0)
            throw CSampleError("slide: tile sizes and counts must be 1 or more");
    if (options.NumOfLevels && (*options.NumOfLevels == 0 || *options.NumOfLevels > MostLevels))
        throw CSampleError("slide: a pyramid has 1 to " + std::to_string(MostLevels) + " levels");
    if (options.Bits == 16 &&
        (options.Compression == StoreCompression::Jpeg || options.Compression == StoreCompression::Bmp))
        throw CSampleError("slide: JPEG and BMP tiles hold 8 bits; take raw, j2k or png for 16");
    if (options.Storage == StackStorage::BinaryStore)
        return CheckSide(picture, options);
    if (options.Compression == StoreCompression::Png || options.Compression == StoreCompression::Bmp)
        throw CSampleError("slide: TIFF holds raw, jpeg and j2k, neither PNG nor BMP");
    if (options.RowsPerStrip == 0 && (options.TileWidth % 16 != 0 || options.TileHeight % 16 != 0))
        throw CSampleError("slide: the sides of tiles in TIFF are multiples of 16");
    if (options.Storage == StackStorage::InDocument)
        CheckInDocument(picture, options);
    else if (!options.HasXml &&
             uint64_t{options.NumOfZ} * options.NumOfT * options.NumOfLambdas * options.NumOfChannels > 1)
        throw CSampleError("slide: a TIFF store without XML has one frame; take one with XML (ome-tiff)");
    CheckSide(picture, options);
}

/// Down to the level that fits one tile.
uint32_t WholePyramid(const Stack& stack, const CSlideOptions& options)
{
    uint32_t levels = 1;
    while (stack.LevelWidth(levels - 1) > options.TileWidth || stack.LevelHeight(levels - 1) > options.TileHeight)
        ++levels;
    return levels;
}

void DescribePixels(Stack& stack, const CSlideOptions& options, uint16_t samples)
{
    stack.Raw(options.Bits == 16 ? ComponentType::Uint16 : ComponentType::Uint8, samples)
        .Compression(options.Compression)
        .Quality(options.Quality);
    stack.TiffCompression(TiffCompressionOf(options.Compression));
    if (samples == 3 && options.IsBgr)
        stack.ComponentOrder(ComponentOrder::Bgr);
}

void DescribeDimensions(Stack& stack, const CSlideOptions& options)
{
    if (options.NumOfZ > 1)
        stack.Z(options.NumOfZ);
    if (options.NumOfT > 1)
        stack.T(options.NumOfT);
    if (options.NumOfLambdas > 1)
        stack.Lambda(options.NumOfLambdas);
    if (options.NumOfChannels > 1)
    {
        std::vector<CChannel> channels = {"DAPI", "FITC", "TRITC", "CY5"};
        for (uint32_t i = 4; i < options.NumOfChannels; ++i)
            channels.emplace_back("Channel " + std::to_string(i));
        channels.resize(options.NumOfChannels, "");
        stack.Channels(std::move(channels));
    }
}

Stack StackOf(const std::shared_ptr<const CPicture>& picture, const CSlideOptions& options, uint32_t id)
{
    Stack stack(id);
    stack.Size(picture->Width() * options.Grow, picture->Height() * options.Grow)
        .Tiles(options.TileWidth, options.TileHeight);
    const bool isInDocument = options.Storage == StackStorage::InDocument;
    stack.Levels(options.NumOfLevels.value_or(isInDocument ? 1 : WholePyramid(stack, options)));
    stack.Plan().Storage = options.Storage;
    stack.Plan().RowsPerStrip = options.RowsPerStrip;
    stack.Plan().IsBigTiff = options.IsBigTiff;
    stack.Plan().HasXml = options.HasXml;
    DescribePixels(stack, options, options.NumOfChannels > 1 || options.IsGrey ? uint16_t{1} : picture->Samples());
    DescribeDimensions(stack, options);
    // The stacks lie side by side on the slide, in the micrometres of their scale.
    stack.Scale(0.5, 0.5).Origin((id - 1) * 0.5 * stack.Plan().Width, 0);

    const auto cutter = std::make_shared<CTileCutter>(picture, options, stack);
    CTileContents contents;
    contents.Bytes = [cutter](const CTilePlace& place) { return cutter->Bytes(place); };
    if (options.Storage != StackStorage::BinaryStore)
        contents.Pixels = [cutter](const CTilePlace& place) { return cutter->Pixels(place); };
    if (options.Grow > 1)
        contents.Key = [cutter](const CTilePlace& place) { return cutter->Key(place); };
    contents.AreSharedBytesCopied = options.HasEachTileItsOwnBytes;
    return stack.Contents(std::move(contents));
}

CPicture CutToWholeTiles(const CPicture& picture, const CSlideOptions& options)
{
    if (picture.Width() < options.TileWidth || picture.Height() < options.TileHeight)
        throw CSampleError(
            "slide: the picture is smaller than a tile and can't be cut to whole ones; take smaller tiles");
    return picture.Cut(picture.Width() / options.TileWidth * options.TileWidth,
                       picture.Height() / options.TileHeight * options.TileHeight);
}

} // namespace

uint32_t UsualRowsPerStrip(const CSlideOptions& options)
{
    return options.Compression == StoreCompression::Jpeg ? Stack::OneStrip : options.TileHeight;
}

uint16_t TiffCompressionOf(uint32_t storeCompression)
{
    switch (storeCompression)
    {
    case StoreCompression::Raw:
        return COMPRESSION_NONE;
    case StoreCompression::Jpeg:
        return COMPRESSION_JPEG;
    case StoreCompression::J2k:
        return COMPRESSION_JP2000;
    default:
        return static_cast<uint16_t>(storeCompression);
    }
}

CPicture ThumbnailOf(const CPicture& picture)
{
    CMirroredPlane plane(picture.WithBits(8).WithSamples(3));
    uint32_t width = picture.Width(), height = picture.Height();
    while (std::max(width, height) > LargestThumbnail)
    {
        plane = plane.Halved();
        width = (width + 1) / 2;
        height = (height + 1) / 2;
    }
    return plane.Window(0, 0, width, height, width, height, 0);
}

Stack StackFromPicture(const CPicture& whole, const CSlideOptions& options, uint32_t id)
{
    CheckOptions(whole, options);
    return StackOf(
        std::make_shared<const CPicture>(options.IsCutToWholeTiles ? CutToWholeTiles(whole, options) : whole), options,
        id);
}

Document SlideFromPicture(const CPicture& whole, const CSlideOptions& options, const std::function<void(Stack&)>& tell)
{
    CheckOptions(whole, options);
    const CPicture picture = options.IsCutToWholeTiles ? CutToWholeTiles(whole, options) : whole;
    const CPicture thumbnail = ThumbnailOf(picture);
    Document document;
    document.FirstDirectory(thumbnail, FirstDirectoryKind::Raw).Thumbnail(thumbnail);
    const auto shared = std::make_shared<const CPicture>(picture);
    for (uint32_t id = 1; id <= options.NumOfStacks; ++id)
    {
        Stack stack = StackOf(shared, options, id);
        if (tell)
            tell(stack);
        document.With(std::move(stack));
    }
    return document;
}

} // namespace SampleDocuments
