#pragma once

#include "HostTool/CommandLine.h"
#include "HostTool/Export/ExportSelection.h"
#include "HostTool/Export/Recompression.h"
#include "HostTool/Pixels/Stitch.h"

namespace HostTool
{

struct CExportRequest
{
    std::optional<int> Group; ///< all of them if not set
    CExportSelection Selection;
    bool IsFlat = false; ///< levels in a row, with a description that OpenSlide reads
    bool HasThumbnail = false;
    bool HasOverview = false;
    bool IsStripped = false; ///< without what may tell a person, a case or a laboratory
    std::optional<CRecompression>
        Recompression;                 ///< of all tiles; otherwise of those that can't be copied, without loss
    std::optional<CColour> Background; ///< of what has no tile; nothing: the one that fits, see BackgroundOf
    std::optional<ValueKind> Values;
    unsigned Jobs = 1;
    bool IsProved = false;
    bool IsStrict = false;  ///< a file that lacks anything of the document is a failure, and not kept
    bool IsBigTiff = false; ///< in any case; otherwise if the file is too large for anything else
    std::filesystem::path Output;
};

struct CExportOutcome
{
    std::vector<std::string> Lines;   ///< what was written
    std::vector<std::string> Remarks; ///< what is not in the file, or not as it was, and why
    ExitCode Code = ExitCode::Done;   ///< BadFile if there were tiles that can't be read
};

/// `zel export`: writes groups into an OME-TIFF file. Throws CHostError.
CExportOutcome Export(const CDocument& document, const CExportRequest& request);

void AddExportCommand(CCommandLine& line);

} // namespace HostTool
