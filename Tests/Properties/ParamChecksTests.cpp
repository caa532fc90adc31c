// What each key says to parameters that it does not want.

#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

constexpr auto FailedAssertion = "Assertion failed: file ";

struct CheckRow : Row
{
    const wchar_t* Key;
    Params Wrong;
    AC_Result Result;
    std::string Log; ///< a part of a line; empty: no line at all
};

/// A document that would answer all keys, had they been asked rightly.
class ParamCheck : public Slide, public testing::WithParamInterface<CheckRow>
{
protected:
    void SetUp() override
    {
        Open(Stack(1).Size(256, 256).Z(3).T(2).Channels({"DAPI", "FITC"}).LayerBlob(Regions({Dot("spot", {5, 5})})));
        SetOf(Area(Group(), 0, 0), L"EnabledChannelIdList");
        SetOf(Area(Group(), 0, 0), L"AnalysisROIList");
    }
    static void Check(const std::function<AC_Result()>& ask)
    {
        AC_Result result = AC_RESULT_SUCCESS;
        const auto messages = MessagesOf([&] { result = ask(); });
        EXPECT_EQ(result, GetParam().Result);
        if (GetParam().Log.empty())
            EXPECT_THAT(messages, IsEmpty());
        else
            EXPECT_THAT(messages, Contains(HasSubstr(GetParam().Log)));
    }
};

class ParamCheckOfAreas : public ParamCheck
{
};
class ParamCheckOfImages : public ParamCheck
{
};

TEST_P(ParamCheckOfAreas, RefusesWhatIsWrong)
{
    const AC_HAREA area = Area(Group(), 0, 0);
    Check([&] { return ResultOfSet(area, GetParam().Key, GetParam().Wrong); });
}

TEST_P(ParamCheckOfImages, RefusesWhatIsWrong)
{
    const AC_HIMAGE image = Tile(0, 0, L"0", {AtZ(0), AtT(0)});
    Check([&] { return ResultOfImageSet(image, GetParam().Key, GetParam().Wrong); });
}

CheckRow Asserts(std::string name, const wchar_t* key, Params wrong = {{L"any", L"0"}})
{
    return {{std::move(name)}, key, std::move(wrong), AC_RESULT_FAILURE, FailedAssertion};
}
CheckRow Logs(std::string name, const wchar_t* key, Params wrong, std::string log)
{
    return {{std::move(name)}, key, std::move(wrong), AC_RESULT_INVALID_PARAM, std::move(log)};
}
CheckRow SaysNothing(std::string name, const wchar_t* key, Params wrong, AC_Result result = AC_RESULT_INVALID_PARAM)
{
    return {{std::move(name)}, key, std::move(wrong), result, ""};
}

INSTANTIATE_TEST_SUITE_P(
    NoneExpected, ParamCheckOfAreas,
    testing::Values(Asserts("SystemInfo", L"SystemInfo"), Asserts("UserComment", L"UserComment"),
                    Asserts("IdInfo", L"IdInfo"), Asserts("CreationDateTime", L"CreationDateTime"),
                    Asserts("UpdateDateTime", L"UpdateDateTime"), Asserts("Axes", L"Axes"),
                    Asserts("ObjectiveLensInfo", L"ObjectiveLensInfo"), Asserts("XYStagePosition", L"XYStagePosition"),
                    Asserts("GroupName", L"GroupName"), Asserts("ImagingROIList", L"ImagingROIList"),
                    Asserts("WorkInfo", L"WorkInfo"), Asserts("PixelLength", L"PixelLength"),
                    Asserts("ImageSize", L"ImageSize"),
                    // A parameter that the cache knows by name: without one it would get the set that is there already.
                    Logs("EnabledChannelIdList", L"EnabledChannelIdList", {{L"id", L"0"}},
                         "This propset function expects no params!"),
                    Logs("AnalysisROIList", L"AnalysisROIList", {{L"id", L"0"}},
                         "This propset function expects no params!")),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(NoneExpected, ParamCheckOfImages,
                         testing::Values(Logs("StimulationROIList", L"StimulationROIList", {{L"any", L"0"}},
                                              "This function expects no AC_PARAMS!"),
                                         Logs("JpegTables", L"JpegTables", {{L"any", L"0"}},
                                              "This function takes no AC_PARAMS!")),
                         NameOfRow());

// There are no such regions, so there is nothing to ask about them.
INSTANTIATE_TEST_SUITE_P(AlwaysFails, ParamCheckOfAreas,
                         testing::Values(Asserts("ImagingROIInfo", L"ImagingROIInfo", {}),
                                         Asserts("ImagingROIInfoOfOne", L"ImagingROIInfo", {{L"roiId", L"0"}})),
                         NameOfRow());
INSTANTIATE_TEST_SUITE_P(AlwaysFails, ParamCheckOfImages,
                         testing::Values(Asserts("StimulationROIInfo", L"StimulationROIInfo", {}),
                                         Asserts("StimulationROIInfoOfOne", L"StimulationROIInfo", {{L"roiId", L"0"}})),
                         NameOfRow());

constexpr auto OneChannelId = "This propset function expects 1 param and key should be channelId only!";

INSTANTIATE_TEST_SUITE_P(
    ImageChannelIdList, ParamCheckOfAreas,
    testing::Values(Logs("None", L"ImageChannelIdList", {}, OneChannelId),
                    Logs("Two", L"ImageChannelIdList", {{L"channelId", L"0"}, {L"channelId", L"1"}}, OneChannelId),
                    Logs("OtherName", L"ImageChannelIdList", {{L"id", L"0"}}, OneChannelId),
                    Logs("NoName", L"ImageChannelIdList", {{nullptr, L"0"}}, OneChannelId),
                    SaysNothing("UnknownChannel", L"ImageChannelIdList", {{L"channelId", L"2"}}),
                    SaysNothing("OtherTextOfAKnownNumber", L"ImageChannelIdList", {{L"channelId", L"01"}}),
                    SaysNothing("NoValue", L"ImageChannelIdList", {{L"channelId", nullptr}})),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    ChannelInfo, ParamCheckOfAreas,
    testing::Values(
        Logs("None", L"ChannelInfo", {}, "This propset function expects 1 param!"),
        Logs("Two", L"ChannelInfo", {{L"channelId", L"0"}, {L"channelId", L"1"}},
             "This propset function expects 1 param!"),
        Logs("NoName", L"ChannelInfo", {{nullptr, L"0"}}, "parameter does not have a name!"),
        Logs("OtherName", L"ChannelInfo", {{L"id", L"0"}}, "Name of the first parameter must be 'channelId'!"),
        Logs("NoValue", L"ChannelInfo", {{L"channelId", nullptr}}, "Value of the first parameter cannot be NULL!"),
        Logs("UnknownChannel", L"ChannelInfo", {{L"channelId", L"2"}}, "Invalid channel ID!"),
        Logs("NegativeChannel", L"ChannelInfo", {{L"channelId", L"-1"}}, "Invalid channel ID!"),
        Logs("BeyondIdsByJustOne", L"ChannelInfo", {{L"channelId", L"4294967296"}}, "Invalid channel ID!"),
        Logs("BeyondAllNumbers", L"ChannelInfo", {{L"channelId", L"99999999999999999999"}}, "Invalid channel ID!")),
    NameOfRow());

constexpr auto AxisNames = "Valid axis names are TIMELAPSE, ZSTACK, LAMBDA";

INSTANTIATE_TEST_SUITE_P(
    AxisInfo, ParamCheckOfAreas,
    testing::Values(Asserts("None", L"AxisInfo", {}),
                    Asserts("Two", L"AxisInfo", {{L"axisName", L"ZSTACK"}, {L"axisName", L"LAMBDA"}}),
                    Logs("NoName", L"AxisInfo", {{nullptr, L"ZSTACK"}}, "Expected name of 1 param is 'axisName'!"),
                    Logs("OtherName", L"AxisInfo", {{L"axis", L"ZSTACK"}}, "Expected name of 1 param is 'axisName'!"),
                    Logs("UnknownAxis", L"AxisInfo", {{L"axisName", L"Z"}}, AxisNames),
                    Logs("OtherCase", L"AxisInfo", {{L"axisName", L"zstack"}}, AxisNames),
                    Logs("NoValue", L"AxisInfo", {{L"axisName", nullptr}}, AxisNames),
                    Logs("AxisThatTheGroupDoesNotHave", L"AxisInfo", {{L"axisName", L"LAMBDA"}},
                         "The dimension specified is not applicable for this image!")),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    LUTInfo, ParamCheckOfAreas,
    testing::Values(SaysNothing("None", L"LUTInfo", {}),
                    SaysNothing("PlaneAlone", L"LUTInfo", {{L"planeName", L"all"}}),
                    SaysNothing("LetterInTheChannel", L"LUTInfo", {{L"channelId", L"1a"}}),
                    SaysNothing("HexadecimalChannel", L"LUTInfo", {{L"channelId", L"0x1"}}),
                    SaysNothing("UnknownChannel", L"LUTInfo", {{L"channelId", L"2"}}),
                    SaysNothing("NoChannelValue", L"LUTInfo", {{L"channelId", nullptr}}),
                    SaysNothing("OtherPlane", L"LUTInfo", {{L"channelId", L"0"}, {L"planeName", L"red"}},
                                AC_RESULT_PROPERTY_NOT_FOUND),
                    SaysNothing("NoPlaneValue", L"LUTInfo", {{L"planeName", nullptr}}, AC_RESULT_PROPERTY_NOT_FOUND)),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    AnalysisROIInfo, ParamCheckOfAreas,
    testing::Values(
        Logs("None", L"AnalysisROIInfo", {}, "This propset function expects 1 param!"),
        Logs("Two", L"AnalysisROIInfo", {{L"roiId", L"0"}, {L"roiId", L"0"}}, "This propset function expects 1 param!"),
        Logs("NoName", L"AnalysisROIInfo", {{nullptr, L"0"}}, "parameter does not have a name!"),
        Logs("OtherName", L"AnalysisROIInfo", {{L"id", L"0"}}, "Name of the first parameter must be 'roiId'!"),
        Logs("NoValue", L"AnalysisROIInfo", {{L"roiId", nullptr}}, "Value of the first parameter cannot be NULL!"),
        Logs("OneBeyondTheLast", L"AnalysisROIInfo", {{L"roiId", L"1"}}, "Invalid roi ID!"),
        Logs("Negative", L"AnalysisROIInfo", {{L"roiId", L"-1"}}, "Invalid roi ID!")),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    AxisPosition, ParamCheckOfImages,
    testing::Values(
        Logs("None", L"AxisPosition", {}, "This function expects 1 AC_PARAM!"),
        Logs("Two", L"AxisPosition", {{L"axisName", L"ZSTACK"}, {L"axisName", L"TIMELAPSE"}},
             "This function expects 1 AC_PARAM!"),
        Logs("NoName", L"AxisPosition", {{nullptr, L"ZSTACK"}}, "parameter does not have a name!"),
        Logs("OtherName", L"AxisPosition", {{L"axis", L"ZSTACK"}}, "Name of the first parameter must be 'axisName'!"),
        Logs("NoValue", L"AxisPosition", {{L"axisName", nullptr}}, "Value of the first parameter cannot be NULL!"),
        Logs("UnknownAxis", L"AxisPosition", {{L"axisName", L"X"}},
             "Value of the first parameter must be TIMELAPSE, ZSTACK or LAMBDA!"),
        Logs("AxisThatTheGroupDoesNotHave", L"AxisPosition", {{L"axisName", L"LAMBDA"}},
             "The specified dimension 'LAMBDA' is not applicable for this image!")),
    NameOfRow());

class ParamCheckOfHosts : public Slide
{
};

TEST_F(ParamCheckOfHosts, TakesNullForAnEmptyListEverywhere)
{
    Open(Stack(1));
    AC_HPROPERTY set = nullptr;
    for (const wchar_t* key : {L"Axes", L"GroupName", L"SystemInfo", L"PixelLength", L"ImageSize"})
        EXPECT_EQ(Call(_AC_GetAreaProperty, Area(Group(), 0, 0), key, nullptr, &set), AC_RESULT_SUCCESS);
    EXPECT_EQ(Call(_AC_GetAreaProperty, Area(Group(), 0, 0), L"AxisInfo", nullptr, &set), AC_RESULT_FAILURE);
    EXPECT_EQ(Call(_AC_GetAreaProperty, Area(Group(), 0, 0), L"LUTInfo", nullptr, &set), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(Call(_AC_GetFrameProperty, Tile(0, 0), L"AxisPosition", nullptr, &set), AC_RESULT_INVALID_PARAM);
}

TEST_F(ParamCheckOfHosts, RefusesAListWithoutElements)
{
    Open(Stack(1));
    const AC_PARAMS params{1, nullptr};
    AC_HPROPERTY set = nullptr;
    const AC_HAREA area = Area(Group(), 0, 0);
    errno = ENOENT; // an old reason is none
    EXPECT_EQ(_AC_GetAreaProperty(area, L"ChannelInfo", &params, &set), AC_RESULT_FAILURE);
}

TEST_F(ParamCheckOfHosts, RefusesANegativeNumberOfParameters)
{
    Open(Stack(1));
    const AC_PARAMS params{-1, nullptr};
    AC_HPROPERTY set = nullptr;
    EXPECT_EQ(Call(_AC_GetAreaProperty, Area(Group(), 0, 0), L"GroupName", &params, &set), AC_RESULT_FAILURE);
    EXPECT_EQ(Call(_AC_GetAreaProperty, Area(Group(), 0, 0), L"ChannelInfo", &params, &set), AC_RESULT_INVALID_PARAM);
}

TEST_F(ParamCheckOfHosts, LeavesErrnoAtZeroBehindAFailedAssertion)
{
    Open(Stack(1));
    ResultOfSet(Area(Group(), 0, 0), L"ImagingROIInfo");
    EXPECT_EQ(errno, 0);
}

TEST_F(ParamCheckOfHosts, TakesASetThatIsThereForAParameterThatNobodyKnows)
{
    Open(Stack(1));
    const AC_HPROPERTY set = SetOf(Area(Group(), 0, 0), L"GroupName");
    EXPECT_EQ(SetOf(Area(Group(), 0, 0), L"GroupName", {{L"any", L"0"}}), set);
}

} // namespace
