#include "HostTool/CommandLine.h"

#include "HostTool/GuardedRun.h"
#include "HostTool/OutputFile.h"
#include "HostTool/OutputRules.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Pixels/Parallel.h"
#include "HostTool/Reader/BuiltInPlugin.h"
#include "HostTool/Reader/ReaderLog.h"
#include "HostTool/Reader/SoundStacks.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/Text.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>
#include <new>
#include <unistd.h>

namespace HostTool
{

namespace
{

/// The plug-in of the build or installation that this program belongs to: bin/zel and lib/libZelPluginForBrix.so.
std::filesystem::path PluginBesideThisProgram()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return program.parent_path().parent_path() / "lib" / "libZelPluginForBrix.so";
}

int Refuse(const std::string& line, ExitCode code)
{
    std::cout.flush(); // what was printed before stands before this
    std::cerr << "zel: " << Printable(line) << '\n';
    return static_cast<int>(std::cout ? code : WorseOf(code, ExitCode::Machine));
}

/// What is wrong with the words, up to the name of the command that they are for.
std::string WhatIsWrong(const CLI::App& app, const CLI::ParseError& error)
{
    if (const auto commands = app.get_subcommands(); !commands.empty())
        return std::string(error.what()) + "; 'zel " + commands.front()->get_name();
    const std::vector<std::string> unknown = app.remaining();
    if (unknown.empty())
        return std::string(error.what()) + "; 'zel";
    return "there is no " + std::string(unknown.front().starts_with('-') ? "option " : "command ") + unknown.front() +
           "; 'zel";
}

int PrintHelp(const CLI::App& app, const CLI::ParseError& asked)
try
{
    app.exit(asked);
    RequireAllPrinted();
    return static_cast<int>(ExitCode::Done);
}
catch (const CHostError& error)
{
    return Refuse(error.what(), error.Code());
}

} // namespace

CCommandLine::CCommandLine()
    : _App(std::make_unique<CLI::App>(
          "Looks into .zel microscopy documents, takes pictures out of them and moves them into other formats.",
          "zel")),
      _Plugin(PluginBesideThisProgram())
{
    _App->require_subcommand(1);
    _App->set_version_flag("--version", "zel " ZEL_VERSION, "print the version");
    _App->footer("Exit codes: " + std::string(MeaningsOfExitCodes) +
                 "\n"
                 "'zel COMMAND --help' tells more of a command.\n\n"
                 "Examples:\n"
                 "  zel info slide.zel\n"
                 "  zel export slide.zel -o slide.ome.tif");
    _App->add_option("--plugin", _Plugin, "the plug-in to load")->capture_default_str();
    const auto showLog = [this](const std::string& level)
    {
        _Plugin.clear();
        ShowLog(NamesOfLogLevels().at(level));
    };
    _App->add_option_function<std::string>("--log", showLog,
                                           "show the log on standard error, from this level on; the plug-in is then "
                                           "the one that zel is linked with")
        ->check(CLI::IsMember(NamesOfLogLevels()))
        ->excludes("--plugin");
}

CCommandLine::~CCommandLine() = default;

CLI::App& CCommandLine::AddCommand(const CCommandText& text, DocumentWork work)
{
    return AddFileCommand(
        text,
        [work = std::move(work)](const std::filesystem::path& plugin, const std::filesystem::path& file)
        {
            const CPluginHost host = HostOf(plugin);
            const CDocument document(host, file);
            return work(document);
        });
}

CLI::App& CCommandLine::AddTolerantCommand(const CCommandText& text, DocumentWork work)
{
    return AddFileCommand(
        text,
        [work = std::move(work)](const std::filesystem::path& plugin, const std::filesystem::path& file)
        {
            const CPluginHost host = HostOf(plugin);
            const CDocument document = OpenWhatThereIs(host, file);
            const ExitCode code = work(document);
            RequireAllThere(document, code);
            return code;
        });
}

CLI::App& CCommandLine::AddFileCommand(const CCommandText& text, FileWork work)
{
    CLI::App& command = Add(text, std::move(work));
    command.add_option("FILE", _File, "the document, a file that ends in .zel")->required();
    return command;
}

CLI::App& CCommandLine::AddProgramCommand(const CCommandText& text, ProgramWork work)
{
    return Add(text, [this, work = std::move(work)](const std::filesystem::path&, const std::filesystem::path&)
               { return work(*_App); });
}

CLI::App& CCommandLine::Add(const CCommandText& text, FileWork work)
{
    CLI::App* command = _App->add_subcommand(text.Name, text.What);
    command->fallthrough(); // so that options of the program may stand anywhere
    command->footer("Examples:\n" + text.Examples);
    command->callback(
        [this, command, work = std::move(work)]
        {
            _Chosen = work;
            const auto preparation = _Preparations.find(command);
            if (preparation == _Preparations.end())
                return;
            _Prepare = preparation->second;
            const CLI::Option* jobs = command->get_option("--jobs");
            _Many.AtOnce = jobs->count() > 0 ? jobs->as<unsigned>() : UsualNumOfJobs();
        });
    return *command;
}

void CCommandLine::TakeSeveral(CLI::App& command, Preparation prepare)
{
    command.remove_option(command.get_option("FILE"));
    command
        .add_option("FILE", _Words,
                    "the documents: files that end in .zel, @LIST for the names in a file, a line each, or with -r "
                    "folders")
        ->required();
    command.add_flag("-r,--recursive", _AreFoldersSearched, "take all documents in folders and below");
    command.add_flag("--fail-fast", _Many.IsFailFast, "begin no more documents after one that failed");
    command.add_flag_callback("-q,--quiet", SayNothing, "print nothing about what was done, but failures");
    if (!command.get_option_no_throw("--jobs"))
        command.add_option("-j,--jobs", _Many.AtOnce, "documents to read at once. Default: one for each processor")
            ->check(CLI::Range(1U, MostJobs));
    _Preparations[&command] = std::move(prepare);
}

int CCommandLine::RunChosen(const std::filesystem::path& file) const
{
    try
    {
        const ExitCode code = _Chosen(_Plugin, file);
        RequireAllPrinted();
        return static_cast<int>(code);
    }
    catch (const CCallError& error)
    {
        const bool isOfFile = error.Code() == ExitCode::BadFile;
        return Refuse(isOfFile ? WithReason(error.what(), file) : error.what(), error.Code());
    }
    catch (const CHostError& error)
    {
        return Refuse(error.what(), error.Code());
    }
    catch (const COutputSkipped& skipped)
    {
        Say(skipped.what());
        return static_cast<int>(ExitCode::Done);
    }
    catch (const std::bad_alloc&)
    {
        return Refuse(file.string() +
                          ": not enough memory for what the document asks for; end other programs, or try a "
                          "larger machine",
                      ExitCode::Machine);
    }
    catch (const std::exception& error)
    {
        return Refuse(file.string() + ": " + error.what() + ": the document is damaged, or of a kind that is not known",
                      ExitCode::BadFile);
    }
}

void CCommandLine::ProtectWhatIsRead(const std::vector<std::filesystem::path>& files) const
{
    OutputRules::ProtectDocuments(files);
    struct stat facts = {};
    if (fstat(STDOUT_FILENO, &facts) == 0 && S_ISREG(facts.st_mode))
        OutputRules::RequireNotRead("standard output", facts);
}

int CCommandLine::RunOn(const CNamedFiles& named) const
{
    const auto runOn = [this](const std::filesystem::path& file)
    { return RunGuarded(file.string(), [&] { return RunChosen(file); }); };
    ProtectWhatIsRead(named.Files);
    if (_Prepare && *_Prepare)
        (*_Prepare)(named.Files);
    ExitCode code = ExitCode::Done;
    for (const CHostError& failure : named.Failures)
        code = WorseOf(code, static_cast<ExitCode>(Refuse(failure.what(), failure.Code())));
    // A document that was named by itself has the terminal for itself.
    if (_Words.size() <= 1 && named.Files.size() == 1 && named.Failures.empty())
        return runOn(named.Files.front());
    return static_cast<int>(WorseOf(code, RunOnEach(named.Files, _Many, runOn)));
}

int CCommandLine::Run(int argc, const char* const* argv)
{
    try
    {
        KeepStandardStreamsApart();
        // A write beyond the limit for file sizes fails then, like one on a full disk.
        std::signal(SIGXFSZ, SIG_IGN);
        _App->parse(argc, argv);
        if (_Words.empty() && _File.empty()) // a command on the program itself
            return RunGuarded("", [this] { return RunChosen({}); });
        return RunOn(_Prepare ? FilesNamedBy(_Words, _AreFoldersSearched) : CNamedFiles{{_File}, {}});
    }
    catch (const CLI::ParseError& error)
    {
        if (error.get_exit_code() == 0) // help or version
            return PrintHelp(*_App, error);
        return Refuse(WhatIsWrong(*_App, error) + " --help' tells more", ExitCode::WrongUsage);
    }
    catch (const CHostError& error)
    {
        return Refuse(error.what(), error.Code());
    }
}

} // namespace HostTool
