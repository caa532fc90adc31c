#include "SampleDocuments/Description/Description.h"
#include "SampleDocuments/zelmake/Options.h"
#include "SampleDocuments/zelmake/Report.h"
#include "SampleDocuments/zelmake/Target.h"

#include <iostream>

using namespace SampleDocuments;

namespace
{

constexpr const char* Purpose =
    "Makes a sample slide: a document with a pyramid of encoded tiles.\n"
    "\n"
    "  zelmake slide.zel                                        a drawn picture, JPEG tiles\n"
    "  zelmake slide.zel --picture tissue.png --grow 50         50 x 50 mirrored pictures\n"
    "  zelmake stack.zel --z 5 --channels 2 --compression raw --bits 16\n"
    "  zelmake slide.zel --magnification 20 --aperture 0.75 --regions 1000\n"
    "  zelmake slide.zel --describe everything.json             whatever a document can hold\n"
    "\n"
    "Writes only below the folder of the document, and replaces there what it can tell it wrote itself, or with "
    "--force "
    "whatever is there.";

CPicture PictureOf(const ZelMake::COptions& options)
{
    return options.Picture.empty() ? DrawPicture(options.DrawnSize[0], options.DrawnSize[1])
                                   : LoadPicture(options.Picture);
}

Document DocumentOf(const ZelMake::COptions& options)
{
    const CSlideOptions slide = ZelMake::SlideOptionsOf(options);
    if (!options.Description.empty())
        return DocumentFromDescription(options.Description, {slide, [&options] { return PictureOf(options); }});
    const CPicture picture = PictureOf(options);
    Document document =
        SlideFromPicture(picture, slide, [&options](Stack& stack) { ZelMake::Tell(stack, options.Told); });
    ZelMake::Tell(document, picture, options.Told);
    return document;
}

void Make(const ZelMake::COptions& options)
{
    for (const auto& input : {options.Picture, options.Description})
        if (!input.empty())
            ZelMake::CheckIsNotRead(options.Document, input);
    Document document = DocumentOf(options);
    ZelMake::CheckTarget(options.Document, document);
    if (!options.IsForced)
        ZelMake::CheckMayBeReplaced(options.Document);
    ZelMake::RemoveOldFiles(options.Document, document);
    document.WriteTo(options.Document);
    std::cout << (options.IsReportJson ? ZelMake::ReportAsJson(options.Document, document)
                                       : ZelMake::ReportAsText(options.Document, document));
}

int Fail(const std::string& reason)
{
    std::cerr << "zelmake: " << reason << "\n";
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App parser(Purpose, "zelmake");
    ZelMake::COptions options;
    ZelMake::Describe(parser, options);
    try
    {
        parser.parse(argc, argv);
        ZelMake::CheckTogether(parser, options);
        Make(options);
        return 0;
    }
    catch (const CLI::CallForHelp& help)
    {
        return parser.exit(help);
    }
    catch (const CLI::ParseError& error)
    {
        return Fail(std::string(error.what()) + "; see zelmake --help");
    }
    catch (const std::bad_alloc&)
    {
        return Fail(options.Document.string() + ": not enough memory; take a smaller picture and more of --grow");
    }
    catch (const std::exception& error)
    {
        return Fail(error.what());
    }
}
