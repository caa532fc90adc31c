#include "CommonUtil/Numbers.h"

#include "Tests/Support/Assertion.h"

#include <cmath>
#include <limits>

using namespace CommonUtil;

namespace
{

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(MultiplyWithCheck, AssertsThatTheProductFits64Bits)
{
    EXPECT_EQ(MultiplyWithCheck(0xFFFFFFFF, 0xFFFFFFFF), 0xFFFFFFFE00000001u);
    EXPECT_FAILED_ASSERTION(MultiplyWithCheck(uint64_t{1} << 32, uint64_t{1} << 32));
}

TEST(AddWithCheck, AssertsThatTheSumFits64Bits)
{
    EXPECT_EQ(AddWithCheck(0xFFFFFFFFFFFFFFFE, 1), 0xFFFFFFFFFFFFFFFFu);
    EXPECT_FAILED_ASSERTION(AddWithCheck(0xFFFFFFFFFFFFFFFF, 1));
}

TEST(ToUint32WithCheck, TakesWhatFits)
{
    EXPECT_EQ(ToUint32WithCheck(0xFFFFFFFFull), 0xFFFFFFFFu);
    EXPECT_FAILED_ASSERTION(ToUint32WithCheck(0x100000000ull));
}

TEST(ToIntegerWithCheck, CutsTowardsZero)
{
    EXPECT_EQ(ToIntegerWithCheck<int32_t>(2.9), 2);
    EXPECT_EQ(ToIntegerWithCheck<int32_t>(-2.9), -2);
    EXPECT_EQ(ToIntegerWithCheck<uint32_t>(-0.9), 0u);
}

TEST(ToIntegerWithCheck, TakesTheWholeRangeAndNoMore)
{
    EXPECT_EQ(ToIntegerWithCheck<int32_t>(2147483647.9), 2147483647);
    EXPECT_EQ(ToIntegerWithCheck<int32_t>(-2147483648.9), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(ToIntegerWithCheck<int64_t>(-9223372036854775808.0), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(ToIntegerWithCheck<uint64_t>(18446744073709549568.0), 18446744073709549568ull);
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<int32_t>(2147483648.0));
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<int32_t>(-2147483649.0));
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<int64_t>(9223372036854775808.0));
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<int64_t>(-9223372036854777856.0));
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<uint64_t>(18446744073709551616.0));
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<uint32_t>(-1.0));
}

TEST(ToIntegerWithCheck, RefusesWhatIsNoNumber)
{
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<int32_t>(NaN));
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<int64_t>(Infinity));
    EXPECT_FAILED_ASSERTION(ToIntegerWithCheck<int64_t>(-Infinity));
}

TEST(MyRound, LetsHalvesGoUp)
{
    EXPECT_EQ(myRound(2.5), 3);
    EXPECT_EQ(myRound(-2.5), -2);
    EXPECT_EQ(myRound(2.4), 2);
    EXPECT_TRUE(std::isnan(myRound(NaN)));
}

TEST(ApproximatelyEqual, AllowsTheEpsilonOfTheLargerNumber)
{
    EXPECT_TRUE(approximatelyEqual(1000.0, std::nextafter(1000.0, 2000.0)));
    EXPECT_TRUE(approximatelyEqual(0.1 + 0.2, 0.3));
    EXPECT_FALSE(approximatelyEqual(1.0, 1.0 + 3e-16 * 2));
    EXPECT_TRUE(approximatelyEqual(0.0, 0.0));
    EXPECT_FALSE(approximatelyEqual(0.0, 1e-300));
    EXPECT_FALSE(approximatelyEqual(NaN, NaN));
}

TEST(RoundTo1stDecimal, KeepsSixSignificantDigits)
{
    EXPECT_EQ(roundTo1stDecimal(1.0000001), 1.0);
    EXPECT_EQ(roundTo1stDecimal(123456.7), 123457.0);
    EXPECT_EQ(roundTo1stDecimal(0.000123456789), 0.000123457);
    EXPECT_TRUE(std::isnan(roundTo1stDecimal(NaN)));
}

TEST(IsBigEndian, IsFalse)
{
    EXPECT_FALSE(IsBigEndian());
}

TEST(ToUtcW3CTimeString, WritesCalendarTime)
{
    EXPECT_EQ(ToUtcW3CTimeString(0), "1970-01-01T00:00:00+00:00");
    EXPECT_EQ(ToUtcW3CTimeString(1234567890), "2009-02-13T23:31:30+00:00");
    EXPECT_EQ(ToUtcW3CTimeString(-1), "1969-12-31T23:59:59+00:00");
    EXPECT_EQ(ToUtcW3CTimeString(253402300799), "9999-12-31T23:59:59+00:00");
}

TEST(ToUtcW3CTimeString, RefusesTimesWithoutAFourDigitYear)
{
    EXPECT_FAILED_ASSERTION(ToUtcW3CTimeString(253402300800));      // year 10000
    EXPECT_FAILED_ASSERTION(ToUtcW3CTimeString(67768036191676799)); // the last that has a calendar date at all
    EXPECT_FAILED_ASSERTION(ToUtcW3CTimeString(std::numeric_limits<std::time_t>::max()));
    EXPECT_FAILED_ASSERTION(ToUtcW3CTimeString(std::numeric_limits<std::time_t>::min()));
}

TEST(ToDoubleStr, GivesTheWholePartOfSixDecimals)
{
    EXPECT_EQ(ToDoubleStr(12.7), "12");
    EXPECT_EQ(ToDoubleStr(2.9999999), "3");
    EXPECT_EQ(ToDoubleStr(-0.5), "-0");
    EXPECT_EQ(ToDoubleStr(1e20), "100000000000000000000");
    EXPECT_EQ(ToDoubleStr(Infinity), "inf");
}

TEST(ToDoubleStr2, KeepsTheDecimalsAskedFor)
{
    EXPECT_EQ(ToDoubleStr2(12.7, 3), "12.700");
    EXPECT_EQ(ToDoubleStr2(12.7, 0), "13");
}

} // namespace
