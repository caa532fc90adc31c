#include "SampleDocuments/Document.h"

#include "SampleDocuments/StackTree.h"
#include "SampleDocuments/Tags.h"
#include "SampleDocuments/TiffWriter.h"

namespace SampleDocuments
{

namespace
{

CDisplayChannel DisplayOf(const Stack& stack)
{
    CDisplayChannel channel = stack.Plan().Display;
    if (!channel.StackId)
        channel.StackId = static_cast<int32_t>(stack.Id());
    return channel;
}

CTiffDirectory SmallOverview()
{
    return CTiffDirectory(6, 4).Samples(3);
}

} // namespace

CNode Document::DisplayFlow() const
{
    DisplayLayers layers;
    if (_Layers)
        layers = *_Layers;
    else if (_DisplayOrder)
        for (const uint32_t stackId : *_DisplayOrder)
            layers.push_back({DisplayOf(StackOf(stackId))});
    else
        for (const Stack& stack : _Stacks)
            layers.push_back({DisplayOf(stack)});
    CNode flow = SampleDocuments::Volume(Tag::DisplayFlow);
    for (uint32_t i = 0; i < layers.size(); ++i)
        flow.Add(DisplayLayerNode(i, layers[i]));
    return flow;
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
    CNode collection = SampleDocuments::Volume(Tag::Collection, {UInt32s(Tag::VersionNumber, _VersionNumber)});
    if (_Properties || _Thumbnail)
        collection.Add(SampleDocuments::Volume(Tag::CollectionProperties, {PropertySet()}));
    if (_HasDisplayFlow)
        collection.Add(DisplayFlow());
    AddStacks(collection, file.Directories);
    for (const CNode& blob : _FileBlobs)
        collection.Add(blob);
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
    File(); // a description that makes no tree leaves no stores behind
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
