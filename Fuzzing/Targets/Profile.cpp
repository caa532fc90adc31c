// Whatever a private profile holds: each call answers a result or fails by an assertion, and writes no more than it was
// given room for; asked again with the needed size, it answers.

#include "Brix/PlatformAbstractionLayer.h"
#include "Fuzzing/Support/FuzzTarget.h"

#include <functional>
#include <string>
#include <vector>

using namespace Fuzzing;

namespace
{

const CScratchFolder folder;

using CProfileCall = std::function<int(wchar_t* buffer, uint32_t room, uint32_t* size)>;

/// The text that a call answers, which it is asked for in a buffer of its size and in one that is too small.
std::wstring TextOf(const CProfileCall& call)
{
    uint32_t size = 0;
    std::vector<wchar_t> tooSmall(1);
    if (const int result = call(tooSmall.data(), 1, &size); result != PAL_RESULT_TOO_SMALL)
        return {};
    std::vector<wchar_t> buffer(size);
    uint32_t filled = 0;
    Require(call(buffer.data(), size, &filled) != PAL_RESULT_TOO_SMALL, "the needed size is enough");
    Require(filled == size, "the needed size is the filled one");
    return {buffer.begin(), buffer.end()};
}

/// The first text of a multi-string.
std::wstring FirstOf(const std::wstring& texts)
{
    return texts.c_str();
}

void RunProfile(CInput input)
{
    const std::filesystem::path file = folder.File("profile.ini");
    WriteFile(file, input);
    const std::wstring name = file.wstring();
    const std::wstring section =
        FirstOf(TextOf([&](wchar_t* buffer, uint32_t room, uint32_t* size)
                       { return PAL_GetPrivateProfileSectionNames(buffer, room, name.c_str(), size); }));
    const std::wstring lines =
        TextOf([&](wchar_t* buffer, uint32_t room, uint32_t* size)
               { return PAL_GetPrivateProfileSection(section.c_str(), buffer, room, name.c_str(), size); });
    const std::wstring key = lines.substr(0, lines.find(L'='));
    TextOf(
        [&](wchar_t* buffer, uint32_t room, uint32_t* size) {
            return PAL_GetPrivateProfileString(section.c_str(), key.c_str(), L"default", buffer, room, name.c_str(),
                                               size);
        });
    int32_t number = 0;
    PAL_GetPrivateProfileInt(section.c_str(), key.c_str(), 7, name.c_str(), &number);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunInput(RunProfile, data, size);
}
