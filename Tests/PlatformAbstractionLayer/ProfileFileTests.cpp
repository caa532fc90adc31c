#include "Tests/PlatformAbstractionLayer/ProfileFile.h"
#include "Tests/Support/Assertion.h"

#include <climits>
#include <random>
#include <sys/stat.h>
#include <thread>

namespace
{

using Texts = std::vector<std::wstring>;

// --------------------------------------------------------------------------------------------------------- files --

struct BytesRow
{
    const char* Name;
    std::string Bytes;
};

class NoProfile : public testing::TestWithParam<BytesRow>
{
};

TEST_P(NoProfile, FailsAnAssertion)
{
    const ProfileFile file(GetParam().Bytes);
    int32_t value = 0;
    EXPECT_FAILED_ASSERTION(file.SectionNames());
    EXPECT_FAILED_ASSERTION(file.Section(L"s"));
    EXPECT_FAILED_ASSERTION(file.String(L"s", L"k", L"d"));
    EXPECT_FAILED_ASSERTION(PAL_GetPrivateProfileInt(L"s", L"k", 7, file.Name().c_str(), &value));
}

INSTANTIATE_TEST_SUITE_P(Profile, NoProfile,
                         testing::Values(BytesRow{"Empty", ""}, BytesRow{"OneByte", "\xFF"},
                                         BytesRow{"WithoutAMark", Utf16Of(L"[s]\nk=1\n")},
                                         BytesRow{"Utf8", "[s]\nk=1\n"}, BytesRow{"Utf8WithAMark", "\xEF\xBB\xBF[s]\n"},
                                         BytesRow{"BigEndian", std::string("\xFE\xFF\0[\0s\0]", 8)}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(ProfileFileItself, MayHoldAMarkAlone)
{
    const ProfileFile file(L"");
    EXPECT_EQ(file.SectionNames().Size, 1u);
    EXPECT_EQ(file.Section(L"s").Result, 1);
}

TEST(ProfileFileItself, MayEndInHalfACharacter)
{
    const ProfileFile file("\xFF\xFE" + Utf16Of(L"[s]\nk=v") + "x");
    EXPECT_EQ(file.Section(L"s").Texts(), Texts{L"k=v"});
}

/// The calls for a name that is not that of a file.
void ExpectNoFile(const std::wstring& name)
{
    wchar_t buffer[10] = L"?";
    uint32_t size = 99;
    int32_t value = 99;
    EXPECT_EQ(PAL_GetPrivateProfileSectionNames(buffer, 10, name.c_str(), &size), 0);
    EXPECT_EQ(size, 0u);
    size = 99;
    EXPECT_EQ(PAL_GetPrivateProfileSection(L"s", buffer, 10, name.c_str(), &size), 0);
    EXPECT_EQ(size, 0u);
    EXPECT_STREQ(buffer, L"?");
    EXPECT_EQ(PAL_GetPrivateProfileString(L"s", L"k", L"default", buffer, 10, name.c_str(), &size), 0);
    EXPECT_EQ(size, 8u);
    EXPECT_STREQ(buffer, L"default");
    EXPECT_EQ(PAL_GetPrivateProfileInt(L"s", L"k", 7, name.c_str(), &value), 0);
    EXPECT_EQ(value, 7);
}

TEST(ProfileFileItself, MayBeMissing)
{
    const TestSupport::TemporaryFolder folder;
    ExpectNoFile(folder.WideName("missing.ini"));
    ExpectNoFile(std::wstring(1500, L'x'));
}

TEST(ProfileFileItself, IsMissingInThePlaceOfAFolderOrAPipe)
{
    const TestSupport::TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.Name("pipe.ini").c_str(), 0600), 0);
    ExpectNoFile(folder.WideName(""));
    ExpectNoFile(folder.WideName("pipe.ini"));
}

TEST(ProfileFileItself, MayHaveAHundredMegabytes)
{
    const std::wstring pair = std::wstring(90, L'n') + L"=" + std::wstring(90, L'v') + L"\n";
    const std::string pairs = Utf16Of(pair);
    std::string bytes = "\xFF\xFE" + Utf16Of(L"[s]\n");
    constexpr size_t NumOfPairs = 275'000;
    for (size_t i = 0; i < NumOfPairs; ++i)
        bytes += pairs;
    bytes += Utf16Of(L"k=v");
    ASSERT_GT(bytes.size(), 100'000'000u);
    const ProfileFile file(bytes);
    EXPECT_EQ(file.String(L"s", L"k", nullptr).Text, std::wstring(L"v\0", 2));
    EXPECT_EQ(file.Section(L"s").Size, NumOfPairs * pair.size() + 5);
}

// ----------------------------------------------------------------------------------------------------- arguments --

TEST(ProfileArguments, AreAllNeeded)
{
    const ProfileFile file(L"[s]\nk=1\n");
    const std::wstring name = file.Name();
    wchar_t buffer[10];
    uint32_t size = 0;
    int32_t value = 0;
    EXPECT_EQ(PAL_GetPrivateProfileSectionNames(nullptr, 10, name.c_str(), &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileSectionNames(buffer, 10, nullptr, &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileSectionNames(buffer, 10, name.c_str(), nullptr), 1);
    EXPECT_EQ(PAL_GetPrivateProfileSection(nullptr, buffer, 10, name.c_str(), &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileSection(L"s", nullptr, 10, name.c_str(), &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileSection(L"s", buffer, 0, name.c_str(), &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileSection(L"s", buffer, 10, nullptr, &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileSection(L"s", buffer, 10, name.c_str(), nullptr), 1);
    EXPECT_EQ(PAL_GetPrivateProfileString(nullptr, L"k", L"", buffer, 10, name.c_str(), &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileString(L"s", nullptr, L"", buffer, 10, name.c_str(), &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileString(L"s", L"k", L"", nullptr, 10, name.c_str(), &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileString(L"s", L"k", L"", buffer, 0, name.c_str(), &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileString(L"s", L"k", L"", buffer, 10, nullptr, &size), 1);
    EXPECT_EQ(PAL_GetPrivateProfileString(L"s", L"k", L"", buffer, 10, name.c_str(), nullptr), 1);
    EXPECT_EQ(PAL_GetPrivateProfileInt(nullptr, L"k", 0, name.c_str(), &value), 1);
    EXPECT_EQ(PAL_GetPrivateProfileInt(L"s", nullptr, 0, name.c_str(), &value), 1);
    EXPECT_EQ(PAL_GetPrivateProfileInt(L"s", L"k", 0, nullptr, &value), 1);
    EXPECT_EQ(PAL_GetPrivateProfileInt(L"s", L"k", 0, name.c_str(), nullptr), 1);
}

TEST(ProfileArguments, MayClaimMoreRoomThanThereIs)
{
    const ProfileFile file(L"[s]\nk=1\n");
    for (const uint32_t claimed : {static_cast<uint32_t>(INT_MAX), static_cast<uint32_t>(-1)})
    {
        wchar_t buffer[5];
        uint32_t size = 0;
        EXPECT_EQ(PAL_GetPrivateProfileSectionNames(buffer, claimed, file.Name().c_str(), &size), 0);
        EXPECT_EQ(PAL_GetPrivateProfileSection(L"s", buffer, claimed, file.Name().c_str(), &size), 0);
        EXPECT_EQ(PAL_GetPrivateProfileString(L"s", L"k", nullptr, buffer, claimed, file.Name().c_str(), &size), 0);
        EXPECT_EQ(size, 2u);
    }
}

// ------------------------------------------------------------------------------------------------------ property --

/// A profile as a generator made it: what is written is read back, however it is laid out.
class GeneratedProfile : public testing::TestWithParam<unsigned>
{
protected:
    struct Pair
    {
        std::wstring Section, Key, Value;
    };

    void Generate()
    {
        _sections.clear();
        _pairs.clear();
        _text = Noise();
        for (size_t i = 1 + Below(5); i > 0; --i)
        {
            _sections.push_back(Word(L"[]", 1) + std::to_wstring(i)); // the number makes it the only one
            _text += Blanks() + L"[" + _sections.back() + L"]" + LineEnd();
            for (size_t k = Below(6); k > 0; --k)
                GeneratePair(k);
        }
    }
    Texts LinesOf(const std::wstring& section) const
    {
        Texts lines;
        for (const Pair& pair : _pairs)
            if (pair.Section == section)
                lines.push_back(pair.Key + L"=" + pair.Value);
        return lines;
    }

    std::wstring _text;
    Texts _sections;
    std::vector<Pair> _pairs;

private:
    void GeneratePair(size_t number)
    {
        _pairs.push_back({_sections.back(), L"k" + Word(L"=", 0) + std::to_wstring(number), Word(L"", 0)});
        const Pair& pair = _pairs.back();
        _text += Noise() + Blanks() + pair.Key + Blanks() + L"=" + Blanks() + pair.Value + LineEnd();
    }
    std::wstring Blanks() { return std::wstring(Below(3), L" \t\r"[Below(2)]); }
    std::wstring LineEnd() { return Blanks() + (Below(2) ? L"\r\n" : L"\n"); }
    std::wstring Noise()
    {
        const Texts noise{L"", LineEnd(), Blanks() + L"; a=1 [x" + LineEnd()};
        return noise[Below(3)];
    }
    /// Text without white space at its ends, and without `forbidden`.
    std::wstring Word(const std::wstring& forbidden, size_t leastSize)
    {
        static const std::wstring alphabet = L"aZ09 .;=[]\t\u00e4\u4e2d\xD83D\xDD2C";
        std::wstring word;
        for (size_t size = leastSize + Below(20); word.size() < size;)
            if (const wchar_t character = alphabet[Below(alphabet.size())]; forbidden.find(character) == forbidden.npos)
                word += character;
        const bool isBlankAtAnEnd = !word.empty() && (std::wstring(L" \t").find(word.front()) != std::wstring::npos ||
                                                      std::wstring(L" \t").find(word.back()) != std::wstring::npos);
        return isBlankAtAnEnd ? Word(forbidden, leastSize) : word;
    }
    size_t Below(size_t end) { return std::uniform_int_distribution<size_t>(0, end - 1)(_random); }

    std::mt19937 _random{GetParam()};
};

TEST_P(GeneratedProfile, IsReadBack)
{
    for (int i = 0; i < 20; ++i)
    {
        Generate();
        const ProfileFile file(_text);
        EXPECT_EQ(file.SectionNames().Texts(), _sections);
        for (const Pair& pair : _pairs)
            EXPECT_EQ(file.String(pair.Section, pair.Key, nullptr).Text, pair.Value + L'\0');
        for (const std::wstring& section : _sections)
            EXPECT_EQ(file.Section(section).Texts(), LinesOf(section));
    }
}

INSTANTIATE_TEST_SUITE_P(Profile, GeneratedProfile, testing::Range(0u, 10u));

TEST(ProfileReaders, RunBesideEachOther)
{
    const ProfileFile file(L"[s]\nk=value\n");
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(
            [&]
            {
                for (int turn = 0; turn < 50; ++turn)
                    EXPECT_EQ(file.String(L"s", L"k", nullptr).Size, 6u);
            });
}

} // namespace
