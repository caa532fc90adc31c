#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace HostTool
{

/// Where a command writes: to the file that the user names, or to one for each document in a folder.
class COutputPlace
{
public:
    /// Adds the options: `option` for the file, as "-o,--output", whose help is `what`; and those for a folder, in
    /// which names are made by `pattern`.
    void AddTo(CLI::App& command, const std::string& option, const std::string& what, const std::string& pattern);

    /// Throws CHostError if neither a file nor a folder was given.
    void RequireGiven() const;
    /// Refuses one output for several documents, and two documents with one output. Makes the folder. Throws
    /// CHostError.
    void Prepare(const std::vector<std::filesystem::path>& documents) const;
    bool IsGiven() const { return !_File.empty() || !_Folder.empty(); }
    /// The output for a document; one has to be given.
    std::filesystem::path For(const std::filesystem::path& document) const;
    /// The name that the pattern makes for a document, without its folder.
    std::string NameFor(const std::filesystem::path& document) const;
    /// The pattern is this one unless the user gave another.
    void SetPattern(const std::string& pattern);

private:
    std::string _Option;
    std::filesystem::path _File;
    std::filesystem::path _Folder;
    std::string _Pattern;
    bool _IsPatternGiven = false;
};

} // namespace HostTool
