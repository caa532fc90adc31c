// Which directories can be read, as a host sees it: what they hold beside a picture, and what they share.

#include "SampleDocuments/Tags.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Tiff/TiffSlide.h"

#include <sys/resource.h>

using namespace TiffOfTest;

namespace
{

constexpr uint16_t TagOfColourProfile = 34675;
constexpr uint16_t FirstUnknownTag = 60000;

/// Adds entries that nobody knows until the directory has so many.
void Fill(CTiffDirectory& directory, uint16_t numOfEntries)
{
    ByteString bytes(8);
    const uint32_t offset = AppendDirectories(bytes, {directory});
    const int numOfItsOwn = bytes.at(offset) | bytes.at(offset + 1) << 8;
    for (int n = 0; n < numOfEntries - numOfItsOwn; ++n)
        directory.Set(static_cast<uint16_t>(FirstUnknownTag + n), TiffType::Long, {1});
}

class DirectoryOfADocument : public TiffSlide
{
protected:
    /// Frames of 16 × 16 pixels.
    static Stack Frames(uint32_t numOfFrames) { return Stack(1).Size(16, 16).Z(numOfFrames).InDocument(16); }
    AC_Result ResultOfThumbnail() const
    {
        UINT size = 0;
        const AC_Result result = Call(_AC_GetThumbnailData, Doc(), nullptr, UINT{0}, &size);
        if (result != AC_RESULT_SUCCESS)
            return result;
        ByteString bytes(size);
        return Call(_AC_GetThumbnailData, Doc(), bytes.data(), size, &size);
    }
    AC_Result ResultOfChannelInfo() const
    {
        AC_PARAM_ELEMENT channel = {L"channelId", const_cast<wchar_t*>(L"0")};
        const AC_PARAMS params = {1, &channel};
        AC_HPROPERTY set = nullptr;
        return Call(_AC_GetAreaProperty, Area(Group(), 0, 0), L"ChannelInfo", &params, &set);
    }
    /// Opens a stack of so many frames whose directories `change` spoils, and reads all of it.
    void ExpectAllFramesOf(uint32_t numOfFrames, const std::function<void(CTiffDirectory&)>& change)
    {
        const Stack stack = Frames(numOfFrames);
        Document document;
        document.With(stack);
        for (CTiffDirectory& directory : document.File().Directories)
            change(directory);
        Open(std::move(document));
        EXPECT_EQ(ResultOfChannelInfo(), AC_RESULT_SUCCESS);
        for (uint32_t z = 0; z < numOfFrames; ++z)
            ASSERT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(z)})), stack.TileBytes(0, 0, 0, {.Z = z})) << z;
        EXPECT_EQ(ResultOfThumbnail(), AC_RESULT_SUCCESS);
    }
};

struct EntriesRow : Row
{
    size_t Directory; ///< 0 has the overview, 1 the frame
    uint16_t NumOfEntries;
};

class CrowdedDirectory : public DirectoryOfADocument, public testing::WithParamInterface<EntriesRow>
{
protected:
    void OpenIt()
    {
        Document document;
        document.With(Frames(1));
        Fill(document.File().Directories.at(GetParam().Directory), GetParam().NumOfEntries);
        Open(std::move(document));
    }
};

TEST_P(CrowdedDirectory, IsReadAsAThumbnailAndThenATileAre)
{
    OpenIt();
    EXPECT_EQ(ResultOfThumbnail(), AC_RESULT_SUCCESS);
    EXPECT_EQ(ResultOfChannelInfo(), AC_RESULT_SUCCESS);
    EXPECT_EQ(BodyOf(Tile(0, 0)), Frames(1).TileBytes(0, 0, 0));
    EXPECT_EQ(ResultOfThumbnail(), AC_RESULT_SUCCESS);
}

TEST_P(CrowdedDirectory, IsReadAsATileAndThenAThumbnailAre)
{
    OpenIt();
    EXPECT_EQ(BodyOf(Tile(0, 0)), Frames(1).TileBytes(0, 0, 0));
    EXPECT_EQ(ResultOfThumbnail(), AC_RESULT_SUCCESS);
    EXPECT_EQ(BodyOf(Tile(0, 0)), Frames(1).TileBytes(0, 0, 0));
}

TEST_P(CrowdedDirectory, IsNotShownToLibtiff)
{
    // It complains of each tag that it does not know, and takes the square of their number.
    const std::string log = LogOf(
        [this]
        {
            OpenIt();
            ResultOfThumbnail();
            ResultOfChannelInfo();
        });
    EXPECT_THAT(log, Not(HasSubstr("Unknown field")));
}

INSTANTIATE_TEST_SUITE_P(Entries, CrowdedDirectory,
                         testing::Values(EntriesRow{{"OneThousandOfTheOverview"}, 0, 1012},
                                         EntriesRow{{"OneThousandOfTheFrame"}, 1, 1012},
                                         EntriesRow{{"AsManyAsLibtiffTakesOfTheOverview"}, 0, 4096},
                                         EntriesRow{{"AsManyAsLibtiffTakesOfTheFrame"}, 1, 4096}),
                         NameOfRow());

TEST_F(DirectoryOfADocument, OfMoreEntriesIsAsIfItWereNotThere)
{
    const Stack stack = Frames(2);
    Document document;
    document.With(stack);
    auto& directories = document.File().Directories;
    directories.insert(directories.begin() + 2, CTiffDirectory(16, 16));
    Fill(directories.at(2), 4097);
    CNode& node = document.Volume({Tag::Collection, Tag::Stack});
    node.Child(Tag::Frame, 1).Child(Tag::FrameDirectory).SecondTag(3);
    Open(document);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(1)})), stack.TileBytes(0, 0, 0, {.Z = 1}));
    node.Child(Tag::Frame, 1).Child(Tag::FrameDirectory).SecondTag(2);
    Open(document);
    const std::string log = LogOf([this] { EXPECT_EQ(ResultOfFirstBody(), AC_RESULT_FAILURE); });
    EXPECT_THAT(log, HasSubstr("TIFF directory 2 has too many entries!"));
}

// What directories share.

TEST_F(DirectoryOfADocument, MayShareAColourProfile)
{
    ExpectAllFramesOf(300,
                      [](CTiffDirectory& directory) {
                          directory.Set(TagOfColourProfile, CTiffEntry{TiffType::Undefined, 65536, {}, 8});
                      });
}

TEST_F(DirectoryOfADocument, MayShareAValueThatIsNeeded)
{
    ExpectAllFramesOf(300,
                      [](CTiffDirectory& directory) {
                          directory.Set(TIFFTAG_JPEGTABLES, CTiffEntry{TiffType::Undefined, 65536, {}, 8});
                      });
}

/// Makes all frames of the document those of one directory.
void LetFramesShareADirectory(Document& document, uint32_t numOfFrames, const CTiffDirectory& directory)
{
    document.File().Directories = {document.File().Directories.front(), directory};
    CNode& stack = document.Volume({Tag::Collection, Tag::Stack});
    for (uint32_t z = 0; z < numOfFrames; ++z)
        stack.Child(Tag::Frame, z).Child(Tag::FrameDirectory).SecondTag(1);
}

TEST_F(DirectoryOfADocument, MayHaveItsStripsSharedByFrames)
{
    const Stack stack = Stack(1).Size(16, 500).Z(200).InDocument(1);
    Document document;
    document.With(stack);
    LetFramesShareADirectory(document, 200, document.File().Directories.at(1));
    Open(std::move(document));
    EXPECT_EQ(ResultOfChannelInfo(), AC_RESULT_SUCCESS);
    EXPECT_EQ(BodyOf(Tile(0, 499, L"0", {AtZ(0)})), stack.TileBytes(0, 0, 499));
    EXPECT_EQ(BodyOf(Tile(0, 499, L"0", {AtZ(199)})), stack.TileBytes(0, 0, 499));
}

#ifndef __SANITIZE_ADDRESS__ // whose own memory would be counted
TEST_F(DirectoryOfADocument, WhoseStripsAreSharedByFramesIsScannedOnce)
{
    // Forty million strips, if each frame had its own.
    Document document;
    document.With(Stack(1).Size(1, 1).Z(2000).InDocument(1).WithoutDisplayLimits());
    LetFramesShareADirectory(document, 2000, CTiffDirectory(1, 20000).Strips(1).SampleFormat(SAMPLEFORMAT_UINT));
    document.WriteTo(File());
    const auto end = TestSupport::RunInChild(
        [this]
        {
            constexpr rlim_t ModestMemory = 256 << 20;
            const rlimit limit = {ModestMemory, ModestMemory};
            setrlimit(RLIMIT_DATA, &limit);
            const AC_Result result = ResultOfOpeningFile(FileName());
            return int{result == AC_RESULT_SUCCESS ? ResultOfChannelInfo() : result};
        });
    EXPECT_EQ(end, TestSupport::ExitedWith(AC_RESULT_SUCCESS));
}
#endif

} // namespace
