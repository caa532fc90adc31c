#pragma once

#include "HostTool/CommandLine.h"
#include "HostTool/Pixels/Stitch.h"

namespace HostTool
{

struct CRegionRequest
{
    int Group = 0;
    int Level = 0;
    std::optional<CPixelRect> Rect;    ///< from the picture's left top corner; all of it if not set
    std::vector<uint32_t> Channels;    ///< one by one at full depth; empty: all of them, blended
    bool IsStrict = false;             ///< a picture that lacks anything of the document is a failure, and not kept
    bool IsBlended = false;            ///< the channels above are blended as well
    CPosition Position;                ///< but for the channel
    std::optional<CColour> Background; ///< of what has no tile; nothing: the one that fits, see BackgroundOf
    std::optional<ValueKind> Values;
    unsigned Jobs = 1;
    std::filesystem::path Output;
};

struct CRegionOutcome
{
    std::string Line;                 ///< what was written
    std::vector<std::string> Remarks; ///< what is not in the picture and why
    ExitCode Code = ExitCode::Done;   ///< BadFile if there were tiles that can't be decoded
};

/// `zel region`: writes a rectangle of a level to a picture file.
/// Throws CHostError if there is no such place, or the picture can't be written.
CRegionOutcome WriteRegion(const CDocument& document, const CRegionRequest& request);

void AddRegionCommand(CCommandLine& line);

} // namespace HostTool
