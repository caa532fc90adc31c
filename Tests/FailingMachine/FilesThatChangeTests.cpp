#include "Fuzzing/FailingMachine/FileCalls.h"
#include "Tests/FailingMachine/SlideOnAMachine.h"
#include "Tests/Support/ChildProcess.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>

/// Files change under a document that is open, or are not what they should be when it is opened.

using namespace Fuzzing;
namespace fs = std::filesystem;

namespace
{

class AnOpenDocument : public SlideOnAMachine
{
};

TEST_P(AnOpenDocument, OutlivesFilesThatShrink)
{
    ExpectItToOutlive([](const fs::path& file) { fs::resize_file(file, fs::file_size(file) / 2); });
}

TEST_P(AnOpenDocument, OutlivesFilesThatAreEmptied)
{
    ExpectItToOutlive([](const fs::path& file) { fs::resize_file(file, 0); });
}

TEST_P(AnOpenDocument, OutlivesFilesThatVanish)
{
    ExpectItToOutlive([](const fs::path& file) { fs::remove(file); });
}

TEST_P(AnOpenDocument, OutlivesFilesThatBecomeFolders)
{
    ExpectItToOutlive(
        [](const fs::path& file)
        {
            fs::remove(file);
            fs::create_directory(file);
        });
}

TEST_P(AnOpenDocument, OutlivesFilesThatBecomeLinksToThemselves)
{
    ExpectItToOutlive(
        [](const fs::path& file)
        {
            fs::remove(file);
            fs::create_symlink(file, file);
        });
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, AnOpenDocument, testing::ValuesIn(NumbersOfSlides()), NameOfSlide);

class ADocument : public SlideOnAMachine
{
protected:
    /// Puts away what stands under a name.
    void PutAway(const fs::path& name)
    {
        fs::rename(name, Folder() / "away");
        _name = name;
    }
    void PutBack() const
    {
        fs::remove(_name);
        fs::rename(Folder() / "away", _name);
    }
    bool HasStore() const { return fs::exists(SideFolder()); }

private:
    fs::path _name;
};

TEST_P(ADocument, IsNotOpenedWhereAFolderStands)
{
    PutAway(Document());
    fs::create_directory(Document());
    EXPECT_NE(Open(), AC_RESULT_SUCCESS);
    PutBack();
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    ExpectItToAnswerAsEver();
}

TEST_P(ADocument, IsNotFoundWhereALinkLeadsNowhere)
{
    PutAway(Document());
    fs::create_symlink("nowhere", Document());
    EXPECT_EQ(Open(), AC_RESULT_FILE_NOT_FOUND);
    PutBack();
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    ExpectItToAnswerAsEver();
}

TEST_P(ADocument, IsRefusedWhereAFolderStandsForItsStore)
{
    for (const fs::path& file : Files())
    {
        if (file == Document())
            continue;
        PutAway(file);
        fs::create_directory(file);
        EXPECT_NE(Open(), AC_RESULT_SUCCESS);
        PutBack();
    }
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    ExpectItToAnswerAsEver();
}

TEST_P(ADocument, MissesItsStoreWhereAFileStandsForTheSideFolder)
{
    if (!HasStore())
        GTEST_SKIP() << "it keeps its pixels itself";
    PutAway(SideFolder());
    fs::copy_file(Document(), SideFolder());
    EXPECT_EQ(Open(), AC_RESULT_MISSING_FILE);
    PutBack();
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    ExpectItToAnswerAsEver();
}

TEST_P(ADocument, MissesItsStoreWhereALinkToTheSideFolderLeadsNowhere)
{
    if (!HasStore())
        GTEST_SKIP() << "it keeps its pixels itself";
    PutAway(SideFolder());
    fs::create_symlink("nowhere", SideFolder());
    EXPECT_EQ(Open(), AC_RESULT_MISSING_FILE);
    PutBack();
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    ExpectItToAnswerAsEver();
}

TEST_P(ADocument, AnswersAsEverWhileAnotherHasLockedItsFiles)
{
    const auto answersBesideLocks = [this]
    {
        for (const fs::path& file : Files())
            if (flock(open(file.c_str(), O_RDONLY | O_CLOEXEC), LOCK_EX | LOCK_NB) != 0)
                return 1;
        // A lock belongs to the one who opened the file: another process would see the same.
        if (Open() != AC_RESULT_SUCCESS)
            return 2;
        ExpectItToAnswerAsEver();
        return HasFailure() ? 3 : 0;
    };
    EXPECT_EQ(TestSupport::RunInChild(answersBesideLocks), TestSupport::ExitedWith(0));
}

/// Lets each file that is opened be one that must not be. Permissions would not do: they do not hold for everybody.
class CNoAccess
{
public:
    explicit CNoAccess(uint64_t numberOfOpen)
    {
        FileCalls().LetFail(numberOfOpen, FailureSpan::AllCalls);
        FileCalls().Failure = FileFailure::NoAccess;
        FileCalls().EnterFunction();
    }
    ~CNoAccess()
    {
        FileCalls().StartCounting();
        FileCalls().Failure = FileFailure::Nothing;
    }
    CNoAccess(const CNoAccess&) = delete;
    CNoAccess& operator=(const CNoAccess&) = delete;
};

TEST_P(ADocument, IsInUseWhereItMustNotBeRead)
{
    {
        const CNoAccess noAccess(1);
        EXPECT_EQ(Open(), AC_RESULT_IN_USE);
    }
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    ExpectItToAnswerAsEver();
}

TEST_P(ADocument, IsRefusedWhereItsStoreMustNotBeRead)
{
    if (!HasStore())
        GTEST_SKIP() << "it keeps its pixels itself";
    {
        const CNoAccess noAccess(2);
        EXPECT_NE(Open(), AC_RESULT_SUCCESS);
    }
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    ExpectItToAnswerAsEver();
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, ADocument, testing::ValuesIn(NumbersOfSlides()), NameOfSlide);

} // namespace
