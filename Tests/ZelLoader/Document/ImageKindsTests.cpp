// Which nodes of the image collection become images.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

class KindsOfImages : public ZelSlide
{
protected:
    static std::vector<uint32_t> IdsOf(const CIA::CMultiDimImages& images)
    {
        std::vector<uint32_t> ids;
        for (const auto& [id, image] : images)
            ids.push_back(id);
        return ids;
    }
};

TEST_F(KindsOfImages, AreStoresAndDirectories)
{
    Open(Document().With(Stack(1)).With(Stack(2).InDocument()));
    EXPECT_EQ(NumOfGroups(Doc()), 2);
    EXPECT_TRUE(ImageOf(0).UsesKorFile());
    EXPECT_FALSE(ImageOf(1).UsesKorFile());
    EXPECT_EQ(NumOfLevels(Group(1)), 1);
}

TEST_F(KindsOfImages, TakeAFrameThatIsBothForOneOfAStore)
{
    Document document;
    document.With(Stack(1));
    document.Frame(1).Add(TiffIfd(2016, 0));
    Open(std::move(document));
    EXPECT_TRUE(ImageOf().UsesKorFile());
    EXPECT_EQ(BodyOf(Tile(0, 0)), Stack(1).TileBytes(0, 0, 0));
}

TEST_F(KindsOfImages, LeaveOutVectorGraphics)
{
    Open(Document().With(Stack(1)).With(Stack(2).VectorGraphics()));
    EXPECT_EQ(NumOfGroups(Doc()), 1);
}

TEST_F(KindsOfImages, MayLeaveNone)
{
    Open(Document().With(Stack(1).VectorGraphics()).With(Stack(2).VectorGraphics()));
    EXPECT_EQ(NumOfGroups(Doc()), 0);
}

struct KindRow : Row
{
    std::function<void(CNode& frame)> Change;
};

class ImageOfNoKind : public ZelSlide, public testing::WithParamInterface<KindRow>
{
};

TEST_P(ImageOfNoKind, IsAFailure)
{
    Document document;
    document.With(Stack(1)).With(Stack(2));
    GetParam().Change(document.Frame(2));
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(
    Frames, ImageOfNoKind,
    testing::Values(KindRow{{"Nothing"}, [](CNode& frame) { frame.Drop(2018); }},
                    KindRow{{"VectorGraphicsAndStore"}, [](CNode& frame) { frame.Add(Volume(2017)); }},
                    KindRow{{"VectorGraphicsAndDirectory"},
                            [](CNode& frame) { frame.Drop(2018).Add(Volume(2017)).Add(TiffIfd(2016, 0)); }},
                    KindRow{{"AllThree"}, [](CNode& frame) { frame.Add(Volume(2017)).Add(TiffIfd(2016, 0)); }},
                    KindRow{{"TwoStores"}, [](CNode& frame) { frame.Add(Volume(2018)); }}),
    NameOfRow());

TEST_F(KindsOfImages, AreToldByTheFirstFrameAlone)
{
    Document document;
    document.With(Stack(1).Z(2));
    document.Frame(1, 1).Drop(2018);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_SUCCESS);
}

TEST_F(KindsOfImages, NeedAFrame)
{
    Document document;
    document.With(Stack(1)).With(Stack(2));
    document.StackVolume(2).Drop(2002);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

// Identity.

TEST_F(KindsOfImages, AreKeptByTheirIdsWhateverTheOrderOfTheFile)
{
    EXPECT_THAT(IdsOf(Read(Document().With(Stack(9)).With(Stack(0)).With(Stack(4))).MultiDimImages()),
                ElementsAre(0, 4, 9));
}

class TwoImagesOfOneId : public KindsOfImages
{
protected:
    static Document Twins(const Stack& first, const Stack& second)
    {
        Document document;
        document.With(first).With(second);
        document.StackVolume(2).SecondTag(1);
        return document;
    }
};

TEST_F(TwoImagesOfOneId, MakeACorruptFile)
{
    EXPECT_EQ(ResultOfOpening(Twins(Stack(1), Stack(2))), AC_RESULT_FILE_CORRUPT);
    EXPECT_EQ(ResultOfOpening(Twins(Stack(1).InDocument(), Stack(2))), AC_RESULT_FILE_CORRUPT);
    EXPECT_EQ(ResultOfOpening(Twins(Stack(1), Stack(2).InDocument())), AC_RESULT_FILE_CORRUPT);
    EXPECT_THAT(MessagesOfOpening(Twins(Stack(1), Stack(2))), Contains("Error: Duplicate multidim image ID 1!"));
}

TEST_F(TwoImagesOfOneId, AreToldBeforeTheDisplayFlowIsLookedAt)
{
    Document document = Twins(Stack(1), Stack(2));
    document.Volume({2000}).Drop(2011);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FILE_CORRUPT);
}

TEST_F(TwoImagesOfOneId, LeaveNoImagesAndAReasonAtEachTry)
{
    Zel::CZelImgDoc& doc = Read(Twins(Stack(1), Stack(2)));
    for (int i = 0; i < 2; ++i)
    {
        errno = 0;
        EXPECT_THAT(doc.MultiDimImages(), IsEmpty());
        EXPECT_EQ(errno, ENOEXEC);
    }
}

// Layers that are hidden.

TEST_F(KindsOfImages, LeaveOutAHiddenOneOfDirectories)
{
    Open(Document().With(Stack(1)).With(Stack(2).InDocument().Hidden()));
    EXPECT_EQ(NumOfGroups(Doc()), 1);
    EXPECT_TRUE(ImageOf().UsesKorFile());
}

TEST_F(KindsOfImages, LeaveOutAHiddenOneOfNoKind)
{
    Document document;
    document.With(Stack(1)).With(Stack(2).InDocument().Hidden());
    document.Frame(2).Drop(2016);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_SUCCESS);
}

TEST_F(KindsOfImages, NeedAFrameWhenTheyAreHiddenToo)
{
    Document document;
    document.With(Stack(1)).With(Stack(2).InDocument().Hidden());
    document.StackVolume(2).Drop(2002);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

using KindsOfImagesDeathTest = KindsOfImages;

TEST_F(KindsOfImagesDeathTest, HiddenInAStoreEndTheProcess)
{
    EXPECT_ENDS_THE_PROCESS(ResultOfOpening(Document().With(Stack(1)).With(Stack(2).Hidden())), ABORT_WAS_CALLED);
}

TEST_F(KindsOfImagesDeathTest, HiddenInAStoreThatIsMissingEndTheProcess)
{
    EXPECT_ENDS_THE_PROCESS(ResultOfOpening(Stack(1).WithoutStore().Hidden()), ABORT_WAS_CALLED);
}

TEST_F(KindsOfImages, HiddenInAStoreAreToldAfterAllOthersWereBuilt)
{
    Document document;
    document.With(Stack(1).Hidden()).With(Stack(2));
    document.Frame(2).Drop(2018);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

TEST_F(KindsOfImages, AreBuiltUnderAFlagThatSaysNotHidden)
{
    Open(Document().With(Stack(1).Hidden(false)).With(Stack(2)));
    EXPECT_EQ(NumOfGroups(Doc()), 2);
}

} // namespace
