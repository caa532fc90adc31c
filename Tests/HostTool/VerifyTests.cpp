#include "HostTool/Verify/VerifyReport.h"
#include "SampleDocuments/Slide.h"
#include "Tests/HostTool/ZelProgram.h"

#include <gmock/gmock.h>

namespace
{

using namespace ZelTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// `zel verify`: a verdict for each tile.
class ZelVerify : public ZelProgram
{
protected:
    CommandResult Verify(Words options = {}) const
    {
        Words words = {"verify", SlideName()};
        words.insert(words.end(), options.begin(), options.end());
        return Run(words);
    }
    void ExpectSound(const std::string& text, Words options = {}) const
    {
        const CommandResult result = Verify(std::move(options));
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_THAT(result.Output, HasSubstr(text));
    }
    /// Exit code 1, one line of error that counts the bad tiles, and `text` in the report.
    void ExpectBad(int numOfBadTiles, const std::string& text, Words options = {}) const
    {
        const CommandResult result = Verify(std::move(options));
        EXPECT_EQ(result.ExitCode, 1);
        EXPECT_EQ(NumOfLines(result.Errors), 1u) << result.Errors;
        EXPECT_THAT(result.Errors, HasSubstr(": " + std::to_string(numOfBadTiles) +
                                             (numOfBadTiles == 1 ? " bad tile;" : " bad tiles;")));
        EXPECT_THAT(result.Output, HasSubstr(text));
    }
    /// A slide of 3 x 2 JPEG tiles with a picture in each.
    static Stack Encoded()
    {
        auto stack = Stack(1).Size(300, 200).Tiles(100, 100).Jpeg(3);
        stack.Contents(EncodedPixelsOf(stack.Plan()));
        return stack;
    }
    /// The same with other bytes in the tile of column 1, row 0.
    void WriteWithBytes(const std::function<void(ByteString& bytes)>& edit)
    {
        Document document;
        document.With(Encoded());
        edit(document.Store(1).Tiles[1].Body);
        Write(document);
    }
};

TEST_F(ZelVerify, CountsTheStoredTilesOfEachLevel)
{
    Write(Stack(1).Name("Tissue").Size(700, 300).Tiles(256, 256).Levels(2).Channels(2));
    ExpectSound("\ngroup 0, name Tissue\n"
                "  level 0: 3 x 2 x 2 planes, 12 stored\n"
                "    ###\n"
                "    ###\n"
                "  level 1: 2 x 1 x 2 planes, 4 stored\n"
                "    ##\n");
}

TEST_F(ZelVerify, TakesAbsentTilesAsTheyAre)
{
    Write(Stack(1).Size(700, 300).Tiles(256, 256).MissingTile(0, 1, 1));
    ExpectSound("  level 0: 3 x 2, 5 stored, 1 absent\n"
                "    ###\n"
                "    #.#\n");
}

TEST_F(ZelVerify, ShowsATileThatIsAbsentInSomePlanes)
{
    Write(Stack(1).Size(500, 200).Tiles(256, 256).Z(2).Missing([](const auto& place)
                                                               { return place.Column == 1 && place.At.Z == 1; }));
    ExpectSound("    #+\n");
}

TEST_F(ZelVerify, CountsColumnsFromTheFirstThatExists)
{
    Write(Stack(1).Size(1000, 400).Tiles(256, 256).Level(0, Columns(-1, 3), Rows(0, 1)).MissingTile(0, -1, 1));
    ExpectSound("    #####\n    .####\n");
}

TEST_F(ZelVerify, TellsATileOutOfItsFileAndGoesOn)
{
    Document document;
    document.With(Stack(1).Size(700, 200).Tiles(256, 256).Jpeg());
    document.Store(1).Tiles[1].Size = 1U << 20;
    Write(document);
    const CommandResult result = Verify();
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Output,
                HasSubstr("level 0, column 1, row 0, channel 0, z 0, t 0, lambda 0: out of file: 1048576"));
}

TEST_F(ZelVerify, TellsATileOutOfItsFileInAGroupThatLiesFarFromTheOthers)
{
    Document document;
    document.With(Stack(1).Origin(200, 0))
        .With(Stack(2).Size(700, 200).Tiles(256, 256).Raw(ComponentType::Uint8).Origin(1205.5, 807));
    document.Store(2).Tiles[1].Size = 1U << 20;
    Write(document);
    ExpectBad(1, "1 out of file\n    #X#\n");
}

TEST_F(ZelVerify, TellsARawTileThatIsTooShort)
{
    Document document;
    document.With(Stack(1).Size(700, 200).Tiles(256, 256).Raw(ComponentType::Uint16));
    document.Store(1).Tiles[2].Body.pop_back();
    Write(document);
    ExpectBad(1, "3 x 1, 2 stored, 1 short\n    ##X\n");
}

TEST_F(ZelVerify, TellsAJpegTileWithoutItsEnd)
{
    WriteWithBytes([](ByteString& bytes) { bytes[bytes.size() - 2] = 0x12; });
    ExpectBad(1, "3 x 2, 5 stored, 1 short\n    #X#\n    ###\n");
}

TEST_F(ZelVerify, DecodesWhereItIsAskedTo)
{
    WriteWithBytes(
        [](ByteString& bytes)
        {
            const std::array<uint8_t, 2> startOfFrame = {0xFF, 0xC0};
            const auto frame = std::search(bytes.begin(), bytes.end(), startOfFrame.begin(), startOfFrame.end());
            frame[6] = 99; // the height, which is 100
        });
    ExpectSound("6 stored\n");
    ExpectBad(1, "5 stored, 1 undecodable\n    #X#\n    ###\n", {"--decode"});
}

TEST_F(ZelVerify, TellsAStreamThatDoesNotBeginAsOneWithoutDecodingIt)
{
    WriteWithBytes([](ByteString& bytes) { std::fill_n(bytes.begin(), 20, uint8_t{0}); });
    ExpectBad(1, "column 1, row 0, channel 0, z 0, t 0, lambda 0: undecodable: it does not begin as a JPEG stream");
}

TEST_F(ZelVerify, TellsAJpeg2000StreamThatDoesNotBeginOrEndAsOne)
{
    CSlideOptions options;
    options.Compression = StoreCompression::J2k;
    options.TileWidth = options.TileHeight = 64;
    const auto write = [&](const std::function<void(ByteString&)>& edit)
    {
        Document document;
        document.With(StackFromPicture(DrawPicture(128, 64), options, 1));
        edit(document.Store(1).Tiles[1].Body);
        Write(document);
    };
    write([](ByteString&) {});
    ExpectSound("summary: 3 stored;");
    write([](ByteString& bytes) { bytes[1] = 0; });
    ExpectBad(1, "undecodable: it does not begin as a JPEG 2000 stream");
    write([](ByteString& bytes) { bytes.back() = 0; });
    ExpectBad(1, "2 stored, 1 short");
}

TEST_F(ZelVerify, TakesWhatIsNotServedForAFailureIfItIsStrict)
{
    Write(Stack(1).Size(128, 64).Tiles(64, 64).InDocument());
    ExpectSound("1 stored, 1 not served");
    const CommandResult result = Verify({"--strict"});
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, HasSubstr("--strict: 1 tile not served"));
}

TEST_F(ZelVerify, DecodesSoundTilesWithoutAComplaint)
{
    Write(Encoded());
    ExpectSound("6 stored\n", {"--decode", "--jobs", "4"});
}

TEST_F(ZelVerify, ListsEachTileOnRequest)
{
    Write(Stack(1).Size(300, 100).Tiles(100, 100).Raw(ComponentType::Uint8).MissingTile(0, 1, 0));
    ExpectSound("    column 0, row 0, channel 0, z 0, t 0, lambda 0: stored, 10000 bytes\n"
                "    column 1, row 0, channel 0, z 0, t 0, lambda 0: absent\n",
                {"--list"});
}

TEST_F(ZelVerify, SaysWhatThePluginDoesNotHandOut)
{
    Write(Stack(1).Size(100, 80).InTiffStore(20));
    ExpectSound("1 x 4, 3 stored, 1 not served\n    #\n    #\n    #\n    ?\n");
}

TEST_F(ZelVerify, AnswersThatASideFileIsMissing)
{
    Write(Stack(1).WithoutStore());
    ExpectRefusal(Verify(), 3, "a tile store is missing");
}

TEST_F(ZelVerify, FindsADocumentToBeTheSameAsBefore)
{
    Write(Encoded());
    Verify({"--hashes", Folder.Name("hashes.json")});
    ExpectSound("the same as in ", {"--against", Folder.Name("hashes.json")});
}

TEST_F(ZelVerify, FindsTheTileWhoseBytesAreNotAsBefore)
{
    Write(Encoded());
    Verify({"--hashes", Folder.Name("hashes.json")});
    WriteWithBytes([](ByteString& bytes) { bytes[bytes.size() / 2] ^= 1; });
    const CommandResult result = Verify({"--against", Folder.Name("hashes.json")});
    EXPECT_EQ(result.ExitCode, 5);
    EXPECT_THAT(result.Output,
                HasSubstr("  group 0, level 0, column 1, row 0, channel 0, z 0, t 0, lambda 0: other bytes\n"));
    EXPECT_THAT(result.Output, Not(HasSubstr("column 2, row 0")));
}

TEST_F(ZelVerify, FindsTheTileThatHasGone)
{
    Write(Encoded());
    Verify({"--hashes", Folder.Name("hashes.json")});
    Write(Encoded().MissingTile(0, 1, 0));
    EXPECT_THAT(Verify({"--against", Folder.Name("hashes.json")}).Output, HasSubstr("was stored, is absent\n"));
}

TEST_F(ZelVerify, FindsAnotherGrid)
{
    Write(Encoded());
    Verify({"--hashes", Folder.Name("hashes.json")});
    Write(Stack(1).Size(300, 300).Tiles(100, 100).Jpeg(3));
    EXPECT_THAT(Verify({"--against", Folder.Name("hashes.json")}).Output, HasSubstr("level 0: has another grid"));
}

TEST_F(ZelVerify, RefusesHashesThatAreNone)
{
    Write(Stack(1));
    Folder.Write("other.json", "{\"format\": \"other\"}");
    const CommandResult result = Verify({"--against", Folder.Name("other.json")});
    EXPECT_EQ(result.ExitCode, 2);
    EXPECT_THAT(result.Errors, HasSubstr("holds no hashes of tiles"));
}

TEST_F(ZelVerify, RefusesHashesThatAreCutShort)
{
    Write(Stack(1));
    Folder.Write("cut.json", R"({"format": "zel tile hashes", "version": 1, "groups": [{}]})");
    const CommandResult result = Verify({"--against", Folder.Name("cut.json")});
    EXPECT_EQ(result.ExitCode, 2);
    EXPECT_THAT(result.Errors, HasSubstr("is damaged"));
}

/// A way to keep the pixels of a slide.
struct Storage
{
    std::string Name;
    CSlideOptions Options;
};

class ZelVerifyOf : public ZelVerify, public testing::WithParamInterface<Storage>
{
};

TEST_P(ZelVerifyOf, DecodesAllThatIsHandedOut)
{
    Write(SlideFromPicture(DrawPicture(300, 200), GetParam().Options));
    const CommandResult result = Verify({"--decode"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors << result.Output;
}

CSlideOptions Options(StackStorage::E storage, uint32_t compression, uint32_t rowsPerStrip = 0)
{
    CSlideOptions options;
    options.TileWidth = options.TileHeight = 64;
    options.Storage = storage;
    options.Compression = compression;
    options.RowsPerStrip = rowsPerStrip;
    return options;
}

INSTANTIATE_TEST_SUITE_P(
    Storages, ZelVerifyOf,
    testing::Values(Storage{"Raw", Options(StackStorage::BinaryStore, StoreCompression::Raw)},
                    Storage{"Jpeg", Options(StackStorage::BinaryStore, StoreCompression::Jpeg)},
                    Storage{"J2k", Options(StackStorage::BinaryStore, StoreCompression::J2k)},
                    Storage{"Png", Options(StackStorage::BinaryStore, StoreCompression::Png)},
                    Storage{"Bmp", Options(StackStorage::BinaryStore, StoreCompression::Bmp)},
                    Storage{"TiffRaw", Options(StackStorage::TiffStore, StoreCompression::Raw)},
                    Storage{"TiffJpeg", Options(StackStorage::TiffStore, StoreCompression::Jpeg)},
                    Storage{"TiffJ2k", Options(StackStorage::TiffStore, StoreCompression::J2k)},
                    Storage{"TiffStrips", Options(StackStorage::TiffStore, StoreCompression::Jpeg, 40)},
                    Storage{"DocumentJpeg", Options(StackStorage::InDocument, StoreCompression::Jpeg, Stack::OneStrip)},
                    Storage{"DocumentJ2k", Options(StackStorage::InDocument, StoreCompression::J2k, 64)}),
    [](const auto& storage) { return storage.param.Name; });

HostTool::CCheckedLevel Level(uint64_t cols, uint64_t rows)
{
    HostTool::CCheckedLevel level;
    level.Grid = {cols, rows};
    level.Frames.resize(1);
    level.Verdicts.resize(cols * rows, HostTool::Verdict::Stored);
    return level;
}

TEST(MapOfALevel, HasAPlaceForEachTile)
{
    EXPECT_THAT(HostTool::MapOf(Level(3, 2), 64, 24), ElementsAre("###", "###"));
}

TEST(MapOfALevel, IsMadeSmallerWhereItIsTooWide)
{
    EXPECT_THAT(HostTool::MapOf(Level(9, 4), 5, 24), ElementsAre("#####", "#####"));
}

TEST(MapOfALevel, IsMadeSmallerWhereItIsTooHigh)
{
    EXPECT_THAT(HostTool::MapOf(Level(2, 9), 64, 3), ElementsAre("#", "#", "#"));
}

TEST(MapOfALevel, ShowsTheWorstOfWhatAPlaceStandsFor)
{
    auto level = Level(4, 2);
    level.Verdicts[2] = HostTool::Verdict::Absent;
    level.Verdicts[7] = HostTool::Verdict::Undecodable;
    EXPECT_THAT(HostTool::MapOf(level, 2, 24), ElementsAre("#X"));
    level.Verdicts[7] = HostTool::Verdict::Stored;
    EXPECT_THAT(HostTool::MapOf(level, 2, 24), ElementsAre("#+"));
}

} // namespace
