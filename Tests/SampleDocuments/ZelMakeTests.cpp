#include "SampleDocuments/Bitmap.h"
#include "SampleDocuments/Codecs.h"

#include "Tests/SampleDocuments/Bytes.h"
#include "Tests/Support/Command.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace SampleDocuments;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

namespace
{

class ZelMake : public testing::Test
{
protected:
    TestSupport::CommandResult Run(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), ZELMAKE);
        return TestSupport::RunCommand(arguments);
    }

    /// Exit code 1, and one line that says why.
    void ExpectRefusal(std::vector<std::string> arguments, const std::string& reason)
    {
        const auto result = Run(std::move(arguments));
        EXPECT_EQ(result.ExitCode, 1);
        EXPECT_THAT(result.Errors, StartsWith("zelmake: "));
        EXPECT_THAT(result.Errors, HasSubstr(reason));
        EXPECT_EQ(std::count(result.Errors.begin(), result.Errors.end(), '\n'), 1) << result.Errors;
        EXPECT_EQ(result.Output, "");
    }

    /// The bytes of the first tile of a store: it lies behind the headers, and the first record tells its size.
    ByteString FirstTile() const
    {
        const ByteString store = ReadFile(_store);
        int64_t list = 0;
        uint32_t elements = 0, size = 0;
        std::memcpy(&list, &store[32], 8);
        std::memcpy(&elements, &store[static_cast<size_t>(list)], 4);
        std::memcpy(&size, &store[static_cast<size_t>(list) + 4 + 4 * elements + 8], 4);
        return ByteString(store.begin() + 236, store.begin() + 236 + size);
    }

    TestSupport::TemporaryFolder _folder;
    const std::string _slide = _folder.Name("new/slide.zel");
    const fs::path _store = _folder.Path() / "new" / "_slide_" / "stack1" / "frame_t.kor";
};

TEST_F(ZelMake, DrawsASlideIfNoPictureIsGiven)
{
    const auto result = Run({_slide, "--draw", "300", "200"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_THAT(result.Output, StartsWith("wrote " + _slide));
    EXPECT_THAT(result.Output, HasSubstr("300 x 200 pixels, 2 levels, 1 frames, 3 tiles of 256 x 256"));
    EXPECT_TRUE(fs::exists(_slide));
    EXPECT_EQ(Decode(FirstTile()).Width(), 256u);
}

TEST_F(ZelMake, ShowsThePictureThatIsGiven)
{
    const CPicture picture = DrawPicture(64, 64);
    WriteFile(_folder.Path() / "a.png", EncodePng(picture));
    const auto result = Run({_slide, "--picture", _folder.Name("a.png"), "--tile", "64", "64", "--compression", "png"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_EQ(Decode(FirstTile()), picture);
}

TEST_F(ZelMake, TakesAllItsOptionsAtOnce)
{
    const auto result =
        Run({_slide,          "--draw", "64",       "64", "--grow",   "2", "--whole-tiles", "--tile", "32",       "16",
             "--compression", "raw",    "--bits",   "16", "--z",      "2", "--t",           "2",      "--lambda", "2",
             "--channels",    "2",      "--stacks", "2",  "--levels", "2", "--own-bytes",   "--json"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_THAT(result.Output, HasSubstr("\"id\": 2"));
    EXPECT_THAT(result.Output, HasSubstr("\"frames\": 16"));
    EXPECT_THAT(result.Output, HasSubstr("\"columns\": 4"));
    EXPECT_EQ(FirstTile().size(), 32u * 16u * 2u);
}

struct CStore
{
    const char* Name;
    std::vector<std::string> Options;
    const char* Report;
    const char* File;
};

class ZelMakeStore : public ZelMake, public testing::WithParamInterface<CStore>
{
};

TEST_P(ZelMakeStore, IsWritten)
{
    std::vector<std::string> arguments = {_slide, "--draw", "300", "200", "--store"};
    arguments.insert(arguments.end(), GetParam().Options.begin(), GetParam().Options.end());
    const auto result = Run(arguments);
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_THAT(result.Output, HasSubstr(GetParam().Report));
    EXPECT_TRUE(fs::exists(_folder.Path() / "new" / GetParam().File));
}

constexpr auto TiffStore = "_slide_/stack1/frame_t.tif";

INSTANTIATE_TEST_SUITE_P(
    Kinds, ZelMakeStore,
    testing::Values(
        CStore{"Binary", {"kor"}, "2 levels, 1 frames, 3 tiles of 256 x 256", "_slide_/stack1/frame_t.kor"},
        CStore{"OmeTiff", {"ome-tiff", "--z", "2"}, "2 levels, 2 frames, 6 tiles of 256 x 256", TiffStore},
        CStore{"BigOmeTiff", {"ome-tiff", "--bigtiff"}, "3 tiles of 256 x 256", TiffStore},
        CStore{"StripedTiff", {"tiff", "--strips", "64", "--levels", "1"}, "4 strips of 300 x 64", TiffStore},
        CStore{"OneStripTiff", {"tiff", "--one-strip"}, "2 levels, 1 frames, 2 strips of 300 x 200", TiffStore},
        CStore{"Jpeg2000Tiff", {"tiff", "--compression", "j2k"}, "3 tiles of 256 x 256", TiffStore},
        CStore{
            "JpegDocument", {"document", "--channels", "2"}, "1 levels, 2 frames, 2 strips of 300 x 200", "slide.zel"},
        CStore{"RawDocument",
               {"document", "--compression", "raw", "--bits", "16", "--strips", "50"},
               "4 strips of 300 x 50",
               "slide.zel"},
        CStore{"OneTileDocument",
               {"document", "--compression", "raw", "--tile", "304", "208"},
               "1 tiles of 304 x 208",
               "slide.zel"}),
    [](const testing::TestParamInfo<CStore>& store) { return store.param.Name; });

/// True if the document holds these bytes.
bool Holds(const std::string& path, const ByteString& bytes)
{
    const ByteString file = ReadFile(path);
    return std::search(file.begin(), file.end(), bytes.begin(), bytes.end()) != file.end();
}

TEST_F(ZelMake, TellsMoreThanPixels)
{
    const auto result = Run({_slide,
                             "--draw",
                             "64",
                             "48",
                             "--name",
                             "Tissue",
                             "--note",
                             "A note",
                             "--author",
                             "Me",
                             "--lens",
                             "UPlan",
                             "--aperture",
                             "0.75",
                             "--magnification",
                             "20",
                             "--immersion",
                             "oil",
                             "--exposure",
                             "5000000000",
                             "--stage",
                             "1.5",
                             "-2",
                             "--experiment",
                             "Growth",
                             "--sample",
                             "Leaf",
                             "--limits",
                             "3",
                             "200",
                             "--regions",
                             "20",
                             "--regions-as",
                             "tree",
                             "--thumbnail-bits",
                             "4"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    for (const char* text : {"Tissue", "A note", "Me", "UPlan", "Growth", "Leaf", "Region 19"})
        EXPECT_TRUE(Holds(_slide, BytesOfTest::Utf16(text))) << text;
    EXPECT_TRUE(Holds(_slide, Doubles(0, {3, 200}).Value()));
    EXPECT_TRUE(Holds(_slide, Int64(0, 5000000000).Value()));
    EXPECT_TRUE(Holds(_slide, BitmapOf(DrawPicture(64, 48), {.Bits = 4})));
}

TEST_F(ZelMake, WritesTheDocumentThatIsDescribed)
{
    const auto result = Run({_slide, "--describe", EXAMPLES "/everything.json", "--json"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_THAT(result.Output, HasSubstr("\"id\": 9"));
    EXPECT_TRUE(Holds(_slide, BytesOfTest::Utf16("UPlan 20x")));
    EXPECT_TRUE(fs::exists(_store.parent_path() / "frame_t_0.kor"));
}

TEST_F(ZelMake, TakesWhatADescriptionLeavesOpenFromTheCommandLine)
{
    WriteFile(_folder.Path() / "a.json", BytesOf(R"({"stacks": [{"name": "Described"}]})"));
    const auto result = Run({_slide, "--describe", _folder.Name("a.json"), "--draw", "300", "200", "--z", "2"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_THAT(result.Output, HasSubstr("300 x 200 pixels, 2 levels, 2 frames"));
    EXPECT_TRUE(Holds(_slide, BytesOfTest::Utf16("Described")));
}

TEST_F(ZelMake, WritesNothingForADescriptionWithAMistake)
{
    WriteFile(_folder.Path() / "a.json", BytesOf(R"({"stacks": [{"lens": {"aperature": 1}}]})"));
    ExpectRefusal({_slide, "--draw", "64", "64", "--describe", _folder.Name("a.json")},
                  R"(a.json: stacks[0].lens: there is no key "aperature" here; take aperture, )");
    ExpectRefusal({_slide, "--describe", _folder.Name("none.json")}, "none.json: can't be read");
    ExpectRefusal({_slide, "--describe", EXAMPLES "/everything.json", "--note", "x"}, "--note: does not go with");
    EXPECT_FALSE(fs::exists(_folder.Path() / "new"));
}

TEST_F(ZelMake, ReplacesWhatAnEarlierRunLeft)
{
    Run({_slide, "--draw", "64", "64"});
    WriteFile(_store.parent_path() / "frame_t_0.kor", BytesOf("old"));
    WriteFile(_store.parent_path() / "notes.txt", BytesOf("mine"));
    EXPECT_EQ(Run({_slide, "--draw", "32", "32"}).ExitCode, 0);
    EXPECT_FALSE(fs::exists(_store.parent_path() / "frame_t_0.kor")) << "two stores in a folder are refused by readers";
    EXPECT_TRUE(fs::exists(_store.parent_path() / "notes.txt"));
}

TEST_F(ZelMake, ReplacesNothingThatItDidNotWriteUnlessItIsForced)
{
    const std::vector<std::string> make = {_slide, "--draw", "32", "32"};
    WriteFile(_slide, BytesOf("a document of somebody else"));
    ExpectRefusal(make, "slide.zel: is there already, and not a document that this program can tell it wrote");
    EXPECT_EQ(ReadFile(_slide), BytesOf("a document of somebody else"));

    fs::remove(_slide);
    WriteFile(_store, BytesOf("a store"));
    ExpectRefusal(make, "_slide_: is there already without a document that this program wrote");
    EXPECT_EQ(ReadFile(_store), BytesOf("a store"));

    EXPECT_EQ(Run({_slide, "--draw", "32", "32", "--force"}).ExitCode, 0);
}

TEST_F(ZelMake, LeavesASecondNameOfAnOldDocumentAsItIs)
{
    Run({_slide, "--draw", "64", "64"});
    const ByteString old = ReadFile(_slide);
    fs::create_hard_link(_slide, _folder.Path() / "kept.zel");
    EXPECT_EQ(Run({_slide, "--draw", "32", "32"}).ExitCode, 0);
    EXPECT_EQ(ReadFile(_folder.Path() / "kept.zel"), old);
}

TEST_F(ZelMake, ReplacesNoFileThatItReads)
{
    Run({_slide, "--draw", "64", "64", "--store", "tiff"});
    const fs::path store = _store.parent_path() / "frame_t.tif";
    ExpectRefusal({_slide, "--picture", store.string()}, "frame_t.tif: is read, and would be replaced");
    EXPECT_TRUE(fs::exists(store));
}

TEST_F(ZelMake, TakesANameInTheCurrentFolder)
{
    fs::create_directories(_folder.Path() / "new");
    const auto result = TestSupport::RunCommand(
        {"/bin/sh", "-c", "cd " + _folder.Name("new") + " && exec " ZELMAKE " slide.zel --draw 64 64"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_TRUE(fs::exists(_slide));
    EXPECT_TRUE(fs::exists(_store));
}

TEST_F(ZelMake, WritesNothingOutsideTheFolderOfTheDocument)
{
    fs::create_directories(_folder.Path() / "elsewhere");
    fs::create_directories(_folder.Path() / "new");
    fs::create_directory_symlink(_folder.Path() / "elsewhere", _folder.Path() / "new" / "_slide_");
    ExpectRefusal({_slide, "--draw", "64", "64"}, "_slide_: is a symbolic link");
    EXPECT_TRUE(fs::is_empty(_folder.Path() / "elsewhere"));

    fs::create_symlink(_folder.Path() / "elsewhere" / "other.zel", _folder.Path() / "new" / "link.zel");
    ExpectRefusal({_folder.Name("new/link.zel"), "--draw", "64", "64"}, "link.zel: is a symbolic link");
    EXPECT_TRUE(fs::is_empty(_folder.Path() / "elsewhere"));
}

TEST_F(ZelMake, SaysWhatIsWrongWithItsArguments)
{
    ExpectRefusal({}, "document is required");
    ExpectRefusal({_folder.Name("slide.tif"), "--draw", "9", "9"}, "ends in .zel");
    ExpectRefusal({_slide, "--no-such-option"}, "--no-such-option");
    ExpectRefusal({_slide, "--compression", "gif"}, "gif");
    ExpectRefusal({_slide, "--tile", "0", "256"}, "--tile");
    ExpectRefusal({_slide, "--z", "-1"}, "--z");
    ExpectRefusal({_slide, "--draw", "9", "9", "--bits", "16"}, "take raw, j2k or png");
    ExpectRefusal({_slide, "--store", "zip"}, "zip");
    ExpectRefusal({_slide, "--strips", "8"}, "add --store ome-tiff, tiff or document");
    ExpectRefusal({_slide, "--store", "document", "--bigtiff"}, "--bigtiff");
    ExpectRefusal({_slide, "--draw", "9", "9", "--store", "tiff", "--z", "2"}, "without XML has one frame");
    ExpectRefusal({_slide, "--draw", "64", "64", "--store", "tiff", "--strips", "9"}, "multiple of 8");
    ExpectRefusal({_slide, "--bgr"}, "--compression raw");
    ExpectRefusal({_slide, "--immersion", "beer"}, "beer");
    ExpectRefusal({_slide, "--thumbnail-bits", "2"}, "--thumbnail-bits");
    ExpectRefusal({_slide, "--grow", "1000000", "--draw", "10000", "1"}, "grow it less");
    EXPECT_FALSE(fs::exists(_slide));
}

TEST_F(ZelMake, SaysWhatIsWrongWithItsFiles)
{
    ExpectRefusal({_slide, "--picture", _folder.Name("none.png")}, "none.png: can't be read");
    WriteFile(_folder.Path() / "a.png", BytesOf("no picture"));
    ExpectRefusal({_slide, "--picture", _folder.Name("a.png")}, "a.png: is no PNG");
    WriteFile(_folder.Path() / "file", {});
    ExpectRefusal({_folder.Name("file/slide.zel"), "--draw", "9", "9"}, "can't be made");
    fs::create_directories(_folder.Path() / "folder.zel");
    ExpectRefusal({_folder.Name("folder.zel"), "--draw", "9", "9"}, "is a folder");
}

TEST_F(ZelMake, ExplainsItself)
{
    const auto result = Run({"--help"});
    EXPECT_EQ(result.ExitCode, 0);
    EXPECT_THAT(result.Output, HasSubstr("--grow N"));
}

} // namespace
