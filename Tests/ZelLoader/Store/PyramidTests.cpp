// The pyramid of a stack that lies in a tile store.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

Stack Small()
{
    return Stack(1).Size(20, 20).Tiles(8, 8);
}

class Pyramid : public ZelSlide
{
protected:
    static CTileStore& PutLevels(Document& document, const std::vector<int32_t>& levels)
    {
        CTileStore& store = document.Store(1);
        const ByteString body = store.Tiles.front().Body;
        store.Tiles.clear();
        for (size_t number = 0; number < levels.size(); ++number)
            store.Add(static_cast<int32_t>(number), 0, {0}, levels[number], body);
        return store;
    }
    /// A document of one row of tiles, the nth on the nth level of the list.
    static Document WithLevels(const std::vector<int32_t>& levels)
    {
        Document document;
        document.With(Stack(1).Size(8, 8).Tiles(8, 8));
        PutLevels(document, levels);
        return document;
    }
    /// Which levels are there.
    static std::vector<bool> LevelsOf(Zel::CZelMultiDimImage& image)
    {
        std::vector<bool> levels;
        for (const auto& level : image.DeepZoomPyramidLevels())
            levels.push_back(level != nullptr);
        return levels;
    }
};

TEST_F(Pyramid, HasALevelForEachGroupOfRecords)
{
    EXPECT_THAT(LevelsOf(ReadImage(WithLevels({0, 0, 1, 2}))), ElementsAre(true, true, true));
}

TEST_F(Pyramid, HasNothingWhereALevelIsLeftOut)
{
    EXPECT_THAT(LevelsOf(ReadImage(WithLevels({0, 0, 2}))), ElementsAre(true, false, true));
    EXPECT_THAT(LevelsOf(ReadImage(WithLevels({0, 3, 5}))), ElementsAre(true, false, false, true, false, true));
}

struct LevelsRow : Row
{
    std::vector<int32_t> Levels;
    AC_Result Result;
};

class LevelsOfRecords : public Pyramid, public testing::WithParamInterface<LevelsRow>
{
};

TEST_P(LevelsOfRecords, RiseFromZeroToNinetyNine)
{
    EXPECT_EQ(ResultOfOpening(WithLevels(GetParam().Levels)), GetParam().Result);
}

INSTANTIATE_TEST_SUITE_P(Levels, LevelsOfRecords,
                         testing::Values(LevelsRow{{"Rising"}, {0, 1, 2}, AC_RESULT_SUCCESS},
                                         LevelsRow{{"FirstLeftOut"}, {1}, AC_RESULT_FAILURE},
                                         LevelsRow{{"FirstLeftOutOfSeveral"}, {1, 2}, AC_RESULT_FAILURE},
                                         LevelsRow{{"Falling"}, {0, 1, 0}, AC_RESULT_FAILURE},
                                         LevelsRow{{"FallingAtOnce"}, {1, 0}, AC_RESULT_FAILURE},
                                         LevelsRow{{"Greatest"}, {0, 99}, AC_RESULT_SUCCESS},
                                         LevelsRow{{"OneTooGreat"}, {0, 100}, AC_RESULT_FAILURE},
                                         LevelsRow{{"GreatestOfAll"}, {0, 0x7FFFFFFF}, AC_RESULT_FAILURE},
                                         LevelsRow{{"Negative"}, {-1, 0}, AC_RESULT_FAILURE},
                                         LevelsRow{{"NegativeBehindZero"}, {0, -1}, AC_RESULT_FAILURE}),
                         NameOfRow());

TEST_F(Pyramid, HalvesItsWidthFromLevelToLevelAndRoundsUp)
{
    auto& image = ReadImage(Stack(1).Size(1001, 8).Tiles(8, 8));
    const std::vector<uint32_t> widths = {1001, 501, 251, 126, 63, 32};
    for (uint32_t level = 0; level < widths.size(); ++level)
        EXPECT_EQ(image.PixelWidthForLevel(level), widths[level]);
}

TEST_F(Pyramid, ZoomsByTheWidthsOfItsLevels)
{
    auto& image = ReadImage(Stack(1).Size(1001, 100).Tiles(256, 256).Levels(3));
    const auto& levels = image.DeepZoomPyramidLevels();
    EXPECT_EQ(levels[0]->ZoomoutFactor(), 1);
    EXPECT_EQ(levels[1]->ZoomoutFactor(), 1001.0 / 501);
    EXPECT_EQ(levels[2]->ZoomoutFactor(), 1001.0 / 251);
    EXPECT_EQ(image.ZoomoutFactor(), 1);
}

TEST_F(Pyramid, HasLevelsOfNumbersOfTwoDigits)
{
    class Level : public CIA::CDeepZoomPyramidLevel
    {
    public:
        using CDeepZoomPyramidLevel::CDeepZoomPyramidLevel;
        uint16_t getTiffIfd() override { return 0; }
        bool NumOfCols_init(uint32_t& varToInit) override
        {
            varToInit = 7;
            return ++NumOfCalls > 1;
        }
        bool NumOfRows_init(uint32_t&) override { return false; }
        bool DeepZoomTilesAreTogetherOnDisk() override { return true; }
        int NumOfCalls = 0;
    };
    auto& image = ReadImage(Stack(1).Size(8, 8).Tiles(8, 8));
    EXPECT_EQ(Level(99, image).ID(), 99);
    EXPECT_FAILED_ASSERTION(Level(100, image));
    Level level(0, image);
    EXPECT_EQ(level.NumOfCols(), 0xFFFFFFFF) << "the first try fails";
    EXPECT_EQ(level.NumOfCols(), 7u) << "and the next one is made";
    EXPECT_EQ(level.NumOfRows(), 0xFFFFFFFF);
}

// Columns and rows.

struct GridRow : Row
{
    Columns ColumnRange;
    Rows RowRange;
    uint32_t NumOfCols;
    uint32_t NumOfRows;
};

class Grid : public Pyramid, public testing::WithParamInterface<GridRow>
{
};

TEST_P(Grid, CountsFromZeroOrFromTheSmallest)
{
    auto& image = ReadImage(Small().Size(48, 48).Level(0, GetParam().ColumnRange, GetParam().RowRange));
    const auto& level = image.DeepZoomPyramidLevels().front();
    EXPECT_EQ(level->NumOfCols(), GetParam().NumOfCols);
    EXPECT_EQ(level->NumOfRows(), GetParam().NumOfRows);
}

INSTANTIATE_TEST_SUITE_P(Ranges, Grid,
                         testing::Values(GridRow{{"FromZero"}, Columns(0, 3), Rows(0, 2), 4, 3},
                                         GridRow{{"FromBelowZero"}, Columns(-1, 3), Rows(-2, 1), 5, 4},
                                         GridRow{{"FromAboveZero"}, Columns(2, 5), Rows(1, 4), 6, 5},
                                         // The greatest is -3, the smallest -5: 2 behind it, and one more.
                                         GridRow{{"AllBelowZero"}, Columns(-5, -3), Rows(-2, -2), 3, 1}),
                         NameOfRow());

TEST_F(Pyramid, CountsNoMoreThan31BitsOfColumns)
{
    const std::vector<std::vector<int32_t>> ends = {{-0x7FFFFFFF - 1, 0x7FFFFFFF}, {0, 0x7FFFFFFF}};
    for (const auto& columns : ends)
    {
        Document document;
        document.With(Stack(1).Size(8, 8).Tiles(8, 8));
        CTileStore& store = document.Store(1);
        const ByteString body = store.Tiles.front().Body;
        store.Tiles.clear();
        for (const int32_t column : columns)
            store.Add(column, 0, {0}, 0, body);
        Open(std::move(document));
        INT32 count = 0;
        AC_HAREA area = nullptr;
        EXPECT_EQ(Call(_AC_GetNumOfArea, Group(), 0, &count), AC_RESULT_FAILURE);
        EXPECT_EQ(Call(_AC_GetArea, Group(), 0, UINT64{0}, &area), AC_RESULT_FAILURE);
    }
}

const std::string NoColumnsAreLeftOut = "columns and ignoring the completely transparent ones.";

struct ExcessRow : Row
{
    uint32_t Width;
    std::string Columns;
};

class MatrixLargerThanThePicture : public Pyramid, public testing::WithParamInterface<ExcessRow>
{
};

TEST_P(MatrixLargerThanThePicture, IsToldAndReportedWhole)
{
    auto& image = ReadImage(Small().Size(GetParam().Width, 8).Level(0, Columns(0, 5), Rows(0, 0)));
    const auto& level = image.DeepZoomPyramidLevels().front();
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(level->NumOfCols(), 6u); }),
                ElementsAre("STRANGE: Level 0's last " + GetParam().Columns + " column(s) are completely transparent?",
                            "Reporting back 6 " + NoColumnsAreLeftOut));
}

INSTANTIATE_TEST_SUITE_P(Widths, MatrixLargerThanThePicture,
                         testing::Values(ExcessRow{{"ByOneTile"}, 40, "1"}, ExcessRow{{"ByThreeTiles"}, 24, "3"},
                                         ExcessRow{{"ByLessThanTwoTiles"}, 33, "1"},
                                         // 8 pixels short: the difference wraps
                                         ExcessRow{{"SmallerThanThePicture"}, 56, "536870911"}),
                         NameOfRow());

TEST_F(Pyramid, SaysNothingOfAMatrixThatIsLessThanATileLarger)
{
    auto& image = ReadImage(Small().Size(41, 8).Level(0, Columns(0, 5), Rows(0, 0)));
    EXPECT_THAT(MessagesOf([&] { image.DeepZoomPyramidLevels().front()->NumOfCols(); }), IsEmpty());
}

TEST_F(Pyramid, SaysOnceThatThereAreTooManyRows)
{
    auto& image = ReadImage(Small().Size(8, 8).Level(0, Columns(0, 0), Rows(0, 3)));
    const auto& level = image.DeepZoomPyramidLevels().front();
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(level->NumOfRows(), 4u); }),
                ElementsAre("STRANGE: Level 0's last rows(s) are completely transparent?"));
}

TEST_F(Pyramid, SaysNothingOfHigherLevels)
{
    auto& image = ReadImage(Small().Size(8, 8).Level(0, Columns(0, 0), Rows(0, 0)).Level(1, Columns(0, 5), Rows(0, 5)));
    const auto& level = image.DeepZoomPyramidLevels().back();
    EXPECT_THAT(MessagesOf(
                    [&]
                    {
                        EXPECT_EQ(level->NumOfCols(), 6u);
                        EXPECT_EQ(level->NumOfRows(), 6u);
                    }),
                IsEmpty());
}

TEST_F(Pyramid, OfAnImageInDirectoriesHasOneLevel)
{
    Open(Stack(1).Size(20, 20).Tiles(16, 16).InDocument());
    EXPECT_EQ(NumOfLevels(Group()), 1);
    EXPECT_EQ(NumOfAreas(Group(), 0), 4);
    EXPECT_EQ(LevelRect(Group(), 0), (CMN_RECT{0, 0, 32, 32}));
}

TEST_F(Pyramid, OfAnImageInStripsHasOneColumn)
{
    Open(Stack(1).Size(20, 20).InDocument(8));
    EXPECT_EQ(NumOfAreas(Group(), 0), 3);
    Open(Stack(1).Size(20, 20).InDocument(Stack::OneStrip));
    EXPECT_EQ(NumOfAreas(Group(), 0), 1);
}

// A last frame without tiles has no corner to count from.

TEST_F(Pyramid, HasNoAreasOnALevelThatTheLastFrameLacks)
{
    Open(Stack(1).Size(24, 24).Tiles(8, 8).Levels(2).Z(2).Missing([](const CTilePlace& place)
                                                                  { return place.At.Z == 1 && place.Level == 1; }));
    EXPECT_EQ(NumOfAreas(Group(), 1), 4);
    AC_HAREA area = nullptr;
    EXPECT_EQ(Call(_AC_GetArea, Group(), 1, UINT64{0}, &area), AC_RESULT_FAILURE);
    EXPECT_NE(Area(Group(), 0, 0), nullptr);
}

} // namespace
