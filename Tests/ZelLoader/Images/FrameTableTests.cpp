// Which frame node belongs to which frame.

#include "Tests/ZelLoader/Images/ZelSlide.h"
#include "ZelLoader/Images/ZelFrame.h"

using namespace SlideOfTest;
using CIA::CFrameIdx;

namespace
{

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

class FrameTable : public ZelSlide
{
protected:
    /// The number of a frame's node in the order of the file.
    static size_t NodeOf(Zel::CZelMultiDimImage& image, const CFrameIdx& idx)
    {
        const auto& nodes = *image.MetaData().ImgFrames();
        const Zel::CZelMetaDataForImgFrame* node = image.ZelMetaDataForImgFrames().at(idx);
        for (size_t number = 0; number < nodes.size(); ++number)
            if (nodes[number].get() == node)
                return number;
        throw std::logic_error("a frame without a node of its image");
    }
    /// The frames of an image, in their order.
    static std::vector<CFrameIdx> FramesOf(Zel::CZelMultiDimImage& image)
    {
        std::vector<CFrameIdx> idxs;
        for (const auto& [idx, frame] : image.Frames())
            idxs.push_back(idx);
        return idxs;
    }
};

TEST_F(FrameTable, HasOneFrameWithoutDimensions)
{
    auto& image = BuildImage(Small());
    EXPECT_EQ(image.ZelMetaDataForImgFrames().size(), 1u);
    EXPECT_EQ(NodeOf(image, CFrameIdx()), 0u);
    EXPECT_THAT(FramesOf(image), ElementsAre(CFrameIdx()));
}

TEST_F(FrameTable, CountsTheFirstDimensionFastest)
{
    auto& image = BuildImage(Small().Z(3).Channels(2));
    ASSERT_EQ(image.ZelMetaDataForImgFrames().size(), 6u);
    for (uint32_t z = 0; z < 3; ++z)
        for (uint32_t c = 0; c < 2; ++c)
            EXPECT_EQ(NodeOf(image, {z, c, 0, 0}), c * 3 + z);
}

TEST_F(FrameTable, CountsTheChannelsFastestWhereTheyComeFirst)
{
    auto& image = BuildImage(Small().Channels(2).T(2).Lambda(2));
    EXPECT_EQ(NodeOf(image, {0, 1, 0, 0}), 1u);
    EXPECT_EQ(NodeOf(image, {0, 0, 0, 1}), 2u);
    EXPECT_EQ(NodeOf(image, {0, 0, 1, 0}), 4u);
    EXPECT_EQ(NodeOf(image, {0, 1, 1, 1}), 7u);
}

TEST_F(FrameTable, SharesFramesAmongChannels)
{
    auto& image = BuildImage(Small().Z(2).Channels(2).FramesSharedByChannels());
    EXPECT_EQ(image.ZelMetaDataForImgFrames().size(), 4u);
    EXPECT_EQ(NodeOf(image, {0, 0, 0, 0}), 0u);
    EXPECT_EQ(NodeOf(image, {0, 1, 0, 0}), 0u);
    EXPECT_EQ(NodeOf(image, {1, 0, 0, 0}), 1u);
    EXPECT_EQ(NodeOf(image, {1, 1, 0, 0}), 1u);
}

TEST_F(FrameTable, SharesASingleFrameAmongChannelsAlone)
{
    auto& image = BuildImage(Small().Channels(3).FramesSharedByChannels());
    for (uint32_t c = 0; c < 3; ++c)
        EXPECT_EQ(NodeOf(image, {0, c, 0, 0}), 0u);
}

TEST_F(FrameTable, SharedAmongChannelsServesTheTilesOfEach)
{
    const Stack stack = Small().Z(2).Channels(2).FramesSharedByChannels();
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"1", {AtZ(1)})), stack.TileBytes(0, 0, 0, {.Z = 1, .C = 1}));
}

using FrameTableDeathTest = FrameTable;

TEST_F(FrameTableDeathTest, SharedAmongChannelsThatAreNotLastEndsTheProcess)
{
    EXPECT_ENDS_THE_PROCESS(
        {
            Open(Small().Channels(2).Z(2).FramesSharedByChannels());
            Tile(0, 0, L"0", {AtZ(0)});
        },
        ABORT_WAS_CALLED);
}

struct FrameCountRow : Row
{
    Stack Of;
    size_t NumOfFrames;
};

class NumberOfFrameNodes : public FrameTable, public testing::WithParamInterface<FrameCountRow>
{
};

TEST_P(NumberOfFrameNodes, MustBeOneOfTheTwoProducts)
{
    Document document;
    document.With(GetParam().Of);
    CNode& stack = document.StackVolume(1);
    while (stack.NumOfChildren(2002) > GetParam().NumOfFrames)
        stack.DropNth(2002, 0);
    while (stack.NumOfChildren(2002) < GetParam().NumOfFrames)
        stack.Add(CNode(stack.Child(2002)));
    AC_Result result = ResultOfOpening(std::move(document));
    AC_HAREA area = nullptr;
    if (result == AC_RESULT_SUCCESS)
        result = Call(_AC_GetArea, Group(), 0, UINT64{0}, &area);
    EXPECT_EQ(result, AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(Frames, NumberOfFrameNodes,
                         testing::Values(FrameCountRow{{"TooFew"}, Small().Z(3), 2},
                                         FrameCountRow{{"TooMany"}, Small().Z(3), 4},
                                         FrameCountRow{{"TwoWithoutDimensions"}, Small(), 2},
                                         FrameCountRow{{"BetweenTheProducts"}, Small().Z(2).Channels(2), 3},
                                         FrameCountRow{{"ThatWithoutZ"}, Small().Z(3).Channels(2), 2}),
                         NameOfRow());

TEST_F(FrameTable, IsOrderedByZThenChannelThenLambdaThenT)
{
    auto& image = BuildImage(Small().T(2).Lambda(2).Channels(2).Z(2));
    std::vector<CFrameIdx> expected;
    for (uint32_t z = 0; z < 2; ++z)
        for (uint32_t c = 0; c < 2; ++c)
            for (uint32_t l = 0; l < 2; ++l)
                for (uint32_t t = 0; t < 2; ++t)
                    expected.emplace_back(z, c, l, t);
    EXPECT_EQ(FramesOf(image), expected);
}

TEST_F(FrameTable, PassesDummiesOver)
{
    EXPECT_EQ(NodeOf(BuildImage(Small().Dummy().Z(2).Channels(2)), {1, 1, 0, 0}), 3u);
}

// Frames.

TEST(FrameIdx, ComparesZFirst)
{
    EXPECT_LT(CFrameIdx(0, 9, 9, 9), CFrameIdx(1, 0, 0, 0));
    EXPECT_LT(CFrameIdx(0, 0, 9, 9), CFrameIdx(0, 1, 0, 0));
    EXPECT_LT(CFrameIdx(0, 0, 0, 9), CFrameIdx(0, 0, 1, 0));
}

TEST(FrameIdxDeathTest, HasNoIndexOnXYAndP)
{
    for (const DimType type : {DimX, DimY, DimP, DimDummy})
        EXPECT_ENDS_THE_PROCESS(CFrameIdx().SubIdx(type), ABORT_WAS_CALLED);
}

TEST_F(FrameTable, HasNoFrameOffADimensionThatIsNotThere)
{
    auto& image = BuildImage(Small().Z(2));
    auto& node = *image.MetaData().ImgFrames()->front();
    EXPECT_FAILED_ASSERTION(Zel::CZelFrame(image, CFrameIdx(0, 0, 0, 1), node));
    EXPECT_EQ(AssertionOf([&] { Zel::CZelFrame(image, CFrameIdx(1, 0, 0, 0), node); }), "");
}

TEST_F(FrameTable, HasFramesAsLargeAsTheirImage)
{
    auto& image = BuildImage(Stack(1).Size(600, 300));
    CIA::CFrame& frame = *image.Frames().begin()->second;
    EXPECT_EQ(frame.PixelWidth(), 600u);
    EXPECT_EQ(frame.PixelHeight(), 300u);
    EXPECT_EQ(frame.ZoomoutFactor(), 1);
}

TEST_F(FrameTable, HasNoJpegTablesForOtherCompressions)
{
    auto& image = BuildImage(Small());
    CIA::CFrame& frame = *image.Frames().begin()->second;
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(frame.JpegTables().Size, 0u); }),
                Contains("Call to 'JpegTables' is only valid in case the frame compression type is Jpeg7!!!"));
    EXPECT_EQ(errno, EBADFD);
}

// Tiles of frames.

TEST_F(FrameTable, GivesEachFrameItsOwnTiles)
{
    auto& image = BuildImage(Stack(1).Size(600, 300).Z(2).Channels(2).Missing(
        [](const CTilePlace& place) { return place.At == CIndexes{.Z = 1, .C = 1} && place.Column == 0; }));
    EXPECT_EQ(image.Frames().at({0, 0, 0, 0})->DeepZoomTiles().Size(), 6u);
    EXPECT_EQ(image.Frames().at({1, 0, 0, 0})->DeepZoomTiles().Size(), 6u);
    EXPECT_EQ(image.Frames().at({1, 1, 0, 0})->DeepZoomTiles().Size(), 4u);
    EXPECT_EQ(image.Frames().at({1, 1, 0, 0})->DeepZoomTiles().Find({0, 0, 0}), nullptr);
    EXPECT_NE(image.Frames().at({1, 1, 0, 0})->DeepZoomTiles().Find({1, 1, 0}), nullptr);
}

TEST(TileIdx, ComparesColumnsFirst)
{
    EXPECT_LT((CIA::CDeepZoomTileIdx{0, 5, 9}), (CIA::CDeepZoomTileIdx{1, 0, 0}));
    EXPECT_LT((CIA::CDeepZoomTileIdx{-1, 5, 9}), (CIA::CDeepZoomTileIdx{0, 0, 0}));
    EXPECT_LT((CIA::CDeepZoomTileIdx{0, 0, 9}), (CIA::CDeepZoomTileIdx{0, 1, 0}));
}

TEST_F(FrameTable, NeedsATilePerLevelInEachFrame)
{
    Open(Stack(1).Size(600, 300).Levels(2).Z(2).Missing(
        [](const CTilePlace& place)
        { return place.At.Z == 1 && !(place.Level == 0 && place.Column == 0 && place.Row == 0); }));
    AC_HAREA area = nullptr;
    EXPECT_EQ(Call(_AC_GetArea, Group(), 0, UINT64{0}, &area), AC_RESULT_FAILURE);
}

/// A matrix of one tile, whatever the store holds: the levels of a store are always as large as their tiles.
class LevelOfOneTile : public CIA::CDeepZoomPyramidLevel
{
public:
    using CDeepZoomPyramidLevel::CDeepZoomPyramidLevel;
    uint16_t getTiffIfd() override { return 0; }

protected:
    bool NumOfCols_init(uint32_t& varToInit) override
    {
        varToInit = 1;
        return true;
    }
    bool NumOfRows_init(uint32_t& varToInit) override
    {
        varToInit = 1;
        return true;
    }
    bool DeepZoomTilesAreTogetherOnDisk() override { return true; }
};

class ImageOfOneTile : public Zel::CZelMultiDimImage
{
public:
    using CZelMultiDimImage::CZelMultiDimImage;

protected:
    bool DeepZoomPyramidLevels_init(std::vector<std::unique_ptr<CIA::CDeepZoomPyramidLevel>>& varToInit) override
    {
        varToInit.push_back(std::make_unique<LevelOfOneTile>(0, *this));
        return true;
    }
};

/// A frame that counts how often its tiles were listed.
class CountingFrame : public Zel::CZelFrame
{
public:
    explicit CountingFrame(Zel::CZelMultiDimImage& image)
        : CZelFrame(image, CFrameIdx(), *image.MetaData().ImgFrames()->front())
    {
    }
    int NumOfTries = 0;

protected:
    std::unique_ptr<CIA::CDeepZoomTiles> DeepZoomTiles_init() override
    {
        ++NumOfTries;
        return CZelFrame::DeepZoomTiles_init();
    }
};

struct GridRow : Row
{
    uint32_t Width;
    uint32_t Height;
    uint64_t NumOfTiles;
    int NumOfTries; ///< of four calls
};

class FrameInAMatrixOfOneTile : public FrameTable, public testing::WithParamInterface<GridRow>
{
};

TEST_P(FrameInAMatrixOfOneTile, HasNoTilesWhereOneLiesBeyondItAndTriesAgain)
{
    Zel::CZelImgDoc& doc = Read(Document().With(Small().Size(GetParam().Width, GetParam().Height)));
    ImageOfOneTile image(*doc.ImgColl().MultiDimImgs()->front(), doc);
    image.Dimensions();
    CountingFrame frame(image);
    for (int call = 0; call < 2; ++call)
    {
        EXPECT_EQ(frame.DeepZoomTiles().Size(), GetParam().NumOfTiles);
        EXPECT_EQ(frame.DeepZoomTiles().Find({0, 0, 0}) != nullptr, GetParam().NumOfTiles > 0);
    }
    EXPECT_EQ(frame.NumOfTries, GetParam().NumOfTries);
}

INSTANTIATE_TEST_SUITE_P(Tiles, FrameInAMatrixOfOneTile,
                         testing::Values(GridRow{{"Within"}, 8, 8, 1, 1}, GridRow{{"ColumnBeyond"}, 16, 8, 0, 4},
                                         GridRow{{"RowBeyond"}, 8, 16, 0, 4}),
                         NameOfRow());

TEST_F(FrameTable, OfAStackInDirectoriesNeedsADirectoryForEachFrame)
{
    Document document;
    document.With(Small().InDocument().Z(2));
    document.Frame(1, 1).Drop(2016);
    Open(std::move(document));
    AC_HAREA area = nullptr;
    EXPECT_EQ(Call(_AC_GetArea, Group(), 0, UINT64{0}, &area), AC_RESULT_FAILURE);
}

} // namespace
