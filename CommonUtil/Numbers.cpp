#include "CommonUtil/Numbers.h"

#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/PlatformCalls.h"
#include "CommonUtil/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>

namespace CommonUtil
{

namespace
{

std::string InFixedNotation(double value, int precision)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::fixed << std::setprecision(precision) << value;
    return stream.str();
}

double ParseNumber(const std::string& text)
{
    const CErrnoKeeper errnoKeeper; // a number next to 0 leaves ERANGE, which is no reason of ours
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    return value;
}

} // namespace

uint32_t ToUint32WithCheck(uint64_t value)
{
    ZEL_ASSERT(value <= std::numeric_limits<uint32_t>::max());
    return static_cast<uint32_t>(value);
}

uint64_t MultiplyWithCheck(uint64_t left, uint64_t right)
{
    uint64_t product = 0;
    ZEL_ASSERT(!__builtin_mul_overflow(left, right, &product));
    return product;
}

uint64_t AddWithCheck(uint64_t left, uint64_t right)
{
    uint64_t sum = 0;
    ZEL_ASSERT(!__builtin_add_overflow(left, right, &sum));
    return sum;
}

double myRound(double x)
{
    return std::isnan(x) ? x : std::floor(0.5 + x);
}

bool approximatelyEqual(double a, double b)
{
    return std::fabs(a - b) <= std::numeric_limits<double>::epsilon() * std::max(std::fabs(a), std::fabs(b));
}

double roundTo1stDecimal(double x)
{
    return std::isfinite(x) ? ParseNumber(ToString(x)) : x;
}

bool IsBigEndian()
{
    return false;
}

std::string ToUtcW3CTimeString(std::time_t docTime)
{
    std::tm calendar{};
    ZEL_ASSERT(gmtime_s(&calendar, &docTime) == 0);
    ZEL_ASSERT(calendar.tm_mon >= 0 && calendar.tm_mon <= 11);
    ZEL_ASSERT(calendar.tm_year <= 9999 - 1900); // tested before the sum, which could overflow
    const auto twoDigits = [](int number) { return ToStringWith0Padding(number, 2); };
    return ToStringWith0Padding(calendar.tm_year + 1900, 4) + "-" + twoDigits(calendar.tm_mon + 1) + "-" +
           twoDigits(calendar.tm_mday) + "T" + twoDigits(calendar.tm_hour) + ":" + twoDigits(calendar.tm_min) + ":" +
           twoDigits(calendar.tm_sec) + "+00:00";
}

std::string ToDoubleStr(const double& value)
{
    const std::string text = InFixedNotation(value, 6);
    return text.substr(0, text.rfind('.'));
}

std::string ToDoubleStr2(const double& value, int precision)
{
    return InFixedNotation(value, precision);
}

std::string ToGeneralStr(double value, int precision)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::setprecision(precision) << value;
    return stream.str();
}

uint32_t NegativePower(const std::wstring& units, const char* siUnits)
{
    const std::string text = A(units);
    std::string ending = siUnits;
    if (!EndsWith(ending, "^1"))
        ending += "^1";
    ZEL_ASSERT(StartsWith(text, "10^-") || StartsWith(text, "10^0"));
    ZEL_ASSERT(EndsWith(text, ending));
    const size_t start = StartsWith(text, "10^-") ? 4 : 3;
    ZEL_ASSERT(text.size() - ending.size() >= start);
    const std::string power = text.substr(start, text.size() - ending.size() - start);
    ZEL_ASSERT(IsInt(power));
    uint32_t number = 0; // without a sign: a second minus sign does not pass
    const auto [end, error] = std::from_chars(power.data(), power.data() + power.size(), number);
    ZEL_ASSERT(error == std::errc() && number <= static_cast<uint32_t>(std::numeric_limits<int>::max()));
    return number;
}

double ConvertToUnits(double value, const std::wstring& originalUnits, const char* siUnits,
                      uint32_t powerOf10toMultiplyBy)
{
    if (originalUnits.empty())
    {
        ZEL_ASSERT(value == 0.0 || std::isnan(value));
        return value;
    }
    const uint32_t power = NegativePower(originalUnits, siUnits);
    const CErrnoKeeper errnoKeeper; // a power out of range leaves ERANGE, which is no reason of ours
    ZEL_ASSERT(powerOf10toMultiplyBy <= static_cast<uint32_t>(std::numeric_limits<int>::max()));
    return value / std::pow(10.0, static_cast<int>(power) - static_cast<int>(powerOf10toMultiplyBy));
}

bool IsValidUnitOfLength(const wchar_t* unit)
{
    if (!unit)
        return false;
    const std::string text = A(unit);
    return StartsWith(text, "10^-") && EndsWith(text, "m^1") && text.size() >= 7 &&
           IsPositiveInteger(text.substr(4, text.size() - 7));
}

bool IsValidUnitOfTime(const wchar_t* unit)
{
    if (!unit)
        return false;
    const std::string text = A(unit);
    return (StartsWith(text, "10^-") || StartsWith(text, "10^0")) && EndsWith(text, "s^1") && text.size() >= 6 &&
           IsPositiveInteger(text.substr(3, text.size() - 6));
}

} // namespace CommonUtil
