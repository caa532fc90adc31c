// The groups of a document, and what is given back.

#include "Tests/Accessor/Slide.h"

using namespace SlideOfTest;

namespace
{

class GroupsOfADocument : public Slide
{
protected:
    /// A stack whose tiles say which one it is.
    static Stack Labelled(uint32_t id) { return Stack(id).Contents(Labels(id)); }

    void ExpectGroupIsStack(int number, uint32_t id)
    {
        EXPECT_EQ(BodyOf(Image(Area(Group(number), 0, 0))), Labelled(id).TileBytes(0, 0, 0))
            << "group " << number << " is not stack " << id;
    }
};

TEST_F(GroupsOfADocument, AreNumberedInTheOrderOfTheirIdsWithoutGaps)
{
    Open(Document().With(Labelled(30)).With(Labelled(7)).With(Labelled(12)));
    ASSERT_EQ(NumOfGroups(Doc()), 3);
    ExpectGroupIsStack(0, 7);
    ExpectGroupIsStack(1, 12);
    ExpectGroupIsStack(2, 30);
}

TEST_F(GroupsOfADocument, HaveOneHandleEach)
{
    Open(Document().With(Stack(1)).With(Stack(2)));
    EXPECT_EQ(Group(1), Group(1));
    EXPECT_NE(Group(0), Group(1));
}

TEST_F(GroupsOfADocument, LogTheirIdAndNameWhenAskedFor)
{
    Open(Stack(5).Name("Kidney"));
    EXPECT_THAT(MessagesOf([&] { Group(0); }),
                ElementsAre("Info to help analyze test log: The CIA MultiDimImage ID is 5",
                            "Info to help test against Image Viewer: The MultiDimImage name is 'Kidney'"));
}

struct NumberRow : Row
{
    int Number;
    std::string Message;
};

class NoGroupNumber : public Slide, public testing::WithParamInterface<NumberRow>
{
};

TEST_P(NoGroupNumber, IsRefused)
{
    Open(Document().With(Stack(1)).With(Stack(2)));
    AC_HGROUP group = nullptr;
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_THAT(MessagesOf([&] { result = Call(_AC_GetGroup, Doc(), GetParam().Number, &group); }),
                ElementsAre(GetParam().Message));
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(group, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Numbers, NoGroupNumber,
                         testing::Values(NumberRow{{"BehindTheLast"}, 2, "Error: brixGroupID is too large!"},
                                         NumberRow{{"Greatest"}, 0x7FFFFFFF, "Error: brixGroupID is too large!"},
                                         NumberRow{{"Negative"}, -1, "Error: brixGroupID is negative!"},
                                         NumberRow{{"Least"}, -0x7FFFFFFF - 1, "Error: brixGroupID is negative!"}),
                         NameOfRow());

TEST_F(GroupsOfADocument, AreNoneWithoutImages)
{
    Open(Document());
    AC_HGROUP group = nullptr;
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(Call(_AC_GetGroup, Doc(), 0, &group), AC_RESULT_INVALID_PARAM); }),
                ElementsAre("Error: brixGroupID is too large!"));
}

// Giving back.

TEST_F(GroupsOfADocument, AreStillThereAfterTheyWereGivenBack)
{
    Open(Stack(1));
    const AC_HGROUP group = Group();
    const AC_HAREA area = Area(group, 0, 0);
    const AC_HIMAGE image = Image(area);
    EXPECT_EQ(Call(_AC_ReleaseImage, image), AC_RESULT_SUCCESS);
    EXPECT_EQ(Call(_AC_ReleaseArea, area), AC_RESULT_SUCCESS);
    EXPECT_EQ(Call(_AC_ReleaseGroup, group), AC_RESULT_SUCCESS);
    EXPECT_EQ(BodyOf(image), Stack(1).TileBytes(0, 0, 0));
    EXPECT_EQ(Area(group, 0, 0), area);
    EXPECT_EQ(Image(area), image);
}

TEST(Releasing, TakesAnythingButNothing)
{
    int somewhere = 0;
    for (const auto release : {_AC_ReleaseGroup, _AC_ReleaseArea, _AC_ReleaseImage})
    {
        EXPECT_EQ(Call(release, static_cast<void*>(&somewhere)), AC_RESULT_SUCCESS);
        EXPECT_EQ(Call(release, static_cast<void*>(nullptr)), AC_RESULT_INVALID_PARAM);
    }
}

class ClosingAll : public Slide
{
protected:
    size_t NumOfFilesKeptOpen() const { return TestSupport::NumOfOpenFiles() - _filesBefore; }

    const size_t _filesBefore = TestSupport::NumOfOpenFiles();
};

TEST_F(ClosingAll, GivesBackTheAreaAndTheGroupAndClosesTheDocument)
{
    Document().With(Stack(1)).WriteTo(Folder().Path() / "slide.zel");
    AC_HFILE doc = nullptr;
    ASSERT_EQ(Call(_AC_Open, FileName().c_str(), 0, &doc), AC_RESULT_SUCCESS);
    const AC_HGROUP group = GroupOf(doc, 0);
    const AC_HAREA area = Area(group, 0, 0);
    EXPECT_GT(NumOfFilesKeptOpen(), 0u);
    EXPECT_EQ(Call(ReleaseAndClose, area, group, doc), AC_RESULT_SUCCESS);
    EXPECT_EQ(NumOfFilesKeptOpen(), 0u);
}

TEST_F(ClosingAll, PassesOverWhatIsNotGiven)
{
    EXPECT_EQ(Call(ReleaseAndClose, nullptr, nullptr, nullptr), AC_RESULT_SUCCESS);
    Open(Stack(1));
    EXPECT_EQ(Call(ReleaseAndClose, nullptr, Group(), nullptr), AC_RESULT_SUCCESS);
    EXPECT_EQ(NumOfGroups(Doc()), 1);
}

} // namespace
