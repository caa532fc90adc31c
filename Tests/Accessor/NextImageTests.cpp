// Walking over the images of an area's level in the order of the store.

#include "Tests/Accessor/Slide.h"

using namespace SlideOfTest;

namespace
{

class WalkOverImages : public Slide
{
protected:
    /// The labels of the images that follow the last one fetched, to the end of the walk.
    static std::vector<std::string> LabelsOfTheRest(AC_HAREA area, const Names& channels, const Axes& axes = {})
    {
        std::vector<std::string> labels;
        while (const AC_HIMAGE image = NextImage(area, channels, axes))
        {
            const ByteString body = BodyOf(image);
            labels.emplace_back(body.begin(), body.end());
        }
        return labels;
    }
    static std::string Label(uint32_t level, int32_t column, int32_t row, CIndexes at = {})
    {
        return LabelOf(1, {level, column, row, at});
    }
    static Stack Labelled() { return Stack(1).Contents(Labels(1)); }
};

TEST_F(WalkOverImages, GoesOnFromTheImageFetchedLast)
{
    Open(Labelled().Size(600, 256));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}), ElementsAre(Label(0, 1, 0), Label(0, 2, 0)));
}

TEST_F(WalkOverImages, BeginsWhereTheAreaIs)
{
    Open(Labelled().Size(600, 256));
    const AC_HAREA area = Area(Group(), 0, 1);
    Image(area);
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}), ElementsAre(Label(0, 2, 0)));
}

TEST_F(WalkOverImages, CannotBeginWithoutAnImage)
{
    Open(Labelled());
    const AC_HAREA area = Area(Group(), 0, 0);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}), AC_RESULT_ILLEGAL_STATE);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}), AC_RESULT_ILLEGAL_STATE);
}

TEST_F(WalkOverImages, CannotGoOnBehindItsEnd)
{
    Open(Labelled());
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}), AC_RESULT_NO_MORE_FRAME);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}), AC_RESULT_ILLEGAL_STATE);
    Image(area);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}), AC_RESULT_NO_MORE_FRAME);
}

TEST_F(WalkOverImages, EndsAsItDoesWhateverTheErrnoBeforeWas)
{
    Open(Labelled());
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    AC_HIMAGE image = nullptr;
    const wchar_t* channel = L"0";
    errno = ENOENT;
    EXPECT_EQ(_AC_GetNextImage(area, &channel, 1, nullptr, 0, &image), AC_RESULT_NO_MORE_FRAME);
}

TEST_F(WalkOverImages, IsNotDisturbedByAPlaceWithoutAnImage)
{
    Open(Labelled().Size(600, 256).Z(2).Missing([](const CTilePlace& place)
                                                { return place.Column == 1 && place.At.Z == 1; }));
    const AC_HAREA area = Area(Group(), 0, 1);
    Image(area, L"0", {AtZ(0)});
    EXPECT_EQ(Image(area, L"0", {AtZ(1)}), nullptr);
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}, {AtZ(0)}), ElementsAre(Label(0, 2, 0)));
}

TEST_F(WalkOverImages, StaysOnItsLevel)
{
    Open(Labelled().Size(512, 256).Levels(2));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}), ElementsAre(Label(0, 1, 0)));
    const AC_HAREA upper = Area(Group(), 1, 0);
    Image(upper);
    EXPECT_THAT(LabelsOfTheRest(upper, {L"0"}), IsEmpty());
}

TEST_F(WalkOverImages, PassesOverImagesOfOtherChannels)
{
    Open(Labelled().Size(512, 256).Channels(3));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area, L"0");
    EXPECT_THAT(LabelsOfTheRest(area, {L"2", L"0"}),
                ElementsAre(Label(0, 1, 0, {.C = 0}), Label(0, 0, 0, {.C = 2}), Label(0, 1, 0, {.C = 2})));
}

TEST_F(WalkOverImages, StaysAtTheGivenPositionsAndWalksTheOtherAxes)
{
    Open(Labelled().Z(3).T(2));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area, L"0", {AtZ(1), AtT(0)});
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}, {AtZ(1)}), ElementsAre(Label(0, 0, 0, {.Z = 1, .T = 1})));
    Image(area, L"0", {AtZ(1), AtT(0)});
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}, {AtT(0)}), ElementsAre(Label(0, 0, 0, {.Z = 2, .T = 0})));
}

TEST_F(WalkOverImages, MeetsEachRecordAlsoOneThatRepeatsAPosition)
{
    Document document;
    document.With(Labelled().Size(512, 256));
    const std::string again = "again";
    document.Store(1).Add(0, 0, {0}, 0, {again.begin(), again.end()});
    Open(std::move(document));
    const AC_HAREA area = Area(Group(), 0, 0);
    const AC_HIMAGE first = Image(area);
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}), ElementsAre(Label(0, 1, 0), again));
    Image(area);
    NextImage(area);
    ASSERT_NE(NextImage(area), nullptr);
    EXPECT_EQ(Image(area), first) << "of two for one position the first is served, also after the walk met the second";
}

TEST_F(WalkOverImages, MeetsRecordsThatDifferInADroppedElement)
{
    Document document;
    document.With(Labelled());
    const std::string other = "other";
    document.Store(1).Add(0, 0, {7}, 0, {other.begin(), other.end()});
    Open(std::move(document));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}), ElementsAre(other));
}

TEST_F(WalkOverImages, MeetsRecordsOfSeveralFramesThatRepeatPositions)
{
    Document document;
    document.With(Labelled().Z(2));
    for (const int32_t z : {1, 0, 1})
        document.Store(1).Add(0, 0, {z}, 0, {static_cast<uint8_t>('a' + z)});
    Open(std::move(document));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area, L"0", {AtZ(0)});
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}), ElementsAre(Label(0, 0, 0, {.Z = 1}), "b", "a", "b"));
    Image(area, L"0", {AtZ(0)});
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}, {AtZ(0)}), ElementsAre("a"));
}

TEST_F(WalkOverImages, GoesTheWayOfTheFile)
{
    Document document;
    document.With(Labelled().Size(768, 256));
    auto& tiles = document.Store(1).Tiles;
    std::swap(tiles[1], tiles[2]);
    Open(std::move(document));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    EXPECT_THAT(LabelsOfTheRest(area, {L"0"}), ElementsAre(Label(0, 2, 0), Label(0, 1, 0)));
}

TEST_F(WalkOverImages, AnswersTheHandlesOfSingleRequests)
{
    Open(Labelled().Size(512, 256));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    EXPECT_EQ(NextImage(area), Tile(0, 1));
}

TEST_F(WalkOverImages, IsRememberedByEachAreaForItself)
{
    Open(Labelled().Size(768, 256));
    const AC_HAREA first = Area(Group(), 0, 0);
    const AC_HAREA second = Area(Group(), 0, 1);
    Image(first);
    Image(second);
    NextImage(second);
    EXPECT_EQ(NextImage(first), Tile(0, 1));
}

TEST_F(WalkOverImages, NeedsAChannel)
{
    Open(Labelled());
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    AC_HIMAGE image = nullptr;
    const wchar_t* channel = L"0";
    EXPECT_EQ(Call(_AC_GetNextImage, area, &channel, 0, nullptr, 0, &image), AC_RESULT_FAILURE);
}

TEST_F(WalkOverImages, ChecksChannelsAndPositionsAsASingleRequestDoes)
{
    Open(Labelled().Z(2));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area, L"0", {AtZ(0)});
    EXPECT_EQ(ResultOfNextImage(area, {L"0", nullptr}), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(ResultOfNextImage(area, {L"0", L"1"}), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(ResultOfNextImage(area, {L"00"}), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}, {AtZ(2)}), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}, {AtT(1)}), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}, {AtZ(1), AtT(0)}), AC_RESULT_SUCCESS);
}

TEST_F(WalkOverImages, IsServedByTheJoinedFunctionToo)
{
    Open(Labelled().Size(512, 256));
    const AC_HAREA area = Area(Group(), 0, 0);
    Image(area);
    AC_HIMAGE image = nullptr;
    errno = 0;
    EXPECT_EQ(GetImage_ParticularOrNext(false, area, {L"0"}, nullptr, 0, &image), AC_RESULT_SUCCESS);
    EXPECT_EQ(image, Tile(0, 1));
}

} // namespace
