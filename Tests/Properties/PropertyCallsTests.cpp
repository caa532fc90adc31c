// The five functions that give property sets and read them.

#include "CommonImageAccess/BrixPropset.h"
#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

constexpr INT32 NotAvailable = 0x7FFFFFFF;

// ---- Which object answers which key ----

struct RouteRow : Row
{
    const wchar_t* Key;
    bool IsForAreas;
    bool IsForImages;
};

class Route : public Slide, public testing::WithParamInterface<RouteRow>
{
protected:
    static Document Sample() { return Document().With(Stack(1)); }
};

constexpr auto RefusedForArea = "Error: param 'propsetKey' is not a valid key for this function!";
constexpr auto RefusedForImage = "Error: param 'propsetKey' is not a valid frame propset key!";

TEST_P(Route, TakesAKeyByTheCallItBelongsTo)
{
    Open(Sample());
    const auto askedOfArea = MessagesOf([&] { ResultOfSet(Area(Group(), 0, 0), GetParam().Key); });
    const auto askedOfImage = MessagesOf([&] { ResultOfImageSet(Tile(0, 0), GetParam().Key); });
    EXPECT_EQ(testing::Matches(Contains(RefusedForArea))(askedOfArea), !GetParam().IsForAreas);
    EXPECT_EQ(testing::Matches(Contains(RefusedForImage))(askedOfImage), !GetParam().IsForImages);
}

RouteRow OfArea(const char* name, const wchar_t* key)
{
    return {{name}, key, true, false};
}
RouteRow OfImage(const char* name, const wchar_t* key)
{
    return {{name}, key, false, true};
}
RouteRow OfNone(const char* name, const wchar_t* key)
{
    return {{name}, key, false, false};
}

INSTANTIATE_TEST_SUITE_P(
    Keys, Route,
    testing::Values(OfArea("EnabledChannelIdList", L"EnabledChannelIdList"),
                    OfArea("ImageChannelIdList", L"ImageChannelIdList"), OfArea("ChannelInfo", L"ChannelInfo"),
                    OfArea("Axes", L"Axes"), OfArea("AxisInfo", L"AxisInfo"),
                    OfArea("ObjectiveLensInfo", L"ObjectiveLensInfo"), OfArea("XYStagePosition", L"XYStagePosition"),
                    OfArea("AnalysisROIList", L"AnalysisROIList"), OfArea("ImagingROIList", L"ImagingROIList"),
                    OfArea("ImagingROIInfo", L"ImagingROIInfo"), OfArea("GroupName", L"GroupName"),
                    OfArea("CreationDateTime", L"CreationDateTime"), OfArea("UpdateDateTime", L"UpdateDateTime"),
                    OfArea("WorkInfo", L"WorkInfo"), OfArea("LUTInfo", L"LUTInfo"), OfArea("SystemInfo", L"SystemInfo"),
                    OfArea("UserComment", L"UserComment"), OfArea("IdInfo", L"IdInfo"),
                    OfArea("PixelLength", L"PixelLength"), OfArea("AnalysisROIInfo", L"AnalysisROIInfo"),
                    OfArea("ImageSize", L"ImageSize")),
    NameOfRow());
INSTANTIATE_TEST_SUITE_P(KeysOfImages, Route,
                         testing::Values(OfImage("StimulationROIList", L"StimulationROIList"),
                                         OfImage("StimulationROIInfo", L"StimulationROIInfo"),
                                         OfImage("AxisPosition", L"AxisPosition"),
                                         OfImage("JpegTables", L"JpegTables")),
                         NameOfRow());
INSTANTIATE_TEST_SUITE_P(NoKeys, Route,
                         testing::Values(OfNone("Empty", L""), OfNone("Unknown", L"Magnification"),
                                         OfNone("OtherCase", L"axes"), OfNone("Longer", L"Axes ")),
                         NameOfRow());

class PropertyCalls : public Slide
{
protected:
    void SetUp() override { Open(Stack(1)); }
    AC_HAREA FirstArea() const { return Area(Group(), 0, 0); }
};

TEST_F(PropertyCalls, RefuseAKeyThatIsNone)
{
    EXPECT_EQ(ResultOfSet(FirstArea(), L"AxisPosition"), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(ResultOfImageSet(Tile(0, 0), L"SystemInfo"), AC_RESULT_INVALID_PARAM);
}

TEST_F(PropertyCalls, AskTheAreaAndNotTheGroupForItsSize)
{
    Open(Stack(1).Size(512, 256).Tiles(256, 256));
    EXPECT_NE(SetOf(Area(Group(), 0, 1), L"ImageSize"), SetOf(FirstArea(), L"ImageSize"));
    EXPECT_EQ(SetOf(Area(Group(), 0, 1), L"GroupName"), SetOf(FirstArea(), L"GroupName"));
}

// ---- NULL arguments ----

struct NullRow : Row
{
    std::function<AC_Result(AC_HAREA, AC_HIMAGE, AC_HPROPERTY)> Call;
    const char* Log;
};

class NullArgument : public PropertyCalls, public testing::WithParamInterface<NullRow>
{
};

TEST_P(NullArgument, IsRefusedWithALogLine)
{
    const AC_HAREA area = FirstArea();
    const AC_HIMAGE image = Tile(0, 0);
    const AC_HPROPERTY set = SetOf(area, L"Axes");
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = GetParam().Call(area, image, set); });
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
    EXPECT_THAT(messages, ElementsAre(GetParam().Log));
}

AC_HPROPERTY AnySet;
int AnyNumber;
AC_VALUE AnyValue;
const wchar_t* AnyKey;

constexpr auto AreaArguments = "params hMultiDimTile or propsetKey or phPropset are NULL!";
constexpr auto ImageArguments = "Error: params hDeepZoomTile or propsetKey or phPropset are NULL!";
constexpr auto ValueArguments = "Error: params hPropSet or propertyKey or numOfValues are NULL!";
constexpr auto KeyListArguments = "params hPropset or numOfKeys are NULL!";

INSTANTIATE_TEST_SUITE_P(
    PropertyCalls, NullArgument,
    testing::Values(
        NullRow{{"Area"},
                [](auto, auto, auto) { return _AC_GetAreaProperty(nullptr, L"Axes", nullptr, &AnySet); },
                AreaArguments},
        NullRow{{"KeyOfAreaProperty"},
                [](auto area, auto, auto) { return _AC_GetAreaProperty(area, nullptr, nullptr, &AnySet); },
                AreaArguments},
        NullRow{{"SetOfAreaProperty"},
                [](auto area, auto, auto) { return _AC_GetAreaProperty(area, L"Axes", nullptr, nullptr); },
                AreaArguments},
        NullRow{{"Image"},
                [](auto, auto, auto) { return _AC_GetFrameProperty(nullptr, L"JpegTables", nullptr, &AnySet); },
                ImageArguments},
        NullRow{{"KeyOfFrameProperty"},
                [](auto, auto image, auto) { return _AC_GetFrameProperty(image, nullptr, nullptr, &AnySet); },
                ImageArguments},
        NullRow{{"SetOfFrameProperty"},
                [](auto, auto image, auto) { return _AC_GetFrameProperty(image, L"JpegTables", nullptr, nullptr); },
                ImageArguments},
        NullRow{{"SetToReadValuesOf"},
                [](auto, auto, auto) { return _AC_GetPropertyValue(nullptr, L"axisName", nullptr, 0, &AnyNumber); },
                ValueArguments},
        NullRow{{"KeyOfValues"},
                [](auto, auto, auto set) { return _AC_GetPropertyValue(set, nullptr, nullptr, 0, &AnyNumber); },
                ValueArguments},
        NullRow{{"NumOfValues"},
                [](auto, auto, auto set) { return _AC_GetPropertyValue(set, L"axisName", nullptr, 0, nullptr); },
                ValueArguments},
        NullRow{{"SizeOfValuesBelowZero"},
                [](auto, auto, auto set) { return _AC_GetPropertyValue(set, L"axisName", &AnyValue, -1, &AnyNumber); },
                "Error: sizeOfListOfValues is negative!"},
        NullRow{{"SetToReadKeysOf"},
                [](auto, auto, auto) { return _AC_GetPropertyKeyList(nullptr, nullptr, 0, &AnyNumber); },
                KeyListArguments},
        NullRow{{"NumOfKeys"},
                [](auto, auto, auto set) { return _AC_GetPropertyKeyList(set, nullptr, 0, nullptr); },
                KeyListArguments},
        NullRow{{"SizeOfKeysBelowZero"},
                [](auto, auto, auto set) { return _AC_GetPropertyKeyList(set, &AnyKey, -1, &AnyNumber); },
                "Error: param sizeOfKeysArr is negative!"},
        NullRow{
            {"SetToRelease"}, [](auto, auto, auto) { return _AC_ReleaseProperty(nullptr); }, "hPropertySet is NULL!"}),
    NameOfRow());

TEST_F(PropertyCalls, LeaveTheHostsHandleAloneAfterAFailure)
{
    AC_HPROPERTY set = this;
    EXPECT_EQ(Call(_AC_GetAreaProperty, FirstArea(), L"ChannelInfo", nullptr, &set), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(set, this);
}

TEST_F(PropertyCalls, ReleaseNothing)
{
    const AC_HPROPERTY set = SetOf(FirstArea(), L"EnabledChannelIdList");
    EXPECT_EQ(_AC_ReleaseProperty(set), AC_RESULT_SUCCESS);
    EXPECT_EQ(_AC_ReleaseProperty(set), AC_RESULT_SUCCESS);
    EXPECT_EQ(SetOf(FirstArea(), L"EnabledChannelIdList"), set);
    EXPECT_EQ(ToldBy(set), (Told{{"id", {"text 0"}}}));
}

// ---- The two-call protocols ----

/// A set that a test fills, by the handle that a host would have.
class Reading : public testing::Test
{
protected:
    CIA::CBrixPropset Set;
    int Count = -1;
    std::array<AC_VALUE, 4> Values{};

    AC_Result Read(const wchar_t* key, int size)
    {
        return Call(_AC_GetPropertyValue, &Set, key, Values.data(), size, &Count);
    }
    AC_Result Size(const wchar_t* key, int size = 0)
    {
        return Call(_AC_GetPropertyValue, &Set, key, nullptr, size, &Count);
    }
    void AddThreeNumbers()
    {
        for (const int number : {7, 8, 9})
            Set.AddInteger(L"n", number);
    }
    std::vector<std::string> TextsOfValues() const
    {
        std::vector<std::string> texts;
        for (const AC_VALUE& value : Values)
            texts.push_back(TextOf(value));
        return texts;
    }
};

TEST_F(Reading, TellsTheNumberOfValuesWithoutAnArray)
{
    AddThreeNumbers();
    EXPECT_EQ(Size(L"n"), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 3);
}

TEST_F(Reading, DoesNotLookAtTheSizeOfNoArray)
{
    AddThreeNumbers();
    EXPECT_EQ(Size(L"n", -1), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 3);
}

TEST_F(Reading, WritesNothingIntoTooSmallAnArrayAndTellsWhatItTakes)
{
    AddThreeNumbers();
    EXPECT_EQ(Read(L"n", 2), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 3);
    EXPECT_THAT(TextsOfValues(), ElementsAre("int 0", "int 0", "int 0", "int 0"));
}

TEST_F(Reading, FillsAnArrayOfTheRightSize)
{
    AddThreeNumbers();
    EXPECT_EQ(Read(L"n", 3), AC_RESULT_SUCCESS);
    EXPECT_THAT(TextsOfValues(), ElementsAre("int 7", "int 8", "int 9", "int 0"));
}

TEST_F(Reading, LeavesTheRestOfALargerArrayAlone)
{
    AddThreeNumbers();
    EXPECT_EQ(Read(L"n", 4), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 3);
    EXPECT_THAT(TextsOfValues(), ElementsAre("int 7", "int 8", "int 9", "int 0"));
}

TEST_F(Reading, AnswersAKeyWithoutValues)
{
    Set.AddKey(L"none");
    EXPECT_EQ(Read(L"none", 0), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 0);
}

TEST_F(Reading, RefusesAnUnknownKeyAndLeavesZero)
{
    AddThreeNumbers();
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_THAT(MessagesOf([&] { result = Read(L"m", 4); }), ElementsAre("Error: key 'm' provided is invalid!"));
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(Count, 0);
}

TEST_F(Reading, LeavesZeroBehindEveryRefusal)
{
    EXPECT_EQ(Call(_AC_GetPropertyValue, nullptr, L"n", Values.data(), 4, &Count), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(Count, 0);
    Count = -1;
    EXPECT_EQ(Read(L"n", -1), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(Count, 0);
}

struct MarkerRow : Row
{
    std::function<void(CIA::CBrixPropset&)> Fill;
    int NumOfValues;
};

class Marker : public Reading, public testing::WithParamInterface<MarkerRow>
{
};

TEST_P(Marker, ForAValueThatIsNotAvailableNeverReachesTheHost)
{
    GetParam().Fill(Set);
    EXPECT_EQ(Read(L"v", 4), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, GetParam().NumOfValues);
}

INSTANTIATE_TEST_SUITE_P(
    Values, Marker,
    testing::Values(MarkerRow{{"Integer"}, [](auto& set) { set.AddInteger(L"v", NotAvailable); }, 0},
                    MarkerRow{{"PointWithoutX"},
                              [](auto& set) {
                                  set.AddPoint(L"v", {NotAvailable, 2});
                              },
                              0},
                    MarkerRow{{"PointWithoutY"},
                              [](auto& set) {
                                  set.AddPoint(L"v", {1, NotAvailable});
                              },
                              0},
                    MarkerRow{{"OtherInteger"}, [](auto& set) { set.AddInteger(L"v", NotAvailable - 1); }, 1},
                    MarkerRow{{"DoubleOfThatValue"}, [](auto& set) { set.AddDouble(L"v", NotAvailable); }, 1}),
    NameOfRow());

TEST_F(Reading, FailsWhereAMarkerStandsBesideAnotherValue)
{
    Set.AddInteger(L"numbers", 1);
    Set.AddInteger(L"numbers", NotAvailable);
    Set.AddPoint(L"points", {NotAvailable, NotAvailable});
    Set.AddPoint(L"points", {1, 2});
    for (const wchar_t* key : {L"numbers", L"points"})
    {
        Count = 7;
        EXPECT_EQ(Read(key, 4), AC_RESULT_FAILURE);
        EXPECT_EQ(Count, 0);
    }
}

class ReadingKeys : public Reading
{
protected:
    std::array<const wchar_t*, 4> Keys{};

    AC_Result ReadKeys(int size) { return Call(_AC_GetPropertyKeyList, &Set, Keys.data(), size, &Count); }
    void SetUp() override
    {
        for (const wchar_t* key : {L"width", L"Z", L"axis"})
            Set.AddKey(key);
    }
};

TEST_F(ReadingKeys, TellsTheirNumberWithoutAnArray)
{
    EXPECT_EQ(Call(_AC_GetPropertyKeyList, &Set, nullptr, -1, &Count), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 3);
}

TEST_F(ReadingKeys, WritesNothingIntoTooSmallAnArray)
{
    EXPECT_EQ(ReadKeys(2), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 3);
    EXPECT_EQ(Keys[0], nullptr);
}

TEST_F(ReadingKeys, ComeInAscendingOrderHoweverTheyWereFilledIn)
{
    EXPECT_EQ(ReadKeys(3), AC_RESULT_SUCCESS);
    EXPECT_EQ(std::vector<std::wstring>(Keys.begin(), Keys.begin() + 3),
              (std::vector<std::wstring>{L"Z", L"axis", L"width"}));
    EXPECT_EQ(Keys[3], nullptr);
}

TEST_F(ReadingKeys, PointAtTheSetsOwnTexts)
{
    EXPECT_EQ(ReadKeys(4), AC_RESULT_SUCCESS);
    EXPECT_EQ(Keys[0], Set.Rows().begin()->first.c_str());
}

} // namespace
