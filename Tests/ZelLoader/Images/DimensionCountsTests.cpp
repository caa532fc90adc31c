// How many points each dimension has, and which elements of the list of counts stand for none.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

using Counts = std::map<DimType, uint32_t>;

class CountsOfPoints : public ZelSlide
{
protected:
    Zel::CZelDimensionOrder& OrderOf(const Stack& stack)
    {
        auto& image = ReadImage(stack);
        image.Dimensions();
        return image.DimensionOrder();
    }
};

TEST_F(CountsOfPoints, GoToTheDimensionsInTheirOrder)
{
    auto& order = OrderOf(Small().T(2).Channels(4).Z(3));
    EXPECT_EQ(order.NumOfPointsPerDimWithoutDummyEles(), (Counts{{DimT, 2}, {DimC, 4}, {DimZ, 3}}));
    EXPECT_THAT(order.DumminessOfNumOfPointsPerDim(), ElementsAre(DimT, DimC, DimZ));
}

TEST_F(CountsOfPoints, HaveAnElementForADummyBetweenDimensions)
{
    auto& order = OrderOf(Small().Z(3).Dummy().Channels(2));
    EXPECT_EQ(order.NumOfPointsPerDimWithoutDummyEles(), (Counts{{DimZ, 3}, {DimC, 2}}));
    EXPECT_THAT(order.DumminessOfNumOfPointsPerDim(), ElementsAre(DimZ, DimDummy, DimC));
}

TEST_F(CountsOfPoints, MayHaveNoElementsForDummies)
{
    auto& image = ReadImage(Small().Z(3).DummyWithoutCount().Channels(2));
    EXPECT_THAT(MessagesOf([&] { image.Dimensions(); }),
                Contains("STRANGE!!! numOf2007tags=3, numOfPointsPerDim.Size=2!!!"));
    auto& order = image.DimensionOrder();
    EXPECT_EQ(order.NumOfPointsPerDimWithoutDummyEles(), (Counts{{DimZ, 3}, {DimC, 2}}));
    EXPECT_THAT(order.DumminessOfNumOfPointsPerDim(), ElementsAre(DimZ, DimC));
}

TEST_F(CountsOfPoints, MayEndWithDummiesThatHaveNoTag)
{
    auto& order = OrderOf(Small().Z(1).Counts({1, 1, 1}));
    EXPECT_THAT(order.DumminessOfNumOfPointsPerDim(), ElementsAre(DimZ, DimDummy, DimDummy));
}

TEST_F(CountsOfPoints, OfTrailingDummiesAreLookedForAtTheStartOfTheList)
{
    EXPECT_THAT(OrderOf(Small().Z(1).Counts({1, 7})).DumminessOfNumOfPointsPerDim(), ElementsAre(DimZ, DimDummy));
    EXPECT_FAILED_ASSERTION(OrderOf(Small().Z(3).Counts({3, 1})));
}

TEST_F(CountsOfPoints, AreDummiesAllWithoutDimensions)
{
    EXPECT_THAT(OrderOf(Small()).DumminessOfNumOfPointsPerDim(), ElementsAre(DimDummy));
    EXPECT_THAT(OrderOf(Small().Counts({1, 1})).DumminessOfNumOfPointsPerDim(), ElementsAre(DimDummy, DimDummy));
    EXPECT_EQ(OrderOf(Small()).NumOfPointsPerDimWithoutDummyEles(), Counts());
}

struct BadCountsRow : Row
{
    Stack Of;
};

class BadCounts : public ZelSlide, public testing::WithParamInterface<BadCountsRow>
{
};

TEST_P(BadCounts, BreakARule)
{
    EXPECT_EQ(ResultOfOpening(GetParam().Of), AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(
    Counts, BadCounts,
    testing::Values(BadCountsRow{{"DummyOfTwo"}, Small().Z(3).Dummy().Channels(2).Counts({3, 2, 2})},
                    BadCountsRow{{"DummyOfZero"}, Small().Z(3).Dummy().Channels(2).Counts({3, 0, 2})},
                    BadCountsRow{{"FewerThanDimensions"}, Small().Z(3).T(2).Counts({3})},
                    BadCountsRow{{"TwoWithoutDimensions"}, Small().Counts({2})},
                    BadCountsRow{{"ZeroWithoutDimensions"}, Small().Counts({0})},
                    BadCountsRow{{"DimensionBehindTheEnd"}, Small().Dummy().Dummy().Z(1).Counts({1, 1})},
                    BadCountsRow{{"ZeroPoints"}, Small().Z(0)},
                    BadCountsRow{{"ZeroChannels"}, Small().Channels(1).Counts({0})},
                    BadCountsRow{{"MorePointsThanAnyFile"}, Small().Z(1).Counts({0xFFFFFFFF})},
                    BadCountsRow{{"ProductThatWraps"}, Small().Z(1).T(1).Lambda(1).Counts({1u << 31, 1u << 31, 4})},
                    BadCountsRow{{"ProductThatWrapsToTheNumberOfFrames"},
                                 Small().Z(1).T(1).Counts({0xFFFFFFFF, 0xFFFFFFFF})}),
    NameOfRow());

// A list that is not there.

class NoCounts : public CountsOfPoints
{
protected:
    static Document Without2003(const Stack& stack)
    {
        Document document;
        document.With(stack);
        document.StackVolume(1).Drop(2003);
        return document;
    }
};

TEST_F(NoCounts, MakeACorruptFile)
{
    EXPECT_EQ(ResultOfOpening(Without2003(Small().Z(2))), AC_RESULT_FILE_CORRUPT);
    EXPECT_EQ(ResultOfOpening(Without2003(Small().Channels(2))), AC_RESULT_FILE_CORRUPT);
    EXPECT_EQ(ResultOfOpening(Without2003(Small().InDocument().Z(2))), AC_RESULT_FILE_CORRUPT);
}

TEST_F(NoCounts, MakeACorruptFileWithoutDimensionsToo)
{
    EXPECT_EQ(ResultOfOpening(Without2003(Small())), AC_RESULT_FILE_CORRUPT);
    EXPECT_EQ(ResultOfOpening(Without2003(Small().Dummy())), AC_RESULT_FILE_CORRUPT);
    EXPECT_EQ(ResultOfOpening(Without2003(Small().InDocument())), AC_RESULT_FILE_CORRUPT);
}

TEST_F(NoCounts, LeaveTheReasonInErrno)
{
    auto& image = ReadImage(Without2003(Small().Z(2)));
    EXPECT_THAT(image.Dimensions(), IsEmpty());
    EXPECT_EQ(errno, ENOEXEC);
}

} // namespace
