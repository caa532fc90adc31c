#include "HostTool/OutputPlace.h"

#include "HostTool/HostError.h"
#include "HostTool/OutputFile.h"

#include <CLI/CLI.hpp>
#include <map>

namespace HostTool
{

namespace
{

namespace fs = std::filesystem;

void Replace(std::string& text, const std::string& what, const std::string& by)
{
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

} // namespace

void COutputPlace::AddTo(CLI::App& command, const std::string& option, const std::string& what,
                         const std::string& pattern)
{
    _Option = option;
    _Pattern = pattern;
    CLI::Option* file = command.add_option(option, _File, what);
    command.add_option("--out-dir", _Folder, "folder for the outputs of several documents; made if it is not there")
        ->excludes(file);
    command.add_option_function<std::string>(
        "--name",
        [this](const std::string& text)
        {
            _Pattern = text;
            _IsPatternGiven = true;
        },
        "names of outputs in --out-dir: {stem} is that of the document without .zel, {parent} that of its folder. "
        "Default: " +
            pattern);
}

void COutputPlace::SetPattern(const std::string& pattern)
{
    if (!_IsPatternGiven)
        _Pattern = pattern;
}

std::string COutputPlace::NameFor(const fs::path& document) const
{
    std::string name = _Pattern;
    Replace(name, "{parent}", fs::absolute(document).parent_path().filename().string());
    Replace(name, "{stem}", document.stem().string());
    return name;
}

fs::path COutputPlace::For(const fs::path& document) const
{
    return _File.empty() ? _Folder / NameFor(document) : _File;
}

void COutputPlace::RequireGiven() const
{
    if (!IsGiven())
        throw CHostError(ExitCode::WrongUsage,
                         _Option.substr(_Option.find("--")) + " is required, or --out-dir for several documents");
}

void COutputPlace::Prepare(const std::vector<fs::path>& documents) const
{
    if (!_File.empty() && documents.size() > 1)
        throw CHostError(ExitCode::WrongUsage, _File.string() + ": is one output for " +
                                                   std::to_string(documents.size()) +
                                                   " documents; give a folder by --out-dir");
    if (_Folder.empty())
        return;
    std::map<std::string, fs::path> names;
    for (const fs::path& document : documents)
    {
        const auto [other, isNew] = names.emplace(NameFor(document), document);
        if (!isNew)
            throw CHostError(ExitCode::WrongUsage, document.string() + " and " + other->second.string() +
                                                       " have one output, " + (_Folder / other->first).string() +
                                                       "; give names by --name, as '{parent}-{stem}'");
    }
    MakeFolder(_Folder);
}

} // namespace HostTool
