// The colours in which the grey pixels of a channel are shown.

#include "SampleDocuments/Tags.h"
#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

class LookUpTables : public Slide
{
protected:
    AC_HAREA FirstArea() const { return Area(Group(), 0, 0); }
    AC_Result Read(std::wstring channel, int size)
    {
        return Call(_AC_GetLUT, FirstArea(), channel.data(), Red.data(), Green.data(), Blue.data(), size, &Count);
    }
    AC_Result Size(std::wstring channel)
    {
        return Call(_AC_GetLUT, FirstArea(), channel.data(), nullptr, nullptr, nullptr, 0, &Count);
    }

    std::array<int, 3> Red = {-1, -1, -1};
    std::array<int, 3> Green = {-1, -1, -1};
    std::array<int, 3> Blue = {-1, -1, -1};
    int Count = -1;
};

const std::vector<CColour> TwoColours = {{1, 2, 3}, {255, 128, 0}};

class FormOfATable : public LookUpTables, public testing::WithParamInterface<TableForm::E>
{
};

TEST_P(FormOfATable, GivesRedGreenAndBlue)
{
    Open(Stack(1).LookUpTable({TwoColours, GetParam()}));
    EXPECT_EQ(Read(L"0", 3), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 2);
    EXPECT_THAT(Red, ElementsAre(1, 255, -1));
    EXPECT_THAT(Green, ElementsAre(2, 128, -1));
    EXPECT_THAT(Blue, ElementsAre(3, 0, -1));
}

TEST_P(FormOfATable, GivesEachChannelItsOwn)
{
    Open(Stack(1).Channels({CChannel("A").With(CLookUpTable({{9, 8, 7}}, GetParam())),
                            CChannel("B").With(CLookUpTable(TwoColours, GetParam()))}));
    EXPECT_EQ(Read(L"0", 3), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 1);
    EXPECT_EQ(Read(L"1", 3), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 2);
}

TEST_P(FormOfATable, NeedsWholeColours)
{
    Open(Stack(1).LookUpTable(CLookUpTable::OfBytes({1, 2, 3, 4}, GetParam())));
    EXPECT_EQ(Size(L"0"), AC_RESULT_FAILURE);
}

TEST_P(FormOfATable, MayHold256Colours)
{
    Open(Stack(1).LookUpTable({Ramp(256, {255, 0, 0}), GetParam()}));
    EXPECT_EQ(Size(L"0"), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 256);
}

INSTANTIATE_TEST_SUITE_P(Forms, FormOfATable, testing::Values(TableForm::Volume, TableForm::Simple),
                         [](const auto& row) { return row.param == TableForm::Volume ? "Volume" : "Simple"; });

TEST_F(LookUpTables, OfTheStackServeChannelsWithoutOne)
{
    Open(Stack(1).Channels({CChannel("A").With(CLookUpTable({{9, 8, 7}})), "B"}).LookUpTable(TwoColours));
    EXPECT_EQ(Read(L"0", 3), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 1);
    EXPECT_EQ(Read(L"1", 3), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 2);
}

TEST_F(LookUpTables, ThatAreMissingHaveAResultOfTheirOwn)
{
    Open(Stack(1));
    EXPECT_EQ(Size(L"0"), AC_RESULT_NO_LUT);
    EXPECT_EQ(Count, 0);
}

TEST_F(LookUpTables, OfColoursFailAnAssertion)
{
    Open(Stack(1).Raw(ComponentType::Uint8, 3).LookUpTable(TwoColours));
    EXPECT_EQ(Size(L"0"), AC_RESULT_FAILURE);
}

TEST_F(LookUpTables, AreNotForColours)
{
    Open(Stack(1).Raw(ComponentType::Uint8, 3));
    EXPECT_EQ(Size(L"0"), AC_RESULT_NO_LUT);
    EXPECT_EQ(Count, -1);
}

TEST_F(LookUpTables, WriteNothingIntoTooSmallTables)
{
    Open(Stack(1).LookUpTable(TwoColours));
    EXPECT_EQ(Read(L"0", 1), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 2);
    EXPECT_THAT(Red, ElementsAre(-1, -1, -1));
}

TEST_F(LookUpTables, TakeANegativeSizeForTooSmall)
{
    Open(Stack(1).LookUpTable(TwoColours));
    EXPECT_EQ(Read(L"0", -1), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 2);
}

TEST_F(LookUpTables, TakeChannelsInAnyNotation)
{
    Open(Stack(1).Channels(2).LookUpTable(TwoColours));
    EXPECT_EQ(Size(L"0x1"), AC_RESULT_SUCCESS);
}

TEST_F(LookUpTables, RefuseAnUnknownChannel)
{
    Open(Stack(1).LookUpTable(TwoColours));
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_THAT(MessagesOf([&] { result = Size(L"1"); }), Contains("Invalid ciaChannelID specified!"));
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
}

TEST_F(LookUpTables, OfAFieldThatHoldsNoBytesFailAnAssertion)
{
    Document document;
    document.With(Stack(1));
    document.StackProperties(1).Put(Int32s(Tag::LookUpTable, {1, 2, 3}));
    Open(document);
    EXPECT_EQ(Size(L"0"), AC_RESULT_FAILURE);
}

TEST_F(LookUpTables, OfAVolumeWithoutValuesFailAnAssertion)
{
    Document document;
    document.With(Stack(1));
    document.StackProperties(1).Put(Volume(Tag::LookUpTable));
    Open(document);
    EXPECT_EQ(Size(L"0"), AC_RESULT_FAILURE);
}

TEST_F(LookUpTables, RefuseNullArguments)
{
    Open(Stack(1).LookUpTable(TwoColours));
    const AC_HAREA area = FirstArea();
    std::wstring channel = L"0";
    constexpr auto message = "Error: params hMultiDimTile or channelID or numOfElesare NULL!";
    const auto messages = MessagesOf(
        [&]
        {
            EXPECT_EQ(_AC_GetLUT(nullptr, channel.data(), nullptr, nullptr, nullptr, 0, &Count),
                      AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetLUT(area, nullptr, nullptr, nullptr, nullptr, 0, &Count), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetLUT(area, channel.data(), nullptr, nullptr, nullptr, 0, nullptr), AC_RESULT_INVALID_PARAM);
        });
    EXPECT_THAT(messages, ElementsAre(message, message, message));
}

class TablesLeftOut : public LookUpTables, public testing::WithParamInterface<int>
{
};

TEST_P(TablesLeftOut, MustBeAllOrNone)
{
    Open(Stack(1).LookUpTable(TwoColours));
    const AC_HAREA area = FirstArea();
    std::wstring channel = L"0";
    const auto table = [](int bit, std::array<int, 3>& numbers)
    { return (GetParam() & bit) != 0 ? numbers.data() : nullptr; };
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf(
        [&] { result = _AC_GetLUT(area, channel.data(), table(1, Red), table(2, Green), table(4, Blue), 3, &Count); });
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
    EXPECT_THAT(messages, ElementsAre("Error: pTableBufferR, pTableBufferG and pTableBufferG must all be uniformly "
                                      "NULL or non-NULL!"));
}

INSTANTIATE_TEST_SUITE_P(Tables, TablesLeftOut, testing::Range(1, 7));

} // namespace
