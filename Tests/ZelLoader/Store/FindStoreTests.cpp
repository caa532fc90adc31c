// Finding the tile store of a stack in the folder beside the document.

#include "Tests/ZelLoader/Images/ZelSlide.h"

#include <unistd.h>

using namespace SlideOfTest;

namespace
{

const std::string StoreIsMissing = "CRITICAL WARNING: KOR FILE IS MISSING!!!!!!!!!!!!!!!";

Stack Small()
{
    return Stack(3).Size(8, 8).Tiles(8, 8);
}

class FindingAStore : public ZelSlide
{
protected:
    std::filesystem::path StoreFolder() const { return Folder().Path() / "_slide_" / "stack3"; }

    /// A document whose store folder holds exactly the given files, each a copy of the store.
    void WriteWithFiles(const std::vector<std::string>& names)
    {
        Document().With(Small()).WriteTo(Folder().Path() / "slide.zel");
        const ByteString store = ReadFile(StoreFolder() / "frame_t.kor");
        std::filesystem::remove(StoreFolder() / "frame_t.kor");
        for (const std::string& name : names)
            WriteFile(StoreFolder() / name, store);
    }
    /// The image of that document, which was read and not built.
    Zel::CZelMultiDimImage& ImageWithFiles(const std::vector<std::string>& names)
    {
        WriteWithFiles(names);
        _doc.emplace(FileName().c_str(), true);
        errno = 0;
        return static_cast<Zel::CZelMultiDimImage&>(*_doc->MultiDimImages().begin()->second);
    }

private:
    std::optional<Zel::CZelImgDoc> _doc;
};

TEST_F(FindingAStore, LooksInTheFolderOfTheDocumentAndTheStack)
{
    Open(Small());
    EXPECT_EQ(Store().FileName(), Folder().WideName("_slide_/stack3/frame_t.kor"));
}

TEST_F(FindingAStore, TakesTheNameUpToItsLastDot)
{
    Document().With(Small()).WriteTo(Folder().Path() / "slide.1.zel");
    EXPECT_EQ(ResultOfOpeningFile(Folder().WideName("slide.1.zel")), AC_RESULT_SUCCESS);
    EXPECT_EQ(Store().FileName(), Folder().WideName("_slide.1_/stack3/frame_t.kor"));
}

TEST_F(FindingAStore, TakesTheWholeNumberOfTheStack)
{
    const Stack stack(4294967294u);
    Open(stack);
    EXPECT_EQ(Store().FileName(), Folder().WideName("_slide_/stack4294967294/frame_t.kor"));
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
}

struct CandidateRow : Row
{
    std::vector<std::string> Files;
    std::string Found; ///< empty: the store is missing
};

class CandidateForAStore : public FindingAStore, public testing::WithParamInterface<CandidateRow>
{
};

TEST_P(CandidateForAStore, IsChosenByItsName)
{
    auto& image = ImageWithFiles(GetParam().Files);
    const bool isMissing = GetParam().Found.empty();
    EXPECT_EQ(image.UsesKorFile(), !isMissing);
    EXPECT_EQ(image.IsKorFileMissing(), isMissing);
    EXPECT_EQ(errno, 0);
    if (GetParam().Found.ends_with(".kor"))
    {
        image.Dimensions();
        EXPECT_EQ(image.KorFile()->FileName(), Folder().WideName("_slide_/stack3/" + GetParam().Found));
        EXPECT_FALSE(image.KorFile()->IsOmeType());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Names, CandidateForAStore,
    testing::Values(CandidateRow{{"Numbered"}, {"frame_t_0.kor"}, "frame_t_0.kor"},
                    CandidateRow{{"Plain"}, {"frame_t.kor"}, "frame_t.kor"},
                    CandidateRow{{"Both"}, {"frame_t_0.kor", "frame_t.kor"}, ""}, CandidateRow{{"None"}, {}, ""},
                    CandidateRow{{"OtherNames"}, {"frame.kor", "frame_t_1.kor", "frame_t.KOR", "xframe_t.kor"}, ""},
                    CandidateRow{{"PlainBesideTiff"}, {"frame_t.kor", "frame_t_0.tif"}, "frame_t.kor"},
                    CandidateRow{{"BothBesideTiff"}, {"frame_t_0.kor", "frame_t.kor", "frame_t.tif"}, ""}),
    NameOfRow());

TEST_F(FindingAStore, TellsOfTwoBinaryCandidates)
{
    auto& image = ImageWithFiles({"frame_t_0.kor", "frame_t.kor"});
    EXPECT_THAT(MessagesOf([&] { image.UsesKorFile(); }),
                ElementsAre("Error! Found both candidates for kor filename!", StoreIsMissing));
}

TEST_F(FindingAStore, TellsOfAStoreThatIsMissingOnce)
{
    auto& image = ImageWithFiles({});
    EXPECT_THAT(MessagesOf(
                    [&]
                    {
                        EXPECT_FALSE(image.UsesKorFile());
                        EXPECT_FALSE(image.UsesKorFile());
                    }),
                ElementsAre(StoreIsMissing));
}

struct TiffCandidateRow : Row
{
    std::vector<std::string> Files;
    std::string Found;
};

class TiffCandidateForAStore : public FindingAStore, public testing::WithParamInterface<TiffCandidateRow>
{
};

TEST_P(TiffCandidateForAStore, IsChosenByItsName)
{
    Document().With(Small().InTiffStore()).WriteTo(Folder().Path() / "slide.zel");
    const ByteString tiff = ReadFile(StoreFolder() / "frame_t.tif");
    std::filesystem::remove(StoreFolder() / "frame_t.tif");
    for (const std::string& name : GetParam().Files)
        WriteFile(StoreFolder() / name, tiff);
    ASSERT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_SUCCESS);
    EXPECT_EQ(Store().FileName(), Folder().WideName("_slide_/stack3/" + GetParam().Found));
    EXPECT_TRUE(Store().IsOmeType());
}

INSTANTIATE_TEST_SUITE_P(
    Names, TiffCandidateForAStore,
    testing::Values(TiffCandidateRow{{"Numbered"}, {"frame_t_0.tif"}, "frame_t_0.tif"},
                    TiffCandidateRow{{"NumberedLong"}, {"frame_t_0.tiff"}, "frame_t_0.tiff"},
                    TiffCandidateRow{{"LongWins"}, {"frame_t_0.tif", "frame_t_0.tiff"}, "frame_t_0.tiff"},
                    TiffCandidateRow{{"Plain"}, {"frame_t.tif"}, "frame_t.tif"},
                    TiffCandidateRow{{"PlainLongWins"}, {"frame_t.tif", "frame_t.tiff"}, "frame_t.tiff"},
                    TiffCandidateRow{{"NumberedWins"}, {"frame_t_0.tif", "frame_t.tiff"}, "frame_t_0.tif"},
                    TiffCandidateRow{{"WinsOverNumberedKor"}, {"frame_t_0.kor", "frame_t_0.tif"}, "frame_t_0.tif"},
                    TiffCandidateRow{{"PlainWinsOverNumberedKor"}, {"frame_t_0.kor", "frame_t.tiff"}, "frame_t.tiff"}),
    NameOfRow());

TEST_F(FindingAStore, LooksAtNoFolderForAnImageInDirectories)
{
    auto& image = ReadImage(Small().InDocument());
    EXPECT_FALSE(image.UsesKorFile());
    EXPECT_FALSE(image.IsKorFileMissing());
    EXPECT_FAILED_ASSERTION(image.KorFile());
}

TEST_F(FindingAStore, SettlesItOnce)
{
    auto& image = ImageWithFiles({"frame_t.kor"});
    EXPECT_TRUE(image.UsesKorFile());
    std::filesystem::remove(StoreFolder() / "frame_t.kor");
    EXPECT_TRUE(image.UsesKorFile());
}

TEST_F(FindingAStore, NeedsADotInTheNameOfTheDocument)
{
    Document().With(Small()).WriteTo(Folder().Path() / "fol.der" / "slidezel");
    EXPECT_EQ(ResultOfOpeningFile(Folder().WideName("fol.der/slidezel")), AC_RESULT_FAILURE);
}

// A store that cannot be opened.

TEST_F(FindingAStore, ThatVanishesBeforeItIsOpenedIsToldAndFails)
{
    auto& image = ImageWithFiles({"frame_t.kor"});
    EXPECT_TRUE(image.UsesKorFile());
    std::filesystem::remove(StoreFolder() / "frame_t.kor");
    EXPECT_THAT(MessagesOf([&] { EXPECT_FAILED_ASSERTION(image.KorFile()); }),
                Contains("KOR File is not present for stack id = 3"));
}

/// Lets the process be somebody whom file permissions concern, root as it may be.
class NotRoot
{
public:
    NotRoot() : _wasRoot(geteuid() == 0)
    {
        if (_wasRoot && seteuid(Nobody) != 0)
            throw std::runtime_error("root cannot become anybody else");
    }
    ~NotRoot()
    {
        if (_wasRoot && seteuid(0) != 0)
            std::abort();
    }
    NotRoot(const NotRoot&) = delete;
    NotRoot& operator=(const NotRoot&) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    const bool _wasRoot;
};

TEST_F(FindingAStore, ThatMayNotBeReadIsInUse)
{
    WriteWithFiles({"frame_t.kor"});
    std::filesystem::permissions(Folder().Path(), std::filesystem::perms(0755));
    std::filesystem::permissions(StoreFolder() / "frame_t.kor", std::filesystem::perms::none);
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf(
        [&]
        {
            const NotRoot notRoot;
            result = ResultOfOpeningFile(FileName());
        });
    EXPECT_EQ(result, AC_RESULT_IN_USE);
    EXPECT_THAT(messages, Contains("Failed to open KOR file: reason: 35"));
    EXPECT_EQ(messages.back(), "Error: KOR File is open in some other process in write mode.");
}

TEST_F(FindingAStore, ThatIsALinkToNowhereIsMissing)
{
    WriteWithFiles({});
    std::filesystem::create_symlink(StoreFolder() / "nowhere", StoreFolder() / "frame_t.kor");
    EXPECT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_MISSING_FILE);
}

TEST_F(FindingAStore, ThatIsAFolderFails)
{
    WriteWithFiles({});
    std::filesystem::create_directory(StoreFolder() / "frame_t.kor");
    EXPECT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_FAILURE);
}

// What a missing store leaves unanswered.

class MissingStore : public FindingAStore
{
protected:
    void ExpectMissing(const std::function<void()>& ask, const std::string& text)
    {
        errno = 0;
        EXPECT_EQ(AssertionOf(ask), text);
        EXPECT_EQ(errno, EREMOTE);
    }
};

TEST_F(MissingStore, MakesTheDocumentMissAFile)
{
    WriteWithFiles({});
    const auto messages = MessagesOf([&] { EXPECT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_MISSING_FILE); });
    EXPECT_THAT(messages, Contains(StoreIsMissing));
    EXPECT_EQ(messages.back(), "Error: KOR file missing! TODO: try and read coarse data.");
}

TEST_F(MissingStore, LeavesSizesLevelsAndFramesUnanswered)
{
    const std::string coarseData = "KOR file missing! TODO: try and read coarse data.";
    auto& image = BuildImage(Small().WithoutStore());
    ExpectMissing([&] { image.PixelWidth(); }, coarseData);
    ExpectMissing([&] { image.PixelHeight(); }, coarseData);
    ExpectMissing([&] { image.DeepZoomPyramidLevels(); }, coarseData);
    ExpectMissing([&] { image.DeepZoomTilePixelWidth(0); }, coarseData);
    ExpectMissing([&] { image.DeepZoomTilePixelHeight(0); }, coarseData);
    ExpectMissing([&] { image.Frames(); }, "TODO: Get frames from coarse data...");
    EXPECT_FAILED_ASSERTION(image.TiffFilePtrSetToIfdOf1stFrame());
}

TEST_F(MissingStore, LeavesTheNameAndTheDimensionsAnswered)
{
    auto& image = BuildImage(Small().WithoutStore().Z(3).Name("Kidney"));
    EXPECT_STREQ(image.Name(), L"Kidney");
    EXPECT_EQ(DimensionOf(image, DimZ).NumOfPoints(), 3u);
    EXPECT_EQ(image.Channels().size(), 1u);
}

} // namespace
