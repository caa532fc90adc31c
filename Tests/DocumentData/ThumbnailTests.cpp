// The thumbnail of a document: one that is stored, or the picture in its first directory.

#include "SampleDocuments/Tags.h"
#include "Tests/Accessor/Slide.h"

using namespace SlideOfTest;

namespace
{

class Thumbnails : public Slide
{
protected:
    static constexpr UINT Untouched = 0xABCD;
    UINT Count = Untouched;

    AC_Result Size() { return Read(nullptr, 0); }
    AC_Result Read(BYTE* buffer, UINT size)
    {
        Count = Untouched;
        return Call(_AC_GetThumbnailData, Doc(), buffer, size, &Count);
    }
    /// By both steps of the protocol.
    ByteString Thumbnail()
    {
        EXPECT_EQ(Size(), AC_RESULT_SUCCESS);
        ByteString bytes(Count);
        EXPECT_EQ(Read(bytes.data(), Count), AC_RESULT_SUCCESS);
        EXPECT_EQ(Count, bytes.size());
        return bytes;
    }
};

ByteString Little(std::initializer_list<uint32_t> numbers)
{
    ByteString bytes;
    for (const uint32_t number : numbers)
        Append(bytes, number);
    return bytes;
}

ByteString Joined(std::initializer_list<ByteString> parts)
{
    ByteString all;
    for (const ByteString& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

/// A file header: "BM", the size of the file, the offset of the pixels.
ByteString FileHeader(uint32_t size, uint32_t offsetOfPixels)
{
    return Joined({BytesOf("BM"), Little({size, 0, offsetOfPixels})});
}

CPicture Drawing()
{
    return DrawPicture(21, 13);
}

// ---- Stored thumbnails ----

struct StoredRow : Row
{
    CBitmapOptions Options;
    uint32_t SizeOfPalette;
};

class StoredThumbnail : public Thumbnails, public testing::WithParamInterface<StoredRow>
{
protected:
    ByteString Bitmap() const { return BitmapOf(Drawing(), GetParam().Options); }
    ByteString Expected() const
    {
        const auto size = static_cast<uint32_t>(Bitmap().size() + 14);
        return Joined({FileHeader(size, 54 + GetParam().SizeOfPalette), Bitmap()});
    }
};

TEST_P(StoredThumbnail, GetsAFileHeader)
{
    Open(Document().With(Stack(1)).Thumbnail(Drawing(), GetParam().Options));
    EXPECT_EQ(Thumbnail(), Expected());
}

TEST_P(StoredThumbnail, OfAnOlderDocumentGetsAFileHeader)
{
    Open(Document().With(Stack(1)).OldThumbnail(Drawing(), GetParam().Options));
    EXPECT_EQ(Thumbnail(), Expected());
}

INSTANTIATE_TEST_SUITE_P(Bits, StoredThumbnail,
                         testing::Values(StoredRow{{"One"}, {.Bits = 1}, 2 * 4},
                                         StoredRow{{"Four"}, {.Bits = 4}, 16 * 4},
                                         StoredRow{{"Eight"}, {.Bits = 8}, 256 * 4},
                                         StoredRow{{"TwentyFour"}, {.Bits = 24}, 0},
                                         StoredRow{{"FourWithTenColours"}, {.Bits = 4, .NumOfColours = 10}, 10 * 4},
                                         StoredRow{{"TwentyFourWithColours"}, {.Bits = 24, .NumOfColours = 3}, 3 * 4}),
                         NameOfRow());

TEST_F(Thumbnails, OfTheOlderLayoutWin)
{
    Open(Document().With(Stack(1)).Thumbnail(Drawing()).OldThumbnail(DrawPicture(3, 2)));
    EXPECT_EQ(Thumbnail().size(), 54U + 12 * 2);
}

TEST_F(Thumbnails, DoNotFitIntoOneByteLess)
{
    Open(Document().With(Stack(1)).Thumbnail(Drawing()));
    const ByteString whole = Thumbnail();
    ByteString buffer(whole.size() - 1, 7);
    EXPECT_EQ(Read(buffer.data(), static_cast<UINT>(buffer.size())), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(Count, Untouched);
    EXPECT_THAT(buffer, testing::Each(7));
}

TEST_F(Thumbnails, FitIntoALargerBuffer)
{
    Open(Document().With(Stack(1)).Thumbnail(Drawing()));
    const ByteString whole = Thumbnail();
    ByteString buffer(whole.size() + 1, 7);
    EXPECT_EQ(Read(buffer.data(), static_cast<UINT>(buffer.size())), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, whole.size());
    EXPECT_EQ(buffer.back(), 7);
}

struct DamagedRow : Row
{
    ByteString Stored;
};

class DamagedThumbnail : public Thumbnails, public testing::WithParamInterface<DamagedRow>
{
};

TEST_P(DamagedThumbnail, FailsAnAssertionWhenItIsRead)
{
    Open(Document().With(Stack(1)).Thumbnail(GetParam().Stored));
    EXPECT_EQ(Size(), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, GetParam().Stored.size() + 14);
    ByteString buffer(Count);
    EXPECT_EQ(Read(buffer.data(), Count), AC_RESULT_FAILURE);
}

ByteString CutBitmap(size_t size)
{
    ByteString bitmap = BitmapOf(Drawing());
    bitmap.resize(size);
    return bitmap;
}
ByteString BitmapOfColours(uint32_t numOfColours)
{
    ByteString bitmap = BitmapOf(Drawing());
    Patch(bitmap, 32, numOfColours);
    return bitmap;
}

INSTANTIATE_TEST_SUITE_P(Thumbnails, DamagedThumbnail,
                         testing::Values(DamagedRow{{"OlderHeader"}, BitmapOf(Drawing(), {.SizeOfHeader = 12})},
                                         DamagedRow{{"NewerHeader"}, BitmapOf(Drawing(), {.SizeOfHeader = 124})},
                                         DamagedRow{{"ShorterThanItsHeader"}, CutBitmap(39)},
                                         DamagedRow{{"ShorterThanItsFirstWord"}, CutBitmap(3)},
                                         DamagedRow{{"MoreColoursThanAFileHolds"}, BitmapOfColours(0xFFFFFFFF)}),
                         NameOfRow());

TEST_F(Thumbnails, NeedTheDocumentsPropertiesUnlessTheyAreOld)
{
    Open(Document().With(Stack(1)).WithoutProperties());
    EXPECT_EQ(Size(), AC_RESULT_FAILURE);
    Open(Document().With(Stack(1)).WithoutProperties().OldThumbnail(Drawing()));
    EXPECT_EQ(Size(), AC_RESULT_SUCCESS);
}

TEST_F(Thumbnails, RefuseNullArguments)
{
    Open(Document().With(Stack(1)));
    constexpr auto message = "Error: params hImgDoc or numOfEles are NULL!";
    EXPECT_THAT(MessagesOf(
                    [&]
                    {
                        EXPECT_EQ(_AC_GetThumbnailData(nullptr, nullptr, 0, &Count), AC_RESULT_INVALID_PARAM);
                        EXPECT_EQ(_AC_GetThumbnailData(Doc(), nullptr, 0, nullptr), AC_RESULT_INVALID_PARAM);
                    }),
                ElementsAre(message, message));
}

// ---- The first directory ----

/// The pixel of a bitmap of 24 bits, which begins with the lowest row and has blue first.
CColour PixelOf(const ByteString& bmp, const CPicture& picture, uint32_t x, uint32_t y)
{
    const size_t sizeOfRow = (size_t{picture.Width()} * 3 + 3) / 4 * 4;
    const size_t at = 54 + (picture.Height() - 1 - y) * sizeOfRow + size_t{x} * 3;
    return {bmp.at(at + 2), bmp.at(at + 1), bmp.at(at)};
}

uint32_t LargestDifference(const ByteString& bmp, const CPicture& picture)
{
    int largest = 0;
    for (uint32_t y = 0; y < picture.Height(); ++y)
        for (uint32_t x = 0; x < picture.Width(); ++x)
        {
            const CColour pixel = PixelOf(bmp, picture, x, y);
            largest =
                std::max({largest, std::abs(pixel.Red - picture.At(x, y, 0)),
                          std::abs(pixel.Green - picture.At(x, y, 1)), std::abs(pixel.Blue - picture.At(x, y, 2))});
        }
    return static_cast<uint32_t>(largest);
}

Document WithDirectory(CTiffDirectory directory)
{
    return Document().With(Stack(1)).FirstDirectory(std::move(directory));
}

TEST_F(Thumbnails, OfTheFirstDirectoryBeginWithThisHeader)
{
    Open(Document().With(Stack(1)).FirstDirectory(DrawPicture(100, 50), FirstDirectoryKind::Raw));
    const ByteString header = Joined({FileHeader(15054, 54),
                                      Little({40, 100, 50}),
                                      {0, 0, 24, 0}, // no planes at all, which viewers put up with; 24 bits
                                      Little({0, 100 * 50 * 3, 0, 0, 0, 0})});
    const ByteString thumbnail = Thumbnail();
    EXPECT_EQ(thumbnail.size(), 15054U);
    EXPECT_EQ(ByteString(thumbnail.begin(), thumbnail.begin() + 54), header);
}

struct WidthRow : Row
{
    uint32_t Width;
    UINT Size; ///< of a thumbnail of two rows
};

class WidthOfThumbnail : public Thumbnails, public testing::WithParamInterface<WidthRow>
{
};

TEST_P(WidthOfThumbnail, IsPaddedToWholeWords)
{
    const CPicture picture = DrawPicture(GetParam().Width, 2);
    Open(Document().With(Stack(1)).FirstDirectory(picture, FirstDirectoryKind::Raw));
    const ByteString thumbnail = Thumbnail();
    EXPECT_EQ(thumbnail.size(), GetParam().Size);
    EXPECT_EQ(LargestDifference(thumbnail, picture), 0U);
}

INSTANTIATE_TEST_SUITE_P(Pixels, WidthOfThumbnail,
                         testing::Values(WidthRow{{"Four"}, 4, 54 + 2 * 12}, WidthRow{{"Five"}, 5, 54 + 2 * 16},
                                         WidthRow{{"Six"}, 6, 54 + 2 * 20}, WidthRow{{"Seven"}, 7, 54 + 2 * 24},
                                         WidthRow{{"One"}, 1, 54 + 2 * 4}),
                         NameOfRow());

TEST_F(Thumbnails, OfTheFirstDirectoryMayBeJpeg)
{
    const CPicture picture = DrawPicture(64, 48);
    Open(Document().With(Stack(1)).FirstDirectory(picture, FirstDirectoryKind::Jpeg));
    EXPECT_LE(LargestDifference(Thumbnail(), picture), 60U);
}

struct TileRow : Row
{
    uint32_t Width;
    uint32_t Height;
};

class TilesOfFirstDirectory : public Thumbnails, public testing::WithParamInterface<TileRow>
{
protected:
    static CTiffDirectory Directory()
    {
        CTiffDirectory directory(50, 40);
        return directory.Samples(3).Tiles(GetParam().Width, GetParam().Height);
    }
    /// The same pixels in one strip.
    static ByteString Strip(const CTiffDirectory& tiles)
    {
        const uint32_t tilesInARow = (50 + GetParam().Width - 1) / GetParam().Width;
        ByteString strip;
        for (uint32_t y = 0; y < 40; ++y)
            for (uint32_t x = 0; x < 50; ++x)
            {
                const ByteString tile = tiles.StripOrTile(y / GetParam().Height * tilesInARow + x / GetParam().Width);
                const size_t at = size_t{y % GetParam().Height * GetParam().Width + x % GetParam().Width} * 3;
                strip.insert(strip.end(), {tile.at(at), tile.at(at + 1), tile.at(at + 2)});
            }
        return strip;
    }
};

TEST_P(TilesOfFirstDirectory, GiveTheSameThumbnailAsAStrip)
{
    const CTiffDirectory tiles = Directory();
    Open(WithDirectory(CTiffDirectory(50, 40).Samples(3).Data({Strip(tiles)})));
    const ByteString expected = Thumbnail();
    Open(WithDirectory(tiles));
    EXPECT_EQ(Thumbnail(), expected);
    EXPECT_EQ(Thumbnail(), expected);
}

INSTANTIATE_TEST_SUITE_P(Sizes, TilesOfFirstDirectory,
                         testing::Values(TileRow{{"Small"}, 16, 16}, TileRow{{"OfWholeKilobytes"}, 32, 32},
                                         TileRow{{"LargerThanThePicture"}, 80, 48}),
                         NameOfRow());

TEST_F(Thumbnails, OfTheFirstDirectoryDoNotFitIntoOneByteLess)
{
    Open(Document().With(Stack(1)).FirstDirectory(Drawing(), FirstDirectoryKind::Raw));
    EXPECT_EQ(Size(), AC_RESULT_SUCCESS);
    ByteString buffer(Count - 1);
    EXPECT_EQ(Read(buffer.data(), static_cast<UINT>(buffer.size())), AC_RESULT_INVALID_PARAM);
}

TEST_F(Thumbnails, AnswerAgainAfterOtherDirectoriesWereRead)
{
    Open(Document().With(Stack(1).Size(64, 64).InDocument(16)).FirstDirectory(Drawing(), FirstDirectoryKind::Raw));
    const ByteString thumbnail = Thumbnail();
    const ByteString body = BodyOf(Tile(0, 1));
    EXPECT_EQ(Thumbnail(), thumbnail);
    EXPECT_EQ(BodyOf(Tile(0, 1)), body);
}

TEST_F(Thumbnails, AreNoneWithoutAFirstDirectory)
{
    Open(Document().With(Stack(1)).WithoutFirstDirectory());
    EXPECT_EQ(Size(), AC_RESULT_DATA_NOT_SUPPORTED);
}

struct UnreadableRow : Row
{
    CTiffDirectory Directory;
};

class UnreadableDirectory : public Thumbnails, public testing::WithParamInterface<UnreadableRow>
{
protected:
    AC_Result ReadIntoAMegabyte()
    {
        ByteString buffer(1u << 20);
        return Read(buffer.data(), static_cast<UINT>(buffer.size()));
    }
};

TEST_P(UnreadableDirectory, GivesNoThumbnail)
{
    Open(WithDirectory(GetParam().Directory));
    EXPECT_EQ(ReadIntoAMegabyte(), AC_RESULT_DATA_NOT_SUPPORTED);
    EXPECT_EQ(ReadIntoAMegabyte(), AC_RESULT_DATA_NOT_SUPPORTED);
    EXPECT_EQ(Count, Untouched);
}

INSTANTIATE_TEST_SUITE_P(
    Directories, UnreadableDirectory,
    testing::Values(UnreadableRow{{"NoWidth"}, CTiffDirectory(8, 8).Drop(256)},
                    UnreadableRow{{"NoHeight"}, CTiffDirectory(8, 8).Drop(257)},
                    UnreadableRow{{"TooWide"}, CTiffDirectory(65536, 1)},
                    UnreadableRow{{"ShortTile"}, CTiffDirectory(8, 8).Tiles(16, 16).Data({ByteString(255)})},
                    UnreadableRow{{"TilesBeyondTheFile"},
                                  CTiffDirectory(8, 8).Tiles(16, 16).Set(323, TiffType::Long, {1u << 20})},
                    UnreadableRow{{"NoJpeg"}, CTiffDirectory(8, 8).Compression(7).Data({BytesOf("no picture")})}),
    NameOfRow());

class LargeDirectory : public Thumbnails, public testing::WithParamInterface<UnreadableRow>
{
};

TEST_P(LargeDirectory, GivesNoThumbnailNotEvenItsSize)
{
    Open(WithDirectory(GetParam().Directory));
    EXPECT_EQ(Size(), AC_RESULT_DATA_NOT_SUPPORTED);
}

CTiffDirectory Claiming(uint32_t width, uint32_t height)
{
    CTiffDirectory directory(8, 8);
    return directory.Set(256, TiffType::Long, {width}).Set(257, TiffType::Long, {height});
}

INSTANTIATE_TEST_SUITE_P(Directories, LargeDirectory,
                         testing::Values(UnreadableRow{{"Wide"}, Claiming(0xFFFFFFFF, 1)},
                                         UnreadableRow{{"High"}, Claiming(1, 0xFFFFFFFF)},
                                         UnreadableRow{{"JustTooLarge"}, Claiming(65536, 21846)},
                                         UnreadableRow{{"Both"}, Claiming(0xFFFFFFFF, 0xFFFFFFFF)}),
                         NameOfRow());

class ClaimedSize : public Thumbnails, public testing::WithParamInterface<UnreadableRow>
{
};

TEST_P(ClaimedSize, IsToldWhateverTheFileHolds)
{
    const CTiffDirectory& directory = GetParam().Directory;
    Open(WithDirectory(directory));
    EXPECT_EQ(Size(), AC_RESULT_SUCCESS);
    EXPECT_GT(Count, 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Directories, ClaimedSize,
    testing::Values(UnreadableRow{{"AsWideAsCanBe"}, Claiming(65535, 1)},
                    UnreadableRow{{"AsHighAsCanBe"}, Claiming(1, 65535)},
                    UnreadableRow{{"WiderThanCanBe"}, Claiming(65536, 1)},
                    UnreadableRow{{"HigherThanCanBe"}, Claiming(1, 65536)},
                    UnreadableRow{{"MoreThanTheFile"}, Claiming(1000, 1000)},
                    UnreadableRow{{"MuchMoreThanTheFile"}, Claiming(30000, 30000)},
                    UnreadableRow{{"Jpeg2000"}, Claiming(4000, 4000).Compression(34712).Data({BytesOf("coded")})}),
    NameOfRow());

TEST_F(Thumbnails, OfMorePixelsThanAnyThumbnailHasAreNotTried)
{
    Open(WithDirectory(Claiming(9000, 9000).Compression(7).Data({ByteString(200000, 'x')})));
    EXPECT_EQ(Size(), AC_RESULT_SUCCESS);
    const auto room = std::make_unique_for_overwrite<BYTE[]>(Count); // takes no memory before it is written to
    const std::string log = LogOf([&] { EXPECT_EQ(Read(room.get(), Count), AC_RESULT_DATA_NOT_SUPPORTED); });
    EXPECT_THAT(log, testing::Not(testing::HasSubstr("JPEG"))); // which would be libtiff's complaint
}

TEST_F(Thumbnails, OfAFirstDirectoryThatIsGoneAreNone)
{
    Open(Document().With(Stack(1).Size(64, 64).InDocument(16)).FirstDirectory(Drawing(), FirstDirectoryKind::Raw));
    BodyOf(Tile(0, 1)); // the file stands on another directory now
    std::filesystem::resize_file(Folder().Path() / "slide.zel", 100);
    EXPECT_EQ(Size(), AC_RESULT_DATA_NOT_SUPPORTED);
}

struct CompressionRow : Row
{
    uint16_t Code;
    std::string Name;
};

class CompressionOfDirectory : public Thumbnails, public testing::WithParamInterface<CompressionRow>
{
};

TEST_P(CompressionOfDirectory, IsToldInTheLogWhenItIsNotDecoded)
{
    Open(WithDirectory(CTiffDirectory(8, 8).Compression(GetParam().Code).Data({BytesOf("coded")})));
    EXPECT_EQ(Size(), AC_RESULT_SUCCESS);
    ByteString buffer(Count);
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = Read(buffer.data(), static_cast<UINT>(buffer.size())); });
    EXPECT_EQ(result, AC_RESULT_DATA_NOT_SUPPORTED);
    EXPECT_THAT(messages, Contains("compression format for IFD0 is " + GetParam().Name +
                                   ". Decompression is not yet supported by ZEL plugin!"));
}

INSTANTIATE_TEST_SUITE_P(Codes, CompressionOfDirectory,
                         testing::Values(CompressionRow{{"OldJpeg"}, 6, "JPEG"},
                                         CompressionRow{{"Jpeg2000"}, 34712, "J2K"}),
                         NameOfRow());

TEST_F(Thumbnails, OfAnUnknownCompressionEndTheProcess)
{
    Open(WithDirectory(CTiffDirectory(8, 8).Compression(32773).Data({BytesOf("coded")})));
    EXPECT_ENDS_THE_PROCESS(Size(), ABORT_WAS_CALLED);
}

TEST_F(Thumbnails, FailAnAssertionWhenAStackLiesInTheFirstDirectory)
{
    Open(Document().With(Stack(1).Size(64, 64).InDocument(16)).WithoutFirstDirectory());
    EXPECT_EQ(Size(), AC_RESULT_FAILURE);
}

} // namespace
