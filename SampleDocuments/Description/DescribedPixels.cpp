#include "SampleDocuments/Description/Parts.h"

namespace SampleDocuments
{

CPicture CPictures::Load(CJsonObject& object)
{
    constexpr uint32_t LargestDrawn = 10000;
    std::string file;
    std::pair<uint32_t, uint32_t> size;
    const bool isFile = object.Read("picture", file), isDrawn = object.Read("draw", size);
    if (isFile && isDrawn)
        Refuse(object.Place(), "takes picture or draw, not both");
    if (isFile)
        return LoadPicture(_Folder / file);
    if (!isDrawn)
        return Usual();
    for (const uint32_t side : {size.first, size.second})
        if (side == 0 || side > LargestDrawn)
            Refuse(object.PlaceOf("draw"), "takes a width and a height from 1 to " + std::to_string(LargestDrawn));
    return DrawPicture(size.first, size.second);
}

CPicture CPictures::PictureFor(CJsonObject& object)
{
    CPicture picture = Load(object);
    if (!_First)
        _First = picture;
    return picture;
}

const CPicture& CPictures::Usual()
{
    if (!_UsualPicture)
        _UsualPicture = _Usual();
    return *_UsualPicture;
}

namespace
{

const std::map<std::string, uint32_t> Types = {{"int8", ComponentType::Int8},   {"uint8", ComponentType::Uint8},
                                               {"int16", ComponentType::Int16}, {"uint16", ComponentType::Uint16},
                                               {"int32", ComponentType::Int32}, {"uint32", ComponentType::Uint32},
                                               {"int64", ComponentType::Int64}, {"uint64", ComponentType::Uint64},
                                               {"float", ComponentType::Float}, {"double", ComponentType::Double}};

const std::map<std::string, uint32_t> Compressions = {
    {"raw", StoreCompression::Raw}, {"jpeg", StoreCompression::Jpeg}, {"jpegLossless", StoreCompression::JpegLossless},
    {"j2k", StoreCompression::J2k}, {"png", StoreCompression::Png},   {"bmp", StoreCompression::Bmp}};

struct CStoreKind
{
    StackStorage::E Storage;
    bool HasXml;
};

const std::map<std::string, CStoreKind> Kinds = {{"kor", {StackStorage::BinaryStore, true}},
                                                 {"ome-tiff", {StackStorage::TiffStore, true}},
                                                 {"tiff", {StackStorage::TiffStore, false}},
                                                 {"document", {StackStorage::InDocument, true}},
                                                 {"vectorGraphics", {StackStorage::VectorGraphics, true}}};

/// A name of the table, or any number.
void ReadNameOrNumber(CJsonObject& object, const std::string& key, const std::map<std::string, uint32_t>& names,
                      uint32_t& into)
{
    const Json* member = object.Find(key);
    if (member && member->is_number())
        object.Read(key, into);
    else
        object.ReadName(key, names, into);
}

void ReadPixels(const Json& json, const std::string& place, CDescribedPixels& pixels)
{
    ReadJsonObject(json, place,
                   [&pixels](CJsonObject& object)
                   {
                       ReadNameOrNumber(object, "type", Types, pixels.Component);
                       object.Read("components", pixels.NumOfComponents);
                       ReadNameOrNumber(object, "compression", Compressions, pixels.Slide.Compression);
                       object.Read("quality", pixels.Slide.Quality);
                       object.Read("colorSpace", pixels.ColorSpace);
                       object.Read("componentOrder", pixels.ComponentOrder);
                   });
}

/// What the description of a store says of the slide's options; the rest of it is read with the metadata.
void ReadStore(CJsonObject& object, CSlideOptions& slide)
{
    CStoreKind kind = {slide.Storage, slide.HasXml};
    const bool isKindGiven = object.ReadName("store", Kinds, kind);
    slide.Storage = kind.Storage;
    slide.HasXml = kind.HasXml;
    bool isOneStrip = false;
    const bool isStriped = object.Read("rowsPerStrip", slide.RowsPerStrip);
    object.Read("oneStrip", isOneStrip);
    if (isOneStrip)
        slide.RowsPerStrip = Stack::OneStrip;
    else if (isKindGiven && !isStriped)
        slide.RowsPerStrip = slide.Storage == StackStorage::InDocument ? UsualRowsPerStrip(slide) : 0;
    object.Read("bigTiff", slide.IsBigTiff);
}

} // namespace

CDescribedPixels PixelsFromJson(CJsonObject& object, const CSlideOptions& defaults)
{
    CDescribedPixels pixels;
    pixels.Slide = defaults;
    pixels.Component = defaults.Bits == 16 ? ComponentType::Uint16 : ComponentType::Uint8;
    std::pair<uint32_t, uint32_t> tile = {defaults.TileWidth, defaults.TileHeight};
    object.Read("tile", tile);
    pixels.Slide.TileWidth = tile.first;
    pixels.Slide.TileHeight = tile.second;
    object.Read("levels", pixels.Slide.NumOfLevels);
    object.Read("grow", pixels.Slide.Grow);
    if (const Json* member = object.Find("pixels"))
        ReadPixels(*member, object.PlaceOf("pixels"), pixels);
    ReadStore(object, pixels.Slide);
    return pixels;
}

namespace
{

const std::map<std::string, DimensionMeaning::E> Meanings = {{"z", DimensionMeaning::Z},
                                                             {"t", DimensionMeaning::T},
                                                             {"lambda", DimensionMeaning::Lambda},
                                                             {"channel", DimensionMeaning::Channel},
                                                             {"dummy", DimensionMeaning::Dummy}};

/// A dimension with the start and the step that it has if nobody says otherwise.
CStackDimension UsualDimension(DimensionMeaning::E meaning)
{
    Stack stack(1);
    switch (meaning)
    {
    case DimensionMeaning::Z:
        stack.Z(1);
        break;
    case DimensionMeaning::T:
        stack.T(1);
        break;
    case DimensionMeaning::Lambda:
        stack.Lambda(1);
        break;
    case DimensionMeaning::Channel:
        stack.Channels(0);
        break;
    default:
        stack.Dummy();
    }
    return stack.Plan().Dimensions.front();
}

CChannel ChannelFromJson(const Json& json, const std::string& place)
{
    CChannel channel("");
    if (json.is_string())
    {
        channel.Name = json.get<std::string>();
        return channel;
    }
    ReadJsonObject(json, place,
                   [&channel](CJsonObject& object)
                   {
                       object.Read("name", channel.Name);
                       object.Read("limits", channel.Limits);
                       object.Read("isWavelength", channel.IsWavelength);
                       object.Read("lookUpTable", channel.Table);
                       ReadDevices(object, channel.OpticalPath);
                   });
    return channel;
}

void ReadDimension(CJsonObject& object, CStackDimension& dimension)
{
    DimensionMeaning::E meaning = DimensionMeaning::Dummy;
    if (!object.ReadName("kind", Meanings, meaning))
        Refuse(object.PlaceOf("kind"), "is needed");
    dimension = UsualDimension(meaning);
    if (const Json* channels = object.Find("channels"))
    {
        if (!channels->is_array())
            Refuse(object.PlaceOf("channels"), "takes a list of names and objects");
        for (size_t i = 0; i < channels->size(); ++i)
            dimension.Channels.push_back(ChannelFromJson((*channels)[i], ItemOf(object.PlaceOf("channels"), i)));
        dimension.NumOfPoints = static_cast<uint32_t>(dimension.Channels.size());
    }
    object.Read("points", dimension.NumOfPoints);
    object.Read("start", dimension.Start);
    object.Read("step", dimension.Step);
    if (object.Read("unit", dimension.StartUnit))
        dimension.StepUnit = dimension.StartUnit;
    object.Read("startUnit", dimension.StartUnit);
    object.Read("stepUnit", dimension.StepUnit);
    object.Read("isMeaningWritten", dimension.IsMeaningWritten);
    object.Read("isCounted", dimension.IsCounted);
}

} // namespace

std::optional<std::vector<CStackDimension>> DimensionsFromJson(CJsonObject& object)
{
    const Json* list = object.Find("dimensions");
    if (!list)
        return std::nullopt;
    const std::string place = object.PlaceOf("dimensions");
    if (!list->is_array())
        Refuse(place, "takes a list");
    std::vector<CStackDimension> dimensions(list->size());
    for (size_t i = 0; i < list->size(); ++i)
        ReadJsonObject((*list)[i], ItemOf(place, i),
                       [&](CJsonObject& dimension) { ReadDimension(dimension, dimensions[i]); });
    return dimensions;
}

} // namespace SampleDocuments
