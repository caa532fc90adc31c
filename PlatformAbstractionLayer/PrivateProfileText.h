#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Encodings of text files, by their first two bytes.
struct TextFileEncoding
{
    enum E : int
    {
        Utf16LittleEndian = 0, ///< FF FE
        Utf16BigEndian = 1,    ///< FE FF
        Utf8 = 2,              ///< EF BB
        Other = 3
    };
};

/// The encoding of a file by its UTF-8 name; Other for one that cannot be read.
TextFileEncoding::E get_text_file_encoding(const std::string& fileName);

/// True when there is a file of that name to read; a folder or a pipe is none.
bool IsFileToRead(const std::string& fileName);

/// The text of a private profile: the 16-bit units behind the byte order mark, and a line feed behind the last one.
/// The units stay as they are in the file, half the size of wide text, since a profile may be large.
class CPrivateProfileText
{
public:
    /// Reads the whole file. Asserts that it is UTF-16, little-endian, with a byte order mark, that its size fits 32
    /// bits, and that all of it can be read.
    explicit CPrivateProfileText(const std::string& fileName);

    size_t Size() const { return _bytes.size() / 2; } ///< without the mark, with the line feed
    wchar_t operator[](size_t index) const
    {
        const size_t low = 2 + 2 * index;
        return low + 1 < _bytes.size() ? static_cast<wchar_t>(_bytes[low] | _bytes[low + 1] << 8) : L'\n';
    }

private:
    std::vector<unsigned char> _bytes;
};

/// Blanks, tabs and carriage returns: what counts for nothing at both ends of a line, a name or a value.
constexpr std::wstring_view ProfileWhiteSpace = L" \t\r";
std::wstring_view TrimProfileText(std::wstring_view text);
