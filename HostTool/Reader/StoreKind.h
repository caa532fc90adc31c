#pragma once

#include <filesystem>

namespace HostTool
{

/// Where a group keeps its pixels.
enum class StoreKind
{
    BinaryStore,
    TiffTiles,  ///< of a TIFF store
    TiffStrips, ///< of a TIFF store
    Document    ///< directories of the document
};

/// That of a group, by its number. Opens the document once more. Throws CHostError.
StoreKind StoreKindOf(const std::filesystem::path& document, int group);

} // namespace HostTool
