#pragma once

#include "HostTool/CommandLine.h"

#include <filesystem>
#include <string>

namespace HostTool
{

struct CTileRequest
{
    int Group = 0;
    int Level = 0;
    uint64_t Col = 0;
    uint64_t Row = 0;
    CPosition Position;
    std::filesystem::path Output;
    bool IsDecoded = false;
};

/// `zel tile`: writes one tile to a file, as it is stored or decoded, and answers a line that says what was written.
/// Throws CHostError if there is no such tile, or it can't be read or written.
std::string WriteTileCommand(const CDocument& document, const CTileRequest& request);

void AddTileCommand(CCommandLine& line);

} // namespace HostTool
