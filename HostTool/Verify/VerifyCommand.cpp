#include "HostTool/Verify/VerifyCommand.h"

#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Text.h"
#include "HostTool/Verify/TileHashes.h"
#include "HostTool/Verify/VerifyReport.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace HostTool
{

namespace
{

struct CVerifyRequest
{
    CCommonOptions Common;
    bool IsDecoding = false;
    bool IsEachTileListed = false;
    std::filesystem::path Hashes;
    std::filesystem::path Against;
};

/// Whether the document is the one that the hashes were written of; prints what differs.
bool IsAsBefore(const CCheckedDocument& checked, const std::filesystem::path& hashes)
{
    const std::vector<std::string> differences = DifferencesTo(checked, hashes);
    std::cout << (differences.empty() ? "the same as in " : "differs from ") << Printable(hashes.string()) << '\n';
    for (const std::string& difference : differences)
        std::cout << "  " << Printable(difference) << '\n';
    return differences.empty();
}

ExitCode Verify(const std::filesystem::path& plugin, const std::filesystem::path& file, const CVerifyRequest& request)
{
    CCheckOptions options;
    options.IsDecoding = request.IsDecoding;
    options.IsHashing = !request.Hashes.empty() || !request.Against.empty();
    options.Jobs = request.Common.Jobs;
    options.Values = request.Common.Values();
    const CPluginHost host(plugin);
    const CCheckedDocument checked = CheckTiles(host, file, options);
    PrintReport(std::cout, checked, request.IsEachTileListed);
    if (options.IsHashing)
        std::cout << "hash: " << HashOf(checked) << '\n';
    if (!request.Hashes.empty())
    {
        WriteHashes(checked, request.Hashes);
        std::cout << "hashes written to " << Printable(request.Hashes.string()) << '\n';
    }
    const bool isAsBefore = request.Against.empty() || IsAsBefore(checked, request.Against);
    if (const uint64_t numOfBad = checked.NumOfBadTiles())
        throw CHostError(ExitCode::BadFile, checked.Path.string() + ": " + TextOfCount(numOfBad, "bad tile") +
                                                "; 'zel tiles' tells where tiles lie");
    if (!isAsBefore)
        throw CHostError(ExitCode::BadFile, checked.Path.string() + ": is not as it was when " +
                                                request.Against.string() +
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
    command.add_option("--hashes", request->Hashes, "write the hashes of tiles, levels and document as JSON");
    command.add_option("--against", request->Against, "compare with hashes that were written before");
    request->Common.AddTo(command);
}

} // namespace HostTool
