#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/PlatformCalls.h"
#include "CommonUtil/Text.h"
#include "Tests/Support/HostLocale.h"
#include "Tests/Support/Log.h"

#include <clocale>
#include <gtest/gtest.h>

using namespace CommonUtil;

namespace
{

class HostLocale : public testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        if (!_locale.IsThere())
            GTEST_SKIP() << "no locale " << GetParam() << " here, and none can be built";
    }

private:
    const TestSupport::HostLocale _locale{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(In, HostLocale, testing::Values("C", "C.UTF-8", "de_DE.UTF-8"),
                         [](const auto& row)
                         {
                             std::string name = row.param;
                             std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return name;
                         });

TEST_P(HostLocale, HasItsOwnDecimalPoint)
{
    char text[10];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    EXPECT_STREQ(text, std::string(GetParam()).starts_with("de") ? "1,5" : "1.5");
}

TEST_P(HostLocale, DoesNotChangeHowNumbersAreWritten)
{
    EXPECT_EQ(ToString(1234567), "1234567");
    EXPECT_EQ(ToString(1234.5), "1234.5");
    EXPECT_EQ(ToDoubleStr(1234567.7), "1234567");
    EXPECT_EQ(ToDoubleStr2(1234.5, 2), "1234.50");
    EXPECT_EQ(ToUtcW3CTimeString(0), "1970-01-01T00:00:00+00:00");
}

TEST_P(HostLocale, DoesNotChangeHowNumbersAreRead)
{
    EXPECT_EQ(roundTo1stDecimal(1234.5678), 1234.57);
    EXPECT_EQ(ConvertToUnits(5, L"10^-6m^1", "m^1", 9), 5000);
}

TEST_P(HostLocale, DoesNotChangeHowTextIsConverted)
{
    const std::wstring wide = L"\u00e4\u4e2d\U0001F52C";
    EXPECT_EQ(Utf16ToUtf8(wide), "\u00e4\u4e2d\U0001F52C");
    EXPECT_EQ(Utf8ToUtf16("\u00e4\u4e2d\U0001F52C"), wide);
}

TEST_P(HostLocale, DoesNotChangeTheLog)
{
    EXPECT_EQ(TestSupport::LogOf([] { pw_flf(false, "", "F", L"%.2f %s", 1, 1.5, "\u00e4"); }), "L1:F: 1.50 \u00e4\n");
    EXPECT_EQ(TestSupport::LogOf([] { pw_flf(true, "", "F", L"%.2f %s", 1, 1.5, L"\u00e4"); }), "L1:F: 1.50 \u00e4\n");
}

TEST_P(HostLocale, IsStillThereAfterwards)
{
    TestSupport::LogOf([] { ZEL_LOG("%f", 1.5); });
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), GetParam());
}

} // namespace
