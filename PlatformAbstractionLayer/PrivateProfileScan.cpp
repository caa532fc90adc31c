#include "PlatformAbstractionLayer/PrivateProfileScan.h"

#include "Brix/PlatformAbstractionLayer.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"

// The two scanners are strict in different ways (what counts as broken, and which text is logged), and code that was
// written for them knows it. So there are two.

namespace
{

bool IsWhiteSpace(wchar_t character)
{
    return ProfileWhiteSpace.find(character) != std::wstring_view::npos;
}

/// Where in a line a scanner stands.
enum class Place
{
    Start, ///< nothing but white space so far
    InName,
    BehindName,
    InComment,
    InText
};

class CSectionNamesScanner
{
public:
    explicit CSectionNamesScanner(std::wstring& names) : _names(names) {}

    bool Take(wchar_t character)
    {
        if (character == L'\n')
            return EndLine();
        switch (_place)
        {
        case Place::Start:
            if (!IsWhiteSpace(character))
                _place = character == L'[' ? Place::InName : Place::InText;
            break;
        case Place::InName:
            if (character == L']')
                _place = Place::BehindName;
            else
                _name += character;
            break;
        case Place::BehindName:
            if (IsWhiteSpace(character))
                break;
            ZEL_LOG("Parse error - Unexpected character after section name end");
            return false;
        default:
            break;
        }
        return true;
    }

private:
    bool EndLine()
    {
        if (_place == Place::InName)
        {
            ZEL_LOG("Parse error - incomplete section name");
            return false;
        }
        if (_place == Place::BehindName)
        {
            ZEL_ASSERT(!_name.empty());
            _names.append(_name).push_back(L'\0');
        }
        _name.clear();
        _place = Place::Start;
        return true;
    }

    std::wstring& _names;
    std::wstring _name;
    Place _place = Place::Start;
};

CPrivateProfileLine LineOf(std::wstring_view line)
{
    const size_t sign = line.find(L'=');
    if (sign == std::wstring_view::npos)
        return {.Name = line, .Value = {}, .IsPair = false};
    return {
        .Name = TrimProfileText(line.substr(0, sign)), .Value = TrimProfileText(line.substr(sign + 1)), .IsPair = true};
}

class CSectionScanner
{
public:
    CSectionScanner(std::wstring_view secName, const PrivateProfileLineTaker& takeLine)
        : _secName(secName), _takeLine(takeLine)
    {
    }

    /// False when the scan is at its end: the next section has begun, a section line is broken, or no more lines are
    /// wanted.
    bool Take(wchar_t character)
    {
        if (character == L'\n')
            return EndLine();
        switch (_place)
        {
        case Place::Start:
            return TakeFirst(character);
        case Place::InName:
            ZEL_ASSERT(character != L'[');
            if (character == L']')
                _place = Place::BehindName;
            else
                _text += character;
            return true;
        case Place::BehindName:
            return IsWhiteSpace(character) || Break("Invalid character after end of section name");
        case Place::InText:
            if (_isSectionFound)
                _text += character;
            return true;
        default:
            return true;
        }
    }

    int Result() const { return _isSectionFound && !_isBroken ? PAL_RESULT_SUCCESS : PAL_RESULT_FAILURE; }

private:
    bool TakeFirst(wchar_t character)
    {
        if (IsWhiteSpace(character))
            return true;
        if (character == L'[')
        {
            _place = Place::InName;
            return !_isSectionFound;
        }
        _place = character == L';' ? Place::InComment : Place::InText;
        return Take(character);
    }

    bool EndLine()
    {
        if (_place == Place::InName)
            return Break("Parser error - unterminated section name");
        bool isMoreWanted = true;
        if (_place == Place::BehindName)
            _isSectionFound = _text == _secName;
        else if (!_text.empty())
            isMoreWanted = _takeLine(LineOf(TrimProfileText(_text)));
        _text.clear();
        _place = Place::Start;
        return isMoreWanted;
    }

    bool Break(const char* text)
    {
        ZEL_LOG("%s", text);
        _isBroken = true;
        return false;
    }

    std::wstring_view _secName;
    const PrivateProfileLineTaker& _takeLine;
    std::wstring _text; ///< of the name or of the line
    Place _place = Place::Start;
    bool _isSectionFound = false;
    bool _isBroken = false;
};

/// Gives the scanner character by character until it has enough of them; false when it stopped before the end.
template <typename Scanner>
bool Scan(const CPrivateProfileText& text, Scanner& scanner)
{
    for (size_t i = 0; i < text.Size(); ++i)
        if (!scanner.Take(text[i]))
            return false;
    return true;
}

} // namespace

int ScanSectionNames(const CPrivateProfileText& text, std::wstring& names)
{
    CSectionNamesScanner scanner(names);
    return Scan(text, scanner) ? PAL_RESULT_SUCCESS : PAL_RESULT_FAILURE;
}

int ScanSection(const CPrivateProfileText& text, std::wstring_view secName, const PrivateProfileLineTaker& takeLine)
{
    CSectionScanner scanner(secName, takeLine);
    Scan(text, scanner);
    return scanner.Result();
}
