// How the directories of a TIFF store, and the XML that describes them, become the records of its tiles.

#include "Tests/Tiff/TiffSlide.h"

#include <malloc.h>

using namespace TiffOfTest;

namespace
{

class TiffStoreRecords : public TiffSlide
{
protected:
    /// Opens a stack of Z and T whose store is the directories, the first of which has the XML.
    void OpenWithXml(const std::string& xml, std::vector<CTiffDirectory> directories, Stack stack = Stack(1).Z(3).T(3))
    {
        directories.front().Description(xml);
        Open(StoreOf(std::move(stack), std::move(directories)));
    }
};

CTiffDirectory OneStrip()
{
    return CTiffDirectory(8, 4);
}

// Without XML.

TEST_F(TiffStoreRecords, WithoutXmlAreOneForEachStripAndALevelForEachDirectory)
{
    Open(StoreOf(Stack(1), {CTiffDirectory(8, 10).Strips(4), CTiffDirectory(4, 5).Strips(4)}));
    EXPECT_THAT(Records(), ElementsAre(Record{.Row = 0}, Record{.Row = 1}, Record{.Row = 2},
                                       Record{.Row = 0, .Level = 1, .Directory = 1},
                                       Record{.Row = 1, .Level = 1, .Directory = 1}));
    EXPECT_EQ(NumOfLevels(Group()), 2);
}

TEST_F(TiffStoreRecords, WithoutXmlAreOneForEachTileInRows)
{
    Open(StoreOf(Stack(1), {CTiffDirectory(32, 32).Tiles(16, 16)}));
    EXPECT_THAT(Records(), ElementsAre(Record{}, Record{.Col = 1}, Record{.Row = 1}, Record{.Col = 1, .Row = 1}));
}

TEST_F(TiffStoreRecords, HaveOneMoreColumnAndRowForARemainder)
{
    Open(StoreOf(Stack(1), {CTiffDirectory(33, 17).Tiles(32, 16)}));
    EXPECT_THAT(Records(), ElementsAre(Record{}, Record{.Col = 1}, Record{.Row = 1}, Record{.Col = 1, .Row = 1}));
    EXPECT_EQ(NumOfAreas(Group(), 0), 4);
}

TEST_F(TiffStoreRecords, ComeFromAnEmptyDescriptionAsWithoutXml)
{
    OpenWithXml("", {OneStrip(), OneStrip()});
    EXPECT_THAT(Records(), ElementsAre(Record{}, Record{.Level = 1, .Directory = 1}));
}

TEST_F(TiffStoreRecords, AreNotComparedWithTheDimensions)
{
    Open(StoreOf(Stack(1).Z(3), {OneStrip()}));
    EXPECT_THAT(Records(), ElementsAre(Record{}));
}

// With XML.

TEST_F(TiffStoreRecords, TakeTheirCoordinatesFromThePlanes)
{
    OpenWithXml(Ome({OmeImage("1", {"TheZ=\"2\" TheT=\"1\" TheC=\"0\" TheL=\"0\"", "TheZ=\"1\" TheT=\"2\""})}),
                {OneStrip(), OneStrip()});
    EXPECT_THAT(Records(), ElementsAre(Record{.Z = 2, .T = 1}, Record{.Z = 1, .T = 2, .Directory = 1}));
}

TEST_F(TiffStoreRecords, TakeChannelsAndWavelengthsFromThePlanes)
{
    OpenWithXml(Ome({OmeImage("1", {"TheC=\"1\" TheL=\"2\"", "TheC=\"0\" TheL=\"1\""})}), {OneStrip(), OneStrip()},
                Stack(1).Lambda(3).Channels(2));
    EXPECT_THAT(Records(), ElementsAre(Record{.C = 1, .L = 2}, Record{.C = 0, .L = 1, .Directory = 1}));
}

struct IndexRow : Row
{
    std::string Attributes;
    uint32_t Z;
};

class TiffStoreIndex : public TiffStoreRecords, public testing::WithParamInterface<IndexRow>
{
};

TEST_P(TiffStoreIndex, IsTheNumberThatTheTextBeginsWith)
{
    OpenWithXml(Ome({OmeImage("1", {GetParam().Attributes})}), {OneStrip()});
    EXPECT_THAT(Records(), ElementsAre(Record{.Z = GetParam().Z}));
}

INSTANTIATE_TEST_SUITE_P(TheZ, TiffStoreIndex,
                         testing::Values(IndexRow{{"Absent"}, "", 0}, IndexRow{{"Empty"}, "TheZ=\"\"", 0},
                                         IndexRow{{"Word"}, "TheZ=\"two\"", 0}, IndexRow{{"Plain"}, "TheZ=\"2\"", 2},
                                         IndexRow{{"BehindBlanks"}, "TheZ=\" 2\"", 2},
                                         IndexRow{{"BeforeAWord"}, "TheZ=\"2nd\"", 2},
                                         IndexRow{{"OfAnotherName"}, "thez=\"2\"", 0}),
                         NameOfRow());

TEST_F(TiffStoreRecords, ComeInTheOrderOfPositionsAndOfPlanesInEach)
{
    const CTiffDirectory twoTiles = CTiffDirectory(32, 16).Tiles(16, 16);
    OpenWithXml(Ome({OmeImage("1", {"TheZ=\"0\"", "TheZ=\"1\""})}), {twoTiles, twoTiles});
    EXPECT_THAT(Records(), ElementsAre(Record{}, Record{.Z = 1, .Directory = 1}, Record{.Col = 1},
                                       Record{.Col = 1, .Z = 1, .Directory = 1}));
}

TEST_F(TiffStoreRecords, HaveALevelForEachImage)
{
    const std::string image = OmeImage("1", {"TheZ=\"0\"", "TheZ=\"1\""});
    OpenWithXml(Ome({image, image}), {OneStrip(), OneStrip(), OneStrip(), OneStrip()});
    EXPECT_THAT(Records(), ElementsAre(Record{}, Record{.Z = 1, .Directory = 1}, Record{.Level = 1, .Directory = 2},
                                       Record{.Z = 1, .Level = 1, .Directory = 3}));
}

TEST_F(TiffStoreRecords, AreOneForTheSamplesOfAPixel)
{
    OpenWithXml(Ome({OmeImage("3", {"TheZ=\"0\"", AnyPlane, AnyPlane, "TheZ=\"1\"", AnyPlane, AnyPlane})}),
                {OneStrip(), OneStrip()});
    EXPECT_THAT(Records(), ElementsAre(Record{}, Record{.Z = 1, .Directory = 1}));
}

TEST_F(TiffStoreRecords, KeepTheSamplesOfAnEarlierImageWhereALaterOneSaysOne)
{
    const std::vector<std::string> planes = {AnyPlane, AnyPlane, AnyPlane};
    OpenWithXml(Ome({OmeImage("3", planes), OmeImage("1", planes)}), {OneStrip(), OneStrip()});
    EXPECT_THAT(Records(), ElementsAre(Record{}, Record{.Level = 1, .Directory = 1}));
}

TEST_F(TiffStoreRecords, TakeOtherSamplesFromALaterImage)
{
    const std::vector<std::string> planes = {AnyPlane, AnyPlane, AnyPlane, AnyPlane};
    OpenWithXml(Ome({OmeImage("4", planes), OmeImage("2", planes)}), {OneStrip(), OneStrip(), OneStrip()});
    // The second image begins at directory 4 x 1 / 4 and ends the file at 4 x 2 / 2.
    EXPECT_THAT(Records(),
                ElementsAre(Record{}, Record{.Level = 1, .Directory = 1}, Record{.Level = 1, .Directory = 2}));
}

TEST_F(TiffStoreRecords, ArePassedOverForAnImageWithoutPlanes)
{
    OpenWithXml(Ome({OmeImage("1", {AnyPlane}), OmeImage("1", {}), OmeImage("1", {AnyPlane})}),
                {OneStrip(), OneStrip(), OneStrip()});
    // Without planes the next image is looked for at directory 0 again.
    EXPECT_EQ(Records().front(), Record{});
    EXPECT_EQ(NumOfLevels(Group()), 3);
}

TEST_F(TiffStoreRecords, OfBigTiffAreThoseOfClassicTiff)
{
    const Stack stack = Stack(1).Size(40, 20).Tiles(16, 16).Levels(2).Z(2).InTiffStore();
    Open(stack);
    const std::vector<Record> records = Records();
    Open(Stack(stack).BigTiff());
    EXPECT_EQ(Records(), records);
    EXPECT_EQ(records.size(), 2u * (3 * 2 + 2 * 1));
}

TEST_F(TiffStoreRecords, LogThatXmlIsNotValidated)
{
    const std::string note = "TODO: validate against xsd file";
    EXPECT_THAT(MessagesOfOpening(Stack(1).InTiffStore()), Contains(note));
    EXPECT_THAT(MessagesOfOpening(Stack(1).InTiffStore().WithoutXml()), Not(Contains(note)));
}

TEST_F(TiffStoreRecords, ChainThePlanesOfOnePositionAndEndThere)
{
    Open(Stack(1).Size(32, 16).Tiles(16, 16).Z(3).InTiffStore());
    const AC_HAREA area = Area(Group(), 0, 0);
    const AC_HIMAGE first = Image(area, L"0", {AtZ(0)});
    ASSERT_NE(first, nullptr);
    EXPECT_THAT(AxesOf(NextImage(area)), ElementsAre(AtZ(1)));
    EXPECT_THAT(AxesOf(NextImage(area)), ElementsAre(AtZ(2)));
    EXPECT_EQ(NextImage(area), nullptr);
    EXPECT_EQ(ModelTile(0, 0, 0, {2, 0, 0, 0})->NextTileOnDisk(), nullptr);
    EXPECT_EQ(ModelTile(0, 0, 0, {1, 0, 0, 0})->NextTileOnDisk(), ModelTile(0, 0, 0, {2, 0, 0, 0}));
}

TEST_F(TiffStoreRecords, ChainPlanesThatRepeatAPosition)
{
    OpenWithXml(Ome({OmeImage("1", {AnyPlane, "TheZ=\"1\"", AnyPlane})}), {OneStrip(), OneStrip(), OneStrip()},
                Stack(1).Z(2));
    const AC_HAREA area = Area(Group(), 0, 0);
    const AC_HIMAGE first = Image(area, L"0", {AtZ(0)});
    EXPECT_THAT(AxesOf(NextImage(area)), ElementsAre(AtZ(1)));
    const AC_HIMAGE third = NextImage(area);
    EXPECT_THAT(AxesOf(third), ElementsAre(AtZ(0)));
    EXPECT_NE(third, first);
    EXPECT_EQ(NextImage(area), nullptr);
    EXPECT_EQ(Image(area, L"0", {AtZ(0)}), first);
}

TEST_F(TiffStoreRecords, OfDirectoriesThatAreNotThereAreMadeButCannotBeRead)
{
    OpenWithXml(Ome({OmeImage("1", {"TheZ=\"0\"", "TheZ=\"1\""})}), {OneStrip()}, Stack(1).Z(2));
    EXPECT_THAT(Records(), ElementsAre(Record{}, Record{.Z = 1, .Directory = 1}));
    EXPECT_EQ(ResultOfBody(Tile(0, 0, L"0", {AtZ(0)})), AC_RESULT_SUCCESS);
    EXPECT_EQ(ResultOfBody(Tile(0, 0, L"0", {AtZ(1)})), AC_RESULT_FAILURE);
}

TEST_F(TiffStoreRecords, OfDirectoriesThatAreNotThereCostNothingHoweverMany)
{
    // Four hundred million of them, whose list alone would take gigabytes.
    constexpr uint32_t many = 20000;
    OpenWithXml(Ome({OmeImage("1", std::vector<std::string>(many, AnyPlane))}), {CTiffDirectory(1, many).Strips(1)},
                Stack(1));
    EXPECT_EQ(NumOfAreas(Group(), 0), static_cast<int>(many));
    EXPECT_EQ(ResultOfBody(Tile(0, 7)), AC_RESULT_SUCCESS);
}

TEST_F(TiffStoreRecords, ThatAreWalkedTakeMemoryOneByOne)
{
    constexpr uint32_t many = 20000;
    OpenWithXml(Ome({OmeImage("1", std::vector<std::string>(many, AnyPlane))}), {CTiffDirectory(1, many).Strips(1)},
                Stack(1));
    const AC_HAREA last = Area(Group(), 0, many - 1);
    Image(last);
    const size_t before = mallinfo2().uordblks;
    for (uint32_t plane = 1; plane < many; ++plane)
        ASSERT_NE(NextImage(last), nullptr);
    EXPECT_EQ(NextImage(last), nullptr);
    EXPECT_LT(mallinfo2().uordblks - before, size_t{many} * 256);
}

TEST_F(TiffStoreRecords, BeginAnewWithTheFirstDirectoryAfterTheLastNumber)
{
    OpenWithXml(Ome({OmeImage("1", std::vector<std::string>(65537, AnyPlane))}), {OneStrip()}, Stack(1));
    EXPECT_EQ(Records().back(), Record{});
}

TEST_F(TiffStoreRecords, OfDirectoriesThatAreThereAreAMillionOrAsManyAsTheFileHolds)
{
    constexpr uint32_t numOfStrips = 50000;
    const auto resultOf = [&](size_t numOfPlanes)
    {
        std::vector<CTiffDirectory> directories(numOfPlanes, OneStrip());
        directories.front() = CTiffDirectory(1, numOfStrips)
                                  .Strips(1)
                                  .Description(Ome({OmeImage("1", std::vector<std::string>(numOfPlanes, AnyPlane))}));
        return ResultOfOpening(StoreOf(Stack(1), std::move(directories)));
    };
    EXPECT_EQ(resultOf(20), AC_RESULT_SUCCESS);
    EXPECT_EQ(resultOf(21), AC_RESULT_FAILURE);
}

TEST_F(TiffStoreRecords, AreWalkedWhateverTheirIndexOnDimensionsThatTheStackHasNot)
{
    OpenWithXml(Ome({OmeImage("1", {"TheZ=\"5\" TheT=\"0\"", "TheZ=\"7\" TheT=\"1\""})}), {OneStrip(), OneStrip()},
                Stack(1).T(2));
    const AC_HAREA area = Area(Group(), 0, 0);
    ASSERT_NE(Image(area, L"0", {AtT(0)}), nullptr);
    EXPECT_THAT(AxesOf(NextImage(area)), ElementsAre(AtT(1)));
    EXPECT_EQ(NextImage(area), nullptr);
}

// What fails.

struct XmlRow : Row
{
    std::string Xml;
};

class TiffStoreXml : public TiffSlide, public testing::WithParamInterface<XmlRow>
{
};

TEST_P(TiffStoreXml, ThatCannotBeReadFailsTheOpening)
{
    CTiffDirectory first = OneStrip();
    first.Description(GetParam().Xml);
    EXPECT_EQ(ResultOfOpening(StoreOf(Stack(1).Z(3), {first, OneStrip()})), AC_RESULT_FAILURE);
    EXPECT_EQ(Doc(), nullptr);
}

const std::string GoodXml = Ome({OmeImage("1", {"", ""})});
std::string ManyImages(size_t count, const std::string& image)
{
    return Ome(std::vector<std::string>(count, image));
}

INSTANTIATE_TEST_SUITE_P(
    Damage, TiffStoreXml,
    testing::Values(XmlRow{{"NotXml"}, "just a note"}, XmlRow{{"Blanks"}, "   "},
                    XmlRow{{"Truncated"}, GoodXml.substr(0, GoodXml.size() / 2)},
                    XmlRow{{"NotWellFormed"}, "<OME><OME:Image></OME>"}, XmlRow{{"TwoRoots"}, "<OME/><OME/>"},
                    XmlRow{{"AnotherRoot"}, "<Microscope/>"}, XmlRow{{"NoImages"}, Ome({})},
                    XmlRow{{"NoPixels"}, Ome({"<OME:Image/>"})},
                    XmlRow{{"NoChannel"}, Ome({"<OME:Image><OME:Pixels><OME:Plane/></OME:Pixels></OME:Image>"})},
                    XmlRow{{"NoSamples"},
                           Ome({"<OME:Image><OME:Pixels><OME:Channel/><OME:Plane/></OME:Pixels></OME:Image>"})},
                    XmlRow{{"NoPlanes"}, Ome({OmeImage("1", {})})},
                    XmlRow{{"FewerImagesThanDirectories"}, Ome({OmeImage("1", {""})})},
                    XmlRow{{"ZeroSamples"}, Ome({OmeImage("0", {"", ""})})},
                    XmlRow{{"NegativeSamples"}, Ome({OmeImage("-3", {"", ""})})},
                    XmlRow{{"SamplesThatAreNoNumber"}, Ome({OmeImage("three", {"", ""})})},
                    XmlRow{{"EmptySamples"}, Ome({OmeImage("", {"", ""})})},
                    XmlRow{{"HugeSamples"}, Ome({OmeImage("2147483647", {"", ""})})},
                    XmlRow{{"SamplesBeyondAnyNumber"}, Ome({OmeImage("99999999999999999999", {"", ""})})},
                    XmlRow{{"SamplesOfMoreThan32Bits"}, Ome({OmeImage("4294967297", {"", ""})})},
                    XmlRow{{"IndexOfMoreThan32Bits"}, Ome({OmeImage("1", {"TheZ=\"4294967296\"", ""})})},
                    XmlRow{{"NegativeIndex"}, Ome({OmeImage("1", {"TheZ=\"-1\"", ""})})},
                    XmlRow{{"ManyImagesWithoutPlanes"}, ManyImages(1000, OmeImage("1", {}))},
                    XmlRow{{"NotUtf8"}, Ome({OmeImage("1", {"TheZ=\"\xC3\x28\xFF\"", ""})}) + "\xFE"}),
    NameOfRow());

TEST_F(TiffStoreRecords, OfADirectoryWithoutNeededTagsFail)
{
    EXPECT_EQ(ResultOfOpening(StoreOf(Stack(1), {OneStrip().Drop(TIFFTAG_IMAGEWIDTH)})), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfOpening(StoreOf(Stack(1), {OneStrip().Drop(TIFFTAG_IMAGELENGTH)})), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfOpening(StoreOf(Stack(1), {CTiffDirectory(16, 16).Tiles(16, 16).Drop(TIFFTAG_TILELENGTH)})),
              AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfOpening(StoreOf(Stack(1), {OneStrip(), OneStrip().Drop(TIFFTAG_IMAGEWIDTH)})), AC_RESULT_FAILURE);
}

} // namespace
