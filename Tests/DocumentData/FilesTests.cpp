// The files that make up a document, by its name.

#include "Tests/Accessor/Slide.h"
#include "Tests/DocumentData/FolderReadings.h"

#include <chrono>
#include <set>
#include <thread>

using namespace SlideOfTest;

namespace
{

class Files : public testing::Test
{
protected:
    TestSupport::TemporaryFolder Folder;
    const std::wstring Name = Folder.WideName("slide.zel");

    void Write(Document document) { document.WriteTo(Folder.Path() / "slide.zel"); }
    static AC_Result Count(const std::wstring& name, UINT& count)
    {
        return Call(_AC_GetNumOfFiles, name.c_str(), &count);
    }
    static UINT NumOfFiles(const std::wstring& name)
    {
        UINT count = 0;
        EXPECT_EQ(Count(name, count), AC_RESULT_SUCCESS);
        return count;
    }
    /// By both steps of the protocol.
    static std::wstring FileName(const std::wstring& document, UINT number)
    {
        UINT size = 0;
        EXPECT_EQ(Call(_AC_GetFileName, document.c_str(), number, nullptr, &size), AC_RESULT_SUCCESS);
        std::wstring name(size / sizeof(wchar_t), L'?');
        EXPECT_EQ(Call(_AC_GetFileName, document.c_str(), number, name.data(), &size), AC_RESULT_SUCCESS);
        EXPECT_EQ(name.back(), L'\0');
        name.pop_back();
        return name;
    }
    static AC_Result ResultOfName(const std::wstring& document, UINT number)
    {
        UINT size = 0;
        return Call(_AC_GetFileName, document.c_str(), number, nullptr, &size);
    }
};

TEST_F(Files, OfADocumentWithoutASideFolderAreItself)
{
    Write(Document());
    EXPECT_EQ(NumOfFiles(Name), 1U);
    EXPECT_EQ(FileName(Name, 0), Name);
    EXPECT_EQ(ResultOfName(Name, 1), AC_RESULT_INVALID_PARAM);
}

// The folders "stack1" and the like have no dot in their names, and are not entered for it.
TEST_F(Files, InFoldersWithoutADotAreNotCounted)
{
    Write(Document().With(Stack(1)).With(Stack(2)));
    EXPECT_EQ(NumOfFiles(Name), 1U);
}

TEST_F(Files, InTheSideFolderAreCounted)
{
    Write(Document());
    Folder.Write("_slide_/notes.txt", "notes");
    Folder.Write("_slide_/more.d/deep.txt", "deep");
    Folder.Write("_slide_/label", "without a dot");
    Folder.Write("other.txt", "beside it");
    EXPECT_EQ(NumOfFiles(Name), 3U);
    EXPECT_THAT((std::vector<std::wstring>{FileName(Name, 1), FileName(Name, 2)}),
                testing::UnorderedElementsAre(Folder.WideName("_slide_/notes.txt"),
                                              Folder.WideName("_slide_/more.d/deep.txt")));
    EXPECT_EQ(ResultOfName(Name, 2), AC_RESULT_SUCCESS);
    EXPECT_EQ(ResultOfName(Name, 3), AC_RESULT_INVALID_PARAM);
}

TEST_F(Files, AreFoundByANameWithBackslashes)
{
    Write(Document());
    Folder.Write("_slide_/notes.txt", "notes");
    std::wstring backslashes = Name;
    std::replace(backslashes.begin(), backslashes.end(), L'/', L'\\');
    EXPECT_EQ(NumOfFiles(backslashes), 2U);
    EXPECT_EQ(FileName(backslashes, 0), backslashes);
    EXPECT_EQ(FileName(backslashes, 1), Folder.WideName("_slide_/notes.txt"));
}

TEST_F(Files, AreNamedWithoutTheDocument)
{
    Folder.Write("_slide_/notes.txt", "notes");
    EXPECT_EQ(FileName(Name, 1), Folder.WideName("_slide_/notes.txt"));
}

TEST_F(Files, AreNotCountedWithoutTheDocument)
{
    UINT count = 7;
    EXPECT_EQ(Count(Name, count), AC_RESULT_FILE_NOT_FOUND);
    EXPECT_EQ(count, 7U);
}

TEST_F(Files, OfAStrictDocumentThatIsRefusedAreNotCounted)
{
    Folder.Write("slide.zel", "no document");
    UINT count = 7;
    EXPECT_NE(Count(Name, count), AC_RESULT_SUCCESS);
    EXPECT_EQ(count, 7U);
}

TEST_F(Files, AreClosedBehindTheCount)
{
    Write(Document().With(Stack(1)));
    const size_t before = TestSupport::NumOfOpenFiles();
    NumOfFiles(Name);
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), before);
}

// Listings.

/// Files in the side folder and in one below it, which is 1 + 1 folders to read.
class ListedFiles : public Files
{
protected:
    static constexpr UINT NumOfAllFiles = 60;

    ListedFiles()
    {
        for (UINT n = 0; n < NumOfAllFiles; ++n)
            Folder.Write((n % 2 == 0 ? "_slide_/" : "_slide_/more.d/") + std::to_string(n) + ".txt", "");
        AskUntilTheListingIsKept();
    }
    /// A folder that has changed just now may change again without another time to show.
    void AskUntilTheListingIsKept() const
    {
        bool isKept = false;
        for (int n = 0; n < 500 && !isKept; ++n)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            const unsigned before = NumOfFolderReadings();
            ResultOfName(Name, 1);
            isKept = NumOfFolderReadings() == before;
        }
        EXPECT_TRUE(isKept);
    }
    UINT NumOfNames() const
    {
        UINT number = 0;
        while (ResultOfName(Name, number + 1) == AC_RESULT_SUCCESS)
            ++number;
        return number;
    }
    std::set<std::wstring> AllNames() const
    {
        std::set<std::wstring> names;
        for (UINT n = 1; ResultOfName(Name, n) == AC_RESULT_SUCCESS; ++n)
            names.insert(FileName(Name, n));
        return names;
    }
    std::filesystem::path SideFolder() const { return Folder.Path() / "_slide_"; }
};

TEST_F(ListedFiles, AreReadOnceForAllNames)
{
    const unsigned before = NumOfFolderReadings();
    EXPECT_EQ(AllNames().size(), NumOfAllFiles);
    EXPECT_EQ(NumOfFolderReadings(), before);
}

TEST_F(ListedFiles, AreReadAgainWhenOneIsNewOrGone)
{
    for (const char* folder : {"_slide_", "_slide_/more.d"})
    {
        const std::string name = std::string(folder) + "/new.txt";
        Folder.Write(name, "");
        EXPECT_EQ(NumOfNames(), NumOfAllFiles + 1) << name;
        AskUntilTheListingIsKept();
        std::filesystem::remove(Folder.Name(name));
        EXPECT_EQ(NumOfNames(), NumOfAllFiles) << name;
        AskUntilTheListingIsKept();
    }
}

TEST_F(ListedFiles, AreReadAgainWhenAnotherFolderTakesThePlace)
{
    std::filesystem::rename(SideFolder(), Folder.Path() / "old");
    EXPECT_EQ(NumOfNames(), 0U);
    Folder.Write("new/a.txt", "");
    std::filesystem::rename(Folder.Path() / "new", SideFolder());
    EXPECT_EQ(NumOfNames(), 1U);
    AskUntilTheListingIsKept();
    std::filesystem::rename(SideFolder(), Folder.Path() / "new");
    std::filesystem::rename(Folder.Path() / "old", SideFolder());
    EXPECT_EQ(NumOfNames(), NumOfAllFiles);
}

TEST_F(ListedFiles, AreReadAgainWhenALinkLeadsElsewhere)
{
    Folder.Write("elsewhere/in.d/a.txt", "");
    Folder.Write("nowhere/in.d/b.d/c.txt", "");
    std::filesystem::create_directory_symlink(Folder.Path() / "elsewhere", Folder.Path() / "there");
    std::filesystem::create_directory_symlink(Folder.Path() / "there" / "in.d", SideFolder() / "link.d");
    AskUntilTheListingIsKept();
    EXPECT_THAT(AllNames(), Contains(Folder.WideName("_slide_/link.d/a.txt")));
    std::filesystem::remove(Folder.Path() / "there");
    std::filesystem::create_directory_symlink(Folder.Path() / "nowhere", Folder.Path() / "there");
    EXPECT_THAT(AllNames(), Contains(Folder.WideName("_slide_/link.d/b.d/c.txt")));
}

TEST_F(ListedFiles, AreNeverOldHoweverFastTheyChange)
{
    for (UINT n = 1; n <= 300; ++n) // many changes in one tick of the clock
    {
        Folder.Write("_slide_/new" + std::to_string(n) + ".txt", "");
        ASSERT_EQ(ResultOfName(Name, NumOfAllFiles + n), AC_RESULT_SUCCESS) << n;
        ASSERT_EQ(ResultOfName(Name, NumOfAllFiles + n + 1), AC_RESULT_INVALID_PARAM) << n;
    }
}

TEST_F(ListedFiles, AreReadAnewForTheirCount)
{
    Write(Document());
    const unsigned before = NumOfFolderReadings();
    EXPECT_EQ(NumOfFiles(Name), NumOfAllFiles + 1);
    EXPECT_EQ(NumOfFolderReadings(), before + 2);
}

TEST_F(ListedFiles, OfAnotherDocumentAreItsOwn)
{
    Folder.Write("_other_/a.txt", "");
    const std::wstring other = Folder.WideName("other.zel");
    for (int n = 0; n < 3; ++n)
    {
        EXPECT_EQ(FileName(other, 1), Folder.WideName("_other_/a.txt"));
        EXPECT_EQ(ResultOfName(other, 2), AC_RESULT_INVALID_PARAM);
        EXPECT_EQ(NumOfNames(), NumOfAllFiles);
    }
}

TEST_F(ListedFiles, AreTheSameForThreadsThatAskAtOnce)
{
    const auto ask = [this]
    {
        for (UINT n = 1; n <= NumOfAllFiles; ++n)
            EXPECT_TRUE(FileName(Name, n).starts_with(Folder.WideName("_slide_/")));
    };
    std::vector<std::jthread> threads;
    for (int n = 0; n < 4; ++n)
        threads.emplace_back(ask);
}

TEST_F(Files, BehindTooManyLinksAreAFailure)
{
    Write(Document());
    for (int n = 0; n < 300; ++n)
    {
        Folder.Write("_slide_/all.d/" + std::to_string(n) + ".txt", "");
        std::filesystem::create_symlink("all.d", Folder.Path() / "_slide_" / (std::to_string(n) + ".link"));
    }
    EXPECT_EQ(NumOfFiles(Name), 1 + 301U * 300);
    for (int n = 300; n < 340; ++n)
        std::filesystem::create_symlink("all.d", Folder.Path() / "_slide_" / (std::to_string(n) + ".link"));
    UINT count = 7;
    EXPECT_EQ(Count(Name, count), AC_RESULT_FAILURE);
    EXPECT_EQ(count, 7U);
    EXPECT_EQ(ResultOfName(Name, 1), AC_RESULT_FAILURE);
}

TEST_F(Files, NeedANameWithADot)
{
    EXPECT_EQ(ResultOfName(L"/tmp/slide", 0), AC_RESULT_INVALID_PARAM);
}

TEST_F(Files, OfANameWithoutAFolderAreThemselves)
{
    EXPECT_EQ(FileName(L"no-such-document.zel", 0), L"no-such-document.zel");
}

TEST_F(Files, ToldIntoTooSmallABufferLeaveAnEmptyText)
{
    std::wstring buffer(Name.size(), L'?');
    auto size = static_cast<UINT>(buffer.size() * sizeof(wchar_t));
    EXPECT_EQ(Call(_AC_GetFileName, Name.c_str(), UINT{0}, buffer.data(), &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(buffer.front(), L'\0');
    EXPECT_EQ(buffer.back(), L'?');
}

TEST_F(Files, ToldIntoABufferOfNoSizeLeaveItAlone)
{
    wchar_t character = L'?';
    UINT size = 3;
    EXPECT_EQ(Call(_AC_GetFileName, Name.c_str(), UINT{0}, &character, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(character, L'?');
}

TEST_F(Files, AreRefusedWithoutArgumentsAndWithoutALogLine)
{
    UINT size = 64;
    wchar_t buffer[16] = {};
    const auto messages = MessagesOf(
        [&]
        {
            EXPECT_EQ(_AC_GetNumOfFiles(nullptr, &size), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetNumOfFiles(Name.c_str(), nullptr), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetFileName(nullptr, 0, buffer, &size), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetFileName(Name.c_str(), 0, nullptr, nullptr), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetFileName(Name.c_str(), 0, buffer, nullptr), AC_RESULT_INVALID_PARAM);
        });
    EXPECT_THAT(messages, IsEmpty());
}

} // namespace
