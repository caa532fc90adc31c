// Tile records that stand side by side, which are kept as runs, and records in any other order, which are not.

#include "Tests/ZelLoader/Images/ZelSlide.h"

#include <algorithm>
#include <limits>

using namespace SlideOfTest;
using Zel::CDecompressedKorTileIdx;
using Zel::CKorTiles;

namespace
{

/// The places of records that are added one by one.
CKorTiles TilesAt(const std::vector<CDecompressedKorTileIdx>& indexes)
{
    CKorTiles tiles;
    for (const CDecompressedKorTileIdx& idx : indexes)
        tiles.AddRun(idx, 1);
    return tiles;
}

TEST(RunsOfTiles, HoldNeighboursInARow)
{
    const CKorTiles tiles =
        TilesAt({{.ColIdx = -1, .RowIdx = 7}, {.ColIdx = 0, .RowIdx = 7}, {.ColIdx = 1, .RowIdx = 7}});
    ASSERT_EQ(tiles.Runs().size(), 1u);
    EXPECT_EQ(tiles.Size(), 3u);
    EXPECT_EQ(tiles.Idx(2).ToString(), "{ColIdx=1, RowIdx=7, ZIdx=0, TIdx=0, CIdx=0, LIdx=0, PIdx=0}");
}

TEST(RunsOfTiles, GoOnWhereARunIsAddedInParts)
{
    CKorTiles tiles;
    tiles.AddRun({.ColIdx = 5}, 10);
    tiles.AddRun({.ColIdx = 15}, 3);
    ASSERT_EQ(tiles.Runs().size(), 1u);
    EXPECT_EQ(tiles.Runs().front().Length, 13u);
}

TEST(RunsOfTiles, DoNotWrapBehindTheGreatestColumn)
{
    const CKorTiles tiles =
        TilesAt({{.ColIdx = std::numeric_limits<int32_t>::max()}, {.ColIdx = std::numeric_limits<int32_t>::min()}});
    EXPECT_EQ(tiles.Runs().size(), 2u);
    EXPECT_EQ(tiles.Idx(1).ColIdx, std::numeric_limits<int32_t>::min());
}

struct EndRow : Row
{
    CDecompressedKorTileIdx Next;
};

class RunOfTiles : public testing::TestWithParam<EndRow>
{
};

TEST_P(RunOfTiles, EndsBefore)
{
    const CDecompressedKorTileIdx first{
        .ColIdx = 1, .RowIdx = 1, .ZIdx = 1, .TIdx = 1, .CIdx = 1, .LIdx = 1, .PIdx = 1};
    const CKorTiles tiles = TilesAt({first, GetParam().Next});
    EXPECT_EQ(tiles.Runs().size(), 2u);
    EXPECT_EQ(tiles.Idx(0), first);
    EXPECT_EQ(tiles.Idx(1), GetParam().Next);
}

INSTANTIATE_TEST_SUITE_P(
    Ends, RunOfTiles,
    testing::Values(EndRow{{"TheSamePosition"}, {1, 1, 1, 1, 1, 1, 1}}, EndRow{{"AHole"}, {3, 1, 1, 1, 1, 1, 1}},
                    EndRow{{"TheColumnBefore"}, {0, 1, 1, 1, 1, 1, 1}}, EndRow{{"AnotherRow"}, {2, 2, 1, 1, 1, 1, 1}},
                    EndRow{{"AnotherZ"}, {2, 1, 2, 1, 1, 1, 1}}, EndRow{{"AnotherT"}, {2, 1, 1, 2, 1, 1, 1}},
                    EndRow{{"AnotherChannel"}, {2, 1, 1, 1, 2, 1, 1}}, EndRow{{"AnotherLambda"}, {2, 1, 1, 1, 1, 2, 1}},
                    EndRow{{"AnotherLevel"}, {2, 1, 1, 1, 1, 1, 2}}),
    NameOfRow());

TEST(RunsOfTiles, AreFoundByNumberHoweverShortTheyAre)
{
    CKorTiles tiles;
    std::vector<CDecompressedKorTileIdx> indexes;
    for (int32_t row = 0; row < 300; ++row) // runs of 1 to 150 and back, many of which begin and end anywhere
    {
        const int32_t length = row < 150 ? row + 1 : 300 - row;
        tiles.AddRun({.ColIdx = -row, .RowIdx = row}, static_cast<uint32_t>(length));
        for (int32_t col = 0; col < length; ++col)
            indexes.push_back({.ColIdx = col - row, .RowIdx = row});
    }
    ASSERT_EQ(tiles.Size(), indexes.size());
    for (uint32_t number = 0; number < tiles.Size(); ++number)
        EXPECT_EQ(tiles.Idx(number), indexes[number]) << number;
}

// Stores whose records stand in another order than by row and column, or nearly so.

Stack Matrix()
{
    return Stack(1).Size(8 * 5, 8 * 4).Tiles(8, 8).Channels(2);
}

struct OrderRow : Row
{
    std::function<void(std::vector<CStoredTile>&)> Arrange;
};

class OrderOfRecords : public ZelSlide, public testing::WithParamInterface<OrderRow>
{
protected:
    void SetUp() override
    {
        Document document;
        document.With(Matrix());
        GetParam().Arrange(document.Store(1).Tiles);
        _stored = document.Store(1).Tiles;
        Open(std::move(document));
    }
    const std::vector<CStoredTile>& Stored() const { return _stored; }

private:
    std::vector<CStoredTile> _stored;
};

TEST_P(OrderOfRecords, IsThatOfTheFile)
{
    const CKorTiles& tiles = Store().KorTiles();
    ASSERT_EQ(tiles.Size(), Stored().size());
    uint64_t offset = 64 + 172;
    for (uint32_t number = 0; number < tiles.Size(); ++number)
    {
        const Zel::CKorTile tile = tiles[number];
        EXPECT_EQ((std::vector<int32_t>{tile.Idx.ColIdx, tile.Idx.RowIdx, static_cast<int32_t>(tile.Idx.CIdx),
                                        static_cast<int32_t>(tile.Idx.PIdx)}),
                  Stored()[number].Elements);
        EXPECT_EQ(tile.BlockOffset, offset);
        EXPECT_EQ(tile.BlockSize, Stored()[number].Body.size());
        offset += tile.BlockSize;
    }
}

TEST_P(OrderOfRecords, IsNotSeenInTheTilesOfAPosition)
{
    for (const CStoredTile& tile : Stored())
    {
        const uint32_t area = static_cast<uint32_t>(tile.Elements[1] * 5 + tile.Elements[0]);
        const bool isSecondChannel = tile.Elements[2] == 1;
        EXPECT_EQ(BodyOf(Tile(0, static_cast<int>(area), isSecondChannel ? L"1" : L"0")), tile.Body);
    }
}

template <typename IsBefore>
OrderRow SortedBy(const char* name, IsBefore isBefore)
{
    return {{name},
            [isBefore](std::vector<CStoredTile>& tiles) { std::stable_sort(tiles.begin(), tiles.end(), isBefore); }};
}

INSTANTIATE_TEST_SUITE_P(
    Orders, OrderOfRecords,
    testing::Values(
        OrderRow{{"AsWritten"}, [](auto&) {}},
        OrderRow{{"Backwards"}, [](auto& tiles) { std::reverse(tiles.begin(), tiles.end()); }},
        OrderRow{{"LastOneFirst"}, [](auto& tiles) { std::rotate(tiles.begin(), tiles.end() - 1, tiles.end()); }},
        OrderRow{{"FirstOneLast"}, [](auto& tiles) { std::rotate(tiles.begin(), tiles.begin() + 1, tiles.end()); }},
        OrderRow{{"HolesInTheMiddleAndAtTheEnd"},
                 [](auto& tiles)
                 {
                     tiles.erase(tiles.begin() + 7);
                     tiles.pop_back();
                 }},
        SortedBy("ByColumn", [](auto& a, auto& b) { return a.Elements[0] < b.Elements[0]; }),
        SortedBy("ByPositionThenChannel",
                 [](auto& a, auto& b)
                 {
                     return std::tie(a.Elements[1], a.Elements[0], a.Elements[2]) <
                            std::tie(b.Elements[1], b.Elements[0], b.Elements[2]);
                 })),
    NameOfRow());

class RunsOfRecords : public ZelSlide
{
};

TEST_F(RunsOfRecords, AreTheRowsOfEachLevel)
{
    Open(Stack(1).Size(32, 16).Tiles(8, 8).Levels(2));
    ASSERT_EQ(Store().KorTiles().Runs().size(), 3u);
    EXPECT_EQ(Store().KorTiles().Runs()[1].Length, 4u);
    EXPECT_EQ(Store().KorTiles().Runs()[2].Length, 2u);
}

TEST_F(RunsOfRecords, AreLongerThanWhatIsReadAtOnce)
{
    constexpr uint32_t NumOfTiles = 9000; // of 36 bytes each
    Open(Stack(1).Size(NumOfTiles, 1).Tiles(1, 1).Jpeg().Contents(Holes(10)));
    EXPECT_EQ(Store().KorTiles().Runs().size(), 1u);
    EXPECT_EQ(Store().KorTiles()[NumOfTiles - 1].Idx.ColIdx, static_cast<int32_t>(NumOfTiles - 1));
    EXPECT_EQ(Store().KorTiles()[NumOfTiles - 1].BlockOffset, 64u + 172u + 10u * (NumOfTiles - 1));
}

TEST_F(RunsOfRecords, PassOverTheElementsOfDummies)
{
    Document document;
    document.With(Stack(1).Size(32, 8).Tiles(8, 8).Dummy());
    int32_t number = 0;
    for (CStoredTile& tile : document.Store(1).Tiles)
        tile.Elements[2] = ++number;
    Open(std::move(document));
    EXPECT_EQ(Store().KorTiles().Runs().size(), 1u);
}

TEST_F(RunsOfRecords, EndWhereARecordRepeatsThePositionOfTheLastOne)
{
    Document document;
    document.With(Stack(1).Size(32, 8).Tiles(8, 8));
    document.Store(1).Add(3, 0, {0}, 0, BytesOf("again"));
    Open(std::move(document));
    ASSERT_EQ(Store().KorTiles().Runs().size(), 2u);
    EXPECT_EQ(Store().KorTiles()[4].Idx, Store().KorTiles()[3].Idx);
    EXPECT_NE(BodyOf(Tile(0, 3)), BytesOf("again"));
}

} // namespace
