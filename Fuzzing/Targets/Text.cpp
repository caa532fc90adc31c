// Whatever a text holds: conversions write as much as they told, bytes that are no UTF-8 cost one character each, and
// the functions for texts, numbers and units answer or fail by an assertion.

#include "CommonUtil/Text.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/PlatformCalls.h"
#include "Fuzzing/Support/FuzzTarget.h"

#include <cstring>
#include <string>
#include <vector>

using namespace CommonUtil;
using namespace Fuzzing;

namespace
{

/// Failed assertions are answers.
template <typename Function>
void Try(Function&& function)
{
    try
    {
        function();
    }
    catch (const char*)
    {
    }
}

void ConvertInBuffers(const std::string& text)
{
    uint32_t size = 0;
    Require(PAL_ConvertToUnicode(text.c_str(), nullptr, 0, &size) == PAL_RESULT_SUCCESS, "a size can be asked for");
    std::vector<wchar_t> wide(size);
    uint32_t filled = 0;
    Require(PAL_ConvertToUnicode(text.c_str(), wide.data(), size, &filled) == PAL_RESULT_SUCCESS && filled == size,
            "the told size is enough");
    Require(size == 1 || PAL_ConvertToUnicode(text.c_str(), wide.data(), size - 1, &filled) == PAL_RESULT_TOO_SMALL,
            "one less is too small");
    Require(PAL_ConvertFromUnicode(wide.data(), nullptr, 0, &size) == PAL_RESULT_SUCCESS, "a size can be asked for");
    std::vector<char> narrow(size);
    Require(PAL_ConvertFromUnicode(wide.data(), narrow.data(), size, &filled) == PAL_RESULT_SUCCESS && filled == size,
            "the told size is enough");
}

void Convert(const std::string& text)
{
    const std::wstring wide = Utf8ToUtf16(text);
    Require(wide.size() <= text.size(), "no character takes less than a byte");
    const std::string back = Utf16ToUtf8(wide);
    Require(Utf8ToUtf16(back) == wide, "what was converted is UTF-8");
    std::wstring holder;
    PAL_fmt_return_scstr(wide.c_str(), holder);
}

void TryTexts(const std::string& text, const std::string& part)
{
    Try([&] { Require(Split(text, part).size() <= text.size() + 1, "a piece more than separators"); });
    Try([&] { Replace(text, part, "xx"); });
    Try([&] { Require(LeftOf(text, part).size() <= text.size(), "a part is no longer than the whole"); });
    Try([&] { RightOf(text, part); });
    Require(!StartsWith(text, part) || Contains(text, part), "a start is a part");
    Require(!EndsWith(text, part) || Contains(text, part), "an end is a part");
    Require(!IsPositiveInteger(text) || IsInt(text), "a number without a sign is a number");
    FileNameWithoutPath(text);
}

void TryUnits(const std::wstring& unit, double value, uint32_t power)
{
    IsValidUnitOfLength(unit.c_str());
    IsValidUnitOfTime(unit.c_str());
    CIA::IdOfText(unit.c_str());
    for (const char* base : {"m", "m^1", "s^1"})
    {
        Try([&] { NegativePower(unit, base); });
        Try([&] { ConvertToUnits(value, unit, base, power); });
    }
}

void TryNumbers(double value, int64_t time)
{
    Try([&] { ToIntegerWithCheck<int32_t>(value); });
    Try([&] { ToIntegerWithCheck<uint32_t>(value); });
    Try([&] { ToIntegerWithCheck<int64_t>(value); });
    Try([&] { myRound(value); });
    Try([&] { roundTo1stDecimal(value); });
    Try([&] { ToString(value); });
    Try([&] { ToDoubleStr(value); });
    Try([&] { ToDoubleStr2(value, 3); });
    Try([&] { ToGeneralStr(value, 6); });
    Try([&] { ToUtcW3CTimeString(time); });
    Try([&] { ToStringWith0Padding(static_cast<int>(time), 4); });
}

void RunText(CInput input)
{
    CInputReader reader(input);
    const uint32_t low = reader.Number();
    const uint64_t bits = low | uint64_t{reader.Number()} << 32;
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    const CInput part = reader.Bytes(reader.Byte() % 8);
    const CInput rest = reader.Rest();
    const std::string text(rest.begin(), rest.end());
    Convert(text);
    ConvertInBuffers(text);
    TryTexts(text, std::string(part.begin(), part.end()));
    TryUnits(ToWide(text), value, low % 32);
    TryNumbers(value, static_cast<int64_t>(bits));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunInput(RunText, data, size);
}
