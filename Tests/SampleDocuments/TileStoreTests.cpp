#include "SampleDocuments/TileStore.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace SampleDocuments;

namespace
{

template <typename T>
T At(const ByteString& bytes, size_t offset)
{
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

constexpr size_t FirstBody = 64 + 172;

CTileStore StoreOfTwoTiles()
{
    CTileStore store;
    store.Add(-1, 2, {3}, 0, {10, 11, 12});
    store.Add(0, 2, {3}, 1, {20, 21});
    return store;
}

TEST(StoreOnDisk, BeginsWithTheVolumeHeader)
{
    const ByteString bytes = StoreOfTwoTiles().ToBytes();
    EXPECT_EQ(At<uint32_t>(bytes, 4), 64u) << "own size";
    EXPECT_EQ(At<uint32_t>(bytes, 12), 4u) << "elements of a record";
    EXPECT_EQ(At<uint64_t>(bytes, 16), 64u) << "additional header";
    EXPECT_EQ(At<uint32_t>(bytes, 24), 172u) << "its size";
    EXPECT_EQ(At<int64_t>(bytes, 32), int64_t{FirstBody + 5}) << "chunk list";
    EXPECT_EQ(At<uint32_t>(bytes, 40), 2u) << "its length";
}

TEST(StoreOnDisk, HoldsTheAdditionalHeader)
{
    CTileStore store = StoreOfTwoTiles();
    store.Additional.ComponentType = ComponentType::Uint16;
    store.Additional.ComponentCount = 3;
    store.Additional.ColorSpace = StoreColorSpace::Rgb;
    store.Additional.CompressionFormat = StoreCompression::Png;
    store.Additional.CompressionQuality = 77;
    store.Additional.TileX = 512;
    store.Additional.TileY = 128;
    store.Additional.PixInfoHints[16] = 5;
    store.Additional.BackgroundFillColor[9] = 6;
    store.Additional.ComponentOrder = ComponentOrder::Unknown;
    store.Additional.PyramidUsage = 7;
    store.Additional.ProfileID.fill(8);
    const ByteString bytes = store.ToBytes();
    const std::vector<uint32_t> expected = {1, 4, 3, 4, 8, 77, 512, 128, 1};
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(At<uint32_t>(bytes, 64 + 4 + 4 * i), expected[i]) << "number " << i;
    EXPECT_EQ(At<uint32_t>(bytes, 64 + 104), 5u);
    EXPECT_EQ(At<uint32_t>(bytes, 64 + 144), 6u);
    EXPECT_EQ(At<int32_t>(bytes, 64 + 148), -1);
    EXPECT_EQ(At<uint32_t>(bytes, 64 + 152), 7u);
    EXPECT_EQ(bytes[64 + 156], 8);
    EXPECT_EQ(bytes[64 + 171], 8);
    EXPECT_EQ(bytes[64 + 172], 10) << "the first body";
}

TEST(StoreOnDisk, HoldsARecordForEachTile)
{
    const ByteString bytes = StoreOfTwoTiles().ToBytes();
    const size_t list = FirstBody + 5;
    EXPECT_EQ(At<uint32_t>(bytes, list), 4u);
    EXPECT_EQ(At<int32_t>(bytes, list + 4), -1) << "column";
    EXPECT_EQ(At<int32_t>(bytes, list + 8), 2) << "row";
    EXPECT_EQ(At<int32_t>(bytes, list + 12), 3) << "the one dimension";
    EXPECT_EQ(At<int32_t>(bytes, list + 16), 0) << "level";
    EXPECT_EQ(At<uint64_t>(bytes, list + 20), FirstBody);
    EXPECT_EQ(At<uint32_t>(bytes, list + 28), 3u);
    EXPECT_EQ(At<uint64_t>(bytes, list + 36 + 20), FirstBody + 3) << "the second record's offset";
    EXPECT_EQ(bytes.size(), list + 2 * 36);
}

TEST(StoreOnDisk, CanHaveItsChunkListBeforeTheBodies)
{
    CTileStore store = StoreOfTwoTiles();
    store.ChunkListBeforeBodies = true;
    const ByteString bytes = store.ToBytes();
    EXPECT_EQ(At<int64_t>(bytes, 32), int64_t{FirstBody});
    EXPECT_EQ(At<uint64_t>(bytes, FirstBody + 20), FirstBody + 2 * 36);
    EXPECT_EQ(bytes[FirstBody + 2 * 36], 10);
}

TEST(DamagedStore, HoldsWhatItsHeaderIsMadeToSay)
{
    CTileStore store = StoreOfTwoTiles();
    store.Header.Magic = {'?', '?', '?', '?'};
    store.Header.HeaderSize = 1;
    store.Header.VolumeVersion = 2;
    store.Header.DimensionCount = 3;
    store.Header.AdditionalHeaderOffset = 4;
    store.Header.AdditionalHeaderSize = 5;
    store.Header.Unused1 = 6;
    store.Header.FilePositionOfUsedChunks = -7;
    store.Header.NumberOfUsedChunks = 8;
    store.Header.Unused2 = 9;
    store.Header.FilePositionOfFreeChunks = 10;
    store.Header.NumberOfFreeChunks = 11;
    store.Header.Unused3 = 12;
    const ByteString bytes = store.ToBytes();
    EXPECT_EQ(At<uint32_t>(bytes, 0), 0x3F3F3F3Fu);
    EXPECT_EQ(At<uint32_t>(bytes, 4), 1u);
    EXPECT_EQ(At<uint32_t>(bytes, 8), 2u);
    EXPECT_EQ(At<uint32_t>(bytes, 12), 3u);
    EXPECT_EQ(At<uint64_t>(bytes, 16), 4u);
    EXPECT_EQ(At<uint32_t>(bytes, 24), 5u);
    EXPECT_EQ(At<uint32_t>(bytes, 28), 6u);
    EXPECT_EQ(At<int64_t>(bytes, 32), -7);
    EXPECT_EQ(At<uint32_t>(bytes, 40), 8u);
    EXPECT_EQ(At<uint32_t>(bytes, 44), 9u);
    EXPECT_EQ(At<uint64_t>(bytes, 48), 10u);
    EXPECT_EQ(At<uint32_t>(bytes, 56), 11u);
    EXPECT_EQ(At<uint32_t>(bytes, 60), 12u);
}

TEST(DamagedStore, HoldsWhatARecordIsMadeToSay)
{
    CTileStore store = StoreOfTwoTiles();
    CStoredTile& tile = store.Tile({-1, 2, 3, 0});
    tile.Offset = 1ull << 40;
    tile.Size = 1u << 31;
    tile.ElementCount = 9;
    tile.Spare = 5;
    store.Tail = {1, 2, 3};
    const ByteString bytes = store.ToBytes();
    const size_t list = FirstBody + 5;
    EXPECT_EQ(At<uint32_t>(bytes, list), 9u);
    EXPECT_EQ(At<uint64_t>(bytes, list + 20), 1ull << 40);
    EXPECT_EQ(At<uint32_t>(bytes, list + 28), 1u << 31);
    EXPECT_EQ(At<uint32_t>(bytes, list + 32), 5u);
    EXPECT_EQ(bytes.size(), list + 2 * 36 + 3);
    EXPECT_THROW(store.Tile({9, 9, 9, 9}), CSampleError);
}

class StreamedStore : public testing::Test
{
protected:
    TestSupport::TemporaryFolder _folder;
    std::filesystem::path _path = _folder.Path() / "some" / "frame_t.kor";
    const std::vector<int32_t> _first = {-1, 2, 3, 0}, _second = {0, 2, 3, 1};
    const ByteString _body = {10, 11, 12};
};

TEST_F(StreamedStore, IsTheStoreInMemoryByteForByte)
{
    CTileStoreWriter writer(_path, {}, {});
    writer.Add(_first, _body);
    writer.Add(_second, ByteString{20, 21});
    writer.Finish();
    EXPECT_EQ(ReadFile(_path), StoreOfTwoTiles().ToBytes());
}

TEST_F(StreamedStore, SharesABodyAmongRecords)
{
    CTileStoreWriter writer(_path, {}, {});
    EXPECT_FALSE(writer.AddShared(_first, 7)) << "there is none yet";
    writer.AddKeyed(_first, 7, _body);
    EXPECT_TRUE(writer.AddShared(_second, 7));
    writer.Finish();
    const ByteString bytes = ReadFile(_path);
    EXPECT_EQ(At<uint64_t>(bytes, FirstBody + 3 + 20), FirstBody);
    EXPECT_EQ(At<uint64_t>(bytes, FirstBody + 3 + 36 + 20), FirstBody);
}

TEST_F(StreamedStore, CopiesABodyWithinTheFile)
{
    CTileStoreWriter writer(_path, {}, {});
    writer.AddKeyed(_first, 7, _body);
    writer.Add(_second, ByteString{20, 21});
    EXPECT_TRUE(writer.AddCopy(_second, 7));
    writer.Finish();
    const ByteString bytes = ReadFile(_path);
    EXPECT_EQ(ByteString(bytes.begin() + FirstBody, bytes.begin() + FirstBody + 8),
              (ByteString{10, 11, 12, 20, 21, 10, 11, 12}));
}

TEST_F(StreamedStore, HoldsMillionsOfBytesOfZerosOnNoDisk)
{
    CTileStoreWriter writer(_path, {}, {});
    for (int32_t i = 0; i < 1000; ++i)
        writer.AddHole(std::vector{i, 0, 0, 0}, 1 << 20);
    writer.Finish();
    struct stat status = {};
    ASSERT_EQ(stat(_path.c_str(), &status), 0);
    EXPECT_EQ(status.st_size, 236 + (1000ll << 20) + 1000 * 36);
    EXPECT_LT(status.st_blocks * 512, 1 << 20);
}

TEST_F(StreamedStore, LeavesNothingBehindUnlessItIsFinished)
{
    {
        CTileStoreWriter writer(_path, {}, {});
        writer.Add(_first, _body);
    }
    EXPECT_FALSE(std::filesystem::exists(_path));
}

TEST_F(StreamedStore, RefusesRecordsOfDifferentLength)
{
    CTileStoreWriter writer(_path, {}, {});
    writer.Add(_first, _body);
    EXPECT_THROW(writer.Add(std::vector{1, 2, 3}, _body), CSampleError);
}

TEST_F(StreamedStore, TellsWhereItCannotBeMade)
{
    WriteFile(_folder.Path() / "some", _body);
    EXPECT_THROW(CTileStoreWriter(_path, {}, {}), CSampleError);
}

} // namespace
