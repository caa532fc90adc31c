#include "PlatformAbstractionLayer/TextConversion.h"

#include "CommonUtil/PlatformCalls.h"

#include <array>
#include <climits>
#include <gtest/gtest.h>

namespace
{

struct TextPair
{
    const char* Name;
    std::string Utf8;
    std::wstring Wide;
};

std::string NameOf(const testing::TestParamInfo<TextPair>& row)
{
    return row.param.Name;
}

class SameText : public testing::TestWithParam<TextPair>
{
};

TEST_P(SameText, IsConvertedBothWays)
{
    EXPECT_EQ(Utf8ToUtf16(GetParam().Utf8), GetParam().Wide);
    EXPECT_EQ(Utf16ToUtf8(GetParam().Wide), GetParam().Utf8);
}

INSTANTIATE_TEST_SUITE_P(TextConversion, SameText,
                         testing::Values(TextPair{"Empty", "", L""}, TextPair{"Ascii", "a/b.zel", L"a/b.zel"},
                                         TextPair{"LeastOfTwoBytes", "\xC2\x80", L"\x80"},
                                         TextPair{"LastOfTwoBytes", "\xDF\xBF", L"\x7FF"},
                                         TextPair{"LeastOfThreeBytes", "\xE0\xA0\x80", L"\x800"},
                                         TextPair{"LastOfThreeBytes", "\xEF\xBF\xBF", L"\xFFFF"},
                                         TextPair{"LeastOfFourBytes", "\xF0\x90\x80\x80", L"\x10000"},
                                         TextPair{"LastOfAll", "\xF4\x8F\xBF\xBF", L"\x10FFFF"},
                                         TextPair{"BeforeTheSurrogates", "\xED\x9F\xBF", L"\xD7FF"},
                                         TextPair{"BehindTheSurrogates", "\xEE\x80\x80", L"\xE000"},
                                         TextPair{"WithAZeroInside", std::string("a\0b", 3), std::wstring(L"a\0b", 3)}),
                         NameOf);

class BadUtf8 : public testing::TestWithParam<TextPair>
{
};

TEST_P(BadUtf8, IsReplacedByteByByte)
{
    EXPECT_EQ(Utf8ToUtf16(GetParam().Utf8), GetParam().Wide);
}

INSTANTIATE_TEST_SUITE_P(TextConversion, BadUtf8,
                         testing::Values(TextPair{"LoneFollower", "a\x80z", L"a\xFFFDz"},
                                         TextPair{"CutAtTheEnd", "a\xE4\xB8", L"a\xFFFD\xFFFD"},
                                         TextPair{"CutInTheMiddle", "\xE4\xB8z", L"\xFFFD\xFFFDz"},
                                         TextPair{"Overlong", "\xC0\xAF", L"\xFFFD\xFFFD"},
                                         TextPair{"OverlongOfThree", "\xE0\x80\xAF", L"\xFFFD\xFFFD\xFFFD"},
                                         TextPair{"Surrogate", "\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD"},
                                         TextPair{"BeyondTheLast", "\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
                                         TextPair{"FiveBytes", "\xF8\x88\x80\x80\x80",
                                                  L"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD"},
                                         TextPair{"Latin1", "Z\xE4hler", L"Z\xFFFDhler"},
                                         TextPair{"NeverUsed", "\xFF\xFE", L"\xFFFD\xFFFD"}),
                         NameOf);

class OddWideText : public testing::TestWithParam<TextPair>
{
};

TEST_P(OddWideText, BecomesGoodUtf8)
{
    EXPECT_EQ(Utf16ToUtf8(GetParam().Wide), GetParam().Utf8);
}

INSTANTIATE_TEST_SUITE_P(TextConversion, OddWideText,
                         testing::Values(TextPair{"PairOfSurrogates", "\U0001F52C", L"\xD83D\xDD2C"},
                                         TextPair{"LoneHigh", "\uFFFDa", L"\xD83D\x61"},
                                         TextPair{"HighAtTheEnd", "\uFFFD", L"\xD83D"},
                                         TextPair{"LoneLow", "\uFFFDa", L"\xDD2C\x61"},
                                         TextPair{"WrongOrder", "\uFFFD\uFFFD", L"\xDD2C\xD83D"},
                                         TextPair{"BeyondTheLast", "\uFFFD", std::wstring(1, wchar_t{0x110000})},
                                         TextPair{"Negative", "\uFFFD", std::wstring(1, wchar_t{-1})}),
                         NameOf);

TEST(Convert, FillsABufferThatJustFits)
{
    std::array<wchar_t, 3> wide{};
    std::array<char, 4> utf8{};
    uint32_t size = 0;
    EXPECT_EQ(PAL_ConvertToUnicode("\u00e4z", wide.data(), 3, &size), PAL_RESULT_SUCCESS);
    EXPECT_EQ(size, 3u);
    EXPECT_STREQ(wide.data(), L"\u00e4z");
    EXPECT_EQ(PAL_ConvertFromUnicode(L"\u00e4z", utf8.data(), 4, &size), PAL_RESULT_SUCCESS);
    EXPECT_EQ(size, 4u);
    EXPECT_STREQ(utf8.data(), "\u00e4z");
}

TEST(Convert, TellsTheSizeWhenTheBufferIsTooSmallByOne)
{
    std::array<wchar_t, 3> wide{L'?', L'?', L'?'};
    std::array<char, 4> utf8{'?', '?', '?', '?'};
    uint32_t size = 0;
    EXPECT_EQ(PAL_ConvertToUnicode("\u00e4z", wide.data(), 2, &size), PAL_RESULT_TOO_SMALL);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(wide[0], L'?');
    EXPECT_EQ(PAL_ConvertFromUnicode(L"\u00e4z", utf8.data(), 3, &size), PAL_RESULT_TOO_SMALL);
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(utf8[0], '?');
}

TEST(Convert, TellsTheSizeAlone)
{
    uint32_t size = 0;
    EXPECT_EQ(PAL_ConvertToUnicode("\u00e4z", nullptr, 0, &size), PAL_RESULT_SUCCESS);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(PAL_ConvertFromUnicode(L"\u00e4z", nullptr, 0, &size), PAL_RESULT_SUCCESS);
    EXPECT_EQ(size, 4u);
}

TEST(Convert, RefusesNull)
{
    wchar_t wide[1];
    char utf8[1];
    uint32_t size = 0;
    EXPECT_EQ(PAL_ConvertToUnicode(nullptr, wide, 1, &size), PAL_RESULT_FAILURE);
    EXPECT_EQ(PAL_ConvertToUnicode("", wide, 1, nullptr), PAL_RESULT_FAILURE);
    EXPECT_EQ(PAL_ConvertToUnicode("", nullptr, 1, &size), PAL_RESULT_FAILURE);
    EXPECT_EQ(PAL_ConvertToUnicode("", wide, 0, &size), PAL_RESULT_FAILURE);
    EXPECT_EQ(PAL_ConvertFromUnicode(nullptr, utf8, 1, &size), PAL_RESULT_FAILURE);
    EXPECT_EQ(PAL_ConvertFromUnicode(L"", utf8, 1, nullptr), PAL_RESULT_FAILURE);
}

TEST(MultiByte, IsConvertedToWideText)
{
    wchar_t wide[8];
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\u00e4z", -1, wide, 8), 3);
    EXPECT_STREQ(wide, L"\u00e4z");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\u00e4zz", 3, wide, 8), 2);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\u00e4z", -1, nullptr, 0), 3);
}

TEST(MultiByte, IsMadeOfWideText)
{
    char utf8[8];
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\u00e4z", -1, utf8, 8, nullptr, nullptr), 4);
    EXPECT_STREQ(utf8, "\u00e4z");
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\u00e4z", 1, nullptr, 0, nullptr, nullptr), 2);
}

TEST(MultiByte, RefusesWhatMakesNoSense)
{
    wchar_t wide[8];
    EXPECT_EQ(MultiByteToWideChar(1252, 0, "z", -1, wide, 8), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, nullptr, -1, wide, 8), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "z", 0, wide, 8), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "z", INT_MIN, wide, 8), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "z", -1, wide, 1), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "z", -1, wide, -1), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "z", -1, nullptr, 8), 0);
}

TEST(WideFormat, TakesEachPercentSForWideText)
{
    std::wstring holder;
    EXPECT_STREQ(PAL_fmt_return_scstr(L"%s and %d of %s", holder), L"%S and %d of %S");
    EXPECT_EQ(holder, L"%S and %d of %S");
    EXPECT_STREQ(PAL_fmt_return_scstr(L"no conversion, s", holder), L"no conversion, s");
}

TEST(WideFormat, LeavesAnEscapedPercentSignAlone)
{
    std::wstring holder;
    EXPECT_STREQ(PAL_fmt_return_scstr(L"100%%s, %%%s, %", holder), L"100%%s, %%%S, %");
    EXPECT_STREQ(PAL_fmt_return_scstr(nullptr, holder), L"");
}

} // namespace
