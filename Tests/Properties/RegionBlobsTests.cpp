// Where regions of interest are kept, and which blobs hold any.

#include "SampleDocuments/Tags.h"
#include "Tests/Properties/RegionsOfTest.h"

#include <numeric>

using namespace SlideOfTest;

namespace
{

Regions One(const char* name)
{
    return Regions({Dot(name, {1, 2})});
}

TEST_F(RegionsOfModel, ComeFromFourPlacesInThisOrder)
{
    Document document;
    document
        .With(Stack(1)
                  .Z(2)
                  .Channels(2)
                  .ChannelBlob(1, One("second channel"))
                  .ChannelBlob(0, One("first channel").AsTree())
                  .FrameBlob(1, One("second frame"))
                  .FrameBlob(0, One("first frame").AsTree())
                  .LayerBlob(One("layer"))
                  .LayerBlob(One("layer again")))
        .FileBlob(One("document"));
    Open(document);
    EXPECT_THAT(Names(), ElementsAre("layer", "layer again", "first frame", "second frame", "first channel",
                                     "second channel", "document"));
    EXPECT_THAT(Ids(), ElementsAre("text 0", "text 1", "text 2", "text 3", "text 4", "text 5", "text 6"));
}

class FormOfABlob : public RegionsOfModel, public testing::WithParamInterface<bool>
{
protected:
    static Regions InForm(Regions regions) { return GetParam() ? regions.AsTree() : regions.AsXml(); }
};
INSTANTIATE_TEST_SUITE_P(Forms, FormOfABlob, testing::Bool(),
                         [](const auto& row) { return row.param ? "Tree" : "Xml"; });

TEST_P(FormOfABlob, OfTheDocumentServesAllItsStacks)
{
    Open(Document().With(Stack(1).LayerBlob(One("of 1"))).With(Stack(2)).FileBlob(InForm(One("of all"))));
    EXPECT_THAT(Names(0), ElementsAre("of 1", "of all"));
    EXPECT_THAT(Names(1), ElementsAre("of all"));
    EXPECT_THAT(Names(0), ElementsAre("of 1", "of all"));
}

/// A document whose blob of XML is met so many times, by a chain that leads back to it.
Document DocumentThatSharesABlob(uint32_t times)
{
    constexpr uint32_t OffsetOfFirstChild = 24; // from the volume's start
    Document document;
    document.With(Stack(1)).FileBlob(One("shared"));
    CNode& images = document.Volume({Tag::Collection});
    CNode blob = images.Child(Tag::Blob);
    images.Drop(Tag::Blob).Add(blob.Next(OffsetOfFirstChild));
    const size_t numOfChildren = images.Children().size();
    std::vector<size_t> order(numOfChildren); // the last of the chain, and the first in the file
    std::iota(order.begin() + 1, order.end(), size_t{0});
    order.front() = numOfChildren - 1;
    images.FileOrder(order).Count(static_cast<uint32_t>(numOfChildren) + times - 1);
    return document;
}

TEST_F(RegionsOfModel, OfABlobThatIsMetTwiceAreThereTwice)
{
    Open(DocumentThatSharesABlob(2));
    EXPECT_THAT(Names(), ElementsAre("shared", "shared"));
}

TEST_F(RegionsOfModel, OfABlobThatIsMetForMoreTextThanTheFileHasAreRefused)
{
    Open(DocumentThatSharesABlob(50));
    EXPECT_EQ(ResultOfList(), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfList(), AC_RESULT_FAILURE);
}

TEST_P(FormOfABlob, MayHoldNoRegion)
{
    Open(InForm(Regions()));
    EXPECT_THAT(Ids(), IsEmpty());
}

TEST_P(FormOfABlob, HoldsNamesOfAnyCharacters)
{
    Open(InForm(One("\u00fcber <b> & \u65e5\u672c")));
    EXPECT_THAT(Names(), ElementsAre("\u00fcber <b> & \u65e5\u672c"));
}

TEST_P(FormOfABlob, MayHoldANamelessRegion)
{
    Open(InForm(One("")));
    EXPECT_THAT(Names(), ElementsAre(""));
}

TEST_F(RegionsOfModel, MayBeNone)
{
    Open(Document().With(Stack(1)));
    EXPECT_EQ(ToldByArea(FirstArea(), L"AnalysisROIList"), (Told{{"id", {}}}));
}

// ---- Blobs of all kinds ----

class BlobOfMeasurements : public RegionsOfModel, public testing::WithParamInterface<uint32_t>
{
};

TEST_P(BlobOfMeasurements, IsRead)
{
    Open(One("spot").Id(GetParam()));
    EXPECT_THAT(Names(), ElementsAre("spot"));
}
INSTANTIATE_TEST_SUITE_P(Ids, BlobOfMeasurements, testing::Values(3U, 4U, 5U));

class BlobOfAnotherKind : public RegionsOfModel, public testing::WithParamInterface<uint32_t>
{
};

TEST_P(BlobOfAnotherKind, IsPassedOverWhateverItsVersion)
{
    Open(Document().With(
        Stack(1).LayerBlob(One("spot").Id(GetParam())).LayerBlob(Blob(GetParam(), 9, BytesOf("anything")))));
    EXPECT_THAT(Names(), IsEmpty());
}
INSTANTIATE_TEST_SUITE_P(Ids, BlobOfAnotherKind, testing::Values(0U, 1U, 2U, 6U, 7U));

TEST_F(RegionsOfModel, OfAVersionThatIsNotReadYetEndTheProcess)
{
    Open(One("spot").BlobVersion(5));
    EXPECT_ENDS_THE_PROCESS(ResultOfList(), "TODO(.|\n)*" ABORT_WAS_CALLED);
}

TEST_F(RegionsOfModel, OfAnUnknownVersionEndTheProcess)
{
    for (const uint32_t version : {0U, 2U, 6U, 9U})
    {
        Open(One("spot").BlobVersion(version));
        EXPECT_ENDS_THE_PROCESS(ResultOfList(), ABORT_WAS_CALLED);
    }
}

// ---- What a host is told of a region ----

TEST_F(RegionsOfModel, TellTheirNameTypeAndShape)
{
    Open(Document().With(Stack(1).LayerBlob(Regions({Rectangle("cell", {10, 20}, {30, 40})}))));
    EXPECT_EQ(Info(L"0"), (Told{{"name", {"text cell"}},
                                {"type", {"text CLIP"}},
                                {"shape", {"text POLYGON"}},
                                {"rotation", {"double 0"}},
                                {"data", {"point 10 20", "point 30 20", "point 30 40", "point 10 40"}}}));
}

TEST_F(RegionsOfModel, AreCountedInPixelsOfTheAreaThatIsAsked)
{
    Open(Document().With(
        Stack(1).Size(1024, 1024).Tiles(256, 256).Levels(3).LayerBlob(Regions({Dot("spot", {301.5, 41.5})}))));
    const auto at = [&](int level, UINT64 area) {
        return ToldByArea(Area(Group(), level, area), L"AnalysisROIInfo", {{L"roiId", L"0"}}).at("data");
    };
    EXPECT_THAT(at(0, 0), ElementsAre("point 301 41"));
    EXPECT_THAT(at(0, 1), ElementsAre("point 45 41"));    // 256 further right
    EXPECT_THAT(at(0, 4), ElementsAre("point 301 -215")); // 256 further down
    EXPECT_THAT(at(1, 0), ElementsAre("point 151 21"));   // 150.5 and 20.5, halves upwards
    EXPECT_THAT(at(2, 0), ElementsAre("point 75 10"));    // 75.25 and 10.25
}

TEST_F(RegionsOfModel, MayLieOutsideOfAllAreas)
{
    Open(Document().With(Stack(1).LayerBlob(Regions({Dot("spot", {-99.5, 1e9})}))));
    EXPECT_THAT(Info(L"0").at("data"), ElementsAre("point -100 1000000000"));
}

struct FarRow : Row
{
    CRegion Region;
};

class FarRegion : public RegionsOfModel, public testing::WithParamInterface<FarRow>
{
};

TEST_P(FarRegion, FailsAnAssertionWhenItIsAskedFor)
{
    Open(Document().With(Stack(1).LayerBlob(Regions({GetParam().Region}).AsTree())));
    EXPECT_THAT(Ids(), ElementsAre("text 0"));
    EXPECT_EQ(ResultOfSet(FirstArea(), L"AnalysisROIInfo", {{L"roiId", L"0"}}), AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(
    Points, FarRegion,
    testing::Values(FarRow{{"BeyondIntegers"}, Dot("far", {3e9, 0})}, FarRow{{"BeyondAll"}, Dot("far", {0, 1e300})},
                    FarRow{{"Infinite"}, Dot("far", {std::numeric_limits<double>::infinity(), 0})},
                    FarRow{{"NoNumber"}, Dot("far", {std::numeric_limits<double>::quiet_NaN(), 0})},
                    FarRow{{"CircleOnALine"}, ThreePointCircle("flat", {0, 0}, {1, 1}, {2, 2})},
                    FarRow{{"FlatRectangle"}, RotatedRectangle("flat", {0, 0}, {1, 2}, {2, 4})}),
    NameOfRow());

TEST_F(RegionsOfModel, AreFoundByNumbersInAnyNotation)
{
    Open(Document().With(Stack(1).LayerBlob(Regions({Dot("a", {1, 2}), Dot("b", {1, 2})}))));
    EXPECT_EQ(Info(L"0x1"), Info(L"1"));
}

TEST_F(RegionsOfModel, GiveTheSameSetAgainAndAgain)
{
    Open(Document().With(Stack(1).LayerBlob(Regions({Dot("a", {1, 2}), Dot("b", {1, 2})}))));
    const AC_HPROPERTY set = SetOf(FirstArea(), L"AnalysisROIInfo", {{L"roiId", L"1"}});
    SetOf(FirstArea(), L"AnalysisROIInfo", {{L"roiId", L"0"}});
    EXPECT_EQ(SetOf(FirstArea(), L"AnalysisROIInfo", {{L"roiId", L"1"}}), set);
}

} // namespace
