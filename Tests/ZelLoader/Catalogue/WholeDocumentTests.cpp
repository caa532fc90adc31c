#include "SampleDocuments/Document.h"
#include "Tests/ZelLoader/TagTree/TreeOfTest.h"
#include "ZelLoader/Catalogue/ZELFormat.h"

using namespace TreeOfTest;
using testing::ElementsAre;
using namespace Zel;

namespace
{

/// The views of a document as the sample writer makes it.
class CViewsOf
{
public:
    explicit CViewsOf(Document document) : Tree(document.File()), MetaData(Tree.Root.get()) {}

    CZelMetaDataForImgColl& ImgColl() { return *MetaData.ImgColl(); }
    CZelMetaDataForMultiDimImg& Image(size_t n) { return *ImgColl().MultiDimImgs()->at(n); }

    CTree Tree;
    CZelImgDocMetaData MetaData;
};

CViewsOf TwoStacks()
{
    return CViewsOf(Document()
                        .With(Stack(5).Name("first").Z(3, 10, 1.5).Channels({"DAPI", "FITC"}))
                        .With(Stack(9).Name("second").InDocument()));
}

TEST(WholeDocument, IsReadWithoutAWarning)
{
    EXPECT_THAT(TwoStacks().Tree.Log, Not(HasSubstr("arning")));
}

TEST(WholeDocument, ShowsItsStacksAndHowTheyAreDisplayed)
{
    CViewsOf document = TwoStacks();
    ASSERT_EQ(document.ImgColl().MultiDimImgs()->size(), 2u);
    EXPECT_EQ(document.Image(0).StackID(), 5u);
    EXPECT_STREQ(document.Image(1).MultiDimImgProps()->ImgStackName()->Arr, L"second");
    const auto* layers = document.ImgColl().DisplayProcessFlow()->DispLayers();
    ASSERT_EQ(layers->size(), 2u);
    EXPECT_EQ(layers->back()->StackIdx(), 1u);
    EXPECT_EQ(*layers->back()->DispChannels()->front()->StackToBeDisplayed(), 9);
}

TEST(WholeDocument, ShowsWhereFramesAreKept)
{
    CViewsOf document = TwoStacks();
    CZelMetaDataForImgFrame& inStore = *document.Image(0).ImgFrames()->front();
    CZelMetaDataForImgFrame& inDirectory = *document.Image(1).ImgFrames()->front();
    EXPECT_NE(inStore.KorFile(), nullptr);
    EXPECT_EQ(inStore.FrameTiffIfd(), nullptr);
    EXPECT_EQ(inDirectory.KorFile(), nullptr);
    ASSERT_NE(inDirectory.FrameTiffIfd(), nullptr);
    EXPECT_EQ(inDirectory.FrameTiffIfd()->IdxOfTiffIfd(), 1u); // directory 0 is the document's own picture
    EXPECT_NE(dynamic_cast<CZelDataFieldForTiffIfd*>(inDirectory.FrameTiffIfd()->DbgNode()), nullptr);
}

TEST(WholeDocument, ShowsTheStepsOfItsDimensions)
{
    CViewsOf document = TwoStacks();
    const auto* dimensions = document.Image(0).Dimensions();
    ASSERT_EQ(dimensions->size(), 2u);
    CZelMetaDataForDimensionChannel& z = *dimensions->at(0)->DimensionChannels()->front();
    EXPECT_EQ(*z.ImgZStart()->ZStart(), 10);
    EXPECT_EQ(*z.ImgZIncrement()->ZStep(), 1.5);
    EXPECT_STREQ(z.ImgZIncrement()->ZStepUnits()->Arr, L"10^-6m^1");
    EXPECT_STREQ(dimensions->at(1)->DimensionChannels()->back()->ImgDimChannelName()->Arr, L"FITC");
}

TEST(WholeDocument, ShowsOneTagAsTwoThings)
{
    CViewsOf document = TwoStacks();
    CZelMetaDataForDispLayer& layer = *document.ImgColl().DisplayProcessFlow()->DispLayers()->front();
    CZelMetaDataForDimensionChannel& z = *document.Image(0).Dimensions()->front()->DimensionChannels()->front();
    EXPECT_EQ(layer.DispChannels()->front()->DbgNode()->Tag(), z.ImgZIncrement()->DbgNode()->Tag());
}

TEST(WholeDocument, ShowsBlobsByTheirNodes)
{
    Document document;
    document.With(Stack(1));
    const ByteString payload = BytesOf("payload");
    document.Frame(1).Add(Blob(6, 1, payload)).Add(Blob(7, 1, payload));
    document.StackVolume(1).Add(Blob(8, 1, payload));
    document.Volume({2000}).Add(Blob(9, 1, payload));
    CViewsOf views(document);
    const auto idOf = [](const CZelDataFieldNodeWrapper& view)
    { return dynamic_cast<CZelDataFieldForBlob&>(*view.DbgNode()).BlobId(); };
    const auto* blobsOfFrame = views.Image(0).ImgFrames()->front()->FrameBlobs();
    ASSERT_EQ(blobsOfFrame->size(), 2u);
    EXPECT_EQ(idOf(*blobsOfFrame->front()), 6u);
    EXPECT_EQ(idOf(*blobsOfFrame->back()), 7u);
    EXPECT_EQ(idOf(*views.Image(0).ZelLayerBlobs()->at(0)), 8u);
    EXPECT_EQ(idOf(*views.ImgColl().ZelFileBlobs()->at(0)), 9u);
}

TEST(WholeDocument, KnowsADeviceByItsTag)
{
    Document document;
    document.With(Stack(1));
    document.StackProperties(1).Put(Volume(2043, {Volume(7, {Int32(120130, 3)})}));
    CViewsOf views(document);
    const auto* devices = views.Image(0).MultiDimImgProps()->StackLevelImgOpticalPath()->StackLevelDeviceIDs();
    ASSERT_EQ(devices->size(), 1u);
    EXPECT_EQ(devices->front()->DbgNode()->Tag(), 7u);
    EXPECT_EQ(*devices->front()->DeviceSubType(), 3);
}

TEST(WholeDocument, KeepsUnknownTagsInTheTree)
{
    Document document;
    document.With(Stack(1));
    document.StackVolume(1).Add(Int32(987654, 1));
    CViewsOf views(document);
    auto& node = dynamic_cast<CZelDataFieldForVolume&>(*views.Image(0).DbgNode());
    EXPECT_EQ(node.NumOfChildren(987654), 1u);
    EXPECT_EQ(views.Image(0).ImgFrames()->size(), 1u);
}

} // namespace
