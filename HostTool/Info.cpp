#include "HostTool/HostError.h"
#include "HostTool/InfoJson.h"
#include "HostTool/Reader/BuiltInPlugin.h"
#include "HostTool/Reader/SoundStacks.h"
#include "HostTool/Reader/TileIndex.h"

#include <algorithm>

namespace HostTool
{

namespace
{

uint64_t NumOfPlanes(const CGroupFacts& group)
{
    uint64_t planes = group.Channels.size();
    for (const CAxisFacts& axis : group.Axes)
        planes *= static_cast<uint64_t>(axis.NumOfPositions);
    return planes;
}

std::map<int, CStoredCount> CountsOf(const CGroupFacts& group, const CGroupIndex& index)
{
    std::map<int, CStoredCount> counts;
    for (const CTileRecord& record : index.Records())
        ++counts[static_cast<int>(record.Level)].NumOfStored;
    for (const CLevelFacts& level : group.Levels)
    {
        CStoredCount& count = counts[level.Level];
        const uint64_t places = level.Grid.Cols * level.Grid.Rows * NumOfPlanes(group);
        count.NumOfAbsent = places - std::min(places, count.NumOfStored);
    }
    return counts;
}

std::string CodeOf(ExitCode code)
{
    switch (code)
    {
    case ExitCode::MissingFile:
        return "missing-file";
    case ExitCode::WrongUsage:
        return "no-document";
    default:
        return "damaged";
    }
}

/// Runs work, whose failure becomes a remark.
template <typename Work>
void Try(CInfo& info, const Work& work)
try
{
    work();
}
catch (const CHostError& error)
{
    const auto isSame = [&](const CDiagnostic& remark) { return remark.Text == error.what(); };
    if (std::none_of(info.Remarks.begin(), info.Remarks.end(), isSame))
        info.Remarks.push_back({"error", CodeOf(error.Code()), error.what()});
}

void AddWhatTheLibraryKnows(CInfo& info)
{
    const CReaderDocument document(info.Path);
    info.Files = FilesOf(document);
    for (const CDocumentFile& file : *info.Files)
        if (!file.Size)
            info.Remarks.push_back({"error", "missing-file", file.Path.string() + ": is missing"});
    if (!info.Facts)
        return;
    const std::vector<CGroupIndex> index = TileIndexOf(document);
    for (const CGroupFacts& group : info.Facts->Groups)
        if (const auto number = static_cast<size_t>(group.Number); number < index.size())
            info.Counts.push_back(CountsOf(group, index[number]));
}

} // namespace

CInfo InfoOf(const std::filesystem::path& plugin, const std::filesystem::path& file)
{
    CInfo info;
    info.Path = std::filesystem::absolute(file);
    const CPluginHost host = HostOf(plugin);
    Try(info,
        [&]
        {
            const CDocument document = OpenWhatThereIs(host, file);
            info.Facts = FactsOf(document);
            info.Missing = document.MissingGroups();
        });
    Try(info, [&] { AddWhatTheLibraryKnows(info); });
    return info;
}

} // namespace HostTool
