#include "CommonUtil/PlatformCalls.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

using Names = std::vector<std::wstring>;

class Find : public testing::Test
{
protected:
    FindHandle First(const std::wstring& pattern)
    {
        return FindFirstFile(_folder.WideName(Narrow(pattern)).c_str(), &_found);
    }
    Names All(const std::wstring& pattern)
    {
        Names names;
        const FindHandle search = First(pattern);
        if (search == INVALID_FIND_HANDLE || search == 0)
            return names;
        do
            names.emplace_back(_found.cFileName);
        while (FindNextFile(search, &_found) == 1);
        EXPECT_EQ(FindClose(search), 1);
        return names;
    }
    static std::string Narrow(const std::wstring& text) { return Utf16ToUtf8(text); }
    void Write(std::initializer_list<const char*> names) const
    {
        for (const char* name : names)
            _folder.Write(name, "");
    }

    TestSupport::TemporaryFolder _folder;
    WIN32_FIND_DATA _found;
};

TEST_F(Find, GivesMatchesInPlainOrder)
{
    Write({"b.x", "a.x", "B.x", "a.y", "\u00e4.x", "_.x"});
    EXPECT_EQ(All(L"*.x"), (Names{L"B.x", L"_.x", L"a.x", L"b.x", L"\u00e4.x"}));
}

TEST_F(Find, MatchesDotsAndCaseAsTheyStand)
{
    Write({"nodot", "with.dot", ".hidden"});
    EXPECT_EQ(All(L"*.*"), (Names{L".", L"..", L".hidden", L"with.dot"}));
    EXPECT_EQ(All(L"*"), (Names{L".", L"..", L".hidden", L"nodot", L"with.dot"}));
    EXPECT_EQ(All(L"NODOT"), Names{});
    EXPECT_EQ(All(L"no?ot"), Names{L"nodot"});
    EXPECT_EQ(All(L"[mn]odot"), Names{L"nodot"});
}

TEST_F(Find, TakesABackslashForItself)
{
    Write({"a\\b", "ab"});
    EXPECT_EQ(All(L"a\\b"), Names{L"a\\b"});
}

TEST_F(Find, FindsNothingWithoutAMatch)
{
    Write({"a"});
    EXPECT_EQ(First(L"b*"), -1);
}

TEST_F(Find, FindsNothingInAMissingFolderOrAFile)
{
    Write({"file"});
    EXPECT_EQ(First(L"missing/*"), -1);
    EXPECT_EQ(First(L"file/*"), -1);
    EXPECT_EQ(FindFirstFile(L"/*.no such name", &_found), -1);
}

TEST_F(Find, TellsFoldersFromFiles)
{
    Write({"a.folder/x", "b.file"});
    std::filesystem::create_directory_symlink("a.folder", _folder.Path() / "c.link");
    std::filesystem::create_symlink("missing", _folder.Path() / "d.link");
    const FindHandle search = First(L"?.*");
    EXPECT_EQ(_found.dwFileAttributes, 16u); // ".."
    ASSERT_EQ(FindNextFile(search, &_found), 1);
    EXPECT_EQ(_found.dwFileAttributes, 16u) << "a.folder";
    ASSERT_EQ(FindNextFile(search, &_found), 1);
    EXPECT_EQ(_found.dwFileAttributes, 128u) << "b.file";
    ASSERT_EQ(FindNextFile(search, &_found), 1);
    EXPECT_EQ(_found.dwFileAttributes, 16u) << "c.link";
    ASSERT_EQ(FindNextFile(search, &_found), 1);
    EXPECT_EQ(_found.dwFileAttributes, 128u) << "d.link";
    EXPECT_EQ(FindNextFile(search, &_found), 0);
    FindClose(search);
}

TEST_F(Find, TellsThePattern)
{
    Write({"\u00e4.x"});
    const FindHandle search = First(L"\u00e4*");
    EXPECT_STREQ(_found.pattern, "\u00e4*");
    FindClose(search);
}

TEST_F(Find, KeepsItsListing)
{
    Write({"a", "b", "c"});
    const FindHandle search = First(L"?");
    Write({"aa"});
    std::filesystem::remove(_folder.Path() / "c");
    Names names{_found.cFileName};
    while (FindNextFile(search, &_found) == 1)
        names.emplace_back(_found.cFileName);
    FindClose(search);
    EXPECT_EQ(names, (Names{L".", L"a", L"b", L"c"}));
}

TEST_F(Find, KeepsSearchesApart)
{
    Write({"a1", "a2", "b1", "b2"});
    const FindHandle a = First(L"a*");
    const FindHandle b = First(L"b*");
    FindNextFile(a, &_found);
    EXPECT_STREQ(_found.cFileName, L"a2");
    FindNextFile(b, &_found);
    EXPECT_STREQ(_found.cFileName, L"b2");
    EXPECT_EQ(FindClose(a), 1);
    EXPECT_EQ(FindNextFile(b, &_found), 0);
    EXPECT_EQ(FindClose(b), 1);
}

TEST_F(Find, LogsAHandleThatIsNone)
{
    EXPECT_NE(TestSupport::LogOf([] { EXPECT_EQ(FindClose(1), 0); }).find(" invalid handle specified!!!\n"),
              std::string::npos);
    EXPECT_EQ(FindNextFile(1, &_found), 0);
}

TEST_F(Find, EndsOnce)
{
    Write({"a"});
    const FindHandle search = First(L"a");
    EXPECT_EQ(FindClose(search), 1);
    EXPECT_EQ(FindClose(search), 0);
    EXPECT_EQ(FindNextFile(search, &_found), 0);
}

TEST_F(Find, LeavesNoFileOpen)
{
    Write({"a", "b"});
    const size_t numOfOpenFiles = TestSupport::NumOfOpenFiles();
    All(L"*");
    First(L"missing");
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles);
}

TEST_F(Find, DoesNotWaitAtAPipe)
{
    ASSERT_EQ(mkfifo(_folder.Name("pipe").c_str(), 0600), 0);
    EXPECT_EQ(TestSupport::RunInChild([&] { return First(L"p*") == INVALID_FIND_HANDLE ? 1 : 0; }, 10),
              TestSupport::ExitedWith(0));
}

TEST_F(Find, LogsAFirstMatchThatCannotBeOpened)
{
    std::filesystem::create_symlink("missing", _folder.Path() / "link");
    EXPECT_NE(TestSupport::LogOf([&] { EXPECT_EQ(First(L"link"), -1); }).find("Unexpected internal error!!!\n"),
              std::string::npos);
}

TEST_F(Find, RefusesAFolderNameThatIsTooLong)
{
    const std::wstring longName = L"/" + std::wstring(999, L'x') + L"/*";
    EXPECT_NE(
        TestSupport::LogOf([&] { EXPECT_EQ(FindFirstFile(longName.c_str(), &_found), 0); }).find("Internal error\n"),
        std::string::npos);
    EXPECT_EQ(FindFirstFile(longName.substr(1).c_str(), &_found), -1) << "999 characters are not too many";
}

TEST_F(Find, RefusesAPatternThatIsTooLong)
{
    EXPECT_EQ(First(std::wstring(1000, L'*')), 0);
}

TEST_F(Find, RefusesNull)
{
    EXPECT_EQ(FindFirstFile(nullptr, &_found), -1);
    EXPECT_EQ(FindFirstFile(L"/*", nullptr), -1);
}

TEST_F(Find, LooksInTheCurrentFolderWithoutAnother)
{
    Write({"only.here"});
    const auto find = [&]
    {
        std::filesystem::current_path(_folder.Path());
        return FindFirstFile(L"only.*", &_found) != INVALID_FIND_HANDLE ? 0 : 1;
    };
    EXPECT_EQ(TestSupport::RunInChild(find), TestSupport::ExitedWith(0));
}

TEST_F(Find, ServesSeveralThreads)
{
    for (int i = 0; i < 50; ++i)
        Write({("a" + std::to_string(i)).c_str(), ("b" + std::to_string(i)).c_str()});
    const auto search = [this](const char* pattern)
    {
        const auto found = std::make_unique<WIN32_FIND_DATA>();
        for (int turn = 0; turn < 20; ++turn)
        {
            const FindHandle handle = FindFirstFile(_folder.WideName(pattern).c_str(), found.get());
            int count = 1;
            for (; FindNextFile(handle, found.get()) == 1; ++count)
                EXPECT_EQ(found->cFileName[0], pattern[0]);
            EXPECT_EQ(count, 50);
            FindClose(handle);
        }
    };
    const std::jthread other(search, "a*");
    search("b*");
}

} // namespace
