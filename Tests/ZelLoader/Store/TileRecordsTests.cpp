// The records of a binary tile store, and the indexes in them.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;
using Zel::CDecompressedKorTileIdx;

namespace
{

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

class TileRecords : public ZelSlide
{
protected:
    /// Opens a stack after `change` was done to its store.
    template <typename Change>
    AC_Result ResultOfOpeningChanged(const Stack& stack, Change change)
    {
        Document document;
        document.With(stack);
        change(document.Store(1));
        return ResultOfOpening(std::move(document));
    }
    std::vector<Zel::CKorTile> Records() const
    {
        std::vector<Zel::CKorTile> records;
        for (uint32_t number = 0; number < Store().KorTiles().Size(); ++number)
            records.push_back(Store().KorTiles()[number]);
        return records;
    }
};

TEST(IndexOfATile, HasASlotForEachDimension)
{
    const std::vector<std::pair<DimType, uint32_t>> slots = {{DimX, 0}, {DimY, 1}, {DimZ, 2}, {DimT, 3},
                                                             {DimC, 4}, {DimL, 5}, {DimP, 6}};
    for (const auto& [type, slot] : slots)
        EXPECT_EQ(CDecompressedKorTileIdx::Idx(type), slot);
    EXPECT_FAILED_ASSERTION(CDecompressedKorTileIdx::Idx(DimDummy));
}

TEST(IndexOfATile, IsWrittenWithAllItsSlots)
{
    const CDecompressedKorTileIdx idx{.ColIdx = -1, .RowIdx = 2, .ZIdx = 3, .TIdx = 4, .CIdx = 5, .LIdx = 6, .PIdx = 7};
    EXPECT_EQ(idx.ToString(), "{ColIdx=-1, RowIdx=2, ZIdx=3, TIdx=4, CIdx=5, LIdx=6, PIdx=7}");
}

TEST(IndexOfATile, NamesItsFrame)
{
    const CDecompressedKorTileIdx idx{.ZIdx = 3, .TIdx = 4, .CIdx = 5, .LIdx = 6};
    EXPECT_EQ(idx.FrameIdx(), CIA::CFrameIdx(3, 5, 6, 4));
}

TEST_F(TileRecords, HaveTheirElementsInTheOrderOfTheDimensions)
{
    Open(Small().Channels(2).T(3).Z(4).Lambda(5));
    const CDecompressedKorTileIdx last = Records().back().Idx;
    EXPECT_EQ(last.ToString(), "{ColIdx=0, RowIdx=0, ZIdx=3, TIdx=2, CIdx=1, LIdx=4, PIdx=0}");
}

TEST_F(TileRecords, AreKeptInTheOrderOfTheFile)
{
    const Stack stack = Small().Size(20, 8).Contents(BytesOfSize(1, 100));
    Open(stack);
    ASSERT_EQ(Records().size(), 3u);
    for (uint32_t number = 0; number < 3; ++number)
    {
        EXPECT_EQ(Records()[number].Idx.ColIdx, static_cast<int32_t>(number));
        EXPECT_EQ(Records()[number].BlockSize, 100u);
        EXPECT_EQ(Records()[number].BlockOffset, 64u + 172u + 100u * number);
    }
}

TEST_F(TileRecords, WithoutDimensionsDropTheirThirdElement)
{
    const auto change = [](CTileStore& store)
    {
        ASSERT_EQ(store.Tiles.front().Elements.size(), 4u);
        store.Tiles.front().Elements[2] = 12345;
    };
    EXPECT_EQ(ResultOfOpeningChanged(Small(), change), AC_RESULT_SUCCESS);
    EXPECT_EQ(Records().front().Idx.ToString(), "{ColIdx=0, RowIdx=0, ZIdx=0, TIdx=0, CIdx=0, LIdx=0, PIdx=0}");
}

TEST_F(TileRecords, WithoutDimensionsAndWithoutCountsDropTheirThirdElementToo)
{
    EXPECT_EQ(ResultOfOpening(Small().Counts({})), AC_RESULT_SUCCESS);
    EXPECT_EQ(Records().size(), 1u);
}

TEST_F(TileRecords, DropADummyBehindColumnAndRow)
{
    const Stack stack = Small().Dummy().Z(2);
    const auto change = [](CTileStore& store) { store.Tiles.front().Elements[2] = -1; };
    EXPECT_EQ(ResultOfOpeningChanged(stack, change), AC_RESULT_SUCCESS);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(1)})), stack.TileBytes(0, 0, 0, {.Z = 1}));
}

TEST_F(TileRecords, CannotDropADummyAnywhereElse)
{
    EXPECT_EQ(ResultOfOpening(Small().Z(2).Dummy()), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfOpening(Small().Z(2).Dummy().Channels(2)), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfOpening(Small().Dummy().Dummy()), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfOpening(Small().Z(1).Counts({1, 1})), AC_RESULT_FAILURE);
}

TEST_F(TileRecords, HaveNoElementForADummyThatIsNotCounted)
{
    const Stack stack = Small().Z(2).DummyWithoutCount().Channels(2);
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"1", {AtZ(1)})), stack.TileBytes(0, 0, 0, {.Z = 1, .C = 1}));
}

class CountOfElements : public TileRecords, public testing::WithParamInterface<uint32_t>
{
};

TEST_P(CountOfElements, MustBeThatOfTheDocument)
{
    const auto change = [](CTileStore& store) { store.Tiles.back().ElementCount = GetParam(); };
    EXPECT_EQ(ResultOfOpeningChanged(Small().Z(2).Channels(2), change),
              GetParam() == 5 ? AC_RESULT_SUCCESS : AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(Counts, CountOfElements, testing::Values(0, 1, 4, 5, 6, 0xFFFFFFFF));

// Dimensions that the records must fill.

TEST_F(TileRecords, MustReachTheEndOfEachDimension)
{
    Document document;
    document.With(Small().Name("Kidney").Z(5));
    document.Store(1).Tiles.pop_back();
    EXPECT_THAT(
        MessagesOfOpening(document),
        testing::IsSupersetOf({"Probable issue with 2001\\2003 or KOR Tile index logic!", "ZEL Layer name: 'Kidney'",
                               "dimension type = Z", "dim.NumOfPoints() = 5", "KOR maxDimIdx for this dimension = 3",
                               "MaxKorTileDimIndexes={ColIdx=0, RowIdx=0, ZIdx=3, TIdx=0, CIdx=0, LIdx=0, "
                               "PIdx=0}",
                               "expected: dim.NumOfPoints() == (maxIdx + 1)"}));
    EXPECT_EQ(ResultOfOpening(document), AC_RESULT_FAILURE);
}

TEST_F(TileRecords, TellWhatTheyLackInThisOrder)
{
    Document document;
    document.With(Small().Z(2));
    document.Store(1).Tiles.pop_back();
    auto messages = MessagesOfOpening(std::move(document));
    const auto first =
        std::find(messages.begin(), messages.end(), "Probable issue with 2001\\2003 or KOR Tile index logic!");
    ASSERT_GE(messages.end() - first, 7);
    EXPECT_EQ(
        (std::vector<std::string>(first + 1, first + 7)),
        (std::vector<std::string>{"ZEL Layer name: 'Stack 1'", "dimension type = Z", "dim.NumOfPoints() = 2",
                                  "KOR maxDimIdx for this dimension = 0",
                                  "MaxKorTileDimIndexes={ColIdx=0, RowIdx=0, ZIdx=0, TIdx=0, CIdx=0, LIdx=0, PIdx=0}",
                                  "expected: dim.NumOfPoints() == (maxIdx + 1)"}));
}

struct DimensionRow : Row
{
    Stack Of;
    size_t Element;
    std::string Text;
};

class EndOfADimension : public TileRecords, public testing::WithParamInterface<DimensionRow>
{
};

TEST_P(EndOfADimension, MayNotBePassed)
{
    const auto change = [](CTileStore& store) { ++store.Tiles.back().Elements[GetParam().Element]; };
    EXPECT_EQ(ResultOfOpeningChanged(GetParam().Of, change), AC_RESULT_FAILURE);
}

TEST_P(EndOfADimension, MustBeReached)
{
    const auto change = [](CTileStore& store)
    {
        for (CStoredTile& tile : store.Tiles)
            tile.Elements[GetParam().Element] = 0;
    };
    EXPECT_THAT(MessagesOf([&] { ResultOfOpeningChanged(GetParam().Of, change); }),
                Contains("dimension type = " + GetParam().Text));
    EXPECT_EQ(Doc(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Dimensions, EndOfADimension,
                         testing::Values(DimensionRow{{"Z"}, Small().Z(2), 2, "Z"},
                                         DimensionRow{{"T"}, Small().T(2), 2, "T"},
                                         DimensionRow{{"Lambda"}, Small().Lambda(2), 2, "L"},
                                         DimensionRow{{"Channels"}, Small().Channels(2), 2, "C"},
                                         DimensionRow{{"SecondOfTwo"}, Small().Z(2).T(2), 3, "T"}),
                         NameOfRow());

TEST_F(TileRecords, MayReachTheEndAtAnyLevel)
{
    const Stack stack = Small().Size(16, 16).Levels(2).Z(2);
    const auto change = [](CTileStore& store)
    { store.DropIf([](const CStoredTile& tile) { return tile.Elements[2] == 1 && tile.Elements.back() == 1; }); };
    EXPECT_EQ(ResultOfOpeningChanged(stack, change), AC_RESULT_SUCCESS);
}

TEST_F(TileRecords, OfNegativeIndexesPassTheEnd)
{
    const auto change = [](CTileStore& store) { store.Tiles.front().Elements[2] = -1; };
    EXPECT_EQ(ResultOfOpeningChanged(Small().Z(2), change), AC_RESULT_FAILURE);
}

TEST_F(TileRecords, MayHaveNegativeColumnsAndRows)
{
    Open(Small().Level(0, Columns(-3, -1), Rows(-2, -2)));
    EXPECT_EQ(Records().front().Idx.ColIdx, -3);
    EXPECT_EQ(Records().front().Idx.RowIdx, -2);
}

TEST_F(TileRecords, MayRepeatAPositionOfWhichTheFirstCounts)
{
    const Stack stack = Small().Size(16, 8);
    Document document;
    document.With(stack);
    document.Store(1).Add(0, 0, {0}, 0, BytesOf("a second one for the first position"));
    Open(std::move(document));
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
    EXPECT_EQ(NextImage(Area(Group(), 0, 0)), Tile(0, 1));
}

} // namespace
