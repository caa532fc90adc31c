#include "HostTool/Reader/TreeCommand.h"

#include "HostTool/Reader/TreePrinter.h"
#include "HostTool/Text.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <iostream>
#include <sstream>

namespace HostTool
{

namespace
{

/// "2000/2001" as numbers. Throws CHostError for anything else.
std::vector<uint32_t> TagPathOf(const std::string& text)
{
    std::vector<uint32_t> path;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, '/');)
    {
        uint32_t tag = 0;
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), tag);
        if (error != std::errc() || end != part.data() + part.size())
            throw CHostError(ExitCode::WrongUsage,
                             "--tag " + Printable(text) +
                                 ": is no way to a field; give tags with / between, as 2000/2001");
        path.push_back(tag);
    }
    return path;
}

ExitCode PrintTree(const std::filesystem::path& file, const CTreeRequest& request)
{
    const CReaderFile bytes(file);
    std::cout << Printable(std::filesystem::absolute(file).string()) << ", " << bytes.Size() << " bytes\n";
    CTreePrinter printer(std::cout, bytes, request);
    printer.Print();
    if (printer.NumOfErrors() > 0)
        throw CHostError(ExitCode::BadFile, file.string() + ": the tree is damaged at " +
                                                TextOfCount(printer.NumOfErrors(), "place") +
                                                "; the output shows where, by 'error'");
    if (printer.NumOfFields() == 0 && !request.TagPath.empty())
        throw CHostError(ExitCode::WrongUsage,
                         file.string() + ": nothing lies under these tags; without --tag all of the tree is shown");
    return ExitCode::Done;
}

} // namespace

void AddTreeCommand(CCommandLine& line)
{
    struct COptions
    {
        CTreeRequest Tree;
        std::string TagPath;
    };
    const auto options = std::make_shared<COptions>();
    CLI::App& command = line.AddFileCommand(
        {"tree",
         "Prints the tag tree: offset, tag#second tag, name, type and value of each field, also of a damaged file.",
         "  zel tree slide.zel --depth 2\n  zel tree slide.zel --tag 2000/2001/2005"},
        [options](const std::filesystem::path&, const std::filesystem::path& file)
        {
            options->Tree.TagPath = TagPathOf(options->TagPath);
            return PrintTree(file, options->Tree);
        });
    command.add_option("--depth", options->Tree.MostDepth, "print so many levels below the first ones");
    command.add_option("--tag", options->TagPath, "print only what lies under these tags, as 2000/2001");
}

} // namespace HostTool
