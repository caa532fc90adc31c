#include "CommonUtil/Text.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/PlatformCalls.h"

#include <algorithm>
#include <cwchar>
#include <locale>
#include <sstream>

namespace CommonUtil
{

namespace
{

template <typename Text>
Text NameWithoutPath(Text text)
{
    using Char = typename Text::value_type;
    std::replace(text.begin(), text.end(), static_cast<Char>('\\'), static_cast<Char>('/'));
    const auto slash = text.rfind(static_cast<Char>('/'));
    return slash == Text::npos ? text : text.substr(slash + 1);
}

template <typename Text>
Text ReplaceAll(const Text& text, const Text& from, const Text& to)
{
    ZEL_ASSERT(!from.empty());
    Text result;
    size_t position = 0;
    for (size_t found = text.find(from); found != Text::npos; found = text.find(from, position))
    {
        result.append(text, position, found - position).append(to);
        position = found + from.size();
    }
    return result.append(text, position);
}

bool IsDigits(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

std::string FileNameWithoutPath(std::string text)
{
    return NameWithoutPath(std::move(text));
}
std::wstring FileNameWithoutPath(std::wstring text)
{
    return NameWithoutPath(std::move(text));
}

std::string Replace(const std::string& text, const std::string& from, const std::string& to)
{
    return ReplaceAll(text, from, to);
}
std::wstring Replace(const std::wstring& text, const std::wstring& from, const std::wstring& to)
{
    return ReplaceAll(text, from, to);
}

std::string LeftOf(const std::string& text, const std::string& separator)
{
    return text.substr(0, text.find(separator));
}

std::string RightOf(const std::string& text, const std::string& separator)
{
    const size_t found = text.find(separator);
    return found == std::string::npos ? text : text.substr(found + separator.size());
}

bool Contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

std::vector<std::string> Split(const std::string& text, const std::string& separator)
{
    ZEL_ASSERT(!separator.empty());
    std::vector<std::string> pieces;
    size_t position = 0;
    for (size_t found = text.find(separator); found != std::string::npos; found = text.find(separator, position))
    {
        pieces.push_back(text.substr(position, found - position));
        position = found + separator.size();
    }
    pieces.push_back(text.substr(position));
    return pieces;
}

bool StartsWith(const std::string& text, const std::string& start)
{
    return text.starts_with(start);
}
bool StartsWith(const std::wstring& text, const std::wstring& start)
{
    return text.starts_with(start);
}
bool EndsWith(const std::string& text, const std::string& end)
{
    return text.ends_with(end);
}
bool EndsWith(const std::wstring& text, const std::wstring& end)
{
    return text.ends_with(end);
}

bool IsInt(const std::string& text)
{
    return IsDigits(text.starts_with('-') ? std::string_view(text).substr(1) : std::string_view(text));
}

bool IsPositiveInteger(const std::string& text)
{
    return IsDigits(text);
}

std::string ToString(int value)
{
    return std::to_string(value);
}
std::string ToString(unsigned value)
{
    return std::to_string(value);
}
std::string ToString(long value)
{
    return std::to_string(value);
}
std::string ToString(unsigned long value)
{
    return std::to_string(value);
}
std::string ToString(long long value)
{
    return std::to_string(value);
}

std::string ToString(double value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

std::string ToStringWith0Padding(int i, int numOfDigits)
{
    const std::string text = ToString(i);
    ZEL_ASSERT(numOfDigits >= 0 && text.size() <= static_cast<size_t>(numOfDigits));
    return std::string(static_cast<size_t>(numOfDigits) - text.size(), '0') + text;
}

std::wstring ToWide(const std::string& narrow)
{
    return Utf8ToUtf16(narrow);
}
std::string A(const std::wstring& wide)
{
    return Utf16ToUtf8(wide);
}

bool Equals(const wchar_t* left, const wchar_t* right)
{
    return left == right || (left && right && std::wcscmp(left, right) == 0);
}

} // namespace CommonUtil
