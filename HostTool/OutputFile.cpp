#include "HostTool/OutputFile.h"

#include "HostTool/HostError.h"
#include "HostTool/OutputRules.h"
#include "HostTool/PartFiles.h"
#include "HostTool/StandardOutput.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

namespace HostTool
{

namespace
{

namespace fs = std::filesystem;

constexpr mode_t UsualMode = 0666; // less what the user's mask takes away

bool IsSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Where a path leads when its links are followed, though nothing may be there yet. Throws CHostError for a circle.
fs::path TargetOf(const fs::path& path)
{
    constexpr int mostLinks = 40; // as many as the system follows
    fs::path target = fs::absolute(path);
    for (int i = 0; i < mostLinks; ++i)
    {
        std::error_code error;
        const fs::path link = fs::read_symlink(target, error);
        if (error)
            return target;
        target = target.parent_path() / link; // which is the link itself if that begins at the root
    }
    throw CHostError(ExitCode::WrongUsage, path.string() + ": links lead in a circle; choose another name");
}

/// A name in a folder that nobody can have foreseen.
fs::path RandomNameBeside(const fs::path& target)
{
    constexpr size_t mostOfName = 200; // with what is added it stays below the limit of file systems
    uint64_t number = 0;
    if (getrandom(&number, sizeof(number), 0) != static_cast<ssize_t>(sizeof(number)))
        throw CHostError(ExitCode::Machine, "the system gives no random numbers; try again");
    char digits[17];
    std::snprintf(digits, sizeof(digits), "%016llx", static_cast<unsigned long long>(number));
    return target.parent_path() / ("." + target.filename().string().substr(0, mostOfName) + "." + digits + ".part");
}

} // namespace

COutputFile::COutputFile(fs::path path, WritingOrder order) : _Path(std::move(path))
{
    Open(order);
}

void COutputFile::Open(WritingOrder order)
{
    if (_Path == "-")
        return OpenStandardOutput(order);
    struct stat facts = {};
    const bool exists = stat(_Path.c_str(), &facts) == 0;
    if (!exists && errno != ENOENT)
        Fail();
    if (exists)
        OutputRules::RequireNotRead(_Path, facts);
    struct stat standardOutput = {};
    if (exists && fstat(STDOUT_FILENO, &standardOutput) == 0 && IsSame(facts, standardOutput))
        return OpenStandardOutput(order);
    if (exists && !S_ISREG(facts.st_mode))
        return OpenStream(_Path, order);
    _RealPath = TargetOf(_Path);
    OutputRules::RequireOutsideOfDocuments(_Path, _RealPath.parent_path());
    if (exists && OutputRules::WhatIfExists() == IfExists::Skip)
        throw COutputSkipped(_Path.string() + ": is there already, and is left as it is");
    if (exists && OutputRules::WhatIfExists() == IfExists::Refuse)
        throw CHostError(ExitCode::WrongUsage, _Path.string() + ": is there already; choose another name, or leave "
                                                                "--no-clobber out");
    OpenPart(exists ? &facts : nullptr);
}

COutputFile::~COutputFile()
{
    if (!_Stream || _PartPath.empty())
        return;
    _Stream.reset();
    unlink(_PartPath.c_str());
    PartFiles::Forget(_PartPath);
}

void COutputFile::OpenStandardOutput(WritingOrder order)
{
    RequireOrder(order);
    TakeStandardOutput();
    const int descriptor = dup(STDOUT_FILENO);
    if (descriptor >= 0)
        _Stream.reset(fdopen(descriptor, "wb"));
    if (!_Stream)
        throw CHostError(ExitCode::Machine, "standard output: is closed; open it, or give the name of a file");
}

void COutputFile::RequireOrder(WritingOrder order) const
{
    if (order == WritingOrder::BeginningLast)
        throw CHostError(ExitCode::WrongUsage,
                         _Path.string() + ": cannot be written as a stream: where everything lies in a file of this "
                                          "kind stands at its beginning, and is known last; give the name of a file");
}

void COutputFile::OpenStream(const fs::path& path, WritingOrder order)
{
    struct stat facts = {};
    if (stat(path.c_str(), &facts) != 0)
        Fail();
    if (S_ISDIR(facts.st_mode))
        throw CHostError(ExitCode::WrongUsage, _Path.string() + ": is a folder; give the name of a file");
    if (S_ISBLK(facts.st_mode))
        throw CHostError(ExitCode::WrongUsage,
                         _Path.string() + ": is a disk, whose contents would be lost; give the name of a file");
    if (S_ISFIFO(facts.st_mode) || S_ISSOCK(facts.st_mode))
        RequireOrder(order);
    const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor >= 0)
        _Stream.reset(fdopen(descriptor, "wb"));
    if (!_Stream)
        Fail();
    if (lseek(descriptor, 0, SEEK_CUR) < 0)
        RequireOrder(order);
}

void COutputFile::OpenPart(const struct stat* replaced)
{
    if (replaced && access(_RealPath.c_str(), W_OK) != 0)
        Fail(); // a file that the user protected is not to be lost through its folder's rights
    _PartPath = RandomNameBeside(_RealPath);
    PartFiles::Add(_PartPath);
    const int descriptor = open(_PartPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, UsualMode);
    if (descriptor >= 0)
        _Stream.reset(fdopen(descriptor, "wb"));
    if (!_Stream)
    {
        const int reason = errno;
        PartFiles::Forget(_PartPath);
        errno = reason;
        Fail();
    }
    if (replaced)
        TakeOver(*replaced);
}

/// Owner and rights of the file that is replaced go over to the new one as far as this user may give them.
void COutputFile::TakeOver(const struct stat& replaced) const
{
    constexpr mode_t rights = 0777;
    const int descriptor = fileno(_Stream.get());
    if (fchown(descriptor, replaced.st_uid, replaced.st_gid) == 0 || replaced.st_uid == geteuid())
        fchmod(descriptor, replaced.st_mode & rights);
}

void COutputFile::Write(std::span<const uint8_t> bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), _Stream.get()) != bytes.size())
        Fail();
}

void COutputFile::Complete()
{
    // fflush tells of a full disk before the name is given, which fclose would do too late.
    if (std::fflush(_Stream.get()) != 0 || std::ferror(_Stream.get()) != 0)
        Fail();
}

int COutputFile::Rename() const
{
    if (OutputRules::WhatIfExists() != IfExists::Replace)
    {
        const int result = renameat2(AT_FDCWD, _PartPath.c_str(), AT_FDCWD, _RealPath.c_str(), RENAME_NOREPLACE);
        if (result == 0 || errno != EINVAL) // which is how file systems say that they don't know this way
            return result;
    }
    struct stat facts = {};
    if (lstat(_RealPath.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode))
    {
        errno = EEXIST; // what came there meanwhile is no file
        return -1;
    }
    return std::rename(_PartPath.c_str(), _RealPath.c_str());
}

void COutputFile::Finish()
{
    Complete();
    if (!_PartPath.empty())
    {
        if (Rename() != 0)
            Fail();
        PartFiles::Forget(_PartPath);
    }
    _Stream.reset();
}

void COutputFile::Fail() const
{
    const int reason = errno;
    throw CHostError(CodeOfErrno(reason),
                     _Path.string() + ": cannot be written: " + std::strerror(reason) + "; choose another place");
}

bool IsStream(const fs::path& output)
{
    if (output == "-")
        return true;
    struct stat facts = {};
    struct stat standardOutput = {};
    if (stat(output.c_str(), &facts) != 0 || S_ISDIR(facts.st_mode))
        return false;
    return !S_ISREG(facts.st_mode) || (fstat(STDOUT_FILENO, &standardOutput) == 0 && IsSame(facts, standardOutput));
}

fs::path WithExtension(fs::path output, std::string_view extension)
{
    if (!output.has_extension() && !IsStream(output))
        output += extension;
    return output;
}

void MakeFolder(const fs::path& folder)
{
    fs::path existing = fs::absolute(folder);
    std::error_code error;
    while (!fs::exists(existing, error) && existing.has_relative_path())
        existing = existing.parent_path();
    OutputRules::RequireOutsideOfDocuments(folder, existing);
    fs::create_directories(folder, error);
    if (error)
        throw CHostError(CodeOfErrno(error.value()),
                         folder.string() + ": cannot make this folder: " + error.message() + "; choose another one");
}

} // namespace HostTool
