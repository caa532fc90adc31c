#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace TestSupport
{

/// A new, empty folder that is removed at the end with all that is in it.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return _path; }
    /// The full name of something in the folder, as narrow and as wide text.
    std::string Name(std::string_view name) const { return (_path / name).string(); }
    std::wstring WideName(std::string_view name) const;
    /// Writes a file, with the folders that lead to it, and answers its full name.
    std::string Write(std::string_view name, std::string_view bytes) const;

private:
    std::filesystem::path _path;
};

/// The bytes of a file; empty when it cannot be read.
std::string BytesOf(const std::string& name);

/// How many files this process has open.
size_t NumOfOpenFiles();

} // namespace TestSupport
