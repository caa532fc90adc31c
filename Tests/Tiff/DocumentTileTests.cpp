// Stacks whose frames lie in TIFF directories of the document itself.

#include "Tests/Tiff/TiffSlide.h"

#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/ZelImgDoc.h"

using namespace TiffOfTest;

namespace
{

class DocumentDirectory : public TiffSlide
{
};

// Strips.

TEST_F(DocumentDirectory, HasAnAreaForEachStrip)
{
    const Stack stack = Stack(1).Size(8, 12).InDocument(4);
    Open(stack);
    EXPECT_EQ(NumOfLevels(Group()), 1);
    EXPECT_EQ(NumOfAreas(Group(), 0), 3);
    for (int32_t strip = 0; strip < 3; ++strip)
        EXPECT_EQ(BodyOf(Tile(0, static_cast<UINT64>(strip))), stack.TileBytes(0, 0, strip)) << strip;
}

TEST_F(DocumentDirectory, OfOneStripHasOneColumnAndOneRow)
{
    Open(Stack(1).Size(8, 12).InDocument(Stack::OneStrip));
    CIA::CDeepZoomPyramidLevel& level = *Model().DeepZoomPyramidLevels().at(0);
    EXPECT_EQ(level.NumOfCols(), 1u);
    EXPECT_EQ(level.NumOfRows(), 1u);
}

TEST_F(DocumentDirectory, KeysStripsByTheirNumber)
{
    Open(Stack(1).Size(8, 12).InDocument(4));
    EXPECT_NE(ModelTile(0, 2), nullptr);
    EXPECT_EQ(ModelTile(0, 3), nullptr);
    EXPECT_EQ(ModelTile(0, 8), nullptr);
    EXPECT_EQ(ModelTile(1, 0), nullptr);
    EXPECT_EQ(ModelTile(0, 0, 1), nullptr);
}

TEST_F(DocumentDirectory, HasStripsAsHighAsItSaysAndThePictureIs)
{
    Open(Stack(1).Size(8, 9).InDocument(8));
    EXPECT_EQ(RectOf(Tile(0, 0)), (CMN_RECT{0, 0, 8, 8}));
    Open(DocumentOf(Stack(1).Size(8, 9).InDocument(Stack::OneStrip),
                    [](auto& d) { d.Set(TIFFTAG_ROWSPERSTRIP, TiffType::Long, {1000}); }));
    EXPECT_EQ(RectOf(Tile(0, 0)), (CMN_RECT{0, 0, 8, 9}));
}

TEST_F(DocumentDirectory, ForATooSmallBufferTellsTheSizeAndReadsNothing)
{
    Open(Stack(1).Size(8, 4).InDocument(4));
    const ModelRead read = ReadInto(*ModelTile(0, 0), 31);
    EXPECT_TRUE(read.IsRead);
    EXPECT_EQ(read.Size, 32u);
    EXPECT_EQ(read.Bytes, ByteString(31, 0xCC));
}

TEST_F(DocumentDirectory, StoresTheSizeOfAStripThatWasRead)
{
    Open(Stack(1).Size(8, 4).InDocument(4));
    EXPECT_EQ(ReadInto(*ModelTile(0, 0), 100).Size, 32u);
}

TEST_F(DocumentDirectory, IsCutToARectangle)
{
    const Stack stack = Stack(1).Size(8, 12).Raw(ComponentType::Uint8, 3).InDocument(4);
    Open(stack);
    const CMN_RECT part = {2, 1, 5, 3};
    for (int32_t strip = 0; strip < 3; ++strip)
        EXPECT_EQ(BodyOf(Tile(0, static_cast<UINT64>(strip)), part), Cut(stack.TileBytes(0, 0, strip), 8, 3, part));
}

TEST_F(DocumentDirectory, WhoseLastStripHasFewerRowsCannotBeCutBehindThem)
{
    const Stack stack = Stack(1).Size(8, 10).InDocument(4);
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 2), {0, 0, 8, 2}), stack.TileBytes(0, 0, 2));
    EXPECT_EQ(ResultOfBody(Tile(0, 2), {0, 0, 8, 3}), AC_RESULT_FAILURE);
}

TEST_F(DocumentDirectory, ThatClaimsALargerStripThanTheFileTellsItAndFailsToReadIt)
{
    Open(DocumentOf(Stack(1).Size(8, 4).InDocument(4), [](auto& directory)
                    { directory.Compression(CompressionJ2k).Set(TIFFTAG_STRIPBYTECOUNTS, TiffType::Long, {100000}); }));
    UINT64 size = 0;
    CMN_RECT whole{};
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0), &whole, nullptr, UINT64{0}, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(size, 100000u);
    EXPECT_EQ(ResultOfBody(Tile(0, 0)), AC_RESULT_FAILURE);
}

TEST_F(DocumentDirectory, WithoutTheHeightOfItsStripsHasOneStrip)
{
    const Stack stack = Stack(1).Size(8, 4).InDocument(4);
    Open(DocumentOf(stack, [](auto& directory) { directory.Drop(TIFFTAG_ROWSPERSTRIP); }));
    EXPECT_EQ(RectOf(Tile(0, 0)), (CMN_RECT{0, 0, 8, 4}));
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
}

// Tiles.

TEST_F(DocumentDirectory, OfOneTileIsReadAsATile)
{
    const Stack stack = Stack(1).Size(30, 10).Tiles(32, 16).InDocument();
    Open(stack);
    EXPECT_EQ(NumOfAreas(Group(), 0), 1);
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
    EXPECT_EQ(BodyOf(Tile(0, 0), {4, 2, 7, 5}), Cut(stack.TileBytes(0, 0, 0), 32, 1, {4, 2, 7, 5}));
}

TEST_F(DocumentDirectory, KeysTilesByThePositionOfTheirFirstPixel)
{
    Open(Stack(1).Size(40, 20).Tiles(16, 16).InDocument());
    EXPECT_NE(ModelTile(16, 0), nullptr);
    EXPECT_NE(ModelTile(32, 16), nullptr);
    EXPECT_EQ(ModelTile(1, 0), nullptr);
    EXPECT_EQ(ModelTile(48, 0), nullptr);
    EXPECT_EQ(ModelTile(0, 32), nullptr);
    EXPECT_EQ(ModelTile(-16, 0), nullptr);
}

TEST_F(DocumentDirectory, CountsTilesInColumnsAndRows)
{
    Open(Stack(1).Size(40, 20).Tiles(16, 16).InDocument());
    EXPECT_EQ(NumOfAreas(Group(), 0), 3 * 2);
}

TEST_F(DocumentDirectory, TakesThePositionOfATileForItsNumber)
{
    const Stack stack = Stack(1).Size(17 * 16, 16).Tiles(16, 16).InDocument();
    Open(stack);
    EXPECT_EQ(ReadInto(*ModelTile(16, 0), 256).Bytes, stack.TileBytes(0, 16, 0));
}

TEST_F(DocumentDirectory, GivesZerosForAPositionThatIsNoNumberOfATile)
{
    Open(Stack(1).Size(32, 16).Tiles(16, 16).InDocument());
    const ModelRead read = ReadInto(*ModelTile(16, 0), 256);
    EXPECT_TRUE(read.IsRead);
    EXPECT_EQ(read.Size, 256u);
    EXPECT_EQ(read.Bytes, ByteString(256, 0));
}

TEST_F(DocumentDirectory, WhoseTilesHaveAnotherSizeThanThoseOfTheFirstFrameFails)
{
    Document document;
    document.With(Stack(1).Size(32, 32).Tiles(32, 32).Z(2).InDocument());
    document.File().Directories.at(2) = CTiffDirectory(32, 32).Tiles(16, 16);
    EXPECT_EQ(ResultOfReading(std::move(document)), AC_RESULT_FAILURE);
}

// Frames.

TEST_F(DocumentDirectory, BelongsToTheFrameThatNamesIt)
{
    const Stack stack = Stack(1).Size(8, 4).Z(2).T(2).InDocument(4);
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(1), AtT(0)})), stack.TileBytes(0, 0, 0, {.Z = 1}));
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(0), AtT(1)})), stack.TileBytes(0, 0, 0, {.T = 1}));
}

TEST_F(DocumentDirectory, IsFollowedByTheNextStripAndThenByTheNextDirectory)
{
    Open(Stack(1).Size(8, 8).Z(2).InDocument(4));
    const CIA::CFrameIdx second(1, 0, 0, 0);
    EXPECT_EQ(ModelTile(0, 0)->NextTileOnDisk(), ModelTile(0, 1));
    EXPECT_EQ(ModelTile(0, 1)->NextTileOnDisk(), ModelTile(0, 0, 0, second));
    EXPECT_EQ(ModelTile(0, 0, 0, second)->NextTileOnDisk(), ModelTile(0, 1, 0, second));
    EXPECT_EQ(ModelTile(0, 1, 0, second)->NextTileOnDisk(), nullptr);
}

TEST_F(DocumentDirectory, IsFollowedByTheNextHigherNumberThatAFrameHas)
{
    Document document;
    document.With(Stack(1).Size(8, 4).Z(3).InDocument(4));
    document.Frame(1, 0).Child(2016).SecondTag(3);
    document.Frame(1, 2).Child(2016).SecondTag(1);
    Open(std::move(document));
    const CIA::CFrameIdx second(1, 0, 0, 0), third(2, 0, 0, 0);
    EXPECT_EQ(ModelTile(0, 0, 0, third)->NextTileOnDisk(), ModelTile(0, 0, 0, second));
    EXPECT_EQ(ModelTile(0, 0, 0, second)->NextTileOnDisk(), ModelTile(0, 0));
    EXPECT_EQ(ModelTile(0, 0)->NextTileOnDisk(), nullptr);
}

TEST_F(DocumentDirectory, ThatTwoFramesNameIsFollowedToTheLastOfThemInTheNestOfTimeAndChannel)
{
    Document document;
    document.With(Stack(1).Size(8, 4).Channels(2).T(2).InDocument(4));
    document.Frame(1, 1).Child(2016).SecondTag(2); // channel 1 at time 0
    document.Frame(1, 2).Child(2016).SecondTag(2); // channel 0 at time 1
    Open(std::move(document));
    EXPECT_EQ(ModelTile(0, 0)->NextTileOnDisk(), ModelTile(0, 0, 0, {0, 0, 0, 1}));
}

TEST_F(DocumentDirectory, IsNotSharedAmongChannels)
{
    const Stack stack = Stack(1).Size(8, 4).Z(2).Channels(2).FramesSharedByChannels().InDocument(4);
    EXPECT_THAT(MessagesOfOpening(stack), Contains("Warning : KOR File is  missing..."));
    EXPECT_EQ(Doc(), nullptr);
}

TEST_F(DocumentDirectory, IsLoggedByItsNumberWhenItIsTurnedTo)
{
    Open(Stack(1).Size(8, 4).Z(2).InDocument(4));
    EXPECT_THAT(MessagesOf([&] { Model().TiffFilePtrSetToIfdOf1stFrame(); }), ElementsAre("idxOfIfd=1"));
}

TEST_F(DocumentDirectory, IsAskedAndLoggedOnceForAllFramesThatShareIt)
{
    const auto numOfLines = [this](bool isShared)
    {
        Document document;
        document.With(Stack(1).Size(8, 4).Z(3).InDocument(4));
        for (size_t frame = 0; isShared && frame < 3; ++frame)
            document.Frame(1, frame).Child(2016).SecondTag(1);
        Open(std::move(document));
        const auto messages = MessagesOf([this] { Model().Channels().at(0)->CompressionType(); });
        return std::ranges::count_if(messages, [](const auto& line) { return line.starts_with("idxOfIfd="); });
    };
    EXPECT_EQ(numOfLines(false), numOfLines(true) + 2);
}

TEST_F(DocumentDirectory, ThatTheFirstFrameDoesNotNameMakesTheDocumentCorrupt)
{
    Document document;
    document.With(Stack(1).Size(8, 4).InDocument(4));
    document.Frame(1).Drop(2016);
    document.WriteTo(File());
    errno = 0;
    Zel::CZelImgDoc doc(FileName().c_str(), true);
    Zel::CZelMultiDimImage image(*doc.ImgColl().MultiDimImgs()->front(), doc);
    EXPECT_EQ(TestSupport::AssertionOf([&] { image.TiffFilePtrSetToIfdOf1stFrame(); }), "TIFF IFD tag is missing!!!");
    EXPECT_EQ(errno, ENOEXEC);
}

TEST_F(DocumentDirectory, ThatALaterFrameDoesNotNameFails)
{
    Document document;
    document.With(Stack(1).Size(8, 4).Z(2).InDocument(4));
    document.Frame(1, 1).Drop(2016);
    EXPECT_EQ(ResultOfReading(std::move(document)), AC_RESULT_FAILURE);
}

TEST_F(DocumentDirectory, OfANumberThatTheChainDoesNotHaveFails)
{
    for (const uint32_t number : {2u, 65535u, 65536u, 0xFFFFFFFEu})
    {
        Document document;
        document.With(Stack(1).Size(8, 4).InDocument(4));
        document.Frame(1).Child(2016).SecondTag(number);
        EXPECT_EQ(ResultOfReading(std::move(document)), AC_RESULT_FAILURE) << number;
    }
}

TEST_F(DocumentDirectory, WithPixelsInPlanesFails)
{
    EXPECT_EQ(ResultOfReading(DocumentOf(Stack(1).Size(8, 4).InDocument(4),
                                         [](auto& d) { d.PlanarConfig(PLANARCONFIG_SEPARATE); })),
              AC_RESULT_FAILURE);
}

// JPEG tables that stand apart.

const ByteString SomeTables = {0xFF, 0xD8, 0xFF, 0xDB, 0x00, 0x03, 0x00, 0xFF, 0xD9};

TEST_F(DocumentDirectory, HandsOutItsJpegTables)
{
    Open(Stack(1).Size(8, 4).InDocument(4).TiffCompression(CompressionJpeg7).JpegTables(SomeTables));
    CIA::CFrame& frame = *Model().Frames().begin()->second;
    const auto tables = frame.JpegTables();
    EXPECT_EQ(ByteString(tables.Arr, tables.Arr + tables.Size), SomeTables);
    EXPECT_EQ(frame.JpegTables().Arr, tables.Arr) << "the frame keeps them";
}

TEST_F(DocumentDirectory, OfAStoreHandsOutItsJpegTables)
{
    Open(Stack(1).Size(8, 4).InTiffStore(4).TiffCompression(CompressionJpeg7).JpegTables(SomeTables));
    const auto tables = Model().Frames().begin()->second->JpegTables();
    EXPECT_EQ(ByteString(tables.Arr, tables.Arr + tables.Size), SomeTables);
}

TEST_F(DocumentDirectory, OfAnotherCompressionHasNoJpegTables)
{
    Open(Stack(1).Size(8, 4).InDocument(4));
    CIA::CFrame& frame = *Model().Frames().begin()->second;
    EXPECT_THAT(MessagesOf(
                    [&]
                    {
                        EXPECT_EQ(frame.JpegTables().Size, 0u);
                        EXPECT_EQ(errno, EBADFD);
                    }),
                Contains("Call to 'JpegTables' is only valid in case the frame compression type is Jpeg7!!!"));
}

TEST_F(DocumentDirectory, WithTablesOfFourBytesOrLessFails)
{
    for (size_t size = 1; size <= 5; ++size)
    {
        const ByteString tables(SomeTables.begin(), SomeTables.begin() + static_cast<std::ptrdiff_t>(size));
        Open(Stack(1).Size(8, 4).InDocument(4).TiffCompression(CompressionJpeg7).JpegTables(tables));
        CIA::CFrame& frame = *Model().Frames().begin()->second;
        if (size < 5)
        {
            EXPECT_FAILED_ASSERTION(frame.JpegTables()) << size;
        }
        else
        {
            EXPECT_EQ(frame.JpegTables().Size, 5u);
        }
    }
}

} // namespace
