// The display process flow: which images are shown, and in which order.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

constexpr uint32_t TagOfStack = 10005;
constexpr uint32_t TagOfOperator = 10000;
constexpr uint32_t TagOfHidden = 10056;

CNode Channel(std::vector<CNode> fields = {})
{
    return Volume(2013, std::move(fields));
}
CNode Shows(int32_t stackId)
{
    return Channel({Int32(TagOfStack, stackId)});
}
CNode Shows(int32_t stackId, bool isHidden)
{
    return Channel({Int32(TagOfStack, stackId), Bool(TagOfHidden, isHidden)});
}
CNode Operator(int32_t type)
{
    return Channel({Int32(TagOfOperator, type)});
}
CNode Layer(uint32_t number, std::vector<CNode> channels)
{
    return Volume(2012, std::move(channels)).SecondTag(number);
}

class DisplayFlow : public ZelSlide
{
protected:
    /// Two stacks in directories of the document, 1 and 2, under a display flow of these layers.
    static Document Under(std::vector<CNode> layers)
    {
        Document document;
        document.With(Stack(1).InDocument()).With(Stack(2).InDocument());
        document.Volume({2000}).Put(Volume(2011, std::move(layers)));
        return document;
    }
    std::vector<int32_t> VisibleLayersUnder(std::vector<CNode> layers)
    {
        Zel::CZelImgDoc& doc = Read(Under(std::move(layers)));
        doc.MultiDimImages();
        return doc.VisibleLayers();
    }
};

struct FlowRow : Row
{
    std::vector<CNode> Layers;
};

class SoundDisplayFlow : public DisplayFlow, public testing::WithParamInterface<FlowRow>
{
};

TEST_P(SoundDisplayFlow, Opens)
{
    EXPECT_EQ(ResultOfOpening(Under(GetParam().Layers)), AC_RESULT_SUCCESS);
}

INSTANTIATE_TEST_SUITE_P(
    Flows, SoundDisplayFlow,
    testing::Values(
        FlowRow{{"OneLayerEach"}, {Layer(0, {Shows(1)}), Layer(1, {Shows(2)})}},
        FlowRow{{"OtherOrder"}, {Layer(0, {Shows(2)}), Layer(1, {Shows(1)})}},
        FlowRow{{"OperatorMinusOne"}, {Layer(0, {Shows(1)}), Layer(1, {Operator(-1)}), Layer(2, {Shows(2)})}},
        FlowRow{{"OperatorOne"}, {Layer(0, {Operator(1)}), Layer(1, {Shows(1)}), Layer(2, {Shows(2)})}},
        FlowRow{{"MoreChannels"}, {Layer(0, {Shows(1), Channel(), Channel()}), Layer(1, {Shows(2), Channel()})}}),
    NameOfRow());

class BrokenDisplayFlow : public DisplayFlow, public testing::WithParamInterface<FlowRow>
{
};

TEST_P(BrokenDisplayFlow, IsAFailure)
{
    EXPECT_EQ(ResultOfOpening(Under(GetParam().Layers)), AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(
    Flows, BrokenDisplayFlow,
    testing::Values(
        FlowRow{{"NoLayers"}, {}}, FlowRow{{"StackThatIsNotShown"}, {Layer(0, {Shows(1)})}},
        FlowRow{{"StackThatIsShownTwice"}, {Layer(0, {Shows(1)}), Layer(1, {Shows(2)}), Layer(2, {Shows(2)})}},
        FlowRow{{"HiddenStackThatIsShownTwice"},
                {Layer(0, {Shows(1, true)}), Layer(1, {Shows(1, true)}), Layer(2, {Shows(2)})}},
        FlowRow{{"StackThatIsNotThere"}, {Layer(0, {Shows(1)}), Layer(1, {Shows(2)}), Layer(2, {Shows(3)})}},
        FlowRow{{"NumberLeftOut"}, {Layer(0, {Shows(1)}), Layer(2, {Shows(2)})}},
        FlowRow{{"NumberTwice"}, {Layer(0, {Shows(1)}), Layer(0, {Shows(2)})}},
        FlowRow{{"NumbersFromOne"}, {Layer(1, {Shows(1)}), Layer(2, {Shows(2)})}},
        FlowRow{{"NoChannels"}, {Layer(0, {Shows(1)}), Layer(1, {Shows(2)}), Layer(2, {})}},
        FlowRow{{"ChannelOfNothing"}, {Layer(0, {Shows(1)}), Layer(1, {Shows(2)}), Layer(2, {Channel()})}},
        FlowRow{{"StackInTheSecondChannel"}, {Layer(0, {Shows(1), Shows(2)}), Layer(1, {Shows(2)})}},
        FlowRow{{"OperatorInTheSecondChannel"}, {Layer(0, {Shows(1), Operator(1)}), Layer(1, {Shows(2)})}},
        FlowRow{{"HiddenInTheSecondChannel"},
                {Layer(0, {Shows(1), Channel({Bool(TagOfHidden, false)})}), Layer(1, {Shows(2)})}},
        FlowRow{{"OperatorThatShowsAStack"},
                {Layer(0, {Shows(1)}), Layer(1, {Channel({Int32(TagOfStack, 2), Int32(TagOfOperator, 1)})})}},
        FlowRow{{"OperatorZero"}, {Layer(0, {Shows(1)}), Layer(1, {Shows(2)}), Layer(2, {Operator(0)})}},
        FlowRow{{"OperatorTwo"}, {Layer(0, {Shows(1)}), Layer(1, {Shows(2)}), Layer(2, {Operator(2)})}},
        FlowRow{{"HiddenByOneLayerAndNotByTheNext"}, {Layer(0, {Shows(1, true)}), Layer(1, {Shows(1)})}}),
    NameOfRow());

TEST_F(DisplayFlow, IsBrokenByALayerWithoutANumber)
{
    Document document = Under({Layer(0, {Shows(1)}), Layer(1, {Shows(2)})});
    document.DisplayLayer(1).NoSecondTag();
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

TEST_F(DisplayFlow, LetsTheLastOfTwoFlagsOfOneStackCount)
{
    // As many layers as images, so that the count holds although stack 2 is not shown.
    Open(Under({Layer(0, {Shows(1, true)}), Layer(1, {Shows(1, false)})}));
    EXPECT_EQ(NumOfGroups(Doc()), 2);
    Open(Under({Layer(0, {Shows(1, false)}), Layer(1, {Shows(1, true)})}));
    EXPECT_EQ(NumOfGroups(Doc()), 1);
}

TEST_F(DisplayFlow, IsLookedAtForVectorGraphicsToo)
{
    Document document;
    document.With(Stack(1).VectorGraphics());
    document.Volume({2000}).Put(Volume(2011, {Layer(5, {Shows(1)})}));
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

// The order in which images are shown.

TEST_F(DisplayFlow, TellsTheOrderInWhichImagesAreShown)
{
    EXPECT_THAT(VisibleLayersUnder({Layer(0, {Shows(2)}), Layer(1, {Shows(1)})}), ElementsAre(2, 1));
}

TEST_F(DisplayFlow, TellsAnImageThatIsShownTwiceTwice)
{
    EXPECT_THAT(VisibleLayersUnder({Layer(0, {Shows(2)}), Layer(1, {Shows(2)})}), ElementsAre(2, 2));
}

TEST_F(DisplayFlow, TellsNoImageUnderAFlagWhateverItSays)
{
    EXPECT_THAT(VisibleLayersUnder({Layer(0, {Shows(1, false)}), Layer(1, {Shows(2)})}), ElementsAre(2));
    EXPECT_THAT(VisibleLayersUnder({Layer(0, {Shows(1, true)}), Layer(1, {Shows(2)})}), ElementsAre(2));
}

TEST_F(DisplayFlow, WithoutImagesIsNotAskedForTheStackOfAHiddenChannel)
{
    const auto channel = [](bool isHidden)
    {
        std::vector<CNode> fields = {Text(TagOfStack, u"not the number of a stack")};
        if (isHidden)
            fields.push_back(Bool(TagOfHidden, false));
        return Channel(std::move(fields));
    };
    for (const bool isHidden : {true, false})
    {
        Document document;
        document.Volume({2000}).Put(Volume(2011, {Layer(0, {channel(isHidden)})}));
        EXPECT_EQ(ResultOfOpening(std::move(document)), isHidden ? AC_RESULT_SUCCESS : AC_RESULT_FAILURE);
    }
}

TEST_F(DisplayFlow, TellsOnlyImagesThatWereBuilt)
{
    Document document;
    document.With(Stack(1).InDocument()).With(Stack(2).VectorGraphics());
    Zel::CZelImgDoc& doc = Read(std::move(document));
    doc.MultiDimImages();
    EXPECT_THAT(doc.VisibleLayers(), ElementsAre(1));
}

TEST_F(DisplayFlow, TellsNothingOfOperators)
{
    EXPECT_THAT(VisibleLayersUnder({Layer(0, {Shows(1)}), Layer(1, {Operator(1)}), Layer(2, {Shows(2)})}),
                ElementsAre(1, 2));
}

} // namespace
