#include "CommonUtil/Text.h"

#include "Tests/Support/Assertion.h"

#include <climits>

using namespace CommonUtil;

namespace
{

TEST(FileNameWithoutPath, CutsAtTheLastSlashOfEitherKind)
{
    EXPECT_EQ(FileNameWithoutPath(std::string("a/b\\c.zel")), "c.zel");
    EXPECT_EQ(FileNameWithoutPath(std::string("a\\b/c.zel")), "c.zel");
    EXPECT_EQ(FileNameWithoutPath(std::wstring(L"a/b/c.zel")), L"c.zel");
    EXPECT_EQ(FileNameWithoutPath(std::string("c.zel")), "c.zel");
    EXPECT_EQ(FileNameWithoutPath(std::string("a/")), "");
    EXPECT_EQ(FileNameWithoutPath(std::string()), "");
}

TEST(Replace, ReplacesAllFromLeftToRight)
{
    EXPECT_EQ(Replace(std::string("aaa"), "aa", "b"), "ba");
    EXPECT_EQ(Replace(std::string("a.b.c"), ".", ""), "abc");
    EXPECT_EQ(Replace(std::wstring(L"a\\b\\"), L"\\", L"/"), L"a/b/");
    EXPECT_EQ(Replace(std::string(), "a", "b"), "");
}

TEST(Replace, DoesNotReplaceInWhatItPutIn)
{
    EXPECT_EQ(Replace(std::string("aa"), "a", "aa"), "aaaa");
}

TEST(Replace, RefusesToReplaceNothing)
{
    EXPECT_FAILED_ASSERTION(Replace(std::string("text"), "", "x"));
    EXPECT_FAILED_ASSERTION(Replace(std::wstring(L"text"), L"", L"x"));
}

TEST(Pieces, StandLeftAndRightOfTheFirstSeparator)
{
    EXPECT_EQ(LeftOf("a=b=c", "="), "a");
    EXPECT_EQ(RightOf("a=b=c", "="), "b=c");
    EXPECT_EQ(LeftOf("abc", "="), "abc");
    EXPECT_EQ(RightOf("abc", "="), "abc");
}

TEST(Pieces, AreOneMoreThanTheSeparators)
{
    EXPECT_EQ(Split("a,b,,c", ","), (std::vector<std::string>{"a", "b", "", "c"}));
    EXPECT_EQ(Split("", ","), std::vector<std::string>{""});
    EXPECT_EQ(Split(",", ","), (std::vector<std::string>{"", ""}));
    EXPECT_FAILED_ASSERTION(Split("a", ""));
}

TEST(Parts, AreFoundInATextAndAtItsEnds)
{
    EXPECT_TRUE(Contains("10^-6m^1", "-6"));
    EXPECT_FALSE(Contains("10^-6m^1", "-7"));
    EXPECT_TRUE(StartsWith(std::string("10^-6m^1"), "10^-"));
    EXPECT_FALSE(StartsWith(std::string("1"), "10^-"));
    EXPECT_TRUE(StartsWith(std::wstring(L"[name]"), L"["));
    EXPECT_TRUE(EndsWith(std::string("slide.zel"), "zel"));
    EXPECT_FALSE(EndsWith(std::string("el"), "zel"));
    EXPECT_TRUE(EndsWith(std::wstring(L"slide.zel"), L"zel"));
}

TEST(IsInt, TakesDigitsWithAnOptionalMinus)
{
    for (const char* text : {"0", "-0", "7", "-12", "00012"})
        EXPECT_TRUE(IsInt(text)) << text;
    for (const char* text : {"", "-", "+1", "1.5", " 1", "1 ", "--1", "1-", "0x10"})
        EXPECT_FALSE(IsInt(text)) << text;
}

TEST(IsPositiveInteger, TakesDigitsAloneAndCountsZero)
{
    for (const char* text : {"0", "7", "0012", "99999999999999999999"})
        EXPECT_TRUE(IsPositiveInteger(text)) << text;
    for (const char* text : {"", "-1", "+1", "1 ", "1.0", "\u0663"})
        EXPECT_FALSE(IsPositiveInteger(text)) << text;
}

TEST(ToString, WritesDecimalText)
{
    EXPECT_EQ(ToString(INT_MIN), "-2147483648");
    EXPECT_EQ(ToString(UINT_MAX), "4294967295");
    EXPECT_EQ(ToString(-1L), "-1");
    EXPECT_EQ(ToString(ULONG_MAX), "18446744073709551615");
    EXPECT_EQ(ToString(LLONG_MIN), "-9223372036854775808");
}

TEST(ToString, WritesADoubleWithSixSignificantDigits)
{
    EXPECT_EQ(ToString(0.1), "0.1");
    EXPECT_EQ(ToString(3.0000001), "3");
    EXPECT_EQ(ToString(1234567.0), "1.23457e+06");
}

TEST(ToStringWith0Padding, PadsUpToTheDigitsAskedFor)
{
    EXPECT_EQ(ToStringWith0Padding(7, 4), "0007");
    EXPECT_EQ(ToStringWith0Padding(123, 3), "123");
    EXPECT_EQ(ToStringWith0Padding(0, 1), "0");
}

TEST(ToStringWith0Padding, RefusesALongerNumber)
{
    EXPECT_FAILED_ASSERTION(ToStringWith0Padding(123, 2));
    EXPECT_FAILED_ASSERTION(ToStringWith0Padding(0, 0));
    EXPECT_FAILED_ASSERTION(ToStringWith0Padding(0, -1));
}

TEST(Widening, GoesThereAndBackWithoutLoss)
{
    const std::string text = "Zelle \u00e4 \u4e2d \U0001F52C";
    EXPECT_EQ(ToWide(text), L"Zelle \u00e4 \u4e2d \U0001F52C");
    EXPECT_EQ(A(ToWide(text)), text);
}

TEST(Equals, ComparesTextsAndKnowsNull)
{
    EXPECT_TRUE(Equals(L"a", std::wstring(L"a").c_str()));
    EXPECT_FALSE(Equals(L"a", L"b"));
    EXPECT_TRUE(Equals(nullptr, nullptr));
    EXPECT_FALSE(Equals(L"", nullptr));
    EXPECT_FALSE(Equals(nullptr, L""));
}

} // namespace
