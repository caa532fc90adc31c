// Reading the bytes of a tile out of a binary store.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

Stack Small()
{
    return Stack(1).Size(16, 8).Tiles(8, 8);
}

/// A row of a tile of 8 x 8 bytes.
ByteString RowOf(const ByteString& tile, int row)
{
    return {tile.begin() + row * 8, tile.begin() + row * 8 + 8};
}

struct RecordRow : Row
{
    std::function<void(CStoredTile&)> Change;
};

class RecordOfATile : public ZelSlide, public testing::WithParamInterface<RecordRow>
{
protected:
    void SetUp() override
    {
        Document document;
        document.With(Small());
        GetParam().Change(document.Store(1).Tiles.back());
        Open(std::move(document));
    }
};

TEST_P(RecordOfATile, OfBytesThatAreNotThereFailsAndHarmsNoOther)
{
    const AC_HIMAGE image = Tile(0, 1);
    UINT64 size = 77;
    CMN_RECT whole = {};
    ByteString buffer(1000);
    // A size that no buffer of this test has is only told.
    const AC_Result result = Call(_AC_GetImageBody, image, &whole, buffer.data(), UINT64{buffer.size()}, &size);
    if (result == AC_RESULT_SUCCESS)
        EXPECT_GT(size, buffer.size());
    else
        EXPECT_EQ(result, AC_RESULT_FAILURE);
    EXPECT_EQ(BodyOf(Tile(0, 0)), Small().TileBytes(0, 0, 0));
}

TEST_P(RecordOfATile, OfBytesThatAreNotThereFailsForAPartToo)
{
    const AC_HIMAGE image = Tile(0, 1);
    CMN_RECT lastRow = {0, 7, 8, 1};
    ByteString buffer(8);
    UINT64 size = 0;
    const AC_Result result = Call(_AC_GetImageBody, image, &lastRow, buffer.data(), UINT64{8}, &size);
    // A part is found by the tile's size and not by its record's, so that a wrong size alone does no harm.
    EXPECT_TRUE(result == AC_RESULT_FAILURE || buffer == RowOf(Small().TileBytes(0, 1, 0), 7));
}

INSTANTIATE_TEST_SUITE_P(
    Records, RecordOfATile,
    testing::Values(RecordRow{{"BehindTheEnd"}, [](CStoredTile& tile) { tile.Offset = 1u << 30; }},
                    RecordRow{{"FarBehindTheEnd"}, [](CStoredTile& tile) { tile.Offset = ~uint64_t{0}; }},
                    RecordRow{{"NearlyAllOf64Bits"}, [](CStoredTile& tile) { tile.Offset = ~uint64_t{0} - 63; }},
                    RecordRow{{"SignBit"}, [](CStoredTile& tile) { tile.Offset = uint64_t{1} << 63; }},
                    RecordRow{{"SizeBeyondTheEnd"}, [](CStoredTile& tile) { tile.Size = 900; }},
                    RecordRow{{"SizeOfAllBits"}, [](CStoredTile& tile) { tile.Size = 0xFFFFFFFF; }}),
    NameOfRow());

class BytesOfATile : public ZelSlide
{
};

TEST_F(BytesOfATile, MayBeNoneWhichCannotBeRead)
{
    Document document;
    document.With(Small());
    document.Store(1).Tiles.back().Size = 0;
    Open(std::move(document));
    CMN_RECT whole = {};
    BYTE byte = 0xAB;
    UINT64 size = 77;
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 1), &whole, nullptr, UINT64{0}, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 1), &whole, &byte, UINT64{1}, &size), AC_RESULT_FAILURE);
    EXPECT_EQ(byte, 0xAB);
}

TEST_F(BytesOfATile, HaveNoSizeForAHostWhenTheyCannotBeRead)
{
    Document document;
    document.With(Small());
    document.Store(1).Tiles.back().Offset = 1u << 30;
    Open(std::move(document));
    CMN_RECT whole = {};
    ByteString buffer(64);
    UINT64 size = 77;
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 1), &whole, buffer.data(), UINT64{64}, &size), AC_RESULT_FAILURE);
    EXPECT_EQ(size, 0u);
}

TEST_F(BytesOfATile, FailWithoutTheReasonOfWhatFailedBefore)
{
    Document document;
    document.With(Small());
    document.Store(1).Tiles.back().Offset = 1u << 30;
    Open(std::move(document));
    const AC_HIMAGE image = Tile(0, 1);
    CMN_RECT whole = {};
    ByteString buffer(64);
    UINT64 size = 0;
    errno = ENOENT;
    EXPECT_EQ(_AC_GetImageBody(image, &whole, buffer.data(), UINT64{64}, &size), AC_RESULT_FAILURE);
}

TEST_F(BytesOfATile, MayBeThoseOfAnHeader)
{
    Document document;
    document.With(Small());
    CStoredTile& tile = document.Store(1).Tiles.back();
    tile.Offset = 60;
    tile.Size = 10;
    const ByteString store = document.Store(1).ToBytes();
    Open(std::move(document));
    EXPECT_EQ(BodyOf(Tile(0, 1)), ByteString(store.begin() + 60, store.begin() + 70));
}

TEST_F(BytesOfATile, MayEndAtTheEndOfTheFile)
{
    Document document;
    document.With(Small().ChunkListBeforeBodies());
    Open(std::move(document));
    EXPECT_EQ(BodyOf(Tile(0, 1)), Small().TileBytes(0, 1, 0));
}

TEST_F(BytesOfATile, MayBeSharedByRecords)
{
    Document document;
    document.With(Small());
    document.Store(1).Tiles.back().Offset = 64 + 172;
    Open(std::move(document));
    EXPECT_EQ(BodyOf(Tile(0, 1)), Small().TileBytes(0, 0, 0));
}

TEST_F(BytesOfATile, AreReadFromPlacesBeyond32Bits)
{
    Open(Stack(1).Size(8 * 9, 8).Tiles(8, 8).Jpeg().Contents(Holes(1u << 29)));
    const AC_HIMAGE last = Tile(0, 8);
    UINT64 size = 0;
    CMN_RECT whole = {};
    EXPECT_EQ(Call(_AC_GetImageBody, last, &whole, nullptr, UINT64{0}, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(size, 1u << 29);
    EXPECT_GT(Store().KorTiles()[8].BlockOffset, 0xFFFFFFFFu);
}

TEST_F(BytesOfATile, ComeFromTheRightPlaceBeyond32Bits)
{
    Document document;
    document.With(Small());
    Open(std::move(document));
    // The same store with its second tile moved behind 4 GB of nothing.
    constexpr uint64_t FarAway = uint64_t{5} << 30;
    const std::filesystem::path file = StoreFile(1);
    Close();
    ByteString store = ReadFile(file);
    const ByteString body = Small().TileBytes(0, 1, 0);
    const size_t record = store.size() - 16;
    Patch(store, record, FarAway);
    WriteFile(file, store);
    std::filesystem::resize_file(file, FarAway);
    std::FILE* stream = std::fopen(file.c_str(), "ab");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(std::fwrite(body.data(), 1, body.size(), stream), body.size());
    std::fclose(stream);
    ASSERT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_SUCCESS);
    EXPECT_EQ(BodyOf(Tile(0, 1)), body);
}

TEST_F(BytesOfATile, AreReadRowByRowForAPartWithoutTheRest)
{
    const Stack stack = Stack(1).Size(512, 256).Tiles(256, 256);
    Open(stack);
    const AC_HIMAGE last = Tile(0, 1);
    std::filesystem::resize_file(StoreFile(1), 64 + 172 + 256 * 256 + 256); // the second tile keeps its first row
    const ByteString body = stack.TileBytes(0, 1, 0);
    EXPECT_EQ(BodyOf(last, {0, 0, 256, 1}), ByteString(body.begin(), body.begin() + 256));
    EXPECT_EQ(ResultOfBody(last, {0, 200, 8, 1}), AC_RESULT_FAILURE);
}

TEST_F(BytesOfATile, GiveNoPartOfACompressedTileBelowTheInterfaceEither)
{
    auto& image = BuildImage(Small().Jpeg());
    CIA::CDeepZoomTile& tile = *image.Frames().begin()->second->DeepZoomTiles().Find({0, 0, 0});
    CIA::CByteArray array;
    EXPECT_THAT(MessagesOf(
                    [&] {
                        EXPECT_FALSE(tile.PixelBuf(array, {1, 1, 1, 1}));
                    }),
                Contains("Error: partial tile cannot be read for non-RAW formats!"));
    EXPECT_EQ(errno, EINVAL);
    EXPECT_FAILED_ASSERTION(tile.PixelBuf(array, {1, 0, 0, 0}));
}

TEST_F(BytesOfATile, GiveNothingBeyondTheTileBelowTheInterfaceEither)
{
    auto& image = BuildImage(Small());
    CIA::CDeepZoomTile& tile = *image.Frames().begin()->second->DeepZoomTiles().Find({0, 0, 0});
    CIA::CByteArray array;
    EXPECT_FAILED_ASSERTION(tile.PixelBuf(array, {1, 0, 8, 8}));
    EXPECT_FAILED_ASSERTION(tile.PixelBuf(array, {0, 8, 1, 1}));
}

} // namespace
