#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/PlatformCalls.h"
#include "PlatformAbstractionLayer/PrivateProfileScan.h"
#include "PlatformAbstractionLayer/SizedResult.h"

#include <array>
#include <cwchar>
#include <limits>
#include <optional>

namespace
{

constexpr size_t TooLong = 2147483647;

/// Stores a text with its zero. Too long a one is logged and fails.
int FillText(std::wstring_view text, const char* complaint, wchar_t* result, uint32_t resultSize,
             uint32_t* resultSizeFilledOrNeeded)
{
    if (text.size() >= TooLong)
    {
        ZEL_LOG("%s", complaint);
        return PAL_RESULT_FAILURE;
    }
    return FillOrTellSize<wchar_t>(std::wstring(text) + L'\0', result, resultSize, resultSizeFilledOrNeeded);
}

/// Stores the default in the place of a value that is not there. `reason` is the result when that can be done.
int FillDefault(int reason, const wchar_t* defaultValue, wchar_t* result, uint32_t resultSize,
                uint32_t* resultSizeFilledOrNeeded)
{
    if (!defaultValue)
    {
        *result = L'\0';
        *resultSizeFilledOrNeeded = 0;
        return reason;
    }
    const int filled = FillText(defaultValue, "defaultValue tooo long!", result, resultSize, resultSizeFilledOrNeeded);
    return filled == PAL_RESULT_SUCCESS ? reason : filled;
}

} // namespace

int PAL_GetPrivateProfileSectionNames(wchar_t* dst, uint32_t dstSize, const wchar_t* fileName,
                                      uint32_t* dstSizeFilledOrNeeded)
{
    if (!dst || !fileName || !dstSizeFilledOrNeeded)
        return PAL_RESULT_FAILURE;
    const std::string name = Utf16ToUtf8(fileName);
    if (!IsFileToRead(name))
    {
        *dstSizeFilledOrNeeded = 0;
        return PAL_RESULT_SUCCESS;
    }
    std::wstring names;
    if (const int result = ScanSectionNames(CPrivateProfileText(name), names); result != PAL_RESULT_SUCCESS)
        return result;
    names += L'\0';
    return FillOrTellSize<wchar_t>(names, dst, dstSize, dstSizeFilledOrNeeded);
}

int PAL_GetPrivateProfileSection(const wchar_t* secName, wchar_t* dst, uint32_t dstSize, const wchar_t* fileName,
                                 uint32_t* destSizeFilledOrNeeded)
{
    if (!secName || !dst || dstSize == 0 || !fileName || !destSizeFilledOrNeeded)
        return PAL_RESULT_FAILURE;
    const std::string name = Utf16ToUtf8(fileName);
    if (!IsFileToRead(name))
    {
        *destSizeFilledOrNeeded = 0;
        return PAL_RESULT_SUCCESS;
    }
    std::wstring row;
    const auto appendToRow = [&row](const CPrivateProfileLine& line)
    {
        row.append(line.Name).append(line.IsPair ? L"=" : L"").append(line.Value).push_back(L'\0');
        return true;
    };
    if (const int result = ScanSection(CPrivateProfileText(name), secName, appendToRow); result != PAL_RESULT_SUCCESS)
        return result;
    row += L'\0';
    return FillOrTellSize<wchar_t>(row, dst, dstSize, destSizeFilledOrNeeded);
}

int PAL_GetPrivateProfileString(const wchar_t* secName, const wchar_t* key, const wchar_t* defaultValue,
                                wchar_t* result, uint32_t resultSize, const wchar_t* fileName,
                                uint32_t* resultSizeFilledOrNeeded)
{
    if (!secName || !key || !fileName || !result || resultSize == 0 || !resultSizeFilledOrNeeded)
        return PAL_RESULT_FAILURE;
    std::optional<std::wstring> value;
    bool isEachLineAPair = true;
    const auto lookForKey = [&](const CPrivateProfileLine& line)
    {
        isEachLineAPair = line.IsPair;
        if (line.IsPair && line.Name == key)
            value = line.Value;
        return isEachLineAPair && !value;
    };
    const std::string name = Utf16ToUtf8(fileName);
    const int scanned =
        IsFileToRead(name) ? ScanSection(CPrivateProfileText(name), secName, lookForKey) : PAL_RESULT_SUCCESS;
    if (!isEachLineAPair)
        return PAL_RESULT_FAILURE;
    if (!value)
        return FillDefault(scanned, defaultValue, result, resultSize, resultSizeFilledOrNeeded);
    return FillText(*value, "Value tooo long!", result, resultSize, resultSizeFilledOrNeeded);
}

int PAL_GetPrivateProfileInt(const wchar_t* secName, const wchar_t* key, int32_t defaultValue, const wchar_t* fileName,
                             int32_t* result)
{
    if (!result)
        return PAL_RESULT_FAILURE;
    constexpr const wchar_t* Absent = L"absent";
    std::array<wchar_t, 50> text{};
    uint32_t size = 0;
    const int found = PAL_GetPrivateProfileString(secName, key, Absent, text.data(), static_cast<uint32_t>(text.size()),
                                                  fileName, &size);
    if (found != PAL_RESULT_SUCCESS)
        return found;
    if (std::wcscmp(text.data(), Absent) == 0)
    {
        *result = defaultValue;
        return PAL_RESULT_SUCCESS;
    }
    const CommonUtil::CErrnoKeeper errnoKeeper;
    const long number = std::wcstol(text.data(), nullptr, 0);
    ZEL_ASSERT(number >= std::numeric_limits<int32_t>::min() && number <= std::numeric_limits<int32_t>::max());
    *result = static_cast<int32_t>(number);
    // Anything but the plain decimal form (0x10, 010, "5 apples") was understood in part only.
    ZEL_ASSERT(std::to_wstring(number) == text.data());
    return PAL_RESULT_SUCCESS;
}
