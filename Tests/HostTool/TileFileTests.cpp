#include "HostTool/HostError.h"
#include "HostTool/TileFile.h"
#include "SampleDocuments/Picture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <numeric>
#include <png.h>

namespace
{

using namespace HostTool;

CTile RawTile(uint64_t width, uint64_t height, uint64_t bytesPerPixel)
{
    CTile tile;
    tile.Bytes.resize(width * height * bytesPerPixel);
    std::iota(tile.Bytes.begin(), tile.Bytes.end(), uint8_t{1});
    tile.Rect = {0, 0, width, height};
    tile.BytesPerRawPixel = bytesPerPixel;
    return tile;
}

CTile StoredTile(const std::string& bytes)
{
    CTile tile;
    tile.Bytes.assign(bytes.begin(), bytes.end());
    tile.Rect = {0, 0, 16, 16};
    return tile;
}

/// The header of a PNG file, and its 8-bit pixels, read by other means than it was written.
struct Png
{
    explicit Png(const std::string& file, png_uint_32 format = PNG_FORMAT_RGB)
    {
        Image.version = PNG_IMAGE_VERSION;
        EXPECT_TRUE(png_image_begin_read_from_file(&Image, file.c_str())) << Image.message;
        WasLinear = (Image.format & PNG_FORMAT_FLAG_LINEAR) != 0;
        WasColour = (Image.format & PNG_FORMAT_FLAG_COLOR) != 0;
        Image.format = format;
        Pixels.resize(PNG_IMAGE_SIZE(Image));
        EXPECT_TRUE(png_image_finish_read(&Image, nullptr, Pixels.data(), 0, nullptr)) << Image.message;
    }
    png_image Image{};
    bool WasLinear = false; ///< 16 bits
    bool WasColour = false;
    ByteBuffer Pixels;
};

class TileFile : public testing::Test
{
protected:
    size_t NumOfFiles() const
    {
        const std::filesystem::directory_iterator entries(Folder.Path());
        return static_cast<size_t>(std::distance(begin(entries), end(entries)));
    }
    void ExpectRefusal(const CTile& tile, const std::string& name, const std::string& advice)
    {
        try
        {
            WriteTile(tile, Folder.Name(name));
            FAIL() << "nothing was thrown";
        }
        catch (const CHostError& error)
        {
            EXPECT_EQ(error.Code(), ExitCode::WrongUsage);
            EXPECT_NE(std::string(error.what()).find(advice), std::string::npos) << error.what();
        }
        EXPECT_EQ(NumOfFiles(), 0u);
    }

    TestSupport::TemporaryFolder Folder;
};

struct Kind
{
    std::string Name;
    std::string Bytes;
    std::string Extension;
};

std::ostream& operator<<(std::ostream& stream, const Kind& kind)
{
    return stream << kind.Name;
}

class TileFileOfKind : public TileFile, public testing::WithParamInterface<Kind>
{
};

TEST_P(TileFileOfKind, HoldsTheStoredBytesUnderTheExtensionThatFits)
{
    WriteTile(StoredTile(GetParam().Bytes), Folder.Name("tile"));
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("tile" + GetParam().Extension)), GetParam().Bytes);
    EXPECT_EQ(NumOfFiles(), 1u);
}

using namespace std::string_literals;

INSTANTIATE_TEST_SUITE_P(Compressed, TileFileOfKind,
                         testing::Values(Kind{"Jpeg", "\xFF\xD8\xFF\xE0 and so on", ".jpg"},
                                         Kind{"Jpeg2000", "\0\0\0\x0CjP  \r\n\x87\n and so on"s, ".jp2"},
                                         Kind{"Jpeg2000Codestream", "\xFF\x4F\xFF\x51 and so on", ".j2k"},
                                         Kind{"Png", "\x89PNG\r\n\x1A\n and so on", ".png"},
                                         Kind{"Bmp", "BM and so on", ".bmp"}, Kind{"Other", "something else", ".raw"}),
                         [](const auto& kind) { return kind.param.Name; });

TEST_F(TileFile, IsNotGivenTheExtensionOfAnotherKind)
{
    ExpectRefusal(StoredTile("\xFF\xD8\xFF\xE0"), "tile.png", "ends in .jpg");
}

TEST_F(TileFile, TakesTheOtherSpellingOfItsExtension)
{
    WriteTile(StoredTile("\xFF\xD8\xFF\xE0"), Folder.Name("tile.jpeg"));
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("tile.jpeg")), "\xFF\xD8\xFF\xE0");
}

TEST_F(TileFile, OfRawGreyPixelsIsAPngPicture)
{
    const CTile tile = RawTile(5, 3, 1);
    WriteTile(tile, Folder.Name("tile"));
    const Png png(Folder.Name("tile.png"), PNG_FORMAT_GRAY);
    EXPECT_EQ(png.Image.width, 5u);
    EXPECT_EQ(png.Image.height, 3u);
    EXPECT_FALSE(png.WasColour);
    EXPECT_EQ(png.Pixels, tile.Bytes);
}

TEST_F(TileFile, OfRawPixelsWithBlueFirstHasItsColoursInOrder)
{
    CTile tile = RawTile(1, 1, 3);
    tile.ColorSpace = "BGR";
    WriteTile(tile, Folder.Name("tile.png"));
    EXPECT_EQ(Png(Folder.Name("tile.png")).Pixels, (ByteBuffer{3, 2, 1}));
}

TEST_F(TileFile, OfRawPixelsWithRedFirstHasItsColoursInOrder)
{
    CTile tile = RawTile(1, 1, 3);
    tile.ColorSpace = "RGB";
    WriteTile(tile, Folder.Name("tile.png"));
    EXPECT_EQ(Png(Folder.Name("tile.png")).Pixels, (ByteBuffer{1, 2, 3}));
}

TEST_F(TileFile, OfRawPixelsOf16BitsKeepsThem)
{
    const CTile tile = RawTile(4, 3, 2);
    WriteTile(tile, Folder.Name("tile.png"));
    const SampleDocuments::CPicture picture = SampleDocuments::LoadPicture(Folder.Name("tile.png"));
    EXPECT_EQ(picture.Bits(), 16);
    EXPECT_EQ(SampleDocuments::PackedRows(picture), SampleDocuments::ByteString(tile.Bytes.begin(), tile.Bytes.end()));
}

TEST_F(TileFile, OfPixelsThatPngCannotHoldIsRaw)
{
    const CTile tile = RawTile(2, 2, 4);
    const std::string line = WriteTile(tile, Folder.Name("tile"));
    const std::string stored = TestSupport::BytesOf(Folder.Name("tile.raw"));
    EXPECT_EQ(ByteBuffer(stored.begin(), stored.end()), tile.Bytes);
    EXPECT_NE(line.find("raw pixels, 2 x 2 of 4 bytes"), std::string::npos) << line;
}

TEST_F(TileFile, OfPixelsThatPngCannotHoldIsNotCalledPng)
{
    ExpectRefusal(RawTile(2, 2, 4), "tile.png", "ends in .raw");
}

TEST_F(TileFile, IsRawWhenItsNameSaysSo)
{
    WriteTile(RawTile(2, 2, 1), Folder.Name("tile.raw"));
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("tile.raw")), "\1\2\3\4");
}

TEST_F(TileFile, OfFewerBytesThanPixelsIsRaw)
{
    CTile tile = RawTile(2, 2, 1);
    tile.Bytes.pop_back();
    WriteTile(tile, Folder.Name("tile"));
    EXPECT_EQ(TestSupport::BytesOf(Folder.Name("tile.raw")), "\1\2\3");
}

TEST_F(TileFile, InAFolderThatIsNotThereIsRefused)
{
    ExpectRefusal(RawTile(2, 2, 1), "nowhere/tile.png", "cannot be written");
}

} // namespace
