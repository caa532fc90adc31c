#pragma once

#include "HostTool/Document.h"
#include "HostTool/HostError.h"
#include "HostTool/ManyFiles.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace CLI
{
class App;
}

namespace HostTool
{

/// What the help and the manual page of a command say.
struct CCommandText
{
    std::string Name;     ///< as it is typed: "info"
    std::string What;     ///< what it does, in one sentence
    std::string Examples; ///< two lines, each a whole call, indented by two blanks
};

/// The program's command line. Each command has a pair of files of its own and adds itself by a function that takes
/// this; Main.cpp lists them.
class CCommandLine
{
public:
    /// Work on the file, which is not opened yet; what it prints goes to standard output. May throw CHostError.
    using FileWork = std::function<ExitCode(const std::filesystem::path& plugin, const std::filesystem::path& file)>;
    /// Work on the program itself: its commands with their options and texts. May throw CHostError.
    using ProgramWork = std::function<ExitCode(const CLI::App& program)>;
    /// Work on the opened document. May throw CHostError.
    using DocumentWork = std::function<ExitCode(const CDocument& document)>;
    /// What is done once before the work on all documents. May throw CHostError.
    using Preparation = std::function<void(const std::vector<std::filesystem::path>& files)>;

    CCommandLine();
    ~CCommandLine();
    CCommandLine(const CCommandLine&) = delete;
    CCommandLine& operator=(const CCommandLine&) = delete;

    /// Adds a command with the argument FILE. The caller adds the command's own options to the answer, which lives as
    /// long as this; what they are stored in has to be owned by `work` (a shared pointer that it captures).
    CLI::App& AddCommand(const CCommandText& text, DocumentWork work);
    /// The same for work that can do with a document of which some tile stores are missing; the exit code tells of
    /// them.
    CLI::App& AddTolerantCommand(const CCommandText& text, DocumentWork work);
    CLI::App& AddFileCommand(const CCommandText& text, FileWork work);
    /// Lets a command take several documents, folders and lists, one after the other or some at once; `prepare` may be
    /// empty. A command without --jobs gets that option.
    void TakeSeveral(CLI::App& command, Preparation prepare);
    /// The same without a FILE.
    CLI::App& AddProgramCommand(const CCommandText& text, ProgramWork work);

    /// The program: reads the words, runs the chosen command in a process of its own, and answers the exit code.
    int Run(int argc, const char* const* argv);

private:
    CLI::App& Add(const CCommandText& text, FileWork work);
    int RunChosen(const std::filesystem::path& file) const;
    int RunOn(const CNamedFiles& named) const;
    void ProtectWhatIsRead(const std::vector<std::filesystem::path>& files) const;

    std::unique_ptr<CLI::App> _App;
    std::filesystem::path _Plugin;
    std::filesystem::path _File;     ///< of a command that takes one document
    std::vector<std::string> _Words; ///< that name documents, of one that takes several
    bool _AreFoldersSearched = false;
    CManyOptions _Many;
    std::map<const CLI::App*, Preparation> _Preparations;
    std::optional<Preparation> _Prepare; ///< of the chosen command; nothing: it takes one document
    FileWork _Chosen;
};

} // namespace HostTool
