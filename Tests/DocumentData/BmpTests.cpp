// Pixels as a BMP file of 24 bits.

#include "CommonImageAccess/Bmp.h"

#include <array>
#include <cerrno>
#include <gmock/gmock.h>
#include <vector>

using testing::Each;
using testing::ElementsAre;

namespace
{

constexpr uint32_t Red = 0xFF0000FF; // the lowest byte
constexpr uint32_t Green = 0xFF00FF00;
constexpr uint32_t Blue = 0xFFFF0000;

TEST(Bmp, TellsItsSizeWithoutABuffer)
{
    const std::array<uint32_t, 6> pixels{};
    CIA::CByteArray buffer;
    EXPECT_EQ(CIA::Make24BitBMPBufferImgRGBA(3, 2, pixels.data(), buffer, 0, 0), 0);
    EXPECT_EQ(buffer.Size, 54U + 2 * 12);
}

TEST(Bmp, TellsItsSizeToTooSmallABuffer)
{
    const std::array<uint32_t, 1> pixels = {Red};
    std::vector<unsigned char> bytes(57, 7);
    CIA::CByteArray buffer(bytes.data(), 57);
    errno = 0;
    EXPECT_EQ(CIA::Make24BitBMPBufferImgRGBA(1, 1, pixels.data(), buffer, 0, 0), 22);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(buffer.Size, 58U);
    EXPECT_THAT(bytes, Each(7));
}

TEST(Bmp, HasItsLastRowFirstAndBlueFirstAndRowsOfWholeWords)
{
    const std::array<uint32_t, 2> pixels = {Red, Blue}; // one above the other
    std::vector<unsigned char> bytes(62, 7);
    CIA::CByteArray buffer(bytes.data(), 62);
    EXPECT_EQ(CIA::Make24BitBMPBufferImgRGBA(1, 2, pixels.data(), buffer, 0, 0), 0);
    EXPECT_THAT(std::vector<unsigned char>(bytes.begin() + 54, bytes.end()), ElementsAre(0xFF, 0, 0, 0, 0, 0, 0xFF, 0));
}

TEST(Bmp, HasARowFromLeftToRight)
{
    const std::array<uint32_t, 2> pixels = {Green, Red};
    std::vector<unsigned char> bytes(62);
    CIA::CByteArray buffer(bytes.data(), 62);
    EXPECT_EQ(CIA::Make24BitBMPBufferImgRGBA(2, 1, pixels.data(), buffer, 0, 0), 0);
    EXPECT_THAT(std::vector<unsigned char>(bytes.begin() + 54, bytes.end()), ElementsAre(0, 0xFF, 0, 0, 0, 0xFF, 0, 0));
}

TEST(Bmp, TellsItsResolution)
{
    const std::array<uint32_t, 1> pixels = {Red};
    std::vector<unsigned char> bytes(58);
    CIA::CByteArray buffer(bytes.data(), 58);
    EXPECT_EQ(CIA::Make24BitBMPBufferImgRGBA(1, 1, pixels.data(), buffer, 0x01020304, 5), 0);
    EXPECT_THAT(std::vector<unsigned char>(bytes.begin() + 38, bytes.begin() + 46),
                ElementsAre(4, 3, 2, 1, 5, 0, 0, 0));
}

TEST(Bmp, IsRefusedWhereItWouldTakeMoreThan32BitsOfSize)
{
    CIA::CByteArray buffer;
    errno = 0;
    EXPECT_EQ(CIA::Make24BitBMPBufferImgRGBA(65535, 65535, nullptr, buffer, 0, 0), EINVAL);
    EXPECT_EQ(errno, EINVAL);
}

} // namespace
