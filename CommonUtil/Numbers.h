#pragma once
#include <cmath>
#include <cstdint>
#include <ctime>
#include <limits>
#include <string>

namespace CommonUtil
{

/// The narrowed value; asserts that it fits.
uint32_t ToUint32WithCheck(uint64_t value);
/// Product and sum; each asserts that 64 bits hold it.
uint64_t MultiplyWithCheck(uint64_t left, uint64_t right);
uint64_t AddWithCheck(uint64_t left, uint64_t right);

/// A double as an integer, cut towards zero; asserts that it is a number in the range of the integer.
template <typename Integer>
Integer ToIntegerWithCheck(double value);

/// floor(x + 0.5): halves go up, also below zero. NaN stays NaN.
double myRound(double x);
/// The distance is at most the machine epsilon times the larger magnitude.
bool approximatelyEqual(double a, double b);
/// The number that is left when `x` is written with 6 significant digits and read back; NaN stays NaN. The name says
/// something else: gaps between points are told apart by this very comparison.
double roundTo1stDecimal(double x);

/// The host is little-endian by definition: false.
bool IsBigEndian();

/// "1970-01-01T00:00:00+00:00" of seconds since the epoch. A time that has no calendar date, or whose year does not fit
/// four characters, is a failed assertion.
std::string ToUtcW3CTimeString(std::time_t docTime);

/// The whole part of a number after it was written with 6 decimals: 12.7 gives "12", 2.9999999 gives "3".
std::string ToDoubleStr(const double& value);
/// The number in fixed notation with `precision` decimals.
std::string ToDoubleStr2(const double& value, int precision);

/// The number in general notation with `precision` significant digits: 0.5 stays 0.5.
std::string ToGeneralStr(double value, int precision);

/// The exponent of a unit text of the form "10^-6m^1", as a number of at least 0: 6. `siUnits` is the base unit, with
/// or without its "^1". Any other form is a failed assertion.
uint32_t NegativePower(const std::wstring& units, const char* siUnits);

/// `value` in units of 10^-powerOf10toMultiplyBy of the base unit: 5000 in "10^-9m^1" is 5 for a power of 6. With
/// empty `originalUnits` the value must be 0 or NaN (assertion), and is returned as it is.
double ConvertToUnits(double value, const std::wstring& originalUnits, const char* siUnits,
                      uint32_t powerOf10toMultiplyBy);

/// True for "10^-", digits, "m^1"; false for a null pointer, and for a metre with the power 0.
bool IsValidUnitOfLength(const wchar_t* unit);
/// True for "10^-" or "10^0" and "s^1" with nothing but digits from the fourth character on, so that "10^0s^1" is valid
/// and "10^-3s^1" is not: a T axis therefore hands out no unit, which hosts know.
bool IsValidUnitOfTime(const wchar_t* unit);

} // namespace CommonUtil

#include "CommonUtil/Assertion.h"

template <typename Integer>
Integer CommonUtil::ToIntegerWithCheck(double value)
{
    // One past the largest value is a power of two and so exact as a double, which the largest value itself may not be.
    const double onePastMax = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
    const double onePastMin = static_cast<double>(std::numeric_limits<Integer>::min()) - 1.0;
    ZEL_ASSERT(value < onePastMax && (value > onePastMin || value == onePastMin + 1.0));
    return static_cast<Integer>(value);
}
