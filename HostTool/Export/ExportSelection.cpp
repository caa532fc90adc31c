#include "HostTool/Export/ExportSelection.h"

#include "HostTool/HostError.h"
#include "HostTool/Pixels/CommonOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>

namespace HostTool
{

namespace
{

/// What of an axis is selected: the last position is one that there is.
CRange RequireOnAxis(const CGroupPixels& pixels, const CRange& range, int64_t numOfPositions, const std::string& name)
{
    const int64_t last = range.Last == CRange().Last ? numOfPositions - 1 : range.Last;
    if (range.First >= numOfPositions || last >= numOfPositions)
        throw CHostError(ExitCode::WrongUsage, pixels.Document().Path().string() + ": " + NameOfGroup(pixels.Group()) +
                                                   " has " + std::to_string(numOfPositions) + " positions on " + name +
                                                   ", counted from 0; choose among them");
    return {range.First, last};
}

void AddRangeOption(CLI::App& command, const char* name, std::string& text, const char* what)
{
    const auto check = [](const std::string& given)
    {
        return given.empty() || ParseRange(given)
                   ? std::string()
                   : "'" + given + "' is neither a number nor a range; give 3, 2-5 or 2-";
    };
    command.add_option(name, text, what)->check(CLI::Validator(check, "RANGE"));
}

} // namespace

std::optional<CRange> ParseRange(const std::string& text)
{
    CRange range;
    const char* end = text.data() + text.size();
    const auto [afterFirst, errorOfFirst] = std::from_chars(text.data(), end, range.First);
    if (errorOfFirst != std::errc() || range.First < 0)
        return std::nullopt;
    if (afterFirst == end)
        return CRange{range.First, range.First};
    if (*afterFirst != '-')
        return std::nullopt;
    if (afterFirst + 1 == end)
        return range;
    const auto [afterLast, errorOfLast] = std::from_chars(afterFirst + 1, end, range.Last);
    const bool isRange = errorOfLast == std::errc() && afterLast == end && range.Last >= range.First;
    return isRange ? std::optional(range) : std::nullopt;
}

CPlaneSelection::CPlaneSelection(const CGroupPixels& pixels, const CExportSelection& selection)
    : _Channels(selection.Channels), _Sizes(pixels.Axes())
{
    const CRange z = RequireOnAxis(pixels, selection.Z, _Sizes.Z, "z");
    const CRange t = RequireOnAxis(pixels, selection.T, _Sizes.T, "t");
    _FirstZ = z.First;
    _FirstT = t.First;
    _Sizes.Z = z.Last - z.First + 1;
    _Sizes.T = t.Last - t.First + 1;
    for (size_t i = 0; i < _Channels.size(); ++i)
    {
        pixels.Channel(_Channels[i]); // throws if there is none
        if (std::find(_Channels.begin(), _Channels.begin() + static_cast<ptrdiff_t>(i), _Channels[i]) !=
            _Channels.begin() + static_cast<ptrdiff_t>(i))
            throw CHostError(ExitCode::WrongUsage,
                             "-c: channel " + std::to_string(_Channels[i]) + " is given twice; give it once");
    }
    if (_Channels.empty())
        for (const CChannelPixels& channel : pixels.Channels())
            _Channels.push_back(channel.ID);
}

std::vector<CPosition> CPlaneSelection::Planes() const
{
    std::vector<CPosition> planes;
    for (int64_t t = 0; t < _Sizes.T; ++t)
        for (int64_t z = 0; z < _Sizes.Z; ++z)
            for (const uint32_t channel : _Channels)
                for (int64_t lambda = 0; lambda < _Sizes.Lambda; ++lambda)
                    planes.push_back({channel, _FirstZ + z, _FirstT + t, lambda});
    return planes;
}

uint64_t CPlaneSelection::ChannelIndex(const CPosition& plane) const
{
    const auto channel = std::find(_Channels.begin(), _Channels.end(), plane.Channel);
    return static_cast<uint64_t>((channel - _Channels.begin()) * _Sizes.Lambda + plane.Lambda);
}

void CSelectionOptions::AddTo(CLI::App& command)
{
    command
        .add_option("--rect", Rect,
                    "X,Y,WIDTH,HEIGHT in pixels of level 0, from the picture's left top corner; what lies beside the "
                    "picture is cut off. Default: all of it")
        ->delimiter(',')
        ->expected(4);
    command.add_flag("--whole-tiles", IsBegunWithWholeTile,
                     "begin the rectangle with a whole tile, left of and above where it would begin, so that stored "
                     "bytes can be copied");
    AddRangeOption(command, "-l,--levels", Levels, "levels: 3, 2-5 or 2-; 0 is the finest. Default: all");
    command
        .add_option("-c,--channel", Channels,
                    "channel; may be given several times, in the order that they shall have. Default: all")
        ->allow_extra_args(false);
    AddRangeOption(command, "-z", Z, "positions on the Z axis, from 0: 3, 2-5 or 2-. Default: all");
    AddRangeOption(command, "-t", T, "positions on the time axis, from 0: 3, 2-5 or 2-. Default: all");
}

CExportSelection CSelectionOptions::Selection() const
{
    CExportSelection selection;
    if (!Rect.empty())
        selection.Rect = ParseRect(Rect);
    selection.IsBegunWithWholeTile = IsBegunWithWholeTile;
    selection.Levels = ParseRange(Levels).value_or(CRange());
    selection.Channels = Channels;
    selection.Z = ParseRange(Z).value_or(CRange());
    selection.T = ParseRange(T).value_or(CRange());
    return selection;
}

} // namespace HostTool
