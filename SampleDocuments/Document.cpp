#include "SampleDocuments/Document.h"

#include "SampleDocuments/StackTree.h"
#include "SampleDocuments/TiffWriter.h"

namespace SampleDocuments
{

namespace
{

constexpr uint32_t TagOfValue = 268435458;

CNode PropertySet(const CDocumentProperties& properties)
{
    CNode set = Volume(2109);
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
    addText(13, properties.Note);
    addTime(14, properties.CreationTime);
    addTime(23, properties.LastSavedTime);
    addText(15, properties.Author);
    addText(17, properties.CreatorName);
    addText(34, properties.ProductName);
    addText(35, properties.ProductVersion);
    addText(54, properties.FamilyId);
    addNumber(18, properties.CreatorMajorVersion);
    addNumber(19, properties.CreatorMinorVersion);
    addNumber(20, properties.CreatorSubVersion);
    addNumber(21, properties.CreatorBuildNumber);
    return set;
}

CNode ThumbnailNode(const ByteString& bitmap)
{
    return SampleDocuments::Volume(38, {ByteArray(TagOfValue, bitmap)});
}

CNode LayerNode(uint32_t number, const Stack& stack)
{
    CNode channel = SampleDocuments::Volume(2013, {Int32(10005, static_cast<int32_t>(stack.Id()))});
    if (stack.Plan().Display.Hidden)
        channel.Add(Bool(10056, *stack.Plan().Display.Hidden));
    return SampleDocuments::Volume(2012, {std::move(channel)}).SecondTag(number);
}

CTiffDirectory SmallOverview()
{
    return CTiffDirectory(6, 4).Samples(3);
}

} // namespace

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

CNode Document::DisplayFlow() const
{
    CNode flow = SampleDocuments::Volume(2011);
    if (!_DisplayOrder)
        for (uint32_t i = 0; i < _Stacks.size(); ++i)
            flow.Add(LayerNode(i, _Stacks[i]));
    else
        for (uint32_t i = 0; i < _DisplayOrder->size(); ++i)
            flow.Add(LayerNode(i, StackOf((*_DisplayOrder)[i])));
    return flow;
}

CNode Document::OldProperties() const
{
    CNode old = SampleDocuments::Volume(2);
    if (_PersistentId)
        old.Add(Text(50, *_PersistentId));
    if (_OldThumbnail)
        old.Add(ThumbnailNode(*_OldThumbnail));
    return old;
}

void Document::AddStacks(CNode& collection, std::vector<CTiffDirectory>& directories) const
{
    std::map<const Stack*, uint32_t> firstDirectories;
    for (const Stack& stack : _Stacks)
    {
        if (IsWrittenByLibTiff(stack) || stack.Plan().Storage != StackStorage::InDocument)
            continue;
        firstDirectories[&stack] = static_cast<uint32_t>(directories.size());
        for (CTiffDirectory& directory : DirectoriesOf(stack))
            directories.push_back(std::move(directory));
    }
    // Those that libtiff writes are appended when the document is there.
    auto next = static_cast<uint32_t>(directories.size());
    for (const Stack& stack : _Stacks)
        if (stack.Plan().Storage == StackStorage::InDocument && IsWrittenByLibTiff(stack))
        {
            firstDirectories[&stack] = next;
            next += static_cast<uint32_t>(stack.FrameNodes().size());
        }
    for (const Stack& stack : _Stacks)
        collection.Add(TreeOf(stack, firstDirectories[&stack]));
}

CDocumentFile& Document::File()
{
    if (_File)
        return *_File;
    CDocumentFile file;
    if (_HasFirstDirectory)
        file.Directories.push_back(_FirstDirectory.value_or(SmallOverview()));
    CNode collection = SampleDocuments::Volume(2000, {UInt32s(2035, _VersionNumber)});
    if (_Properties || _Thumbnail)
    {
        CNode set = PropertySet(_Properties.value_or(CDocumentProperties()));
        if (!_Properties)
            set.Children().clear();
        if (_Thumbnail)
            set.Add(ThumbnailNode(*_Thumbnail));
        collection.Add(SampleDocuments::Volume(2004, {std::move(set)}));
    }
    if (_HasDisplayFlow)
        collection.Add(DisplayFlow());
    AddStacks(collection, file.Directories);
    file.Root.Add(std::move(collection));
    if (_PersistentId || _OldThumbnail)
        file.Root.Add(OldProperties());
    return _File.emplace(std::move(file));
}

ByteString Document::ToBytes()
{
    return File().ToBytes();
}

std::filesystem::path Document::StorePath(const std::filesystem::path& document, uint32_t stackId) const
{
    const CStackPlan& plan = StackOf(stackId).Plan();
    const char* usual = plan.Storage == StackStorage::TiffStore ? "frame_t.tif" : "frame_t.kor";
    return document.parent_path() / ("_" + document.stem().string() + "_") / ("stack" + std::to_string(stackId)) /
           plan.StoreName.value_or(usual);
}

void Document::WriteStore(const Stack& stack, const std::filesystem::path& path) const
{
    const auto store = _Stores.find(stack.Id());
    const auto tiffStore = _TiffStores.find(stack.Id());
    if (store != _Stores.end())
        store->second.WriteTo(path);
    else if (tiffStore != _TiffStores.end())
        WriteFile(path, TiffFileOf(tiffStore->second));
    else if (IsWrittenByLibTiff(stack))
        WriteTiffStore(stack, path);
    else if (stack.Plan().Storage == StackStorage::TiffStore)
        WriteFile(path, TiffFileOf(DirectoriesOf(stack)));
    else if (stack.Plan().ChunkListBeforeBodies)
        StoreOf(stack).WriteTo(path);
    else
        StreamStore(stack, path);
}

std::filesystem::path Document::WriteTo(const std::filesystem::path& path)
{
    for (const Stack& stack : _Stacks)
        if (stack.Plan().IsStoreWritten &&
            (stack.Plan().Storage == StackStorage::BinaryStore || stack.Plan().Storage == StackStorage::TiffStore))
            WriteStore(stack, StorePath(path, stack.Id()));
    // The document comes last, so that there is none if a store could not be written.
    WriteFile(path, ToBytes());
    try
    {
        for (const Stack& stack : _Stacks)
            if (stack.Plan().Storage == StackStorage::InDocument && IsWrittenByLibTiff(stack))
                AppendToDocument(stack, path);
    }
    catch (...)
    {
        std::error_code error;
        std::filesystem::remove(path, error);
        throw;
    }
    return path;
}

} // namespace SampleDocuments
