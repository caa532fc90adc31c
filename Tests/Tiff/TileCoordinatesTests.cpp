// A tile is read by its coordinates, which must be such whether or not a host asks for them.

#include "SampleDocuments/Tags.h"
#include "Tests/Properties/PropertySets.h"
#include "Tests/Tiff/TiffSlide.h"

#include <limits>

using namespace TiffOfTest;

namespace
{

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

Stack InBinaryStore()
{
    return Stack(1).Size(64, 64).Tiles(32, 32);
}
Stack InTiffStore()
{
    return InBinaryStore().InTiffStore();
}
Stack InDocument()
{
    return InBinaryStore().InDocument(32);
}

/// What a host asks of the first tile of a document.
struct Question
{
    static AC_Result Body(AC_HIMAGE image) { return ResultOfBody(image); }
    static AC_Result Channel(AC_HIMAGE image)
    {
        int size = 0;
        return Call(_AC_GetImageChannelId, image, nullptr, 0, &size);
    }
    static AC_Result JpegTables(AC_HIMAGE image) { return ResultOfImageSet(image, L"JpegTables"); }
};

struct BrokenRow : Row
{
    Stack Of;
    std::function<void(Document&)> Break = [](Document&) {};
};

class TileCoordinates : public TiffSlide
{
protected:
    /// The result of the first call that fails, up to the question.
    AC_Result ResultOf(AC_Result (*question)(AC_HIMAGE), const BrokenRow& row)
    {
        Document document;
        document.With(row.Of).With(Stack(2));
        row.Break(document);
        Open(std::move(document));
        AC_HAREA area = nullptr;
        AC_HIMAGE image = nullptr;
        AC_Result result = Call(_AC_GetArea, Group(), 0, UINT64{0}, &area);
        if (result == AC_RESULT_SUCCESS)
            result = Call(_AC_GetImage, area, L"0", nullptr, 0, &image);
        return result == AC_RESULT_SUCCESS ? question(image) : result;
    }
    static std::string CompressionOf(AC_HAREA area)
    {
        return ToldByArea(area, L"ChannelInfo", {{L"channelId", L"0"}}).at("format").front();
    }
};

class CoordinatesThatCannotBeMade : public TileCoordinates, public testing::WithParamInterface<BrokenRow>
{
};

TEST_P(CoordinatesThatCannotBeMade, RefuseTheTileWhateverIsAsked)
{
    EXPECT_EQ(ResultOf(Question::Channel, GetParam()), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOf(Question::Body, GetParam()), AC_RESULT_FAILURE);
}

std::vector<BrokenRow> RowsOfEachKind(
    const std::string& name, const std::function<void(Stack&)>& change,
    const std::function<void(Document&)>& spoil = [](Document&) {})
{
    std::vector<BrokenRow> rows = {{{name + "InABinaryStore"}, InBinaryStore(), spoil},
                                   {{name + "InATiffStore"}, InTiffStore(), spoil},
                                   {{name + "InTheDocument"}, InDocument(), spoil}};
    for (BrokenRow& row : rows)
        change(row.Of);
    return rows;
}

constexpr auto Unchanged = [](Stack&) {};

INSTANTIATE_TEST_SUITE_P(WithoutAGap, CoordinatesThatCannotBeMade,
                         testing::ValuesIn(RowsOfEachKind("GapOfZero", [](Stack& stack) { stack.Scale(0, 0); })),
                         NameOfRow());
INSTANTIATE_TEST_SUITE_P(OfTheOrigin, CoordinatesThatCannotBeMade,
                         testing::ValuesIn(RowsOfEachKind("OriginThatIsNoNumber",
                                                          [](Stack& stack) { stack.Origin(NaN, 0); })),
                         NameOfRow());
INSTANTIATE_TEST_SUITE_P(OfAShortOrigin, CoordinatesThatCannotBeMade,
                         testing::ValuesIn(RowsOfEachKind("OriginOfOneNumber", Unchanged,
                                                          [](Document& document) {
                                                              document.StackProperties(1).Put(
                                                                  Doubles(Tag::FrameOrigin, {1}));
                                                          })),
                         NameOfRow());
INSTANTIATE_TEST_SUITE_P(
    OfALongOrigin, CoordinatesThatCannotBeMade,
    testing::ValuesIn(RowsOfEachKind("OriginOfThreeNumbers", Unchanged,
                                     [](Document& document) {
                                         document.StackProperties(1).Put(Doubles(Tag::FrameOrigin, {1, 2, 3}));
                                     })),
    NameOfRow());
INSTANTIATE_TEST_SUITE_P(OfAMissingOrigin, CoordinatesThatCannotBeMade,
                         testing::ValuesIn(RowsOfEachKind("TwoStacksWithoutOrigin", Unchanged,
                                                          [](Document& document)
                                                          {
                                                              document.StackProperties(1).Drop(Tag::FrameOrigin);
                                                              document.StackProperties(2).Drop(Tag::FrameOrigin);
                                                          })),
                         NameOfRow());
INSTANTIATE_TEST_SUITE_P(OutsideThePicture, CoordinatesThatCannotBeMade,
                         testing::Values(BrokenRow{{"ShiftBeyondThePicture"}, InBinaryStore().Shift(-5000, 0)}),
                         NameOfRow());

TEST_F(TileCoordinates, OfAFrameThatCannotBeMadeRefuseItsAreasInAStore)
{
    for (const Stack& stack : {InBinaryStore(), InTiffStore()})
    {
        Open(Stack(stack).Origin(NaN, 0));
        AC_HAREA area = nullptr;
        EXPECT_EQ(Call(_AC_GetArea, Group(), 0, UINT64{0}, &area), AC_RESULT_FAILURE);
    }
}

TEST_F(TileCoordinates, OfAFrameThatCannotBeMadeRefuseItsJpegTables)
{
    EXPECT_EQ(ResultOf(Question::JpegTables, {{}, InDocument().Origin(NaN, 0)}), AC_RESULT_FAILURE);
}

TEST_F(TileCoordinates, ThatCannotBeMadeEndTheWalk)
{
    Open(Stack(1).Size(64, 32).Tiles(32, 32).Scale(0, 0));
    const AC_HAREA area = Area(Group(), 0, 0);
    ASSERT_NE(Image(area), nullptr);
    EXPECT_EQ(ResultOfNextImage(area, {L"0"}), AC_RESULT_FAILURE);
}

TEST_F(TileCoordinates, BringTheirLogLinesWithTheFirstQuestionToATile)
{
    Document document;
    document.With(InDocument());
    document.StackProperties(1).Drop(Tag::FrameOrigin);
    Open(std::move(document));
    const AC_HIMAGE image = Tile(0, 0);
    const std::string note = "No. of multidim images: 1";
    EXPECT_THAT(MessagesOf([&] { BodyOf(image); }), Contains(note));
    EXPECT_THAT(MessagesOf([&] { BodyOf(image); }), Not(Contains(note)));
}

TEST_F(TileCoordinates, OfALaterRowOfTilesInTheDocumentCannotBeMadeSoTheirValuesAreNotScanned)
{
    // Such tiles are known by the position of their first pixel, which is not below the number of rows.
    const AC_Result oneRow = ResultOfOpening(Stack(1).Size(16, 16).Tiles(16, 16).InDocument().WithoutDisplayLimits());
    ASSERT_EQ(oneRow, AC_RESULT_SUCCESS);
    EXPECT_EQ(ResultOfSet(Area(Group(), 0, 0), L"ChannelInfo", {{L"channelId", L"0"}}), AC_RESULT_SUCCESS);
    Open(Stack(1).Size(16, 32).Tiles(16, 16).InDocument().WithoutDisplayLimits());
    EXPECT_EQ(ResultOfSet(Area(Group(), 0, 0), L"ChannelInfo", {{L"channelId", L"0"}}), AC_RESULT_FAILURE);
}

// The directory on which a TIFF store is left.

TEST_F(TileCoordinates, LeaveATiffStoreOnItsFirstDirectoryWhereItsPixelsAreAskedAbout)
{
    const CTiffDirectory raw = CTiffDirectory(16, 16).Tiles(16, 16);
    const CTiffDirectory j2k = CTiffDirectory(16, 16).Tiles(16, 16).Compression(CompressionJ2k);
    Open(StoreOf(Stack(1).Size(16, 16), {raw, j2k}));
    LevelRect(Group(), 0);
    LevelRect(Group(), 1);
    const CMN_RECT part = {3, 2, 5, 4};
    EXPECT_EQ(BodyOf(Tile(0, 0), part), Cut(raw.StripOrTile(0), 16, 1, part));
    EXPECT_EQ(CompressionOf(Area(Group(), 0, 0)), "text RAW");
}

TEST_F(TileCoordinates, OfTheTilesOfAWalkDecideWhoseJpegTablesAreTold)
{
    const std::vector<ByteString> tables = {{0xFF, 0xD8, 0, 0xFF, 0xD9}, {0xFF, 0xD8, 1, 0xFF, 0xD9}};
    const auto plane = [&](size_t number)
    { return CTiffDirectory(16, 16).Compression(CompressionJpeg7).JpegTables(tables[number]); };
    CTiffDirectory first = plane(0).Description(Ome({OmeImage("1", {"TheZ=\"0\"", "TheZ=\"1\"", "TheZ=\"2\""})}));
    Open(StoreOf(Stack(1).Size(16, 16).Z(3), {first, plane(1), plane(1)}));
    const AC_HAREA area = Area(Group(), 0, 0);
    BodyOf(Image(area, L"0", {AtZ(1)})); // the store stands on the second directory
    const AC_HIMAGE image = Image(area, L"0", {AtZ(1)});
    ASSERT_NE(NextImage(area), nullptr); // asked for the first time: back on the first
    const auto told = ValuesOf(SetOfImage(image, L"JpegTables"), L"bufPtr");
    const auto* bytes = reinterpret_cast<const unsigned char*>(told.front().value.pszString);
    EXPECT_EQ(ByteString(bytes, bytes + tables[0].size()), tables[0]);
}

TEST_F(TileCoordinates, OnceMadeLeaveATiffStoreWhereItStands)
{
    const std::vector<ByteString> tables = {{0xFF, 0xD8, 0, 0xFF, 0xD9}, {0xFF, 0xD8, 1, 0xFF, 0xD9}};
    const auto level = [&](size_t number)
    { return CTiffDirectory(16, 16).Compression(CompressionJpeg7).JpegTables(tables[number]); };
    Open(StoreOf(Stack(1).Size(16, 16), {level(0), level(1)}));
    const AC_HIMAGE image = Tile(1, 0);
    BodyOf(image);
    AxesOf(image); // the objects are made only now, and nothing is asked for them
    const auto told = ValuesOf(SetOfImage(image, L"JpegTables"), L"bufPtr");
    const auto* bytes = reinterpret_cast<const unsigned char*>(told.front().value.pszString);
    EXPECT_EQ(ByteString(bytes, bytes + tables[1].size()), tables[1]);
}

// errno.

TEST_F(TileCoordinates, ClearAnOldErrnoWhenTheyAreMade)
{
    for (const Stack& stack : {InBinaryStore(), InTiffStore(), InDocument()})
    {
        Open(stack);
        CMN_RECT whole = {};
        UINT64 size = 0;
        for (const UINT64 area : {0, 1})
        {
            const AC_HIMAGE image = Tile(0, area);
            errno = ENOENT;
            EXPECT_EQ(_AC_GetImageBody(image, &whole, nullptr, 0xFFFFFFFF, &size), AC_RESULT_FAILURE);
        }
    }
}

} // namespace
