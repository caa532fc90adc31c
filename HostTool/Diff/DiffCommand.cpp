#include "HostTool/Diff/DiffCommand.h"

#include "HostTool/Diff/FactsDiff.h"
#include "HostTool/Diff/PixelsDiff.h"
#include "HostTool/GuardedRun.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Reader/BuiltInPlugin.h"
#include "HostTool/Reader/ReaderLog.h"
#include "HostTool/Text.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace HostTool
{

namespace
{

struct CDiffRequest
{
    std::filesystem::path Other;
    bool IsDecoded = false;
    bool IsEachListed = false;
    CCommonOptions Common;
};

/// Runs work on one of the two documents, whose failure ends with what the reader says of that one.
template <typename Work>
auto OfDocument(const std::filesystem::path& path, const Work& work)
try
{
    return work();
}
catch (const CCallError& error)
{
    const bool isOfFile = error.Code() == ExitCode::BadFile;
    throw CHostError(error.Code(), isOfFile ? WithReason(error.what(), path) : error.what());
}

/// One of the two documents.
class CSide
{
public:
    CSide(const CPluginHost& host, const std::filesystem::path& plugin, const std::filesystem::path& path)
        : _Path(path), _Document(OfDocument(path, [&] { return std::make_unique<CDocument>(host, path); })),
          _Facts(OfDocument(path, [&] { return ToldFactsOf(plugin, *_Document); }))
    {
    }

    int NumOfGroups() const { return _Document->NumOfGroups(); }
    const CToldFacts& Facts() const { return _Facts; }
    std::unique_ptr<CGroupPixels> Group(int group, std::optional<ValueKind> values) const
    {
        return OfDocument(_Path, [&] { return std::make_unique<CGroupPixels>(*_Document, group, values); });
    }

private:
    const std::filesystem::path& _Path;
    std::unique_ptr<CDocument> _Document;
    CToldFacts _Facts;
};

void SayLimits(const CGroupPixels& pixels)
{
    for (const std::string& limit : pixels.Limits())
        std::cerr << "zel: " << Printable(pixels.Document().Path().string() + ": " + limit) << '\n';
}

ExitCode Compare(const std::filesystem::path& plugin, const std::filesystem::path& file, const CDiffRequest& request)
{
    const CPluginHost host = HostOf(plugin);
    const CSide a(host, plugin, file);
    const CSide b(host, plugin, request.Other);
    CDiffReport report(file, request.Other, request.IsEachListed);
    CompareFacts(a.Facts(), b.Facts(), request.IsDecoded, report);
    for (int group = 0; group < std::min(a.NumOfGroups(), b.NumOfGroups()); ++group)
    {
        const auto pixelsOfA = a.Group(group, request.Common.Values());
        const auto pixelsOfB = b.Group(group, request.Common.Values());
        SayLimits(*pixelsOfA);
        SayLimits(*pixelsOfB);
        const CGroupPair groups{*pixelsOfA, *pixelsOfB};
        (request.IsDecoded ? CompareDecoded : CompareStored)(groups, request.Common.Jobs, report);
    }
    report.Finish(DiffKind::Tile);
    report.Conclude();
    return ExitCode::Done;
}

/// Whether the plug-in ends the process at this document.
bool EndsProcess(const std::filesystem::path& plugin, const std::filesystem::path& file)
{
    const auto read = [&]
    {
        try
        {
            const CPluginHost host = HostOf(plugin);
            ToldFactsOf(plugin, CDocument(host, file));
        }
        catch (const std::exception&)
        {
            return 0; // an orderly failure is not what is asked for
        }
        return 0;
    };
    return RunInChild(read).IsEarly();
}

/// A process that ends by design tells nothing about which of the two documents it was.
ExitCode Diff(const std::filesystem::path& plugin, const std::filesystem::path& file, const CDiffRequest& request)
{
    const CChildEnd end = RunInChild([&] { return static_cast<int>(Compare(plugin, file, request)); });
    if (!end.IsEarly())
        return static_cast<ExitCode>(end.ExitCode);
    const std::filesystem::path& blamed = EndsProcess(plugin, file) ? file : request.Other;
    const CHostError early = EarlyEnd(blamed.string(), end);
    const bool isOfFile = early.Code() == ExitCode::BadFile;
    throw CHostError(early.Code(), isOfFile ? WithReason(early.what(), blamed) : early.what());
}

} // namespace

void AddDiffCommand(CCommandLine& line)
{
    const auto request = std::make_shared<CDiffRequest>();
    CLI::App& command =
        line.AddFileCommand({"diff", "Tells in which properties, regions of interest and tiles two documents differ.",
                             "  zel diff slide.zel copy.zel\n  zel diff slide.zel recompressed.zel --decoded"},
                            [request](const std::filesystem::path& plugin, const std::filesystem::path& file)
                            { return Diff(plugin, file, *request); });
    command.add_option("OTHER", request->Other, "the document to compare with")->required();
    command.add_flag("--decoded", request->IsDecoded,
                     "compare decoded pixels, however they are stored. Default: the stored bytes of tiles");
    command.add_flag("--list", request->IsEachListed, "print a line for each difference, not only for the first 50");
    request->Common.AddTo(command);
}

} // namespace HostTool
