// The files that make up a document, by its name.

#include "Tests/Accessor/Slide.h"

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
