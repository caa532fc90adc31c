#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/PlatformCalls.h"
#include "CommonUtil/Text.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <clocale>
#include <cstdlib>
#include <gtest/gtest.h>
#include <locale>
#include <memory>

using namespace CommonUtil;

namespace
{

/// Digits and grouping as a German host has them; for C++ streams alone.
class GermanNumbers : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// A host that has chosen a locale of its own before it calls us.
class HostLocale : public testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        if (!std::setlocale(LC_ALL, GetParam()) && !BuildAndSet(GetParam()))
            GTEST_SKIP() << "no locale " << GetParam() << " here, and none can be built";
        const bool isGerman = std::string(GetParam()).starts_with("de");
        _former = std::locale::global(isGerman ? std::locale(std::locale::classic(), new GermanNumbers)
                                               : std::locale::classic());
        std::setlocale(LC_ALL, GetParam()); // std::locale::global has set the classic one
    }
    void TearDown() override
    {
        std::locale::global(_former);
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
    }

private:
    bool BuildAndSet(const std::string& name)
    {
        const std::string language = name.substr(0, name.find('.'));
        const std::string command = "localedef -i " + language + " -f UTF-8 " + _folder.Name(name) + " >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0)
            return false;
        setenv("LOCPATH", _folder.Path().c_str(), 1);
        return std::setlocale(LC_ALL, name.c_str()) != nullptr;
    }

    TestSupport::TemporaryFolder _folder;
    std::locale _former = std::locale::classic();
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
