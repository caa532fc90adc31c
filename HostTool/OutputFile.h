#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>

namespace HostTool
{

/// A file that appears under its name only when it is complete: it is written beside it and renamed at the end, and
/// taken away if it never gets so far, also when the user ends the program.
class COutputFile
{
public:
    /// Throws CHostError if it can't be made.
    explicit COutputFile(std::filesystem::path path);
    ~COutputFile();
    COutputFile(const COutputFile&) = delete;
    COutputFile& operator=(const COutputFile&) = delete;

    std::FILE* Stream() { return _Stream.get(); }
    void Write(std::span<const uint8_t> bytes);
    void Write(std::string_view text) { Write({reinterpret_cast<const uint8_t*>(text.data()), text.size()}); }
    /// Gives the file its name. Throws CHostError if anything could not be written.
    void Finish();

private:
    [[noreturn]] void Fail() const;

    struct CCloser
    {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };
    std::filesystem::path _Path;
    std::filesystem::path _PartPath;
    std::unique_ptr<std::FILE, CCloser> _Stream;
};

/// Makes a folder and those above it. Throws CHostError if that fails.
void MakeFolder(const std::filesystem::path& folder);

} // namespace HostTool
