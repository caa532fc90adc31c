#include "PlatformAbstractionLayer/Paths.h"

#include "CommonUtil/PlatformCalls.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace
{

TEST(PathFindFileName, IsBehindTheLastSeparator)
{
    const auto name = [](std::wstring path) { return std::wstring(PathFindFileName(path.data())); };
    EXPECT_EQ(name(L"/a/b.c"), L"b.c");
    EXPECT_EQ(name(L"a\\b.c"), L"b.c");
    EXPECT_EQ(name(L"b.c"), L"b.c");
    EXPECT_EQ(name(L"/a/"), L"");
    EXPECT_EQ(PathFindFileName(nullptr), nullptr);
}

/// What is left of a path.
std::wstring After(void (*change)(wchar_t*), std::wstring path)
{
    change(path.data());
    return path.c_str();
}

TEST(PathRemoveExtension, CutsTheNameAtItsLastDot)
{
    EXPECT_EQ(After(PathRemoveExtension, L"/a.b/c.d.e"), L"/a.b/c.d");
    EXPECT_EQ(After(PathRemoveExtension, L"/a.b/c"), L"/a.b/c");
    PathRemoveExtension(nullptr);
}

TEST(PathRemoveFileSpec, CutsTheName)
{
    const auto cut = [](wchar_t* path) { PathRemoveFileSpec(path); };
    EXPECT_EQ(After(cut, L"/a/b"), L"/a");
    EXPECT_EQ(After(cut, L"/a/"), L"/a");
    EXPECT_EQ(After(cut, L"/a"), L"/");
    EXPECT_EQ(After(cut, L"a"), L"");
    EXPECT_EQ(PathRemoveFileSpec(std::wstring(L"/a").data()), 1);
    EXPECT_EQ(PathRemoveFileSpec(std::wstring(L"/").data()), 0);
    EXPECT_EQ(PathRemoveFileSpec(nullptr), 0);
}

TEST(PathRemoveBackslash, CutsOneSeparatorAtTheEnd)
{
    const auto cut = [](wchar_t* path) { PathRemoveBackslashW(path); };
    EXPECT_EQ(After(cut, L"a\\"), L"a");
    EXPECT_EQ(After(cut, L"a//"), L"a/");
    EXPECT_EQ(After(cut, L"/"), L"/");
    EXPECT_EQ(After(cut, L""), L"");
    std::wstring path = L"ab/";
    EXPECT_EQ(PathRemoveBackslashW(path.data()), path.data() + 1);
    EXPECT_EQ(PathRemoveBackslashW(nullptr), nullptr);
}

TEST(PathIsUnc, BeginsWithTwoBackslashes)
{
    EXPECT_EQ(PathIsUNC(L"\\\\server\\share"), 1);
    EXPECT_EQ(PathIsUNC(L"\\a"), 0);
    EXPECT_EQ(PathIsUNC(L"//a"), 0);
    EXPECT_EQ(PathIsUNC(nullptr), 0);
}

TEST(FullPath, IsAbsoluteAndWithoutDots)
{
    wchar_t buffer[1000];
    wchar_t* name = nullptr;
    EXPECT_EQ(GetFullPathName(L"/a/./b/../\u00e4.c", 1000, buffer, &name), 6u);
    EXPECT_STREQ(buffer, L"/a/\u00e4.c");
    EXPECT_STREQ(name, L"\u00e4.c");
    EXPECT_EQ(_wfullpath(buffer, L"x", 1000), buffer);
    EXPECT_EQ(Utf16ToUtf8(buffer), (std::filesystem::current_path() / "x").string());
}

TEST(FullPath, TellsTheSizeOrFailsWhenItDoesNotFit)
{
    wchar_t buffer[4] = L"???";
    EXPECT_EQ(GetFullPathName(L"/abc", 4, buffer, nullptr), 5u);
    EXPECT_EQ(GetFullPathName(L"/abc", 0, nullptr, nullptr), 5u);
    EXPECT_EQ(_wfullpath(buffer, L"/abc", 4), nullptr);
    EXPECT_STREQ(buffer, L"???");
    EXPECT_EQ(GetFullPathName(L"/ab", 4, buffer, nullptr), 3u);
}

TEST(FullPath, IsThatOfAPath)
{
    wchar_t buffer[4];
    EXPECT_EQ(GetFullPathName(nullptr, 4, buffer, nullptr), 0u);
    EXPECT_EQ(GetFullPathName(L"", 4, buffer, nullptr), 0u);
    EXPECT_EQ(_wfullpath(buffer, nullptr, 4), nullptr);
}

} // namespace
