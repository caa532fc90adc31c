#pragma once

#include "HostTool/Pixels/Stitch.h"

namespace CLI
{
class App;
}

namespace HostTool
{

/// More threads or documents at once make nothing faster.
constexpr unsigned MostJobs = 256;

/// Options of all commands that read many tiles.
struct CCommonOptions
{
    unsigned Jobs = 0; ///< set by AddTo
    /// The threads for one of the documents that are read at once; at least 1.
    unsigned JobsOfOne() const;
    std::string ValuesText;

    /// What the user says of raw values; nothing if he doesn't.
    std::optional<ValueKind> Values() const;
    void AddTo(CLI::App& command);
};

void AddGroupOption(CLI::App& command, int& group);
void AddPositionOptions(CLI::App& command, CPosition& position);

/// What becomes of an output that is there already.
void AddOutputOptions(CLI::App& command);

/// A flag that makes whatever `what` says a failure.
void AddStrictOption(CLI::App& command, bool& isStrict, const std::string& what);

/// The colour is checked, but left as text.
void AddBackgroundOption(CLI::App& command, std::string& colour);

/// "#FFA000", "FFA000", "white" or "black"; nothing for any other text.
std::optional<CColour> ParseColour(const std::string& text);

/// X, Y, width and height that were given as --rect. Throws CHostError if they are out of range, or no rectangle.
CPixelRect ParseRect(const std::vector<int64_t>& numbers);

/// Throws CHostError if there is no such group.
void RequireGroup(const CDocument& document, int group);

} // namespace HostTool
