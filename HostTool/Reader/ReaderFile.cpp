#include "HostTool/Reader/ReaderFile.h"

#include "HostTool/HostError.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace HostTool
{

CReaderFile::CReaderFile(const std::filesystem::path& path)
{
    // A pipe is not waited at.
    _Descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat facts = {};
    if (_Descriptor < 0 || fstat(_Descriptor, &facts) != 0)
    {
        const int reason = errno;
        throw CHostError(CodeOfErrno(reason),
                         path.string() + ": cannot open: " + std::strerror(reason) + "; check the name and its rights");
    }
    if (!S_ISREG(facts.st_mode))
    {
        close(_Descriptor);
        throw CHostError(ExitCode::WrongUsage, path.string() + ": is no file; give the file that ends in .zel");
    }
    _Size = static_cast<uint64_t>(facts.st_size);
}

CReaderFile::~CReaderFile()
{
    close(_Descriptor);
}

std::optional<std::vector<uint8_t>> CReaderFile::Bytes(uint64_t offset, size_t size) const
{
    if (!Has(offset, size))
        return std::nullopt;
    std::vector<uint8_t> bytes(size);
    if (pread(_Descriptor, bytes.data(), size, static_cast<off_t>(offset)) != static_cast<ssize_t>(size))
        return std::nullopt;
    return bytes;
}

std::optional<uint64_t> CReaderFile::Number(uint64_t offset, size_t size) const
{
    const auto bytes = Bytes(offset, size);
    return bytes ? std::optional(NumberOf(bytes->data(), size)) : std::nullopt;
}

uint64_t NumberOf(const uint8_t* bytes, size_t size)
{
    uint64_t number = 0;
    for (size_t i = 0; i < size; ++i)
        number |= uint64_t{bytes[i]} << (8 * i);
    return number;
}

} // namespace HostTool
