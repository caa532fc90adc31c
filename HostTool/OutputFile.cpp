#include "HostTool/OutputFile.h"

#include "HostTool/HostError.h"

#include <cerrno>
#include <cstring>

namespace HostTool
{

COutputFile::COutputFile(std::filesystem::path path)
    : _Path(std::move(path)), _PartPath(_Path.string() + ".part"), _Stream(std::fopen(_PartPath.c_str(), "wb"))
{
    if (!_Stream)
        Fail();
}

COutputFile::~COutputFile()
{
    if (!_Stream)
        return;
    _Stream.reset();
    std::error_code ignored;
    std::filesystem::remove(_PartPath, ignored);
}

void COutputFile::Write(std::span<const uint8_t> bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), _Stream.get()) != bytes.size())
        Fail();
}

void COutputFile::Finish()
{
    // fflush tells of a full disk before the name is given, which fclose would do too late.
    if (std::fflush(_Stream.get()) != 0 || std::ferror(_Stream.get()) != 0 ||
        std::rename(_PartPath.c_str(), _Path.c_str()) != 0)
        Fail();
    _Stream.reset();
}

void COutputFile::Fail() const
{
    throw CHostError(ExitCode::WrongUsage,
                     _Path.string() + ": cannot be written: " + std::strerror(errno) + "; choose another place");
}

} // namespace HostTool
