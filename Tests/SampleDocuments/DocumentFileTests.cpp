#include "SampleDocuments/DocumentFile.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <memory>
#include <tiffio.h>

using namespace SampleDocuments;

namespace
{

struct CTiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffFile = std::unique_ptr<TIFF, CTiffCloser>;

class TiffDirectories : public testing::Test
{
protected:
    /// Writes a document file of these directories and opens it the way any picture program does.
    TiffFile Write(std::vector<CTiffDirectory> directories)
    {
        CDocumentFile file;
        file.Root.Add(Text(1, "abc")).Add(Int8(2, 3));
        file.Directories = std::move(directories);
        WriteFile(_folder.Path() / "a.zel", file.ToBytes());
        return TiffFile(TIFFOpen(_folder.Name("a.zel").c_str(), "r"));
    }

    static ByteString Strip(TIFF* tiff, uint32_t index)
    {
        ByteString bytes(static_cast<size_t>(TIFFRawStripSize64(tiff, index)));
        TIFFReadRawStrip(tiff, index, bytes.data(), static_cast<tmsize_t>(bytes.size()));
        return bytes;
    }

    TestSupport::TemporaryFolder _folder;
};

TEST(DocumentOnDisk, HasItsTreeBehindTheTiffHeader)
{
    const ByteString bytes = CDocumentFile().ToBytes();
    EXPECT_EQ(bytes.size(), 8u + 24u);
    EXPECT_EQ(ByteString(bytes.begin(), bytes.begin() + 10), (ByteString{'I', 'I', 42, 0, 0, 0, 0, 0, 24, 0}));
}

TEST(DocumentOnDisk, PointsAtTheDirectoriesBehindTheTree)
{
    CDocumentFile file;
    file.Directories = {CTiffDirectory(2, 2), CTiffDirectory(3, 3)};
    const auto offsets = file.OffsetsOfDirectories();
    ASSERT_EQ(offsets.size(), 2u);
    EXPECT_EQ(offsets[0], 8u + 24u + 4u) << "behind the 4 pixels of the first";
    EXPECT_EQ(file.ToBytes()[4], offsets[0]);
}

TEST(DocumentOnDisk, HoldsWhatItsHeaderIsMadeToSay)
{
    CDocumentFile file;
    file.ByteOrder = "MM";
    file.FixedNum = 43;
    file.OffsetOfFirstIfd = 0x01020304;
    file.Tail = {9, 9};
    const ByteString bytes = file.ToBytes();
    EXPECT_EQ(ByteString(bytes.begin(), bytes.begin() + 8), (ByteString{'M', 'M', 43, 0, 4, 3, 2, 1}));
    EXPECT_EQ(bytes.size(), 8u + 24u + 2u);
    file.ByteOrder = "I";
    EXPECT_THROW(file.ToBytes(), CSampleError);
}

TEST(DocumentOnDisk, KnowsTheNodesOfItsTree)
{
    CDocumentFile file;
    file.Root.Add(Int8(1, 1));
    EXPECT_EQ(file.PlacementOf(file.Root.Child(1)).Field, 32u);
    EXPECT_THROW(file.PlacementOf(Int8(1, 1)), CSampleError);
}

TEST_F(TiffDirectories, AreReadByTiffPrograms)
{
    const ByteString first = {1, 2, 3, 4, 5, 6}, second = {7, 8, 9};
    const auto tiff = Write({CTiffDirectory(3, 3).Strips(2).Data({first, second}),
                             CTiffDirectory(20, 16).Tiles(16, 16).Samples(3).Bits(16).Description("two tiles")});
    ASSERT_TRUE(tiff);
    EXPECT_EQ(TIFFNumberOfDirectories(tiff.get()), 2);
    EXPECT_EQ(Strip(tiff.get(), 0), first);
    EXPECT_EQ(Strip(tiff.get(), 1), second);

    ASSERT_TRUE(TIFFSetDirectory(tiff.get(), 1));
    EXPECT_TRUE(TIFFIsTiled(tiff.get()));
    EXPECT_EQ(TIFFNumberOfTiles(tiff.get()), 2u);
    EXPECT_EQ(TIFFTileSize(tiff.get()), 16 * 16 * 6);
    char* description = nullptr;
    ASSERT_TRUE(TIFFGetField(tiff.get(), TIFFTAG_IMAGEDESCRIPTION, &description));
    EXPECT_STREQ(description, "two tiles");
}

TEST_F(TiffDirectories, HoldTheirTablesAndAnyOtherEntry)
{
    const auto tiff = Write({CTiffDirectory(8, 8)
                                 .Compression(COMPRESSION_JPEG)
                                 .JpegTables({1, 2, 3, 4, 5})
                                 .Data({{1}})
                                 .Set(TIFFTAG_ORIENTATION, TiffType::Short, {4})
                                 .SampleFormat(2)});
    ASSERT_TRUE(tiff);
    uint32_t count = 0;
    uint8_t* tables = nullptr;
    ASSERT_TRUE(TIFFGetField(tiff.get(), TIFFTAG_JPEGTABLES, &count, &tables));
    EXPECT_EQ(ByteString(tables, tables + count), (ByteString{1, 2, 3, 4, 5}));
    uint16_t number = 0;
    ASSERT_TRUE(TIFFGetField(tiff.get(), TIFFTAG_ORIENTATION, &number));
    EXPECT_EQ(number, 4);
    ASSERT_TRUE(TIFFGetField(tiff.get(), TIFFTAG_SAMPLEFORMAT, &number));
    EXPECT_EQ(number, 2);
}

TEST(DamagedDirectory, HoldsWhatItIsMadeToSay)
{
    ByteString bytes;
    std::vector<uint32_t> offsets;
    const auto directory = CTiffDirectory(1, 1).EntryCount(500).Next(0x0A0B0C0D).Drop(TIFFTAG_IMAGEWIDTH);
    AppendDirectories(bytes, {directory}, &offsets);
    ASSERT_EQ(offsets.size(), 1u);
    EXPECT_EQ(bytes[offsets[0]], 500 & 0xFF);
    EXPECT_EQ(bytes[offsets[0] + 1], 500 >> 8);
    EXPECT_EQ(bytes[offsets[0] + 2], TIFFTAG_IMAGELENGTH & 0xFF) << "the first entry left";
    EXPECT_EQ(ByteString(bytes.end() - 4, bytes.end()), (ByteString{0x0D, 0x0C, 0x0B, 0x0A}));
}

} // namespace
