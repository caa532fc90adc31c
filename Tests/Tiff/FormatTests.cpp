// What the pixels of a stack are made of, as its directories tell it.

#include "Tests/Tiff/TiffSlide.h"

using namespace TiffOfTest;
using CIA::ColorSpaceType;
using CIA::PixelComponentFormat;
using CIA::PixelFrameCompressionType;

namespace
{

/// A stack of one strip, in the document or in a store, whose directory a test changes.
class TiffFormat : public TiffSlide, public testing::WithParamInterface<StackStorage::E>
{
protected:
    void OpenChanged(const std::function<void(CTiffDirectory&)>& change, Stack stack = Stack(1).Size(8, 4))
    {
        Open(Changed(change, std::move(stack)));
    }
    static Document Changed(const std::function<void(CTiffDirectory&)>& change, Stack stack = Stack(1).Size(8, 4))
    {
        if (GetParam() == StackStorage::InDocument)
            return DocumentOf(stack.InDocument(Stack::OneStrip), change);
        Document document;
        document.With(stack.InTiffStore(Stack::OneStrip));
        change(document.TiffStore(1).front());
        return document;
    }
    CIA::CPixelFrameFormat& Channel() { return *Model().Channels().at(0); }
    CIA::CPixelFormat& Format() { return *Channel().PixelFormat(); }
};

struct NameOfStorage
{
    template <typename Info>
    std::string operator()(const Info& info) const
    {
        return info.param == StackStorage::InDocument ? "InDocument" : "InStore";
    }
};

TEST_P(TiffFormat, HasTheBitsAndSamplesOfTheDirectory)
{
    Open(Changed([](auto&) {}, Stack(1).Size(8, 4).Raw(ComponentType::Uint16, 3)));
    EXPECT_EQ(Format().NumOfBitsPerPixelComponent(), 16u);
    EXPECT_EQ(Format().NumOfPixelComponents(), 3u);
    EXPECT_EQ(Format().NumOfBytes(), 6u);
    EXPECT_EQ(Format().ColorSpace(), ColorSpaceType::StandardRgb);
}

TEST_P(TiffFormat, OfPixelsThatFillNoWholeByteRoundsThemUp)
{
    OpenChanged([](auto& d) { d.Bits(12); });
    EXPECT_EQ(Format().NumOfBitsPerPixelComponent(), 12u);
    EXPECT_EQ(Format().NumOfPixelComponents(), 1u);
    EXPECT_EQ(Format().NumOfBytes(), 2u);
}

TEST_P(TiffFormat, OfGreyIsGrey)
{
    Open(Changed([](auto&) {}));
    EXPECT_EQ(Format().ColorSpace(), ColorSpaceType::GrayScale);
}

TEST_P(TiffFormat, OfALuminanceIsServedByAStoreAlone)
{
    Open(Changed([](auto& d) { d.Photometric(PHOTOMETRIC_YCBCR); }, Stack(1).Size(8, 4).Raw(ComponentType::Uint8, 3)));
    if (GetParam() == StackStorage::TiffStore)
    {
        EXPECT_EQ(Format().ColorSpace(), ColorSpaceType::YCbCr);
    }
    else
    {
        EXPECT_FAILED_ASSERTION(Format().ColorSpace());
    }
}

TEST_P(TiffFormat, OfInvertedGreyFails)
{
    Open(Changed([](auto& d) { d.Photometric(PHOTOMETRIC_MINISWHITE); }));
    EXPECT_FAILED_ASSERTION(Format().ColorSpace());
}

TEST_P(TiffFormat, HasTheComponentsOfTheDirectory)
{
    const auto format = [&](uint16_t code)
    {
        OpenChanged([code](auto& d) { d.SampleFormat(code); });
        return Format().ComponentFormat();
    };
    EXPECT_EQ(format(SAMPLEFORMAT_UINT), PixelComponentFormat::PixelComponentFormat_UintOfAnySize);
    EXPECT_EQ(format(SAMPLEFORMAT_INT), PixelComponentFormat::PixelComponentFormat_IntOfAnySize);
    EXPECT_EQ(format(SAMPLEFORMAT_IEEEFP), PixelComponentFormat::PixelComponentFormat_FloatOfAnySize);
}

TEST_P(TiffFormat, OfComponentsThatTiffDoesNotKnowIsRefusedByLibTiff)
{
    for (const uint16_t code : std::initializer_list<uint16_t>{0, 7, 65535})
        EXPECT_EQ(ResultOfReading(Changed([code](auto& d) { d.SampleFormat(code); })), AC_RESULT_FAILURE) << code;
}

TEST_P(TiffFormat, WithoutATagForComponentsIsNotKnown)
{
    OpenChanged([](auto& d) { d.Drop(TIFFTAG_SAMPLEFORMAT); });
    EXPECT_EQ(Format().ComponentFormat(), PixelComponentFormat::PixelComponentFormat_Unknown);
}

using TiffFormatDeathTest = TiffFormat;

TEST_P(TiffFormatDeathTest, OfComplexComponentsEndsTheProcess)
{
    for (const uint16_t code : std::initializer_list<uint16_t>{4, 5, 6})
    {
        OpenChanged([code](auto& d) { d.SampleFormat(code); });
        EXPECT_ENDS_THE_PROCESS(Format().ComponentFormat(),
                                "ERROR: unexpected/unhandled TIFF Pixel Component Format type " + std::to_string(code) +
                                    "!\n[^\n]*" ABORT_WAS_CALLED)
            << code;
    }
}

TEST_P(TiffFormatDeathTest, OfAnUnservedCompressionEndsTheProcess)
{
    OpenChanged([](auto& d) { d.Compression(COMPRESSION_LZW).Data({{1, 2, 3}}); });
    EXPECT_ENDS_THE_PROCESS(Channel().CompressionType(), ABORT_WAS_CALLED);
}

TEST_P(TiffFormat, HasTheCompressionOfTheDirectory)
{
    OpenChanged([](auto& d) { d.Compression(CompressionJ2k).Data({{1, 2, 3}}); });
    EXPECT_EQ(Channel().CompressionType(), PixelFrameCompressionType::J2k);
}

TEST_P(TiffFormat, OfCompressedPixelsWithoutLimitsHasNoKnownUsedBits)
{
    OpenChanged(
        [](auto& d) {
            d.Compression(CompressionJ2k).Data({{1, 2, 3}});
        },
        Stack(1).Size(8, 4).WithoutDisplayLimits());
    EXPECT_EQ(Format().MaxNumOfUsedBits(), 0xFFFFFFFFu);
}

TEST_P(TiffFormat, OfRawPixelsWithoutLimitsHasTheBitsOfTheLargestOne)
{
    ByteString pixels(8 * 4, 3);
    pixels[17] = 37;
    OpenChanged([&](auto& d) { d.Data({pixels}); }, Stack(1).Size(8, 4).WithoutDisplayLimits());
    EXPECT_EQ(Format().MaxNumOfUsedBits(), 6u);
}

INSTANTIATE_TEST_SUITE_P(Storage, TiffFormat, testing::Values(StackStorage::InDocument, StackStorage::TiffStore),
                         NameOfStorage());
INSTANTIATE_TEST_SUITE_P(Storage, TiffFormatDeathTest,
                         testing::Values(StackStorage::InDocument, StackStorage::TiffStore), NameOfStorage());

TEST_F(TiffSlide, WhoseFramesDisagreeInCompressionFails)
{
    Document document;
    document.With(Stack(1).Size(8, 4).Z(2).InDocument(Stack::OneStrip));
    document.File().Directories.at(2).Compression(CompressionJ2k).Data({{1, 2, 3}});
    Open(std::move(document));
    EXPECT_FAILED_ASSERTION(Model().Channels().at(0)->CompressionType());
    EXPECT_EQ(ResultOfBody(Tile(0, 0, L"0", {AtZ(0)})), AC_RESULT_FAILURE);
    EXPECT_FAILED_ASSERTION(Model().Frames().begin()->second->JpegTables());
}

} // namespace
