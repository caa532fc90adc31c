#include "PlatformAbstractionLayer/TemporaryFiles.h"

#include "CommonUtil/PlatformCalls.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>

using TestSupport::LogOf;

namespace
{

bool LogsInternalError(const std::function<void()>& function)
{
    return LogOf(function).find("Internal error\n") != std::string::npos;
}

TEST(GetTempPath, MakesAndNamesTheFolder)
{
    std::array<wchar_t, 17> path{};
    EXPECT_EQ(GetTempPath(17, path.data()), 1u);
    EXPECT_STREQ(path.data(), L"/var/tmp//.temp");
    EXPECT_TRUE(std::filesystem::is_directory("/var/tmp/.temp"));
}

TEST(GetTempPath, NeedsRoomForTheZero)
{
    std::array<wchar_t, 16> path{};
    EXPECT_EQ(GetTempPath(16, path.data()), 1u);
    path.fill(L'?');
    EXPECT_TRUE(LogsInternalError([&] { EXPECT_EQ(GetTempPath(15, path.data()), 0u); }));
    EXPECT_EQ(path[0], L'?');
    EXPECT_EQ(GetTempPath(0, nullptr), 0u);
}

TEST(TemporaryFolderOfThePlatform, IsTakenAsItStands)
{
    const TestSupport::TemporaryFolder folder;
    std::array<wchar_t, 200> name{};
    EXPECT_EQ(MakeAndNameFolder(folder.Name("new"), 200, name.data()), 1u);
    EXPECT_EQ(MakeAndNameFolder(folder.Name("new"), 200, name.data()), 1u);
    EXPECT_EQ(name.data(), folder.WideName("new"));
}

TEST(TemporaryFolderOfThePlatform, CannotStandInThePlaceOfAFile)
{
    const TestSupport::TemporaryFolder folder;
    folder.Write("file", "");
    std::array<wchar_t, 200> name{};
    EXPECT_TRUE(LogsInternalError([&] { EXPECT_EQ(MakeAndNameFolder(folder.Name("file"), 200, name.data()), 0u); }));
}

TEST(TemporaryFolderOfThePlatform, CannotStandInAMissingFolder)
{
    const TestSupport::TemporaryFolder folder;
    std::array<wchar_t, 200> name{};
    EXPECT_TRUE(
        LogsInternalError([&] { EXPECT_EQ(MakeAndNameFolder(folder.Name("missing/new"), 200, name.data()), 0u); }));
}

TEST(GetTempFileName, MakesANewFileEachTime)
{
    const TestSupport::TemporaryFolder folder;
    const std::wstring path = folder.WideName("").substr(0, folder.WideName("").size() - 1);
    std::set<std::wstring> names;
    std::array<wchar_t, MaxLengthOfTempFileName + 1> name{};
    for (int i = 0; i < 10; ++i)
    {
        ASSERT_EQ(GetTempFileName(path.c_str(), L"pr\u00e4", 0, name.data()), 1u);
        names.insert(name.data());
    }
    EXPECT_EQ(names.size(), 10u);
    for (const std::wstring& made : names)
    {
        EXPECT_EQ(made.substr(0, path.size() + 4), path + L"/pr\u00e4");
        EXPECT_EQ(made.substr(path.size() + 4 + 6), L".tmp");
        EXPECT_TRUE(std::filesystem::is_empty(Utf16ToUtf8(made)));
    }
}

TEST(GetTempFileName, LeavesNoFileOpen)
{
    const TestSupport::TemporaryFolder folder;
    std::array<wchar_t, MaxLengthOfTempFileName + 1> name{};
    const size_t numOfOpenFiles = TestSupport::NumOfOpenFiles();
    GetTempFileName(folder.WideName("").c_str(), L"p", 0, name.data());
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles);
}

TEST(GetTempFileName, RefusesWhatItCannotServe)
{
    std::array<wchar_t, MaxLengthOfTempFileName + 1> name{};
    EXPECT_TRUE(LogsInternalError([&] { EXPECT_EQ(GetTempFileName(L"/tmp", L"p", 1, name.data()), 0u); }));
    const std::wstring longPrefix(999 - 4 - 11 - 1 + 2, L'p'); // one more than fits
    EXPECT_TRUE(
        LogsInternalError([&] { EXPECT_EQ(GetTempFileName(L"/tmp", longPrefix.c_str(), 0, name.data()), 0u); }));
    EXPECT_TRUE(LogsInternalError([&] { EXPECT_EQ(GetTempFileName(nullptr, L"p", 0, name.data()), 0u); }));
    EXPECT_EQ(GetTempFileName(L"/missing", L"p", 0, name.data()), 0u);
}

} // namespace
