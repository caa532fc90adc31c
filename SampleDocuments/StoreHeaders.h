#pragma once

#include "SampleDocuments/TileStore.h"

namespace SampleDocuments
{

constexpr uint64_t SizeOfStoreVolumeHeader = 64;
constexpr uint64_t SizeOfStoreAdditionalHeader = 172;

/// The 64 bytes of a volume header; what it leaves open is taken from the other parameters.
ByteString BytesOf(const CStoreVolumeHeader& header, size_t numOfElements, uint64_t chunkList, size_t numOfChunks);

/// The 172 bytes of an additional header.
ByteString BytesOf(const CStoreAdditionalHeader& header);

/// Appends a record of the chunk list.
void AppendRecord(ByteString& bytes, uint32_t elementCount, std::span<const int32_t> elements, uint64_t offset,
                  uint32_t size, uint32_t spare);

} // namespace SampleDocuments
