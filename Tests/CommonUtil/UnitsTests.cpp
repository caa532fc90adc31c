#include "CommonUtil/Numbers.h"
#include "Tests/Support/Assertion.h"

#include <cmath>
#include <limits>

using namespace CommonUtil;

namespace
{

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(NegativePower, IsTheExponentWithoutItsSign)
{
    EXPECT_EQ(NegativePower(L"10^-6m^1", "m^1"), 6u);
    EXPECT_EQ(NegativePower(L"10^-12m^1", "m^1"), 12u);
    EXPECT_EQ(NegativePower(L"10^0m^1", "m^1"), 0u);
    EXPECT_EQ(NegativePower(L"10^-0006m^1", "m^1"), 6u);
    EXPECT_EQ(NegativePower(L"10^-3s^1", "s^1"), 3u);
}

TEST(NegativePower, TakesTheBaseUnitWithOrWithoutItsPower)
{
    EXPECT_EQ(NegativePower(L"10^-6m^1", "m"), 6u);
}

class TextThatIsNoUnit : public testing::TestWithParam<const wchar_t*>
{
};

TEST_P(TextThatIsNoUnit, FailsAnAssertion)
{
    EXPECT_FAILED_ASSERTION(NegativePower(GetParam(), "m^1"));
}

INSTANTIATE_TEST_SUITE_P(NegativePower, TextThatIsNoUnit,
                         testing::Values(L"", L"m^1", L"10^6m^1", L"10^-6s^1", L"10^-6m", L"10^-m^1", L"10^--6m^1",
                                         L"10^-6.5m^1", L"10^-6 m^1", L" 10^-6m^1", L"10^-99999999999m^1",
                                         L"10^-4294967295m^1"));

TEST(ConvertToUnits, DividesByTheDifferenceOfThePowers)
{
    EXPECT_EQ(ConvertToUnits(5, L"10^-6m^1", "m^1", 9), 5000);
    EXPECT_EQ(ConvertToUnits(5000, L"10^-9m^1", "m", 6), 5);
    EXPECT_EQ(ConvertToUnits(2, L"10^0m^1", "m^1", 6), 2000000);
    EXPECT_EQ(ConvertToUnits(7, L"10^-6m^1", "m^1", 6), 7);
}

TEST(ConvertToUnits, TakesAnEmptyUnitForNothingAndForNaN)
{
    EXPECT_EQ(ConvertToUnits(0, L"", "m^1", 6), 0);
    EXPECT_TRUE(std::isnan(ConvertToUnits(NaN, L"", "m^1", 6)));
    EXPECT_FAILED_ASSERTION(ConvertToUnits(5, L"", "m^1", 6));
}

TEST(ConvertToUnits, StandsPowersThatNoDoubleReaches)
{
    EXPECT_EQ(ConvertToUnits(5, L"10^-1000m^1", "m^1", 6), 0);
    EXPECT_FAILED_ASSERTION(ConvertToUnits(5, L"10^-6m^1", "m^1", std::numeric_limits<uint32_t>::max()));
}

TEST(IsValidUnitOfLength, TakesPowersBelowAMetreOnly)
{
    EXPECT_TRUE(IsValidUnitOfLength(L"10^-6m^1"));
    EXPECT_TRUE(IsValidUnitOfLength(L"10^-0m^1"));
    for (const wchar_t* unit : {L"10^0m^1", L"10^-m^1", L"10^-6s^1", L"10^--6m^1", L"10^-6m", L"10^-m", L"m^1", L""})
        EXPECT_FALSE(IsValidUnitOfLength(unit)) << unit;
    EXPECT_FALSE(IsValidUnitOfLength(nullptr));
}

TEST(IsValidUnitOfTime, TakesWholeSecondsButNoFractions)
{
    EXPECT_TRUE(IsValidUnitOfTime(L"10^0s^1"));
    EXPECT_TRUE(IsValidUnitOfTime(L"10^00s^1"));
    for (const wchar_t* unit : {L"10^-3s^1", L"10^3s^1", L"10^s^1", L"10^0m^1", L"10^0s", L"s^1", L""})
        EXPECT_FALSE(IsValidUnitOfTime(unit)) << unit;
    EXPECT_FALSE(IsValidUnitOfTime(nullptr));
}

} // namespace
