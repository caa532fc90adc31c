// The bytes of tiles and strips that lie in a TIFF store.

#include "Tests/Properties/PropertySets.h"
#include "Tests/Tiff/TiffSlide.h"

using namespace TiffOfTest;

namespace
{

class TiffStoreTile : public TiffSlide
{
protected:
    /// What a host gets that offers a buffer of so many bytes.
    struct HostRead
    {
        AC_Result Result = AC_RESULT_FAILURE;
        UINT64 Size = 0;
        ByteString Buffer;
    };
    static HostRead Read(AC_HIMAGE image, size_t sizeOfBuffer)
    {
        HostRead read;
        read.Buffer.assign(sizeOfBuffer, 0xCC);
        CMN_RECT whole = {};
        read.Result = Call(_AC_GetImageBody, image, &whole, read.Buffer.data(), UINT64{sizeOfBuffer}, &read.Size);
        return read;
    }
};

// Tiles.

TEST_F(TiffStoreTile, IsReadByItsNumberInRows)
{
    const Stack stack = Stack(1).Size(40, 40).Tiles(16, 16).InTiffStore();
    Open(stack);
    for (int32_t number = 0; number < 9; ++number)
        EXPECT_EQ(BodyOf(Tile(0, static_cast<UINT64>(number))), stack.TileBytes(0, number % 3, number / 3)) << number;
}

TEST_F(TiffStoreTile, IsReadFromTheDirectoryOfItsFrameAndLevel)
{
    const Stack stack = Stack(1).Size(40, 20).Tiles(16, 16).Levels(2).Z(2).Channels(2).InTiffStore();
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 5, L"1", {AtZ(1)})), stack.TileBytes(0, 2, 1, {.Z = 1, .C = 1}));
    EXPECT_EQ(BodyOf(Tile(1, 1, L"1", {AtZ(0)})), stack.TileBytes(1, 1, 0, {.C = 1}));
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(0)})), stack.TileBytes(0, 0, 0));
}

TEST_F(TiffStoreTile, HasTheSizeThatItTold)
{
    const Stack stack = Stack(1).Size(16, 16).Tiles(16, 16).InTiffStore();
    Open(stack);
    const auto read = Read(Tile(0, 0), 256);
    EXPECT_EQ(read.Result, AC_RESULT_SUCCESS);
    EXPECT_EQ(read.Size, 256u);
    EXPECT_EQ(read.Buffer, stack.TileBytes(0, 0, 0));
}

TEST_F(TiffStoreTile, ForATooSmallBufferTellsItsSizeAndReadsNothing)
{
    Open(Stack(1).Size(16, 16).Tiles(16, 16).InTiffStore());
    const auto read = Read(Tile(0, 0), 255);
    EXPECT_EQ(read.Result, AC_RESULT_SUCCESS);
    EXPECT_EQ(read.Size, 256u);
    EXPECT_EQ(read.Buffer, ByteString(255, 0xCC));
}

TEST_F(TiffStoreTile, HasTheJpegTablesOfTheDirectoryThatWasGoneToLast)
{
    const std::vector<ByteString> tables = {{0xFF, 0xD8, 0, 0xFF, 0xD9}, {0xFF, 0xD8, 1, 0xFF, 0xD9}};
    const auto directory = [&](size_t level)
    { return CTiffDirectory(16, 16).Compression(CompressionJpeg7).JpegTables(tables[level]); };
    Open(StoreOf(Stack(1).Size(16, 16), {directory(0), directory(1)}));
    // Telling a tile's size goes to its directory, also when the size is known from before.
    for (const int level : {0, 1, 0, 1, 0})
        EXPECT_EQ(RectOf(Tile(level, 0)).width, 16u);
    const auto tablesOfFrame = Model().Frames().begin()->second->JpegTables();
    EXPECT_EQ(ByteString(tablesOfFrame.Arr, tablesOfFrame.Arr + tablesOfFrame.Size), tables[0]);
}

TEST_F(TiffStoreTile, IsCutByThePixelsOfItsOwnDirectory)
{
    CTiffDirectory first = CTiffDirectory(16, 16).Description(Ome({OmeImage("1", {"TheC=\"0\"", "TheC=\"1\""})}));
    const CTiffDirectory second = CTiffDirectory(16, 16).Bits(16);
    Open(StoreOf(Stack(1).Size(16, 16).Channels(2), {first, second}));
    const CMN_RECT part = {2, 3, 4, 4};
    EXPECT_EQ(BodyOf(Tile(0, 0, L"1"), part), Cut(second.StripOrTile(0), 16, 2, part));
}

TEST_F(TiffStoreTile, WhoseDirectoryIsNotThereHasNoSizeOfAPart)
{
    CTiffDirectory only = CTiffDirectory(16, 16).Description(Ome({OmeImage("1", {"TheC=\"0\"", "TheC=\"1\""})}));
    Open(StoreOf(Stack(1).Size(16, 16).Channels(2), {only}));
    CMN_RECT part = {2, 3, 4, 4};
    UINT64 size = 0;
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0, L"1"), &part, nullptr, UINT64{0}, &size), AC_RESULT_FAILURE);
}

TEST_F(TiffStoreTile, WhoseDirectoryIsNotThereLeavesTheStoreOnTheOneBefore)
{
    const auto plane = [](int number) { return "TheC=\"" + std::to_string(number) + "\""; };
    CTiffDirectory raw = CTiffDirectory(16, 16).Description(Ome({OmeImage("1", {plane(0), plane(1), plane(2)})}));
    Open(StoreOf(Stack(1).Size(16, 16).Channels(3), {raw, CTiffDirectory(16, 16).Compression(CompressionJ2k)}));
    UINT64 size = 0;
    CMN_RECT whole = {};
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0, L"1"), &whole, nullptr, UINT64{0}, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(RectOf(Tile(0, 0, L"2")).width, 16u); // back on directory 0, which tells how large tiles are
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0, L"2"), &whole, nullptr, UINT64{0}, &size), AC_RESULT_FAILURE);
    EXPECT_EQ(ToldByArea(Area(Group(), 0, 0), L"ChannelInfo", {{L"channelId", L"2"}}).at("format").front(), "text RAW");
}

TEST_F(TiffStoreTile, ThatIsStoredShorterIsFilledWithZeros)
{
    const ByteString stored = {1, 2, 3, 4, 5};
    CTiffDirectory directory = CTiffDirectory(16, 16).Tiles(16, 16).Compression(CompressionJ2k).Data({stored});
    Open(StoreOf(Stack(1).Size(16, 16), {directory}));
    ByteString expected(256);
    std::copy(stored.begin(), stored.end(), expected.begin());
    const auto read = Read(Tile(0, 0), 300);
    EXPECT_EQ(read.Size, 256u);
    EXPECT_EQ(ByteString(read.Buffer.begin(), read.Buffer.begin() + 256), expected);
    EXPECT_EQ(read.Buffer[256], 0xCC) << "behind the tile nothing is written";
}

TEST_F(TiffStoreTile, ThatCannotBeReadIsAllZeros)
{
    CTiffDirectory directory = CTiffDirectory(16, 16).Tiles(16, 16);
    directory.Set(TIFFTAG_TILEOFFSETS, TiffType::Long, {0x7FFFFF00});
    Open(StoreOf(Stack(1).Size(16, 16), {directory}));
    const auto read = Read(Tile(0, 0), 256);
    EXPECT_EQ(read.Result, AC_RESULT_SUCCESS);
    EXPECT_EQ(read.Size, 256u);
    EXPECT_EQ(read.Buffer, ByteString(256, 0));
}

TEST_F(TiffStoreTile, IsCutToARectangle)
{
    const Stack stack = Stack(1).Size(32, 32).Tiles(16, 16).Raw(ComponentType::Uint16).InTiffStore();
    Open(stack);
    const CMN_RECT part = {3, 2, 5, 4};
    EXPECT_EQ(BodyOf(Tile(0, 3), part), Cut(stack.TileBytes(0, 1, 1), 16, 2, part));
}

TEST_F(TiffStoreTile, IsReadTwiceAlikeWhateverWasReadBetween)
{
    const Stack stack = Stack(1).Size(32, 32).Tiles(16, 16).Levels(2).Z(2).InTiffStore();
    Open(stack);
    const AC_HIMAGE tile = Tile(0, 1, L"0", {AtZ(1)});
    const ByteString first = BodyOf(tile);
    BodyOf(Tile(1, 0, L"0", {AtZ(0)}));
    LevelRect(Group(), 1);
    EXPECT_EQ(BodyOf(tile, {0, 0, 16, 8}), Cut(first, 16, 1, {0, 0, 16, 8}));
    EXPECT_EQ(BodyOf(tile), first);
}

// Strips.

TEST_F(TiffStoreTile, OfTheLastStripIsTheStripBeforeIt)
{
    const Stack stack = Stack(1).Size(8, 12).InTiffStore(4);
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
    EXPECT_EQ(BodyOf(Tile(0, 1)), stack.TileBytes(0, 0, 1));
    EXPECT_EQ(BodyOf(Tile(0, 2)), stack.TileBytes(0, 0, 1));
}

TEST_F(TiffStoreTile, OfTheOnlyStripIsThatStrip)
{
    const Stack stack = Stack(1).Size(8, 12).InTiffStore(Stack::OneStrip);
    Open(stack);
    EXPECT_EQ(NumOfAreas(Group(), 0), 1);
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
}

TEST_F(TiffStoreTile, OfALastStripOfFewerRowsHasTheSizeOfTheStripBeforeIt)
{
    Open(Stack(1).Size(8, 10).InTiffStore(4));
    EXPECT_EQ(BodyOf(Tile(0, 2)).size(), 8u * 4);
}

TEST_F(TiffStoreTile, OfAStripLeavesTheSizeAsTheHostGaveIt)
{
    const Stack stack = Stack(1).Size(8, 12).InTiffStore(4);
    Open(stack);
    const auto read = Read(Tile(0, 0), 1000);
    EXPECT_EQ(read.Result, AC_RESULT_SUCCESS);
    EXPECT_EQ(read.Size, 1000u);
    EXPECT_EQ(ByteString(read.Buffer.begin(), read.Buffer.begin() + 32), stack.TileBytes(0, 0, 0));
    EXPECT_EQ(ByteString(read.Buffer.begin() + 32, read.Buffer.end()), ByteString(968, 0xCC));
}

TEST_F(TiffStoreTile, OfAStripForATooSmallBufferTellsTheNeededSize)
{
    Open(Stack(1).Size(8, 12).InTiffStore(4));
    const auto read = Read(Tile(0, 0), 31);
    EXPECT_EQ(read.Result, AC_RESULT_SUCCESS);
    EXPECT_EQ(read.Size, 32u);
    EXPECT_EQ(read.Buffer, ByteString(31, 0xCC));
}

TEST_F(TiffStoreTile, OfTheLastStripIsItsOwnWhereOnlyAPartIsRead)
{
    const Stack stack = Stack(1).Size(8, 12).InTiffStore(4);
    Open(stack);
    const CMN_RECT part = {1, 1, 5, 2};
    EXPECT_EQ(BodyOf(Tile(0, 2), part), Cut(stack.TileBytes(0, 0, 2), 8, 1, part));
}

TEST_F(TiffStoreTile, OfLessThanAByteAPixelIsCutToo)
{
    Open(StoreOf(Stack(1).Size(256, 256), {CTiffDirectory(256, 256).Tiles(256, 256).Bits(1)}));
    EXPECT_EQ(ResultOfBody(Tile(0, 0), {0, 0, 2, 2}), AC_RESULT_SUCCESS);
}

TEST_F(TiffStoreTile, OfAnEmptyStripFails)
{
    CTiffDirectory directory(8, 4);
    directory.Compression(CompressionJ2k).Set(TIFFTAG_STRIPBYTECOUNTS, TiffType::Long, {0});
    directory.Set(TIFFTAG_STRIPOFFSETS, TiffType::Long, {0});
    EXPECT_EQ(ResultOfReading(StoreOf(Stack(1).Size(8, 4), {directory})), AC_RESULT_FAILURE);
}

// The size of tiles.

TEST_F(TiffStoreTile, OfAStripIsAsHighAsTheStripsShareOfThePicture)
{
    Open(StoreOf(Stack(1).Size(8, 9), {CTiffDirectory(8, 9).Strips(8)}));
    EXPECT_EQ(RectOf(Tile(0, 0)), (CMN_RECT{0, 0, 8, 5})) << "two strips share nine rows";
    EXPECT_EQ(ResultOfBody(Tile(0, 0), {0, 0, 2, 2}), AC_RESULT_FAILURE) << "the strip of 8 rows is larger than that";
    EXPECT_EQ(BodyOf(Tile(0, 0)).size(), 8u * 8) << "as a whole it is read";
}

TEST_F(TiffStoreTile, OfAStripIsAsWideAsThePicture)
{
    Open(Stack(1).Size(24, 9).InTiffStore(3));
    EXPECT_EQ(RectOf(Tile(0, 2)), (CMN_RECT{0, 6, 24, 3}));
}

TEST_F(TiffStoreTile, OfALevelHasTheSizeThatItsDirectoryTells)
{
    Open(StoreOf(Stack(1).Size(64, 64), {CTiffDirectory(64, 64).Tiles(32, 32), CTiffDirectory(32, 32).Tiles(16, 16)}));
    EXPECT_EQ(Model().DeepZoomTilePixelWidth(0), 32u);
    EXPECT_EQ(Model().DeepZoomTilePixelWidth(1), 16u);
    EXPECT_EQ(Model().DeepZoomTilePixelHeight(1), 16u);
}

} // namespace
