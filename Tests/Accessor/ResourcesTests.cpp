// What a failure leaves behind: nothing.

#include "Tests/Accessor/Slide.h"
#include "Tests/Support/ChildProcess.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <thread>

using namespace SlideOfTest;

namespace
{

struct FailureRow : Row
{
    std::function<void(Document&)> Damage;
    AC_Result Result;
};

class FailedOpening : public Slide, public testing::WithParamInterface<FailureRow>
{
protected:
    Document Damaged()
    {
        Document document;
        document.With(Stack(1).Z(2)).With(Stack(2).Levels(2));
        GetParam().Damage(document);
        return document;
    }
};

TEST_P(FailedOpening, LeavesNoFileOpen)
{
    const size_t filesBefore = TestSupport::NumOfOpenFiles();
    EXPECT_EQ(ResultOfOpening(Damaged()), GetParam().Result);
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), filesBefore);
}

TEST_P(FailedOpening, LeavesTheNextOneToSucceed)
{
    ResultOfOpening(Damaged());
    const Stack stack(1);
    Open(stack);
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
}

INSTANTIATE_TEST_SUITE_P(
    Failures, FailedOpening,
    testing::Values(
        FailureRow{{"WrongByteOrder"}, [](Document& d) { d.File().ByteOrder = "MM"; }, AC_RESULT_FAILURE},
        FailureRow{{"NoRoot"}, [](Document& d) { d.Root().FixedNum(0); }, AC_RESULT_FAILURE},
        FailureRow{{"NoImages"}, [](Document& d) { d.Root().Drop(2000); }, AC_RESULT_FAILURE},
        FailureRow{{"NoDisplayFlow"}, [](Document& d) { d.Volume({2000}).Drop(2011); }, AC_RESULT_FAILURE},
        FailureRow{{"NoProperties"}, [](Document& d) { d.StackVolume(2).Drop(2005); }, AC_RESULT_FAILURE},
        FailureRow{{"NoCounts"}, [](Document& d) { d.StackVolume(1).Drop(2003); }, AC_RESULT_FILE_CORRUPT},
        FailureRow{{"TwoOfOneId"}, [](Document& d) { d.StackVolume(2).SecondTag(1); }, AC_RESULT_FILE_CORRUPT},
        FailureRow{
            {"StoreWithoutChunks"}, [](Document& d) { d.Store(2).Header.NumberOfUsedChunks = 0; }, AC_RESULT_FAILURE},
        FailureRow{{"StoreWithoutHeader"},
                   [](Document& d) { d.Store(2).Header.AdditionalHeaderOffset = 0; },
                   AC_RESULT_FAILURE},
        FailureRow{{"LevelsThatFall"},
                   [](Document& d) { std::swap(d.Store(2).Tiles.front(), d.Store(2).Tiles.back()); },
                   AC_RESULT_FAILURE}),
    NameOfRow());

TEST(ManyFailures, LeaveNoFileOpen)
{
    const TestSupport::TemporaryFolder folder;
    Document().With(Stack(1).WithoutStore()).WriteTo(folder.Path() / "slide.zel");
    const std::wstring name = folder.WideName("slide.zel");
    const size_t filesBefore = TestSupport::NumOfOpenFiles();
    for (int i = 0; i < 50; ++i)
    {
        AC_HFILE doc = nullptr;
        EXPECT_EQ(Call(_AC_Open, name.c_str(), 0, &doc), AC_RESULT_MISSING_FILE);
    }
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), filesBefore);
}

class OpenFiles : public Slide
{
};

TEST_F(OpenFiles, AreClosedWithTheDocument)
{
    const size_t filesBefore = TestSupport::NumOfOpenFiles();
    Open(Document().With(Stack(1)).With(Stack(2)).With(Stack(3).InDocument()));
    for (int number = 0; number < 3; ++number)
        Image(Area(Group(number), 0, 0));
    EXPECT_GT(TestSupport::NumOfOpenFiles(), filesBefore);
    Close();
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), filesBefore);
}

TEST_F(OpenFiles, ThatRunOutAreAFailureAndNoMissingFile)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the undefined behaviour sanitizer opens a pipe to see whether memory can be read";
#endif
    Document().With(Stack(1)).WriteTo(Folder().Path() / "slide.zel");
    const auto openWithoutHandles = [&]() -> int
    {
        // The lowest free number is one beyond the limit, so that nothing more can be opened.
        const int lowestFree = open("/dev/null", O_RDONLY);
        const rlimit limit = {static_cast<rlim_t>(lowestFree) + 1, static_cast<rlim_t>(lowestFree) + 1};
        setrlimit(RLIMIT_NOFILE, &limit);
        AC_HFILE doc = nullptr;
        return Call(_AC_Open, FileName().c_str(), 0, &doc);
    };
    EXPECT_EQ(TestSupport::RunInChild(openWithoutHandles), TestSupport::ExitedWith(AC_RESULT_FAILURE));
}

class FailedCall : public Slide
{
protected:
    /// Another thread would wait for ever for a lock that was left behind.
    void ExpectNoLockIsLeft()
    {
        int numOfGroups = 0;
        std::thread([&] { numOfGroups = NumOfGroups(Doc()); }).join();
        EXPECT_EQ(numOfGroups, 1);
    }
};

TEST_F(FailedCall, LeavesNoLockBehind)
{
    Open(Stack(1).Size(512, 256));
    AC_HAREA area = nullptr;
    EXPECT_EQ(Call(_AC_GetArea, Group(), 0, ~UINT64{0}, &area), AC_RESULT_FAILURE);
    ExpectNoLockIsLeft();
    EXPECT_EQ(ResultOfBody(Tile(0, 0), {500, 0, 1, 1}), AC_RESULT_INVALID_PARAM);
    ExpectNoLockIsLeft();
    EXPECT_EQ(ResultOfImage(Area(Group(), 0, 0), L"x"), AC_RESULT_INVALID_PARAM);
    ExpectNoLockIsLeft();
}

TEST_F(FailedCall, LeavesTheDocumentUsable)
{
    const Stack stack = Stack(1).Size(512, 256);
    Document document;
    document.With(stack);
    document.Store(1).Tile({1, 0, 0, 0}).Offset = 1u << 30;
    Open(std::move(document));
    EXPECT_EQ(ResultOfBody(Tile(0, 1)), AC_RESULT_FAILURE);
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
    EXPECT_EQ(ResultOfBody(Tile(0, 1)), AC_RESULT_FAILURE);
}

TEST_F(FailedCall, BecauseTheStoreHasShrunkLeavesTheDocumentUsable)
{
    const Stack stack = Stack(1).Size(1024, 1024).Contents(BytesOfSize(1, 20000));
    Open(stack);
    const AC_HIMAGE first = Tile(0, 0);
    const AC_HIMAGE last = Tile(0, 15);
    std::filesystem::resize_file(StoreFile(1), 64 + 172 + 20000);
    EXPECT_EQ(ResultOfBody(last), AC_RESULT_FAILURE);
    EXPECT_EQ(BodyOf(first), stack.TileBytes(0, 0, 0));
}

TEST_F(FailedCall, DoesNotComeOfAStoreThatWasTakenAwayWhileItIsOpen)
{
    const Stack stack(1);
    Open(stack);
    std::filesystem::remove(StoreFile(1));
    EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0));
}

} // namespace
