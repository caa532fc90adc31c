#include "SampleDocuments/Codecs.h"
#include "SampleDocuments/Document.h"
#include "SampleDocuments/Tags.h"

namespace SampleDocuments
{

namespace
{

constexpr uint16_t CompressionJpeg = 7;
constexpr uint16_t PhotometricYCbCr = 6;
constexpr uint32_t Quality = 90;

void AddProperties(CNode& set, const CDocumentProperties& properties)
{
    const auto addText = [&set](uint32_t tag, const std::optional<std::string>& text)
    {
        if (text)
            set.Add(Text(tag, *text));
    };
    const auto addTime = [&set](uint32_t tag, const std::optional<int64_t>& time)
    {
        if (time)
            set.Add(Int64(tag, *time, FieldCode::Int64TimeStamp));
    };
    const auto addNumber = [&set](uint32_t tag, const std::optional<int32_t>& number)
    {
        if (number)
            set.Add(Int32(tag, *number));
    };
    addText(Tag::Note, properties.Note);
    addTime(Tag::DocumentTime, properties.CreationTime);
    addTime(Tag::LastSavedTime, properties.LastSavedTime);
    addText(Tag::Author, properties.Author);
    addText(Tag::CreatorName, properties.CreatorName);
    addText(Tag::ProductName, properties.ProductName);
    addText(Tag::ProductVersion, properties.ProductVersion);
    addText(Tag::FamilyId, properties.FamilyId);
    addNumber(Tag::CreatorMajorVersion, properties.CreatorMajorVersion);
    addNumber(Tag::CreatorMinorVersion, properties.CreatorMinorVersion);
    addNumber(Tag::CreatorSubVersion, properties.CreatorSubVersion);
    addNumber(Tag::CreatorBuildNumber, properties.CreatorBuildNumber);
}

CNode ThumbnailNode(const ByteString& bitmap)
{
    return SampleDocuments::Volume(Tag::Thumbnail, {ByteArray(Tag::Value, bitmap)});
}

} // namespace

CTiffDirectory FirstDirectoryOf(const CPicture& picture, FirstDirectoryKind::E kind)
{
    const CPicture pixels = picture.WithBits(8);
    CTiffDirectory directory = CTiffDirectory(picture.Width(), picture.Height()).Samples(picture.Samples());
    if (kind == FirstDirectoryKind::Raw)
        return directory.Data({PackedRows(pixels)});
    if (picture.Samples() == 3)
        directory.Photometric(PhotometricYCbCr);
    return directory.Compression(CompressionJpeg).Data({EncodeJpeg(pixels, Quality)});
}

void Document::ThrowIfBuilt() const
{
    if (_File)
        throw CSampleError("document: describe all of it before the first handle is taken");
}

Document& Document::With(Stack stack)
{
    ThrowIfBuilt();
    _Stacks.push_back(std::move(stack));
    return *this;
}

Document& Document::VersionNumber(std::vector<uint32_t> numbers)
{
    ThrowIfBuilt();
    _VersionNumber = std::move(numbers);
    return *this;
}

Document& Document::Properties(CDocumentProperties properties)
{
    ThrowIfBuilt();
    _Properties = std::move(properties);
    return *this;
}

Document& Document::WithoutProperties()
{
    ThrowIfBuilt();
    _Properties.reset();
    return *this;
}

Document& Document::WithoutDisplayFlow()
{
    ThrowIfBuilt();
    _HasDisplayFlow = false;
    return *this;
}

Document& Document::DisplayOrder(std::vector<uint32_t> stackIds)
{
    ThrowIfBuilt();
    _DisplayOrder = std::move(stackIds);
    return *this;
}

Document& Document::Thumbnail(ByteString bitmapWithoutFileHeader)
{
    ThrowIfBuilt();
    _Thumbnail = std::move(bitmapWithoutFileHeader);
    return *this;
}

Document& Document::OldThumbnail(ByteString bitmapWithoutFileHeader)
{
    ThrowIfBuilt();
    _OldThumbnail = std::move(bitmapWithoutFileHeader);
    return *this;
}

Document& Document::PersistentId(std::string id)
{
    ThrowIfBuilt();
    _PersistentId = std::move(id);
    return *this;
}

Document& Document::FirstDirectory(CTiffDirectory directory)
{
    ThrowIfBuilt();
    _FirstDirectory = std::move(directory);
    return *this;
}

Document& Document::WithoutFirstDirectory()
{
    ThrowIfBuilt();
    _HasFirstDirectory = false;
    return *this;
}

Document& Document::Layers(DisplayLayers layers)
{
    ThrowIfBuilt();
    _Layers = std::move(layers);
    return *this;
}

Document& Document::Thumbnail(const CPicture& picture, const CBitmapOptions& options)
{
    return Thumbnail(BitmapOf(picture, options));
}

Document& Document::OldThumbnail(const CPicture& picture, const CBitmapOptions& options)
{
    return OldThumbnail(BitmapOf(picture, options));
}

Document& Document::FileBlob(CNode blob)
{
    ThrowIfBuilt();
    _FileBlobs.push_back(std::move(blob));
    return *this;
}

Document& Document::FirstDirectory(const CPicture& picture, FirstDirectoryKind::E kind)
{
    return FirstDirectory(FirstDirectoryOf(picture, kind));
}

CNode Document::PropertySet() const
{
    CNode set = SampleDocuments::Volume(Tag::PropertySet);
    if (_Properties)
        AddProperties(set, *_Properties);
    if (_Thumbnail)
        set.Add(ThumbnailNode(*_Thumbnail));
    return set;
}

CNode Document::OldProperties() const
{
    CNode old = SampleDocuments::Volume(Tag::OldProperties);
    if (_PersistentId)
        old.Add(Text(Tag::PersistentId, *_PersistentId));
    if (_OldThumbnail)
        old.Add(ThumbnailNode(*_OldThumbnail));
    return old;
}

} // namespace SampleDocuments
