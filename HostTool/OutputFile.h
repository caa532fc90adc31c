#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>
#include <sys/stat.h>

namespace HostTool
{

/// An output that was left as it is since it is there already, which the user wished.
struct COutputSkipped : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Whether the parts of a file are written in the order of their places.
enum class WritingOrder
{
    FrontToEnd,
    BeginningLast ///< only files and devices that can be sought in will do
};

/// A file that is written.
///
/// A regular one appears under its name only when it is complete: it is written next to it, under a name that nobody
/// else has, and renamed at the end; if it never gets so far it is taken away. Where a link leads there, the file that
/// it leads to is replaced. A pipe, a terminal or another device is written to as it is, and "-" is standard output.
class COutputFile
{
public:
    /// Throws CHostError, before anything is made, for a name at which OutputRules lets nothing be written, and if the
    /// file can't be made; COutputSkipped for one that is there and is to stay.
    explicit COutputFile(std::filesystem::path path, WritingOrder order = WritingOrder::FrontToEnd);
    ~COutputFile();
    COutputFile(const COutputFile&) = delete;
    COutputFile& operator=(const COutputFile&) = delete;

    std::FILE* Stream() { return _Stream.get(); }
    void Write(std::span<const uint8_t> bytes);
    void Write(std::string_view text) { Write({reinterpret_cast<const uint8_t*>(text.data()), text.size()}); }
    /// Hands all that was written to the system. Throws CHostError if that fails.
    void Complete();
    /// What was written, under the name that it has until Finish; nothing for a pipe or device.
    const std::filesystem::path& UnfinishedPath() const { return _PartPath; }
    /// Gives the file its name. Throws CHostError if anything could not be written.
    void Finish();

private:
    void Open(WritingOrder order);
    void OpenStream(const std::filesystem::path& path, WritingOrder order);
    void OpenStandardOutput(WritingOrder order);
    void OpenPart(const struct stat* replaced);
    void TakeOver(const struct stat& replaced) const;
    int Rename() const;
    void RequireOrder(WritingOrder order) const;
    [[noreturn]] void Fail() const;

    struct CCloser
    {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };
    std::filesystem::path _Path;     ///< as the user calls it
    std::filesystem::path _RealPath; ///< the file that it leads to
    std::filesystem::path _PartPath; ///< empty: what is written needs no name
    std::unique_ptr<std::FILE, CCloser> _Stream;
};

/// Whether an output goes to a pipe, a terminal or another device, or to standard output: then its name tells nothing
/// about its format.
bool IsStream(const std::filesystem::path& output);

/// The name with an extension, unless it has one or is no file's.
std::filesystem::path WithExtension(std::filesystem::path output, std::string_view extension);

/// Makes a folder and those above it. Throws CHostError if that fails, or if it would lie in a document's own folder.
void MakeFolder(const std::filesystem::path& folder);

} // namespace HostTool
