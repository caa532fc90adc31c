#include "SampleDocuments/StoreHeaders.h"

#include <algorithm>

namespace SampleDocuments
{

uint32_t BytesOfComponent(uint32_t componentType)
{
    switch (componentType)
    {
    case ComponentType::Int16:
    case ComponentType::Uint16:
        return 2;
    case ComponentType::Int32:
    case ComponentType::Uint32:
    case ComponentType::Float:
        return 4;
    case ComponentType::Int64:
    case ComponentType::Uint64:
    case ComponentType::Double:
        return 8;
    default:
        return 1;
    }
}

ByteString BytesOf(const CStoreVolumeHeader& header, size_t numOfElements, uint64_t chunkList, size_t numOfChunks)
{
    ByteString bytes;
    Append(bytes, std::span<const uint8_t>(header.Magic));
    Append(bytes, header.HeaderSize);
    Append(bytes, header.VolumeVersion);
    Append(bytes, header.DimensionCount.value_or(static_cast<uint32_t>(numOfElements)));
    Append(bytes, header.AdditionalHeaderOffset.value_or(SizeOfStoreVolumeHeader));
    Append(bytes, header.AdditionalHeaderSize);
    Append(bytes, header.Unused1);
    Append(bytes, header.FilePositionOfUsedChunks.value_or(static_cast<int64_t>(chunkList)));
    Append(bytes, header.NumberOfUsedChunks.value_or(static_cast<uint32_t>(numOfChunks)));
    Append(bytes, header.Unused2);
    Append(bytes, header.FilePositionOfFreeChunks);
    Append(bytes, header.NumberOfFreeChunks);
    Append(bytes, header.Unused3);
    return bytes;
}

ByteString BytesOf(const CStoreAdditionalHeader& header)
{
    ByteString bytes;
    Append(bytes, std::span<const uint8_t>(header.MagicID));
    for (const uint32_t number :
         {header.HeaderVersion, header.ComponentType, header.ComponentCount, header.ColorSpace,
          header.CompressionFormat, header.CompressionQuality, header.TileX, header.TileY, header.TileZ})
        Append(bytes, number);
    for (const uint32_t hint : header.PixInfoHints)
        Append(bytes, hint);
    for (const uint32_t color : header.BackgroundFillColor)
        Append(bytes, color);
    Append(bytes, header.ComponentOrder);
    Append(bytes, header.PyramidUsage);
    Append(bytes, std::span<const uint8_t>(header.ProfileID));
    return bytes;
}

void AppendRecord(ByteString& bytes, uint32_t elementCount, std::span<const int32_t> elements, uint64_t offset,
                  uint32_t size, uint32_t spare)
{
    Append(bytes, elementCount);
    for (const int32_t element : elements)
        Append(bytes, element);
    Append(bytes, offset);
    Append(bytes, size);
    Append(bytes, spare);
}

CStoredTile& CTileStore::Add(int32_t column, int32_t row, const std::vector<int32_t>& indexes, int32_t level,
                             ByteString body)
{
    CStoredTile& tile = Tiles.emplace_back();
    tile.Elements = {column, row};
    tile.Elements.insert(tile.Elements.end(), indexes.begin(), indexes.end());
    tile.Elements.push_back(level);
    tile.Body = std::move(body);
    return tile;
}

CStoredTile& CTileStore::Tile(const std::vector<int32_t>& elements)
{
    const auto found =
        std::find_if(Tiles.begin(), Tiles.end(), [&](const CStoredTile& tile) { return tile.Elements == elements; });
    if (found != Tiles.end())
        return *found;
    std::string text;
    for (const int32_t element : elements)
        text += (text.empty() ? "" : ", ") + std::to_string(element);
    throw CSampleError("tile store: there is no tile with the elements {" + text + "}");
}

ByteString CTileStore::ToBytes() const
{
    size_t sizeOfBodies = 0;
    size_t sizeOfChunkList = 0;
    for (const CStoredTile& tile : Tiles)
    {
        sizeOfBodies += tile.Body.size();
        sizeOfChunkList += 20 + 4 * tile.Elements.size();
    }
    const uint64_t behindHeaders = SizeOfStoreVolumeHeader + SizeOfStoreAdditionalHeader;
    const uint64_t firstBody = behindHeaders + (ChunkListBeforeBodies ? sizeOfChunkList : 0);
    const uint64_t chunkList = ChunkListBeforeBodies ? behindHeaders : behindHeaders + sizeOfBodies;

    ByteString records, bodies;
    for (const CStoredTile& tile : Tiles)
    {
        AppendRecord(records, tile.ElementCount.value_or(static_cast<uint32_t>(tile.Elements.size())), tile.Elements,
                     tile.Offset.value_or(firstBody + bodies.size()),
                     tile.Size.value_or(static_cast<uint32_t>(tile.Body.size())), tile.Spare);
        Append(bodies, std::span<const uint8_t>(tile.Body));
    }
    ByteString bytes = BytesOf(Header, Tiles.empty() ? 0 : Tiles.front().Elements.size(), chunkList, Tiles.size());
    Append(bytes, std::span<const uint8_t>(BytesOf(Additional)));
    Append(bytes, std::span<const uint8_t>(ChunkListBeforeBodies ? records : bodies));
    Append(bytes, std::span<const uint8_t>(ChunkListBeforeBodies ? bodies : records));
    Append(bytes, std::span<const uint8_t>(Tail));
    return bytes;
}

void CTileStore::WriteTo(const std::filesystem::path& path) const
{
    WriteFile(path, ToBytes());
}

} // namespace SampleDocuments
