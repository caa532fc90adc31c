// When a document ends the process of its host: on opening, or only when what it holds is asked for.

#include "SampleDocuments/Tags.h"
#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

struct EndRow : Row
{
    Document Made;
    std::function<void(AC_HFILE)> Call = [](AC_HFILE) {}; ///< that ends the process; the rest on opening
};

class EndDeathTest : public Slide, public testing::WithParamInterface<EndRow>
{
};

class EndOnOpeningDeathTest : public EndDeathTest
{
};
class EndLaterDeathTest : public EndDeathTest
{
};

AC_HAREA FirstArea(AC_HFILE document)
{
    return Area(GroupOf(document, 0), 0, 0);
}
void AskForChannel(AC_HFILE document)
{
    SetOf(FirstArea(document), L"ChannelInfo", {{L"channelId", L"0"}});
}
void AskForRegions(AC_HFILE document)
{
    SetOf(FirstArea(document), L"AnalysisROIList");
}
void AskForBytes(AC_HFILE document)
{
    BodyOf(Image(FirstArea(document)));
}
void AskForThumbnail(AC_HFILE document)
{
    uint32_t size = 0;
    Call(_AC_GetThumbnailData, document, nullptr, uint32_t{0}, &size);
}

void AskForImage(AC_HFILE document)
{
    Image(FirstArea(document), L"0", {AtZ(0)});
}

Stack Small()
{
    return Stack(1).Size(16, 16).Tiles(16, 16);
}
Document With(const Stack& stack)
{
    return Document().With(stack);
}
Document WithTooFewChannels()
{
    Stack stack = Small().Channels({"DAPI", "FITC"});
    stack.Plan().Dimensions[0].NumOfPoints = 1;
    return With(stack);
}
Document WithNode(CNode node)
{
    Document document = With(Small());
    document.Root().Add(std::move(node));
    return document;
}

TEST_P(EndOnOpeningDeathTest, OfTheProcess)
{
    EXPECT_ENDS_THE_PROCESS(ResultOfOpening(GetParam().Made), ABORT_WAS_CALLED);
}

INSTANTIATE_TEST_SUITE_P(Kinds, EndOnOpeningDeathTest,
                         testing::Values(EndRow{{"FieldOfUnknownType"}, WithNode(ExtendedField(5, 99))},
                                         EndRow{{"VolumeWithAName"}, WithNode(Volume(5).CountFlags(1U << 28))},
                                         EndRow{{"HiddenStackInABinaryStore"}, With(Small().Hidden())},
                                         EndRow{{"ChannelsBeyondTheirCount"}, WithTooFewChannels()}),
                         NameOfRow());

TEST_P(EndLaterDeathTest, OfTheProcess)
{
    Open(GetParam().Made);
    EXPECT_ENDS_THE_PROCESS(GetParam().Call(Doc()), ABORT_WAS_CALLED);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, EndLaterDeathTest,
    testing::Values(
        EndRow{{"ChannelsNotLast"}, With(Small().Channels(2).Z(2).FramesSharedByChannels()), AskForImage},
        EndRow{{"Compression"}, With(Small().InDocument().TiffCompression(5)), AskForChannel},
        EndRow{{"CompressionOfAStore"}, With(Small().InTiffStore().TiffCompression(5)), AskForChannel},
        EndRow{{"ComponentType"}, With(Small().Raw(static_cast<ComponentType::E>(99))), AskForChannel},
        EndRow{{"Palette"}, With(Small().ColorSpace(StoreColorSpace::Palette)), AskForChannel},
        EndRow{
            {"ColourSpace"}, With(Small().Jpeg(3).ColorSpace(StoreColorSpace::Hsv).ComponentOrder(-1)), AskForChannel},
        EndRow{{"SizeOfPixels"}, With(Small().Raw(ComponentType::Uint32, 3).WithoutDisplayLimits()), AskForChannel},
        EndRow{{"ShapeClassInXml"},
               With(Small().LayerBlob(Regions({CRegion("xv.other", "", {{1, 2}})}).AsXml())),
               AskForRegions},
        EndRow{{"ShapeClassInTags"},
               With(Small().LayerBlob(Regions({CRegion(ShapeClass::Origin, "", {{1, 2}})}).AsTree())),
               AskForRegions},
        EndRow{{"TilesInJpegWithTablesApart"},
               With(Small().InDocument().TiffCompression(7).JpegTables({1, 2, 3, 4, 5})),
               AskForBytes},
        EndRow{{"CompressionOfTheThumbnail"},
               With(Small()).FirstDirectory(CTiffDirectory(8, 8).Compression(32773).Data({BytesOf("coded")})),
               AskForThumbnail}),
    NameOfRow());

} // namespace
