#include "HostTool/Text.h"

#include "HostTool/HostError.h"

namespace HostTool
{

namespace
{

constexpr char32_t ReplacementCharacter = 0xFFFD;

bool IsCharacter(char32_t c)
{
    return c < 0xD800 || (c > 0xDFFF && c < 0x110000);
}

void AppendUtf8(std::string& text, char32_t c)
{
    const auto continuation = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80)
    {
        text += static_cast<char>(c);
    }
    else if (c < 0x800)
    {
        text += {static_cast<char>(0xC0 | (c >> 6)), continuation(0)};
    }
    else if (c < 0x10000)
    {
        text += {static_cast<char>(0xE0 | (c >> 12)), continuation(6), continuation(0)};
    }
    else
    {
        text += {static_cast<char>(0xF0 | (c >> 18)), continuation(12), continuation(6), continuation(0)};
    }
}

} // namespace

std::string ToUtf8(std::wstring_view wide)
{
    std::string text;
    for (const wchar_t w : wide)
    {
        const auto c = static_cast<char32_t>(w);
        AppendUtf8(text, IsCharacter(c) ? c : ReplacementCharacter);
    }
    return text;
}

std::wstring ToWide(std::string_view utf8)
{
    try
    {
        // A path of this library converts between UTF-8 and wide text in every locale, the "C" one included.
        return std::filesystem::path(utf8).wstring();
    }
    catch (const std::filesystem::filesystem_error&)
    {
        throw CHostError(ExitCode::WrongUsage,
                         "'" + Printable(std::string(utf8)) + "': the name is not UTF-8; rename the file");
    }
}

std::string Printable(std::string utf8)
{
    for (char& c : utf8)
    {
        const auto byte = static_cast<unsigned char>(c);
        c = byte < 0x20 || byte == 0x7F ? '?' : c;
    }
    return utf8;
}

} // namespace HostTool
