#include "SampleDocuments/Codecs.h"
#include "SampleDocuments/Description/Parts.h"

#include <algorithm>

namespace SampleDocuments
{

namespace
{

struct ContentsKind
{
    enum E
    {
        Picture,
        Pattern,
        Labels,
        Bytes,
        Holes
    };
};

const std::map<std::string, ContentsKind::E> Kinds = {{"picture", ContentsKind::Picture},
                                                      {"pattern", ContentsKind::Pattern},
                                                      {"labels", ContentsKind::Labels},
                                                      {"bytes", ContentsKind::Bytes},
                                                      {"holes", ContentsKind::Holes}};

/// Where the bytes of the tiles come from: "contents", with "bytesPerTile" for two of its kinds.
struct CContents
{
    ContentsKind::E Kind = ContentsKind::Picture;
    uint32_t BytesPerTile = 1000;
};

CContents ContentsOf(CJsonObject& object)
{
    CContents contents;
    object.ReadName("contents", Kinds, contents.Kind);
    const bool isSizeGiven = object.Read("bytesPerTile", contents.BytesPerTile);
    if (isSizeGiven && contents.Kind != ContentsKind::Bytes && contents.Kind != ContentsKind::Holes)
        Refuse(object.PlaceOf("bytesPerTile"), "is for \"contents\": \"bytes\" or \"holes\"");
    return contents;
}

uint32_t PointsAlong(const std::vector<CStackDimension>& dimensions, DimensionMeaning::E meaning)
{
    for (const CStackDimension& dimension : dimensions)
        if (dimension.Meaning == meaning)
            return std::max(dimension.NumOfPoints, 1u);
    return 1;
}

Stack StackOfPicture(CJsonObject& object, uint32_t id, CDescribedPixels pixels,
                     const std::optional<std::vector<CStackDimension>>& dimensions, CPictures& pictures)
{
    if (object.Has("size") || object.Has("grid"))
        Refuse(object.Place(),
               "size and grid are for other contents than a picture, such as \"contents\": \"pattern\"");
    if (pixels.Component != ComponentType::Uint8 && pixels.Component != ComponentType::Uint16)
        Refuse(object.PlaceOf("pixels.type"), "a picture is of uint8 or uint16; take \"contents\": \"pattern\"");
    CSlideOptions& slide = pixels.Slide;
    slide.Bits = pixels.Component == ComponentType::Uint16 ? 16 : 8;
    slide.IsGrey |= pixels.NumOfComponents == 1;
    if (dimensions)
    {
        slide.NumOfZ = PointsAlong(*dimensions, DimensionMeaning::Z);
        slide.NumOfT = PointsAlong(*dimensions, DimensionMeaning::T);
        slide.NumOfLambdas = PointsAlong(*dimensions, DimensionMeaning::Lambda);
        slide.NumOfChannels = PointsAlong(*dimensions, DimensionMeaning::Channel);
    }
    Stack stack = StackFromPicture(pictures.PictureFor(object), slide, id);
    if (dimensions)
        stack.Plan().Dimensions = *dimensions;
    return stack;
}

void ChooseContents(Stack& stack, const CContents& contents)
{
    const CStackPlan& plan = stack.Plan();
    switch (contents.Kind)
    {
    case ContentsKind::Labels:
        stack.Contents(Labels(stack.Id()));
        break;
    case ContentsKind::Bytes:
        stack.Contents(BytesOfSize(stack.Id(), contents.BytesPerTile));
        break;
    case ContentsKind::Holes:
        stack.Contents(Holes(contents.BytesPerTile));
        break;
    default:
        if (plan.Storage == StackStorage::BinaryStore && plan.Pixels.CompressionFormat != StoreCompression::Raw)
            stack.Contents(EncodedPixelsOf(plan));
    }
}

struct CGrid
{
    CLevelGrid Grid;
};

void FromJson(const Json& json, const std::string& place, CGrid& into)
{
    std::pair<int32_t, int32_t> columns, rows;
    ReadJsonObject(json, place,
                   [&](CJsonObject& object)
                   {
                       object.Read("level", into.Grid.Level);
                       object.Read("columns", columns);
                       object.Read("rows", rows);
                   });
    into.Grid.ColumnRange = Columns(columns.first, columns.second);
    into.Grid.RowRange = Rows(rows.first, rows.second);
}

void ReadGrid(CJsonObject& object, Stack& stack)
{
    std::vector<CGrid> grids;
    object.Read("grid", grids);
    for (const CGrid& grid : grids)
        stack.Level(grid.Grid.Level, grid.Grid.ColumnRange, grid.Grid.RowRange);
}

Stack StackOfOtherContents(CJsonObject& object, uint32_t id, const CDescribedPixels& pixels,
                           const std::optional<std::vector<CStackDimension>>& dimensions, const CContents& contents)
{
    if (object.Has("picture") || object.Has("draw"))
        Refuse(object.Place(), "picture and draw are for \"contents\": \"picture\"");
    const CSlideOptions& slide = pixels.Slide;
    Stack stack(id);
    std::pair<uint32_t, uint32_t> size = {256, 256};
    object.Read("size", size);
    stack.Size(size.first, size.second).Tiles(slide.TileWidth, slide.TileHeight).Levels(slide.NumOfLevels.value_or(1));
    ReadGrid(object, stack);
    CStackPlan& plan = stack.Plan();
    plan.Storage = slide.Storage;
    plan.RowsPerStrip = slide.RowsPerStrip;
    plan.IsBigTiff = slide.IsBigTiff;
    plan.HasXml = slide.HasXml;
    stack.Raw(static_cast<ComponentType::E>(pixels.Component), std::max(pixels.NumOfComponents, 1u))
        .Compression(slide.Compression)
        .Quality(slide.Quality)
        .TiffCompression(TiffCompressionOf(slide.Compression));
    plan.Dimensions = dimensions.value_or(std::vector<CStackDimension>());
    ChooseContents(stack, contents);
    return stack;
}

struct CMissing
{
    uint32_t Level = 0;
    int32_t Column = 0;
    int32_t Row = 0;
};

void FromJson(const Json& json, const std::string& place, CMissing& into)
{
    ReadJsonObject(json, place,
                   [&into](CJsonObject& object)
                   {
                       object.Read("level", into.Level);
                       object.Read("column", into.Column);
                       object.Read("row", into.Row);
                   });
}

/// The picture of the whole slide as a blob: "bytes", or a picture in the encoding that is asked for.
void ReadOverview(CJsonObject& object, Stack& stack, CPictures& pictures)
{
    const Json* member = object.Find("overview");
    if (!member || member->is_null())
        return;
    static const std::map<std::string, uint32_t> encodings = {
        {"jpeg", StoreCompression::Jpeg}, {"png", StoreCompression::Png}, {"bmp", StoreCompression::Bmp}};
    ReadJsonObject(*member, object.PlaceOf("overview"),
                   [&](CJsonObject& overview)
                   {
                       ByteString bytes;
                       CEncoding encoding = {.Compression = StoreCompression::Jpeg};
                       overview.ReadName("encoding", encodings, encoding.Compression);
                       if (!overview.Read("bytes", bytes))
                           bytes = Encode(ThumbnailOf(pictures.PictureFor(overview)), encoding);
                       stack.Overview(bytes);
                   });
}

} // namespace

Stack StackFromJson(const Json& json, const std::string& place, uint32_t usualId, const CSlideOptions& defaults,
                    CPictures& pictures)
{
    std::optional<Stack> stack;
    ReadJsonObject(json, place,
                   [&](CJsonObject& object)
                   {
                       uint32_t id = usualId;
                       object.Read("id", id);
                       const CDescribedPixels pixels = PixelsFromJson(object, defaults);
                       const CContents contents = ContentsOf(object);
                       const auto dimensions = DimensionsFromJson(object);
                       const bool hasPixels = pixels.Slide.Storage != StackStorage::VectorGraphics;
                       stack = contents.Kind == ContentsKind::Picture && hasPixels
                                   ? StackOfPicture(object, id, pixels, dimensions, pictures)
                                   : StackOfOtherContents(object, id, pixels, dimensions, contents);
                       if (pixels.ColorSpace)
                           stack->ColorSpace(*pixels.ColorSpace);
                       if (pixels.ComponentOrder)
                           stack->ComponentOrder(*pixels.ComponentOrder);
                       std::vector<CMissing> missing;
                       object.Read("missingTiles", missing);
                       for (const CMissing& tile : missing)
                           stack->MissingTile(tile.Level, tile.Column, tile.Row);
                       ReadStackMetadata(object, *stack);
                       ReadOverview(object, *stack, pictures);
                   });
    return *stack;
}

} // namespace SampleDocuments
