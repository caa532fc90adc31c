/// The commands that tell what the plug-in's interface can't: `zel files`, `zel tiles` and `zel tree`.

#include "HostTool/Base64.h"
#include "HostTool/Reader/FieldText.h"
#include "HostTool/Reader/TileIndex.h"
#include "Tests/HostTool/ZelProgram.h"
#include "Tests/Support/ChildProcess.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>

namespace
{

using namespace ZelTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::json;

class ZelFiles : public ZelProgram
{
};

TEST_F(ZelFiles, TellsTheRoleAndSizeOfEach)
{
    Write(Document().With(Stack(1)).With(Stack(7).InTiffStore()));
    Folder.Write("_slide_/note.txt", "12345");
    const CommandResult result = Run({"files", SlideName()});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_THAT(result.Output, HasSubstr("document               " + SlideName() + "\n"));
    EXPECT_THAT(result.Output, HasSubstr("tile store of stack 1  " + Folder.Name("_slide_/stack1/frame_t.kor") + "\n"));
    EXPECT_THAT(result.Output, HasSubstr("tile store of stack 7  " + Folder.Name("_slide_/stack7/frame_t.tif") + "\n"));
    EXPECT_THAT(result.Output, HasSubstr("\n5 "));
    EXPECT_THAT(result.Output, HasSubstr("other                  " + Folder.Name("_slide_/note.txt") + "\n"));
}

TEST_F(ZelFiles, TellsWhatIsMissing)
{
    Write(Document().With(Stack(1)).With(Stack(2).WithoutStore()));
    const CommandResult result = Run({"files", SlideName()});
    ExpectRefusal(result, 3, Folder.Name("_slide_/stack2/frame_t.kor") + ": the tile store of stack 2 is missing");
    EXPECT_THAT(result.Output, HasSubstr("missing  tile store of stack 2"));
}

TEST_F(ZelFiles, AreOneForADocumentThatKeepsItsPixelsItself)
{
    Write(Stack(1).Size(64, 48).InDocument(16));
    EXPECT_EQ(NumOfLines(Run({"files", SlideName()}).Output), 2u); // the head, and the document
}

class ZelTiles : public ZelProgram
{
protected:
    Json Tiles(Words options = {}) const
    {
        Words words = {"tiles", SlideName(), "--json"};
        words.insert(words.end(), options.begin(), options.end());
        const CommandResult result = Run(words);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return Json::parse(result.Output);
    }
    /// The bytes that a line of `tiles` points at.
    static std::string BytesAt(const Json& tiles, size_t number)
    {
        const auto& fields = tiles.at("fields");
        const auto at = [&](const char* name)
        {
            const auto field = std::find(fields.begin(), fields.end(), name);
            return tiles.at("tiles").at(number).at(static_cast<size_t>(field - fields.begin())).get<size_t>();
        };
        return TestSupport::BytesOf(tiles.at("file")).substr(at("offset"), at("bytes"));
    }
};

TEST_F(ZelTiles, AreRefusedInALineWhereNoFileCanBeOpenedAnyMore)
{
    Write(Stack(1).Jpeg());
    const auto result = [this]
    {
        const HostTool::CReaderDocument document(SlideName());
        constexpr rlimit none{0, 0};
        setrlimit(RLIMIT_NOFILE, &none);
        try
        {
            HostTool::TileIndexOf(document);
        }
        catch (const HostTool::CHostError& error)
        {
            return static_cast<int>(error.Code());
        }
        return 0;
    };
    EXPECT_EQ(TestSupport::RunInChild(result), TestSupport::ExitedWith(1));
}

TEST_F(ZelTiles, TellsWhereTheBytesLie)
{
    const auto stack = Stack(1).Size(300, 100).Tiles(100, 100).Jpeg();
    Write(stack);
    const Json tiles = Tiles();
    ASSERT_EQ(tiles.at("tiles").size(), 3u);
    EXPECT_EQ(BytesAt(tiles, 2), TextOf(stack.TileBytes(0, 2, 0)));
    EXPECT_EQ(tiles.at("channels").at(0).at("compression"), "JPEG");
}

/// A document, by whose columns and rows `zel tiles` and `zel tile` have to mean the same.
struct Numbered
{
    std::string Name;
    Document Slide;
};

class ZelTilesNumbered : public ZelTiles, public testing::WithParamInterface<Numbered>
{
};

TEST_P(ZelTilesNumbered, AsTheAreasOfTheInterface)
{
    Write(GetParam().Slide);
    const Json tiles = Tiles({"-g", "1"});
    ASSERT_FALSE(tiles.at("tiles").empty());
    for (size_t i = 0; i < tiles.at("tiles").size(); ++i)
    {
        const Json& tile = tiles.at("tiles").at(i);
        const CommandResult result =
            Run({"tile", SlideName(), "-g", "1", "-l", tile.at(0).dump(), "-x", tile.at(1).dump(), "-y",
                 tile.at(2).dump(), "-z", tile.at(4).dump(), "-o", Folder.Name("tile.raw")});
        EXPECT_EQ(result.ExitCode, 0) << tile << result.Errors;
        EXPECT_EQ(Output("tile.raw"), BytesAt(tiles, i)) << tile;
    }
}

/// A second group far from the first one, whose tiles `more` changes.
Document FarFromTheFirst(const std::string& unit, const std::function<void(Stack&)>& more)
{
    Stack second(2);
    second.Size(128, 48).Tiles(32, 16).Raw(ComponentType::Uint8).Unit(unit).Origin(100, 100).Scale(0.5, 0.5);
    more(second);
    return Document().With(Stack(1).Size(128, 48).Tiles(32, 16).Unit(unit).Origin(0, 0).Scale(0.5, 0.5)).With(second);
}

constexpr auto HasNoFirstColumn = [](const CTilePlace& place) { return place.Column == 0 && place.Level == 0; };

INSTANTIATE_TEST_SUITE_P(
    Documents, ZelTilesNumbered,
    testing::Values(
        Numbered{"Micrometres", FarFromTheFirst("10^-6m^1", [](Stack& stack) { stack.Missing(HasNoFirstColumn); })},
        Numbered{"Millimetres", FarFromTheFirst("10^-3m^1", [](Stack& stack) { stack.Missing(HasNoFirstColumn); })},
        Numbered{"Levels",
                 FarFromTheFirst("10^-3m^1", [](Stack& stack) { stack.Levels(2).Missing(HasNoFirstColumn); })},
        Numbered{"BeforeTheOrigin",
                 FarFromTheFirst("10^-6m^1", [](Stack& stack) { stack.Level(0, Columns(-2, 3), Rows(-1, 2)).Z(2); })}),
    [](const auto& test) { return test.param.Name; });

TEST_F(ZelTiles, TellsWhereTheBytesLieInATiffStore)
{
    Write(Stack(1).Size(300, 100).Tiles(128, 128).Z(2).InTiffStore());
    const Json tiles = Tiles();
    ASSERT_EQ(tiles.at("tiles").size(), 6u);
    EXPECT_EQ(tiles.at("kind"), "tiff");
    EXPECT_EQ(BytesAt(tiles, 4).size(), 128u * 128u);
    EXPECT_NE(BytesAt(tiles, 0), BytesAt(tiles, 4));
}

TEST_F(ZelTiles, TellsWhereTheBytesLieInTheDocument)
{
    Write(Stack(1).Size(64, 48).InDocument(16));
    const Json tiles = Tiles();
    ASSERT_EQ(tiles.at("tiles").size(), 3u);
    EXPECT_EQ(tiles.at("file"), SlideName());
    EXPECT_EQ(BytesAt(tiles, 2).size(), 64u * 16u);
}

TEST_F(ZelTiles, TellsThePlaceInTilesPixelsAndMicrometres)
{
    Write(Stack(1).Size(300, 200).Tiles(100, 100).Scale(0.25, 0.5).Unit("10^-6m^1"));
    const Json tile = Tiles().at("tiles").at(5);
    EXPECT_EQ(tile.at(1), 2); // column
    EXPECT_EQ(tile.at(2), 1); // row
    EXPECT_THAT(std::vector<double>(tile.begin() + 10, tile.end()), ElementsAre(200, 100, 50, 50));
}

TEST_F(ZelTiles, CountsColumnsFromTheFirstThatExists)
{
    Write(Stack(1).Size(1000, 400).Tiles(256, 256).Level(0, Columns(-1, 3), Rows(0, 1)));
    const Json tile = Tiles().at("tiles").at(0);
    EXPECT_EQ(tile.at(1), 0);
    EXPECT_EQ(tile.at(10), -256); // pixels left of the picture
}

TEST_F(ZelTiles, CountColumnsFrom0InAGroupThatLiesFarFromTheOthers)
{
    Write(Document()
              .With(Stack(1).Size(300, 200).Tiles(100, 100).Levels(2).Origin(1205.5, 807).Scale(0.25, 0.25))
              .With(Stack(2).Origin(200, 0)));
    const Json tiles = Tiles().at("tiles");
    EXPECT_EQ(tiles.at(0).at(1), 0);
    EXPECT_EQ(tiles.at(0).at(10), 0);
    EXPECT_EQ(tiles.at(6).at(0), 1); // the first tile of level 1
    EXPECT_EQ(tiles.at(6).at(1), 0);
}

TEST_F(ZelTiles, CanBeThoseOfOneLevel)
{
    Write(Stack(1).Size(300, 100).Tiles(100, 100).Levels(2));
    EXPECT_EQ(Tiles({"-l", "1"}).at("tiles").size(), 2u);
}

TEST_F(ZelTiles, ComeWithTheJpegTablesThatStandApart)
{
    Write(Stack(1).Size(64, 64).Tiles(64, 64).Jpeg(3).InTiffStore().TiffCompression(7).JpegTables(
        {0xFF, 0xD8, 0xFF, 0xD9, 1, 2}));
    EXPECT_EQ(Tiles().at("jpegTables").at(0).at("base64"), "/9j/2QEC");
}

TEST_F(ZelTiles, AreATableForPeople)
{
    Write(Stack(1).Size(100, 100).Tiles(100, 100).Raw(ComponentType::Uint8));
    EXPECT_THAT(Run({"tiles", SlideName()}).Output,
                HasSubstr("level  column  row  channel  z  t  lambda  offset  bytes  x  y  x um  y um\n"
                          "0      0       0    0        0  0  0       236     10000  0  0  0     0\n"));
}

TEST_F(ZelTiles, AreRefusedOfALevelThatIsNotThere)
{
    Write(Stack(1));
    ExpectRefusal(Run({"tiles", SlideName(), "-l", "7"}), 2, "level 7");
    ExpectRefusal(Run({"tiles", SlideName(), "-g", "7"}), 2, "there is no group 7");
}

TEST(Base64, FillsUpTheLastCharacters)
{
    const std::vector<uint8_t> bytes = {'M', 'a', 'n', 'y', '!'};
    EXPECT_EQ(HostTool::ToBase64(std::span(bytes).first(0)), "");
    EXPECT_EQ(HostTool::ToBase64(std::span(bytes).first(3)), "TWFu");
    EXPECT_EQ(HostTool::ToBase64(std::span(bytes).first(4)), "TWFueQ==");
    EXPECT_EQ(HostTool::ToBase64(bytes), "TWFueSE=");
}

class ZelTree : public ZelProgram
{
protected:
    CommandResult Tree(Words options = {}) const
    {
        Words words = {"tree", SlideName()};
        words.insert(words.end(), options.begin(), options.end());
        return Run(words);
    }
    void ExpectShown(const std::string& text, Words options = {}) const
    {
        const CommandResult result = Tree(std::move(options));
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_THAT(result.Output, HasSubstr(text));
    }
    /// The output and the one line of error for a damaged tree.
    void ExpectDamage(const std::string& text) const
    {
        const CommandResult result = Tree();
        EXPECT_EQ(result.ExitCode, 1);
        EXPECT_EQ(NumOfLines(result.Errors), 1u) << result.Errors;
        EXPECT_THAT(result.Errors, HasSubstr("the tree is damaged at "));
        EXPECT_THAT(result.Output, HasSubstr(text));
    }
};

TEST_F(ZelTree, ShowsNamesTypesAndValues)
{
    Write(Stack(1).Name("Tissue").Scale(0.25, 0.5));
    ExpectShown("2000 ImgColl: volume of ");
    ExpectShown("2001#1 MultiDimImgs: volume of ");
    ExpectShown("2030 ImgStackName: text = \"Tissue\"\n");
    ExpectShown("2019 ImgFrameScaleRWC: double x 2 = 0.25 0.5\n");
}

TEST_F(ZelTree, ShowsOffsets)
{
    Document document;
    document.With(Stack(1));
    const uint64_t offset = document.OffsetOf({2000, 2001});
    Write(document);
    ExpectShown("\n" + std::string(10 - std::to_string(offset).size(), ' ') + std::to_string(offset) + "      2001#1 ");
}

TEST_F(ZelTree, ShowsTagsThatTheCatalogueDoesNotKnow)
{
    Document document;
    document.With(Stack(1));
    document.Volume({2000}).Add(Int32(4711, 7));
    Write(document);
    ExpectShown("4711 ?: int32 = 7\n");
}

TEST_F(ZelTree, ShowsBlobs)
{
    Write(Document().With(Stack(1)).FileBlob(Blob(6, 2, BytesOf("abc"))));
    ExpectShown("2024 ZelFileBlobs: blob 6, version 2, 3 bytes at ");
}

TEST_F(ZelTree, EndsAtADepth)
{
    Write(Stack(1));
    ExpectShown("2001#1 MultiDimImgs", {"--depth", "1"});
    EXPECT_THAT(Tree({"--depth", "1"}).Output, Not(HasSubstr("2005")));
}

TEST_F(ZelTree, ShowsWhatLiesUnderTags)
{
    Write(Document().With(Stack(1).Name("One")).With(Stack(2).Name("Two")));
    const std::string output = Tree({"--tag", "2000/2001/2005/2030"}).Output;
    EXPECT_EQ(NumOfLines(output), 3u) << output;
    EXPECT_THAT(output, HasSubstr("\"One\""));
    EXPECT_THAT(output, HasSubstr("\"Two\""));
}

TEST_F(ZelTree, SaysSoWhenNothingLiesUnderTheTags)
{
    Write(Stack(1));
    ExpectRefusal(Tree({"--tag", "2000/9"}), 2, "nothing lies under these tags");
    ExpectRefusal(Tree({"--tag", "2000/x"}), 2, "is no way to a field");
}

TEST_F(ZelTree, ReadsOnBehindAVolumeWithoutAHeader)
{
    Document document;
    document.With(Stack(1).Name("Tissue"));
    document.Volume({2000, 2004}).OwnSize(23);
    Write(document);
    ExpectDamage("error: there is no volume's header at ");
    ExpectDamage("\"Tissue\"");
}

TEST_F(ZelTree, ReadsAsFarAsACutFileGoes)
{
    Document document;
    document.With(Stack(1).Name("Tissue"));
    const std::string bytes = TextOf(document.ToBytes());
    Folder.Write("slide.zel", bytes.substr(0, bytes.size() / 2));
    ExpectDamage("lies beyond the end of the file");
}

TEST_F(ZelTree, EndsInATreeThatContainsItself)
{
    Document document;
    document.With(Stack(1));
    document.Volume({2000}).OffsetOfFirstChild(0 - document.OffsetOfVolumeHeader({2000}) + 8);
    Write(document);
    EXPECT_EQ(Tree().ExitCode, 1);
}

TEST_F(ZelTree, NotesAChainThatEndsEarly)
{
    Document document;
    document.With(Stack(1));
    document.Volume({2000}).Count(99);
    Write(document);
    ExpectShown("note: the chain ends behind ");
}

TEST_F(ZelTree, IsRefusedOfAFileThatIsNotThere)
{
    ExpectRefusal(Run({"tree", Folder.Name("none.zel")}), 2, "cannot open");
}

TEST(FieldText, TellsTypesByTheirCodes)
{
    EXPECT_EQ(HostTool::TypeTextOf(5, 4), "int32");
    EXPECT_EQ(HostTool::TypeTextOf(263, 32), "double x 4");
    EXPECT_EQ(HostTool::TypeTextOf(8192, 20), "text");
    EXPECT_EQ(HostTool::TypeTextOf(9999, 4), "type 9999");
}

TEST(FieldText, TellsNumbersWithTheirSign)
{
    const std::vector<uint8_t> bytes = {0xFE, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(HostTool::ValueTextOf(5, bytes, 4), "-2");
    EXPECT_EQ(HostTool::ValueTextOf(6, bytes, 4), "4294967294");
    EXPECT_EQ(HostTool::ValueTextOf(1, std::span(bytes).first(1), 1), "-2");
}

TEST(FieldText, TellsTheFirstOfManyNumbers)
{
    const std::vector<uint8_t> bytes(100, 1);
    EXPECT_EQ(HostTool::ValueTextOf(2, bytes, 100), "1 1 1 1 1 1 1 1 ...");
}

TEST(FieldText, TellsTextsInQuotes)
{
    const std::vector<uint8_t> bytes = {'H', 0, 0xE4, 0, 7, 0};
    EXPECT_EQ(HostTool::ValueTextOf(8192, bytes, 6), "\"H\u00E4?\"");
}

} // namespace
