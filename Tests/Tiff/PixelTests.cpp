// The pixels of what is handed out, decoded by the libraries that everybody decodes with.

#include "SampleDocuments/MirroredPlane.h"
#include "SampleDocuments/Slide.h"
#include "Tests/Tiff/TiffSlide.h"

using namespace TiffOfTest;

namespace
{

class PixelsInTiff : public TiffSlide
{
protected:
    static CSlideOptions Options(StackStorage::E storage, uint32_t compression, uint32_t rowsPerStrip)
    {
        CSlideOptions options;
        options.Storage = storage;
        options.Compression = compression;
        options.RowsPerStrip = rowsPerStrip;
        options.NumOfLevels = 1;
        options.Quality = compression == StoreCompression::J2k ? 100 : 90;
        return options;
    }
    void OpenPicture(const CPicture& picture, const CSlideOptions& options)
    {
        Open(SlideFromPicture(picture, options));
    }
    static CPicture Raw(const ByteString& bytes, const CPicture& like)
    {
        return FromPackedRows(like.Width(), like.Height(), like.Samples(), like.Bits(), bytes);
    }
};

struct CSamples
{
    uint16_t Bits;
    bool IsGrey;
};
void PrintTo(const CSamples& samples, std::ostream* stream)
{
    *stream << samples.Bits << " bits of " << (samples.IsGrey ? 1 : 3);
}

class RawPixelsInTiff : public PixelsInTiff, public testing::WithParamInterface<CSamples>
{
protected:
    CSlideOptions Options(StackStorage::E storage, uint32_t rowsPerStrip)
    {
        CSlideOptions options = PixelsInTiff::Options(storage, StoreCompression::Raw, rowsPerStrip);
        options.Bits = GetParam().Bits;
        options.IsGrey = GetParam().IsGrey;
        return options;
    }
};

TEST_P(RawPixelsInTiff, OfADirectoryOfTheDocumentAreThoseOfThePicture)
{
    const CSlideOptions options = Options(StackStorage::InDocument, Stack::OneStrip);
    const CPicture picture = DrawPicture(100, 60);
    OpenPicture(picture, options);
    // libtiff serves a large raw strip in several smaller ones.
    ByteString rows;
    for (int strip = 0; strip < NumOfAreas(Group(), 0); ++strip)
    {
        const ByteString some = BodyOf(Tile(0, static_cast<UINT64>(strip)));
        rows.insert(rows.end(), some.begin(), some.end());
    }
    const CPicture frame = FrameOf(picture, options, {});
    EXPECT_EQ(Raw(rows, frame), frame);
}

TEST_P(RawPixelsInTiff, OfATiledStoreAreThoseOfThePicture)
{
    CSlideOptions options = Options(StackStorage::TiffStore, 0);
    options.TileWidth = options.TileHeight = 32;
    const CPicture picture = DrawPicture(64, 64);
    OpenPicture(picture, options);
    const CPicture frame = FrameOf(picture, options, {});
    const CMirroredPlane plane(frame);
    for (uint32_t number = 0; number < 4; ++number)
    {
        const CPicture tile = plane.Window(number % 2 * 32, number / 2 * 32, 32, 32, 32, 32, 0);
        EXPECT_EQ(Raw(BodyOf(Tile(0, number)), tile), tile) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, RawPixelsInTiff,
                         testing::Values(CSamples{8, false}, CSamples{8, true}, CSamples{16, false},
                                         CSamples{16, true}));

TEST_F(PixelsInTiff, OfAJpegStripWithTablesApartAreThoseThatLibTiffDecodes)
{
    for (const bool isGrey : {false, true})
        for (const uint32_t height : {8u, 61u, 300u}) // heights beyond 255 take both bytes
        {
            CSlideOptions options = Options(StackStorage::InDocument, StoreCompression::Jpeg, Stack::OneStrip);
            options.IsGrey = isGrey;
            OpenPicture(DrawPicture(100, height), options);
            const CPicture mine = DecodeJpeg(BodyOf(Tile(0, 0)));
            CPlainTiff tiff(File(), 1);
            EXPECT_EQ(PackedRows(mine), tiff.Decoded()) << "height " << height << (isGrey ? ", grey" : ", RGB");
        }
}

TEST_F(PixelsInTiff, OfAJpegStripWithTablesApartBeginWithTheTablesAndEndWithAMarker)
{
    OpenPicture(DrawPicture(100, 60), Options(StackStorage::InDocument, StoreCompression::Jpeg, Stack::OneStrip));
    const ByteString body = BodyOf(Tile(0, 0));
    const auto tables = Model().Frames().begin()->second->JpegTables();
    ASSERT_GT(body.size(), tables.Size);
    EXPECT_EQ(ByteString(body.begin(), body.begin() + tables.Size - 2),
              ByteString(tables.Arr, tables.Arr + tables.Size - 2));
    EXPECT_EQ(ByteString(body.begin() + tables.Size - 2, body.begin() + tables.Size + 7),
              (ByteString{0xFF, 0xEE, 0x00, 0x0E, 'A', 'd', 'o', 'b', 'e'}));
    EXPECT_EQ(ByteString(body.end() - 2, body.end()), (ByteString{0xFF, 0xD9}));
}

TEST_F(PixelsInTiff, InJpeg2000AreThoseOfThePicture)
{
    CSlideOptions options = Options(StackStorage::InDocument, StoreCompression::J2k, Stack::OneStrip);
    const CPicture picture = DrawPicture(100, 60);
    OpenPicture(picture, options);
    EXPECT_EQ(DecodeJ2k(BodyOf(Tile(0, 0))), picture);
}

TEST_F(PixelsInTiff, InJpeg2000OfAStoreAreThoseOfThePicture)
{
    CSlideOptions options = Options(StackStorage::TiffStore, StoreCompression::J2k, 0);
    options.TileWidth = options.TileHeight = 64;
    options.Bits = 16;
    const CPicture picture = DrawPicture(64, 64);
    OpenPicture(picture, options);
    EXPECT_EQ(DecodeJ2k(BodyOf(Tile(0, 0))), picture.WithBits(16));
}

TEST_F(PixelsInTiff, OfAStoreAreTheBytesThatLibTiffReads)
{
    CSlideOptions options = Options(StackStorage::TiffStore, StoreCompression::Jpeg, 0);
    options.TileWidth = options.TileHeight = 64;
    options.NumOfLevels = 2;
    options.NumOfZ = 2;
    for (const bool isBigTiff : {false, true})
    {
        options.IsBigTiff = isBigTiff;
        OpenPicture(DrawPicture(128, 128), options);
        for (uint32_t z = 0; z < 2; ++z)
        {
            CPlainTiff tiff(TiffStoreFile(), z);
            for (uint32_t number = 0; number < 4; ++number)
            {
                ByteString raw = tiff.RawTile(number);
                raw.resize(static_cast<size_t>(TIFFTileSize(tiff.Get()))); // what is behind the bytes is zero
                EXPECT_EQ(BodyOf(Tile(0, number, L"0", {AtZ(z)})), raw) << "Z " << z << " tile " << number;
            }
        }
    }
}

TEST_F(PixelsInTiff, OfAStripedStoreAreTheBytesThatLibTiffReads)
{
    OpenPicture(DrawPicture(100, 60), Options(StackStorage::TiffStore, StoreCompression::Jpeg, Stack::OneStrip));
    EXPECT_EQ(BodyOf(Tile(0, 0)), CPlainTiff(TiffStoreFile(), 0).RawStrip(0));
}

} // namespace
