#pragma once

#include "SampleDocuments/Node.h"

/// Bytes as tests write them down, and those of single fields.
namespace BytesOfTest
{

using namespace SampleDocuments;

/// Bytes written as pairs of hexadecimal digits; blanks part them where a reader wants to.
inline ByteString Hex(std::string_view text)
{
    ByteString bytes;
    std::string pair;
    for (const char digit : text)
    {
        if (digit == ' ')
            continue;
        pair += digit;
        if (pair.size() == 2)
        {
            bytes.push_back(static_cast<uint8_t>(std::stoul(pair, nullptr, 16)));
            pair.clear();
        }
    }
    return bytes;
}

inline ByteString BytesOfTree(const CNode& root)
{
    ByteString bytes;
    AppendTree(bytes, root);
    return bytes;
}

/// The bytes of a field that is the only child of a root, whose header takes the first 24 bytes.
inline ByteString BytesOfOnly(CNode child)
{
    const ByteString bytes = BytesOfTree(Volume(0, {std::move(child)}));
    return ByteString(bytes.begin() + 24, bytes.end());
}

inline ByteString Utf16(std::string_view text)
{
    return Text(0, text).Value();
}

inline ByteString Joined(std::initializer_list<ByteString> parts)
{
    ByteString bytes;
    for (const ByteString& part : parts)
        Append(bytes, std::span<const uint8_t>(part));
    return bytes;
}

} // namespace BytesOfTest
