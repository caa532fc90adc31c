#pragma once

#include "SampleDocuments/Stack.h"

namespace SampleDocuments
{

/// True for stacks whose TIFF directories are written by libtiff, which can write BigTIFF and encode JPEG with tables
/// that stand apart; all others are written by hand (CTiffDirectory).
bool IsWrittenByLibTiff(const Stack& stack);

/// Writes the TIFF store of a stack with libtiff. Throws CSampleError, and leaves no file behind, if it refuses.
void WriteTiffStore(const Stack& stack, const std::filesystem::path& path);

/// Appends the directories of a stack to a document that is there, behind those that it has. Throws CSampleError if
/// libtiff refuses; the file is no document any more then.
void AppendToDocument(const Stack& stack, const std::filesystem::path& document);

} // namespace SampleDocuments
