#pragma once

#include "HostTool/Reader/ReaderDocument.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace HostTool
{

enum class FileRole
{
    Document,  ///< the file that was named
    TileStore, ///< the pixels of a stack
    Other      ///< lies in the document's folder, and nothing refers to it
};

struct CDocumentFile
{
    std::filesystem::path Path; ///< of a missing store: one of the names that it may have
    FileRole Role = FileRole::Other;
    std::optional<uint32_t> StackID; ///< of a tile store
    std::optional<uint64_t> Size;    ///< in bytes; nothing: the file is missing
};

/// The files that a document is made of, itself first, then the stores in the order of the stacks, then all else in its
/// folder by name. Stores that are missing are among them. Throws CHostError if the document can't be read.
std::vector<CDocumentFile> FilesOf(const CReaderDocument& document);

/// "document", "tile store of stack 1", "other"
std::string NameOf(const CDocumentFile& file);

} // namespace HostTool
