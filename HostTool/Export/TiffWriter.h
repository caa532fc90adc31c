#pragma once

#include "HostTool/OutputFile.h"

#include <cstdint>
#include <future>
#include <map>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace HostTool
{

/// A number that points into the file: 32 bits wide in a classic TIFF file, 64 in a big one.
struct CTiffOffsets
{
    std::vector<uint64_t> Values;
};

struct CTiffRational
{
    uint32_t Numerator = 0;
    uint32_t Denominator = 1;
};

/// A directory of a TIFF file before it is written.
class CTiffDirectory
{
public:
    using Value = std::variant<std::vector<uint16_t>, std::vector<uint32_t>, CTiffOffsets, CTiffRational, std::string,
                               std::vector<uint8_t>>;

    /// Sets a field; texts get their closing zero, bytes are of no type.
    void Set(uint16_t tag, Value value) { _Fields[tag] = std::move(value); }
    void SetNumber(uint16_t tag, uint32_t value) { Set(tag, std::vector<uint32_t>{value}); }
    void SetShort(uint16_t tag, uint16_t value) { Set(tag, std::vector<uint16_t>{value}); }

    /// Directories that are reached from this one only, in their order.
    std::vector<CTiffDirectory> Children;
    const std::map<uint16_t, Value>& Fields() const { return _Fields; }

private:
    std::map<uint16_t, Value> _Fields; // directories are in the order of their tags
};

/// A TIFF file that is written from front to end: first all data, then all directories. Only there it turns out whether
/// 32 bits are enough to point into it; if not, it is a BigTIFF file.
class CTiffWriter
{
public:
    /// `isBig`: a BigTIFF file in any case. Throws CHostError if the file can't be made, or not be sought in.
    explicit CTiffWriter(const std::filesystem::path& path, bool isBig = false);
    ~CTiffWriter();
    CTiffWriter(const CTiffWriter&) = delete;
    CTiffWriter& operator=(const CTiffWriter&) = delete;

    /// Appends data and answers its place in the file. Throws CHostError.
    uint64_t Append(std::span<const uint8_t> bytes);

    /// Appends directly behind what was appended last. Throws CHostError.
    void Continue(std::span<const uint8_t> bytes) { Write(bytes); }

    /// Writes the directories, of which each points at the next: the file is complete. Answers where each of them is.
    /// Throws CHostError.
    std::vector<uint64_t> Complete(const std::vector<CTiffDirectory>& directories);

    /// The complete file, before it has its name; nothing for a device.
    const std::filesystem::path& UnfinishedPath() const { return _File.UnfinishedPath(); }

    /// Gives the complete file its name. Throws CHostError.
    void Finish() { _File.Finish(); }

private:
    class CEncoder;

    void Write(std::span<const uint8_t> bytes);
    void Flush();
    void WaitForWriting();
    uint64_t WriteDirectory(const CTiffDirectory& directory, uint64_t next);

    COutputFile _File;
    uint64_t _Size = 0; ///< with what is not written yet
    bool _IsBig;
    std::vector<uint8_t> _Gathered; ///< the end of the file
    std::vector<uint8_t> _BeingWritten;
    std::future<void> _Writing; ///< of the latter, while more is being gathered
};

/// The nearest fraction that TIFF can hold; 0 for what is no number or below 0.
CTiffRational RationalOf(double number);

} // namespace HostTool
