#include "HostTool/Text.h"

#include "HostTool/HostError.h"

#include <iconv.h>
#include <locale>
#include <sstream>

namespace HostTool
{

namespace
{

constexpr char32_t ReplacementCharacter = 0xFFFD;

bool IsCharacter(char32_t c)
{
    return c < 0xD800 || (c > 0xDFFF && c < 0x110000);
}

/// Whether a character that does not fit 16 bits stands at `i` as two units, as files store it.
bool IsSurrogatePairAt(std::wstring_view wide, size_t i)
{
    return i + 1 < wide.size() && wide[i] >= 0xD800 && wide[i] < 0xDC00 && wide[i + 1] >= 0xDC00 &&
           wide[i + 1] < 0xE000;
}

char32_t JoinedPair(wchar_t high, wchar_t low)
{
    return 0x10000 + ((static_cast<char32_t>(high) - 0xD800) << 10) + (static_cast<char32_t>(low) - 0xDC00);
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

/// UTF-8 to wide text in every locale, the "C" one included, which the standard library's own conversions are not.
class CTextConverter
{
public:
    CTextConverter() : _Converter(iconv_open("WCHAR_T", "UTF-8")) {}
    ~CTextConverter() { iconv_close(_Converter); }
    CTextConverter(const CTextConverter&) = delete;
    CTextConverter& operator=(const CTextConverter&) = delete;

    /// `wide` comes with room for a character per byte, and is cut to what there is. False if `utf8` is no UTF-8.
    bool Convert(std::string& utf8, std::wstring& wide) const
    {
        char* source = utf8.data();
        size_t sourceBytes = utf8.size();
        char* target = reinterpret_cast<char*>(wide.data());
        size_t targetBytes = wide.size() * sizeof(wchar_t);
        const bool isConverted =
            iconv(_Converter, &source, &sourceBytes, &target, &targetBytes) != static_cast<size_t>(-1);
        wide.resize(wide.size() - targetBytes / sizeof(wchar_t));
        return isConverted;
    }

private:
    iconv_t _Converter;
};

} // namespace

std::string ToUtf8(std::wstring_view wide)
{
    std::string text;
    for (size_t i = 0; i < wide.size(); ++i)
    {
        if (IsSurrogatePairAt(wide, i))
        {
            AppendUtf8(text, JoinedPair(wide[i], wide[i + 1]));
            ++i;
            continue;
        }
        const auto c = static_cast<char32_t>(wide[i]);
        AppendUtf8(text, IsCharacter(c) ? c : ReplacementCharacter);
    }
    return text;
}

std::wstring ToWide(std::string_view utf8)
{
    const CTextConverter converter;
    std::wstring wide(utf8.size(), L'\0');
    std::string source(utf8);
    if (!converter.Convert(source, wide))
        throw CHostError(ExitCode::WrongUsage, "'" + Printable(source) + "': the name is not UTF-8; rename the file");
    return wide;
}

std::string CsvField(const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
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

std::string TextOf(double number)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(10);
    text << number;
    return text.str();
}

std::string TextOfCount(uint64_t count, const std::string& thing)
{
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

} // namespace HostTool
