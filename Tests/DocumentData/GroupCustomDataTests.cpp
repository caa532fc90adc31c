// The custom data of a group: what it is, and how it is shown.

#include "SampleDocuments/Tags.h"
#include "Tests/DocumentData/CustomData.h"

using namespace SlideOfTest;

namespace
{

struct GroupRow : Row
{
    Document Made;
    const wchar_t* Key;
    CAnswer Answer; ///< of the first group
};

class GroupCustomData : public Slide, public testing::WithParamInterface<GroupRow>
{
};

TEST_P(GroupCustomData, AnswersByTheTable)
{
    Open(GetParam().Made);
    EXPECT_EQ(GroupData(Group(), GetParam().Key), GetParam().Answer);
}

const CAnswer NotFound = {AC_RESULT_PROPERTY_NOT_FOUND, Untouched, ""};
const CAnswer Failed = {AC_RESULT_FAILURE, Untouched, ""};
const CAnswer Nothing = {AC_RESULT_SUCCESS, Untouched, ""}; ///< success, and not even a size

GroupRow OfStack(std::string name, Stack stack, const wchar_t* key, CAnswer answer)
{
    return {{std::move(name)}, Document().With(std::move(stack)), key, std::move(answer)};
}

GroupRow Type(std::string name, int32_t number, std::string text)
{
    return OfStack(std::move(name), Stack(1).StackType(number), L"ZEL_GroupType", Text(std::move(text)));
}

INSTANTIATE_TEST_SUITE_P(
    GroupType, GroupCustomData,
    testing::Values(Type("Default", 0, "Default image"), Type("Overview", 1, "Overview image"),
                    Type("SampleMask", 2, "Sample mask"), Type("Focus", 4, "Focus image"),
                    Type("EfiSharpness", 8, "EFI sharpness map"), Type("EfiHeight", 16, "EFI height map"),
                    Type("EfiTexture", 32, "EFI texture map"), Type("EfiStack", 64, "EFI stack"),
                    Type("Macro", 256, "Macro image"), Type("Review", 512, "Review Mode"),
                    Type("FocusPositions", 1024, "Vector layer holding shapes showing x / y / z focus positions"),
                    Type("Fft", 2048, "FFT or DFT transformed grayscale image"), Type("Kymogram", 4096, "Kymogram"),
                    Type("Projection", 8192, "Maximum intensity projection"), Type("UnusedBit", 128, "Unknown"),
                    Type("TwoBits", 3, "Unknown"), Type("Negative", -1, "Unknown")),
    NameOfRow());

// ---- How the group is shown ----

Document TwoStacks()
{
    return Document().With(Stack(1)).With(Stack(2));
}

constexpr auto Order = L"ZEL_GroupOrder";
constexpr auto RenderOperation = L"ZEL_GroupRenderOperation";
constexpr auto Transparency = L"ZEL_GroupTransparency";

INSTANTIATE_TEST_SUITE_P(GroupOrder, GroupCustomData,
                         testing::Values(GroupRow{{"First"}, TwoStacks(), Order, Text("0")},
                                         GroupRow{{"Second"}, TwoStacks().DisplayOrder({2, 1}), Order, Text("1")}),
                         NameOfRow());

INSTANTIATE_TEST_SUITE_P(GroupRenderOperation, GroupCustomData,
                         testing::Values(OfStack("Told", Stack(1).Operator(3), RenderOperation, Text("3")),
                                         OfStack("Negative", Stack(1).Operator(-1), RenderOperation, Text("-1")),
                                         OfStack("NotTold", Stack(1), RenderOperation, Text("0"))),
                         NameOfRow());

INSTANTIATE_TEST_SUITE_P(GroupTransparency, GroupCustomData,
                         testing::Values(OfStack("Half", Stack(1).Transparency(0.5), Transparency, Text("0.5")),
                                         OfStack("None", Stack(1).Transparency(0), Transparency, Text("0")),
                                         OfStack("SixDigits", Stack(1).Transparency(1.0 / 3), Transparency,
                                                 Text("0.333333")),
                                         OfStack("Huge", Stack(1).Transparency(1e20), Transparency, Text("1e+20")),
                                         OfStack("NotTold", Stack(1), Transparency, Text("1"))),
                         NameOfRow());

// Two stacks and two layers, which both show stack 1.
Document ShownTwice(CDisplayChannel first, CDisplayChannel second)
{
    first.StackId = 1;
    second.StackId = 1;
    return TwoStacks().Layers({{std::move(first)}, {std::move(second)}});
}

INSTANTIATE_TEST_SUITE_P(
    Layers, GroupCustomData,
    testing::Values(
        GroupRow{{"FirstThatTellsATransparency"}, ShownTwice({}, {.Transparency = 0.25}), Transparency, Text("0.25")},
        GroupRow{{"FirstThatTellsAnOperation"}, ShownTwice({}, {.OperatorId = 7}), RenderOperation, Text("7")},
        GroupRow{
            {"FirstOfTwoOperations"}, ShownTwice({.OperatorId = 6}, {.OperatorId = 7}), RenderOperation, Text("6")}),
    NameOfRow());

// ---- The plane that all groups are shown on ----

GroupRow Plane(std::string name, CDisplayChannel channel, const wchar_t* key, CAnswer answer)
{
    return OfStack(std::move(name), Stack(1).Display(std::move(channel)), key, std::move(answer));
}

constexpr auto PlaneUnit = L"ZEL_GroupPlaneUnit";
constexpr auto PlaneYUnit = L"ZEL_GroupPlaneYUnit";
constexpr auto PlaneOrigin = L"ZEL_GroupPlaneOrigin";
constexpr auto PlaneScale = L"ZEL_GroupPlaneScale";
constexpr auto PlaneSize = L"ZEL_GroupPlaneSize";

INSTANTIATE_TEST_SUITE_P(
    GroupPlaneUnit, GroupCustomData,
    testing::Values(Plane("Millimetre", {.PlaneUnit = "10^-3m^1"}, PlaneUnit, Text("MILLIMETER")),
                    Plane("Micrometre", {.PlaneUnit = "10^-6m^1"}, PlaneUnit, Text("MICROMETER")),
                    Plane("Nanometre", {.PlaneUnit = "10^-9m^1"}, PlaneUnit, Text("NANOMETER")),
                    Plane("Picometre", {.PlaneUnit = "10^-12m^1"}, PlaneUnit, Text("PICOMETER")),
                    Plane("Pixel", {.PlaneUnit = "PIXEL"}, PlaneUnit, Text("PIXEL")),
                    Plane("PixelWithPower", {.PlaneUnit = "10^0pixel^1"}, PlaneUnit, Text("PIXEL")),
                    Plane("NotTold", {}, PlaneUnit, Text("PIXEL")),
                    Plane("NotInTheTable", {.PlaneUnit = "10^-1m^1"}, PlaneUnit, Failed),
                    Plane("YMillimetre", {.PlaneYUnit = "10^-3m^1"}, PlaneYUnit, Text("MILLIMETER")),
                    Plane("YNotTold", {.PlaneUnit = "10^-3m^1"}, PlaneYUnit, Text("PIXEL")),
                    Plane("YNotInTheTable", {.PlaneYUnit = "mm"}, PlaneYUnit, Failed)),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(GroupPlane, GroupCustomData,
                         testing::Values(Plane("Origin", {.PlaneOrigin = {{0.5, -2}}}, PlaneOrigin, Text("0.5,-2")),
                                         Plane("OriginOf17Digits", {.PlaneOrigin = {{0.1, 1e20}}}, PlaneOrigin,
                                               Text("0.10000000000000001,1e+20")),
                                         Plane("OriginOfThree", {.PlaneOrigin = {{1, 2, 3}}}, PlaneOrigin, Text("1,2")),
                                         Plane("OriginOfOne", {.PlaneOrigin = {{1}}}, PlaneOrigin, Failed),
                                         Plane("OriginNotTold", {}, PlaneOrigin, NotFound),
                                         Plane("Scale", {.PlaneScale = {{0.25, 0.5}}}, PlaneScale, Text("0.25,0.5")),
                                         Plane("ScaleOfOne", {.PlaneScale = {{1}}}, PlaneScale, Failed),
                                         Plane("ScaleNotTold", {}, PlaneScale, NotFound),
                                         Plane("Size", {.PlaneRect = {{-1, 2, 300, 400}}}, PlaneSize,
                                               Text("-1,2,300,400")),
                                         Plane("SizeOfThree", {.PlaneRect = {{1, 2, 3}}}, PlaneSize, Failed),
                                         Plane("SizeNotTold", {}, PlaneSize, NotFound)),
                         NameOfRow());

INSTANTIATE_TEST_SUITE_P(PlaneOfADocument, GroupCustomData,
                         testing::Values(GroupRow{{"IsThatOfTheFirstChannelOfTheFirstLayer"},
                                                  TwoStacks().Layers({{{.StackId = 2, .PlaneScale = {{1, 2}}}},
                                                                      {{.StackId = 1, .PlaneScale = {{3, 4}}}}}),
                                                  PlaneScale,
                                                  Text("1,2")}),
                         NameOfRow());

// ---- The frame of the group ----

constexpr auto FrameUnit = L"ZEL_GroupFrameUnit";
constexpr auto FrameYUnit = L"ZEL_GroupFrameYUnit";
constexpr auto FrameOrigin = L"ZEL_GroupFrameOrigin";
constexpr auto FrameScale = L"ZEL_GroupFrameScale";

Document Edited(const std::function<void(CNode& properties)>& edit)
{
    Document document;
    document.With(Stack(1));
    edit(document.StackProperties(1));
    return document;
}
GroupRow Frame(std::string name, const std::function<void(CNode& properties)>& edit, const wchar_t* key, CAnswer answer)
{
    return {{std::move(name)}, Edited(edit), key, std::move(answer)};
}

INSTANTIATE_TEST_SUITE_P(
    GroupFrame, GroupCustomData,
    testing::Values(OfStack("Origin", Stack(1).Origin(-0.5, 1e-7), FrameOrigin, Text("-0.5,9.9999999999999995e-08")),
                    Frame(
                        "OriginNotTold", [](CNode& node) { node.Drop(Tag::FrameOrigin); }, FrameOrigin, NotFound),
                    OfStack("Scale", Stack(1).Scale(0.25, 0.125), FrameScale, Text("0.25,0.125")),
                    Frame(
                        "ScaleNotTold", [](CNode& node) { node.Drop(Tag::FrameScale); }, FrameScale, NotFound),
                    OfStack("Millimetre", Stack(1).Unit("10^-3m^1"), FrameUnit, Text("MILLIMETER")),
                    OfStack("Micrometre", Stack(1).Unit("10^-6m^1"), FrameUnit, Text("MICROMETER")),
                    OfStack("Nanometre", Stack(1).Unit("10^-9m^1"), FrameUnit, Text("NANOMETER")),
                    OfStack("Picometre", Stack(1).Unit("10^-12m^1"), FrameUnit, Text("PICOMETER")),
                    Frame(
                        "UnitNotTold", [](CNode& node) { node.Drop(Tag::FrameUnit); }, FrameUnit, NotFound),
                    OfStack("YNanometre", Stack(1).YUnit("10^-9m^1"), FrameYUnit, Text("NANOMETER")),
                    OfStack("YPixelWithPower", Stack(1).YUnit("10^0pixel^1"), FrameYUnit, Text("PIXEL")),
                    OfStack("YBarePixel", Stack(1).YUnit("PIXEL"), FrameYUnit, Failed),
                    OfStack("YNotInTheTable", Stack(1).YUnit("furlong"), FrameYUnit, Failed),
                    OfStack("YNotTold", Stack(1), FrameYUnit, NotFound)),
    NameOfRow());

GroupRow Axis0(std::string name, int32_t meaning, CAnswer answer)
{
    return OfStack(std::move(name), Stack(1).AxisMeanings(meaning, 0), L"ZEL_GroupAxis0", std::move(answer));
}

INSTANTIATE_TEST_SUITE_P(GroupAxis, GroupCustomData,
                         testing::Values(Axis0("Invalid", -1, Text("Invalid")), Axis0("Z", 1, Text("Z")),
                                         Axis0("T", 2, Text("T")), Axis0("L", 3, Text("L")),
                                         Axis0("Channel", 4, Text("Channel")), Axis0("Undefined", 5, Text("Undefined")),
                                         Axis0("X", 6, Text("X")), Axis0("Y", 7, Text("Y")),
                                         Axis0("Phase", 8, Text("Phase")), Axis0("Zero", 0, Failed),
                                         Axis0("Beyond", 9, Failed),
                                         OfStack("Axis1", Stack(1).AxisMeanings(6, 7), L"ZEL_GroupAxis1", Text("Y")),
                                         OfStack("Axis0NotTold", Stack(1), L"ZEL_GroupAxis0", Text("X")),
                                         OfStack("Axis1NotTold", Stack(1), L"ZEL_GroupAxis1", Text("Y"))),
                         NameOfRow());

const CAnswer Refused = {AC_RESULT_INVALID_PARAM, Untouched, ""};

INSTANTIATE_TEST_SUITE_P(NoKeys, GroupCustomData,
                         testing::Values(OfStack("Unknown", Stack(1), L"ZEL_GroupColour", Refused),
                                         OfStack("Empty", Stack(1), L"", Refused),
                                         OfStack("OtherCase", Stack(1), L"zel_grouptype", Refused),
                                         OfStack("Longer", Stack(1), L"ZEL_GroupType ", Refused)),
                         NameOfRow());

// ---- The calls ----

class GroupDataCalls : public Slide
{
protected:
    AC_Result Ask(std::wstring key, BYTE* buffer, UINT64 size, UINT64* numOfBytes) const
    {
        return Call(_AC_GetGroupCustomData, Group(), key.data(), nullptr, buffer, size, numOfBytes);
    }
};

TEST_F(GroupDataCalls, DoNotLookAtTheSizeOfTheBuffer)
{
    Open(Stack(1).Operator(42));
    std::array<BYTE, 4> buffer = {'?', '?', '?', '?'};
    UINT64 size = 0;
    EXPECT_EQ(Ask(RenderOperation, buffer.data(), 0, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(size, 2U);
    EXPECT_EQ(std::string(buffer.begin(), buffer.end()), "42??");
}

TEST_F(GroupDataCalls, WorkWithoutASize)
{
    Open(Stack(1).Operator(42));
    std::array<BYTE, 2> buffer = {'?', '?'};
    EXPECT_EQ(Ask(RenderOperation, buffer.data(), 2, nullptr), AC_RESULT_SUCCESS);
    EXPECT_EQ(std::string(buffer.begin(), buffer.end()), "42");
}

TEST_F(GroupDataCalls, RefuseNullArguments)
{
    Open(Stack(1));
    const AC_HGROUP group = Group();
    UINT64 size = 0;
    const auto messages = MessagesOf(
        [&]
        {
            EXPECT_EQ(_AC_GetGroupCustomData(nullptr, std::wstring(Order).data(), nullptr, nullptr, 0, &size),
                      AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetGroupCustomData(group, nullptr, nullptr, nullptr, 0, &size), AC_RESULT_INVALID_PARAM);
        });
    EXPECT_THAT(messages, ElementsAre("Error: hMultiDimImg or pszGroupCustomDataName or params  are NULL!",
                                      "Error: hMultiDimImg or pszGroupCustomDataName or params  are NULL!"));
}

TEST_F(GroupDataCalls, RefuseAnUnknownNameWithoutALogLine)
{
    Open(Stack(1));
    const AC_HGROUP group = Group();
    std::wstring key = L"ZEL_GroupColour";
    EXPECT_THAT(MessagesOf([&] { _AC_GetGroupCustomData(group, key.data(), nullptr, nullptr, 0, nullptr); }),
                IsEmpty());
}

TEST_F(GroupDataCalls, WarnOfAxesThatAreNotTold)
{
    Open(Stack(1));
    UINT64 size = 0;
    EXPECT_THAT(MessagesOf([&] { Ask(L"ZEL_GroupAxis0", nullptr, 0, &size); }),
                Contains("Warning: tag 'ImgAxis0Meaning' is missing so returning X!"));
}

TEST_F(GroupDataCalls, TellLittleOfAStackThatNoLayerShows)
{
    Open(ShownTwice({}, {}));
    const AC_HGROUP notShown = GroupOf(Doc(), 1);
    EXPECT_EQ(GroupData(notShown, Order), Text(""));
    EXPECT_EQ(GroupData(notShown, RenderOperation), Text("0"));
    EXPECT_EQ(GroupData(notShown, Transparency), Text("1"));
}

// The flag takes a stack out of the order of those that are shown, whatever it says.
TEST_F(GroupDataCalls, TellAnOrderBelowZeroForAStackWithAFlagThatDoesNotHideIt)
{
    Open(Document().With(Stack(1).Hidden(false)).With(Stack(2)));
    EXPECT_EQ(GroupData(GroupOf(Doc(), 0), Order), Text("-1"));
    EXPECT_EQ(GroupData(GroupOf(Doc(), 1), Order), Text("0"));
}

TEST_F(GroupDataCalls, FailWithTooFewNumbersOfAFrame)
{
    Document document;
    document.With(Stack(1));
    document.StackProperties(1).Put(Doubles(Tag::FrameOrigin, {0.5}));
    Open(document);
    EXPECT_EQ(GroupData(Group(), FrameOrigin), Failed);
}

} // namespace
