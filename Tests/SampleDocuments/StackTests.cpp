#include "SampleDocuments/Stack.h"

#include <gtest/gtest.h>
#include <set>

using namespace SampleDocuments;

namespace
{

std::vector<CTilePlace> PlacesOf(const Stack& stack)
{
    std::vector<CTilePlace> places;
    stack.ForEachTile([&](const CTilePlace& place) { places.push_back(place); });
    return places;
}

TEST(StackDescription, HasOneTileUnlessMoreIsSaid)
{
    EXPECT_EQ(PlacesOf(Stack(1)), std::vector<CTilePlace>(1));
    EXPECT_EQ(Stack(1).NumOfPointsPerDim(), std::vector<uint32_t>{1});
    EXPECT_EQ(Stack(1).Elements({}), (std::vector<int32_t>{0, 0, 0, 0}));
}

TEST(StackDescription, HalvesLevelsAndRoundsUp)
{
    const Stack stack = Stack(1).Size(1001, 3).Tiles(256, 256).Levels(4);
    EXPECT_EQ(stack.LevelWidth(1), 501u);
    EXPECT_EQ(stack.LevelWidth(3), 126u);
    EXPECT_EQ(stack.LevelHeight(2), 1u);
    EXPECT_EQ(stack.LevelHeight(3), 1u);
    EXPECT_EQ(stack.NumOfTiles(), 4u + 2u + 1u + 1u);
}

TEST(StackDescription, TakesTheTilesOfALevelAsTheyAreNamed)
{
    const auto places = PlacesOf(Stack(1).Level(2, Columns(-1, 0), Rows(3, 3)).Level(0, Columns(5, 5), Rows(-2, -1)));
    EXPECT_EQ(places, (std::vector<CTilePlace>{{0, 5, -2, {}}, {0, 5, -1, {}}, {2, -1, 3, {}}, {2, 0, 3, {}}}));
}

TEST(StackDescription, VariesTheFirstDimensionFastest)
{
    const auto frames = Stack(1).Z(2).Channels(2).Frames();
    EXPECT_EQ(frames, (std::vector<CIndexes>{{.Z = 0, .C = 0}, {.Z = 1, .C = 0}, {.Z = 0, .C = 1}, {.Z = 1, .C = 1}}));
}

TEST(StackDescription, SharesFrameNodesAmongChannels)
{
    const Stack stack = Stack(1).T(3).Channels(2).FramesSharedByChannels();
    EXPECT_EQ(stack.Frames().size(), 6u);
    EXPECT_EQ(stack.FrameNodes(), (std::vector<CIndexes>{{.T = 0}, {.T = 1}, {.T = 2}}));
}

TEST(StackDescription, PutsTheIndexesInTheOrderOfTheDimensions)
{
    const Stack stack = Stack(1).Channels(2).Dummy().Lambda(3).DummyWithoutCount().Z(4);
    EXPECT_EQ(stack.NumOfPointsPerDim(), (std::vector<uint32_t>{2, 1, 3, 4}));
    EXPECT_EQ(stack.Elements({5, -6, 7, {.Z = 3, .L = 2, .C = 1}}), (std::vector<int32_t>{-6, 7, 1, 0, 2, 3, 5}));
}

TEST(StackDescription, KeepsTheLevelBehindCountsThatAreSetByHand)
{
    const Stack stack = Stack(1).Z(2).Counts({2, 1, 1});
    EXPECT_EQ(stack.Elements({1, 0, 0, {.Z = 1}}), (std::vector<int32_t>{0, 0, 1, 0, 0, 1}));
}

TEST(StackDescription, LeavesMissingTilesOut)
{
    const Stack stack = Stack(1).Size(512, 512).Tiles(256, 256).Z(2).MissingTile(0, 1, 1).Missing(
        [](const CTilePlace& place) { return place.At.Z == 1 && place.Row == 0; });
    EXPECT_EQ(PlacesOf(stack),
              (std::vector<CTilePlace>{{0, 0, 0, {}}, {0, 1, 0, {}}, {0, 0, 1, {}}, {0, 0, 1, {.Z = 1}}}));
}

TEST(TilesOfAStack, AreRawPixelsOfTheTileSizeInARawStore)
{
    const Stack stack = Stack(1).Tiles(30, 20).Raw(ComponentType::Uint16, 3);
    EXPECT_EQ(stack.BytesPerPixel(), 6u);
    EXPECT_EQ(stack.TileBytes(0, 0, 0).size(), 30u * 20u * 6u);
}

TEST(TilesOfAStack, SayWhoTheyAre)
{
    const ByteString bytes = Stack(3).Jpeg().TileBytes(1, -2, 3, {.Z = 4, .T = 5, .L = 6, .C = 7});
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "stack 3 level 1 column -2 row 3 Z 4 T 5 L 6 C 7");
}

TEST(TilesOfAStack, DifferEvenWhenTheyAreTooSmallForTheirName)
{
    std::set<ByteString> seen;
    const Stack stack = Stack(1).Size(160, 160).Tiles(16, 16).Z(3).Channels(2).Contents(BytesOfSize(1, 64));
    stack.ForEachTile([&](const CTilePlace& place) { seen.insert(stack.TileBytes(place)); });
    EXPECT_EQ(seen.size(), 600u);
}

TEST(TilesOfAStack, TakeTurnsInSharedBodies)
{
    const Stack stack = Stack(1).Size(2560, 2560).Contents(TakingTurns(1, 100, 4));
    std::set<ByteString> bodies;
    stack.ForEachTile([&](const CTilePlace& place) { bodies.insert(stack.TileBytes(place)); });
    EXPECT_EQ(bodies.size(), 4u);
    EXPECT_EQ(bodies.begin()->size(), 100u);
    EXPECT_THROW(TakingTurns(1, 100, 0), CSampleError);
}

TEST(TilesOfAStack, CanBeZeros)
{
    EXPECT_EQ(Stack(1).Contents(Holes(5)).TileBytes(0, 0, 0), ByteString(5));
}

TEST(TilesOfAStack, AreStripsOfTheirOwnHeightInADocument)
{
    const Stack stack = Stack(1).Size(10, 25).InDocument(10);
    EXPECT_EQ(stack.TileBytes(0, 0, 0).size(), 100u);
    EXPECT_EQ(stack.TileBytes(0, 0, 2).size(), 50u);
}

TEST(TilesOfAStack, AreRealPicturesWhenAskedFor)
{
    for (Stack stack : {Stack(1).Jpeg(3), Stack(1).Png(1), Stack(1).J2k(3), Stack(1).Bmp(3)})
    {
        stack.Tiles(64, 32).Contents(EncodedPixelsOf(stack.Tiles(64, 32).Plan()));
        EXPECT_NE(stack.TileBytes(0, 0, 0), stack.TileBytes(0, 1, 0));
        EXPECT_GT(stack.TileBytes(0, 0, 0).size(), 100u);
    }
    EXPECT_THROW(EncodedPixelsOf(Stack(1).JpegLossless().Plan()).Bytes({}), CSampleError);
}

} // namespace
