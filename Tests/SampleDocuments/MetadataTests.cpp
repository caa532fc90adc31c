#include "SampleDocuments/Document.h"
#include "SampleDocuments/Tags.h"

#include "Tests/SampleDocuments/Bytes.h"

#include <gtest/gtest.h>

using namespace SampleDocuments;
using namespace BytesOfTest;

namespace
{

/// The value of a node on the way below another one.
ByteString ValueOf(CNode& node, const Path& path)
{
    return node.At(path).Value();
}

std::vector<uint32_t> TagsOf(const CNode& node)
{
    std::vector<uint32_t> tags;
    for (const CNode& child : node.Children())
        tags.push_back(child.Tag());
    return tags;
}

// Devices.

TEST(OpticalPath, LiesInTheFileAsAVolumeForEachDevice)
{
    EXPECT_EQ(BytesOfOnly(OpticalPathNode({{.Id = 7, .SubType = 20000, .HasProperties = false}})),
              Hex("00000090 FB070000 00000000 54000000"                   // 2043
                  "1800 5152 01000000 1800000000000000 01000000 00000000" //
                  "00000090 07000000 00000000 2C000000"                   // device 7
                  "1800 5152 01000000 1800000000000000 01000000 00000000" //
                  "05000000 42D50100 00000000 04000000 204E0000"));       // 120130 is 20000
}

TEST(OpticalPath, HoldsTheLensOfARevolver)
{
    Document document = Document().With(Stack(1).Lens({.Name = "UPlan",
                                                       .Magnification = 20,
                                                       .Aperture = 0.75,
                                                       .WorkingDistance = CMeasured(0.6, "10^-3m^1"),
                                                       .ImmersionMedium = Immersion::Oil,
                                                       .RefractiveIndex = 1.515}));
    CNode& device = document.StackProperties(1).At({2043, 1});
    EXPECT_EQ(ValueOf(device, {120130}), Hex("204E0000"));
    EXPECT_EQ(ValueOf(device, {120114, 120063}), Utf16("UPlan"));
    EXPECT_EQ(ValueOf(device, {120114, 120060}), Double(0, 20).Value());
    EXPECT_EQ(ValueOf(device, {120114, 120061}), Double(0, 0.75).Value());
    EXPECT_EQ(ValueOf(device, {120114, 120062, 268435458}), Double(0, 0.6).Value());
    EXPECT_EQ(ValueOf(device, {120114, 120062, 268435456}), Utf16("10^-3m^1"));
    EXPECT_EQ(ValueOf(device, {120114, 120064}), Hex("03000000"));
    EXPECT_EQ(ValueOf(device, {120114, 120079}), Double(0, 1.515).Value());
}

TEST(OpticalPath, HoldsOnlyWhatIsSet)
{
    Document document = Document().With(Stack(1).Lens({.Aperture = 0.75, .WorkingDistance = CMeasured(0.6)}));
    EXPECT_EQ(TagsOf(document.StackDevice(1)), (std::vector<uint32_t>{120061, 120062}));
    EXPECT_EQ(TagsOf(document.StackDevice(1).Child(Tag::WorkingDistance)), std::vector<uint32_t>{268435458});
    EXPECT_EQ(Document().With(Stack(1)).StackProperties(1).FindChild(2043), nullptr);
}

TEST(OpticalPath, HoldsTheExposureOfACameraUnderBothTags)
{
    Document document = Document().With(Stack(1).Exposure(5000000000).OldExposure(12));
    EXPECT_EQ(document.StackProperties(1).Child(2043).Children().size(), 1u) << "it is one camera";
    EXPECT_EQ(ValueOf(document.StackProperties(1), {2043, 2, 120130}), Hex("00000000"));
    EXPECT_EQ(ValueOf(document.StackDevice(1), {100100}), Hex("00F2052A01000000"));
    EXPECT_EQ(ValueOf(document.StackDevice(1), {100002}), Hex("0C000000"));
}

TEST(OpticalPath, LiesAtChannelsAndFramesAsWell)
{
    Document document = Document().With(Stack(1)
                                            .Z(3)
                                            .Channels({"DAPI", CChannel("FITC").With(Camera(300))})
                                            .ChannelDevice(1, Revolver({.Aperture = 1.2}))
                                            .FrameDevice(4, Camera({}, 8)));
    EXPECT_EQ(document.ChannelVolume(1, 0).FindChild(2043), nullptr);
    EXPECT_EQ(ValueOf(document.ChannelDevice(1, 1, 0), {100100}), Hex("2C01000000000000"));
    EXPECT_EQ(ValueOf(document.ChannelDevice(1, 1, 1), {120061}), Double(0, 1.2).Value());
    EXPECT_EQ(document.Frame(1, 3).FindChild(2006), nullptr);
    EXPECT_EQ(ValueOf(document.Frame(1, 4), {2006, 2043, 2, 120114, 100002}), Hex("08000000"));
}

TEST(OpticalPath, CanBeThereWithoutDevicesAndDevicesWithoutProperties)
{
    Stack stack = Stack(1).Channels(1).ChannelDevice(0, {.SubType = 20000, .HasProperties = false});
    stack.Plan().OpticalPath.emplace();
    Document document = Document().With(stack);
    EXPECT_TRUE(document.StackProperties(1).Child(2043).Children().empty());
    EXPECT_EQ(document.ChannelVolume(1, 0).At({2043, 1}).FindChild(120114), nullptr);
}

TEST(OpticalPath, IsRefusedWhereThereIsNothingToPutItIn)
{
    EXPECT_THROW(Stack(1).Channels(2).ChannelDevice(2, Camera(1)), CSampleError);
    EXPECT_THROW(Document().With(Stack(1).Z(2).FrameDevice(2, Camera(1))).Root(), CSampleError);
    EXPECT_THROW(Document().With(Stack(1).Exposure(1)).StackDevice(1, 1), CSampleError);
}

// The stage and the words that go with a picture.

TEST(Acquisition, LiesInTheFileAsAVolumeOfPositionsAndTexts)
{
    Document document = Document().With(Stack(1).Stage(CMeasured(1.5, "m"), std::nullopt).Experiment("e"));
    EXPECT_EQ(BytesOfOnly(document.StackProperties(1).Child(21000)),
              Hex("00000090 08520000 00000000 7C000000"                   // 21000
                  "1800 5152 01000000 1800000000000000 02000000 00000000" //
                  "00000090 0F520000 6A000000 42000000"                   // 21007
                  "1800 5152 01000000 1800000000000000 02000000 00000000" //
                  "00200020 00000010 2A000000 02000000 6D00"              // its unit
                  "0A000000 02000010 00000000 08000000 000000000000F83F"  // its value
                  "00200020 A2AC0200 00000000 02000000 6500"));           // 175266
}

TEST(Acquisition, HoldsWhatIsSaid)
{
    Document document = Document().With(Stack(1).Stage(-20, 0.25, "10^-3m^1").Sample("leaf", "third"));
    CNode& acquisition = document.StackProperties(1).Child(21000);
    EXPECT_EQ(ValueOf(acquisition, {21007, 268435458}), Double(0, -20).Value());
    EXPECT_EQ(ValueOf(acquisition, {21008, 268435458}), Double(0, 0.25).Value());
    EXPECT_EQ(ValueOf(acquisition, {21008, 268435456}), Utf16("10^-3m^1"));
    EXPECT_EQ(ValueOf(acquisition, {21104}), Utf16("leaf"));
    EXPECT_EQ(ValueOf(acquisition, {21105}), Utf16("third"));
    EXPECT_EQ(acquisition.FindChild(175266), nullptr);
    EXPECT_EQ(Document().With(Stack(1)).StackProperties(1).FindChild(21000), nullptr);
}

// What else a stack tells.

TEST(PropertiesOfAStack, TellItsNameItsTimeItsTypeAndItsAxes)
{
    Document document =
        Document().With(Stack(1).Name("first").CreationTime(86400).StackType(256).AxisMeanings(7, -1).YUnit("m"));
    CNode& properties = document.StackProperties(1);
    EXPECT_EQ(ValueOf(properties, {Tag::StackName}), Utf16("first"));
    EXPECT_EQ(BytesOfOnly(properties.Child(2015)), Hex("12000000 DF070000 00000000 08000000 8051010000000000"));
    EXPECT_EQ(ValueOf(properties, {2074}), Hex("00010000"));
    EXPECT_EQ(ValueOf(properties, {2451}), Hex("07000000"));
    EXPECT_EQ(ValueOf(properties, {2452}), Hex("FFFFFFFF"));
    EXPECT_EQ(ValueOf(properties, {2064}), Utf16("m"));
}

TEST(PropertiesOfAStack, CanHoldLimitsBesideThoseOfItsChannels)
{
    Document document = Document().With(Stack(1).Channels({"DAPI"}).StackLimits(3, 200));
    EXPECT_EQ(BytesOfOnly(document.StackProperties(1).Child(2003)),
              Hex("0B000020 D3070000 00000000 10000000 0000000000000840 0000000000006940"));
    EXPECT_EQ(document.ChannelVolume(1, 0).Child(2003).Value(), Doubles(0, {0, 256}).Value());
}

TEST(LookUpTables, AreStoredBlueFirst)
{
    EXPECT_EQ(CLookUpTable({{1, 2, 3}, {0, 0, 255}}).Bytes, Hex("030201 FF0000"));
}

TEST(LookUpTables, LieInTheFileInTwoForms)
{
    const std::vector<CColour> colours = {{1, 2, 3}};
    EXPECT_EQ(BytesOfOnly(CLookUpTable(colours).ToNode()),
              Hex("00000090 D4070000 00000000 2B000000"                   // 2004, a volume
                  "1800 5152 01000000 1800000000000000 01000000 00000000" //
                  "02000020 02000010 00000000 03000000 030201"));         // 268435458
    EXPECT_EQ(BytesOfOnly(CLookUpTable(colours, TableForm::Simple).ToNode()),
              Hex("02000020 D4070000 00000000 03000000 030201"));
}

TEST(LookUpTables, BelongToStacksAndChannels)
{
    const CLookUpTable red(Ramp(2, {255, 0, 0}));
    Document document = Document().With(Stack(1)
                                            .Channels({CChannel("a").With(red), "b"})
                                            .LookUpTable(CLookUpTable::OfBytes({1, 2}, TableForm::Simple)));
    EXPECT_EQ(ValueOf(document.ChannelVolume(1, 0), {2004, 268435458}), Hex("000000 0000FF"));
    EXPECT_EQ(document.ChannelVolume(1, 1).FindChild(2004), nullptr);
    EXPECT_EQ(ValueOf(document.StackProperties(1), {2004}), Hex("0102"));
}

TEST(LookUpTables, AreMadeAsRamps)
{
    EXPECT_EQ(Ramp(3, {255, 0, 10}), (std::vector<CColour>{{0, 0, 0}, {128, 0, 5}, {255, 0, 10}}));
    EXPECT_EQ(Ramp(1, {9, 9, 9}), (std::vector<CColour>{{0, 0, 0}}));
    EXPECT_TRUE(Ramp(0, {}).empty());
}

// The display flow.

TEST(DisplayFlow, TellsHowAStackIsShown)
{
    Document document = Document().With(Stack(5).Display({.OperatorId = 3,
                                                          .Transparency = 0.5,
                                                          .PlaneUnit = "m",
                                                          .PlaneYUnit = "PIXEL",
                                                          .PlaneOrigin = {{1, 2}},
                                                          .PlaneScale = {{0.25, 4}},
                                                          .PlaneRect = {{0, 0, 9, -8}}}));
    CNode& channel = document.DisplayLayer(0).Child(2013);
    EXPECT_EQ(ValueOf(channel, {10005}), Hex("05000000"));
    EXPECT_EQ(ValueOf(channel, {10001}), Hex("03000000"));
    EXPECT_EQ(ValueOf(channel, {10009}), Double(0, 0.5).Value());
    EXPECT_EQ(ValueOf(channel, {2011}), Utf16("m"));
    EXPECT_EQ(ValueOf(channel, {2063}), Utf16("PIXEL"));
    EXPECT_EQ(BytesOfOnly(channel.Child(20006)),
              Hex("0B000020 264E0000 00000000 10000000 000000000000F03F 0000000000000040"));
    EXPECT_EQ(ValueOf(channel, {20007}), Doubles(0, {0.25, 4}).Value());
    EXPECT_EQ(BytesOfOnly(channel.Child(20008)),
              Hex("03010020 284E0000 00000000 10000000 00000000 00000000 09000000 F8FFFFFF"));
    EXPECT_EQ(channel.FindChild(10056), nullptr);
}

TEST(DisplayFlow, CanHoldFewerNumbersThanReadersTake)
{
    Document document =
        Document().With(Stack(1).Display({.PlaneOrigin = {{1}}, .PlaneRect = {std::vector<int32_t>{1, 2}}}));
    CNode& channel = document.DisplayLayer(0).Child(2013);
    EXPECT_EQ(BytesOfOnly(channel.Child(20006)), Hex("0C010020 264E0000 00000000 08000000 000000000000F03F"));
    EXPECT_EQ(BytesOfOnly(channel.Child(20008)), Hex("03200020 284E0000 00000000 08000000 01000000 02000000"));
}

TEST(DisplayFlow, CanBeGivenInAllDetail)
{
    Document document = Document()
                            .With(Stack(1).Operator(2).Transparency(0.25))
                            .Layers({{{.StackId = 1}, {.OperatorType = -1}}, {{.StackId = 9, .Hidden = false}}});
    EXPECT_EQ(document.DisplayLayer(0).NumOfChildren(2013), 2u);
    EXPECT_EQ(TagsOf(document.DisplayLayer(0).Child(2013)), std::vector<uint32_t>{10005});
    EXPECT_EQ(ValueOf(document.DisplayLayer(0), {Nth(2013, 1), 10000}), Hex("FFFFFFFF"));
    EXPECT_EQ(document.DisplayLayer(1).SecondTag(), 1u);
    EXPECT_EQ(ValueOf(document.DisplayLayer(1), {2013, 10056}), Hex("00"));
}

// Blobs.

TEST(Blobs, LieInLayersFramesChannelsAndTheDocument)
{
    const CNode blob = Blob(4, 9, BytesOf("x"));
    Document document =
        Document()
            .With(Stack(1).Z(2).LayerBlob(blob).LayerBlob(Blob(1, 1, {})).FrameBlob(1, blob).ChannelBlob(3, blob))
            .FileBlob(blob);
    const ByteString value = Hex("04000000 01000000 09000000 78");
    EXPECT_EQ(ValueOf(document.StackVolume(1), {2024}), value);
    EXPECT_EQ(document.StackVolume(1).NumOfChildren(2024), 2u);
    EXPECT_EQ(document.Frame(1, 0).FindChild(2024), nullptr);
    EXPECT_EQ(ValueOf(document.Frame(1, 1), {2024}), value);
    EXPECT_EQ(ValueOf(document.StackVolume(1), {2036, 2024}), value);
    EXPECT_EQ(document.StackVolume(1).Child(2036).SecondTag(), 3u);
    EXPECT_EQ(ValueOf(document.Root(), {2000, 2024}), value);
}

TEST(Blobs, BeginWithTheOverviewInTheFirstFrame)
{
    Document document = Document().With(
        Stack(1).FrameBlob(0, Blob(4, 4, {})).Overview(BytesOf("picture")).FrameBlob(0, Blob(5, 4, {})));
    EXPECT_EQ(ValueOf(document.Frame(1), {2024}), Joined({Hex("06000000 07000000 01000000"), BytesOf("picture")}));
    EXPECT_EQ(document.Frame(1).NumOfChildren(2024), 3u);
}

TEST(DamageByName, CutsAValueOrDropsIt)
{
    Document document = Document().With(Stack(1).Exposure(1).Lens({.Name = "ab"}));
    EXPECT_EQ(document.StackDevice(1, 1).Child(Tag::LensName).Length(2).Value(), Utf16("a"));
    EXPECT_EQ(document.StackDevice(1, 0).Child(Tag::Exposure).Length(9).Value().size(), 9u);
    EXPECT_EQ(document.StackProperties(1).Drop(Tag::OpticalPath).FindChild(2043), nullptr);
    EXPECT_EQ(document.DocumentProperties().Drop(Tag::Author).FindChild(15), nullptr);
}

} // namespace
