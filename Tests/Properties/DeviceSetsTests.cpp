// The lens that a group was taken with, and where its stage stood.

#include "SampleDocuments/Tags.h"
#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

class DeviceSets : public Slide
{
protected:
    AC_HAREA FirstArea() const { return Area(Group(), 0, 0); }
    Told Lens() const { return ToldByArea(FirstArea(), L"ObjectiveLensInfo"); }
    AC_Result ResultOfLens() const { return ResultOfSet(FirstArea(), L"ObjectiveLensInfo"); }
    std::vector<std::string> MessagesOfLens() const
    {
        const AC_HAREA area = FirstArea();
        return MessagesOf([&] { ResultOfSet(area, L"ObjectiveLensInfo"); });
    }
};

// ---- Lens ----

TEST_F(DeviceSets, LensTellsAllThatIsKnown)
{
    Open(Stack(1).Lens({.Name = "UPlan 20x",
                        .Magnification = 20,
                        .Aperture = 0.75,
                        .WorkingDistance = CMeasured(600, "10^-6m^1"),
                        .ImmersionMedium = Immersion::Oil,
                        .RefractiveIndex = 1.518}));
    EXPECT_EQ(Lens(), (Told{{"name", {"text UPlan 20x"}},
                            {"magnification", {"double 20"}},
                            {"immersion", {"text oil"}},
                            {"na", {"double 0.75"}},
                            {"wd", {"double 0.6"}},
                            {"refraction", {"double 1.518"}}}));
}

TEST_F(DeviceSets, LensHasADefaultForAllThatIsNotKnown)
{
    Open(Stack(1).Lens({}));
    EXPECT_EQ(Lens(), (Told{{"name", {"text "}},
                            {"magnification", {"double 0"}},
                            {"immersion", {"text empty"}},
                            {"na", {"double 0"}},
                            {"wd", {"double 0"}},
                            {"refraction", {"double 0"}}}));
}

struct MediumRow : Row
{
    int32_t Number;
    const char* Text;
};

class ImmersionMedium : public DeviceSets, public testing::WithParamInterface<MediumRow>
{
};

TEST_P(ImmersionMedium, IsNamedByItsNumber)
{
    Open(Stack(1).Lens({.ImmersionMedium = GetParam().Number}));
    EXPECT_THAT(Lens().at("immersion"), ElementsAre(std::string("text ") + GetParam().Text));
}

INSTANTIATE_TEST_SUITE_P(Numbers, ImmersionMedium,
                         testing::Values(MediumRow{{"Empty"}, 0, "empty"}, MediumRow{{"Air"}, 1, "air"},
                                         MediumRow{{"Water"}, 2, "water"}, MediumRow{{"Oil"}, 3, "oil"},
                                         MediumRow{{"Glycerol"}, 4, "glycerol"}, MediumRow{{"Silicone"}, 5, "silicone"},
                                         MediumRow{{"OilSpecial"}, 6, "oil_special"},
                                         MediumRow{{"Unknown"}, 7, "unknown"},
                                         MediumRow{{"HyalideK9"}, 8, "HYALIDE-K9"},
                                         MediumRow{{"Glycerol100"}, 9, "glycerol_100"}, MediumRow{{"Beyond"}, 10, ""},
                                         MediumRow{{"FarBeyond"}, 42, ""}, MediumRow{{"Negative"}, -1, ""}),
                         NameOfRow());

TEST_F(DeviceSets, LensIsMissingWithoutAnOpticalPath)
{
    Open(Stack(1));
    EXPECT_EQ(ResultOfLens(), AC_RESULT_PROPERTY_NOT_FOUND);
    EXPECT_THAT(MessagesOfLens(), ElementsAre("missing imgOpticalPath tag!"));
}

TEST_F(DeviceSets, LensIsMissingWithoutARevolver)
{
    Open(Stack(1).Exposure(100));
    EXPECT_EQ(ResultOfLens(), AC_RESULT_PROPERTY_NOT_FOUND);
    EXPECT_THAT(MessagesOfLens(),
                ElementsAre("Note: Could not find revolver device, hope that objective lens info is TRULY optional."));
}

TEST_F(DeviceSets, LensIsMissingWhenItsRevolverTellsNothing)
{
    Open(Stack(1).Device({.SubType = DeviceSubType::Revolver, .HasProperties = false}));
    EXPECT_EQ(ResultOfLens(), AC_RESULT_PROPERTY_NOT_FOUND);
    EXPECT_THAT(MessagesOfLens(), ElementsAre("missing needed tag!", "Error, returning NULL"));
}

TEST_F(DeviceSets, LensIsThatOfTheFirstRevolver)
{
    Open(Stack(1)
             .Exposure(100)
             .Device({.Id = 3, .SubType = DeviceSubType::Revolver, .Lens = {.Name = "first", .Aperture = 0.1}})
             .Device({.Id = 4, .SubType = DeviceSubType::Revolver, .Lens = {.Name = "second", .Aperture = 0.2}}));
    EXPECT_THAT(Lens().at("name"), ElementsAre("text first"));
    EXPECT_THAT(Lens().at("na"), ElementsAre("double 0.1"));
}

// ---- The aperture, which channels may tell in the stack's place ----

TEST_F(DeviceSets, ApertureOfTheStackWinsOverThatOfAChannel)
{
    Open(Stack(1).Channels({"A"}).Lens({.Aperture = 0.5}).ChannelDevice(0, Revolver({.Aperture = 0.75})));
    EXPECT_THAT(Lens().at("na"), ElementsAre("double 0.5"));
}

TEST_F(DeviceSets, ApertureIsThatOfTheFirstChannelThatTellsOne)
{
    Open(Stack(1)
             .Channels({"A", "B", "C"})
             .Lens({})
             .ChannelDevice(0, Revolver({}))
             .ChannelDevice(1, Revolver({.Aperture = 0.75}))
             .ChannelDevice(2, Revolver({.Aperture = 0.9})));
    EXPECT_THAT(Lens().at("na"), ElementsAre("double 0.75"));
}

TEST_F(DeviceSets, ApertureLeavesOutChannelsWithoutAnOpticalPath)
{
    Open(Stack(1).Channels({"A", "B"}).Lens({}).ChannelDevice(1, Revolver({.Aperture = 0.75})));
    EXPECT_THAT(MessagesOf([&] { EXPECT_THAT(Lens().at("na"), ElementsAre("double 0.75")); }),
                Contains("Warning! No ChannelLevelImgOpticalPath info present for the channel."));
}

TEST_F(DeviceSets, ApertureLeavesOutChannelsWithoutARevolver)
{
    Open(Stack(1)
             .Channels({"A", "B"})
             .Lens({})
             .ChannelDevice(0, Camera(5))
             .ChannelDevice(1, Revolver({.Aperture = 0.75})));
    EXPECT_THAT(
        MessagesOf([&] { EXPECT_THAT(Lens().at("na"), ElementsAre("double 0.75")); }),
        Contains("Warning: Could not find revolver device for channel 0, hope that objective lens info is TRULY "
                 "optional."));
}

TEST_F(DeviceSets, ApertureOfASingleChannelIsNotLookedFor)
{
    Open(Stack(1).Lens({}));
    const auto messages = MessagesOf([&] { EXPECT_THAT(Lens().at("na"), ElementsAre("double 0")); });
    EXPECT_THAT(messages, Contains("Warning! No channel metadata present for the channel."));
    EXPECT_THAT(messages, Contains("Error! No Numerical Aperture found at channel or stack level, so returning an "
                                   "assumably invalid value for NA (0)..."));
}

TEST_F(DeviceSets, ApertureIsZeroWhenTheRevolverOfAChannelTellsNothing)
{
    Open(Stack(1)
             .Channels({"A", "B"})
             .Lens({})
             .ChannelDevice(0, {.SubType = DeviceSubType::Revolver, .HasProperties = false})
             .ChannelDevice(1, Revolver({.Aperture = 0.75})));
    EXPECT_THAT(MessagesOf([&] { EXPECT_THAT(Lens().at("na"), ElementsAre("double 0")); }),
                Contains("Error: missing needed tag 'ChannelLevelDevicePropSet'for device type 'revolver'!"));
}

TEST_F(DeviceSets, ApertureOfAChannelWithTwoRevolversFailsAnAssertion)
{
    Open(Stack(1)
             .Channels({"A"})
             .Lens({})
             .ChannelDevice(0, Revolver({.Aperture = 0.1}))
             .ChannelDevice(0, Revolver({.Aperture = 0.2})));
    EXPECT_EQ(ResultOfLens(), AC_RESULT_FAILURE);
}

struct DistanceRow : Row
{
    CMeasured Distance;
    std::optional<std::string> InMillimetres; ///< not set: a failed assertion
};

class WorkingDistance : public DeviceSets, public testing::WithParamInterface<DistanceRow>
{
};

TEST_P(WorkingDistance, IsToldInMillimetres)
{
    Open(Stack(1).Lens({.WorkingDistance = GetParam().Distance}));
    EXPECT_EQ(ResultOfLens(), GetParam().InMillimetres ? AC_RESULT_SUCCESS : AC_RESULT_FAILURE);
    if (GetParam().InMillimetres)
    {
        EXPECT_THAT(Lens().at("wd"), ElementsAre("double " + *GetParam().InMillimetres));
    }
}

CMeasured UnitAlone()
{
    CMeasured measured;
    measured.Unit = "10^-3m^1";
    return measured;
}

INSTANTIATE_TEST_SUITE_P(
    Units, WorkingDistance,
    testing::Values(DistanceRow{{"Millimetres"}, {0.21, "10^-3m^1"}, "0.21"},
                    DistanceRow{{"Micrometres"}, {210, "10^-6m^1"}, "0.21"},
                    DistanceRow{{"Metres"}, {0.5, "10^-0m^1"}, "500"}, DistanceRow{{"NoUnitForZero"}, {0}, "0"},
                    DistanceRow{{"UnitAlone"}, UnitAlone(), "0"}, DistanceRow{{"NoUnit"}, {0.21}, {}},
                    DistanceRow{{"NoUnitOfLength"}, {0.21, "10^-3s^1"}, {}}, DistanceRow{{"Words"}, {0.21, "mm"}, {}}),
    NameOfRow());

// ---- Stage ----

struct StageRow : Row
{
    std::optional<CMeasured> X;
    std::optional<CMeasured> Y;
    AC_Result Result;
    std::string Position;
};

class StagePosition : public DeviceSets, public testing::WithParamInterface<StageRow>
{
};

TEST_P(StagePosition, IsToldInNanometres)
{
    Open(Stack(1).Stage(GetParam().X, GetParam().Y));
    EXPECT_EQ(ResultOfSet(FirstArea(), L"XYStagePosition"), GetParam().Result);
    if (GetParam().Result == AC_RESULT_SUCCESS)
    {
        EXPECT_EQ(ToldByArea(FirstArea(), L"XYStagePosition"), (Told{{"position", {"point " + GetParam().Position}}}));
    }
}

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
const std::string Micrometres = "10^-6m^1";

INSTANTIATE_TEST_SUITE_P(
    Positions, StagePosition,
    testing::Values(
        StageRow{{"Micrometres"}, {{1500.5, Micrometres}}, {{-20, Micrometres}}, AC_RESULT_SUCCESS, "1500500 -20000"},
        StageRow{{"Millimetres"}, {{1.5, "10^-3m^1"}}, {{0.25, "10^-3m^1"}}, AC_RESULT_SUCCESS, "1500000 250000"},
        StageRow{{"HalfANanometre"}, {{10.5, "10^-9m^1"}}, {{-10.5, "10^-9m^1"}}, AC_RESULT_SUCCESS, "11 -10"},
        StageRow{{"UnitsOfTheirOwn"}, {{1, "10^-3m^1"}}, {{1, "10^-9m^1"}}, AC_RESULT_SUCCESS, "1000000 1"},
        StageRow{{"NothingWithoutUnit"}, {{0}}, {{0}}, AC_RESULT_SUCCESS, "0 0"},
        StageRow{{"XAlone"}, {{1, Micrometres}}, {}, AC_RESULT_PROPERTY_NOT_FOUND, ""},
        StageRow{{"YAlone"}, {}, {{1, Micrometres}}, AC_RESULT_PROPERTY_NOT_FOUND, ""},
        StageRow{{"XIsNoNumber"}, {{NotANumber, Micrometres}}, {{1, Micrometres}}, AC_RESULT_PROPERTY_NOT_FOUND, ""},
        StageRow{{"YIsNoNumber"}, {{1, Micrometres}}, {{NotANumber, Micrometres}}, AC_RESULT_PROPERTY_NOT_FOUND, ""},
        StageRow{{"Neither"}, {}, {}, AC_RESULT_PROPERTY_NOT_FOUND, ""},
        StageRow{{"NoUnit"}, {{1}}, {{1}}, AC_RESULT_FAILURE, ""},
        StageRow{{"UnitWithoutALengthOfNoNumber"}, {{NotANumber, "um"}}, {{1, Micrometres}}, AC_RESULT_FAILURE, ""},
        StageRow{{"TooLarge"}, {{2147483647.0, "10^-9m^1"}}, {{1, Micrometres}}, AC_RESULT_FAILURE, ""},
        StageRow{{"TooLargeInNanometres"}, {{2147484, Micrometres}}, {{1, Micrometres}}, AC_RESULT_FAILURE, ""},
        StageRow{{"TooSmall"}, {{-1e300, "10^-9m^1"}}, {{1, Micrometres}}, AC_RESULT_FAILURE, ""}),
    NameOfRow());

TEST_F(DeviceSets, StagePositionIsMissingWithoutItsNode)
{
    Open(Stack(1));
    EXPECT_EQ(ResultOfSet(FirstArea(), L"XYStagePosition"), AC_RESULT_PROPERTY_NOT_FOUND);
}

} // namespace
