#include "HostTool/ManyFiles.h"

#include "HostTool/GuardedRun.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <sys/mman.h>
#include <unistd.h>

namespace HostTool
{

namespace
{

namespace fs = std::filesystem;

unsigned NumOfFilesAtOnce = 1;

void AddLinesOf(std::istream& list, std::vector<fs::path>& files)
{
    for (std::string line; std::getline(list, line);)
    {
        if (line.ends_with('\r'))
            line.pop_back();
        if (!line.empty())
            files.emplace_back(line);
    }
}

void AddList(const std::string& name, CNamedFiles& named)
{
    if (name == "-")
        return AddLinesOf(std::cin, named.Files);
    errno = 0;
    std::ifstream list(name);
    if (!list)
        named.Failures.emplace_back(CodeOfErrno(errno),
                                    name + ": the list cannot be read: " + std::strerror(errno) + "; check the name");
    AddLinesOf(list, named.Files);
}

void AddFolder(const fs::path& folder, CNamedFiles& named)
{
    std::vector<fs::path> files;
    std::vector<fs::path> folders = {folder};
    while (!folders.empty())
    {
        const fs::path present = std::move(folders.back());
        folders.pop_back();
        std::error_code error;
        for (fs::directory_iterator entry(present, error), end; !error && entry != end; entry.increment(error))
        {
            std::error_code ignored;
            if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) // a link may lead back
                folders.push_back(entry->path());
            else if (entry->path().extension() == ".zel" && entry->is_regular_file(ignored))
                files.push_back(entry->path());
        }
        if (error)
            named.Failures.emplace_back(CodeOfErrno(error.value()),
                                        present.string() + ": the folder cannot be read: " + error.message());
    }
    if (files.empty())
        named.Failures.emplace_back(ExitCode::WrongUsage, folder.string() + ": there is no document in this folder");
    std::sort(files.begin(), files.end());
    named.Files.insert(named.Files.end(), files.begin(), files.end());
}

/// A file without a name, for what a child prints.
class CCapture
{
public:
    CCapture() : _Descriptor(memfd_create("zel", MFD_CLOEXEC))
    {
        if (_Descriptor < 0)
            throw CHostError(ExitCode::Machine, std::string("cannot keep what is printed: ") + std::strerror(errno) +
                                                    "; read fewer documents at once");
    }
    ~CCapture() { close(_Descriptor); }
    CCapture(const CCapture&) = delete;
    CCapture& operator=(const CCapture&) = delete;

    /// Lets this process write to it in the place of one of its standard streams.
    void Replace(int stream) const { dup2(_Descriptor, stream); }
    std::string Text() const
    {
        std::string text(static_cast<size_t>(std::max<off_t>(0, lseek(_Descriptor, 0, SEEK_END))), '\0');
        const ssize_t size = pread(_Descriptor, text.data(), text.size(), 0);
        text.resize(static_cast<size_t>(std::max<ssize_t>(0, size)));
        return text;
    }

private:
    int _Descriptor;
};

struct CPrinted
{
    std::string Output;
    std::string Errors;
    ExitCode Code = ExitCode::Done;
};

/// The documents on their way.
class CManyRun
{
public:
    CManyRun(const std::vector<fs::path>& files, const CManyOptions& options,
             const std::function<int(const fs::path&)>& work)
        : _Files(files), _Options(options), _Work(work), _Printed(files.size())
    {
    }

    ExitCode Run()
    {
        while (true)
        {
            while (_Next < _Files.size() && _Running.size() < _Options.AtOnce && !IsOver())
                Start(_Next++);
            if (_Running.empty())
                break;
            TakeOne();
            Print();
        }
        if (_Signal != 0)
            EndBySignal(_Signal);
        return _Worst;
    }

private:
    struct CRunning
    {
        size_t Number = 0;
        std::shared_ptr<CCapture> Output;
        std::shared_ptr<CCapture> Errors;
    };

    bool IsOver() const { return _Signal != 0 || (_Options.IsFailFast && _Worst != ExitCode::Done); }

    void Start(size_t number)
    {
        CRunning running{number, std::make_shared<CCapture>(), std::make_shared<CCapture>()};
        const pid_t child = _Children.Start(
            [&]
            {
                running.Output->Replace(STDOUT_FILENO);
                running.Errors->Replace(STDERR_FILENO);
                return _Work(_Files[number]);
            });
        _Running.emplace(child, std::move(running));
    }

    void TakeOne()
    {
        const auto [child, end] = _Children.Wait();
        const auto running = _Running.find(child);
        if (running == _Running.end())
            return;
        const CRunning& ended = running->second;
        CPrinted printed{ended.Output->Text(), ended.Errors->Text(), static_cast<ExitCode>(end.ExitCode)};
        if (end.IsEarly() && IsOfUser(end.Signal))
            _Signal = end.Signal;
        else if (end.IsEarly())
        {
            const CHostError failure = EarlyEnd(_Files[ended.Number].string(), end);
            printed.Errors += "zel: " + Printable(failure.what()) + '\n';
            printed.Code = failure.Code();
        }
        _Worst = WorseOf(_Worst, printed.Code);
        _Printed[ended.Number] = std::move(printed);
        _Running.erase(running);
    }

    /// Prints what is next in the order of the documents.
    void Print()
    {
        for (; _NextToPrint < _Printed.size() && _Printed[_NextToPrint]; ++_NextToPrint)
        {
            PrintWhole(_Printed[_NextToPrint]->Output);
            std::cerr << _Printed[_NextToPrint]->Errors;
            _Printed[_NextToPrint] = CPrinted();
        }
    }

    const std::vector<fs::path>& _Files;
    const CManyOptions& _Options;
    const std::function<int(const fs::path&)>& _Work;
    CChildren _Children;
    std::map<pid_t, CRunning> _Running;
    std::vector<std::optional<CPrinted>> _Printed; ///< by document
    size_t _Next = 0;
    size_t _NextToPrint = 0;
    ExitCode _Worst = ExitCode::Done;
    int _Signal = 0; ///< by which the user ended it
};

} // namespace

CNamedFiles FilesNamedBy(const std::vector<std::string>& words, bool areFoldersSearched)
{
    CNamedFiles named;
    for (const std::string& word : words)
    {
        if (word.starts_with('@'))
            AddList(word.substr(1), named);
        else
            named.Files.emplace_back(word);
    }
    if (!areFoldersSearched)
        return named;
    CNamedFiles all;
    all.Failures = std::move(named.Failures);
    for (const fs::path& file : named.Files)
    {
        std::error_code ignored;
        if (fs::is_directory(file, ignored))
            AddFolder(file, all);
        else
            all.Files.push_back(file);
    }
    return all;
}

unsigned FilesAtOnce()
{
    return NumOfFilesAtOnce;
}

ExitCode RunOnEach(const std::vector<fs::path>& files, const CManyOptions& options,
                   const std::function<int(const fs::path&)>& work)
{
    NumOfFilesAtOnce = options.AtOnce;
    return CManyRun(files, options, work).Run();
}

} // namespace HostTool
