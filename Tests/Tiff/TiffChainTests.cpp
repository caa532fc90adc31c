// The chain of directories of a file, as far as each of them can be read.

#include "CommonUtil/Text.h"
#include "Tests/Tiff/TiffFile.h"
#include "Tests/Tiff/TiffSlide.h"

#include <algorithm>

using namespace TiffOfTest;

namespace
{

TEST_F(TiffFile, OfTenThousandDirectoriesIsWalked)
{
    Write(Chain(10000));
    CIA::CTiffImageDoc file(Name());
    for (uint32_t directory = 0; directory < 10000; ++directory)
        ASSERT_EQ(WidthOf(file.SetDirectory(directory)), directory + 1);
    for (uint32_t directory = 10000; directory-- > 0;)
        ASSERT_EQ(WidthOf(file.SetDirectory(directory)), directory + 1);
}

TEST_F(TiffFile, CountsItsDirectories)
{
    Write(Chain(3));
    errno = EBADFD;
    EXPECT_EQ(CIA::TIFFNumberOfDirectories(Opened().get()), 3u);
    EXPECT_EQ(errno, EBADFD);
}

TEST_F(TiffFile, WhoseChainLeadsBackEnds)
{
    std::vector<CTiffDirectory> directories = Chain(3);
    ByteString bytes = BytesOf("II*");
    bytes.resize(8);
    std::vector<uint32_t> offsets;
    AppendDirectories(bytes, directories, &offsets);
    directories.back().Next(offsets.front());
    WriteBytes(TiffFileOf(directories));
    CIA::CTiffImageDoc file(Name());
    EXPECT_EQ(WidthOf(file.SetDirectory(2)), 3u);
    EXPECT_FAILED_ASSERTION(file.SetDirectory(3)); // one after the other
    EXPECT_FAILED_ASSERTION(file.SetDirectory(60000));
    EXPECT_FAILED_ASSERTION(file.SetDirectory(3));
    EXPECT_EQ(WidthOf(file.SetDirectory(1)), 2u);
}

/// A directory with so many entries that nobody knows, and its own.
CTiffDirectory WithUnknownEntries(uint16_t numOfEntries)
{
    CTiffDirectory directory(7, 5);
    for (uint16_t n = 0; n < numOfEntries; ++n)
        directory.Set(static_cast<uint16_t>(60000 + n), TiffType::Long, {n});
    return directory;
}

TEST_F(TiffFile, IsNotSetToADirectoryOfMoreEntriesThanLibtiffTakes)
{
    Write({CTiffDirectory(1, 1), WithUnknownEntries(4000), WithUnknownEntries(4097), CTiffDirectory(4, 1)});
    CIA::CTiffImageDoc file(Name());
    EXPECT_EQ(WidthOf(file.SetDirectory(1)), 7u);
    EXPECT_FAILED_ASSERTION(file.SetDirectory(2));
    EXPECT_EQ(WidthOf(file.SetDirectory(3)), 4u);
}

TEST_F(TiffFile, WhoseFirstDirectoryHasMoreEntriesThanLibtiffTakesIsNone)
{
    Write({WithUnknownEntries(4097), CTiffDirectory(4, 1)});
    EXPECT_FALSE(Opened());
}

/// So many directories that begin 12 bytes one behind the other, with 400 entries each: those of one are those of the
/// other as well.
ByteString DirectoriesInEachOther(uint32_t numOfDirectories)
{
    constexpr uint16_t NumOfEntries = 400;
    constexpr uint32_t OffsetOfFirst = 8;
    ByteString bytes = BytesOf("II*");
    bytes.resize(4);
    Append(bytes, OffsetOfFirst);
    Append(bytes, NumOfEntries);
    // The upper half of each value is the number of entries of the directory that begins with it.
    const auto addEntry = [&](uint32_t tagAndType, uint16_t value)
    {
        Append(bytes, tagAndType);
        Append(bytes, uint32_t{1});
        Append(bytes, value);
        Append(bytes, NumOfEntries);
    };
    const auto shortOf = [](uint32_t tag) { return tag | uint32_t{TiffType::Short} << 16; };
    for (uint16_t n = 0; n < NumOfEntries - 4; ++n)
        addEntry(shortOf(60000u + n), n);
    addEntry(shortOf(TIFFTAG_IMAGEWIDTH), 7);
    addEntry(shortOf(TIFFTAG_IMAGELENGTH), 5);
    addEntry(shortOf(TIFFTAG_STRIPOFFSETS), 8);
    addEntry(shortOf(TIFFTAG_STRIPBYTECOUNTS), 35);
    for (uint32_t next = 1; next < numOfDirectories; ++next)
        addEntry(OffsetOfFirst + 12 * next, 0);
    Append(bytes, uint32_t{0});
    return bytes;
}

TEST_F(TiffFile, OfDirectoriesThatLieInEachOtherIsSetToAsManyAsItCouldHoldSideBySide)
{
    WriteBytes(DirectoriesInEachOther(500));
    for (const std::vector<uint32_t>& order : {std::vector{0u, 1u, 2u}, {2u, 1u, 0u}, {499u, 1u, 498u}})
    {
        CIA::CTiffImageDoc file(Name());
        for (const uint32_t directory : order)
            EXPECT_EQ(file.TrySetDirectory(directory), directory < 2) << directory;
    }
}

/// Directories that have one long text in common.
std::vector<CTiffDirectory> DirectoriesOfOneText(uint16_t tag, uint32_t sizeOfText)
{
    constexpr size_t NumOfDirectories = 1000;
    CTiffDirectory directory(7, 5);
    directory.Set(tag, CTiffEntry{TiffType::Ascii, sizeOfText, {}, 8});
    return std::vector<CTiffDirectory>(NumOfDirectories, directory);
}

TEST_F(TiffFile, WhoseDirectoriesShareAValueThatNobodyNeedsIsSetToThem)
{
    Write(DirectoriesOfOneText(TIFFTAG_SOFTWARE, 100000));
    CIA::CTiffImageDoc file(Name());
    for (uint32_t directory = 0; directory < 1000; ++directory)
        ASSERT_TRUE(file.TrySetDirectory(directory)) << directory;
}

TEST_F(TiffFile, WhoseDirectoriesShareAValueIsSetToThem)
{
    Write(DirectoriesOfOneText(TIFFTAG_IMAGEDESCRIPTION, 65536));
    CIA::CTiffImageDoc file(Name());
    for (uint32_t directory = 0; directory < 1000; ++directory)
        ASSERT_TRUE(file.TrySetDirectory(directory)) << directory;
}

TEST_F(TiffFile, WhoseDirectoriesShareFarMoreThanTheFileHasIsNotSetToAll)
{
    Write(DirectoriesOfOneText(TIFFTAG_IMAGEDESCRIPTION, 100000));
    constexpr uint32_t NumOfThoseRead = (64 << 20) / 100000;
    for (const std::vector<uint32_t>& order :
         {std::vector{999u, NumOfThoseRead, NumOfThoseRead - 1, 0u}, {0u, NumOfThoseRead - 1, NumOfThoseRead, 999u}})
    {
        CIA::CTiffImageDoc file(Name());
        for (const uint32_t directory : order)
            EXPECT_EQ(file.TrySetDirectory(directory), directory < NumOfThoseRead) << directory;
    }
}

TEST_F(TiffFile, OfTwoEntriesWithOneTagHasTheFirst)
{
    ByteString bytes = TiffFileOf({CTiffDirectory(7, 5).Set(65000, TiffType::Long, {9})});
    const ByteString unknownTag = {0xE8, 0xFD};
    const auto at = std::search(bytes.begin(), bytes.end(), unknownTag.begin(), unknownTag.end());
    ASSERT_NE(at, bytes.end());
    at[0] = TIFFTAG_IMAGEWIDTH & 0xFF;
    at[1] = TIFFTAG_IMAGEWIDTH >> 8;
    WriteBytes(bytes);
    EXPECT_EQ(WidthOf(Opened().get()), 7u);
}

/// A JPEG stream whose frame header comes after so many bytes that say nothing.
ByteString JpegWithItsFrameHeaderAt(size_t offset)
{
    ByteString stream(offset);
    // Three components, 8 bits each, none of them subsampled.
    for (const int byte : {0xFF, 0xC0, 0, 17, 8, 0, 5, 0, 7, 3, 1, 0x11, 0, 2, 0x11, 1, 3, 0x11, 1})
        stream.push_back(static_cast<unsigned char>(byte));
    return stream;
}

TEST_F(TiffFile, IsNotSearchedForASubsamplingWithoutEnd)
{
    const auto logOf = [this](size_t offsetOfFrameHeader)
    {
        CTiffDirectory directory = CTiffDirectory(7, 5).Samples(3).Compression(7).Photometric(PHOTOMETRIC_YCBCR);
        Write({directory.Data({JpegWithItsFrameHeaderAt(offsetOfFrameHeader)})});
        return TestSupport::LogOf([this] { EXPECT_EQ(WidthOf(Opened().get()), 7u); });
    };
    EXPECT_THAT(logOf(15000), HasSubstr("Auto-corrected"));
    EXPECT_THAT(logOf(100000), HasSubstr("Unable to auto-correct"));
}

/// Modes in which libtiff writes a file.
class TiffLayout : public TiffFile, public testing::WithParamInterface<const char*>
{
};

TEST_P(TiffLayout, IsRead)
{
    {
        const std::unique_ptr<TIFF, CTiffCloser> written(TIFFOpen(CommonUtil::A(Name()).c_str(), GetParam()));
        for (const uint32_t width : {1, 2, 3})
        {
            TIFFSetField(written.get(), TIFFTAG_IMAGEWIDTH, width);
            TIFFSetField(written.get(), TIFFTAG_IMAGELENGTH, 3);
            TIFFSetField(written.get(), TIFFTAG_ROWSPERSTRIP, 1);
            TIFFSetField(written.get(), TIFFTAG_SOFTWARE, "a text that nobody needs");
            TIFFSetField(written.get(), TIFFTAG_IMAGEDESCRIPTION, "a text that is needed");
            for (uint32_t row = 0; row < 3; ++row)
            {
                ByteString bytes(1, static_cast<unsigned char>(10 * width + row));
                TIFFWriteRawStrip(written.get(), row, bytes.data(), 1);
            }
            TIFFWriteDirectory(written.get());
        }
    }
    EXPECT_EQ(CIA::TIFFNumberOfDirectories(Opened().get()), 3u);
    CIA::CTiffImageDoc file(Name());
    for (const uint32_t directory : {2u, 0u, 1u})
    {
        TIFF* tif = file.SetDirectory(directory);
        EXPECT_EQ(WidthOf(tif), directory + 1);
        EXPECT_STREQ(CIA::TIFFGetField<const char*>(tif, TIFFTAG_IMAGEDESCRIPTION), "a text that is needed");
        unsigned char byte = 0;
        EXPECT_EQ(CIA::TIFFReadRawStrip(tif, 2, &byte, 1), 1);
        EXPECT_EQ(byte, 10 * (directory + 1) + 2);
    }
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, TiffLayout, testing::Values("wl", "wb", "w8l", "w8b"));

} // namespace
