// What the property sets of levels, areas and images tell.

#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

class ImageSets : public Slide
{
protected:
    Told PixelLength(int level) const { return ToldByArea(Area(Group(), level, 0), L"PixelLength"); }
    static std::vector<std::string> PositionOf(AC_HIMAGE image, const wchar_t* axisName)
    {
        return ToldBy(SetOfImage(image, L"AxisPosition", {{L"axisName", axisName}})).at("position");
    }
};

Told Length(std::string x, std::string y)
{
    return {{"xLength", {"double " + x}}, {"yLength", {"double " + y}}};
}

// ---- Levels ----

TEST_F(ImageSets, PixelLengthGrowsWithTheLevel)
{
    Open(Stack(1).Size(1024, 1024).Tiles(256, 256).Levels(3).Scale(0.5, 0.25));
    EXPECT_EQ(PixelLength(0), Length("0.5", "0.25"));
    EXPECT_EQ(PixelLength(1), Length("1", "0.5"));
    EXPECT_EQ(PixelLength(2), Length("2", "1"));
}

TEST_F(ImageSets, PixelLengthIsToldInMicrometres)
{
    Open(Stack(1).Scale(500, 250).Unit("10^-9m^1"));
    EXPECT_EQ(PixelLength(0), Length("0.5", "0.25"));
}

TEST_F(ImageSets, PixelLengthIsZeroWithoutCalibration)
{
    Stack uncalibrated(1);
    uncalibrated.Plan().Unit.reset();
    uncalibrated.Plan().Scale.reset();
    uncalibrated.Plan().Origin.reset();
    Open(uncalibrated);
    EXPECT_EQ(PixelLength(0), Length("0", "0"));
}

TEST_F(ImageSets, PixelLengthIsThatOfAllAreasOfALevel)
{
    Open(Stack(1).Size(512, 512).Tiles(256, 256).Levels(2));
    EXPECT_EQ(SetOf(Area(Group(), 0, 0), L"PixelLength"), SetOf(Area(Group(), 0, 3), L"PixelLength"));
    EXPECT_NE(SetOf(Area(Group(), 0, 0), L"PixelLength"), SetOf(Area(Group(), 1, 0), L"PixelLength"));
}

// ---- Areas ----

TEST_F(ImageSets, ImageSizeIsThatOfATileAtEachLevel)
{
    Open(Stack(1).Size(1000, 400).Tiles(256, 128).Levels(2));
    EXPECT_EQ(ToldByArea(Area(Group(), 0, 3), L"ImageSize"), (Told{{"size", {"point 256 128"}}}));
    EXPECT_EQ(ToldByArea(Area(Group(), 1, 0), L"ImageSize"), (Told{{"size", {"point 256 128"}}}));
}

TEST_F(ImageSets, ImageSizeOfAStackInTheDocumentIsThatOfItsStrips)
{
    Open(Stack(1).Size(300, 200).InDocument(64));
    EXPECT_EQ(ToldByArea(Area(Group(), 0, 0), L"ImageSize"), (Told{{"size", {"point 300 64"}}}));
}

// ---- Images ----

TEST_F(ImageSets, StimulationROIListIsAlwaysEmpty)
{
    Open(Stack(1));
    EXPECT_EQ(ToldBy(SetOfImage(Tile(0, 0), L"StimulationROIList")), (Told{{"id", {}}}));
}

TEST_F(ImageSets, AxisPositionIsThatOfTheImage)
{
    Open(Stack(1).Z(3, 10, 1.5).T(2, 1000, 500).Lambda(2, 400, 10));
    const AC_HIMAGE image = Tile(0, 0, L"0", {AtZ(2), AtT(1), AtL(1)});
    EXPECT_THAT(PositionOf(image, L"ZSTACK"), ElementsAre("double 13"));
    EXPECT_THAT(PositionOf(image, L"TIMELAPSE"), ElementsAre("double 1500")); // milliseconds
    EXPECT_THAT(PositionOf(image, L"LAMBDA"), ElementsAre("double 410"));
}

TEST_F(ImageSets, AxisPositionNeedsAnAxisOfSeveralPoints)
{
    Open(Stack(1).Z(1).T(2));
    EXPECT_EQ(ResultOfImageSet(Tile(0, 0, L"0", {AtT(0)}), L"AxisPosition", {{L"axisName", L"ZSTACK"}}),
              AC_RESULT_INVALID_PARAM);
}

TEST_F(ImageSets, AxisPositionIsThatOfEachFrameWhereTheyAreUneven)
{
    Open(Stack(1)
             .Dimension({.Meaning = DimensionMeaning::Z, .NumOfPoints = 3})
             .FrameCoordinates(DimensionMeaning::Z, {1, 2, 5}, "10^-6m^1"));
    EXPECT_THAT(PositionOf(Tile(0, 0, L"0", {AtZ(2)}), L"ZSTACK"), ElementsAre("double 5"));
}

TEST_F(ImageSets, JpegTablesAreTheBytesOfTheDirectory)
{
    const ByteString tables = {0xFF, 0xD8, 0xFF, 0xDB, 0x00, 0x03, 0x00, 0xFF, 0xD9};
    Open(Stack(1).Size(64, 64).InDocument(Stack::OneStrip).TiffCompression(7).JpegTables(tables));
    const AC_HPROPERTY set = SetOfImage(Tile(0, 0), L"JpegTables");
    const AC_VALUE pointer = ValuesOf(set, L"bufPtr").at(0);
    EXPECT_EQ(pointer.nType, AC_VT_STRING);
    const auto* bytes = reinterpret_cast<const uint8_t*>(pointer.value.pszString);
    EXPECT_EQ(ByteString(bytes, bytes + tables.size()), tables);
    EXPECT_EQ(TextOf(ValuesOf(set, L"bufSize").at(0)), "int 9");
}

TEST_F(ImageSets, JpegTablesOfOtherPixelsAreNone)
{
    Open(Stack(1).Jpeg());
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = ResultOfImageSet(Tile(0, 0), L"JpegTables"); });
    EXPECT_EQ(result, AC_RESULT_ILLEGAL_STATE);
    EXPECT_THAT(messages,
                Contains("Call to 'JpegTables' is only valid in case the frame compression type is Jpeg7!!!"));
}

} // namespace
