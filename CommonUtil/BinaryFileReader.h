#pragma once
#include "CommonUtil/PlatformCalls.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace CommonUtil
{

using Byte = unsigned char;

struct BfrSeekDirection
{
    enum E
    {
        BEGIN = 0,
        CURRENT = 1,
        END = 2
    };
};

/// The one way of reading a binary file: a stream with a size, whose misuse and short reads are failed assertions, so
/// that a parser can read field after field without testing each result. Little-endian files only. Stateful: one
/// reader serves one thread at a time. Small reads come out of a window over the file, large ones go straight into the
/// caller's buffer by one positioned read.
class CBinaryFileReader
{
public:
    /// Clears errno and opens the file, whose name may hold backslashes for slashes. A file that cannot be opened is
    /// told by errno (ENOENT if the open left none), not by an exception; the stream is then closed. A byte order
    /// other than the host's is a failed assertion.
    CBinaryFileReader(const std::wstring& fileName, bool isFileBigEndian);
    virtual ~CBinaryFileReader();
    CBinaryFileReader(const CBinaryFileReader&) = delete;
    CBinaryFileReader& operator=(const CBinaryFileReader&) = delete;

    const std::wstring& FileName() const { return _FileName; } ///< with slashes
    uint64_t FileSize() const { return _FileSize; }            ///< in bytes, as it was when the file was opened
    bool IsFileBigEndian() const { return _IsFileBigEndian; }

    bool OpenFile();
    /// Closes the stream; harmless on a closed one. Always true.
    bool CloseFile();
    /// The size that the file system tells; false when it tells none.
    bool FileSize_init(uint64_t& size) const;

    uint64_t GetCurrentOffset();
    /// Moves the stream. Asserts that `offset` is below the file size, whatever the direction; END is a failed
    /// assertion. False when the stream is closed, or when CURRENT would lead beyond the end (it then does not move).
    bool Seek(uint64_t offset, BfrSeekDirection::E direction);
    /// Reads bytes at `offset`, or at the current position when that is 0. Asserts that all of them lie in the file and
    /// were read. False for a null buffer, 0 bytes, a closed stream, or an offset beyond the end.
    bool ReadData(Byte* buffer, uint32_t numOfBytes, uint64_t offset = 0);

    /// True after bytes could not be read that the file should hold: it has shrunk, or the machine failed. Its bytes
    /// are not to blame, and may be readable next time.
    bool HasFailed() const { return _hasFailed; }
    void ForgetFailure() { _hasFailed = false; }

    // Each asserts that the stream is open and that its bytes lie in the file, and moves behind them.
    char ReadChar() { return Read<char>(); }
    int16_t ReadShort() { return Read<int16_t>(); }
    int16_t ReadInt16() { return Read<int16_t>(); }
    uint16_t ReadUInt16() { return Read<uint16_t>(); }
    int32_t ReadInt32() { return Read<int32_t>(); }
    uint32_t ReadUInt32() { return Read<uint32_t>(); }
    uint32_t ReadDword() { return Read<uint32_t>(); }
    int64_t ReadInt64() { return Read<int64_t>(); }
    uint64_t ReadUInt64() { return Read<uint64_t>(); }
    float ReadFloat() { return Read<float>(); }
    double ReadDouble() { return Read<double>(); }

private:
    template <typename T>
    T Read()
    {
        T value;
        ReadItem(&value, sizeof value);
        return value;
    }
    void ReadItem(void* item, size_t size);
    /// How many bytes came: fewer than `size` when the file has shrunk or cannot be read.
    size_t ReadFromFile(Byte* bytes, size_t size, uint64_t offset) const;
    void AssertRead(bool isRead);
    bool IsInWindow(uint64_t offset, size_t size) const;
    void MoveWindowTo(uint64_t offset);

    struct CloseStream
    {
        void operator()(std::FILE* stream) const { PAL_CloseFile(stream); }
    };

    uint64_t _FileSize = 0;
    std::wstring _FileName;
    std::unique_ptr<std::FILE, CloseStream> m_fp;
    uint64_t _CurrentOffset = 0;
    std::vector<Byte> _Window; ///< bytes of the file from _OffsetOfWindow on
    uint64_t _OffsetOfWindow = 0;
    bool _hasFailed = false;
    bool _IsFileBigEndian;
};

} // namespace CommonUtil
