
#include "PlatformAbstractionLayer/TextConversion.h"

#include "CommonUtil/PlatformCalls.h"
#include "PlatformAbstractionLayer/SizedResult.h"

#include <limits>
#include <optional>
#include <string_view>

// Converters of our own, since those of the C library depend on the locale that the host has chosen.

namespace
{

constexpr char32_t ReplacementCharacter = 0xFFFD;
constexpr char32_t LastCodePoint = 0x10FFFF;

bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

struct CCodePoint
{
    char32_t Value;
    size_t NumOfUnits; ///< that it took in the text
};

/// The form of a character by its first byte: how many bytes follow, which bits of the first byte count, and the
/// least code point that may be written so (a smaller one is an overlong form).
struct CUtf8Form
{
    size_t NumOfFollowers;
    unsigned char Bits;
    char32_t Least;
};

bool FormOf(unsigned char first, CUtf8Form& form)
{
    if ((first & 0xE0) == 0xC0)
        form = {1, 0x1F, 0x80};
    else if ((first & 0xF0) == 0xE0)
        form = {2, 0x0F, 0x800};
    else if ((first & 0xF8) == 0xF0)
        form = {3, 0x07, 0x10000};
    else
        return false;
    return true;
}

/// The code point at the start of `text`, which is not empty; a byte that starts none is replaced on its own.
CCodePoint FirstOfUtf8(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80)
        return {first, 1};
    CUtf8Form form{};
    if (!FormOf(first, form) || form.NumOfFollowers >= text.size())
        return {ReplacementCharacter, 1};
    char32_t value = first & form.Bits;
    for (size_t i = 1; i <= form.NumOfFollowers; ++i)
    {
        const auto follower = static_cast<unsigned char>(text[i]);
        if ((follower & 0xC0) != 0x80)
            return {ReplacementCharacter, 1};
        value = (value << 6) | (follower & 0x3Fu);
    }
    if (value < form.Least || value > LastCodePoint || IsHighSurrogate(value) || IsLowSurrogate(value))
        return {ReplacementCharacter, 1};
    return {value, form.NumOfFollowers + 1};
}

/// The code point at the start of `text`, which is not empty.
CCodePoint FirstOfWide(std::wstring_view text)
{
    const auto first = static_cast<char32_t>(text[0]);
    if (IsHighSurrogate(first) && text.size() > 1 && IsLowSurrogate(static_cast<char32_t>(text[1])))
        return {0x10000 + ((first - 0xD800) << 10) + (static_cast<char32_t>(text[1]) - 0xDC00), 2};
    if (first > LastCodePoint || IsHighSurrogate(first) || IsLowSurrogate(first))
        return {ReplacementCharacter, 1};
    return {first, 1};
}

void AppendUtf8(std::string& text, char32_t codePoint)
{
    const auto append = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto appendFollower = [&](int shift) { append(0x80 | ((codePoint >> shift) & 0x3F)); };
    if (codePoint < 0x80)
        append(codePoint);
    else if (codePoint < 0x800)
    {
        append(0xC0 | (codePoint >> 6));
        appendFollower(0);
    }
    else if (codePoint < 0x10000)
    {
        append(0xE0 | (codePoint >> 12));
        appendFollower(6);
        appendFollower(0);
    }
    else
    {
        append(0xF0 | (codePoint >> 18));
        appendFollower(12);
        appendFollower(6);
        appendFollower(0);
    }
}

/// The source of a Win32-shaped call; null when its size makes no sense.
template <typename Char>
std::optional<std::basic_string<Char>> SourceOf(uint32_t codePage, const Char* text, int textSize)
{
    if ((codePage != CP_ACP && codePage != CP_UTF8) || !text || textSize < -1 || textSize == 0)
        return std::nullopt;
    const size_t size = textSize == -1 ? std::char_traits<Char>::length(text) + 1 : static_cast<size_t>(textSize);
    return std::basic_string<Char>(text, size);
}

/// Writes the result of a Win32-shaped call and tells its size, as those calls do.
template <typename Char>
int Fill(const std::basic_string<Char>& converted, Char* result, int resultSize)
{
    if (converted.size() > static_cast<size_t>(std::numeric_limits<int>::max()) || resultSize < 0)
        return 0;
    const int size = static_cast<int>(converted.size());
    if (resultSize == 0)
        return size;
    if (!result || size > resultSize)
        return 0;
    std::copy(converted.begin(), converted.end(), result);
    return size;
}

} // namespace

std::wstring Utf8ToUtf16(const std::string& utf8)
{
    std::wstring wide;
    wide.reserve(utf8.size());
    for (std::string_view rest = utf8; !rest.empty();)
    {
        const CCodePoint codePoint = FirstOfUtf8(rest);
        wide += static_cast<wchar_t>(codePoint.Value);
        rest.remove_prefix(codePoint.NumOfUnits);
    }
    return wide;
}

std::string Utf16ToUtf8(const std::wstring& wide)
{
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::wstring_view rest = wide; !rest.empty();)
    {
        const CCodePoint codePoint = FirstOfWide(rest);
        AppendUtf8(utf8, codePoint.Value);
        rest.remove_prefix(codePoint.NumOfUnits);
    }
    return utf8;
}

int MultiByteToWideChar(uint32_t codePage, uint32_t, const char* text, int textSize, wchar_t* result, int resultSize)
{
    const auto source = SourceOf(codePage, text, textSize);
    return source ? Fill(Utf8ToUtf16(*source), result, resultSize) : 0;
}

int WideCharToMultiByte(uint32_t codePage, uint32_t, const wchar_t* text, int textSize, char* result, int resultSize,
                        const char*, int*)
{
    const auto source = SourceOf(codePage, text, textSize);
    return source ? Fill(Utf16ToUtf8(*source), result, resultSize) : 0;
}

int PAL_ConvertToUnicode(const char* text, wchar_t* result, uint32_t resultSize, uint32_t* sizeFilledOrNeeded)
{
    if (!text)
        return PAL_RESULT_FAILURE;
    const std::wstring wide = Utf8ToUtf16(text);
    return FillOrTellSizeAlone(std::wstring_view(wide.c_str(), wide.size() + 1), result, resultSize,
                               sizeFilledOrNeeded);
}

int PAL_ConvertFromUnicode(const wchar_t* text, char* result, uint32_t resultSize, uint32_t* sizeFilledOrNeeded)
{
    if (!text)
        return PAL_RESULT_FAILURE;
    const std::string utf8 = Utf16ToUtf8(text);
    return FillOrTellSizeAlone(std::string_view(utf8.c_str(), utf8.size() + 1), result, resultSize, sizeFilledOrNeeded);
}

const wchar_t* PAL_fmt_return_scstr(const wchar_t* format, std::wstring& holder)
{
    holder = format ? format : L"";
    for (size_t i = 0; i + 1 < holder.size(); ++i)
    {
        if (holder[i] != L'%')
            continue;
        // The character behind a percent sign is passed over with it, so that "%%s" stays a percent sign and an s.
        ++i;
        if (holder[i] == L's')
            holder[i] = L'S';
    }
    return holder.c_str();
}
