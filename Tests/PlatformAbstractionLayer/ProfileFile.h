#pragma once
#include "Brix/PlatformAbstractionLayer.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// UTF-16, little-endian, without a mark; each character of the text is one unit.
inline std::string Utf16Of(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (const wchar_t unit : text)
    {
        bytes += static_cast<char>(static_cast<unsigned char>(unit));
        bytes += static_cast<char>(static_cast<unsigned char>(unit >> 8));
    }
    return bytes;
}

/// What a profile call gave back.
struct ProfileAnswer
{
    int Result;
    std::optional<uint32_t> Size;            ///< nothing: left alone
    std::optional<std::wstring> Text;        ///< with all its zeros; nothing: the buffer was left alone
    std::vector<std::wstring> Texts() const; ///< of a multi-string
};

/// A private profile of a test's own, and the calls that read it. Buffers have exactly the size asked for, so that the
/// address sanitizer sees every character that is written beyond.
class ProfileFile
{
public:
    explicit ProfileFile(std::wstring_view text) : ProfileFile("\xFF\xFE" + Utf16Of(text)) {}
    explicit ProfileFile(std::string_view bytes) { _folder.Write("profile.ini", bytes); }

    std::wstring Name() const { return _folder.WideName("profile.ini"); }

    ProfileAnswer SectionNames(uint32_t bufferSize = 10000) const
    {
        return Call(bufferSize, [&](wchar_t* buffer, uint32_t* size)
                    { return PAL_GetPrivateProfileSectionNames(buffer, bufferSize, Name().c_str(), size); });
    }
    ProfileAnswer Section(const std::wstring& section, uint32_t bufferSize = 10000) const
    {
        return Call(bufferSize,
                    [&](wchar_t* buffer, uint32_t* size) {
                        return PAL_GetPrivateProfileSection(section.c_str(), buffer, bufferSize, Name().c_str(), size);
                    });
    }
    ProfileAnswer String(const std::wstring& section, const std::wstring& key, const wchar_t* defaultValue,
                         uint32_t bufferSize = 10000) const
    {
        return Call(bufferSize,
                    [&](wchar_t* buffer, uint32_t* size)
                    {
                        return PAL_GetPrivateProfileString(section.c_str(), key.c_str(), defaultValue, buffer,
                                                           bufferSize, Name().c_str(), size);
                    });
    }

private:
    template <typename Read>
    static ProfileAnswer Call(uint32_t bufferSize, Read&& read)
    {
        constexpr wchar_t Untouched = 0x5A5A;
        std::vector<wchar_t> buffer(bufferSize, Untouched);
        wchar_t none = Untouched;
        uint32_t size = 0xABCD1234;
        ProfileAnswer answer{read(bufferSize == 0 ? &none : buffer.data(), &size), std::nullopt, std::nullopt};
        if (size != 0xABCD1234)
            answer.Size = size;
        size_t end = buffer.size();
        while (end > 0 && buffer[end - 1] == Untouched)
            --end;
        if (end > 0)
            answer.Text = std::wstring(buffer.data(), end);
        return answer;
    }

    TestSupport::TemporaryFolder _folder;
};

inline std::vector<std::wstring> ProfileAnswer::Texts() const
{
    std::vector<std::wstring> texts;
    for (size_t start = 0; Text && start + 1 < Text->size();)
    {
        texts.emplace_back(Text->c_str() + start);
        start += texts.back().size() + 1;
    }
    return texts;
}
