#include "HostTool/Pixels/SmallPictureCommands.h"

#include "HostTool/OutputFile.h"
#include "HostTool/OutputPlace.h"
#include "HostTool/Pixels/Bitmap.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Pixels/PictureFile.h"
#include "HostTool/Pixels/TileCodec.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/TileKind.h"

#include <CLI/CLI.hpp>

namespace HostTool
{

namespace
{

std::string WriteAsStored(const ByteBuffer& bytes, const std::filesystem::path& path)
{
    COutputFile file(path);
    file.Write(bytes);
    file.Finish();
    return path.string() + ": " + std::to_string(bytes.size()) + " bytes as stored";
}

CHostError Nothing(const CDocument& document, const std::string& what)
{
    return {ExitCode::WrongUsage,
            document.Path().string() + ": the document has no " + what + "; 'zel region' makes a picture of a level"};
}

/// A picture that is a BMP file is written as a file of another kind if its name asks for that, any other as stored.
std::string WritePicture(const CDocument& document, const ByteBuffer& bytes, std::filesystem::path path,
                         const std::string& what)
{
    const CTileKind* kind = FindTileKind(bytes);
    const std::string_view extension = kind ? kind->Extension : ".raw";
    path = WithExtension(std::move(path), extension);
    if (IsStream(path) || path.extension() == extension || (kind && path.extension() == kind->OtherExtension))
        return WriteAsStored(bytes, path);
    if (!kind || kind->Extension != ".bmp")
        throw CHostError(ExitCode::WrongUsage, path.string() + ": the " + what + " is " +
                                                   (kind ? std::string(kind->Name) : "of an unknown kind") +
                                                   "; give a name that ends in " + std::string(extension));
    try
    {
        const CBitmap bitmap(bytes);
        WriteBitmap(bitmap, path);
        return path.string() + ": " + std::to_string(bitmap.Width()) + " x " + std::to_string(bitmap.Height()) +
               " pixels";
    }
    catch (const CTileError& error)
    {
        throw CHostError(ExitCode::BadFile, document.Path().string() + ": the " + what + " cannot be read: " +
                                                error.what() + "; a name that ends in .bmp takes it as stored");
    }
}

void AddPictureCommand(CCommandLine& line, const CCommandText& text, const std::string& what,
                       const std::string& pattern, std::optional<ByteBuffer> (*read)(const CDocument&))
{
    const auto output = std::make_shared<COutputPlace>();
    CLI::App& command = line.AddCommand(text,
                                        [output, what, read](const CDocument& document)
                                        {
                                            const auto bytes = read(document);
                                            if (!bytes || bytes->empty())
                                                throw Nothing(document, what);
                                            Say(WritePicture(document, *bytes, output->For(document.Path()), what));
                                            return ExitCode::Done;
                                        });
    output->AddTo(command, "-o,--output",
                  "file to write; without an extension it gets the one that fits; - for standard output", pattern);
    AddOutputOptions(command);
    line.TakeSeveral(command,
                     [output](const auto& files)
                     {
                         output->RequireGiven();
                         output->Prepare(files);
                     });
}

} // namespace

void AddThumbnailCommand(CCommandLine& line)
{
    AddPictureCommand(line,
                      {"thumbnail", "Writes the thumbnail to a picture file: PNG, TIFF, or BMP as the plug-in has it.",
                       "  zel thumbnail slide.zel -o thumbnail.png\n  zel thumbnail -r slides --out-dir thumbnails"},
                      "thumbnail", "{stem}.png", [](const CDocument& document) { return document.Thumbnail(); });
}

void AddOverviewCommand(CCommandLine& line)
{
    AddPictureCommand(line,
                      {"overview", "Writes the picture of the whole slide to a file, as it is stored.",
                       "  zel overview slide.zel -o overview\n  zel overview slide.zel -o overview.jpg"},
                      "overview picture", "{stem}", [](const CDocument& document) { return document.Overview(); });
}

} // namespace HostTool
