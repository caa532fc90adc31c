#pragma once

#include <filesystem>
#include <sys/types.h>

/// The names of files that are being written, in memory that a process shares with the children it starts. Whoever
/// waits for a child can thus take away what the child left, however it ended.
namespace HostTool::PartFiles
{

/// Makes the shared memory; to be called before a child is started that writes files. Throws std::bad_alloc.
void Share();

/// Notes the name of a file that this process is about to make. The path has to be absolute.
void Add(const std::filesystem::path& path);

/// Forgets a name that this process noted: the file is complete, or was taken away.
void Forget(const std::filesystem::path& path);

/// Takes away the files that are still noted for a process, which has ended.
void RemoveThoseOf(pid_t process);

} // namespace HostTool::PartFiles
