#include "HostTool/HostError.h"
#include "HostTool/Text.h"

#include <gtest/gtest.h>

namespace
{

using namespace HostTool;

struct Pair
{
    std::string Name;
    std::wstring Wide;
    std::string Utf8;
};

std::ostream& operator<<(std::ostream& stream, const Pair& pair)
{
    return stream << pair.Name;
}

class TextOfEachWidth : public testing::TestWithParam<Pair>
{
};

TEST_P(TextOfEachWidth, BecomesUtf8)
{
    EXPECT_EQ(ToUtf8(GetParam().Wide), GetParam().Utf8);
}

TEST_P(TextOfEachWidth, BecomesWide)
{
    EXPECT_EQ(ToWide(GetParam().Utf8), GetParam().Wide);
}

INSTANTIATE_TEST_SUITE_P(Characters, TextOfEachWidth,
                         testing::Values(Pair{"OneByte", L"slide", "slide"}, Pair{"TwoBytes", L"\u00B5m", "\xC2\xB5m"},
                                         Pair{"ThreeBytes", L"\u7532", "\xE7\x94\xB2"},
                                         Pair{"FourBytes", L"\U0001F52C", "\xF0\x9F\x94\xAC"}, Pair{"Empty", L"", ""}),
                         [](const auto& pair) { return pair.param.Name; });

TEST(Text, OfALoneSurrogateBecomesTheReplacementCharacter)
{
    EXPECT_EQ(ToUtf8(std::wstring{static_cast<wchar_t>(0xD800)}), "\xEF\xBF\xBD");
}

TEST(Text, OfASurrogatePairIsOneCharacter)
{
    EXPECT_EQ(ToUtf8(std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDD2C)}), "\xF0\x9F\x94\xAC");
}

TEST(Text, ThatIsNoUtf8IsRefused)
{
    EXPECT_THROW(ToWide("\xFF.zel"), CHostError);
}

TEST(Text, IsPrintableWithoutControlCharacters)
{
    EXPECT_EQ(Printable("a\x1B\n\x7F"
                        "b"),
              "a???b");
}

} // namespace
