#include "Fuzzing/Seeds/SampleSlides.h"

using namespace SampleDocuments;

namespace Fuzzing
{

namespace
{

Stack Small(uint32_t id)
{
    return Stack(id).Size(40, 30).Tiles(16, 16);
}

/// All that a stack can tell besides pixels.
Stack Talkative(uint32_t id)
{
    return Small(id)
        .Z(2)
        .Channels({CChannel("DAPI", 3, 100).With(Camera(300)).With(CLookUpTable(Ramp(4, {0, 0, 255}))), "FITC"})
        .Lens({.Name = "UPlan 20x",
               .Magnification = 20,
               .WorkingDistance = CMeasured(0.6, "10^-3m^1"),
               .ImmersionMedium = Immersion::Oil})
        .ChannelDevice(1, Revolver({.Aperture = 0.75}))
        .Exposure(1200)
        .Stage(1500.5, -20)
        .Experiment("growth")
        .Sample("leaf", "third from the top")
        .Operator(3)
        .Transparency(0.5)
        .Overview(BytesOf("a picture"));
}

Document DocumentOfRegions(uint32_t stackId, Regions regions)
{
    return Document().With(Small(stackId).LayerBlob(regions)).FileBlob(Regions({Dot("spot", {5, 5})}).AsTree());
}

} // namespace

Stack StackOfBinaryStore()
{
    return Small(1).Levels(2).Z(2).Channels(2);
}

Stack StackOfTiffStore()
{
    return Small(1).Levels(2).Z(2).InTiffStore();
}

Stack StackOfDirectories()
{
    return Stack(1).Size(40, 30).Tiles(16, 16).Z(2).InDocument();
}

Document SlideOfBinaryStore()
{
    return Document().With(StackOfBinaryStore());
}

Document SlideOfTiffStore()
{
    return Document().With(StackOfTiffStore());
}

Document SlideOfDirectories()
{
    return Document().With(StackOfDirectories());
}

Document SlideOfAllStores()
{
    return Document().With(StackOfBinaryStore()).With(Small(2).InTiffStore()).With(Small(3).InDocument(8));
}

std::vector<CSampleSlide> SampleSlides()
{
    // Each stack has an ID of its own, so that the stores of all of them can lie beside one document.
    return {
        {"binary", Document().With(StackOfBinaryStore())},
        {"three-stacks", SlideOfAllStores()},
        {"talkative", Document().With(Talkative(4)).Thumbnail(DrawPicture(6, 5), {.Bits = 8})},
        {"colour-jpeg", Document().With(Small(5).Jpeg(3).T(2))},
        {"regions-xml", DocumentOfRegions(6, Regions({Rectangle("cell", {1, 2}, {3, 4}), Dot("spot", {5, 5})}))},
        {"regions-tree", DocumentOfRegions(6, Regions(RegionOfEachClass()).AsTree())},
        {"old", Document().With(Small(7).Lambda(2)).OldThumbnail(DrawPicture(4, 4)).PersistentId("id")},
        {"tiff-store", Document().With(Small(8).Levels(2).Z(2).InTiffStore())},
        {"directories",
         Document().With(Small(9).InDocument(8)).FirstDirectory(DrawPicture(9, 7), FirstDirectoryKind::Jpeg)},
        {"tiled-directories", Document().With(Small(10).Z(2).InDocument().J2k())},
        {"big-tiff-store", Document().With(Small(11).T(2).Channels(2).InTiffStore(8).BigTiff())},
    };
}

} // namespace Fuzzing
