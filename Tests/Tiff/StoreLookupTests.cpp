// Which file a stack's store is, and what a host is told when there is none.

#include "Tests/Support/ChildProcess.h"
#include "Tests/Tiff/TiffSlide.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/ZelImgDoc.h"

#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace TiffOfTest;
namespace fs = std::filesystem;

namespace
{

class StoreOfAStack : public TiffSlide
{
protected:
    fs::path SideFolder() const { return Folder().Path() / "_slide_" / "stack1"; }
    /// A document whose stack has files of these names in its side folder, each of them a store of its kind. All have
    /// the same tiles, but one column more for each name in the list.
    void WriteWith(const std::vector<std::string>& names)
    {
        Document().With(Stack(1).WithoutStore()).WriteTo(File());
        uint32_t numOfCols = 0;
        for (const std::string& name : names)
        {
            ++numOfCols;
            const bool isTiff = name.find(".tif") != std::string::npos;
            Stack stack = Stack(1).Size(16 * numOfCols, 16).Tiles(16, 16);
            if (isTiff)
                stack.InTiffStore();
            const TestSupport::TemporaryFolder other;
            Document().With(stack).WriteTo(other.Path() / "slide.zel");
            fs::create_directories(SideFolder());
            fs::copy_file(other.Path() / "_slide_" / "stack1" / (isTiff ? "frame_t.tif" : "frame_t.kor"),
                          SideFolder() / name);
        }
    }
    /// The place in the list of the file that was opened, told by its columns; 0 when the store counts as missing.
    uint32_t PlaceOfOpened()
    {
        const AC_Result result = ResultOfOpeningFile(FileName());
        if (result == AC_RESULT_MISSING_FILE)
            return 0;
        EXPECT_EQ(result, AC_RESULT_SUCCESS);
        return static_cast<uint32_t>(NumOfAreas(Group(), 0));
    }
};

struct NamesRow : Row
{
    std::vector<std::string> Names;
    uint32_t PlaceOfOpened;
    bool IsTiff = false;
};

class StoreNames : public StoreOfAStack, public testing::WithParamInterface<NamesRow>
{
};

TEST_P(StoreNames, HaveAnOrder)
{
    WriteWith(GetParam().Names);
    EXPECT_EQ(PlaceOfOpened(), GetParam().PlaceOfOpened);
    if (Doc())
    {
        EXPECT_EQ(Model().OpenedKorFile().IsOmeType(), GetParam().IsTiff);
    }
}

const std::string Kor = "frame_t.kor", Kor0 = "frame_t_0.kor", Tif = "frame_t.tif", Tif0 = "frame_t_0.tif",
                  Tiff = "frame_t.tiff", Tiff0 = "frame_t_0.tiff";
INSTANTIATE_TEST_SUITE_P(
    Candidates, StoreNames,
    testing::Values(NamesRow{{"None"}, {}, 0}, NamesRow{{"Kor0"}, {Kor0}, 1}, NamesRow{{"Kor"}, {Kor}, 1},
                    NamesRow{{"BothKor"}, {Kor0, Kor}, 0}, NamesRow{{"BothKorAndTif"}, {Kor0, Kor, Tif0}, 0},
                    NamesRow{{"KorBesideTif0"}, {Kor, Tif0}, 1}, NamesRow{{"Kor0BesideTif0"}, {Kor0, Tif0}, 2, true},
                    NamesRow{{"Kor0BesideTiff"}, {Kor0, Tiff}, 2, true},
                    NamesRow{{"Tif0BesideTiff0"}, {Tif0, Tiff0}, 2, true},
                    NamesRow{{"TifBesideTiff"}, {Tif, Tiff}, 2, true},
                    NamesRow{{"Tif0BesideTiff"}, {Tif0, Tiff}, 1, true}, NamesRow{{"OtherName"}, {"frame_t_1.kor"}, 0},
                    NamesRow{{"Capitals"}, {"FRAME_T.KOR"}, 0}),
    NameOfRow());

TEST_F(StoreOfAStack, OfTwoBinaryNamesIsComplainedOf)
{
    WriteWith({Kor0, Kor});
    EXPECT_THAT(MessagesOf([&] { ResultOfOpeningFile(FileName()); }),
                Contains("Error! Found both candidates for kor filename!"));
}

TEST_F(StoreOfAStack, IsNotLookedForWithoutANodeThatAsksForIt)
{
    const Stack stack = Stack(1).Size(16, 16).InDocument(16);
    Document().With(stack).WriteTo(File());
    fs::create_directories(SideFolder());
    std::ofstream(SideFolder() / "frame_t.kor") << "no store";
    ASSERT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_SUCCESS);
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
}

TEST_F(StoreOfAStack, ThatTwoNodesAskForFails)
{
    Document document;
    document.With(Stack(1));
    document.Frame(1).Add(Volume(2018));
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

// A missing store, seen by the parts of the model.

class MissingStore : public StoreOfAStack
{
protected:
    void SetUp() override
    {
        Document().With(Stack(1).WithoutStore()).WriteTo(File());
        errno = 0;
        _doc = std::make_unique<Zel::CZelImgDoc>(FileName().c_str(), true);
        ASSERT_EQ(errno, 0);
        _image = std::make_unique<Zel::CZelMultiDimImage>(*_doc->ImgColl().MultiDimImgs()->front(), *_doc);
    }
    Zel::CZelMultiDimImage& Image() { return *_image; }
    /// The text that is raised, with EREMOTE.
    template <typename Function>
    static std::string TextOf(Function&& function)
    {
        errno = 0;
        const std::string text = TestSupport::AssertionOf(function);
        EXPECT_EQ(errno, EREMOTE);
        return text;
    }

private:
    std::unique_ptr<Zel::CZelImgDoc> _doc;
    std::unique_ptr<Zel::CZelMultiDimImage> _image;
};

constexpr const char* KorFileIsMissing = "KOR file missing! TODO: try and read coarse data.";

TEST_F(MissingStore, IsToldAndLogged)
{
    const auto messages = MessagesOf(
        [&]
        {
            EXPECT_FALSE(Image().UsesKorFile());
            EXPECT_TRUE(Image().IsKorFileMissing());
            EXPECT_FALSE(Image().HasMissingTilesConcept());
        });
    EXPECT_THAT(messages, ElementsAre("CRITICAL WARNING: KOR FILE IS MISSING!!!!!!!!!!!!!!!"));
}

TEST_F(MissingStore, HasNoPixelSize)
{
    EXPECT_EQ(TextOf([&] { Image().PixelWidth(); }), KorFileIsMissing);
    EXPECT_EQ(TextOf([&] { Image().PixelHeight(); }), KorFileIsMissing);
}

TEST_F(MissingStore, HasNoLevels)
{
    EXPECT_EQ(TextOf([&] { Image().DeepZoomPyramidLevels(); }), KorFileIsMissing);
}

TEST_F(MissingStore, HasNoTileSize)
{
    EXPECT_EQ(TextOf([&] { Image().DeepZoomTilePixelWidth(0); }), KorFileIsMissing);
    EXPECT_EQ(TextOf([&] { Image().DeepZoomTilePixelHeight(0); }), KorFileIsMissing);
}

TEST_F(MissingStore, HasNoFrames)
{
    EXPECT_EQ(TextOf([&] { Image().Frames(); }), "TODO: Get frames from coarse data...");
}

TEST_F(MissingStore, HasNoTiles)
{
    Image().UsesKorFile();
    Zel::CZelFrame frame(Image(), {}, *Image().MetaData().ImgFrames()->front());
    EXPECT_EQ(TextOf([&] { frame.DeepZoomTiles(); }), "TODO: Need to read coarse data in case of missing KOR file!");
}

TEST_F(MissingStore, HasNoCompression)
{
    EXPECT_EQ(TextOf([&] { Image().Channels().at(0)->CompressionType(); }),
              "TODO: obtain pixel frame compression type from 'coarse data' in case of missing KOR");
}

TEST_F(MissingStore, HasNoPixelFormat)
{
    CIA::CPixelFormat& format = *Image().Channels().at(0)->PixelFormat();
    const char* text = "TODO: handle missing KOR file using 'coarse data'";
    EXPECT_EQ(TextOf([&] { format.NumOfBitsPerPixelComponent(); }), text);
    EXPECT_EQ(TextOf([&] { format.NumOfPixelComponents(); }), text);
    EXPECT_EQ(TextOf([&] { format.ComponentFormat(); }), text);
    EXPECT_EQ(TextOf([&] { format.ColorSpace(); }), text);
}

TEST_F(MissingStore, HasNoDirectoryOfAFrame)
{
    EXPECT_FAILED_ASSERTION(Image().TiffFilePtrSetToIfdOf1stFrame());
}

TEST_F(MissingStore, IsNotOpened)
{
    EXPECT_FAILED_ASSERTION(Image().KorFile());
}

// As a host is told.

TEST_F(StoreOfAStack, ThatIsMissingGivesAResultOfItsOwn)
{
    EXPECT_EQ(ResultOfOpening(Stack(1).WithoutStore()), AC_RESULT_MISSING_FILE);
    EXPECT_EQ(ResultOfOpening(Stack(1).InTiffStore().WithoutStore()), AC_RESULT_MISSING_FILE);
    EXPECT_EQ(AC_RESULT_MISSING_FILE, 32);
}

TEST_F(StoreOfAStack, ThatGoesBetweenTheTwoLooksForItIsNotPresent)
{
    Document().With(Stack(1)).WriteTo(File());
    errno = 0;
    Zel::CZelImgDoc doc(FileName().c_str(), true);
    Zel::CZelMultiDimImage image(*doc.ImgColl().MultiDimImgs()->front(), doc);
    EXPECT_TRUE(image.UsesKorFile());
    fs::remove(StoreFile(1));
    EXPECT_TRUE(image.UsesKorFile()) << "what was settled is not looked at again";
    EXPECT_THAT(MessagesOf([&] { TestSupport::AssertionOf([&] { image.KorFile(); }); }),
                Contains("KOR File is not present for stack id = 1"));
}

/// The result of opening a document whose store may not be read, in a process without privileges.
int ResultWithoutPrivileges(const std::wstring& fileName)
{
    constexpr uid_t Nobody = 65534;
    if (geteuid() == 0 && setuid(Nobody) != 0)
        return 255;
    AC_HFILE doc = nullptr;
    return Call(_AC_Open, fileName.c_str(), int{AC_OM_READ}, &doc);
}

TEST_F(StoreOfAStack, ThatMayNotBeReadIsInUse)
{
    for (const Stack& stack : {Stack(1), Stack(1).InTiffStore()})
    {
        Document document = Document().With(stack);
        const fs::path store = document.StorePath(document.WriteTo(File()), 1);
        ASSERT_EQ(chmod(Folder().Path().c_str(), 0755), 0);
        ASSERT_EQ(chmod(store.c_str(), 0), 0);
        const auto end = TestSupport::RunInChild([this] { return ResultWithoutPrivileges(FileName()); });
        if (end == TestSupport::ExitedWith(255))
            GTEST_SKIP() << "this process may neither drop its privileges nor do without";
        EXPECT_EQ(end, TestSupport::ExitedWith(AC_RESULT_IN_USE)) << store;
        fs::remove_all(SideFolder());
    }
    EXPECT_EQ(AC_RESULT_IN_USE, 35);
}

} // namespace
