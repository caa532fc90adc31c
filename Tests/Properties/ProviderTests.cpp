// The base of all objects that answer property requests: which requests are the same, and what is kept of them.

#include "CommonImageAccess/BrixPropsetProvider.h"
#include "CommonImageAccess/PropsetParams.h"
#include "Tests/Properties/PropertySets.h"
#include "Tests/Support/Assertion.h"

using namespace SlideOfTest;
using CIA::CBrixPropset;

namespace
{

/// Counts how often it is asked to build a set, and tells that number in each.
class CountingProvider : public CIA::CBrixPropsetProvider
{
public:
    int NumOfBuilds = 0;
    int ErrnoOfFailure = 0; ///< not 0: building fails

protected:
    bool BrixPropset_init(const wchar_t*, const AC_PARAMS&, CBrixPropset& propset) override
    {
        ++NumOfBuilds;
        errno = ErrnoOfFailure;
        propset.AddInteger(L"build", NumOfBuilds);
        return ErrnoOfFailure == 0;
    }
    CIA::CBrixPropsets& KeptPropsets() override { return _Propsets; }

private:
    CIA::CBrixPropsets _Propsets;
};

class Provider : public testing::Test
{
protected:
    CountingProvider Asked;

    AC_Result Ask(const wchar_t* key, Params params, AC_HPROPERTY& set)
    {
        return Asked.BrixPropset(key, params.Get(), &set);
    }
    AC_HPROPERTY SetOf(const wchar_t* key, Params params = {})
    {
        AC_HPROPERTY set = nullptr;
        EXPECT_EQ(Ask(key, std::move(params), set), AC_RESULT_SUCCESS);
        return set;
    }
};

TEST_F(Provider, BuildsASetOnce)
{
    const AC_HPROPERTY set = SetOf(L"Axes");
    EXPECT_EQ(SetOf(L"Axes"), set);
    EXPECT_EQ(Asked.NumOfBuilds, 1);
}

TEST_F(Provider, TakesNoParametersForAnEmptyList)
{
    AC_HPROPERTY set = nullptr;
    EXPECT_EQ(Asked.BrixPropset(L"Axes", nullptr, &set), AC_RESULT_SUCCESS);
    EXPECT_EQ(SetOf(L"Axes"), set);
}

TEST_F(Provider, TellsParameterValuesApart)
{
    const AC_HPROPERTY z = SetOf(L"AxisInfo", {{L"axisName", L"ZSTACK"}});
    EXPECT_EQ(SetOf(L"AxisInfo", {{L"axisName", L"ZSTACK"}}), z);
    EXPECT_NE(SetOf(L"AxisInfo", {{L"axisName", L"LAMBDA"}}), z);
    EXPECT_NE(SetOf(L"AxisInfo"), z);
}

TEST_F(Provider, DoesNotLookAtTheOrderOfParameters)
{
    const AC_HPROPERTY set = SetOf(L"LUTInfo", {{L"channelId", L"1"}, {L"planeName", L"all"}});
    EXPECT_EQ(SetOf(L"LUTInfo", {{L"planeName", L"all"}, {L"channelId", L"1"}}), set);
    EXPECT_EQ(Asked.NumOfBuilds, 1);
}

TEST_F(Provider, DoesNotTellParametersOfOtherNamesApart)
{
    const AC_HPROPERTY set = SetOf(L"ChannelInfo", {{L"colour", L"red"}});
    EXPECT_EQ(SetOf(L"ChannelInfo", {{L"colour", L"blue"}}), set);
    EXPECT_EQ(SetOf(L"ChannelInfo"), set);
}

TEST_F(Provider, TakesTheLastOfTwoParametersOfAName)
{
    const AC_HPROPERTY set = SetOf(L"ChannelInfo", {{L"channelId", L"1"}, {L"channelId", L"2"}});
    EXPECT_EQ(SetOf(L"ChannelInfo", {{L"channelId", L"2"}}), set);
}

TEST_F(Provider, ReadsNumbersForKeysThatTakeNumbers)
{
    const AC_HPROPERTY set = SetOf(L"AnalysisROIList", {{L"id", L"A"}}); // 65 as a number
    EXPECT_EQ(SetOf(L"AnalysisROIList", {{L"type", L"A"}}), set);
    EXPECT_NE(SetOf(L"AnalysisROIList", {{L"id", L"B"}}), set);
}

TEST_F(Provider, AsksAnewForTheImageSizeAndKeepsTheFirstAnswer)
{
    const AC_HPROPERTY set = SetOf(L"ImageSize");
    EXPECT_EQ(SetOf(L"ImageSize"), set);
    EXPECT_EQ(Asked.NumOfBuilds, 2);
    EXPECT_EQ(ToldBy(set), (Told{{"build", {"int 1"}}}));
}

TEST_F(Provider, KeepsNoFailure)
{
    AC_HPROPERTY set = this;
    Asked.ErrnoOfFailure = ENODATA;
    EXPECT_EQ(Ask(L"Axes", {}, set), AC_RESULT_PROPERTY_NOT_FOUND);
    EXPECT_EQ(set, this);
    Asked.ErrnoOfFailure = 0;
    EXPECT_EQ(ToldBy(SetOf(L"Axes")), (Told{{"build", {"int 2"}}}));
}

TEST_F(Provider, KeepsTheAddressOfASetThatOthersJoin)
{
    const AC_HPROPERTY set = SetOf(L"Axes");
    const auto* build = static_cast<CBrixPropset*>(set)->Rows().begin()->first.c_str();
    for (const wchar_t* key : {L"A", L"B", L"C", L"D", L"Y", L"Z"})
        SetOf(key);
    EXPECT_EQ(SetOf(L"Axes"), set);
    EXPECT_EQ(static_cast<CBrixPropset*>(set)->Rows().begin()->first.c_str(), build);
}

// Each of the names makes a request of its own.
class NameOfAParameter : public Provider, public testing::WithParamInterface<const wchar_t*>
{
};

TEST_P(NameOfAParameter, TellsRequestsApart)
{
    const AC_HPROPERTY set = SetOf(L"ChannelInfo", {{GetParam(), L"1"}});
    EXPECT_NE(SetOf(L"ChannelInfo", {{GetParam(), L"2"}}), set);
}

INSTANTIATE_TEST_SUITE_P(Names, NameOfAParameter,
                         testing::Values(L"channelId", L"objectId", L"groupId", L"phaseId", L"roiId", L"zId", L"id",
                                         L"planeName", L"axisName", L"parent", L"level", L"layer", L"type"));

TEST_F(Provider, JoinsValuesInTheOrderOfTheirNames)
{
    // "channelId" comes before "type" whoever is named first, so that 1 and 2 cannot be mistaken for 2 and 1.
    const AC_HPROPERTY set = SetOf(L"ChannelInfo", {{L"type", L"1"}, {L"channelId", L"2"}});
    EXPECT_EQ(SetOf(L"ChannelInfo", {{L"channelId", L"2"}, {L"type", L"1"}}), set);
    EXPECT_NE(SetOf(L"ChannelInfo", {{L"channelId", L"1"}, {L"type", L"2"}}), set);
}

struct TypeRow : Row
{
    const wchar_t* Key;
    AC_ValueType Type;
};

class TypeOfParameters : public testing::TestWithParam<TypeRow>
{
};

TEST_P(TypeOfParameters, FollowsFromTheKey)
{
    EXPECT_EQ(CIA::ParamTypeFromPropsetName(GetParam().Key), GetParam().Type);
}

INSTANTIATE_TEST_SUITE_P(Keys, TypeOfParameters,
                         testing::Values(TypeRow{{"ChannelInfo"}, L"ChannelInfo", AC_VT_STRING},
                                         TypeRow{{"AxisInfo"}, L"AxisInfo", AC_VT_STRING},
                                         TypeRow{{"AnalysisROIInfo"}, L"AnalysisROIInfo", AC_VT_STRING},
                                         TypeRow{{"ImagingROIInfo"}, L"ImagingROIInfo", AC_VT_STRING},
                                         TypeRow{{"StimulationROIInfo"}, L"StimulationROIInfo", AC_VT_STRING},
                                         TypeRow{{"AxisPosition"}, L"AxisPosition", AC_VT_STRING},
                                         TypeRow{{"ImageChannelIdList"}, L"ImageChannelIdList", AC_VT_STRING},
                                         TypeRow{{"LUTInfo"}, L"LUTInfo", AC_VT_STRING},
                                         TypeRow{{"EnabledChannelIdList"}, L"EnabledChannelIdList", AC_VT_INTEGER},
                                         TypeRow{{"Axes"}, L"Axes", AC_VT_INTEGER},
                                         TypeRow{{"Unknown"}, L"Unknown", AC_VT_INTEGER}),
                         NameOfRow());

std::wstring TextOfParam(void* value, AC_ValueType type)
{
    return CIA::AC_PARAM_ELEMENT_ValueToString({L"channelId", value}, type);
}

TEST(ParamAsText, IsWrittenByItsType)
{
    int integer = -12;
    double number = 0.5;
    std::wstring text = L"ZSTACK";
    EXPECT_EQ(TextOfParam(&integer, AC_VT_INTEGER), L"-12");
    EXPECT_EQ(TextOfParam(&number, AC_VT_DOUBLE), L"0.5");
    EXPECT_EQ(TextOfParam(text.data(), AC_VT_STRING), L"ZSTACK");
}

TEST(ParamAsText, IsEmptyWithoutAValue)
{
    EXPECT_EQ(TextOfParam(nullptr, AC_VT_INTEGER), L"");
    EXPECT_EQ(TextOfParam(nullptr, AC_VT_STRING), L"");
}

TEST(ParamAsText, DoesNotExistForPointsAndRectangles)
{
    AC_POINT point{1, 2};
    EXPECT_FAILED_ASSERTION(TextOfParam(&point, AC_VT_POINT));
    EXPECT_FAILED_ASSERTION(TextOfParam(&point, AC_VT_RECT));
}

TEST(WordForACompression, IsThatOfTheTable)
{
    using CIA::CompressionFormatToBrixString;
    using Type = CIA::PixelFrameCompressionType;
    EXPECT_STREQ(CompressionFormatToBrixString(Type::None), L"RAW");
    EXPECT_STREQ(CompressionFormatToBrixString(Type::Jpeg), L"JPEG");
    EXPECT_STREQ(CompressionFormatToBrixString(Type::Jpeg7), L"JPEG");
    EXPECT_STREQ(CompressionFormatToBrixString(Type::J2k), L"J2K");
    EXPECT_STREQ(CompressionFormatToBrixString(Type::Png), L"PNG");
    EXPECT_STREQ(CompressionFormatToBrixString(Type::Bmp), L"BMP");
    EXPECT_FAILED_ASSERTION(CompressionFormatToBrixString(Type::Unknown));
}

} // namespace
