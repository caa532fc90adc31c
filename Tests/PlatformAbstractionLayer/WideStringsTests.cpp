#include "PlatformAbstractionLayer/WideStrings.h"

#include <cerrno>
#include <climits>
#include <gtest/gtest.h>
#include <limits>

namespace
{

TEST(Wcscpy, CopiesWhatFitsWithItsZero)
{
    wchar_t target[4] = L"???";
    EXPECT_EQ(wcscpy_s(target, 4, L"abc"), 0);
    EXPECT_STREQ(target, L"abc");
    EXPECT_EQ(wcscpy_s(target, 4, L"abcd"), ERANGE);
    EXPECT_STREQ(target, L"");
}

TEST(Wcscpy, RefusesNullAndNothing)
{
    wchar_t target[1];
    EXPECT_EQ(wcscpy_s(nullptr, 4, L"a"), EINVAL);
    EXPECT_EQ(wcscpy_s(target, 1, nullptr), EINVAL);
    EXPECT_EQ(wcscpy_s(target, 0, L"a"), EINVAL);
}

TEST(Wcscat, AppendsWhatFits)
{
    wchar_t target[4] = L"a";
    EXPECT_EQ(wcscat_s(target, 4, L"bc"), 0);
    EXPECT_STREQ(target, L"abc");
    EXPECT_EQ(wcscat_s(target, 4, L"d"), ERANGE);
    EXPECT_STREQ(target, L"");
    wchar_t endless[2] = {L'a', L'b'};
    EXPECT_EQ(wcscat_s(endless, 2, L"c"), EINVAL);
}

TEST(Wcsncpy, CopiesACountOrCuts)
{
    wchar_t target[4] = L"???";
    EXPECT_EQ(wcsncpy_s(target, 4, L"abcdef", 2), 0);
    EXPECT_STREQ(target, L"ab");
    EXPECT_EQ(wcsncpy_s(target, 4, L"abcdef", 4), ERANGE);
    EXPECT_STREQ(target, L"");
    EXPECT_EQ(wcsncpy_s(target, 4, L"abcdef", _TRUNCATE), 0);
    EXPECT_STREQ(target, L"abc");
    EXPECT_EQ(wcsncpy_s(target, 4, nullptr, 1), EINVAL);
}

TEST(Wtoi, ReadsTheNumberAtTheStart)
{
    EXPECT_EQ(_wtoi(L"  -12x"), -12);
    EXPECT_EQ(_wtoi(L"x"), 0);
    EXPECT_EQ(_wtoi(L"99999999999999999999"), INT_MAX);
    EXPECT_EQ(_wtoi(L"-99999999999"), INT_MIN);
    EXPECT_EQ(_wtoi(nullptr), 0);
}

TEST(Wtof, ReadsTheNumberAtTheStart)
{
    EXPECT_EQ(_wtof(L" 1.5e2x"), 150.0);
    EXPECT_EQ(_wtof(L""), 0.0);
    EXPECT_EQ(_wtof(nullptr), 0.0);
}

TEST(Itoa, WritesInAnyBase)
{
    char text[34];
    EXPECT_STREQ(itoa(-12, text, 10), "-12");
    EXPECT_STREQ(itoa(255, text, 16), "ff");
    EXPECT_STREQ(itoa(-1, text, 16), "ffffffff");
    EXPECT_STREQ(itoa(INT_MIN, text, 2), "10000000000000000000000000000000");
    EXPECT_STREQ(itoa(1, text, 1), "");
}

TEST(Wcslwr, MakesAsciiSmall)
{
    wchar_t text[] = L"AZ\u00c4az[";
    EXPECT_EQ(_wcslwr_s(text, 7), 0);
    EXPECT_STREQ(text, L"az\u00c4az[");
    EXPECT_EQ(_wcslwr_s(text, 6), EINVAL);
    EXPECT_EQ(_wcslwr_s(nullptr, 6), EINVAL);
}

TEST(Finite, IsNeitherInfiniteNorNaN)
{
    EXPECT_TRUE(_finite(1e308));
    EXPECT_FALSE(_finite(std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(_finite(std::numeric_limits<double>::quiet_NaN()));
}

TEST(SprintfS, PrintsWhatFits)
{
    char text[5];
    EXPECT_EQ(sprintf_s(text, 5, "%d%s", 12, "ab"), 4);
    EXPECT_STREQ(text, "12ab");
    EXPECT_EQ(sprintf_s(text, 5, "%d", 12345), -1);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(sprintf_s(nullptr, 5, "%d", 1), -1);
}

int PrintNarrow(char* buffer, size_t size, size_t count, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf_s(buffer, size, count, format, arguments);
    va_end(arguments);
    return length;
}

int PrintWide(wchar_t* buffer, size_t size, size_t count, const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int length = _vsnwprintf_s(buffer, size, count, format, arguments);
    va_end(arguments);
    return length;
}

TEST(VsnprintfS, CutsAtTheCountOrAtTheEnd)
{
    char text[5];
    EXPECT_EQ(PrintNarrow(text, 5, 4, "%s", "abcd"), 4);
    EXPECT_EQ(PrintNarrow(text, 5, 2, "%s", "abcd"), -1);
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(PrintNarrow(text, 5, _TRUNCATE, "%s", "abcdefgh"), -1);
    EXPECT_STREQ(text, "abcd");
    EXPECT_EQ(PrintNarrow(text, 5, 100, "%s", "abcdefgh"), -1);
    EXPECT_STREQ(text, "");
}

TEST(VsnwprintfS, CutsAtTheCountOrAtTheEnd)
{
    wchar_t text[5];
    EXPECT_EQ(PrintWide(text, 5, 4, L"%s", L"ab\u00e4d"), 4);
    EXPECT_STREQ(text, L"ab\u00e4d");
    EXPECT_EQ(PrintWide(text, 5, 2, L"%s", L"abcd"), -1);
    EXPECT_STREQ(text, L"ab");
    EXPECT_EQ(PrintWide(text, 5, _TRUNCATE, L"%s", L"abcdefgh"), -1);
    EXPECT_STREQ(text, L"abcd");
    EXPECT_EQ(PrintWide(text, 5, 100, L"%s", L"abcdefgh"), -1);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(PrintWide(nullptr, 5, 5, L"%s", L""), -1);
}

TEST(Wsprintf, TakesWideTextAndCutsAt1024Characters)
{
    wchar_t text[1024];
    EXPECT_EQ(wsprintf(text, L"%s %d", L"\u00e4", 7), 3);
    EXPECT_STREQ(text, L"\u00e4 7");
    EXPECT_EQ(wsprintf(text, L"%s", std::wstring(2000, L'x').c_str()), 1023);
    EXPECT_EQ(text, std::wstring(1023, L'x'));
}

TEST(SwscanfS, ReadsNumbers)
{
    int whole = 0;
    double real = 0;
    EXPECT_EQ(swscanf_s(L"12 of 1.5%", L"%d of %lf%%", &whole, &real), 2);
    EXPECT_EQ(whole, 12);
    EXPECT_EQ(real, 1.5);
    EXPECT_EQ(swscanf_s(L"", L"%d", &whole), -1);
}

TEST(SwscanfS, DoesNotReadText)
{
    wchar_t text[2] = L"?";
    for (const wchar_t* format : {L"%s", L"%ls", L"%1c", L"%[a-z]", L"%ms", L"%1$s", L"%d %*d %S", L"%"})
        EXPECT_EQ(swscanf_s(L"abc", format, text, 2), -1);
    EXPECT_STREQ(text, L"?");
    EXPECT_EQ(swscanf_s(nullptr, L"%d"), -1);
}

} // namespace
