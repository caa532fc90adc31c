#include "SampleDocuments/Description/Parts.h"

namespace SampleDocuments
{

namespace
{

CBitmapOptions BitmapOptionsOf(CJsonObject& object)
{
    constexpr uint32_t MostColours = 65536;
    CBitmapOptions options;
    object.Read("bits", options.Bits);
    object.Read("colours", options.NumOfColours);
    object.Read("sizeOfHeader", options.SizeOfHeader);
    if (options.NumOfColours.value_or(0) > MostColours)
        Refuse(object.PlaceOf("colours"), "takes at most " + std::to_string(MostColours));
    return options;
}

/// A bitmap: "bytes", or a picture with the bits that are asked for.
ByteString ThumbnailFromJson(const Json& json, const std::string& place, CPictures& pictures)
{
    ByteString bitmap;
    ReadJsonObject(json, place,
                   [&](CJsonObject& object)
                   {
                       const CBitmapOptions options = BitmapOptionsOf(object);
                       if (!object.Read("bytes", bitmap))
                           bitmap = BitmapOf(ThumbnailOf(pictures.PictureFor(object)), options);
                   });
    return bitmap;
}

/// Both layouts. A document that says nothing of them has that of its first picture in the newer one.
void ReadThumbnails(CJsonObject& object, Document& document, CPictures& pictures)
{
    const Json* newer = object.Find("thumbnail");
    const Json* older = object.Find("oldThumbnail");
    const CPicture* first = pictures.First();
    if (!newer && !older && first)
        document.Thumbnail(ThumbnailOf(*first));
    if (newer && !newer->is_null())
        document.Thumbnail(ThumbnailFromJson(*newer, object.PlaceOf("thumbnail"), pictures));
    if (older && !older->is_null())
        document.OldThumbnail(ThumbnailFromJson(*older, object.PlaceOf("oldThumbnail"), pictures));
}

void ReadFirstDirectory(CJsonObject& object, Document& document, CPictures& pictures)
{
    static const std::map<std::string, FirstDirectoryKind::E> kinds = {{"raw", FirstDirectoryKind::Raw},
                                                                       {"jpeg", FirstDirectoryKind::Jpeg}};
    const Json* member = object.Find("firstDirectory");
    if (!member && pictures.First())
        document.FirstDirectory(ThumbnailOf(*pictures.First()), FirstDirectoryKind::Raw);
    if (member && member->is_null())
        document.WithoutFirstDirectory();
    else if (member)
        ReadJsonObject(*member, object.PlaceOf("firstDirectory"),
                       [&](CJsonObject& directory)
                       {
                           FirstDirectoryKind::E kind = FirstDirectoryKind::Raw;
                           directory.ReadName("kind", kinds, kind);
                           CTiffDirectory made = FirstDirectoryOf(ThumbnailOf(pictures.PictureFor(directory)), kind);
                           uint16_t compression = 0;
                           if (directory.Read("compression", compression))
                               made.Compression(compression);
                           document.FirstDirectory(std::move(made));
                       });
}

void ReadStacks(CJsonObject& object, Document& document, const CSlideOptions& slide, CPictures& pictures)
{
    const Json* stacks = object.Find("stacks");
    if (stacks && !stacks->is_array())
        Refuse(object.PlaceOf("stacks"), "takes a list");
    const Json one = Json::object();
    const size_t numOfStacks = stacks ? stacks->size() : slide.NumOfStacks;
    for (size_t i = 0; i < numOfStacks; ++i)
        document.With(StackFromJson(stacks ? (*stacks)[i] : one, ItemOf(object.PlaceOf("stacks"), i),
                                    static_cast<uint32_t>(i + 1), slide, pictures));
}

void ReadDisplayFlow(CJsonObject& object, Document& document)
{
    std::vector<uint32_t> order;
    if (object.Read("displayOrder", order))
        document.DisplayOrder(order);
    std::optional<DisplayLayers> layers;
    if (!object.Read("displayLayers", layers))
        return;
    if (layers)
        document.Layers(*layers);
    else
        document.WithoutDisplayFlow();
}

void ReadProperties(CJsonObject& object, Document& document)
{
    std::optional<CDocumentProperties> properties;
    if (object.Read("properties", properties))
        properties ? document.Properties(*properties) : document.WithoutProperties();
    std::vector<uint32_t> versionNumber;
    if (object.Read("versionNumber", versionNumber))
        document.VersionNumber(versionNumber);
    std::optional<std::string> id;
    object.Read("persistentId", id);
    if (id)
        document.PersistentId(*id);
}

void ReadDocument(CJsonObject& object, Document& document, const CSlideOptions& slide, CPictures& pictures)
{
    ReadProperties(object, document);
    ReadStacks(object, document, slide, pictures);
    ReadDisplayFlow(object, document);
    ReadThumbnails(object, document, pictures);
    ReadFirstDirectory(object, document, pictures);
    std::vector<CNode> blobs;
    object.Read("blobs", blobs);
    for (CNode& blob : blobs)
        document.FileBlob(std::move(blob));
    if (const Json* edits = object.Find("edits"))
        ApplyEdits(*edits, object.PlaceOf("edits"), document);
}

} // namespace

Document DocumentFromDescription(const std::filesystem::path& file, const CDescriptionDefaults& defaults)
{
    try
    {
        const Json json = ParseFile(file);
        Document document;
        CPictures pictures(file.parent_path(), defaults.Picture);
        ReadJsonObject(json, "",
                       [&](CJsonObject& object) { ReadDocument(object, document, defaults.Slide, pictures); });
        document.Root(); // which makes the tree and finds what does not go together
        return document;
    }
    catch (const CSampleError& error)
    {
        ThrowWithPlace(error, file.string());
    }
}

} // namespace SampleDocuments
