#include "HostTool/Diff/DiffReport.h"

#include "HostTool/StandardOutput.h"
#include "HostTool/Text.h"

namespace HostTool
{

namespace
{

constexpr uint64_t MostLinesOfAKind = 50;
constexpr std::array<const char*, 3> NamesOfKinds = {"property", "region", "tile"};
constexpr std::array<const char*, 3> PluralsOfKinds = {"properties", "regions", "tiles"};

std::string TextOfCount(uint64_t count, size_t kind)
{
    return std::to_string(count) + " " + (count == 1 ? NamesOfKinds[kind] : PluralsOfKinds[kind]);
}

} // namespace

void CDiffReport::Print(const std::string& line, uint64_t number) const
{
    if (_IsEachListed || number <= MostLinesOfAKind)
        Say(line);
}

void CDiffReport::Add(DiffKind kind, const std::string& line)
{
    const auto i = static_cast<size_t>(kind);
    Print(std::string(NamesOfKinds[i]) + ": " + line, ++_Kinds[i].NumOfDifferences);
}

void CDiffReport::AddFailures(const std::string& line, uint64_t count)
{
    _NumOfFailures += count;
    Print("unreadable: " + line, ++_NumOfFailureLines);
}

void CDiffReport::Finish(DiffKind kind) const
{
    const auto i = static_cast<size_t>(kind);
    const uint64_t count = _Kinds[i].NumOfDifferences;
    if (!_IsEachListed && count > MostLinesOfAKind)
        Say("and " + std::to_string(count - MostLinesOfAKind) + " more " + PluralsOfKinds[i] +
            "; --list shows all of them");
}

void CDiffReport::Conclude() const
{
    std::string compared;
    std::string differing;
    for (size_t i = 0; i < _Kinds.size(); ++i)
    {
        compared += (i == 0 ? "" : ", ") + TextOfCount(_Kinds[i].NumOfCompared, i);
        if (_Kinds[i].NumOfDifferences > 0)
            differing += (differing.empty() ? "" : ", ") + TextOfCount(_Kinds[i].NumOfDifferences, i);
    }
    Say("compared: " + compared);
    if (_NumOfFailures > 0)
        throw CHostError(ExitCode::BadFile, _B.string() + ": cannot be compared with " + _A.string() + " as a whole: " +
                                                TextOfCount(_NumOfFailures, static_cast<size_t>(DiffKind::Tile)) +
                                                " cannot be read; 'zel verify' tells what is wrong with each document");
    if (!differing.empty())
        throw CHostError(ExitCode::NotEqual,
                         _B.string() + ": differs from " + _A.string() + ": " + differing + "; the output tells them");
    Say("no difference");
}

} // namespace HostTool
