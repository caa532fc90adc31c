#pragma once

#include "SampleDocuments/Stack.h"
#include "SampleDocuments/TiffDirectory.h"

namespace SampleDocuments
{

/// The node of a stack (tag 2001) with its properties, dimensions and frames. `firstDirectory` is the number of the
/// TIFF directory that the first frame refers to, if the stack lies in the document.
CNode TreeOf(const Stack& stack, uint32_t firstDirectory);

/// The properties of a stack (tag 2005).
CNode StackPropertiesNodeOf(const CStackPlan& plan);

/// The entry of a channel in a channel dimension (tag 2008).
CNode ChannelNodeOf(const CStackPlan& plan, const CStackDimension& dimension, uint32_t number);

/// The TIFF directories of a stack: one to a frame if it lies in the document, one to a level and frame in a TIFF store
/// (the XML in the first), else none.
std::vector<CTiffDirectory> DirectoriesOf(const Stack& stack);

/// The XML that tells which directory of a TIFF store is which: an image to a level, in it a plane to each sample of
/// each frame.
std::string XmlOf(const Stack& stack);

/// The frames of a TIFF file with the tiles or strips of each, in the order in which they are written.
void ForEachDirectory(const Stack& stack, const std::function<void(uint32_t level, const CIndexes& at)>& visit);

/// The header of a stack's store, with the stack's tile size in it.
CStoreAdditionalHeader AdditionalHeaderOf(const Stack& stack);

/// The store of a stack, in memory.
CTileStore StoreOf(const Stack& stack);

/// Writes the store of a stack tile by tile.
void StreamStore(const Stack& stack, const std::filesystem::path& path);

} // namespace SampleDocuments
