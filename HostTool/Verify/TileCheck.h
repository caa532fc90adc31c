#pragma once

#include "HostTool/Pixels/GroupPixels.h"
#include "HostTool/Reader/TileIndex.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace HostTool
{

/// What is to be said of one position of a level.
enum class Verdict : uint8_t
{
    Stored,      ///< there is a tile, and it could be read (and decoded, if that was asked for)
    Absent,      ///< nothing is stored there, which a document may do
    NotServed,   ///< there is a tile that the plug-in's interface does not hand out
    OutOfFile,   ///< its bytes reach beyond the end of their file
    Short,       ///< it has fewer bytes than its pixels take, or a JPEG or JPEG 2000 stream without its end
    Unreadable,  ///< it could not be read for another reason
    Undecodable, ///< its bytes do not begin as their coding does, or are no picture of the right kind and size
};
constexpr size_t NumOfVerdicts = 7;

/// "stored", "absent", "not served", ...
const std::string& NameOf(Verdict verdict);
inline bool IsBad(Verdict verdict)
{
    return verdict >= Verdict::OutOfFile;
}

/// The tiles of a level in all frames. Those of frame f begin at f * NumOfAreas(), and stand in the order of areas.
struct CCheckedLevel
{
    int Level = 0;
    CGrid Grid;
    std::vector<CPosition> Frames;
    std::vector<Verdict> Verdicts;
    std::vector<uint64_t> Sizes;  ///< in bytes; 0 where nothing was read
    std::vector<uint64_t> Hashes; ///< 0 where nothing was read; empty if none were asked for

    uint64_t NumOfAreas() const { return Grid.Cols * Grid.Rows; }
};

struct CCheckedGroup
{
    int Number = 0;
    std::string Name;
    std::vector<std::string> Limits; ///< what the plug-in's interface can't hand out, for people
    std::vector<CCheckedLevel> Levels;
};

struct CCheckedDocument
{
    std::filesystem::path Path;
    std::vector<CCheckedGroup> Groups;
    std::vector<CHostError> Missing;   ///< what is to be said of groups that can't be read
    std::vector<std::string> Failures; ///< a line for each bad tile of the first ones: where, and why
    double Seconds = 0;

    /// How many tiles got each verdict.
    std::array<uint64_t, NumOfVerdicts> Counts() const;
    uint64_t NumOfBytes() const;
    uint64_t NumOfBadTiles() const;
};

struct CCheckOptions
{
    bool IsDecoding = false;
    bool IsHashing = false;
    unsigned Jobs = 1;
    std::optional<ValueKind> Values;
};

/// Reads every tile of every group, through the plug-in's exported functions, with a document for each of the jobs:
/// calls on one document wait for each other. A tile that fails says nothing about its neighbours. Throws CHostError if
/// the document can't be opened.
CCheckedDocument CheckTiles(const CPluginHost& host, const std::filesystem::path& path, const CCheckOptions& options);

} // namespace HostTool
