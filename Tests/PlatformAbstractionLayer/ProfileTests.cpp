#include "Tests/PlatformAbstractionLayer/ProfileFile.h"
#include "Tests/Support/Assertion.h"
#include "Tests/Support/Log.h"

#include <climits>

namespace
{

using Texts = std::vector<std::wstring>;

template <typename Row>
std::string NameOf(const testing::TestParamInfo<Row>& row)
{
    return row.param.Name;
}

// ------------------------------------------------------------------------------------------------ section names --

struct NamesRow
{
    const char* Name;
    std::wstring Text;
    Texts Names;
};

class SectionNames : public testing::TestWithParam<NamesRow>
{
};

TEST_P(SectionNames, AreReadInTheirOrder)
{
    const ProfileAnswer answer = ProfileFile(GetParam().Text).SectionNames();
    EXPECT_EQ(answer.Result, 0);
    EXPECT_EQ(answer.Texts(), GetParam().Names);
    ASSERT_TRUE(answer.Text);
    EXPECT_EQ(answer.Size, answer.Text->size());
    EXPECT_EQ(answer.Text->back(), L'\0');
}

INSTANTIATE_TEST_SUITE_P(Profile, SectionNames,
                         testing::Values(NamesRow{"None", L"", {}}, NamesRow{"OneWithoutLineFeed", L"[a]", {L"a"}},
                                         NamesRow{"Several", L"[b]\n[a]\nx=1\n[c]\n", {L"b", L"a", L"c"}},
                                         NamesRow{"Repeated", L"[a]\n[a]\n", {L"a", L"a"}},
                                         NamesRow{"CarriageReturns", L"[a]\r\n\r\n[b]\r\n", {L"a", L"b"}},
                                         NamesRow{"BlanksAround", L" \t[a] \t\r\n", {L"a"}},
                                         NamesRow{"BlanksInside", L"[ a b ]", {L" a b "}},
                                         NamesRow{"BracketInside", L"[a[b]", {L"a[b"}},
                                         NamesRow{"CommentedOut", L";[a]\n ;[b]\n", {}},
                                         NamesRow{"BracketInAPair", L"[a]\nx=[b]\n", {L"a"}},
                                         NamesRow{"OtherScripts", L"[\u00e4\u4e2d]", {L"\u00e4\u4e2d"}},
                                         NamesRow{"SurrogatesAsTwoUnits", L"[\xD83D\xDD2C]", {L"\xD83D\xDD2C"}}),
                         NameOf<NamesRow>);

struct BrokenRow
{
    const char* Name;
    std::wstring Text;
    const char* Log;
};

class BrokenSectionNames : public testing::TestWithParam<BrokenRow>
{
};

TEST_P(BrokenSectionNames, FailWithALogLine)
{
    const ProfileFile file(GetParam().Text);
    const std::string log = TestSupport::LogOf(
        [&]
        {
            const ProfileAnswer answer = file.SectionNames();
            EXPECT_EQ(answer.Result, 1);
            EXPECT_EQ(answer.Text, std::nullopt);
        });
    EXPECT_NE(log.find(GetParam().Log), std::string::npos) << log;
}

INSTANTIATE_TEST_SUITE_P(
    Profile, BrokenSectionNames,
    testing::Values(BrokenRow{"Unterminated", L"[a\n", "Parse error - incomplete section name\n"},
                    BrokenRow{"UnterminatedAtTheEnd", L"[a]\n[b", "Parse error - incomplete section name\n"},
                    BrokenRow{"TextBehind", L"[a] x\n", "Parse error - Unexpected character after section name end\n"},
                    BrokenRow{"CommentBehind", L"[a];x", "Parse error - Unexpected character after section name end\n"},
                    BrokenRow{"SecondBracket", L"[a]]", "Parse error - Unexpected character after section name end\n"}),
    NameOf<BrokenRow>);

TEST(ProfileSectionNames, AreNotEmpty)
{
    const ProfileFile file(L"[]\n");
    EXPECT_FAILED_ASSERTION(file.SectionNames());
}

TEST(ProfileSectionNames, NeedRoomForAllZeros)
{
    const ProfileFile file(L"[ab]\n[c]\n"); // ab0c00
    EXPECT_EQ(file.SectionNames(6).Text, std::wstring(L"ab\0c\0\0", 6));
    for (const uint32_t tooSmall : {0u, 1u, 5u})
    {
        const ProfileAnswer answer = file.SectionNames(tooSmall);
        EXPECT_EQ(answer.Result, 5);
        EXPECT_EQ(answer.Size, 6u);
        EXPECT_EQ(answer.Text, std::nullopt);
    }
}

// ------------------------------------------------------------------------------------------------------- section --

struct SectionRow
{
    const char* Name;
    std::wstring Text;
    Texts Lines; ///< of section "s"
};

class SectionOfProfile : public testing::TestWithParam<SectionRow>
{
};

TEST_P(SectionOfProfile, IsReadLineByLine)
{
    const ProfileAnswer answer = ProfileFile(GetParam().Text).Section(L"s");
    EXPECT_EQ(answer.Result, 0);
    EXPECT_EQ(answer.Texts(), GetParam().Lines);
    ASSERT_TRUE(answer.Text);
    EXPECT_EQ(answer.Size, answer.Text->size());
}

INSTANTIATE_TEST_SUITE_P(
    Profile, SectionOfProfile,
    testing::Values(SectionRow{"Empty", L"[s]", {}}, SectionRow{"Pairs", L"[s]\na=1\nb=2\n", {L"a=1", L"b=2"}},
                    SectionRow{"LastLineWithoutLineFeed", L"[s]\na=1", {L"a=1"}},
                    SectionRow{"BetweenOthers", L"[r]\nx=0\n[s]\na=1\n[t]\ny=2\n", {L"a=1"}},
                    SectionRow{"FirstOfTwo", L"[s]\na=1\n[s]\nb=2\n", {L"a=1"}},
                    SectionRow{"BlanksAroundNameAndValue", L"[s]\n \ta \t= \t1 2\t \r\n", {L"a=1 2"}},
                    SectionRow{"NoValue", L"[s]\na=\n=\n=1\n", {L"a=", L"=", L"=1"}},
                    SectionRow{"SecondEqualSign", L"[s]\na=b=c\n", {L"a=b=c"}},
                    SectionRow{"LineWithoutEqualSign", L"[s]\n  a b  \n", {L"a b"}},
                    SectionRow{"RepeatedKeys", L"[s]\na=1\na=2\n", {L"a=1", L"a=2"}},
                    SectionRow{"Comments", L";[s]\n[s]\n;a=1\n \t;b=2\nc=3;d\n", {L"c=3;d"}},
                    SectionRow{"BlankLines", L"\n\r\n[s]\n\n \t\r\na=1\n\n", {L"a=1"}},
                    SectionRow{"LinesOutsideOfSections", L"a=1\n[s]\nb=2\n", {L"b=2"}},
                    SectionRow{"BrokenSectionBehind", L"[s]\na=1\n[t", {L"a=1"}},
                    SectionRow{"BracketInAValue", L"[s]\na=[t]\n", {L"a=[t]"}},
                    SectionRow{"OtherScripts", L"[s]\n\u00e4=\u4e2d\xD83D\xDD2C\n", {L"\u00e4=\u4e2d\xD83D\xDD2C"}}),
    NameOf<SectionRow>);

TEST(ProfileSection, IsFoundByItsExactName)
{
    const ProfileFile file(L"[s]\na=1\n[ t ]\nb=2\n[]\nc=3\n");
    EXPECT_EQ(file.Section(L"S").Result, 1);
    EXPECT_EQ(file.Section(L"t").Result, 1);
    EXPECT_EQ(file.Section(L" t ").Texts(), Texts{L"b=2"});
    EXPECT_EQ(file.Section(L"").Texts(), Texts{L"c=3"});
    EXPECT_EQ(file.Section(L"missing").Text, std::nullopt);
}

class BrokenSection : public testing::TestWithParam<BrokenRow>
{
};

TEST_P(BrokenSection, FailsWithALogLine)
{
    const ProfileFile file(GetParam().Text);
    const std::string log = TestSupport::LogOf([&] { EXPECT_EQ(file.Section(L"s").Result, 1); });
    EXPECT_NE(log.find(GetParam().Log), std::string::npos) << log;
}

INSTANTIATE_TEST_SUITE_P(
    Profile, BrokenSection,
    testing::Values(BrokenRow{"Unterminated", L"[s\na=1\n", "Parser error - unterminated section name\n"},
                    BrokenRow{"UnterminatedBefore", L"[r\n[s]\n", "Parser error - unterminated section name\n"},
                    BrokenRow{"TextBehind", L"[s] x\na=1\n", "Invalid character after end of section name\n"},
                    BrokenRow{"TextBehindAnother", L"[r];\n[s]\n", "Invalid character after end of section name\n"}),
    NameOf<BrokenRow>);

TEST(ProfileSection, HasNoBracketWithinItsName)
{
    const ProfileFile file(L"[r[s]\n");
    EXPECT_FAILED_ASSERTION(file.Section(L"s"));
}

TEST(ProfileSection, NeedsRoomForAllZeros)
{
    const ProfileFile file(L"[s]\na = 1\nb=2\n"); // a=10b=200
    EXPECT_EQ(file.Section(L"s", 9).Text, std::wstring(L"a=1\0b=2\0\0", 9));
    for (const uint32_t tooSmall : {1u, 8u})
    {
        const ProfileAnswer answer = file.Section(L"s", tooSmall);
        EXPECT_EQ(answer.Result, 5);
        EXPECT_EQ(answer.Size, 9u);
        EXPECT_EQ(answer.Text, std::nullopt);
    }
    EXPECT_EQ(file.Section(L"s", 0).Result, 1);
}

// -------------------------------------------------------------------------------------------------------- string --

struct StringRow
{
    const char* Name;
    std::wstring Text;
    const wchar_t* Default;
    int Result; ///< of key "k" in section "s"
    std::optional<std::wstring> Value;
};

class StringOfProfile : public testing::TestWithParam<StringRow>
{
};

TEST_P(StringOfProfile, IsTheValueOrTheDefault)
{
    const ProfileAnswer answer = ProfileFile(GetParam().Text).String(L"s", L"k", GetParam().Default);
    EXPECT_EQ(answer.Result, GetParam().Result);
    if (!GetParam().Value)
    {
        EXPECT_EQ(answer.Text, std::nullopt);
        return;
    }
    ASSERT_TRUE(answer.Text);
    EXPECT_STREQ(answer.Text->c_str(), GetParam().Value->c_str());
    EXPECT_EQ(answer.Size, GetParam().Value->size() + 1);
}

INSTANTIATE_TEST_SUITE_P(
    Profile, StringOfProfile,
    testing::Values(StringRow{"Found", L"[s]\nk=v\n", L"d", 0, L"v"},
                    StringRow{"BlanksAround", L"[s]\n k =\t v w \r\n", L"d", 0, L"v w"},
                    StringRow{"Empty", L"[s]\nk=\n", L"d", 0, L""},
                    StringRow{"FirstOfTwo", L"[s]\nk=1\nk=2\n", L"d", 0, L"1"},
                    StringRow{"OtherCase", L"[s]\nK=v\n", L"d", 0, L"d"},
                    StringRow{"InAnotherSection", L"[r]\nk=v\n[s]\n[t]\nk=w\n", L"d", 0, L"d"},
                    StringRow{"BehindAComment", L"[s]\n;k=1\nk=2\n", L"d", 0, L"2"},
                    StringRow{"WithAnEqualSign", L"[s]\nk=a=b\n", L"d", 0, L"a=b"},
                    StringRow{"SectionMissing", L"[r]\nk=v\n", L"d", 1, L"d"},
                    StringRow{"SectionBroken", L"[s\nk=v\n", L"d", 1, L"d"},
                    StringRow{"LineWithoutEqualSignBefore", L"[s]\nx\nk=v\n", L"d", 1, std::nullopt},
                    StringRow{"LineWithoutEqualSignBehind", L"[s]\nk=v\nx\n", L"d", 0, L"v"},
                    StringRow{"LineWithoutEqualSignAndNoKey", L"[s]\na=1\nx\n", L"d", 1, std::nullopt}),
    NameOf<StringRow>);

TEST(ProfileString, IsEmptyAndOfSize0WithoutADefault)
{
    const ProfileFile file(L"[s]\na=1\n");
    const ProfileAnswer noKey = file.String(L"s", L"k", nullptr);
    EXPECT_EQ(noKey.Result, 0);
    EXPECT_EQ(noKey.Size, 0u);
    EXPECT_EQ(noKey.Text, std::wstring(1, L'\0'));
    const ProfileAnswer noSection = file.String(L"t", L"k", nullptr);
    EXPECT_EQ(noSection.Result, 1);
    EXPECT_EQ(noSection.Size, 0u);
    EXPECT_EQ(noSection.Text, std::wstring(1, L'\0'));
}

TEST(ProfileString, NeedsRoomForItsZero)
{
    const ProfileFile file(L"[s]\nk=value\n");
    EXPECT_EQ(file.String(L"s", L"k", nullptr, 6).Text, std::wstring(L"value\0", 6));
    const ProfileAnswer answer = file.String(L"s", L"k", nullptr, 5);
    EXPECT_EQ(answer.Result, 5);
    EXPECT_EQ(answer.Size, 6u);
    EXPECT_EQ(answer.Text, std::nullopt);
}

TEST(ProfileString, NeedsRoomForTheZeroOfItsDefault)
{
    const ProfileFile file(L"[s]\n");
    for (const wchar_t* section : {L"s", L"missing"})
    {
        EXPECT_EQ(file.String(section, L"k", L"value", 6).Size, 6u);
        const ProfileAnswer answer = file.String(section, L"k", L"value", 5);
        EXPECT_EQ(answer.Result, 5);
        EXPECT_EQ(answer.Size, 6u);
        EXPECT_EQ(answer.Text, std::nullopt);
    }
}

TEST(ProfileString, MayBeLong)
{
    const std::wstring name(5000, L'n');
    const std::wstring value(5000, L'v');
    const ProfileFile file(L"[" + name + L"]\n" + name + L"=" + value + L"\n");
    EXPECT_EQ(file.String(name, name, nullptr).Text, value + L'\0');
    EXPECT_EQ(file.SectionNames().Texts(), Texts{name});
    EXPECT_EQ(file.Section(name, 20000).Texts(), Texts{name + L"=" + value});
}

// ------------------------------------------------------------------------------------------------------- integer --

struct IntRow
{
    const char* Name;
    std::wstring Text;
    int Result; ///< of key "k" in section "s", default 7
    int32_t Value;
};

class IntOfProfile : public testing::TestWithParam<IntRow>
{
};

TEST_P(IntOfProfile, IsTheValueOrTheDefault)
{
    const ProfileFile file(GetParam().Text);
    int32_t value = 99;
    EXPECT_EQ(PAL_GetPrivateProfileInt(L"s", L"k", 7, file.Name().c_str(), &value), GetParam().Result);
    EXPECT_EQ(value, GetParam().Value);
}

INSTANTIATE_TEST_SUITE_P(
    Profile, IntOfProfile,
    testing::Values(IntRow{"Found", L"[s]\nk= 12 \n", 0, 12}, IntRow{"Negative", L"[s]\nk=-12\n", 0, -12},
                    IntRow{"Zero", L"[s]\nk=0\n", 0, 0}, IntRow{"Largest", L"[s]\nk=2147483647\n", 0, INT_MAX},
                    IntRow{"Smallest", L"[s]\nk=-2147483648\n", 0, INT_MIN}, IntRow{"NoKey", L"[s]\na=1\n", 0, 7},
                    IntRow{"TextAbsent", L"[s]\nk=absent\n", 0, 7}, IntRow{"NoSection", L"[r]\nk=1\n", 1, 99},
                    IntRow{"TooLongForANumber", L"[s]\nk=" + std::wstring(50, L'1'), 5, 99}),
    NameOf<IntRow>);

class NoInt : public testing::TestWithParam<const wchar_t*>
{
};

TEST_P(NoInt, FailsAnAssertion)
{
    const ProfileFile file(std::wstring(L"[s]\nk=") + GetParam());
    int32_t value = 0;
    EXPECT_FAILED_ASSERTION(PAL_GetPrivateProfileInt(L"s", L"k", 7, file.Name().c_str(), &value));
}

INSTANTIATE_TEST_SUITE_P(Profile, NoInt,
                         testing::Values(L"", L"x", L"0x10", L"010", L"+1", L"1.5", L"5 apples", L"-0", L"2147483648",
                                         L"-2147483649", L"99999999999999999999999"));

} // namespace
