#include "HostTool/OutputFile.h"

#include "HostTool/HostError.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <unistd.h>

namespace HostTool
{

namespace
{

/// The names of what is being written, for a handler of signals, which may do little else than read and unlink them.
std::array<std::atomic<const char*>, 8> PartsBeingWritten;

void RemovePartsAndEnd(int signal)
{
    for (const auto& part : PartsBeingWritten)
        if (const char* name = part.load())
            unlink(name);
    // The handler stands for one signal only, so this one ends the process.
    std::raise(signal);
}

void RemovePartsOnSignals()
{
    struct sigaction action = {};
    action.sa_handler = RemovePartsAndEnd;
    action.sa_flags = SA_RESETHAND | SA_NODEFER;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
}

/// Changes the first entry that is `from`.
void Exchange(const char* from, const char* to)
{
    for (auto& part : PartsBeingWritten)
        if (const char* expected = from; part.compare_exchange_strong(expected, to))
            return;
}

} // namespace

COutputFile::COutputFile(std::filesystem::path path)
    : _Path(std::move(path)), _PartPath(_Path.string() + ".part"), _Stream(std::fopen(_PartPath.c_str(), "wb"))
{
    if (!_Stream)
        Fail();
    Exchange(nullptr, _PartPath.c_str());
    RemovePartsOnSignals();
}

COutputFile::~COutputFile()
{
    Exchange(_PartPath.c_str(), nullptr);
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

void MakeFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw CHostError(ExitCode::WrongUsage,
                         folder.string() + ": cannot make this folder: " + error.message() + "; choose another one");
}

} // namespace HostTool
