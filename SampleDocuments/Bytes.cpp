#include "SampleDocuments/Bytes.h"

#include <fstream>

namespace SampleDocuments
{

void Append(ByteString& bytes, std::string_view text)
{
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void Append(ByteString& bytes, std::span<const uint8_t> more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

ByteString BytesOf(std::string_view text)
{
    return ByteString(text.begin(), text.end());
}

namespace
{

/// Takes one character off the front of a text; U+FFFD, and one byte less, if the text begins with no valid sequence.
char32_t NextCharacter(std::string_view& utf8)
{
    const auto first = static_cast<uint8_t>(utf8[0]);
    size_t more = 0;
    if (first >= 0xC2 && first < 0xF5)
        more = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    char32_t character = more == 0 ? first : first & (0x3Fu >> more);
    bool isValid = (first < 0x80 || more > 0) && utf8.size() > more;
    for (size_t i = 1; isValid && i <= more; ++i)
    {
        const auto next = static_cast<uint8_t>(utf8[i]);
        isValid = (next & 0xC0) == 0x80;
        character = character << 6 | (next & 0x3Fu);
    }
    utf8.remove_prefix(isValid ? more + 1 : 1);
    return isValid ? character : U'\uFFFD';
}

} // namespace

std::u16string ToUtf16(std::string_view utf8)
{
    std::u16string units;
    while (!utf8.empty())
    {
        const char32_t character = NextCharacter(utf8);
        if (character < 0x10000)
        {
            units.push_back(static_cast<char16_t>(character));
            continue;
        }
        units.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
        units.push_back(static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
    }
    return units;
}

ByteString ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : -1;
    if (size < 0)
        throw CSampleError(path.string() + ": can't be read; check the name and the rights");
    ByteString bytes(static_cast<size_t>(size));
    file.seekg(0);
    file.read(reinterpret_cast<char*>(bytes.data()), size);
    if (!file)
        throw CSampleError(path.string() + ": reading failed before its end; try another copy");
    return bytes;
}

void WriteFile(const std::filesystem::path& path, std::span<const uint8_t> bytes)
{
    std::error_code error;
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw CSampleError(path.string() + ": can't be written; check the folder, the rights and the room on disk");
}

} // namespace SampleDocuments
