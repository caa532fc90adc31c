// Pixels and TIFF directories as BMP files.

#include "CommonImageAccess/Bmp.h"

#include "Tests/Tiff/TiffSlide.h"

#include <cstring>

using namespace TiffOfTest;
using CIA::CByteArray;
using CIA::Make24BitBMPBufferImgRGBA;

namespace
{

uint32_t At(const ByteString& file, size_t offset)
{
    uint32_t number = 0;
    std::memcpy(&number, file.data() + offset, sizeof number);
    return number;
}

constexpr uint32_t Rgb(uint32_t red, uint32_t green, uint32_t blue)
{
    return 0xFF000000 | blue << 16 | green << 8 | red;
}

// Pixels.

TEST(BmpOfPixels, ForNoBufferTellsTheSizeAndLeavesErrno)
{
    CByteArray size;
    errno = EBADFD;
    EXPECT_EQ(Make24BitBMPBufferImgRGBA(3, 1, nullptr, size, 0, 0), 0);
    EXPECT_EQ(size.Size, 66u);
    EXPECT_EQ(errno, EBADFD);
}

TEST(BmpOfPixels, ForATooSmallBufferTellsTheSizeAndFails)
{
    ByteString bytes(65, 0xCC);
    CByteArray buffer(bytes.data(), 65);
    EXPECT_EQ(Make24BitBMPBufferImgRGBA(3, 1, nullptr, buffer, 0, 0), EINVAL);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(buffer.Size, 66u);
    EXPECT_EQ(bytes, ByteString(65, 0xCC));
}

TEST(BmpOfPixels, HasItsNumbersInTheHeader)
{
    const std::vector<uint32_t> pixels(3 * 2);
    ByteString bytes(54 + 2 * 12, 0xCC);
    CByteArray buffer(bytes.data(), static_cast<uint32_t>(bytes.size()));
    ASSERT_EQ(Make24BitBMPBufferImgRGBA(3, 2, pixels.data(), buffer, 2835, 2834), 0);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 2), "BM");
    EXPECT_EQ(At(bytes, 2), bytes.size());
    EXPECT_EQ(At(bytes, 10), 54u);
    EXPECT_EQ(At(bytes, 14), 40u);
    EXPECT_EQ(At(bytes, 18), 3u);
    EXPECT_EQ(At(bytes, 22), 2u);
    EXPECT_EQ(bytes[28], 24);
    EXPECT_EQ(At(bytes, 34), 3u * 2 * 3);
    EXPECT_EQ(At(bytes, 38), 2835u);
    EXPECT_EQ(At(bytes, 42), 2834u);
    for (const size_t zero : {6u, 26u, 30u, 46u, 50u})
        EXPECT_EQ(At(bytes, zero) & (zero == 26 ? 0xFFFFu : 0xFFFFFFFFu), 0u) << zero;
}

TEST(BmpOfPixels, HasTheLastRowFirstAndBlueFirstAndPadsRows)
{
    const std::vector<uint32_t> pixels = {Rgb(1, 2, 3), Rgb(4, 5, 6)};
    ByteString bytes(54 + 2 * 4, 0xCC);
    CByteArray buffer(bytes.data(), static_cast<uint32_t>(bytes.size()));
    ASSERT_EQ(Make24BitBMPBufferImgRGBA(1, 2, pixels.data(), buffer, 0, 0), 0);
    EXPECT_EQ(ByteString(bytes.begin() + 54, bytes.end()), (ByteString{6, 5, 4, 0, 3, 2, 1, 0}));
}

// Directories.

class BmpOfTiff : public testing::Test
{
protected:
    void Open(const CTiffDirectory& directory)
    {
        const ByteString bytes = TiffFileOf({directory});
        _folder.Write("file.tif", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        TIFFSetErrorHandler(nullptr); // what is damaged on purpose is no news
        TIFFSetWarningHandler(nullptr);
        _tif.reset(TIFFOpen(_folder.Name("file.tif").c_str(), "r"));
        ASSERT_TRUE(_tif);
    }
    TIFF* Tif() { return _tif.get(); }

    struct Answer
    {
        int Result;
        uint32_t Size;
        ByteString Bytes;
    };
    Answer Make(uint32_t size)
    {
        Answer answer{0, size, ByteString(size, 0xCC)};
        CByteArray buffer(answer.Bytes.data(), size);
        answer.Result = Make24BitBMPBufferTiff(Tif(), buffer);
        answer.Size = buffer.Size;
        return answer;
    }
    int ResultOfSize()
    {
        CByteArray size;
        return Make24BitBMPBufferTiff(Tif(), size);
    }

private:
    TestSupport::TemporaryFolder _folder;
    std::unique_ptr<TIFF, CTiffCloser> _tif;
};

TEST_F(BmpOfTiff, TellsTheSizeAndThenThePixels)
{
    Open(CTiffDirectory(1, 2).Samples(3).Data({{1, 2, 3, 4, 5, 6}}));
    CByteArray size;
    EXPECT_EQ(Make24BitBMPBufferTiff(Tif(), size), 0);
    EXPECT_EQ(size.Size, 62u);
    const Answer answer = Make(62);
    EXPECT_EQ(answer.Result, 0);
    EXPECT_EQ(ByteString(answer.Bytes.begin() + 54, answer.Bytes.end()), (ByteString{6, 5, 4, 0, 3, 2, 1, 0}));
    EXPECT_EQ(At(answer.Bytes, 38), 0u) << "resolution";
}

TEST_F(BmpOfTiff, ForATooSmallBufferFails)
{
    Open(CTiffDirectory(1, 2).Samples(3));
    const Answer answer = Make(61);
    EXPECT_EQ(answer.Result, EINVAL);
    EXPECT_EQ(answer.Bytes, ByteString(61, 0xCC));
}

TEST_F(BmpOfTiff, WithoutAWidthTellsThatThereIsNone)
{
    Open(CTiffDirectory(1, 2));
    const std::unique_ptr<TIFF, CTiffCloser> empty(TIFFOpen("/dev/null", "w"));
    ASSERT_TRUE(empty);
    CByteArray size;
    EXPECT_EQ(Make24BitBMPBufferTiff(empty.get(), size), ENODATA);
}

TEST_F(BmpOfTiff, OfPixelsThatCannotBeDecodedFailsAndHasNoSize)
{
    Open(CTiffDirectory(1, 2).Samples(3).Photometric(PHOTOMETRIC_CFA));
    const Answer answer = Make(62);
    EXPECT_NE(answer.Result, 0);
    EXPECT_EQ(answer.Size, 0u);
}

TEST_F(BmpOfTiff, OfAHugePictureFailsAndTakesNoMemory)
{
    Open(CTiffDirectory(4, 4).Set(TIFFTAG_IMAGEWIDTH, TiffType::Long, {0xFFFFFFFF}));
    EXPECT_NE(ResultOfSize(), 0);
    Open(CTiffDirectory(4, 4).Set(TIFFTAG_IMAGEWIDTH, TiffType::Long, {65536}));
    EXPECT_EQ(ResultOfSize(), 0); // the size can be told, the picture cannot be made
    EXPECT_EQ(Make(65536 * 4 * 3 + 53).Result, EINVAL);
    const Answer answer = Make(65536 * 4 * 3 + 54);
    EXPECT_EQ(answer.Result, EINVAL);
    EXPECT_EQ(answer.Size, 0u);
}

} // namespace
