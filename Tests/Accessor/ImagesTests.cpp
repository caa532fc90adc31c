// Finding the image at a channel and a position.

#include "Tests/Accessor/Slide.h"

using namespace SlideOfTest;

namespace
{

class ImagesOfAnArea : public Slide
{
};

TEST_F(ImagesOfAnArea, AreFoundByChannelAndPosition)
{
    const Stack stack = Stack(1).Z(3).T(2).Lambda(2).Channels({"DAPI", "FITC"}).Contents(Labels(1));
    Open(stack);
    const AC_HAREA area = Area(Group(), 0, 0);
    for (const CIndexes& at : stack.Frames())
    {
        const std::wstring channel = std::to_wstring(at.C);
        EXPECT_EQ(BodyOf(Image(area, channel.c_str(), {AtL(at.L), AtZ(at.Z), AtT(at.T)})),
                  stack.TileBytes(0, 0, 0, at));
    }
}

TEST_F(ImagesOfAnArea, HaveOneHandleEach)
{
    Open(Stack(1).Z(2));
    const AC_HAREA area = Area(Group(), 0, 0);
    EXPECT_EQ(Image(area, L"0", {AtZ(1)}), Image(area, L"0", {AtZ(1)}));
    EXPECT_NE(Image(area, L"0", {AtZ(0)}), Image(area, L"0", {AtZ(1)}));
}

TEST_F(ImagesOfAnArea, AreFoundWithoutAPositionOnAnAxisOfOnePoint)
{
    Open(Stack(1).Z(1));
    EXPECT_NE(Tile(0, 0), nullptr);
}

TEST_F(ImagesOfAnArea, AreNotFoundWithoutAPositionOnAnAxisOfSeveral)
{
    Open(Stack(1).Z(3).T(2));
    const AC_HAREA area = Area(Group(), 0, 0);
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(ResultOfImage(area, L"0", {AtT(0)}), AC_RESULT_INVALID_PARAM); }),
                ElementsAre("Missing 'Z' coordinate!"));
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(ResultOfImage(area, L"0", {AtZ(0)}), AC_RESULT_INVALID_PARAM); }),
                ElementsAre("Missing 'T' coordinate!"));
}

TEST_F(ImagesOfAnArea, TakeTheLastOfTwoPositionsOnOneAxis)
{
    Open(Stack(1).Z(3));
    const AC_HAREA area = Area(Group(), 0, 0);
    EXPECT_EQ(Image(area, L"0", {AtZ(0), AtZ(2)}), Image(area, L"0", {AtZ(2)}));
}

// A place without a tile.

TEST_F(ImagesOfAnArea, MayBeMissingWhichIsNoFailure)
{
    Open(Stack(1).Size(600, 600).MissingTile(0, 1, 1));
    AC_HIMAGE image = Tile(0, 0);
    const AC_HAREA area = Area(Group(), 0, 4);
    EXPECT_EQ(Call(_AC_GetImage, area, L"0", nullptr, 0, &image), AC_RESULT_SUCCESS);
    EXPECT_EQ(image, nullptr);
}

TEST_F(ImagesOfAnArea, MayBeMissingInSomeFramesOnly)
{
    Open(Stack(1).Size(600, 256).Z(2).Missing([](const CTilePlace& place)
                                              { return place.At.Z == 1 && place.Column == 2; }));
    EXPECT_NE(Tile(0, 2, L"0", {AtZ(0)}), nullptr);
    EXPECT_EQ(Tile(0, 2, L"0", {AtZ(1)}), nullptr);
}

TEST_F(ImagesOfAnArea, AreMissingWhateverTheErrnoBeforeWas)
{
    Open(Stack(1).Size(600, 600).MissingTile(0, 1, 1));
    const AC_HAREA area = Area(Group(), 0, 4);
    AC_HIMAGE image = nullptr;
    errno = ENOENT;
    EXPECT_EQ(_AC_GetImage(area, L"0", nullptr, 0, &image), AC_RESULT_SUCCESS);
}

// Channels.

struct ChannelRow : Row
{
    std::wstring Text;
    AC_Result Result;
    std::vector<std::string> Messages;
};

class ChannelText : public Slide, public testing::WithParamInterface<ChannelRow>
{
protected:
    void SetUp() override { Open(Stack(1).Channels(12)); }
};

TEST_P(ChannelText, IsADecimalNumberAsItIsWritten)
{
    const AC_HAREA area = Area(Group(), 0, 0);
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = ResultOfImage(area, GetParam().Text.c_str()); });
    EXPECT_EQ(result, GetParam().Result);
    EXPECT_EQ(messages, GetParam().Messages);
}

ChannelRow Accepted(const char* name, const wchar_t* text)
{
    return {{name}, text, AC_RESULT_SUCCESS, {}};
}
ChannelRow NoNumber(const char* name, const wchar_t* text, const std::string& narrow)
{
    return {{name}, text, AC_RESULT_INVALID_PARAM, {"Channel ID '" + narrow + "' cannot be converted to integer!"}};
}
ChannelRow NoChannel(const char* name, const wchar_t* text)
{
    return {{name}, text, AC_RESULT_INVALID_PARAM, {"Channel ID lies outside the acceptable range!"}};
}

INSTANTIATE_TEST_SUITE_P(Texts, ChannelText,
                         testing::Values(Accepted("First", L"0"), Accepted("Plain", L"3"), Accepted("Last", L"11"),
                                         NoChannel("BehindTheLast", L"12"), NoChannel("Greatest", L"4294967295"),
                                         NoNumber("LeadingZero", L"03", "03"), NoNumber("Octal", L"011", "011"),
                                         NoNumber("Hexadecimal", L"0x3", "0x3"), NoNumber("LeadingBlank", L" 3", " 3"),
                                         NoNumber("TrailingBlank", L"3 ", "3 "), NoNumber("Plus", L"+3", "+3"),
                                         NoNumber("Minus", L"-3", "-3"), NoNumber("Empty", L"", ""),
                                         NoNumber("Name", L"DAPI", "DAPI"),
                                         NoNumber("MoreThan32Bits", L"4294967296", "4294967296"),
                                         NoNumber("MoreThan64Bits", L"99999999999999999999", "99999999999999999999")),
                         NameOfRow());

TEST_F(ImagesOfAnArea, AreRefusedForOneChannelTooManyInAParticularRequest)
{
    Open(Stack(1).Channels(2));
    AC_HIMAGE image = nullptr;
    errno = 0;
    EXPECT_EQ(GetImage_ParticularOrNext(true, Area(Group(), 0, 0), {L"0", L"1"}, nullptr, 0, &image),
              AC_RESULT_FAILURE);
}

TEST_F(ImagesOfAnArea, AreFoundByTheJoinedFunctionToo)
{
    Open(Stack(1).Channels(2));
    const AC_HAREA area = Area(Group(), 0, 0);
    AC_HIMAGE image = nullptr;
    errno = 0;
    EXPECT_EQ(GetImage_ParticularOrNext(true, area, {L"1"}, nullptr, 0, &image), AC_RESULT_SUCCESS);
    EXPECT_EQ(image, Image(area, L"1"));
}

// Positions.

struct PositionRow : Row
{
    Axes At;
    AC_Result Result;
    std::vector<std::string> Messages;
};

/// The messages of an assertion are compared without the place in the source that it names.
std::vector<std::string> WithoutPlaces(std::vector<std::string> messages)
{
    for (std::string& message : messages)
        if (const size_t place = message.find(" file "); place != std::string::npos)
            message.resize(place);
    return messages;
}

class PositionOfAnImage : public Slide, public testing::WithParamInterface<PositionRow>
{
protected:
    void SetUp() override { Open(Stack(1).Z(3)); }
};

TEST_P(PositionOfAnImage, IsAnIndexOnAnAxisOfTheGroup)
{
    const AC_HAREA area = Area(Group(), 0, 0);
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = ResultOfImage(area, L"0", GetParam().At); });
    EXPECT_EQ(result, GetParam().Result);
    EXPECT_EQ(WithoutPlaces(messages), GetParam().Messages);
}

const std::string NoSuchAxis = "ztlCoords: BRIX dimension type T invalid for this BRIX Group!";
const std::string OnlyForZero = "We will tolerate this only in case it is asking for for coord idx of 0...";

INSTANTIATE_TEST_SUITE_P(
    Positions, PositionOfAnImage,
    testing::Values(
        PositionRow{{"Last"}, {AtZ(2)}, AC_RESULT_SUCCESS, {}},
        PositionRow{{"FirstOnAnAxisThatIsNotThere"}, {AtZ(0), AtT(0)}, AC_RESULT_SUCCESS, {NoSuchAxis, OnlyForZero}},
        PositionRow{
            {"SecondOnAnAxisThatIsNotThere"}, {AtZ(0), AtT(1)}, AC_RESULT_INVALID_PARAM, {NoSuchAxis, OnlyForZero}},
        PositionRow{
            {"NegativeOnAnAxisThatIsNotThere"}, {AtZ(0), AtT(-1)}, AC_RESULT_INVALID_PARAM, {NoSuchAxis, OnlyForZero}},
        PositionRow{{"BehindTheLast"},
                    {AtZ(3)},
                    AC_RESULT_INVALID_PARAM,
                    {"ztlCoords: Invalid coordinate index '3' for BRIX dimension type 1!",
                     "Assertion failed:", "Error: Assertion failed:"}},
        PositionRow{{"GreatestOf32Bits"},
                    {AtZ(0xFFFFFFFE)},
                    AC_RESULT_INVALID_PARAM,
                    {"ztlCoords: Invalid coordinate index '4294967294' for BRIX dimension type 1!",
                     "Assertion failed:", "Error: Assertion failed:"}},
        PositionRow{{"MoreThan32Bits"}, {AtZ(0xFFFFFFFF)}, AC_RESULT_FAILURE, {"Assertion failed:"}},
        PositionRow{{"Negative"},
                    {AtZ(-1)},
                    AC_RESULT_FAILURE,
                    {"ztlCoords: Negative coordinate index '-1' for BRIX dimension type 1!", "Assertion failed:"}},
        PositionRow{{"OnNoAxis"},
                    {AtZ(0), {static_cast<AC_AxisType>(3), 0}},
                    AC_RESULT_INVALID_PARAM,
                    {"ztlCoords: Unrecognized BRIX dimension type 3!"}},
        PositionRow{{"OnANegativeAxis"},
                    {{static_cast<AC_AxisType>(-1), 0}},
                    AC_RESULT_INVALID_PARAM,
                    {"ztlCoords: Unrecognized BRIX dimension type -1!"}}),
    NameOfRow());

struct AxisRow : Row
{
    AC_AXIS_INFO At;
    std::string Text;
};

class AxisThatIsNotThere : public Slide, public testing::WithParamInterface<AxisRow>
{
};

TEST_P(AxisThatIsNotThere, IsToleratedAtItsFirstPosition)
{
    Open(Stack(1));
    const AC_HAREA area = Area(Group(), 0, 0);
    AC_AXIS_INFO second = GetParam().At;
    second.nNumber = 1;
    const std::vector<std::string> messages = {
        "ztlCoords: BRIX dimension type " + GetParam().Text + " invalid for this BRIX Group!", OnlyForZero};
    EXPECT_EQ(MessagesOf([&] { EXPECT_EQ(ResultOfImage(area, L"0", {GetParam().At}), AC_RESULT_SUCCESS); }), messages);
    EXPECT_EQ(MessagesOf([&] { EXPECT_EQ(ResultOfImage(area, L"0", {second}), AC_RESULT_INVALID_PARAM); }), messages);
}

INSTANTIATE_TEST_SUITE_P(Axes, AxisThatIsNotThere,
                         testing::Values(AxisRow{{"Z"}, AtZ(0), "Z"}, AxisRow{{"Time"}, AtT(0), "T"},
                                         AxisRow{{"Lambda"}, AtL(0), "L"}),
                         NameOfRow());

// What an image tells about itself.

TEST_F(ImagesOfAnArea, TellTheirPositionInTheOrderZTimeLambda)
{
    Open(Stack(1).Lambda(2).T(3).Z(4).Channels(2));
    const AC_HIMAGE image = Tile(0, 0, L"1", {AtT(2), AtZ(3), AtL(1)});
    EXPECT_THAT(AxesOf(image), ElementsAre(AtZ(3), AtT(2), AtL(1)));
    EXPECT_EQ(ChannelOf(image), L"1");
}

TEST_F(ImagesOfAnArea, TellNoPositionWithoutAxes)
{
    Open(Stack(1));
    EXPECT_THAT(AxesOf(Tile(0, 0)), IsEmpty());
    EXPECT_EQ(ChannelOf(Tile(0, 0)), L"0");
}

TEST_F(ImagesOfAnArea, TellTheNumberOfTheirAxesAndWriteNothingWhereThereIsNoRoom)
{
    Open(Stack(1).Z(2).T(2));
    const AC_HIMAGE image = Tile(0, 0, L"0", {AtT(1), AtZ(1)});
    for (const int room : {0, 1})
    {
        std::vector<AC_AXIS_INFO> axes(2, AtL(77));
        int count = 0;
        EXPECT_EQ(Call(_AC_GetImageAxis, image, axes.data(), room, &count), AC_RESULT_SUCCESS);
        EXPECT_EQ(count, 2);
        EXPECT_THAT(axes, ElementsAre(AtL(77), AtL(77)));
    }
}

TEST_F(ImagesOfAnArea, TellTheSizeOfTheirChannelAndWriteNothingWhereThereIsNoRoom)
{
    Open(Stack(1).Channels(11));
    const AC_HIMAGE image = Tile(0, 0, L"10");
    std::wstring channel = L"???";
    int size = 0;
    EXPECT_EQ(Call(_AC_GetImageChannelId, image, channel.data(), 2, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(size, 3);
    EXPECT_EQ(channel, L"???");
    EXPECT_EQ(Call(_AC_GetImageChannelId, image, channel.data(), 3, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(channel, std::wstring(L"10\0", 3));
}

TEST_F(ImagesOfAnArea, HaveTheSizeOfAWholeTileAtTheEdgesToo)
{
    Open(Stack(1).Size(300, 300).Tiles(256, 200));
    EXPECT_EQ(RectOf(Tile(0, 3)), (CMN_RECT{256, 200, 256, 200}));
}

TEST_F(ImagesOfAnArea, LieWhereTheirAreaLies)
{
    Open(Stack(1).Size(1024, 1024).Levels(2));
    EXPECT_EQ(RectOf(Tile(1, 3)), PositionOf(Area(Group(), 1, 3)));
}

// Names of axes.

struct NameRow : Row
{
    AC_AxisType Axis;
    std::wstring Text;
};

class NameOfAnAxis : public testing::TestWithParam<NameRow>
{
};

TEST_P(NameOfAnAxis, IsForPeople)
{
    int size = 0;
    EXPECT_EQ(Call(_AC_GetAxisName, GetParam().Axis, nullptr, 0, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(static_cast<size_t>(size), GetParam().Text.size() + 1);
    std::wstring name(static_cast<size_t>(size), L'?');
    EXPECT_EQ(Call(_AC_GetAxisName, GetParam().Axis, name.data(), size - 1, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(name, std::wstring(static_cast<size_t>(size), L'?'));
    EXPECT_EQ(Call(_AC_GetAxisName, GetParam().Axis, name.data(), size, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(name.c_str(), GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(Axes, NameOfAnAxis,
                         testing::Values(NameRow{{"Time"}, AC_AT_TIME, L"Time Dimension"},
                                         NameRow{{"Z"}, AC_AT_Z, L"Z Dimension (Height from base of slide)"},
                                         NameRow{{"Lambda"}, AC_AT_LAMBDA, L"Lambda (Wavelength) Dimension"}),
                         NameOfRow());

TEST(NameOfNoAxis, IsRefused)
{
    int size = 0;
    for (const int axis : {-1, 3})
        EXPECT_THAT(MessagesOf(
                        [&] {
                            EXPECT_EQ(Call(_AC_GetAxisName, static_cast<AC_AxisType>(axis), nullptr, 0, &size),
                                      AC_RESULT_INVALID_PARAM);
                        }),
                    ElementsAre("Unexpected axis type!"));
}

} // namespace
