#include "PlatformAbstractionLayer/PrivateProfileText.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Numbers.h"
#include "PlatformAbstractionLayer/Files.h"

#include <array>
#include <memory>
#include <sys/stat.h>

namespace
{

struct CloseStream
{
    void operator()(std::FILE* stream) const
    {
        const CommonUtil::CErrnoKeeper errnoKeeper;
        std::fclose(stream);
    }
};
using Stream = std::unique_ptr<std::FILE, CloseStream>;

} // namespace

TextFileEncoding::E get_text_file_encoding(const std::string& fileName)
{
    std::array<unsigned char, 2> mark{};
    const Stream stream(OpenFileToRead(fileName));
    if (!stream || std::fread(mark.data(), 1, mark.size(), stream.get()) != mark.size())
        return TextFileEncoding::Other;
    if (mark[0] == 0xFF && mark[1] == 0xFE)
        return TextFileEncoding::Utf16LittleEndian;
    if (mark[0] == 0xFE && mark[1] == 0xFF)
        return TextFileEncoding::Utf16BigEndian;
    if (mark[0] == 0xEF && mark[1] == 0xBB)
        return TextFileEncoding::Utf8;
    return TextFileEncoding::Other;
}

bool IsFileToRead(const std::string& fileName)
{
    struct stat status = {};
    return stat(fileName.c_str(), &status) == 0 && !S_ISDIR(status.st_mode) && !S_ISFIFO(status.st_mode);
}

CPrivateProfileText::CPrivateProfileText(const std::string& fileName)
{
    ZEL_ASSERT(get_text_file_encoding(fileName) == TextFileEncoding::Utf16LittleEndian);
    const Stream stream(OpenFileToRead(fileName));
    ZEL_ASSERT(stream);
    struct stat status = {};
    ZEL_ASSERT(fstat(fileno(stream.get()), &status) == 0);
    const uint32_t size = CommonUtil::ToUint32WithCheck(static_cast<uint64_t>(status.st_size));
    ZEL_ASSERT(size >= 2); // the mark, unless the file has shrunk meanwhile
    _bytes.resize(size);
    ZEL_ASSERT(std::fread(_bytes.data(), 1, size, stream.get()) == size);
}

std::wstring_view TrimProfileText(std::wstring_view text)
{
    const size_t start = text.find_first_not_of(ProfileWhiteSpace);
    if (start == std::wstring_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(ProfileWhiteSpace) + 1 - start);
}
