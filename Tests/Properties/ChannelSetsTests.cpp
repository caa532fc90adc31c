// What the property sets of a group's channels tell.

#include "SampleDocuments/Tags.h"
#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

class Channels : public Slide
{
protected:
    AC_HAREA FirstArea() const { return Area(Group(), 0, 0); }
    Told ToldOf(const wchar_t* key, Params params = {}) const
    {
        return ToldByArea(FirstArea(), key, std::move(params));
    }
    Told InfoOf(const wchar_t* channel) const { return ToldOf(L"ChannelInfo", {{L"channelId", channel}}); }
    Told LimitsOf(const wchar_t* channel) const { return ToldOf(L"LUTInfo", {{L"channelId", channel}}); }
};

TEST_F(Channels, AreListedByNumberInAscendingOrder)
{
    Open(Stack(1).Channels(12));
    EXPECT_EQ(ToldOf(L"EnabledChannelIdList"),
              (Told{{"id",
                     {"text 0", "text 1", "text 2", "text 3", "text 4", "text 5", "text 6", "text 7", "text 8",
                      "text 9", "text 10", "text 11"}}}));
}

TEST_F(Channels, AreOneWithoutAChannelDimension)
{
    Open(Stack(1).Z(2));
    EXPECT_EQ(ToldOf(L"EnabledChannelIdList"), (Told{{"id", {"text 0"}}}));
    EXPECT_THAT(InfoOf(L"0").at("name"), ElementsAre("text Channel ID 0 (Single Channel)"));
}

TEST_F(Channels, ThatExistAreEchoed)
{
    Open(Stack(1).Channels({"DAPI", "FITC"}));
    EXPECT_EQ(ToldOf(L"ImageChannelIdList", {{L"channelId", L"1"}}), (Told{{"id", {"text 1"}}}));
}

TEST_F(Channels, AreEchoedFromACopyOfTheHostsText)
{
    Open(Stack(1).Channels({"DAPI", "FITC"}));
    std::wstring wanted = L"1";
    const AC_HPROPERTY set = SetOf(FirstArea(), L"ImageChannelIdList", {{L"channelId", wanted.c_str()}});
    wanted = L"0";
    EXPECT_EQ(ToldBy(set), (Told{{"id", {"text 1"}}}));
}

TEST_F(Channels, HaveNamesOfTheirOwn)
{
    Open(Stack(1).Channels({"DAPI", "FITC"}));
    EXPECT_THAT(InfoOf(L"0").at("name"), ElementsAre("text DAPI"));
    EXPECT_THAT(InfoOf(L"1").at("name"), ElementsAre("text FITC"));
}

TEST_F(Channels, AreFoundByNumbersInAnyNotation)
{
    Open(Stack(1).Channels({"DAPI", "FITC"}));
    EXPECT_EQ(InfoOf(L"0x1"), InfoOf(L"1"));
    EXPECT_EQ(InfoOf(L"1a"), InfoOf(L"1")); // what follows the number is not looked at
}

TEST_F(Channels, AreNotFoundByTheFirstDigitsOfANumberThatNoneHas)
{
    Open(Stack(1).Channels({"DAPI"}));
    const AC_HAREA area = FirstArea();
    EXPECT_THAT(MessagesOf(
                    [&] {
                        EXPECT_EQ(ResultOfSet(area, L"ChannelInfo", {{L"channelId", L"1a"}}), AC_RESULT_INVALID_PARAM);
                    }),
                ElementsAre("Invalid channel ID!"));
}

struct InfoRow : Row
{
    Stack Group;
    int Depth;
    int BitCount;
    std::string Format;
    std::string ColorSpace;
};

class ChannelInfo : public Channels, public testing::WithParamInterface<InfoRow>
{
};

TEST_P(ChannelInfo, TellsWhatThePixelsAreMadeOf)
{
    Open(GetParam().Group);
    EXPECT_EQ(InfoOf(L"0"), (Told{{"name", {"text Channel ID 0 (Single Channel)"}},
                                  {"depth", {"int " + std::to_string(GetParam().Depth)}},
                                  {"bitCount", {"int " + std::to_string(GetParam().BitCount)}},
                                  {"format", {"text " + GetParam().Format}},
                                  {"compression", {"text NONE"}},
                                  {"colorSpace", {"text " + GetParam().ColorSpace}}}));
}

INSTANTIATE_TEST_SUITE_P(
    Pixels, ChannelInfo,
    testing::Values(
        InfoRow{{"Raw8"}, Stack(1).Raw(ComponentType::Uint8), 1, 8, "RAW", "GRAYSCALE"},
        InfoRow{{"Raw16"}, Stack(1).Raw(ComponentType::Uint16), 2, 16, "RAW", "GRAYSCALE"},
        InfoRow{
            {"Raw16Of12Bits"}, Stack(1).Raw(ComponentType::Uint16).DisplayLimits(0, 4096), 2, 12, "RAW", "GRAYSCALE"},
        InfoRow{{"RawRgb"}, Stack(1).Raw(ComponentType::Uint8, 3), 3, 8, "RAW", "RGB"},
        InfoRow{{"RawBgr"}, Stack(1).Raw(ComponentType::Uint8, 3).ComponentOrder(1), 3, 8, "RAW", "BGR"},
        InfoRow{{"Jpeg"}, Stack(1).Jpeg(), 1, 8, "JPEG", "GRAYSCALE"},
        InfoRow{{"JpegOfColours"}, Stack(1).Jpeg(3), 3, 8, "JPEG", "RGB"},
        InfoRow{{"JpegLossless"}, Stack(1).JpegLossless(), 1, 8, "JPEG", "GRAYSCALE"},
        InfoRow{{"J2k"}, Stack(1).J2k(), 1, 8, "J2K", "GRAYSCALE"},
        InfoRow{{"Png"}, Stack(1).Png(), 1, 8, "PNG", "GRAYSCALE"},
        InfoRow{{"Bmp"}, Stack(1).Bmp(), 1, 8, "BMP", "GRAYSCALE"},
        InfoRow{{"CompressedWithoutLimits"}, Stack(1).Png().WithoutDisplayLimits(), 1, -1, "PNG", "GRAYSCALE"}),
    NameOfRow());

TEST_F(Channels, LogWhatTheirComponentsAre)
{
    Open(Stack(1).Name("leaf").Channels({"DAPI"}));
    const auto messages = MessagesOf([&] { InfoOf(L"0"); });
    EXPECT_THAT(messages, Contains(testing::StartsWith("ZEL Layer 'leaf', channel 'DAPI', component format type = '")));
    EXPECT_THAT(messages, Contains("TO_DO: 'ChannelInfo->compression': Ask question on exact meaning of this BRIX "
                                   "output parameter. For the time being we are simply always returning 'NONE' as "
                                   "discussed."));
}

// ---- Display limits ----

struct LimitsRow : Row
{
    Stack Group;
    int Shadow;
    int Highlight;
};

class LimitsOfAChannel : public Channels, public testing::WithParamInterface<LimitsRow>
{
};

TEST_P(LimitsOfAChannel, AreWholeNumbersThatItsPixelsCanHave)
{
    Open(GetParam().Group);
    EXPECT_EQ(LimitsOf(L"0"), (Told{{"shadow", {"int " + std::to_string(GetParam().Shadow)}},
                                    {"highlight", {"int " + std::to_string(GetParam().Highlight)}}}));
}

Stack Grey(uint32_t componentType, double lower, double upper)
{
    return Stack(1).Raw(static_cast<ComponentType::E>(componentType)).DisplayLimits(lower, upper);
}
Stack Single(double lower, double upper, uint32_t componentType = ComponentType::Uint8)
{
    return Grey(componentType, lower, upper);
}

INSTANTIATE_TEST_SUITE_P(
    Limits, LimitsOfAChannel,
    testing::Values(LimitsRow{{"AsTheyAre"}, Single(10, 200), 10, 200},
                    LimitsRow{{"CappedAt8Bits"}, Single(10, 256), 10, 255},
                    LimitsRow{{"NotCappedAt16Bits"}, Single(10, 256, ComponentType::Uint16), 10, 256},
                    LimitsRow{{"CappedAt16Bits"}, Single(0, 70000.4, ComponentType::Uint16), 0, 65535},
                    LimitsRow{{"CappedFarBeyond32Bits"}, Single(0, 1e300, ComponentType::Uint16), 0, 65535},
                    LimitsRow{{"NotBelowZero"}, Single(-3.2, 200), 0, 200},
                    LimitsRow{{"HalvesUpwards"}, Single(10.5, 20.5), 11, 21},
                    LimitsRow{{"RoundedDown"}, Single(10.4, 20.4), 10, 20},
                    LimitsRow{{"OfJpegColours"}, Stack(1).Jpeg(3).DisplayLimits(5, 256), 5, 255},
                    LimitsRow{{"OfJ2kColoursOf8Bits"}, Stack(1).J2k(3).DisplayLimits(5, 256), 5, 255}),
    NameOfRow());

TEST_F(Channels, HaveLimitsOfTheirOwn)
{
    Open(Stack(1).Channels({CChannel("DAPI", 3, 100), CChannel("FITC", 4, 120)}));
    EXPECT_EQ(LimitsOf(L"0"), (Told{{"shadow", {"int 3"}}, {"highlight", {"int 100"}}}));
    EXPECT_EQ(LimitsOf(L"1"), (Told{{"shadow", {"int 4"}}, {"highlight", {"int 120"}}}));
}

TEST_F(Channels, PreferTheirOwnLimitsToThoseOfTheStack)
{
    Open(Stack(1).Channels({CChannel("DAPI", 3, 100)}).StackLimits(50, 60));
    EXPECT_EQ(LimitsOf(L"0"), (Told{{"shadow", {"int 3"}}, {"highlight", {"int 100"}}}));
}

TEST_F(Channels, TakeTheLimitsOfTheStackForWantOfTheirOwn)
{
    Open(Stack(1).Channels({"DAPI"}).WithoutDisplayLimits().StackLimits(50, 60));
    EXPECT_EQ(LimitsOf(L"0"), (Told{{"shadow", {"int 50"}}, {"highlight", {"int 60"}}}));
}

TEST_F(Channels, FindTheirLimitsByTheSecondTagOfTheField)
{
    Document document;
    document.With(Stack(1).Channels({CChannel("DAPI", 3, 100), CChannel("FITC", 4, 120)}));
    document.ChannelVolume(1, 0).SecondTag(1);
    document.ChannelVolume(1, 1).SecondTag(0);
    Open(document);
    EXPECT_EQ(LimitsOf(L"0"), (Told{{"shadow", {"int 4"}}, {"highlight", {"int 120"}}}));
}

TEST_F(Channels, WithoutAnyLimitsFail)
{
    Open(Stack(1).WithoutDisplayLimits());
    EXPECT_EQ(ResultOfSet(FirstArea(), L"LUTInfo", {{L"channelId", L"0"}}), AC_RESULT_FAILURE);
}

TEST_F(Channels, TakeThePlaneAll)
{
    Open(Single(10, 200));
    EXPECT_EQ(ToldOf(L"LUTInfo", {{L"planeName", L"all"}, {L"channelId", L"0"}}), LimitsOf(L"0"));
}

TEST_F(Channels, AskedForTheSameLimitsInEitherOrderGiveTheSameSet)
{
    Open(Stack(1).Channels(2));
    EXPECT_EQ(SetOf(FirstArea(), L"LUTInfo", {{L"channelId", L"1"}, {L"planeName", L"all"}}),
              SetOf(FirstArea(), L"LUTInfo", {{L"planeName", L"all"}, {L"channelId", L"1"}}));
}

struct NoLimitsRow : Row
{
    Stack Group;
};

class PixelsWithoutLimits : public Channels, public testing::WithParamInterface<NoLimitsRow>
{
};

TEST_P(PixelsWithoutLimits, AreAnIllegalState)
{
    Open(GetParam().Group);
    EXPECT_EQ(ResultOfSet(FirstArea(), L"LUTInfo", {{L"channelId", L"0"}}), AC_RESULT_ILLEGAL_STATE);
}

INSTANTIATE_TEST_SUITE_P(Pixels, PixelsWithoutLimits,
                         testing::Values(NoLimitsRow{{"RawColours"}, Stack(1).Raw(ComponentType::Uint8, 3)},
                                         NoLimitsRow{{"PngColours"}, Stack(1).Png(3)},
                                         NoLimitsRow{{"Raw32"}, Stack(1).Raw(ComponentType::Uint32)}),
                         NameOfRow());

TEST_F(Channels, OfAColourSpaceThatHostsDoNotKnowEndTheProcess)
{
    Open(Stack(1).Jpeg(3).ColorSpace(StoreColorSpace::Hsv).ComponentOrder(-1));
    EXPECT_ENDS_THE_PROCESS(InfoOf(L"0"), "error: unhandled pixel format type!.*\n.*" ABORT_WAS_CALLED);
}

struct DamagedLimitsRow : Row
{
    std::vector<double> Limits;
};

class DamagedLimits : public Channels, public testing::WithParamInterface<DamagedLimitsRow>
{
};

TEST_P(DamagedLimits, FailAnAssertion)
{
    Document document;
    document.With(Stack(1));
    document.StackProperties(1).Put(Doubles(Tag::Limits, GetParam().Limits));
    Open(document);
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = ResultOfSet(FirstArea(), L"LUTInfo", {{L"channelId", L"0"}}); });
    EXPECT_EQ(result, AC_RESULT_FAILURE);
    EXPECT_THAT(messages, Contains(HasSubstr("Assertion failed: file ")));
}

INSTANTIATE_TEST_SUITE_P(
    Limits, DamagedLimits,
    testing::Values(DamagedLimitsRow{{"OneNumber"}, {5}}, DamagedLimitsRow{{"ShadowBeyond32Bits"}, {1e300, 200}},
                    DamagedLimitsRow{{"ShadowIsNoNumber"}, {std::numeric_limits<double>::quiet_NaN(), 200}},
                    DamagedLimitsRow{{"HighlightIsNoNumber"}, {0, std::numeric_limits<double>::quiet_NaN()}},
                    DamagedLimitsRow{{"HighlightFarBelowZero"}, {0, -1e300}}),
    NameOfRow());

} // namespace
