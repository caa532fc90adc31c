#include "SampleDocuments/StackTree.h"

namespace SampleDocuments
{

CStoreAdditionalHeader AdditionalHeaderOf(const Stack& stack)
{
    CStoreAdditionalHeader header = stack.Plan().Pixels;
    header.TileX = stack.Plan().TileWidth;
    header.TileY = stack.Plan().TileHeight;
    return header;
}

CTileStore StoreOf(const Stack& stack)
{
    CTileStore store;
    store.Header = stack.Plan().VolumeHeader;
    store.Additional = AdditionalHeaderOf(stack);
    store.ChunkListBeforeBodies = stack.Plan().ChunkListBeforeBodies;
    stack.ForEachTile(
        [&](const CTilePlace& place)
        {
            CStoredTile& tile = store.Tiles.emplace_back();
            tile.Elements = stack.Elements(place);
            tile.Body = stack.TileBytes(place);
        });
    return store;
}

void StreamStore(const Stack& stack, const std::filesystem::path& path)
{
    const CTileContents& contents = stack.Plan().Contents;
    CTileStoreWriter writer(path, stack.Plan().VolumeHeader, AdditionalHeaderOf(stack));
    stack.ForEachTile(
        [&](const CTilePlace& place)
        {
            const std::vector<int32_t> elements = stack.Elements(place);
            if (contents.HoleSize != 0)
                return writer.AddHole(elements, contents.HoleSize);
            const auto key = contents.Key ? contents.Key(place) : std::nullopt;
            if (!key)
                return writer.Add(elements, stack.TileBytes(place));
            const bool isThere =
                contents.AreSharedBytesCopied ? writer.AddCopy(elements, *key) : writer.AddShared(elements, *key);
            if (!isThere)
                writer.AddKeyed(elements, *key, stack.TileBytes(place));
        });
    writer.Finish();
}

} // namespace SampleDocuments
