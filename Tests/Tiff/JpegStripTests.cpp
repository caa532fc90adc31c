// Merging a JPEG strip into the tables that stand apart from it.

#include "CommonImageAccess/JpegStrip.h"

#include "Tests/Support/Assertion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using CIA::Apply_Huffman_On_JPEG;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

using Bytes = std::vector<unsigned char>;

const Bytes Adobe = {0xFF, 0xEE, 0x00, 0x0E, 'A', 'd', 'o', 'b', 'e', 0x00, 0x64, 0x00, 0x00, 0x00, 0x00, 0x00};
const Bytes Start = {0xFF, 0xD8};
const Bytes Quantization = {0xFF, 0xDB, 0x00, 0x04, 0x51, 0x52};
const Bytes Huffman = {0xFF, 0xC4, 0x00, 0x03, 0x61};
const Bytes Application = {0xFF, 0xE0, 0x00, 0x05, 0x01, 0x02, 0x03};
const Bytes Frame = {0xFF, 0xC0, 0x00, 0x08, 0x08, 0xAA, 0xBB, 0x00, 0x07, 0x01};
const Bytes Scan = {0xFF, 0xDA, 0x00, 0x03, 0x01};
const Bytes Pixels = {0x10, 0x20, 0xFF, 0x00, 0x30};
const Bytes End = {0xFF, 0xD9};

Bytes Join(const std::vector<Bytes>& pieces)
{
    Bytes all;
    for (const Bytes& piece : pieces)
        all.insert(all.end(), piece.begin(), piece.end());
    return all;
}

/// What a strip adds to an output that is empty.
Bytes Merged(const Bytes& strip, uint32_t stripId = 0, uint32_t height = 0x1234)
{
    Bytes output;
    Apply_Huffman_On_JPEG(strip, output, stripId, height);
    return output;
}

Bytes FrameOfHeight(unsigned char high, unsigned char low, unsigned char code = 0xC0)
{
    Bytes frame = Frame;
    frame[1] = code;
    frame[5] = high;
    frame[6] = low;
    return frame;
}

TEST(JpegStrip, IsAppendedToTheTables)
{
    Bytes output = {1, 2, 3};
    EXPECT_TRUE(Apply_Huffman_On_JPEG(Join({Start, Scan, Pixels, End}), output, 0, 8));
    EXPECT_EQ(output, Join({{1, 2, 3}, Adobe, Scan, Pixels}));
}

TEST(JpegStrip, OfTheFirstNumberBringsTheColoursTheTablesAndTheFrame)
{
    EXPECT_EQ(Merged(Join({Start, Quantization, Huffman, Frame, Scan, Pixels, End})),
              Join({Adobe, Quantization, Huffman, FrameOfHeight(0x12, 0x34), Scan, Pixels}));
}

TEST(JpegStrip, OfALaterNumberBringsTheTablesAndARestart)
{
    EXPECT_EQ(Merged(Join({Start, Quantization, Huffman, Frame, Scan, Pixels, End}), 1),
              Join({Quantization, Huffman, {0xFF, 0xD0}, Pixels}));
}

TEST(JpegStrip, CountsRestartsInEights)
{
    const Bytes strip = Join({Start, Scan, Pixels, End});
    EXPECT_EQ(Merged(strip, 8), Join({{0xFF, 0xD7}, Pixels}));
    EXPECT_EQ(Merged(strip, 9), Join({{0xFF, 0xD0}, Pixels}));
}

TEST(JpegStrip, LosesAllOtherSegments)
{
    EXPECT_EQ(Merged(Join({Start, Application, Scan, Pixels, End})), Join({Adobe, Scan, Pixels}));
}

TEST(JpegStrip, TakesTheHeightForEachKindOfFrame)
{
    for (const unsigned char code : Bytes{0xC0, 0xC1, 0xC3, 0xC9, 0xCA})
    {
        Bytes frame = Frame;
        frame[1] = code;
        EXPECT_EQ(Merged(Join({Start, frame, Scan, Pixels, End})),
                  Join({Adobe, FrameOfHeight(0x12, 0x34, code), Scan, Pixels}))
            << int{code};
    }
}

TEST(JpegStrip, LosesAFrameOfAnotherKind)
{
    Bytes progressive = Frame;
    progressive[1] = 0xC2;
    EXPECT_EQ(Merged(Join({Start, progressive, Scan, Pixels, End})), Join({Adobe, Scan, Pixels}));
}

TEST(JpegStrip, CountsTheLowByteOfALengthAlone)
{
    Bytes table = Quantization;
    table[2] = 0x01; // 260 bytes, of which 4 count
    EXPECT_EQ(Merged(Join({Start, table, Scan, Pixels, End})), Join({Adobe, table, Scan, Pixels}));
}

TEST(JpegStrip, WithAFrameOfMoreThan255BytesFails)
{
    Bytes frame = Frame;
    frame[2] = 0x01;
    EXPECT_FAILED_ASSERTION(Merged(Join({Start, frame, Scan, Pixels, End})));
}

TEST(JpegStrip, WithAFrameThatHasNoRoomForTheHeightFails)
{
    EXPECT_FAILED_ASSERTION(Merged(Join({Start, {0xFF, 0xC0, 0x00, 0x02}, Scan, Pixels, End})));
}

TEST(JpegStrip, BringsTheColoursForEachStart)
{
    EXPECT_EQ(Merged(Join({Start, Start, Start, Scan, Pixels, End})), Join({Adobe, Adobe, Adobe, Scan, Pixels}));
    EXPECT_EQ(Merged(Join({Start, Start, Scan, Pixels, End}), 1), Join({{0xFF, 0xD0}, Pixels}));
}

TEST(JpegStrip, OfStartsWithoutEndTakesMemoryInProportion)
{
    Bytes strip;
    for (int i = 0; i < 100000; ++i)
        strip.insert(strip.end(), Start.begin(), Start.end());
    Bytes output;
    EXPECT_FALSE(Apply_Huffman_On_JPEG(strip, output, 0, 8));
    EXPECT_EQ(output.size(), 100000 * Adobe.size());
}

TEST(JpegStrip, WithoutAScanBringsWhatStandsBefore)
{
    Bytes output;
    EXPECT_FALSE(Apply_Huffman_On_JPEG(Join({Start, Quantization, Application}), output, 0, 8));
    EXPECT_EQ(output, Join({Adobe, Quantization}));
}

TEST(JpegStrip, WithoutAMarkerInFrontFails)
{
    EXPECT_FAILED_ASSERTION(Merged({}));
    EXPECT_FAILED_ASSERTION(Merged({0xD8, 0xFF}));
}

TEST(JpegStrip, OfOneByteBringsNothing)
{
    EXPECT_THAT(Merged({0xFF}), IsEmpty());
}

TEST(JpegStrip, WithSegmentsOfNoLengthEnds)
{
    Bytes strip = Start;
    for (int i = 0; i < 1000; ++i)
        strip.insert(strip.end(), {0xFF, 0xE0, 0x00, 0x00});
    Bytes output;
    EXPECT_FALSE(Apply_Huffman_On_JPEG(strip, output, 0, 8));
    EXPECT_EQ(output, Adobe);
}

TEST(JpegStrip, ThatIsCutOffWithinWhatIsCopiedFails)
{
    for (const Bytes& segment : {Quantization, Huffman, Frame})
        for (size_t size = 2; size < segment.size(); ++size)
            EXPECT_FAILED_ASSERTION(
                Merged(Join({Start, Bytes(segment.begin(), segment.begin() + static_cast<std::ptrdiff_t>(size))})))
                << "code " << int{segment[1]} << " cut to " << size;
}

TEST(JpegStrip, ThatIsCutOffWithinItsScanFails)
{
    for (size_t size = 2; size < Scan.size(); ++size)
        EXPECT_FAILED_ASSERTION(
            Merged(Join({Start, Bytes(Scan.begin(), Scan.begin() + static_cast<std::ptrdiff_t>(size))})))
            << size;
    EXPECT_FAILED_ASSERTION(Merged(Join({Start, {0xFF, 0xDA, 0x00, 0xFF}, Pixels}), 1));
}

TEST(JpegStrip, ThatIsCutOffWithinWhatIsLostBringsWhatStandsBefore)
{
    EXPECT_EQ(Merged(Join({Start, {0xFF, 0xE0, 0x00, 0xFF, 0x01}})), Adobe);
    EXPECT_EQ(Merged(Join({Start, {0xFF, 0xE0}})), Adobe);
}

TEST(JpegStrip, OfAnyBytesEndsWithinBounds)
{
    uint32_t random = 1;
    for (int round = 0; round < 2000; ++round)
    {
        Bytes strip = {0xFF};
        while (strip.size() < 200)
        {
            random = random * 1664525 + 1013904223;
            const Bytes codes = {0xC4, 0xDB, 0xD8, 0xC0, 0xDA, 0xE0, 0xFF, 0x00};
            strip.push_back((random >> 16) % 3 == 0 ? static_cast<unsigned char>(random >> 24)
                                                    : codes[(random >> 24) % codes.size()]);
        }
        Bytes output;
        TestSupport::AssertionOf([&] { Apply_Huffman_On_JPEG(strip, output, static_cast<uint32_t>(round % 3), 8); });
        EXPECT_LE(output.size(), strip.size() * Adobe.size());
    }
}

} // namespace
