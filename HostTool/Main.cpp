#include "HostTool/GuardedRun.h"
#include "HostTool/HostError.h"
#include "HostTool/InfoCommand.h"
#include "HostTool/Text.h"
#include "HostTool/TileCommand.h"
#include "HostTool/TourCommand.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <iostream>
#include <new>

namespace
{

using namespace HostTool;

/// The plug-in of the build or installation that this program belongs to: bin/zel and lib/libZelPluginForBrix.so.
std::filesystem::path PluginBesideThisProgram()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return program.parent_path().parent_path() / "lib" / "libZelPluginForBrix.so";
}

struct COptions
{
    std::filesystem::path Plugin = PluginBesideThisProgram();
    std::filesystem::path File;
    std::filesystem::path Folder;
    CTileRequest Tile;
};

/// Work on the opened document; what it prints goes to standard output.
using Command = std::function<void(const CDocument&)>;

int Run(const COptions& options, const Command& command)
{
    try
    {
        const CPluginHost host(options.Plugin);
        const CDocument document(host, options.File);
        command(document);
        std::cout.flush();
        return static_cast<int>(ExitCode::Done);
    }
    catch (const CHostError& error)
    {
        std::cout.flush();
        std::cerr << "zel: " << Printable(error.what()) << '\n';
        return static_cast<int>(error.Code());
    }
    catch (const std::bad_alloc&)
    {
        std::cout.flush();
        std::cerr << "zel: " << Printable(options.File.string())
                  << ": not enough memory for what the document asks for; it is damaged, or this machine too small\n";
        return static_cast<int>(ExitCode::BadFile);
    }
}

CLI::App* AddCommand(CLI::App& app, COptions& options, const std::string& name, const std::string& what,
                     const std::string& examples)
{
    CLI::App* command = app.add_subcommand(name, what);
    command->add_option("FILE", options.File, "the document, a file that ends in .zel")->required();
    command->footer("Examples:\n" + examples);
    return command;
}

void AddTileOptions(CLI::App& command, CTileRequest& tile)
{
    command.add_option("-g,--group", tile.Group, "group, from 0")->check(CLI::NonNegativeNumber)->capture_default_str();
    command.add_option("-l,--level", tile.Level, "level; 0 is the finest")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command.add_option("-x,--col", tile.Col, "column of the level's tile grid, from 0")->required();
    command.add_option("-y,--row", tile.Row, "row of the level's tile grid, from 0")->required();
    command.add_option("-c,--channel", tile.Position.Channel, "channel")->capture_default_str();
    command.add_option("-z", tile.Position.Z, "position on the Z axis, from 0")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command.add_option("-t", tile.Position.T, "position on the time axis, from 0")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command.add_option("--lambda", tile.Position.Lambda, "position on the wavelength axis, from 0")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command.add_option("-o,--output", tile.Output, "file to write; without an extension it gets the one that fits")
        ->required();
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app{"Looks into .zel microscopy documents through the plug-in, as a host does.\n"
                 "Exit codes: 0 done, 1 the file is damaged or not of this format, 2 wrong usage, 3 a side file is "
                 "missing.",
                 "zel"};
    app.require_subcommand(1);
    COptions options;
    app.add_option("--plugin", options.Plugin, "the plug-in to load")->capture_default_str();

    Command command;
    AddCommand(app, options, "info", "Prints groups, channels, axes, levels and tile grids.",
               "  zel info slide.zel\n  zel --plugin ./libZelPluginForBrix.so info slide.zel")
        ->callback([&] { command = [](const CDocument& document) { PrintFacts(std::cout, FactsOf(document)); }; });

    CLI::App* tile = AddCommand(app, options, "tile", "Writes one tile to a file, as it is stored; raw pixels as PNG.",
                                "  zel tile slide.zel -x 2 -y 1 -o tile\n"
                                "  zel tile slide.zel -g 0 -l 3 -x 0 -y 0 -c 1 -z 4 -o tile.jpg");
    AddTileOptions(*tile, options.Tile);
    tile->callback(
        [&]
        {
            command = [&](const CDocument& document)
            { std::cout << Printable(WriteTileCommand(document, options.Tile)) << '\n'; };
        });

    CLI::App* tour =
        AddCommand(app, options, "tour", "Prints what info prints and writes one tile of each level into a folder.",
                   "  zel tour slide.zel tiles\n  zel tour /data/slide.zel /tmp/tiles");
    tour->add_option("FOLDER", options.Folder, "where the tiles go; made if it is not there")->required();
    tour->callback(
        [&]
        {
            command = [&](const CDocument& document)
            { TourCommand(std::cout, document, std::filesystem::absolute(options.Folder)); };
        });

    try
    {
        app.parse(argc, argv);
        return RunGuarded(options.File.string(), [&] { return Run(options, command); });
    }
    catch (const CLI::ParseError& error)
    {
        return app.exit(error) == 0 ? static_cast<int>(ExitCode::Done) : static_cast<int>(ExitCode::WrongUsage);
    }
    catch (const CHostError& error)
    {
        std::cerr << "zel: " << Printable(error.what()) << '\n';
        return static_cast<int>(error.Code());
    }
}
