#include "SampleDocuments/zelmake/Told.h"

#include "SampleDocuments/Slide.h"

namespace ZelMake
{

using namespace SampleDocuments;

namespace
{

const std::map<std::string, int32_t> Media = {{"air", Immersion::Air},
                                              {"water", Immersion::Water},
                                              {"oil", Immersion::Oil},
                                              {"glycerol", Immersion::Glycerol},
                                              {"silicone", Immersion::Silicone}};

constexpr uint32_t MostRegions = 1000000;

} // namespace

void Describe(CLI::App& parser, CTold& told)
{
    const auto add = [&parser](const char* name, auto& value, const char* text, const char* type)
    { return parser.add_option(name, value, text)->type_name(type)->group(GroupOfTold); };
    add("--name", told.Name, "Name of the stacks. Default: Stack 1, Stack 2, ...", "TEXT");
    add("--note", told.Note, "Description of the document", "TEXT");
    add("--author", told.Author, "Author of the document", "TEXT");
    add("--lens", told.Lens.Name, "Name of the objective lens", "TEXT");
    add("--magnification", told.Lens.Magnification, "Of the lens", "X");
    add("--aperture", told.Lens.Aperture, "Of the lens", "NA");
    add("--immersion", told.ImmersionMedium, "Of the lens", "MEDIUM")->check(CLI::IsMember(Media));
    add("--exposure", told.Exposure, "Exposure time of the stacks", "TIME");
    add("--stage", told.Stage, "Position of the stage in micrometres", "X Y")->expected(2);
    add("--experiment", told.Experiment, "Name of the experiment", "TEXT");
    add("--sample", told.Sample, "Name of the sample", "TEXT");
    add("--limits", told.Limits, "Display limits of the stacks and their channels", "LOW HIGH")->expected(2);
    add("--regions", told.NumOfRegions, "Regions of interest, spread over the picture", "N")
        ->check(CLI::Range(0u, MostRegions));
    add("--regions-as", told.RegionsForm, "How they are stored: xml or tree", "FORM")
        ->check(CLI::IsMember({"xml", "tree"}))
        ->capture_default_str();
    add("--thumbnail-bits", told.ThumbnailBits, "Of a pixel of the thumbnail; below 24 with a palette", "1|4|8|24")
        ->check(CLI::IsMember({1, 4, 8, 24}))
        ->capture_default_str();
}

void Tell(Stack& stack, const CTold& told)
{
    CObjectiveLens lens = told.Lens;
    if (!told.ImmersionMedium.empty())
        lens.ImmersionMedium = Media.at(told.ImmersionMedium);
    if (lens.Name || lens.Magnification || lens.Aperture || lens.ImmersionMedium)
        stack.Lens(lens);
    if (told.Name)
        stack.Name(*told.Name);
    if (told.Exposure)
        stack.Exposure(*told.Exposure);
    if (!told.Stage.empty())
        stack.Stage(told.Stage[0], told.Stage[1]);
    if (told.Experiment)
        stack.Experiment(*told.Experiment);
    if (told.Sample)
        stack.Sample(*told.Sample, "");
    if (!told.Limits.empty())
        stack.DisplayLimits(told.Limits[0], told.Limits[1]);
    if (told.NumOfRegions > 0)
    {
        Regions regions(ManyRegions(told.NumOfRegions, stack.Plan().Width, stack.Plan().Height));
        stack.LayerBlob(told.RegionsForm == "tree" ? regions.AsTree() : regions.AsXml());
    }
}

void Tell(Document& document, const CPicture& picture, const CTold& told)
{
    CDocumentProperties properties;
    if (told.Note)
        properties.Note = told.Note;
    if (told.Author)
        properties.Author = told.Author;
    document.Properties(properties).Thumbnail(ThumbnailOf(picture), {.Bits = told.ThumbnailBits});
}

} // namespace ZelMake
