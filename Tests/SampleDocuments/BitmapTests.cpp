#include "SampleDocuments/Document.h"

#include "Tests/SampleDocuments/Bytes.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <tiffio.h>

using namespace SampleDocuments;
using namespace BytesOfTest;

namespace
{

/// Two rows of red, green, blue: the first black, white, red; the second pure green, pure blue, mid grey.
CPicture SixColours()
{
    return FromPackedRows(3, 2, 3, 8, Hex("000000 FFFFFF FF0000  00FF00 0000FF 808080"));
}

ByteString Part(const ByteString& bytes, size_t from, size_t size)
{
    return {bytes.begin() + static_cast<ptrdiff_t>(from), bytes.begin() + static_cast<ptrdiff_t>(from + size)};
}

TEST(Bitmaps, Of24BitsHoldTheColoursThemselves)
{
    EXPECT_EQ(BitmapOf(SixColours()),
              Hex("28000000 03000000 02000000 0100 1800 00000000 18000000 130B0000 130B0000 00000000 00000000"
                  "00FF00 FF0000 808080 000000" // the lower row first, blue first, filled up to 12 bytes
                  "000000 FFFFFF 0000FF 000000"));
}

TEST(Bitmaps, Of8BitsHoldNumbersOfAPaletteOf256)
{
    const ByteString bitmap = BitmapOf(SixColours(), {.Bits = 8});
    EXPECT_EQ(Part(bitmap, 14, 2), Hex("0800"));
    EXPECT_EQ(Part(bitmap, 32, 4), Hex("00000000")) << "all colours of the bits";
    EXPECT_EQ(Part(bitmap, 40 + 4, 4), Hex("00002400")) << "red rises first, in eight steps";
    EXPECT_EQ(Part(bitmap, 40 + 4 * 255, 4), Hex("FFFFFF00"));
    EXPECT_EQ(Part(bitmap, 40 + 4 * 256, 3), Hex("38 C0 A4")) << "7 * 8; 3 * 64; 4 + 4 * 8 + 2 * 64";
    EXPECT_EQ(bitmap.size(), 40u + 4 * 256 + 8);
}

TEST(Bitmaps, Of4BitsHoldTwoPixelsInAByte)
{
    const ByteString bitmap = BitmapOf(SixColours(), {.Bits = 4});
    EXPECT_EQ(Part(bitmap, 14, 2), Hex("0400"));
    EXPECT_EQ(Part(bitmap, 40 + 4, 12), Hex("0000FF00 00550000 0055FF00")) << "red, a third of green, both";
    EXPECT_EQ(Part(bitmap, 40 + 4 * 16 + 4, 4), Hex("0F 10 0000")) << "black and white, then red and padding";
    EXPECT_EQ(bitmap.size(), 40u + 4 * 16 + 8);
}

TEST(Bitmaps, Of1BitAreBlackAndWhite)
{
    const ByteString bitmap = BitmapOf(SixColours(), {.Bits = 1});
    EXPECT_EQ(Part(bitmap, 14, 2), Hex("0100"));
    EXPECT_EQ(Part(bitmap, 40, 8), Hex("00000000 FFFFFF00"));
    EXPECT_EQ(Part(bitmap, 48 + 4, 4), Hex("40000000")) << "the second pixel of the upper row is white";
    EXPECT_EQ(bitmap.size(), 40u + 8 + 8);
}

TEST(Bitmaps, OfGreyPicturesHaveGreyPalettes)
{
    const CPicture grey = FromPackedRows(2, 1, 1, 8, Hex("00 34"));
    const ByteString bitmap = BitmapOf(grey, {.Bits = 4});
    EXPECT_EQ(Part(bitmap, 40 + 4 * 3, 4), Hex("33333300"));
    EXPECT_EQ(Part(bitmap, 40 + 4 * 16, 4), Hex("03000000"));
}

TEST(Bitmaps, CanTellHowManyColoursTheyHave)
{
    const ByteString bitmap = BitmapOf(SixColours(), {.Bits = 8, .NumOfColours = 10});
    EXPECT_EQ(Part(bitmap, 32, 4), Hex("0A000000"));
    EXPECT_EQ(bitmap.size(), 40u + 4 * 10 + 8);
    EXPECT_EQ(BitmapOf(SixColours(), {.NumOfColours = 2}).size(), 40u + 4 * 2 + 24);
}

TEST(Bitmaps, CanTellAWrongHeader)
{
    EXPECT_EQ(Part(BitmapOf(SixColours(), {.SizeOfHeader = 12}), 0, 4), Hex("0C000000"));
}

TEST(Bitmaps, HaveNoOtherBits)
{
    EXPECT_THROW(BitmapOf(SixColours(), {.Bits = 2}), CSampleError);
    EXPECT_THROW(BitmapOf(SixColours(), {.Bits = 32}), CSampleError);
}

TEST(ThumbnailOfADocument, LiesInOneLayoutOrTheOther)
{
    Document newer = Document().Thumbnail(SixColours(), {.Bits = 4});
    EXPECT_EQ(newer.Volume({2000, 2004, 2109, 38, 268435458}).Value(), BitmapOf(SixColours(), {.Bits = 4}));
    Document older = Document().OldThumbnail(SixColours());
    EXPECT_EQ(older.Volume({2, 38, 268435458}).Value(), BitmapOf(SixColours()));
}

/// The pixels of the first directory as a TIFF library decodes them.
class FirstDirectory : public testing::Test
{
protected:
    CPicture Decoded(const CPicture& picture, FirstDirectoryKind::E kind)
    {
        const std::string path = _folder.Name("slide.zel");
        Document().FirstDirectory(picture, kind).WriteTo(path);
        TIFF* tiff = TIFFOpen(path.c_str(), "r");
        if (!tiff)
            return {};
        std::vector<uint32_t> raster(size_t{picture.Width()} * picture.Height());
        const int isRead =
            TIFFReadRGBAImageOriented(tiff, picture.Width(), picture.Height(), raster.data(), ORIENTATION_TOPLEFT, 1);
        TIFFClose(tiff);
        EXPECT_EQ(isRead, 1);
        ByteString rows;
        for (const uint32_t pixel : raster)
            for (const uint32_t sample : {TIFFGetR(pixel), TIFFGetG(pixel), TIFFGetB(pixel)})
                rows.push_back(static_cast<uint8_t>(sample));
        return FromPackedRows(picture.Width(), picture.Height(), 3, 8, rows);
    }

    TestSupport::TemporaryFolder _folder;
};

/// The largest difference of two samples.
int Difference(const CPicture& a, const CPicture& b)
{
    const ByteString x = PackedRows(a), y = PackedRows(b);
    int largest = 0;
    for (size_t i = 0; i < x.size(); ++i)
        largest = std::max(largest, std::abs(x[i] - y[i]));
    return largest;
}

TEST_F(FirstDirectory, HoldsAPictureUncompressed)
{
    const CPicture picture = DrawPicture(31, 20);
    EXPECT_EQ(Decoded(picture, FirstDirectoryKind::Raw), picture);
    const CPicture grey = picture.WithSamples(1);
    EXPECT_EQ(Decoded(grey, FirstDirectoryKind::Raw), grey.WithSamples(3));
}

TEST_F(FirstDirectory, HoldsAPictureAsJpeg)
{
    CPicture picture(40, 24, 3, 8);
    for (uint32_t y = 0; y < 24; ++y)
        for (uint32_t x = 0; x < 40; ++x)
        {
            picture.At(x, y, 0) = static_cast<uint16_t>(6 * x);
            picture.At(x, y, 1) = static_cast<uint16_t>(10 * y);
            picture.At(x, y, 2) = 200;
        }
    EXPECT_LE(Difference(Decoded(picture, FirstDirectoryKind::Jpeg), picture), 16);
    const CPicture grey = picture.WithSamples(1);
    EXPECT_LE(Difference(Decoded(grey, FirstDirectoryKind::Jpeg), grey.WithSamples(3)), 16);
}

} // namespace
