#include "HostTool/Manual/ManualCommand.h"

#include "HostTool/Manual/Completion.h"
#include "HostTool/Manual/ManualPage.h"
#include "HostTool/OutputFile.h"

#include <CLI/CLI.hpp>

namespace HostTool
{

namespace
{

namespace fs = std::filesystem;

void WriteText(const fs::path& path, const std::string& text)
{
    MakeFolder(path.parent_path());
    COutputFile file(path);
    file.Write(text);
    file.Finish();
}

void WriteManual(const CLI::App& program, const fs::path& folder)
{
    const std::vector<CCommandTexts> all = CommandTextsOf(program);
    for (const CCommandTexts& command : all)
        WriteText(folder / "man" / "man1" / ("zel" + (command.Name.empty() ? "" : "-" + command.Name) + ".1"),
                  ManualPageOf(command, all, ZEL_VERSION));
    WriteText(folder / "bash-completion" / "completions" / "zel", BashCompletionOf(all));
    WriteText(folder / "zsh" / "site-functions" / "_zel", ZshCompletionOf(all));
}

} // namespace

void AddManualCommand(CCommandLine& line)
{
    const auto folder = std::make_shared<fs::path>();
    line.AddProgramCommand({"manual",
                            "Writes the manual pages of all commands, and the completions of bash and zsh, into a "
                            "folder like /usr/local/share.",
                            "  zel manual ~/.local/share\n  zel manual share && man -l share/man/man1/zel-verify.1"},
                           [folder](const CLI::App& program)
                           {
                               WriteManual(program, *folder);
                               return ExitCode::Done;
                           })
        .add_option("FOLDER", *folder, "where they go; made if it is not there")
        ->required();
}

} // namespace HostTool
