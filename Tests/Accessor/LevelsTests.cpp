// The levels of a group and the areas of a level.

#include "Tests/Accessor/Slide.h"

using namespace SlideOfTest;

namespace
{

class LevelsOfAGroup : public Slide
{
};

TEST_F(LevelsOfAGroup, AreCountedFromTheFinestToTheCoarsest)
{
    Open(Stack(1).Size(1000, 700).Tiles(256, 256).Levels(3));
    EXPECT_EQ(NumOfLevels(Group()), 3);
}

TEST_F(LevelsOfAGroup, AreAsLargeAsTheirTiles)
{
    Open(Stack(1).Size(1000, 400).Tiles(256, 200).Levels(2));
    EXPECT_EQ(LevelRect(Group(), 0), (CMN_RECT{0, 0, 1024, 400}));
    EXPECT_EQ(LevelRect(Group(), 1), (CMN_RECT{0, 0, 512, 200}));
}

TEST_F(LevelsOfAGroup, LieWhereTheImageLiesAmongTheOthers)
{
    Open(Document()
             .With(Stack(1).Size(512, 512).Levels(2).Scale(0.5, 0.5).Origin(-100, 20))
             .With(Stack(2).Size(512, 512).Levels(2).Scale(0.5, 0.5).Origin(0, 70)));
    EXPECT_EQ(LevelRect(Group(0), 0), (CMN_RECT{0, 0, 512, 512}));
    EXPECT_EQ(LevelRect(Group(1), 0), (CMN_RECT{200, 100, 512, 512}));
    EXPECT_EQ(LevelRect(Group(1), 1), (CMN_RECT{100, 50, 256, 256}));
}

TEST_F(LevelsOfAGroup, HaveASizeOnlyWithinTheirNumber)
{
    Open(Stack(1).Levels(1));
    CMN_RECT rect = {1, 2, 3, 4};
    for (const int level : {-1, 1, 100})
        EXPECT_THAT(
            MessagesOf([&] { EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(), level, &rect), AC_RESULT_INVALID_PARAM); }),
            Not(Contains(HasSubstr("level"))));
    EXPECT_EQ(rect, (CMN_RECT{1, 2, 3, 4}));
}

/// A pyramid whose level 1 is not stored.
Stack StackWithAGap()
{
    return Stack(1).Size(1000, 400).Level(0, Columns(0, 3), Rows(0, 1)).Level(2, Columns(0, 0), Rows(0, 0));
}

class LevelThatIsMissing : public Slide
{
protected:
    void SetUp() override { Open(StackWithAGap()); }
};

TEST_F(LevelThatIsMissing, CountsAsALevel)
{
    EXPECT_EQ(NumOfLevels(Group()), 3);
    EXPECT_EQ(NumOfAreas(Group(), 2), 1);
}

TEST_F(LevelThatIsMissing, HasNoSize)
{
    CMN_RECT rect = {};
    const AC_HGROUP group = Group();
    EXPECT_THAT(
        MessagesOf([&] { EXPECT_EQ(Call(_AC_GetLevelImageSize, group, 1, &rect), AC_RESULT_PROPERTY_NOT_FOUND); }),
        ElementsAre("Error: Data for the specified level 1 does not exist!"));
}

TEST_F(LevelThatIsMissing, HasNoAreas)
{
    INT32 count = 7;
    const AC_HGROUP group = Group();
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(Call(_AC_GetNumOfArea, group, 1, &count), AC_RESULT_PROPERTY_NOT_FOUND); }),
                ElementsAre("Error: Data for the specified level 1 does not exist!"));
    EXPECT_EQ(count, 0);
    AC_HAREA area = nullptr;
    EXPECT_EQ(Call(_AC_GetArea, group, 1, UINT64{0}, &area), AC_RESULT_FAILURE);
}

class AreasOfALevel : public Slide
{
};

TEST_F(AreasOfALevel, AreItsRowsTimesItsColumns)
{
    Open(Stack(1).Size(1000, 400).Tiles(256, 256).Levels(2));
    EXPECT_EQ(NumOfAreas(Group(), 0), 8);
    EXPECT_EQ(NumOfAreas(Group(), 1), 2);
}

TEST_F(AreasOfALevel, AreNumberedRowByRow)
{
    Open(Stack(1).Size(600, 600).Tiles(256, 256));
    const AC_HGROUP group = Group();
    EXPECT_EQ(PositionOf(Area(group, 0, 0)), (CMN_RECT{0, 0, 256, 256}));
    EXPECT_EQ(PositionOf(Area(group, 0, 1)), (CMN_RECT{256, 0, 256, 256}));
    EXPECT_EQ(PositionOf(Area(group, 0, 3)), (CMN_RECT{0, 256, 256, 256}));
    EXPECT_EQ(PositionOf(Area(group, 0, 8)), (CMN_RECT{512, 512, 256, 256}));
}

TEST_F(AreasOfALevel, BeginAtTheSmallestColumnAndRow)
{
    Open(Stack(1).Size(600, 600).Level(0, Columns(2, 3), Rows(1, 2)));
    const AC_HGROUP group = Group();
    EXPECT_EQ(NumOfAreas(group, 0), 4 * 3); // columns and rows count from 0 all the same
    EXPECT_EQ(PositionOf(Area(group, 0, 0)), (CMN_RECT{512, 256, 256, 256}));
    EXPECT_EQ(BodyOf(Tile(0, 0)), Stack(1).TileBytes(0, 2, 1));
    EXPECT_EQ(Tile(0, 2), nullptr); // column 4
    EXPECT_EQ(BodyOf(Tile(0, 5)), Stack(1).TileBytes(0, 3, 2));
}

TEST_F(AreasOfALevel, BeginWhereTheTilesOfTheLastFrameDo)
{
    const Stack stack = Stack(1).Size(600, 256).Z(2).Missing([](const CTilePlace& place)
                                                             { return place.At.Z == 1 && place.Column == 0; });
    Open(stack);
    EXPECT_EQ(NumOfAreas(Group(), 0), 3);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(0)})), stack.TileBytes(0, 1, 0, {.Z = 0}));
}

TEST_F(AreasOfALevel, LieBeforeThePictureWithPositionsThatWrap)
{
    Open(Stack(1).Size(1000, 400).Level(0, Columns(-1, 3), Rows(-2, 1)));
    const AC_HGROUP group = Group();
    EXPECT_EQ(NumOfAreas(group, 0), 20);
    EXPECT_EQ(PositionOf(Area(group, 0, 0)), (CMN_RECT{0xFFFFFF00, 0xFFFFFE00, 256, 256}));
    EXPECT_EQ(BodyOf(Tile(0, 0)), Stack(1).TileBytes(0, -1, -2));
    EXPECT_EQ(RectOf(Tile(0, 0)), (CMN_RECT{0xFFFFFF00, 0xFFFFFE00, 256, 256}));
}

TEST_F(AreasOfALevel, HaveOneHandleEach)
{
    Open(Stack(1).Size(600, 600));
    EXPECT_EQ(Area(Group(), 0, 4), Area(Group(), 0, 4));
    EXPECT_NE(Area(Group(), 0, 4), Area(Group(), 0, 5));
}

TEST_F(AreasOfALevel, BehindTheLastHoldNoImages)
{
    Open(Stack(1).Size(600, 600));
    const AC_HAREA area = Area(Group(), 0, 9);
    EXPECT_EQ(PositionOf(area), (CMN_RECT{0, 768, 256, 256}));
    EXPECT_EQ(Image(area), nullptr);
    EXPECT_EQ(Image(Area(Group(), 0, 0xFFFFFFFE)), nullptr);
}

TEST_F(AreasOfALevel, HaveNumbersOf32Bits)
{
    Open(Stack(1));
    const AC_HGROUP group = Group();
    AC_HAREA area = nullptr;
    EXPECT_EQ(Call(_AC_GetArea, group, 0, UINT64{0xFFFFFFFF}, &area), AC_RESULT_FAILURE);
    EXPECT_EQ(Call(_AC_GetArea, group, 0, ~UINT64{0}, &area), AC_RESULT_FAILURE);
    EXPECT_EQ(area, nullptr);
}

struct LevelRow : Row
{
    int Level;
    AC_Result ResultOfArea;
    std::vector<std::string> MessagesOfArea;
    AC_Result ResultOfCount;
};

class LevelNumber : public Slide, public testing::WithParamInterface<LevelRow>
{
};

TEST_P(LevelNumber, MustBeThatOfALevel)
{
    Open(Stack(1).Size(1000, 1000).Levels(3));
    const AC_HGROUP group = Group();
    AC_HAREA area = nullptr;
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_EQ(MessagesOf([&] { result = Call(_AC_GetArea, group, GetParam().Level, UINT64{0}, &area); }),
              GetParam().MessagesOfArea);
    EXPECT_EQ(result, GetParam().ResultOfArea);
    INT32 count = 0;
    EXPECT_EQ(Call(_AC_GetNumOfArea, group, GetParam().Level, &count), GetParam().ResultOfCount);
}

INSTANTIATE_TEST_SUITE_P(
    Levels, LevelNumber,
    testing::Values(
        LevelRow{{"Last"}, 2, AC_RESULT_SUCCESS, {}, AC_RESULT_SUCCESS},
        LevelRow{{"BehindTheLast"},
                 3,
                 AC_RESULT_INVALID_PARAM,
                 {"Error: param levelID was passed in as 3, which exceeds the maximum allowed levelID 2!"},
                 AC_RESULT_FAILURE},
        LevelRow{{"FarBehind"},
                 0x7FFFFFFF,
                 AC_RESULT_INVALID_PARAM,
                 {"Error: param levelID was passed in as 2147483647, which exceeds the maximum allowed levelID 2!"},
                 AC_RESULT_FAILURE},
        LevelRow{{"Negative"},
                 -1,
                 AC_RESULT_INVALID_PARAM,
                 {"Error: param levelID/areaID was specified as negative value!"},
                 AC_RESULT_FAILURE}),
    NameOfRow());

} // namespace
