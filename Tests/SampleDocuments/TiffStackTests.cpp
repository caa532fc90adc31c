#include "SampleDocuments/MirroredPlane.h"
#include "SampleDocuments/Slide.h"

#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <tiffio.h>

using namespace SampleDocuments;
namespace fs = std::filesystem;

namespace
{

struct CTiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

/// Looks at what was written with the library that everybody reads TIFF with.
class StackInTiff : public testing::Test
{
protected:
    void Write(Document document)
    {
        _document = std::move(document);
        _document.WriteTo(_path);
    }

    void OpenStore() { _tiff.reset(TIFFOpen(_document.StorePath(_path, 1).c_str(), "r")); }
    void OpenDocument() { _tiff.reset(TIFFOpen(_path.c_str(), "r")); }

    int NumOfDirectories() { return TIFFNumberOfDirectories(_tiff.get()); }

    ByteString RawTile(uint16_t directory, uint32_t number)
    {
        TIFFSetDirectory(_tiff.get(), directory);
        const bool isTiled = TIFFIsTiled(_tiff.get());
        ByteString bytes(TIFFGetStrileByteCount(_tiff.get(), number));
        const auto size = static_cast<tmsize_t>(bytes.size());
        EXPECT_EQ((isTiled ? TIFFReadRawTile : TIFFReadRawStrip)(_tiff.get(), number, bytes.data(), size), size);
        return bytes;
    }

    /// The whole picture of a striped directory, decoded by the library.
    CPicture Decoded(uint16_t directory)
    {
        TIFFSetDirectory(_tiff.get(), directory);
        uint32_t width = 0, height = 0;
        uint16_t bits = 0, samples = 0;
        TIFFGetField(_tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
        TIFFGetField(_tiff.get(), TIFFTAG_IMAGELENGTH, &height);
        TIFFGetField(_tiff.get(), TIFFTAG_BITSPERSAMPLE, &bits);
        TIFFGetField(_tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
        ByteString rows;
        for (uint32_t strip = 0; strip < TIFFNumberOfStrips(_tiff.get()); ++strip)
        {
            ByteString part(static_cast<size_t>(TIFFStripSize(_tiff.get())));
            const tmsize_t size = TIFFReadEncodedStrip(_tiff.get(), strip, part.data(), -1);
            rows.insert(rows.end(), part.begin(), part.begin() + std::max<tmsize_t>(size, 0));
        }
        return FromPackedRows(width, height, samples, bits, rows);
    }

    static int LargestDifference(const CPicture& a, const CPicture& b)
    {
        int difference = 0;
        for (uint32_t y = 0; y < a.Height(); ++y)
            for (uint32_t x = 0; x < a.Width(); ++x)
                for (uint16_t s = 0; s < a.Samples(); ++s)
                    difference = std::max(difference, std::abs(a.At(x, y, s) - b.At(x, y, s)));
        return difference;
    }

    TestSupport::TemporaryFolder _folder;
    const fs::path _path = _folder.Path() / "slide.zel";
    Document _document;
    std::unique_ptr<TIFF, CTiffCloser> _tiff;
};

TEST_F(StackInTiff, HasADirectoryForEachLevelAndFrame)
{
    const Stack stack = Stack(1).Size(100, 60).Tiles(64, 64).Levels(2).Z(3).Raw(ComponentType::Uint16).InTiffStore();
    Write(Document().With(stack));
    OpenStore();
    ASSERT_TRUE(_tiff);
    EXPECT_EQ(NumOfDirectories(), 6);
    EXPECT_EQ(RawTile(2, 1), stack.TileBytes(0, 1, 0, {.Z = 2}));
    EXPECT_EQ(RawTile(4, 0), stack.TileBytes(1, 0, 0, {.Z = 1}));
}

TEST_F(StackInTiff, TellsItsPlanesInXml)
{
    Write(Document().With(Stack(1).Size(2, 4).Levels(2).T(2).Raw(ComponentType::Uint8, 3).InTiffStore(4)));
    OpenStore();
    char* xml = nullptr;
    ASSERT_TRUE(TIFFGetField(_tiff.get(), TIFFTAG_IMAGEDESCRIPTION, &xml));
    const std::string first = "<OME:Plane TheZ=\"0\" TheT=\"0\" TheC=\"0\" TheL=\"0\"/>",
                      second = "<OME:Plane TheZ=\"0\" TheT=\"1\" TheC=\"0\" TheL=\"0\"/>";
    const std::string planes = first + first + first + second + second + second + "</OME:Pixels></OME:Image>";
    EXPECT_EQ(xml,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><OME xmlns:OME=\"urn:ome\">"
              "<OME:Image ID=\"Image:0\"><OME:Pixels SizeX=\"2\" SizeY=\"4\"><OME:Channel SamplesPerPixel=\"3\"/>" +
                  planes +
                  "<OME:Image ID=\"Image:1\"><OME:Pixels SizeX=\"1\" SizeY=\"2\"><OME:Channel SamplesPerPixel=\"3\"/>" +
                  planes + "</OME>");
    TIFFSetDirectory(_tiff.get(), 1);
    EXPECT_FALSE(TIFFGetField(_tiff.get(), TIFFTAG_IMAGEDESCRIPTION, &xml)) << "only in the first directory";
}

TEST_F(StackInTiff, CanLackTheXml)
{
    Write(Document().With(Stack(1).InTiffStore().WithoutXml()));
    OpenStore();
    char* xml = nullptr;
    EXPECT_FALSE(TIFFGetField(_tiff.get(), TIFFTAG_IMAGEDESCRIPTION, &xml));
}

TEST_F(StackInTiff, CanBeABigTiff)
{
    const Stack stack = Stack(1).Size(40, 40).InTiffStore(16).BigTiff();
    Write(Document().With(stack));
    EXPECT_EQ(ReadFile(_document.StorePath(_path, 1))[2], 43);
    OpenStore();
    EXPECT_EQ(RawTile(0, 2), stack.TileBytes(0, 0, 2));
}

TEST_F(StackInTiff, HoldsTilesOfAnyCompressionAsTheyAre)
{
    const Stack plain = Stack(1).InTiffStore().TiffCompression(COMPRESSION_JPEG).JpegTables({1, 2, 3, 4, 5});
    for (const Stack& stack : {plain, Stack(plain).BigTiff()})
    {
        Write(Document().With(stack));
        OpenStore();
        EXPECT_EQ(RawTile(0, 0), Labels(1).Bytes({}));
        uint32_t count = 0;
        uint8_t* tables = nullptr;
        ASSERT_TRUE(TIFFGetField(_tiff.get(), TIFFTAG_JPEGTABLES, &count, &tables));
        EXPECT_EQ(ByteString(tables, tables + count), (ByteString{1, 2, 3, 4, 5}));
    }
}

TEST_F(StackInTiff, CanBeDamagedByItsDirectories)
{
    Document document = Document().With(Stack(1).InTiffStore());
    document.TiffStore(1)[0].Set(TIFFTAG_IMAGEWIDTH, TiffType::Long, {0});
    Write(document);
    const ByteString first = ReadFile(_document.StorePath(_path, 1));
    document.TiffStore(1).clear();
    Write(document);
    EXPECT_EQ(ReadFile(_document.StorePath(_path, 1)), (ByteString{'I', 'I', '*', 0, 0, 0, 0, 0}));
    EXPECT_GT(first.size(), 8u);
}

TEST_F(StackInTiff, IsNotLeftBehindWhenTheLibraryRefusesIt)
{
    const Stack stack = Stack(1).Tiles(100, 100).InTiffStore().BigTiff();
    EXPECT_THROW(Write(Document().With(stack)), CSampleError) << "tiles of a size that TIFF does not know";
    EXPECT_FALSE(fs::exists(_document.StorePath(_path, 1)));
    EXPECT_FALSE(fs::exists(_path));
}

CSlideOptions InTiffStore()
{
    CSlideOptions options;
    options.Storage = StackStorage::TiffStore;
    options.RowsPerStrip = 64;
    options.Quality = 95;
    return options;
}

CSlideOptions InDocument()
{
    CSlideOptions options = InTiffStore();
    options.Storage = StackStorage::InDocument;
    options.RowsPerStrip = Stack::OneStrip;
    return options;
}

TEST_F(StackInTiff, HoldsAPictureInJpegWithTablesThatStandApart)
{
    const CPicture picture = DrawPicture(200, 150);
    Write(SlideFromPicture(picture, InTiffStore()));
    OpenStore();
    EXPECT_LE(LargestDifference(Decoded(0), picture), 40);
    uint32_t count = 0;
    uint8_t* tables = nullptr;
    EXPECT_TRUE(TIFFGetField(_tiff.get(), TIFFTAG_JPEGTABLES, &count, &tables));
    EXPECT_GT(count, 4u);
    const ByteString strip = RawTile(0, 0);
    EXPECT_THROW(DecodeJpeg(strip), CSampleError) << "a strip alone is no picture";
}

TEST_F(StackInTiff, HoldsTheLevelsOfAPicture)
{
    const CPicture picture = DrawPicture(300, 200);
    CSlideOptions options = InTiffStore();
    options.Compression = StoreCompression::Raw;
    options.NumOfLevels = 3;
    Write(SlideFromPicture(picture, options));
    OpenStore();
    EXPECT_EQ(NumOfDirectories(), 3);
    EXPECT_EQ(Decoded(0), picture);
    EXPECT_EQ(Decoded(2), CMirroredPlane(picture).Halved().Halved().Window(0, 0, 75, 50, 75, 50, 0));
}

TEST_F(StackInTiff, HoldsTilesOfAPictureInJpeg2000)
{
    const CPicture picture = DrawPicture(100, 100);
    CSlideOptions options = InTiffStore();
    options.Compression = StoreCompression::J2k;
    options.Quality = 100;
    options.Bits = 16;
    options.RowsPerStrip = 0;
    options.TileWidth = options.TileHeight = 64;
    Write(SlideFromPicture(picture, options));
    OpenStore();
    uint16_t compression = 0;
    EXPECT_TRUE(TIFFGetField(_tiff.get(), TIFFTAG_COMPRESSION, &compression));
    EXPECT_EQ(compression, 34712);
    EXPECT_EQ(DecodeJ2k(RawTile(0, 0)), picture.WithBits(16).Cut(64, 64));
}

TEST_F(StackInTiff, LiesInTheDocumentBehindTheOverview)
{
    const CPicture picture = DrawPicture(100, 80);
    CSlideOptions options = InDocument();
    options.NumOfZ = 2;
    Write(SlideFromPicture(picture, options));
    OpenDocument();
    ASSERT_TRUE(_tiff);
    EXPECT_EQ(NumOfDirectories(), 3);
    EXPECT_LE(LargestDifference(Decoded(1), FrameOf(picture, options, {.Z = 0})), 40);
    EXPECT_LE(LargestDifference(Decoded(2), FrameOf(picture, options, {.Z = 1})), 40);
}

TEST_F(StackInTiff, LiesInTheDocumentInOneTile)
{
    const CPicture picture = DrawPicture(64, 48);
    CSlideOptions options = InDocument();
    options.RowsPerStrip = 0;
    options.TileWidth = 64;
    options.TileHeight = 48;
    options.Compression = StoreCompression::Raw;
    Write(SlideFromPicture(picture, options));
    OpenDocument();
    EXPECT_EQ(RawTile(1, 0), PackedRows(picture));
}

TEST_F(StackInTiff, IsFoundBesideStacksThatAreWrittenByHand)
{
    const CPicture picture = DrawPicture(32, 32);
    CSlideOptions options = InDocument();
    options.Compression = StoreCompression::Raw;
    const Stack slide = SlideFromPicture(picture, options).StackOf(1);
    const Stack plain = Stack(2).Size(8, 8).Raw(ComponentType::Uint8).InDocument(8);
    Write(Document().With(slide).With(plain));
    EXPECT_EQ(_document.Frame(2).Child(2016).SecondTag(), 1u);
    EXPECT_EQ(_document.Frame(1).Child(2016).SecondTag(), 2u);
    OpenDocument();
    EXPECT_EQ(NumOfDirectories(), 3);
    EXPECT_EQ(RawTile(1, 0), plain.TileBytes(0, 0, 0));
    EXPECT_EQ(Decoded(2), picture);
}

TEST_F(StackInTiff, RefusesWhatReadersOfTheDocumentCannotRead)
{
    const auto refuses = [](CSlideOptions options, auto change)
    {
        change(options);
        EXPECT_THROW(SlideFromPicture(DrawPicture(300, 300), options), CSampleError);
    };
    refuses(InDocument(), [](CSlideOptions& options) { options.NumOfLevels = 2; });
    refuses(InDocument(), [](CSlideOptions& options) { options.RowsPerStrip = 0; });
    refuses(InDocument(), [](CSlideOptions& options) { options.RowsPerStrip = 64; });
    refuses(InDocument(),
            [](CSlideOptions& options)
            {
                options.RowsPerStrip = 0;
                options.Compression = StoreCompression::Raw;
            });
    refuses(InTiffStore(), [](CSlideOptions& options) { options.Compression = StoreCompression::Png; });
    refuses(InTiffStore(),
            [](CSlideOptions& options)
            {
                options.HasXml = false;
                options.NumOfZ = 2;
            });
    refuses(InTiffStore(),
            [](CSlideOptions& options)
            {
                options.RowsPerStrip = 0;
                options.TileWidth = 100;
            });
}

} // namespace
