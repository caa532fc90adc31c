#include "HostTool/Verify/VerifyCommand.h"

#include "HostTool/OutputPlace.h"
#include "HostTool/OutputRules.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Reader/BuiltInPlugin.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/Text.h"
#include "HostTool/Verify/TileHashes.h"
#include "HostTool/Verify/VerifyReport.h"

#include <CLI/CLI.hpp>

namespace HostTool
{

namespace
{

struct CVerifyRequest
{
    CCommonOptions Common;
    bool IsDecoding = false;
    bool IsEachTileListed = false;
    bool IsStrict = false;
    COutputPlace Hashes;
    std::filesystem::path Against;
};

/// Whether the document is the one that the hashes were written of; prints what differs.
bool IsAsBefore(const CCheckedDocument& checked, const std::filesystem::path& hashes)
{
    const std::vector<std::string> differences = DifferencesTo(checked, hashes);
    Say((differences.empty() ? "the same as in " : "differs from ") + hashes.string());
    for (const std::string& difference : differences)
        Say("  " + difference);
    return differences.empty();
}

/// The hashes to compare a document with: the file that was given, or the one in a folder that the document's name
/// tells.
std::filesystem::path AgainstFor(const std::filesystem::path& file, const CVerifyRequest& request)
{
    std::error_code ignored;
    return std::filesystem::is_directory(request.Against, ignored) ? request.Against / request.Hashes.NameFor(file)
                                                                   : request.Against;
}

/// The file for the hashes, which is made first: nobody wants to hear after an hour that it can't be. Nothing if none
/// is wanted, or one that is there is to stay.
std::unique_ptr<COutputFile> FileForHashes(const std::filesystem::path& file, const CVerifyRequest& request)
{
    if (!request.Hashes.IsGiven())
        return nullptr;
    OutputRules::ProtectFile(AgainstFor(file, request));
    try
    {
        return std::make_unique<COutputFile>(request.Hashes.For(file));
    }
    catch (const COutputSkipped& skipped)
    {
        Say(skipped.what());
        return nullptr;
    }
}

ExitCode Verify(const std::filesystem::path& plugin, const std::filesystem::path& file, const CVerifyRequest& request)
{
    CCheckOptions options;
    options.IsDecoding = request.IsDecoding;
    options.IsHashing = request.Hashes.IsGiven() || !request.Against.empty();
    options.Jobs = request.Common.JobsOfOne();
    options.Values = request.Common.Values();
    const CPluginHost host = HostOf(plugin);
    const std::unique_ptr<COutputFile> hashes = FileForHashes(file, request);
    const std::filesystem::path against = AgainstFor(file, request);
    const CCheckedDocument checked = CheckTiles(host, file, options);
    PrintReport(WhereItIsSaid(), checked, request.IsEachTileListed);
    if (options.IsHashing)
        Say("hash: " + HashOf(checked));
    if (hashes)
    {
        WriteHashes(checked, *hashes);
        Say("hashes written to " + request.Hashes.For(file).string());
    }
    const bool isAsBefore = against.empty() || IsAsBefore(checked, against);
    if (const uint64_t numOfBad = checked.NumOfBadTiles())
        throw CHostError(ExitCode::BadFile, checked.Path.string() + ": " + TextOfCount(numOfBad, "bad tile") +
                                                "; 'zel tiles' tells where tiles lie");
    if (!checked.Missing.empty())
        throw checked.Missing.front();
    const uint64_t notServed = checked.Counts()[static_cast<size_t>(Verdict::NotServed)];
    if (request.IsStrict && notServed > 0)
        throw CHostError(ExitCode::BadFile, checked.Path.string() + ": --strict: " + TextOfCount(notServed, "tile") +
                                                " not served; the output tells why");
    if (!isAsBefore)
        throw CHostError(ExitCode::NotEqual, checked.Path.string() + ": is not as it was when " + against.string() +
                                                 " was written; the output tells what differs");
    return ExitCode::Done;
}

} // namespace

void AddVerifyCommand(CCommandLine& line)
{
    const auto request = std::make_shared<CVerifyRequest>();
    CLI::App& command = line.AddFileCommand(
        {"verify",
         "Reads every tile of every group and tells what is stored, absent, out of its file, short or undecodable.",
         "  zel verify slide.zel --decode\n"
         "  zel verify slide.zel --hashes slide.json && zel verify copy.zel --against slide.json"},
        [request](const std::filesystem::path& plugin, const std::filesystem::path& file)
        { return Verify(plugin, file, *request); });
    command.add_flag("--decode", request->IsDecoding, "decode every tile as well");
    command.add_flag("--list", request->IsEachTileListed, "print a line for each tile");
    request->Hashes.AddTo(command, "--hashes",
                          "write the hashes of tiles, levels and document as JSON; - for standard output",
                          "{stem}.json");
    command.add_option("--against", request->Against,
                       "compare with hashes that were written before, a file, or a folder that --out-dir made");
    AddStrictOption(command, request->IsStrict, "is not served");
    request->Common.AddTo(command);
    AddOutputOptions(command);
    line.TakeSeveral(command, [request](const auto& files) { request->Hashes.Prepare(files); });
}

} // namespace HostTool
