// What the property sets of documents and groups tell.

#include "SampleDocuments/Tags.h"
#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

class Sets : public Slide
{
protected:
    AC_HAREA FirstArea() const { return Area(Group(), 0, 0); }
    Told ToldOf(const wchar_t* key, Params params = {}) const
    {
        return ToldByArea(FirstArea(), key, std::move(params));
    }
    static Document WithProperties(CDocumentProperties properties)
    {
        return Document().With(Stack(1)).Properties(std::move(properties));
    }
};

// ---- Documents ----

TEST_F(Sets, SystemInfoTellsWhoMadeTheDocument)
{
    Open(WithProperties({.Author = "Ada", .ProductName = "XV 200", .ProductVersion = "2.1", .CreatorBuildNumber = 77}));
    EXPECT_EQ(ToldOf(L"SystemInfo"), (Told{{"name", {"text XV 200"}},
                                           {"version", {"text 2.1 (Build 77)"}},
                                           {"deviceName", {"text "}},
                                           {"userName", {"text Ada"}}}));
}

TEST_F(Sets, SystemInfoLogsWhatTheVersionIsMadeOf)
{
    Open(Stack(1));
    const AC_HAREA area = FirstArea();
    EXPECT_THAT(MessagesOf([&] { SetOf(area, L"SystemInfo"); }),
                Contains(HasSubstr("(Build <the creating application's build number>)")));
    EXPECT_THAT(MessagesOf([&] { SetOf(area, L"SystemInfo"); }), IsEmpty());
}

struct VersionRow : Row
{
    std::optional<std::string> ProductName;
    std::optional<std::string> ProductVersion;
    std::optional<int32_t> BuildNumber;
    std::string Version;
};

class VersionOfSystem : public Sets, public testing::WithParamInterface<VersionRow>
{
};

TEST_P(VersionOfSystem, IsJoinedFromWhatIsThere)
{
    Open(WithProperties({.ProductName = GetParam().ProductName,
                         .ProductVersion = GetParam().ProductVersion,
                         .CreatorBuildNumber = GetParam().BuildNumber}));
    EXPECT_THAT(ToldOf(L"SystemInfo").at("version"), ElementsAre("text " + GetParam().Version));
}

INSTANTIATE_TEST_SUITE_P(Versions, VersionOfSystem,
                         testing::Values(VersionRow{{"Both"}, "XV", "2.1", 77, "2.1 (Build 77)"},
                                         VersionRow{{"VersionAlone"}, "XV", "2.1", {}, "2.1"},
                                         VersionRow{{"BuildAlone"}, "XV", {}, 77, "(Build 77)"},
                                         VersionRow{{"Neither"}, "XV", {}, {}, ""},
                                         VersionRow{{"VersionOfANamelessProduct"}, {}, "2.1", 77, "(Build 77)"},
                                         VersionRow{{"EmptyVersion"}, "XV", "", 0, "(Build 0)"}),
                         NameOfRow());

TEST_F(Sets, UserCommentTellsTheNote)
{
    Open(WithProperties({.Note = "third slide, tilted"}));
    EXPECT_EQ(ToldOf(L"UserComment"), (Told{{"comment", {"text third slide, tilted"}}}));
}

TEST_F(Sets, UserCommentIsEmptyWithoutANote)
{
    Open(WithProperties({.Note = {}}));
    EXPECT_EQ(ToldOf(L"UserComment"), (Told{{"comment", {"text "}}}));
}

TEST_F(Sets, IdInfoTellsTheFamily)
{
    Open(WithProperties({.FamilyId = "{7B1E}"}));
    EXPECT_EQ(ToldOf(L"IdInfo"), (Told{{"familyId", {"text {7B1E}"}}}));
}

TEST_F(Sets, IdInfoIsEmptyWithoutAFamily)
{
    Open(Stack(1));
    EXPECT_EQ(ToldOf(L"IdInfo"), (Told{{"familyId", {"text "}}}));
}

TEST_F(Sets, SystemInfoNeedsPropertiesOfTheCollection)
{
    Open(Document().With(Stack(1)).WithoutProperties());
    EXPECT_EQ(ResultOfSet(FirstArea(), L"SystemInfo"), AC_RESULT_FAILURE);
    EXPECT_EQ(ToldOf(L"UserComment"), (Told{{"comment", {"text "}}}));
}

// ---- Dates ----

TEST_F(Sets, CreationDateTimeIsThatOfTheDocument)
{
    Open(Document().With(Stack(1).CreationTime(86400)).Properties({.CreationTime = 0}));
    const auto messages = MessagesOf(
        [&] {
            EXPECT_EQ(ToldOf(L"CreationDateTime"), (Told{{"dateTime", {"text 1970-01-01T00:00:00+00:00"}}}));
        });
    EXPECT_THAT(messages, Contains("Note: img creation time = 1970-01-02T00:00:00+00:00, doc creation time = "
                                   "1970-01-01T00:00:00+00:00"));
}

TEST_F(Sets, CreationDateTimeFallsBackToThatOfTheGroup)
{
    Open(Document().With(Stack(1).CreationTime(86399)).Properties({.CreationTime = {}}));
    const auto messages = MessagesOf(
        [&] {
            EXPECT_EQ(ToldOf(L"CreationDateTime"), (Told{{"dateTime", {"text 1970-01-01T23:59:59+00:00"}}}));
        });
    EXPECT_THAT(messages, Contains("Warning: doc creation time not found, reporting multidim img creation time "
                                   "instead..."));
}

TEST_F(Sets, UpdateDateTimeStandsUnderBothKeys)
{
    Open(Document().With(Stack(1).CreationTime(86400)).Properties({.LastSavedTime = 60}));
    const auto messages = MessagesOf(
        [&]
        {
            EXPECT_EQ(ToldOf(L"UpdateDateTime"), (Told{{"dateTime", {"text 1970-01-01T00:01:00+00:00"}},
                                                       {"dataTime", {"text 1970-01-01T00:01:00+00:00"}}}));
        });
    EXPECT_THAT(messages, Contains("Note: img update time = 1970-01-02T00:00:00+00:00, doc update time = "
                                   "1970-01-01T00:01:00+00:00"));
}

TEST_F(Sets, UpdateDateTimeFallsBackToTheCreationOfTheGroup)
{
    Open(Document().With(Stack(1).CreationTime(86400)).Properties({.LastSavedTime = {}}));
    const auto messages = MessagesOf(
        [&]
        {
            EXPECT_EQ(ToldOf(L"UpdateDateTime"), (Told{{"dateTime", {"text 1970-01-02T00:00:00+00:00"}},
                                                       {"dataTime", {"text 1970-01-02T00:00:00+00:00"}}}));
        });
    EXPECT_THAT(messages,
                Contains("Warning: doc update time not found, reporting multidim img update time instead..."));
}

// ---- Groups ----

TEST_F(Sets, GroupNameTellsTheName)
{
    Open(Document().With(Stack(4).Name("Overview")).With(Stack(7).Name("Stained \u00e4rea")));
    EXPECT_EQ(ToldOf(L"GroupName"), (Told{{"name", {"text Overview"}}}));
    EXPECT_EQ(ToldByArea(Area(Group(1), 0, 0), L"GroupName"), (Told{{"name", {"text Stained \u00e4rea"}}}));
}

TEST_F(Sets, GroupNameMustNotBeEmpty)
{
    Stack nameless(1);
    nameless.Plan().Name.reset();
    Open(nameless);
    EXPECT_EQ(ResultOfSet(FirstArea(), L"GroupName"), AC_RESULT_FAILURE);
}

TEST_F(Sets, WorkInfoTellsExperimentAndSample)
{
    Open(Stack(1).Experiment("growth").Sample("leaf", "third from the top"));
    EXPECT_EQ(ToldOf(L"WorkInfo"), (Told{{"name", {"text growth"}},
                                         {"sampleName", {"text leaf"}},
                                         {"sampleComment", {"text third from the top"}}}));
}

TEST_F(Sets, WorkInfoLeavesOutWhatIsNotKnown)
{
    Open(Stack(1).Experiment("growth"));
    EXPECT_EQ(ToldOf(L"WorkInfo"), (Told{{"name", {"text growth"}}}));
}

TEST_F(Sets, WorkInfoMayBeEmpty)
{
    Open(Stack(1));
    EXPECT_EQ(ToldOf(L"WorkInfo"), Told());
}

TEST_F(Sets, ImagingROIListIsAlwaysEmpty)
{
    Open(Stack(1));
    EXPECT_EQ(ToldOf(L"ImagingROIList"), (Told{{"id", {}}}));
}

// ---- Axes ----

TEST_F(Sets, AxesAreNamedInTheirOwnOrder)
{
    Open(Stack(1).Lambda(2).T(2).Z(2));
    EXPECT_EQ(ToldOf(L"Axes"), (Told{{"axisName", {"text ZSTACK", "text TIMELAPSE", "text LAMBDA"}}}));
}

TEST_F(Sets, AxesOfOnePointAreNoAxes)
{
    Open(Stack(1).Z(1).T(2));
    EXPECT_EQ(ToldOf(L"Axes"), (Told{{"axisName", {"text TIMELAPSE"}}}));
}

TEST_F(Sets, AxesMayBeMissing)
{
    Open(Stack(1));
    EXPECT_EQ(ToldOf(L"Axes"), (Told{{"axisName", {}}}));
}

struct AxisRow : Row
{
    Stack Group;
    const wchar_t* AxisName;
    Told Answer;
};

class AxisInfo : public Sets, public testing::WithParamInterface<AxisRow>
{
};

TEST_P(AxisInfo, TellsWhereTheAxisRuns)
{
    Open(GetParam().Group);
    EXPECT_EQ(ToldOf(L"AxisInfo", {{L"axisName", GetParam().AxisName}}), GetParam().Answer);
}

Told Axis(std::string start, std::string end, std::string step, int maxSize, std::string units)
{
    return {{"start", {"double " + start}},
            {"end", {"double " + end}},
            {"step", {"double " + step}},
            {"maxSize", {"int " + std::to_string(maxSize)}},
            {"units", {"text " + units}}};
}

INSTANTIATE_TEST_SUITE_P(
    Axes, AxisInfo,
    testing::Values(
        AxisRow{{"Z"}, Stack(1).Z(3, 10, 1.5), L"ZSTACK", Axis("10", "13", "1.5", 3, "10^-6m^1")},
        AxisRow{{"ZInNanometres"}, Stack(1).Z(3, 0, 500, "10^-9m^1"), L"ZSTACK", Axis("0", "1", "0.5", 3, "10^-6m^1")},
        AxisRow{{"ZDownwards"}, Stack(1).Z(3, 10, -2), L"ZSTACK", Axis("10", "6", "2", 3, "10^-6m^1")},
        AxisRow{{"T"}, Stack(1).T(5, 1000, 500), L"TIMELAPSE", Axis("1", "3", "0.5", 5, "NULL")},
        AxisRow{{"Lambda"}, Stack(1).Lambda(4, 400, 10), L"LAMBDA", Axis("400", "430", "10", 4, "10^-9m^1")},
        AxisRow{{"ZOfOnePoint"}, Stack(1).Z(1, 10, 1.5), L"ZSTACK", Axis("10", "10", "1.5", 1, "10^-6m^1")},
        AxisRow{{"ZUnevenlySpaced"},
                Stack(1)
                    .Dimension({.Meaning = DimensionMeaning::Z, .NumOfPoints = 3})
                    .FrameCoordinates(DimensionMeaning::Z, {1, 2, 5}, "10^-6m^1"),
                L"ZSTACK",
                Axis("1", "5", "0", 3, "10^-6m^1")}),
    NameOfRow());

TEST_F(Sets, AxisInfoNotesWhatItsStepMeans)
{
    Open(Stack(1).Z(2));
    EXPECT_THAT(MessagesOf(
                    [&] {
                        ToldOf(L"AxisInfo", {{L"axisName", L"ZSTACK"}});
                    }),
                Contains("Note: We return 0 for Step in case of a dimension that has frames unevenly spaced w.r.t. its "
                         "axis."));
}

TEST_F(Sets, AxisInfoOfAnAxisIsBuiltOnce)
{
    Open(Stack(1).Z(2).T(2));
    const AC_HPROPERTY z = SetOf(FirstArea(), L"AxisInfo", {{L"axisName", L"ZSTACK"}});
    EXPECT_EQ(SetOf(FirstArea(), L"AxisInfo", {{L"axisName", L"ZSTACK"}}), z);
    EXPECT_NE(SetOf(FirstArea(), L"AxisInfo", {{L"axisName", L"TIMELAPSE"}}), z);
}

TEST_F(Sets, TextsStayWhereTheyAreUntilTheDocumentIsClosed)
{
    Open(Stack(1).Z(2));
    const wchar_t* name = ValuesOf(SetOf(FirstArea(), L"GroupName"), L"name").front().value.pszString;
    for (const wchar_t* key : {L"Axes", L"WorkInfo", L"CreationDateTime", L"EnabledChannelIdList", L"SystemInfo"})
        _AC_ReleaseProperty(SetOf(FirstArea(), key));
    EXPECT_EQ(std::wstring(name), L"Stack 1");
    EXPECT_EQ(ValuesOf(SetOf(FirstArea(), L"GroupName"), L"name").front().value.pszString, name);
}

} // namespace
