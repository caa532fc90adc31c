#include "HostTool/Verify/VerifyReport.h"

#include "HostTool/Table.h"
#include "HostTool/Text.h"

#include <algorithm>
#include <cmath>

namespace HostTool
{

namespace
{

constexpr uint64_t MostColsOfMap = 64;
constexpr uint64_t MostRowsOfMap = 24;

/// How many tiles of a place of the map got each verdict.
using Counts = std::array<uint64_t, NumOfVerdicts>;

uint64_t CountOf(const Counts& counts, Verdict verdict)
{
    return counts[static_cast<size_t>(verdict)];
}

char SignOf(const Counts& counts)
{
    for (size_t i = 0; i < counts.size(); ++i)
        if (counts[i] > 0 && IsBad(static_cast<Verdict>(i)))
            return 'X';
    if (CountOf(counts, Verdict::NotServed) > 0)
        return '?';
    if (CountOf(counts, Verdict::Stored) == 0)
        return '.';
    return CountOf(counts, Verdict::Absent) == 0 ? '#' : '+';
}

Counts CountsOf(const CCheckedLevel& level)
{
    Counts counts{};
    for (const Verdict verdict : level.Verdicts)
        ++counts[static_cast<size_t>(verdict)];
    return counts;
}

std::string TextOfCounts(const Counts& counts)
{
    std::string text = std::to_string(CountOf(counts, Verdict::Stored)) + " stored";
    for (size_t i = 1; i < counts.size(); ++i)
        if (counts[i] > 0)
            text += ", " + std::to_string(counts[i]) + " " + NameOf(static_cast<Verdict>(i));
    return text;
}

void PrintTiles(std::ostream& out, const CCheckedLevel& level)
{
    for (size_t frame = 0; frame < level.Frames.size(); ++frame)
        for (uint64_t area = 0; area < level.NumOfAreas(); ++area)
        {
            const size_t place = frame * level.NumOfAreas() + area;
            out << "    column " << area % level.Grid.Cols << ", row " << area / level.Grid.Cols << ", "
                << TextOf(level.Frames[frame]) << ": " << NameOf(level.Verdicts[place]);
            if (level.Sizes[place] > 0)
                out << ", " << level.Sizes[place] << " bytes";
            out << '\n';
        }
}

void PrintGroup(std::ostream& out, const CCheckedGroup& group, bool isEachTileListed)
{
    out << "\ngroup " << group.Number << ", name " << Printable(group.Name) << '\n';
    for (const std::string& limit : group.Limits)
        out << "  note: " << limit << '\n';
    for (const CCheckedLevel& level : group.Levels)
    {
        out << "  level " << level.Level << ": " << level.Grid.Cols << " x " << level.Grid.Rows;
        if (level.Frames.size() > 1)
            out << " x " << level.Frames.size() << " planes";
        out << ", " << TextOfCounts(CountsOf(level)) << '\n';
        for (const std::string& row : MapOf(level, MostColsOfMap, MostRowsOfMap))
            out << "    " << row << '\n';
        if (isEachTileListed)
            PrintTiles(out, level);
    }
}

std::string TextOfRate(const CCheckedDocument& checked)
{
    constexpr double bytesOfMegabyte = 1e6;
    const double megabytes = static_cast<double>(checked.NumOfBytes()) / bytesOfMegabyte;
    std::string text =
        TextOf(std::round(megabytes * 10) / 10) + " MB in " + TextOf(std::round(checked.Seconds * 1000) / 1000) + " s";
    if (checked.Seconds > 0)
        text += ", " + TextOf(std::round(megabytes / checked.Seconds)) + " MB/s";
    return text;
}

} // namespace

std::vector<std::string> MapOf(const CCheckedLevel& level, uint64_t mostCols, uint64_t mostRows)
{
    const CGrid& grid = level.Grid;
    if (level.NumOfAreas() == 0)
        return {};
    const uint64_t step = std::max((grid.Cols + mostCols - 1) / mostCols, (grid.Rows + mostRows - 1) / mostRows);
    const uint64_t cols = (grid.Cols + step - 1) / step;
    const uint64_t rows = (grid.Rows + step - 1) / step;
    std::vector<Counts> places(cols * rows);
    for (size_t i = 0; i < level.Verdicts.size(); ++i)
    {
        const uint64_t area = i % level.NumOfAreas();
        const uint64_t place = area / grid.Cols / step * cols + area % grid.Cols / step;
        ++places[place][static_cast<size_t>(level.Verdicts[i])];
    }
    std::vector<std::string> map(rows);
    for (size_t i = 0; i < places.size(); ++i)
        map[i / cols] += SignOf(places[i]);
    return map;
}

void PrintReport(std::ostream& out, const CCheckedDocument& checked, bool isEachTileListed)
{
    out << Printable(checked.Path.string()) << '\n';
    for (const CCheckedGroup& group : checked.Groups)
        PrintGroup(out, group, isEachTileListed);
    for (const CHostError& missing : checked.Missing)
        out << "\nerror: " << Printable(missing.what()) << '\n';
    out << "\nmap: # stored, + stored in some planes, . absent, ? not served, X bad\n";
    if (!checked.Failures.empty())
        out << "\nbad tiles\n";
    for (const std::string& failure : checked.Failures)
        out << "  " << Printable(failure) << '\n';
    const uint64_t numOfBad = checked.NumOfBadTiles();
    if (numOfBad > checked.Failures.size())
        out << "  and " << numOfBad - checked.Failures.size() << " more; --list shows all\n";
    out << "\nsummary: " << TextOfCounts(checked.Counts()) << "; " << TextOfRate(checked) << '\n';
}

} // namespace HostTool
