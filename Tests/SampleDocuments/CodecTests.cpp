#include "SampleDocuments/Codecs.h"

#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <tiffio.h>

using namespace SampleDocuments;

namespace
{

/// The largest difference between the samples of two pictures of one shape.
int Distance(const CPicture& a, const CPicture& b)
{
    EXPECT_EQ(a.Width(), b.Width());
    EXPECT_EQ(a.Height(), b.Height());
    EXPECT_EQ(a.Samples(), b.Samples());
    int distance = 0;
    for (uint32_t y = 0; y < a.Height(); ++y)
        for (size_t i = 0; i < a.Row(y).size(); ++i)
            distance = std::max(distance, std::abs(a.Row(y)[i] - b.Row(y)[i]));
    return distance;
}

/// A slope without noise, which lossy encoders keep nearly as it is.
CPicture Slope(uint16_t samples, uint16_t bits)
{
    CPicture picture(70, 50, samples, bits);
    for (uint32_t y = 0; y < 50; ++y)
        for (uint32_t x = 0; x < 70; ++x)
            for (uint16_t s = 0; s < samples; ++s)
                picture.At(x, y, s) = static_cast<uint16_t>((x * 2 + y + 20u * s) * (bits == 16 ? 257 : 1));
    return picture;
}

TEST(Encoders, KeepPixelsInPng)
{
    for (const CPicture& picture : {Slope(1, 8), Slope(3, 8), Slope(1, 16), Slope(3, 16)})
        EXPECT_EQ(Decode(EncodePng(picture)), picture);
}

TEST(Encoders, KeepPixelsInLosslessJpeg2000)
{
    for (const CPicture& picture : {Slope(1, 8), Slope(3, 8), Slope(1, 16), Slope(3, 16)})
        EXPECT_EQ(Decode(EncodeJ2k(picture, 100)), picture);
}

TEST(Encoders, KeepPixelsNearlyInLossyFormats)
{
    for (const CPicture& picture : {Slope(1, 8), Slope(3, 8)})
    {
        EXPECT_LE(Distance(Decode(EncodeJpeg(picture, 95)), picture), 6);
        EXPECT_LE(Distance(Decode(EncodeJ2k(picture, 85)), picture), 12);
    }
}

TEST(Encoders, TakePicturesOfOnePixel)
{
    for (const auto compression : {StoreCompression::Jpeg, StoreCompression::J2k, StoreCompression::Png})
    {
        const CPicture decoded = Decode(Encode(CPicture(1, 1, 3, 8), {.Compression = compression}));
        EXPECT_EQ(decoded.Width(), 1u);
    }
}

TEST(Encoders, LayBmpRowsFromTheBottomAndBlueFirst)
{
    CPicture picture(1, 2, 3, 8);
    picture.At(0, 0, 0) = 1;
    picture.At(0, 1, 2) = 9;
    const ByteString bytes = EncodeBmp(picture);
    ASSERT_EQ(bytes.size(), 54u + 8u);
    EXPECT_EQ(bytes[0], 'B');
    EXPECT_EQ(bytes[2], bytes.size());
    EXPECT_EQ(bytes[10], 54);
    EXPECT_EQ(bytes[28], 24);
    EXPECT_EQ(ByteString(bytes.begin() + 54, bytes.end()), (ByteString{9, 0, 0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(EncodeBmp(CPicture(5, 1, 1, 8)).size(), 54u + 1024u + 8u) << "grey has a palette";
}

TEST(Encoders, LayRawPixelsInTheOrderAskedFor)
{
    CPicture picture(1, 1, 3, 16);
    picture.At(0, 0, 0) = 0x1122;
    picture.At(0, 0, 2) = 0x3344;
    EXPECT_EQ(Encode(picture, {}), (ByteString{0x22, 0x11, 0, 0, 0x44, 0x33}));
    EXPECT_EQ(Encode(picture, {.IsBgr = true}), (ByteString{0x44, 0x33, 0, 0, 0x22, 0x11}));
}

TEST(Encoders, RefuseMoreBitsThanTheirFormatHolds)
{
    EXPECT_THROW(EncodeJpeg(Slope(1, 16), 85), CSampleError);
    EXPECT_THROW(EncodeBmp(Slope(1, 16)), CSampleError);
}

TEST(Decoders, RefuseWhatIsNoPictureOrCutOff)
{
    EXPECT_THROW(Decode(BytesOf("hello")), CSampleError);
    EXPECT_THROW(Decode({}), CSampleError);
    for (ByteString bytes : {EncodePng(Slope(3, 8)), EncodeJ2k(Slope(3, 8), 100)})
    {
        bytes.resize(bytes.size() / 4);
        EXPECT_THROW(Decode(bytes), CSampleError);
    }
    ByteString jpeg = EncodeJpeg(Slope(3, 8), 85);
    jpeg.resize(30);
    EXPECT_THROW(Decode(jpeg), CSampleError);
}

TEST(Pictures, AreLoadedFromFiles)
{
    TestSupport::TemporaryFolder folder;
    WriteFile(folder.Path() / "a.png", EncodePng(Slope(3, 8)));
    EXPECT_EQ(LoadPicture(folder.Path() / "a.png"), Slope(3, 8));
    EXPECT_THROW(LoadPicture(folder.Path() / "none.png"), CSampleError);
    WriteFile(folder.Path() / "a.tif", BytesOf("II*"));
    EXPECT_THROW(LoadPicture(folder.Path() / "a.tif"), CSampleError);
}

class PictureInTiff : public testing::TestWithParam<std::pair<uint16_t, uint16_t>>
{
};

TEST_P(PictureInTiff, IsLoaded)
{
    const auto [samples, bits] = GetParam();
    const CPicture picture = Slope(samples, bits);
    TestSupport::TemporaryFolder folder;
    TIFF* tiff = TIFFOpen(folder.Name("a.tif").c_str(), "w");
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.Width());
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.Height());
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, samples);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, samples == 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 20);
    ByteString rows = PackedRows(picture);
    const size_t rowSize = rows.size() / picture.Height();
    for (uint32_t y = 0; y < picture.Height(); ++y)
        TIFFWriteScanline(tiff, rows.data() + rowSize * y, y, 0);
    TIFFClose(tiff);
    // Grey of 8 bits comes as three equal samples, which mean the same.
    EXPECT_EQ(LoadPicture(folder.Path() / "a.tif").WithSamples(samples), picture);
}

INSTANTIATE_TEST_SUITE_P(Shapes, PictureInTiff,
                         testing::Values(std::pair{1, 8}, std::pair{3, 8}, std::pair{1, 16}, std::pair{3, 16}),
                         [](const auto& shape)
                         { return std::to_string(shape.param.first) + "x" + std::to_string(shape.param.second); });

TEST(Pictures, ChangeTheirSamplesAndBits)
{
    CPicture picture(1, 1, 3, 8);
    picture.At(0, 0, 0) = 200;
    picture.At(0, 0, 1) = 100;
    EXPECT_EQ(picture.WithSamples(1).At(0, 0, 0), 119) << "0.299 of red and 0.587 of green";
    EXPECT_EQ(picture.WithBits(16).At(0, 0, 0), 51400);
    EXPECT_EQ(picture.WithBits(16).WithBits(8), picture);
    EXPECT_THROW(CPicture(1, 1, 2, 8), CSampleError);
    EXPECT_THROW(CPicture(1, 1, 1, 12), CSampleError);
}

TEST(Pictures, AreDrawnTheSameEachTime)
{
    EXPECT_EQ(DrawPicture(100, 80), DrawPicture(100, 80));
    EXPECT_NE(DrawPicture(100, 80).At(5, 5, 0), DrawPicture(100, 80).At(90, 70, 0));
}

} // namespace
