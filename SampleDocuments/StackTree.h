#pragma once

#include "SampleDocuments/Stack.h"
#include "SampleDocuments/TiffDirectory.h"

namespace SampleDocuments
{

/// The node of a stack (tag 2001) with its properties, dimensions and frames. `firstDirectory` is the number of the
/// TIFF directory that the first frame refers to, if the stack lies in the document.
CNode TreeOf(const Stack& stack, uint32_t firstDirectory);

/// The TIFF directories of a stack that lies in the document, one to a frame; else none.
std::vector<CTiffDirectory> DirectoriesOf(const Stack& stack);

/// The header of a stack's store, with the stack's tile size in it.
CStoreAdditionalHeader AdditionalHeaderOf(const Stack& stack);

/// The store of a stack, in memory.
CTileStore StoreOf(const Stack& stack);

/// Writes the store of a stack tile by tile.
void StreamStore(const Stack& stack, const std::filesystem::path& path);

} // namespace SampleDocuments
