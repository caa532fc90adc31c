#pragma once

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace SampleDocuments
{

/// Bytes as they stand in a file.
using ByteString = std::vector<uint8_t>;

/// What the writer throws: one line that says what is wrong, where, and what to do about it.
class CSampleError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Appends a number in little-endian order, the only order that documents and stores know.
template <typename T>
void Append(ByteString& bytes, T value)
{
    static_assert(std::is_arithmetic_v<T>);
    uint8_t raw[sizeof(T)];
    std::memcpy(raw, &value, sizeof(T));
    bytes.insert(bytes.end(), raw, raw + sizeof(T));
}

/// Appends the bytes of a text, without terminator.
void Append(ByteString& bytes, std::string_view text);

/// Appends bytes as they are.
void Append(ByteString& bytes, std::span<const uint8_t> more);

/// Overwrites a number that was appended before; `at + sizeof(T)` must lie within the bytes.
template <typename T>
void Patch(ByteString& bytes, size_t at, T value)
{
    static_assert(std::is_arithmetic_v<T>);
    if (at + sizeof(T) > bytes.size())
        throw CSampleError("Patch: the number would lie behind the last byte");
    std::memcpy(bytes.data() + at, &value, sizeof(T));
}

/// The bytes of a text, without terminator.
ByteString BytesOf(std::string_view text);

/// UTF-8 to UTF-16; bytes that are no UTF-8 become U+FFFD.
std::u16string ToUtf16(std::string_view utf8);

/// All bytes of a file. Throws CSampleError if it can't be read.
ByteString ReadFile(const std::filesystem::path& path);

/// Writes a file anew and makes the folders above it. Throws CSampleError if it can't be written.
void WriteFile(const std::filesystem::path& path, std::span<const uint8_t> bytes);

} // namespace SampleDocuments
