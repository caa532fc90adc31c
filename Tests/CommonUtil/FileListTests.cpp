#include "CommonUtil/FileList.h"

#include "CommonUtil/PlatformCalls.h"
#include "CommonUtil/Text.h"
#include "Tests/Support/Assertion.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace CommonUtil;

namespace
{

class FileList : public testing::Test
{
protected:
    /// The files found, by their names below the folder.
    std::vector<std::wstring> Find(const std::wstring& extension, bool isRecursive) const
    {
        std::vector<std::wstring> names;
        GetFileList(_folder.WideName(""), extension, names, isRecursive);
        return WithoutFolder(names);
    }
    std::vector<std::wstring> WithoutFolder(std::vector<std::wstring> names) const
    {
        const std::wstring start = _folder.WideName("") + L"/";
        for (std::wstring& name : names)
        {
            EXPECT_TRUE(name.starts_with(start));
            name.erase(0, start.size());
        }
        return names;
    }
    void Write(const char* name) const { _folder.Write(name, ""); }
    void Link(const char* name, const char* target) const
    {
        std::filesystem::create_symlink(target, _folder.Path() / name);
    }

    TestSupport::TemporaryFolder _folder;
};

using Names = std::vector<std::wstring>;

TEST_F(FileList, HasTheFilesWithADotInPlainOrder)
{
    for (const char* name : {"b.kor", "B.kor", "a.kor", "nodot", ".hidden", "\u00e4.kor"})
        Write(name);
    EXPECT_EQ(Find(L"", false), (Names{L".hidden", L"B.kor", L"a.kor", L"b.kor", L"\u00e4.kor"}));
}

TEST_F(FileList, HasTheFilesThatEndInAnExtension)
{
    for (const char* name : {"LZ4.dll", "other.so", "x.DLL", "dll", "a.dll.txt"})
        Write(name);
    EXPECT_EQ(Find(L".dll", false), Names{L"LZ4.dll"});
}

TEST_F(FileList, TakesAllNamesWithADotForOmeFiles)
{
    Write("a.ome.tif");
    Write("b.xml");
    EXPECT_EQ(Find(L".ome.tif", false), (Names{L"a.ome.tif", L"b.xml"}));
}

TEST_F(FileList, EntersFoldersThatItsPatternFinds)
{
    Write("a.d/2.txt");
    Write("a.d/1.txt");
    Write("a.d/b.d/3.txt");
    Write("a.d/nodot/4.txt");
    Write("z.txt");
    EXPECT_EQ(Find(L"", true), (Names{L"a.d/1.txt", L"a.d/2.txt", L"a.d/b.d/3.txt", L"z.txt"}));
    EXPECT_EQ(Find(L"", false), Names{L"z.txt"});
}

TEST_F(FileList, LooksForAllNamesInFoldersBelow)
{
    Write("a.d/1.txt");
    Write("b.dll");
    Write("c.dll/2.txt");
    EXPECT_EQ(Find(L".dll", true), (Names{L"b.dll", L"c.dll/2.txt"}));
}

TEST_F(FileList, AppendsToWhatIsThere)
{
    Write("a.txt");
    Names names{L"first"};
    GetFileList(_folder.WideName(""), L"", names, false);
    EXPECT_EQ(names.size(), 2u);
    EXPECT_EQ(names[0], L"first");
}

TEST_F(FileList, IsEmptyForAMissingFolder)
{
    Names names;
    GetFileList(_folder.WideName("missing"), L"", names, true);
    GetFileList(L"", L"", names, false);
    EXPECT_TRUE(names.empty());
}

TEST_F(FileList, FollowsLinks)
{
    Write("real.d/1.txt");
    Link("link.d", "real.d");
    Link("nowhere.txt", "missing");
    EXPECT_EQ(Find(L"", true), (Names{L"link.d/1.txt", L"nowhere.txt", L"real.d/1.txt"}));
}

TEST_F(FileList, DoesNotEnterAFolderInsideItself)
{
    Write("1.txt");
    Write("a.d/b.d/2.txt");
    Link("self.a", ".");
    Link("self.b", ".");
    Link("a.d/b.d/back.d", "../../a.d");
    EXPECT_EQ(Find(L"", true), (Names{L"1.txt", L"a.d/b.d/2.txt"}));
}

TEST_F(FileList, EntersFoldersThatLeadToEachOtherOnceOnEachWay)
{
    Write("a.d/1.txt");
    Write("b.d/2.txt");
    Link("a.d/to.b", "../b.d");
    Link("b.d/to.a", "../a.d");
    EXPECT_EQ(Find(L"", true), (Names{L"a.d/1.txt", L"a.d/to.b/2.txt", L"b.d/2.txt", L"b.d/to.a/1.txt"}));
}

TEST_F(FileList, EntersAFolderByEachLinkToIt)
{
    Write("a.d/1.txt");
    Names expected{L"a.d/1.txt"};
    for (const char* name : {"l0.d", "l1.d", "l2.d", "l3.d", "l4.d", "l5.d", "l6.d", "l7.d", "l8.d", "l9.d"})
    {
        Link(name, "a.d");
        expected.push_back(ToWide(name) + L"/1.txt");
    }
    EXPECT_EQ(Find(L"", true), expected);
}

/// So many links to a folder of so many entries, "." and ".." among them.
void LinkFolders(const std::filesystem::path& folder, int numOfLinks, int numOfEntries)
{
    std::filesystem::create_directory(folder / "all.d");
    for (int n = 0; n < numOfEntries - 2; ++n)
        std::ofstream(folder / "all.d" / (std::to_string(n) + ".txt"));
    for (int n = 0; n < numOfLinks; ++n)
        std::filesystem::create_symlink("all.d", folder / (std::to_string(n) + ".link"));
}

TEST_F(FileList, LooksAtAHundredThousandEntriesAgainAndNoMore)
{
    LinkFolders(_folder.Path(), 200, 500); // "0.link" comes before "all.d"
    EXPECT_EQ(Find(L"", true).size(), 201U * 498);
    Link("200.link", "all.d");
    Names names;
    EXPECT_FAILED_ASSERTION(GetFileList(_folder.WideName(""), L"", names, true));
}

TEST_F(FileList, OfWaysThatDoubleAtEachDepthEnds)
{
    std::filesystem::path folder = _folder.Path() / "x.d";
    for (int depth = 0; depth < 40; ++depth, folder /= "x.d") // 2^40 ways
    {
        std::filesystem::create_directories(folder / "x.d");
        std::filesystem::create_symlink("x.d", folder / "y.d");
    }
    Names names;
    EXPECT_FAILED_ASSERTION(GetFileList(_folder.WideName(""), L"", names, true));
}

TEST_F(FileList, ListsAPipeWithoutWaitingAtIt)
{
    ASSERT_EQ(mkfifo(_folder.Name("a.pipe").c_str(), 0600), 0);
    Write("b.txt");
    EXPECT_EQ(Find(L"", false), (Names{L"a.pipe", L"b.txt"}));
}

TEST_F(FileList, HoldsNoFileOpenAfterwards)
{
    Write("a.d/b.d/1.txt");
    const size_t numOfOpenFiles = TestSupport::NumOfOpenFiles();
    Find(L"", true);
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles);
}

TEST_F(FileList, TellsWhetherAFileExists)
{
    Write("a.txt");
    EXPECT_TRUE(FileExists(_folder.WideName(""), L"a.txt"));
    EXPECT_FALSE(FileExists(_folder.WideName(""), L"A.txt"));
    EXPECT_FALSE(FileExists(_folder.WideName("missing"), L"a.txt"));
}

TEST(GetTempFilePath, IsANewUuidInTheTemporaryFolder)
{
    std::wstring first;
    std::wstring second;
    ASSERT_EQ(GetTempFilePath(first), 0);
    ASSERT_EQ(GetTempFilePath(second), 0);
    EXPECT_NE(first, second);
    ASSERT_TRUE(first.starts_with(L"/var/tmp//.temp/")) << Utf16ToUtf8(first);
    const std::wstring uuid = first.substr(16);
    EXPECT_EQ(uuid.size(), 36u);
    EXPECT_EQ(uuid.find_first_not_of(L"0123456789ABCDEF-"), std::wstring::npos);
    EXPECT_FALSE(std::filesystem::exists(Utf16ToUtf8(first)));
}

TEST(GetTempFilePath, GivesFourWhereTheTemporaryFolderCannotBeMade)
{
    constexpr int CannotChangeTheRoot = 77;
    const TestSupport::TemporaryFolder rootWithoutFolders;
    const auto askBelow = [](const char* root)
    {
        // Only root may change to another one, and whoever is root of a user namespace of his own.
        if (chroot(root) != 0 && (unshare(CLONE_NEWUSER) != 0 || chroot(root) != 0))
            _exit(CannotChangeTheRoot);
        std::wstring path;
        _exit(GetTempFilePath(path)); // the leak sanitizer, which exit calls, finds no /proc below this root
    };
    const auto isFour = [](int status)
    { return WIFEXITED(status) && (WEXITSTATUS(status) == 4 || WEXITSTATUS(status) == CannotChangeTheRoot); };
    EXPECT_EXIT(askBelow(rootWithoutFolders.Path().c_str()), isFour, "");
}

TEST(GetTicksPerMillisecond, IsThatOfThePerformanceCounter)
{
    int64_t ticksPerSecond = 0;
    QueryPerformanceFrequency(&ticksPerSecond);
    EXPECT_EQ(GetTicksPerMillisecond() * 1000, static_cast<double>(ticksPerSecond));
}

} // namespace
